#include "print/DocumentPages.h"

#include <QTextDocument>

#include "print/BlockLayout.h"

namespace print {

namespace {

constexpr double kMarginMillimetres = 15;
constexpr double kFooterPoints = 8;
// Nothing of a line stands deeper under its baseline than this part of its font's size.
constexpr double kBelowBaseline = 0.3;

void AddFooters(ReportPages& pages, const BlockLayout& layout, const QRectF& inside,
                const QString& footer) {
    const double numbers = inside.width() / 4;
    for (int page = 0; page < pages.Count(); ++page) {
        const QString number = QStringLiteral("Page %1 of %2").arg(page + 1).arg(pages.Count());
        const Block line =
            layout.Row({{footer, false, false, 0, inside.width() - numbers, Qt::AlignLeft},
                        {number, false, false, inside.width() - numbers, numbers, Qt::AlignRight}});
        for (PlacedText text : line.Texts) {
            text.Baseline += QPointF(inside.left(), inside.bottom() - line.Height);
            pages.Change(page).Texts.push_back(std::move(text));
        }
    }
}

}  // namespace

std::shared_ptr<const ReportPages> PagesOf(const QTextDocument& document, const QString& footer) {
    const QPageLayout sheet(
        QPageSize(QPageSize::A4), QPageLayout::Portrait,
        QMarginsF(kMarginMillimetres, kMarginMillimetres, kMarginMillimetres, kMarginMillimetres),
        QPageLayout::Millimeter);
    auto pages = std::make_shared<ReportPages>(sheet);
    const QRectF points = sheet.paintRect(QPageLayout::Point);
    const QRectF inside(points.topLeft() * kUnitsPerPoint, points.size() * kUnitsPerPoint);
    const BlockLayout layout(*pages, QStringLiteral("Arial"), kFooterPoints);
    const Block all = layout.Document(document, inside.width());
    const double room = inside.height() - 2 * (layout.Ascent() + layout.Descent());

    double pageTop = 0;
    int page = pages->AddPage();
    double previousBaseline = 0;
    for (PlacedText text : all.Texts) {
        const double size = pages->Style(text.Style).Font.pixelSize();
        if (text.Baseline.y() + size * kBelowBaseline > pageTop + room) {
            page = pages->AddPage();
            pageTop =
                qMax(previousBaseline + size * kBelowBaseline, text.Baseline.y() - 1.2 * size);
        }
        previousBaseline = text.Baseline.y();
        text.Baseline += QPointF(inside.left(), inside.top() - pageTop);
        pages->Change(page).Texts.push_back(std::move(text));
    }
    AddFooters(*pages, layout, inside, footer);
    return pages;
}

}  // namespace print
