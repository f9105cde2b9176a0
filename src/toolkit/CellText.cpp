#include "toolkit/CellText.h"

namespace toolkit {

QString OneLine(const QString& text) {
    QString line = text;
    line.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (line.endsWith(u'\n'))
        line.chop(1);
    for (QChar& letter : line) {
        const bool breaks = letter.category() == QChar::Other_Control ||
                            letter == QChar::LineSeparator || letter == QChar::ParagraphSeparator;
        if (breaks)
            letter = u' ';
    }
    return line;
}

QString NumericPart(const QString& text) {
    QString number;
    bool pointSeen = false;
    for (const QChar letter : text) {
        const bool isDigit = letter >= u'0' && letter <= u'9';
        const bool isPoint = letter == u'.' && !pointSeen;
        if (isDigit || isPoint)
            number += letter;
        pointSeen |= isPoint;
    }
    return number;
}

QValidator::State CellValidator::validate(QString& input, int& position) const {
    const auto fitted = [this](const QString& text) {
        return m_numeric ? NumericPart(text) : OneLine(text);
    };
    // The caret stays behind what stood before it.
    const QString whole = fitted(input);
    position = int(qMin(fitted(input.left(position)).size(), whole.size()));
    if (whole.size() < OneLine(input).size())
        emit NotTaken(input);
    input = whole;
    return Acceptable;
}

}  // namespace toolkit
