#pragma once

#include <QValidator>

/// Keeps what is typed or pasted into the entry box to what the current column takes: digits, the
/// point and the slash in a numeric one, upper case on one line in any other. Refuses nothing.
class WardEntryValidator final : public QValidator {
    Q_OBJECT
public:
    using QValidator::QValidator;

    void SetNumeric(bool numeric) { m_numeric = numeric; }
    State validate(QString& input, int& position) const override;

private:
    QString Fitted(const QString& text) const;

    bool m_numeric = false;
};
