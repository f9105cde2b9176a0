#pragma once

#include <QString>

class QAbstractItemView;

namespace toolkit {

/// A tool tip that shows the text letter by letter, whatever it holds; empty for an empty text.
QString TipOf(const QString& text);

/// From now on the mouse over a cell that cuts its text off shows it whole.
void TipCutTexts(QAbstractItemView& view);

}  // namespace toolkit
