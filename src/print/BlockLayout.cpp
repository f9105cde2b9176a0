#include "print/BlockLayout.h"

#include <QAbstractTextDocumentLayout>
#include <QTextDocument>
#include <QTextLayout>
#include <algorithm>
#include <memory>

namespace print {

namespace {

/// The same font in page units. Every property is set anew: what a painter finds unset it takes
/// from its own device.
QFont PageFont(const QFont& font) {
    QFont sized(font.families());
    sized.setStyleHint(QFont::SansSerif);
    sized.setWeight(font.weight());
    sized.setItalic(font.italic());
    sized.setUnderline(font.underline());
    sized.setPixelSize(font.pointSizeF() > 0
                           ? std::max(1, qRound(font.pointSizeF() * kUnitsPerPoint))
                           : font.pixelSize());
    return sized;
}

QFont DocumentFont(const QString& family, double points) {
    QFont font(family);
    font.setStyleHint(QFont::SansSerif);
    font.setPointSizeF(points);
    return font;
}

QFont BoldOf(QFont font) {
    font.setBold(true);
    return font;
}

QString Printable(QString text) {
    return text.replace(QChar::Nbsp, u' ').remove(QChar::LineSeparator);
}

}  // namespace

void Block::Add(const Block& other, QPointF offset) {
    for (PlacedText text : other.Texts) {
        text.Baseline += offset;
        Texts.push_back(std::move(text));
    }
    for (PlacedRule rule : other.Rules) {
        rule.Line.translate(offset);
        Rules.push_back(rule);
    }
    Height = std::max(Height, other.Height + offset.y());
}

BlockLayout::BlockLayout(ReportPages& pages, const QString& fontFamily, double points)
    : m_pages(pages),
      m_documentFont(DocumentFont(fontFamily, points)),
      m_plainFont(PageFont(m_documentFont)),
      m_boldFont(BoldOf(m_plainFont)),
      m_plain(m_plainFont, MeasuringDevice()),
      m_bold(m_boldFont, MeasuringDevice()),
      m_plainStyle(pages.AddStyle({m_plainFont, Qt::black})),
      m_boldStyle(pages.AddStyle({m_boldFont, Qt::black})) {}

Block BlockLayout::Row(const std::vector<BlockCell>& cells) const {
    Block row;
    for (const BlockCell& cell : cells) {
        if (!cell.Html) {
            row.Add(Plain(cell), {cell.Left, 0});
            continue;
        }
        const char16_t* align = cell.Align & Qt::AlignRight     ? u"right"
                                : cell.Align & Qt::AlignHCenter ? u"center"
                                                                : u"left";
        row.Add(
            Html(QStringLiteral("<div align=\"%1\">%2</div>").arg(QStringView(align), cell.Text),
                 cell.Width),
            {cell.Left, 0});
    }
    return row;
}

void BlockLayout::Append(Block& block, const BlockCell& cell, const QString& line, double width,
                         Joint follows) const {
    double left = 0;
    if (cell.Align & Qt::AlignRight)
        left = cell.Width - width;
    else if (cell.Align & Qt::AlignHCenter)
        left = (cell.Width - width) / 2;
    const QFontMetricsF& metrics = cell.Bold ? m_bold : m_plain;
    if (!line.isEmpty())
        block.Texts.push_back({{left, block.Height + metrics.ascent()},
                               line,
                               cell.Bold ? m_boldStyle : m_plainStyle,
                               follows});
    block.Height += metrics.height();
}

Block BlockLayout::Plain(const BlockCell& cell) const {
    Block block;
    const QFontMetricsF& metrics = cell.Bold ? m_bold : m_plain;
    const double width = metrics.horizontalAdvance(cell.Text);
    // Nearly every cell fits its column: the detour over a text layout is for the others.
    const bool isOneLine = !cell.Text.contains(u'\n') && !cell.Text.contains(u'\r');
    if (width <= cell.Width && isOneLine) {
        Append(block, cell, cell.Text, width, Joint::NewText);
        return block;
    }
    QString text = cell.Text;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    text.replace(u'\n', QChar::LineSeparator);
    QTextLayout layout(text, cell.Bold ? m_boldFont : m_plainFont, MeasuringDevice());
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(cell.Width);
        const QString piece = Printable(text.mid(line.textStart(), line.textLength())).trimmed();
        Append(block, cell, piece, metrics.horizontalAdvance(piece),
               block.Texts.empty() ? Joint::NewText : Joint::Wrapped);
    }
    layout.endLayout();
    return block;
}

Block BlockLayout::Html(const QString& html, double width) const {
    QTextDocument document;
    document.setDefaultFont(m_documentFont);
    document.setHtml(html);
    LayOut(document, width);
    Block block;
    block.Height = document.size().height();
    for (QTextBlock source = document.begin(); source.isValid(); source = source.next()) {
        const QRectF place = document.documentLayout()->blockBoundingRect(source);
        if (source.blockFormat().hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth)) {
            const double middle = place.center().y();
            block.Rules.push_back({QLineF(place.left(), middle, width, middle)});
        }
        for (int number = 0; number < source.layout()->lineCount(); ++number)
            AppendLine(block, source, number, place.topLeft());
    }
    return block;
}

std::vector<DocumentLine> BlockLayout::Document(const QTextDocument& document, double width) const {
    const std::unique_ptr<QTextDocument> copy(document.clone());
    LayOut(*copy, width);
    std::vector<DocumentLine> lines;
    for (QTextBlock source = copy->begin(); source.isValid(); source = source.next()) {
        const QRectF place = copy->documentLayout()->blockBoundingRect(source);
        const auto role = LineRole(source.blockFormat().intProperty(kLineRole));
        for (int number = 0; number < source.layout()->lineCount(); ++number) {
            const QTextLine line = source.layout()->lineAt(number);
            DocumentLine& placed = lines.emplace_back();
            placed.Role = role;
            placed.Line.Height = line.height();
            AppendLine(placed.Line, source, number, {place.left(), -line.y()});
        }
    }
    return lines;
}

void BlockLayout::LayOut(QTextDocument& document, double width) const {
    document.documentLayout()->setPaintDevice(MeasuringDevice());
    document.setDocumentMargin(0);
    document.setTextWidth(width);
}

void BlockLayout::AppendLine(Block& block, const QTextBlock& source, int number,
                             QPointF origin) const {
    const QTextLine line = source.layout()->lineAt(number);
    const int lineEnd = line.textStart() + line.textLength();
    Joint follows = number == 0 ? Joint::NewText : Joint::Wrapped;
    for (auto it = source.begin(); !it.atEnd(); ++it) {
        const int start = it.fragment().position() - source.position();
        const int from = std::max(start, line.textStart());
        const int to = std::min(start + it.fragment().length(), lineEnd);
        if (from >= to)
            continue;
        const QTextCharFormat format = it.fragment().charFormat();
        const QColor color = format.hasProperty(QTextFormat::ForegroundBrush)
                                 ? format.foreground().color()
                                 : QColor(Qt::black);
        const QPointF baseline = origin + QPointF(line.cursorToX(from), line.y() + line.ascent());
        block.Texts.push_back({baseline, Printable(source.text().mid(from, to - from)),
                               m_pages.AddStyle({PageFont(format.font()), color}), follows});
        follows = Joint::SameLine;
    }
}

}  // namespace print
