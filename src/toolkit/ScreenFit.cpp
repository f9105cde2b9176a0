#include "toolkit/ScreenFit.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QScreen>

namespace toolkit {

namespace {

// What a window manager may draw around a window: it is not known before it has done so.
constexpr QMargins kFrame(5, 28, 5, 7);

void Fit(QWidget& window) {
    const QRect room = window.screen()->availableGeometry().marginsRemoved(kFrame);
    if (room.contains(window.geometry()))
        return;
    window.resize(window.size().boundedTo(room.size()));
    const QPoint farthest = room.bottomRight() - QPoint(window.width() - 1, window.height() - 1);
    const QPoint place(qMax(room.left(), qMin(window.geometry().left(), farthest.x())),
                       qMax(room.top(), qMin(window.geometry().top(), farthest.y())));
    if (place != window.geometry().topLeft())
        window.move(place - QPoint(kFrame.left(), kFrame.top()));
}

}  // namespace

ScreenFit::ScreenFit() {
    QCoreApplication::instance()->installEventFilter(this);
}

// The event comes before the window system hears of the window.
bool ScreenFit::eventFilter(QObject* watched, QEvent* event) {
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (dialog && event->type() == QEvent::Show && !event->spontaneous() && dialog->isWindow())
        Fit(*dialog);
    return false;
}

}  // namespace toolkit
