#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "db/Connection.h"

namespace print {

class ReportPages;

/// One table that a report reads.
struct ReportTable {
    QString Name;
    QString Database;
    /// Which database the table is read from. The report reads over the session's connection: a
    /// password, which would open another one, is refused.
    void SetLogOnInfo(const QString& server, const QString& database, const QString& user,
                      const QString& password);
};

/// One value that the report asks of its caller.
struct ParameterField {
    QString Name;
    QString Value;
    void AddCurrentValue(const QString& value) { Value = value; }
};

/// A report file, opened: its tables, its parameters in the file's order, its title.
class Report final {
public:
    /// Reads a .rpt file. Throws base::RuntimeError naming file and line when it is missing,
    /// broken or refers to what it does not define.
    static std::shared_ptr<Report> OpenReport(const QString& path);
    ~Report();

    std::vector<ReportTable>& Tables();
    std::vector<ParameterField>& ParameterFields();
    void SetTitle(const QString& title);

    /// Runs the report's query with the parameters and keeps the rows: what is printed later is
    /// what stood in the tables now. Throws base::DatabaseError.
    void ReadRecords(db::Connection& connection);
    /// The pages of what was read. ReadRecords must have run.
    std::shared_ptr<const ReportPages> Pages() const;

private:
    Report();
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace print
