#pragma once

class QWidget;

namespace toolkit {

/// Twips (1440 to the inch) as pixels on the screen that the widget is on, whole pixels, at
/// least 1 for anything above 0.
int Twips(int twips, const QWidget* widget);

}  // namespace toolkit
