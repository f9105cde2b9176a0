#include "base/Texts.h"

namespace base {

QString ProperCase(const QString& text) {
    QString result = text.toLower();
    bool atWordStart = true;
    for (qsizetype i = 0; i < result.size(); ++i) {
        if (atWordStart)
            result[i] = result[i].toUpper();
        atWordStart = result[i].isSpace();
    }
    return result;
}

}  // namespace base
