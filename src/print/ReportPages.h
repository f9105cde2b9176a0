#pragma once

#include <QColor>
#include <QFont>
#include <QLineF>
#include <QPageLayout>
#include <QPaintDevice>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <vector>

namespace print {

/// Places on a page are measured in tenths of a point: fine enough for any printer, and the same
/// layout on the screen, on paper and in a PDF.
constexpr int kUnitsPerPoint = 10;
constexpr int kUnitsPerInch = 72 * kUnitsPerPoint;

/// How a text continues the one placed before it, for reading and searching.
enum class Joint { NewText, Wrapped, SameLine };

/// One line of text at its place.
struct PlacedText {
    QPointF Baseline;
    QString Text;
    int Style = 0;
    Joint Follows = Joint::NewText;
};

/// A ruled line at its place.
struct PlacedRule {
    QLineF Line;
    double Thickness = 5;
};

/// Font (its size in page units) and colour of texts.
struct TextStyle {
    QFont Font;
    QColor Color;
    bool operator==(const TextStyle& other) const = default;
};

/// What stands on one page.
struct ReportPage {
    std::vector<PlacedText> Texts;
    std::vector<PlacedRule> Rules;
};

/// A place where a searched text was found.
struct ReportHit {
    int Page = 0;
    /// The pieces of the page to be marked, in page units.
    std::vector<QRectF> Places;
};

/// A report laid out: pages of placed items, complete in themselves. Painting them asks nothing
/// of the report or of the database, and may happen in another thread.
class ReportPages final {
public:
    explicit ReportPages(QPageLayout layout) : m_layout(std::move(layout)) {}

    int Count() const { return int(m_pages.size()); }
    const ReportPage& Page(int number) const { return m_pages[number]; }
    const QPageLayout& Layout() const { return m_layout; }
    /// The whole sheet, margins included, in page units.
    QSizeF SheetSize() const;
    const TextStyle& Style(int number) const { return m_styles[number]; }

    /// What a page says: one line a text, the lines of a wrapped text joined.
    QString Text(int page) const;
    /// Every place where the text stands, from the first page to the last; case does not count.
    /// An empty text is found nowhere.
    std::vector<ReportHit> Find(const QString& text) const;

    // Filling, by the paginator.
    int AddPage();
    ReportPage& Change(int page) { return m_pages[page]; }
    /// The number of a style, the same for equal ones.
    int AddStyle(const TextStyle& style);

private:
    QRectF PlaceOf(const PlacedText& text, qsizetype from, qsizetype length) const;

    QPageLayout m_layout;
    std::vector<ReportPage> m_pages;
    std::vector<TextStyle> m_styles;
};

/// The device that texts are measured on: page units, whatever the screen is.
QPaintDevice* MeasuringDevice();

}  // namespace print
