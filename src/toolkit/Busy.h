#pragma once

namespace toolkit {

/// An hourglass pointer while one lives; several may live at once.
class Busy final {
public:
    Busy();
    ~Busy();
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
};

}  // namespace toolkit
