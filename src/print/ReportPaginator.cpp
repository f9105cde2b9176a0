#include "print/ReportPaginator.h"

#include <algorithm>

namespace print {

namespace {

constexpr double kRowGap = 2 * kUnitsPerPoint;
constexpr double kBandGap = 6 * kUnitsPerPoint;
constexpr double kColumnGap = 5 * kUnitsPerPoint;
constexpr double kHeadingRule = 8;
/// Stands for numbers not known yet, wide enough for any of them.
constexpr int kManyPages = 8888;

}  // namespace

ReportPaginator::ReportPaginator(const ReportDefinition& report, const ReportValues& values)
    : m_report(report),
      m_values(values),
      m_pages(std::make_shared<ReportPages>(report.Page)),
      m_layout(*m_pages, report.FontFamily, report.FontSize) {
    const QRectF points = report.Page.paintRect(QPageLayout::Point);
    m_inside = QRectF(points.topLeft() * kUnitsPerPoint, points.size() * kUnitsPerPoint);
    MeasureColumns();
    m_headings = Headings();
}

std::shared_ptr<const ReportPages> ReportPaginator::Run() {
    ReportScope scope = m_values.Whole();
    scope.Page = scope.Pages = kManyPages;
    const Block header = Band(m_report.Header, scope);
    const Block footer = Band(m_report.Footer, scope);
    m_top = m_inside.top() + (header.IsEmpty() ? 0 : header.Height + kBandGap);
    m_bottom = m_inside.bottom() - (footer.IsEmpty() ? 0 : footer.Height + kBandGap);
    StartPage(m_values.Whole().Row);
    PlaceRows();
    PlaceHeadersAndFooters();
    return m_pages;
}

void ReportPaginator::MeasureColumns() {
    double parts = 0;
    for (const ReportColumn& column : m_report.Columns)
        parts += column.Width;
    const double available =
        m_inside.width() - kColumnGap * std::max<double>(0, m_report.Columns.size() - 1.0);
    double left = 0;
    for (const ReportColumn& column : m_report.Columns) {
        const double width = available * column.Width / parts;
        m_columns.push_back({left, width});
        left += width + kColumnGap;
    }
}

Block ReportPaginator::Headings() const {
    std::vector<BlockCell> cells;
    for (size_t i = 0; i < m_columns.size(); ++i) {
        const ReportColumn& column = m_report.Columns[i];
        cells.push_back(
            {column.Heading, false, true, m_columns[i].first, m_columns[i].second, column.Align});
    }
    Block block = m_layout.Row(cells);
    if (!block.IsEmpty()) {
        block.Height += kRowGap;
        block.Rules.push_back(
            {QLineF(0, block.Height, m_inside.width(), block.Height), kHeadingRule});
        block.Height += kRowGap;
    }
    return block;
}

Block ReportPaginator::Band(const ReportBand& band, const ReportScope& scope) const {
    if (!band.Html.IsEmpty()) {
        const QString text = m_values.Fill(band.Html, scope);
        return m_layout.Html(band.Html.IsHtml() ? text : text.toHtmlEscaped(), m_inside.width());
    }
    std::vector<BlockCell> cells;
    size_t column = 0;
    for (const ReportCell& cell : band.Cells) {
        const auto [left, width] = m_columns[column];
        const auto [lastLeft, lastWidth] = m_columns[column + size_t(cell.Span) - 1];
        cells.push_back({m_values.Fill(cell.Text, scope), cell.Text.IsHtml(), true, left,
                         lastLeft + lastWidth - left, cell.Align});
        column += size_t(cell.Span);
    }
    Block block;
    if (cells.empty())
        return block;
    block.Rules.push_back({QLineF(0, kRowGap / 2, m_inside.width(), kRowGap / 2)});
    block.Add(m_layout.Row(cells), {0, kRowGap});
    block.Height += kRowGap;
    return block;
}

Block ReportPaginator::Row(int row) const {
    ReportScope scope = m_values.Whole();
    scope.Row = row;
    std::vector<BlockCell> cells;
    cells.reserve(m_columns.size());
    for (size_t i = 0; i < m_columns.size(); ++i) {
        const ReportColumn& column = m_report.Columns[i];
        cells.push_back({m_values.Fill(column.Cell, scope), column.Cell.IsHtml(), false,
                         m_columns[i].first, m_columns[i].second, column.Align});
    }
    Block block = m_layout.Row(cells);
    block.Height += kRowGap;
    return block;
}

void ReportPaginator::StartPage(int row) {
    m_page = m_pages->AddPage();
    m_rowOfPage.push_back(row);
    m_y = m_top;
    Put(m_headings);
    m_bodyTop = m_y;
}

void ReportPaginator::Put(const Block& block) {
    const QPointF offset(m_inside.left(), m_y);
    ReportPage& page = m_pages->Change(m_page);
    for (PlacedText text : block.Texts) {
        text.Baseline += offset;
        page.Texts.push_back(std::move(text));
    }
    for (PlacedRule rule : block.Rules) {
        rule.Line.translate(offset);
        page.Rules.push_back(rule);
    }
    m_y += block.Height;
}

void ReportPaginator::PlaceRows() {
    const int count = m_values.RowCount();
    if (count == 0)
        Put(Band(m_report.NoRows, m_values.Whole()));
    for (int first = 0; first < count;) {
        const int end = m_report.Group ? m_values.GroupEnd(first) : count;
        PlaceGroup(first, end);
        first = end;
    }
    const Block summary = Band(m_report.Summary, m_values.Whole());
    if (!Fits(summary.Height))
        StartPage(count - 1);
    Put(summary);
}

void ReportPaginator::PlaceGroup(int first, int end) {
    const ReportScope scope{first, first, end, 0, 0};
    Block header;
    Block footer;
    if (m_report.Group) {
        header = Band(m_report.Group->Header, scope);
        footer = Band(m_report.Group->Footer, scope);
    }
    double totals = footer.Height;
    if (end == m_values.RowCount())
        totals += Band(m_report.Summary, m_values.Whole()).Height;
    for (int row = first; row < end; ++row) {
        const Block block = Row(row);
        const double above = row == first ? header.Height + GroupGap() : 0;
        const double below = row == end - 1 ? totals : 0;
        if (!Fits(above + block.Height + below))
            StartPage(row);
        if (row == first) {
            m_y += GroupGap();
            Put(header);
        }
        if (block.Height <= Room())
            Put(block);
        else
            PlaceTall(block);
    }
    if (!Fits(footer.Height))
        StartPage(end - 1);
    Put(footer);
}

double ReportPaginator::GroupGap() const {
    return m_report.Group && m_y > m_bodyTop ? kBandGap : 0;
}

void ReportPaginator::PlaceTall(Block row) {
    // A remark longer than a page goes on over the next ones, line by line: nothing is lost.
    while (row.Height > Room()) {
        Block head;
        Block rest;
        double cut = row.Height;
        bool lastWentOn = false;
        for (PlacedText& text : row.Texts) {
            const bool goesOn = text.Baseline.y() + m_layout.Descent() > Room();
            if (goesOn) {
                cut = std::min(cut, text.Baseline.y() - m_layout.Ascent());
                if (!lastWentOn)
                    text.Follows = Joint::NewText;
            }
            (goesOn ? rest : head).Texts.push_back(text);
            lastWentOn = goesOn;
        }
        if (head.Texts.empty() && m_y <= m_bodyTop)
            break;
        Put(head);
        StartPage(m_rowOfPage.back());
        for (PlacedText& text : rest.Texts)
            text.Baseline.ry() -= cut;
        rest.Height = row.Height - cut;
        row = std::move(rest);
    }
    Put(row);
}

void ReportPaginator::PlaceHeadersAndFooters() {
    const int pages = m_pages->Count();
    for (m_page = 0; m_page < pages; ++m_page) {
        ReportScope scope = m_values.Whole();
        scope.Row = m_rowOfPage[m_page];
        scope.Page = m_page + 1;
        scope.Pages = pages;
        // The header is what a page says first, so that it is read and found before the rows.
        ReportPage body;
        std::swap(body, m_pages->Change(m_page));
        m_y = m_inside.top();
        Put(Band(m_report.Header, scope));
        ReportPage& page = m_pages->Change(m_page);
        std::move(body.Texts.begin(), body.Texts.end(), std::back_inserter(page.Texts));
        std::move(body.Rules.begin(), body.Rules.end(), std::back_inserter(page.Rules));
        const Block footer = Band(m_report.Footer, scope);
        m_y = m_inside.bottom() - footer.Height;
        Put(footer);
    }
}

}  // namespace print
