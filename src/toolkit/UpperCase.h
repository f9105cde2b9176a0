#pragma once

#include <QValidator>

namespace toolkit {

/// For search boxes: what is typed or pasted becomes upper case, and a line end or tab pasted with
/// it becomes the blank that the box shows, so that what is seen is what is searched. Refuses
/// nothing.
class UpperCase final : public QValidator {
    Q_OBJECT
public:
    using QValidator::QValidator;
    State validate(QString& input, int& position) const override;
};

}  // namespace toolkit
