#include "toolkit/UpperCase.h"

namespace toolkit {

// Letter by letter, as the server does: a "ß" that became two letters would find no "Straße".
QValidator::State UpperCase::validate(QString& input, int& position) const {
    Q_UNUSED(position);
    for (QChar& letter : input) {
        if (letter == u'\n' || letter == u'\r' || letter == u'\t' ||
            letter == QChar::LineSeparator || letter == QChar::ParagraphSeparator)
            letter = u' ';
        letter = letter.toUpper();
    }
    return Acceptable;
}

}  // namespace toolkit
