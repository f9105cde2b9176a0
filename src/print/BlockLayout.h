#pragma once

#include <QFontMetricsF>
#include <QTextBlock>
#include <vector>

#include "print/DocumentPages.h"
#include "print/ReportPages.h"

namespace print {

/// Items placed from (0, 0), to be put somewhere on a page as one.
struct Block {
    std::vector<PlacedText> Texts;
    std::vector<PlacedRule> Rules;
    double Height = 0;

    bool IsEmpty() const { return Height <= 0; }
    /// Takes another block's items in, moved by an offset.
    void Add(const Block& other, QPointF offset);
};

/// A line of a rich text, from its own upper left corner on.
struct DocumentLine {
    Block Line;
    LineRole Role = LineRole::Text;
};

/// A text to be laid out between two sides.
struct BlockCell {
    QString Text;
    bool Html = false;
    bool Bold = false;
    double Left = 0;
    double Width = 0;
    Qt::Alignment Align;
};

/// Turns texts into placed lines: wraps, aligns, and takes HTML apart into its lines and rules.
/// Colours, fonts and tables of the HTML are kept; borders and backgrounds are not drawn.
class BlockLayout final {
public:
    BlockLayout(ReportPages& pages, const QString& fontFamily, double points);

    /// The cells side by side, as high as the highest.
    Block Row(const std::vector<BlockCell>& cells) const;
    Block Html(const QString& html, double width) const;
    /// The lines of a rich text, wrapped at the width where they must be.
    std::vector<DocumentLine> Document(const QTextDocument& document, double width) const;
    /// How far the usual font reaches above and below its line.
    double Ascent() const { return m_plain.ascent(); }
    double Descent() const { return m_plain.descent(); }

private:
    Block Plain(const BlockCell& cell) const;
    void Append(Block& block, const BlockCell& cell, const QString& line, double width,
                Joint follows) const;
    void LayOut(QTextDocument& document, double width) const;
    void AppendLine(Block& block, const QTextBlock& source, int number, QPointF origin) const;

    ReportPages& m_pages;
    QFont m_documentFont;
    QFont m_plainFont;
    QFont m_boldFont;
    QFontMetricsF m_plain;
    QFontMetricsF m_bold;
    int m_plainStyle;
    int m_boldStyle;
};

}  // namespace print
