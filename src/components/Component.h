#pragma once

#include <QString>

#include "base/Errors.h"

namespace components {

/// What the program creates by ProgID. An in-house component is called by member names; one that
/// lacks a member answers as the platform does, with error 438, and the action ends.
class Component {
public:
    virtual ~Component() = default;

protected:
    [[noreturn]] static void MissingMember(const char* progId, const char* member);
};

}  // namespace components
