#include "print/DocumentPages.h"

#include <QTextDocument>

#include "print/BlockLayout.h"

namespace print {

namespace {

constexpr double kMarginMillimetres = 15;
constexpr double kFooterPoints = 8;

QPageLayout Sheet() {
    return {
        QPageSize(QPageSize::A4), QPageLayout::Portrait,
        QMarginsF(kMarginMillimetres, kMarginMillimetres, kMarginMillimetres, kMarginMillimetres),
        QPageLayout::Millimeter};
}

/// Puts a document's lines on sheets, one below the other.
class DocumentPaginator final {
public:
    DocumentPaginator(const QTextDocument& document, QStringList footer)
        : m_footer(std::move(footer)), m_pages(std::make_shared<ReportPages>(Sheet())) {
        const QRectF points = Sheet().paintRect(QPageLayout::Point);
        m_inside = QRectF(points.topLeft() * kUnitsPerPoint, points.size() * kUnitsPerPoint);
        m_layout.emplace(*m_pages, QStringLiteral("Arial"), kFooterPoints);
        m_lines = m_layout->Document(document, m_inside.width());
        m_lineHeight = m_layout->Ascent() + m_layout->Descent();
        m_bottom = m_inside.bottom() - (double(m_footer.size()) + 1) * m_lineHeight;
    }

    std::shared_ptr<const ReportPages> Run() {
        StartPage();
        for (size_t at = 0; at < m_lines.size(); ++at) {
            const DocumentLine& line = m_lines[at];
            if (m_y + HeightThatStaysTogether(at) > m_bottom && m_y > m_inside.top())
                TurnPage(line.Role);
            if (line.Role == LineRole::TableHeading)
                m_tableHeading = &line;
            Put(line.Line);
        }
        AddFooters();
        return m_pages;
    }

private:
    void StartPage() {
        m_page = m_pages->AddPage();
        m_y = m_inside.top();
    }

    void TurnPage(LineRole next) {
        StartPage();
        if (next == LineRole::TableRow && m_tableHeading)
            Put(m_tableHeading->Line);
    }

    /// A heading stays with the line that it heads.
    double HeightThatStaysTogether(size_t at) const {
        double height = m_lines[at].Line.Height;
        while (at + 1 < m_lines.size() && (m_lines[at].Role == LineRole::Heading ||
                                           m_lines[at].Role == LineRole::TableHeading))
            height += m_lines[++at].Line.Height;
        return height;
    }

    void Put(const Block& line) {
        for (PlacedText text : line.Texts) {
            text.Baseline += QPointF(m_inside.left(), m_y);
            m_pages->Change(m_page).Texts.push_back(std::move(text));
        }
        m_y += line.Height;
    }

    void AddFooters() {
        const double numbers = m_inside.width() / 4;
        for (m_page = 0; m_page < m_pages->Count(); ++m_page) {
            m_y = m_bottom + m_lineHeight;
            const QString number =
                QStringLiteral("Page %1 of %2").arg(m_page + 1).arg(m_pages->Count());
            for (const QString& text : m_footer)
                Put(m_layout->Row(
                    {{text, false, false, 0, m_inside.width() - numbers, Qt::AlignLeft},
                     {&text == &m_footer.back() ? number : QString(), false, false,
                      m_inside.width() - numbers, numbers, Qt::AlignRight}}));
        }
    }

    const QStringList m_footer;
    std::shared_ptr<ReportPages> m_pages;
    std::optional<BlockLayout> m_layout;
    std::vector<DocumentLine> m_lines;
    const DocumentLine* m_tableHeading = nullptr;
    QRectF m_inside;
    double m_lineHeight = 0;
    double m_bottom = 0;
    double m_y = 0;
    int m_page = 0;
};

}  // namespace

std::shared_ptr<const ReportPages> PagesOf(const QTextDocument& document,
                                           const QStringList& footer) {
    return DocumentPaginator(document, footer).Run();
}

}  // namespace print
