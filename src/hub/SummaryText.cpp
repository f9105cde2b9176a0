#include "hub/SummaryText.h"

#include <QTextDocument>

#include "base/Numbers.h"

namespace {

QColor FromBlueGreenRed(int colour) {
    return QColor(colour & 0xff, colour >> 8 & 0xff, colour >> 16 & 0xff);
}

QString Readable(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    return text.removeIf([](QChar sign) {
        return sign.category() == QChar::Other_Control && sign != u'\n' && sign != u'\t';
    });
}

}  // namespace

QString FitText(const QString& text, int width, int mode) {
    const QString trimmed = text.trimmed();
    if (mode == 1)
        return trimmed.leftJustified(width, u' ', true);
    if (mode == 2 && width > trimmed.length())
        return QString((width - trimmed.length()) / 2, u' ') + trimmed;
    return {};
}

SummaryText::SummaryText(QTextDocument& document) : m_selection(&document) {
    m_selection.movePosition(QTextCursor::End);
}

void SummaryText::Clear() {
    m_selection.document()->clear();
}

void SummaryText::SetRole(print::LineRole role) {
    QTextCursor end(m_selection.document());
    end.movePosition(QTextCursor::End);
    QTextBlockFormat format;
    format.setProperty(print::kLineRole, int(role));
    end.mergeBlockFormat(format);
}

void SummaryText::AppendRun(const QString& text, double size, const QString& fontName, int colour,
                            bool bold, bool inFront) {
    QTextCharFormat format;
    format.setFontFamilies({fontName});
    format.setFontPointSize(size);
    format.setForeground(FromBlueGreenRed(colour));
    format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
    if (m_selection.hasSelection())
        m_selection.mergeCharFormat(format);
    QTextCursor place(m_selection);
    place.setPosition(inFront ? m_selection.selectionStart() : m_selection.selectionEnd());
    place.insertText(Readable(text), format);
}
