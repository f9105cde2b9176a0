#include "toolkit/UpperCase.h"

namespace toolkit {

QValidator::State UpperCase::validate(QString& input, int& position) const {
    for (QChar& letter : input) {
        if (letter == u'\n' || letter == u'\r' || letter == u'\t' ||
            letter == QChar::LineSeparator || letter == QChar::ParagraphSeparator)
            letter = u' ';
    }
    // A letter may become two ("ß"): the caret stays behind what stood before it.
    position = int(input.left(position).toUpper().size());
    input = input.toUpper();
    return Acceptable;
}

}  // namespace toolkit
