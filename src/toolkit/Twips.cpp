#include "toolkit/Twips.h"

#include <QWidget>
#include <QtMath>

namespace toolkit {

int Twips(int twips, const QWidget* widget) {
    constexpr double kTwipsToTheInch = 1440;
    const int pixels = qRound(twips * widget->logicalDpiX() / kTwipsToTheInch);
    return twips > 0 ? qMax(1, pixels) : pixels;
}

}  // namespace toolkit
