#pragma once

#include <memory>

#include "print/BlockLayout.h"
#include "print/ReportValues.h"

namespace print {

/// Lays a report's rows out on pages: the header and footer on every page, the column headings
/// on every page with rows, no row cut where it fits a page, a group's header together with its
/// first row, totals together with the row before them.
class ReportPaginator final {
public:
    ReportPaginator(const ReportDefinition& report, const ReportValues& values);

    /// At least one page, also for a report without rows.
    std::shared_ptr<const ReportPages> Run();

private:
    Block Band(const ReportBand& band, const ReportScope& scope) const;
    Block Row(int row) const;
    Block Headings() const;
    void MeasureColumns();
    void PlaceRows();
    void PlaceGroup(int first, int end);
    void PlaceTall(Block row);
    void PlaceHeadersAndFooters();
    void StartPage(int row);
    void Put(const Block& block);
    /// The space above a group that does not begin its page.
    double GroupGap() const;
    double Room() const { return m_bottom - m_y; }
    bool Fits(double height) const { return height <= Room() || m_y <= m_bodyTop; }

    const ReportDefinition& m_report;
    const ReportValues& m_values;
    std::shared_ptr<ReportPages> m_pages;
    BlockLayout m_layout;
    QRectF m_inside;
    std::vector<QPair<double, double>> m_columns;
    Block m_headings;
    /// The row that each page's header and footer show.
    std::vector<int> m_rowOfPage;
    double m_top = 0;
    double m_bottom = 0;
    /// Where the first row of the current page goes.
    double m_bodyTop = 0;
    double m_y = 0;
    int m_page = -1;
};

}  // namespace print
