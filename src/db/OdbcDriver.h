#pragma once

#include <QSet>
#include <optional>

#include "base/Errors.h"
#include "db/Driver.h"
#include "db/OdbcHandles.h"

namespace db {

/// A session on a database server, through the machine's ODBC driver manager.
///
/// An error inside a transaction undoes the whole of it, as the server's procedures do: what
/// follows is outside of it, and its commit is refused (3902). The log-on is not kept, so a lost
/// connection stays lost: the command that finds out and every one after it raise the same error.
class OdbcDriver final : public Driver {
public:
    /// Connects within 15 seconds. `connectionString` holds the log-on; it is not kept. Throws
    /// base::DatabaseError with the server's number and text.
    explicit OdbcDriver(const QString& connectionString);
    ~OdbcDriver() override;

    qint64 Execute(const QString& command, embedded::RowSink& sink) override;
    /// Sent at once to a SQL Server; elsewhere only remembered for KeyColumns.
    void SetDefaultDatabase(const QString& name) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;
    std::vector<QString> KeyColumns(const QString& table) override;

private:
    void Connect(const QString& connectionString);
    /// Does `work` on a living connection; whatever fails in it ends in Fail().
    template <typename Work>
    auto Guarded(Work work);
    /// Notes a lost connection, undoes an open transaction, throws base::DatabaseError.
    [[noreturn]] void Fail(const OdbcDiagnosis& diagnosis);
    /// Throws base::DatabaseError naming the first character that the server cannot hold.
    void RequireKnownCharacters(const QString& command);
    bool IsKnown(char32_t character);
    qint64 Run(const QString& command, embedded::RowSink& sink);
    void SetAutoCommit(bool on);
    void EndTransaction(SQLSMALLINT how);

    OdbcHandle m_environment;
    OdbcHandle m_connection;
    QString m_defaultDatabase;
    QSet<char32_t> m_knownCharacters;
    std::optional<base::DatabaseError> m_lost;
    int m_depth = 0;
    bool m_isSqlServer = false;
};

}  // namespace db
