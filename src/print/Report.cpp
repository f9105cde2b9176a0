#include "print/Report.h"

#include <QRegularExpression>

#include "base/Clock.h"
#include "base/Errors.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "print/ReportPaginator.h"

namespace print {

namespace {

constexpr int kInvalidCall = 5;

}  // namespace

void ReportTable::SetLogOnInfo(const QString&, const QString& database, const QString&,
                               const QString& password) {
    if (!password.isEmpty())
        throw base::RuntimeError(
            kInvalidCall,
            QStringLiteral("A report reads over the session's connection: it takes no password."));
    Database = database;
}

class Report::Impl {
public:
    QString Command() const;

    ReportDefinition Definition;
    std::vector<ReportTable> Tables;
    std::vector<ParameterField> Parameters;
    QString Title;
    std::unique_ptr<ReportValues> Values;
    mutable std::shared_ptr<const ReportPages> Pages;
};

QString Report::Impl::Command() const {
    return Definition.Query.Fill([this](const QString& name) {
        if (name == u"database") {
            static const QRegularExpression plainName(QStringLiteral("^[A-Za-z_][A-Za-z_0-9]*$"));
            const QString database = Tables.empty() ? QString() : Tables.front().Database;
            if (!plainName.match(database).hasMatch())
                throw base::RuntimeError(
                    kInvalidCall,
                    QStringLiteral("\"%1\" is not the name of a database.").arg(database));
            return database;
        }
        const auto found =
            std::find_if(Parameters.begin(), Parameters.end(), [&](const ParameterField& field) {
                return name.mid(6).compare(field.Name, Qt::CaseInsensitive) == 0;
            });
        return db::Quoted(found == Parameters.end() ? QString() : found->Value);
    });
}

Report::Report() : m_impl(std::make_unique<Impl>()) {}

Report::~Report() = default;

std::shared_ptr<Report> Report::OpenReport(const QString& path) {
    std::shared_ptr<Report> report(new Report);
    Impl& impl = *report->m_impl;
    impl.Definition = ReadReportDefinition(path);
    impl.Title = impl.Definition.Title;
    for (const auto& table : impl.Definition.Tables)
        impl.Tables.push_back({table.Name, table.Database});
    for (const QString& parameter : impl.Definition.Parameters)
        impl.Parameters.push_back({parameter, {}});
    return report;
}

std::vector<ReportTable>& Report::Tables() {
    return m_impl->Tables;
}

std::vector<ParameterField>& Report::ParameterFields() {
    return m_impl->Parameters;
}

void Report::SetTitle(const QString& title) {
    m_impl->Title = title;
}

void Report::ReadRecords(db::Connection& connection) {
    const QString command = m_impl->Command();
    const auto records = connection.Execute(command);
    if (!records || records->State() == 0)
        throw base::DatabaseError(
            kInvalidCall,
            QStringLiteral("%1: the query answers no columns").arg(m_impl->Definition.FileName),
            command);
    QStringList values;
    for (const ParameterField& field : m_impl->Parameters)
        values += field.Value;
    m_impl->Pages.reset();
    m_impl->Values = std::make_unique<ReportValues>(m_impl->Definition, records->Rows(),
                                                    m_impl->Title, values, base::Clock::Now());
}

std::shared_ptr<const ReportPages> Report::Pages() const {
    if (!m_impl->Values)
        throw base::RuntimeError(kInvalidCall, QStringLiteral("The report has not been read."));
    if (!m_impl->Pages)
        m_impl->Pages = ReportPaginator(m_impl->Definition, *m_impl->Values).Run();
    return m_impl->Pages;
}

}  // namespace print
