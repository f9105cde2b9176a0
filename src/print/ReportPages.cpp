#include "print/ReportPages.h"

#include <QFontMetricsF>
#include <QImage>
#include <algorithm>

#include "base/Collation.h"

namespace print {

namespace {

/// A page's text without accents, and where each of its letters stands in the text itself.
struct Letters {
    QString Text;
    std::vector<qsizetype> Places;

    explicit Letters(const QString& text) {
        for (qsizetype at = 0; at < text.size(); ++at) {
            const QString letter =
                text[at].unicode() < 0x80 ? text[at] : base::WithoutAccents(text.mid(at, 1));
            Text += letter;
            Places.insert(Places.end(), size_t(letter.size()), at);
        }
        Places.push_back(text.size());
    }
};

}  // namespace

QPaintDevice* MeasuringDevice() {
    static QImage device = [] {
        QImage image(1, 1, QImage::Format_RGB32);
        const int dotsPerMeter = qRound(kUnitsPerInch / 0.0254);
        image.setDotsPerMeterX(dotsPerMeter);
        image.setDotsPerMeterY(dotsPerMeter);
        return image;
    }();
    return &device;
}

QSizeF ReportPages::SheetSize() const {
    return m_layout.fullRect(QPageLayout::Point).size() * kUnitsPerPoint;
}

int ReportPages::AddPage() {
    m_pages.emplace_back();
    return Count() - 1;
}

int ReportPages::AddStyle(const TextStyle& style) {
    const auto found = std::find(m_styles.begin(), m_styles.end(), style);
    if (found != m_styles.end())
        return int(found - m_styles.begin());
    m_styles.push_back(style);
    return int(m_styles.size()) - 1;
}

QString ReportPages::Text(int page) const {
    QString all;
    for (const PlacedText& text : m_pages[page].Texts) {
        if (!all.isEmpty() && text.Follows != Joint::SameLine)
            all += text.Follows == Joint::Wrapped ? u' ' : u'\n';
        all += text.Text;
    }
    return all;
}

QRectF ReportPages::PlaceOf(const PlacedText& text, qsizetype from, qsizetype length) const {
    const QFontMetricsF metrics(m_styles[text.Style].Font);
    const double left = metrics.horizontalAdvance(text.Text.left(from));
    const double width = metrics.horizontalAdvance(text.Text.mid(from, length));
    return {text.Baseline.x() + left, text.Baseline.y() - metrics.ascent(), width,
            metrics.height()};
}

std::vector<ReportHit> ReportPages::Find(const QString& text) const {
    std::vector<ReportHit> hits;
    const QString wanted = base::WithoutAccents(text);
    if (wanted.isEmpty())
        return hits;
    for (int page = 0; page < Count(); ++page) {
        const Letters all(Text(page));
        for (qsizetype found = all.Text.indexOf(wanted, 0, Qt::CaseInsensitive); found >= 0;
             found = all.Text.indexOf(wanted, found + wanted.size(), Qt::CaseInsensitive)) {
            ReportHit hit{page, {}};
            const qsizetype at = all.Places[size_t(found)];
            const qsizetype end = all.Places[size_t(found + wanted.size())];
            qsizetype begin = 0;
            for (const PlacedText& placed : m_pages[page].Texts) {
                if (begin > 0 && placed.Follows != Joint::SameLine)
                    ++begin;
                const qsizetype from = std::max(at, begin);
                const qsizetype to = std::min(end, begin + placed.Text.size());
                if (from < to)
                    hit.Places.push_back(PlaceOf(placed, from - begin, to - from));
                begin += placed.Text.size();
            }
            hits.push_back(std::move(hit));
        }
    }
    return hits;
}

}  // namespace print
