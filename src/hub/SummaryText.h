#pragma once

#include <QString>
#include <QTextCursor>

#include "print/DocumentPages.h"

class QTextDocument;

/// The text without the blanks around it, for a cell of so many characters. Mode 1: cut or filled
/// with blanks to the width. Mode 2: preceded by as many blanks as centre it; empty when it does
/// not fit. Any other mode: empty.
QString FitText(const QString& text, int width, int mode);

/// A rich text that is written run by run, from its end on.
class SummaryText final {
public:
    /// Colours as the forms give them: blue, green, red.
    static constexpr int kBlue = 16711680;
    static constexpr int kBlack = 0;

    /// Writes into the document, which must live as long.
    explicit SummaryText(QTextDocument& document);

    void Clear();
    /// Puts a run behind the selection, or in front of it. `text` may hold line ends; other
    /// control characters, which results from elsewhere may bring, are left out.
    void AppendRun(const QString& text, double size, const QString& fontName, int colour, bool bold,
                   bool inFront = false);
    /// What the lines that are begun from now on are to the printed sheets.
    void SetRole(print::LineRole role);

private:
    QTextCursor m_selection;
};
