#include "print/ReportValues.h"

#include "base/Dates.h"
#include "base/Numbers.h"

namespace print {

ReportValues::ReportValues(const ReportDefinition& report, std::shared_ptr<const db::RowStore> rows,
                           QString title, QStringList parameters, QDateTime printed)
    : m_report(report),
      m_rows(std::move(rows)),
      m_title(std::move(title)),
      m_printed(std::move(printed)) {
    for (qsizetype i = 0; i < report.Parameters.size(); ++i)
        m_parameters.insert(report.Parameters[i].toLower(), parameters.value(i));
    for (const ReportField& field : report.Fields) {
        const int column = m_rows->ColumnIndex(field.Name);
        if (column < 0)
            FailReport(report.FileName, field.Line,
                       QStringLiteral("the query answers no column \"%1\"").arg(field.Name));
        m_fields.insert(field.Name.toLower(), int(m_columns.size()));
        m_columns.push_back(column);
    }
}

ReportScope ReportValues::Whole() const {
    return {RowCount() > 0 ? 0 : -1, 0, RowCount(), 0, 0};
}

QString ReportValues::Resolve(const QString& name, const ReportScope& scope) const {
    const QString key = name.toLower();
    const auto field = m_fields.constFind(key);
    if (field != m_fields.constEnd())
        return FieldText(*field, scope.Row);
    if (key.startsWith(u"param."))
        return m_parameters.value(key.mid(6));
    if (key.startsWith(u"sum."))
        return SumText(m_fields.value(key.mid(4)), scope);
    if (key == u"count")
        return QString::number(scope.Last - scope.First);
    if (key == u"page")
        return QString::number(scope.Page);
    if (key == u"pages")
        return QString::number(scope.Pages);
    if (key == u"printed")
        return base::DateTimeText(m_printed);
    return m_title;
}

QString ReportValues::Fill(const ReportTemplate& text, const ReportScope& scope) const {
    return text.Fill([&](const QString& name) { return Resolve(name, scope); });
}

int ReportValues::GroupEnd(int first) const {
    const int column = m_columns[m_report.FieldIndex(m_report.Group->By)];
    int row = first + 1;
    while (row < RowCount() && m_rows->At(row, column) == m_rows->At(first, column))
        ++row;
    return row;
}

QString ReportValues::FieldText(int field, int row) const {
    if (row < 0)
        return {};
    const int column = m_columns[field];
    const FieldFormat format = m_report.Fields[field].Format;
    if (format == FieldFormat::Text || format == FieldFormat::Number)
        return m_rows->TextAt(row, column);
    const db::Value value = m_rows->At(row, column);
    if (value.IsNull())
        return {};
    if (format == FieldFormat::Money)
        return base::MoneyText(value.Number());
    const QDateTime moment = value.Moment();
    if (!moment.isValid())
        return value.Text();
    return format == FieldFormat::Date ? base::ShortDate(moment.date())
                                       : base::DateTimeText(moment);
}

QString ReportValues::SumText(int field, const ReportScope& scope) const {
    double sum = 0;
    for (int row = scope.First; row < scope.Last; ++row)
        sum += m_rows->At(row, m_columns[field]).Number();
    return m_report.Fields[field].Format == FieldFormat::Money ? base::MoneyText(sum)
                                                               : base::PlainText(sum);
}

}  // namespace print
