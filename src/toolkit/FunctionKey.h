#pragma once

#include <Qt>

class QAbstractButton;

namespace toolkit {

/// The key presses the button while the button can be pressed, and stands in its tool tip. For
/// buttons whose captions share their mnemonic.
void SetFunctionKey(QAbstractButton& button, Qt::Key key);

}  // namespace toolkit
