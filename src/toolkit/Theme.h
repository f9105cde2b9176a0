#pragma once

class QApplication;

namespace toolkit {

/// How the whole program looks: a quiet palette of strong contrast, a readable font, and a thick
/// frame around whatever has the keyboard. Called once, before the first window. A push button
/// with the property "primary" set is coloured: the one that its window is about.
void ApplyTheme(QApplication& application);

}  // namespace toolkit
