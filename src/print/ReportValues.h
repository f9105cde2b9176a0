#pragma once

#include <QDateTime>
#include <QHash>
#include <memory>

#include "db/RowStore.h"
#include "print/ReportDefinition.h"

namespace print {

/// Where on the report a placeholder stands: decides what {{Field}}, {{count}} and {{sum.…}} mean.
struct ReportScope {
    /// The row whose fields are shown; -1 shows none.
    int Row = -1;
    /// The rows counted and summed: from First up to, not including, Last.
    int First = 0;
    int Last = 0;
    int Page = 0;
    int Pages = 0;
};

/// The values of a report as they are printed: the rows that were read, the parameters, the
/// title and the moment of reading.
class ReportValues final {
public:
    /// Throws base::RuntimeError 321 naming a field of the report that the rows lack.
    ReportValues(const ReportDefinition& report, std::shared_ptr<const db::RowStore> rows,
                 QString title, QStringList parameters, QDateTime printed);

    int RowCount() const { return m_rows->RowCount(); }
    /// The whole report, with its first row as the current one.
    ReportScope Whole() const;
    /// The text of a name. Money is "0.00", dates are "M/d/yyyy"; null is empty.
    QString Resolve(const QString& name, const ReportScope& scope) const;
    /// A template filled for a place on the report.
    QString Fill(const ReportTemplate& text, const ReportScope& scope) const;
    /// The row after the last one of the group that begins at `first`.
    int GroupEnd(int first) const;

private:
    QString FieldText(int field, int row) const;
    QString SumText(int field, const ReportScope& scope) const;

    const ReportDefinition& m_report;
    std::shared_ptr<const db::RowStore> m_rows;
    QString m_title;
    QDateTime m_printed;
    QHash<QString, QString> m_parameters;
    QHash<QString, int> m_fields;
    /// The position in the rows of each of the report's fields.
    std::vector<int> m_columns;
};

}  // namespace print
