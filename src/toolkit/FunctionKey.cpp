#include "toolkit/FunctionKey.h"

#include <QAbstractButton>
#include <QShortcut>

namespace toolkit {

void SetFunctionKey(QAbstractButton& button, Qt::Key key) {
    auto* shortcut = new QShortcut(key, &button);
    shortcut->setAutoRepeat(false);
    QObject::connect(shortcut, &QShortcut::activated, &button, &QAbstractButton::click);
    button.setToolTip(QKeySequence(key).toString(QKeySequence::NativeText));
}

}  // namespace toolkit
