#include "toolkit/Busy.h"

#include <QApplication>
#include <QCursor>

namespace toolkit {

Busy::Busy() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

Busy::~Busy() {
    QApplication::restoreOverrideCursor();
}

}  // namespace toolkit
