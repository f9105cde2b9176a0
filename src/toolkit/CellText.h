#pragma once

#include <QValidator>

namespace toolkit {

/// A text as it fits into one cell: line ends, tabs and other control characters become blanks;
/// a line end at the very end, as spreadsheets copy it, goes.
QString OneLine(const QString& text);

/// What is left of a text in a numeric cell: digits and the first point.
QString NumericPart(const QString& text);

/// Keeps what is typed or pasted into a cell to what the cell takes. Refuses nothing.
class CellValidator final : public QValidator {
    Q_OBJECT
public:
    using QValidator::QValidator;

    void SetNumeric(bool numeric) { m_numeric = numeric; }
    State validate(QString& input, int& position) const override;

signals:
    /// Something of the text did not fit and was left out.
    void NotTaken(const QString& typed) const;

private:
    bool m_numeric = false;
};

}  // namespace toolkit
