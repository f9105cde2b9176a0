#pragma once

#include <QSet>
#include <memory>
#include <optional>

#include "base/Errors.h"
#include "db/Driver.h"
#include "db/OdbcHandles.h"

namespace db {

/// A session on a database server, through the machine's ODBC driver manager.
///
/// An error inside a transaction undoes the whole of it, as the server's procedures do: what
/// follows is outside of it, and its commit is refused (3902). The command that finds the
/// connection lost raises that and is not sent again; the next one connects anew. Where a
/// transaction was open, everything up to its roll-back raises the same error: the rest of an
/// action is never written without its beginning.
class OdbcDriver final : public Driver {
public:
    /// Connects within 15 seconds, encrypted unless the string itself says otherwise. The string
    /// holds the log-on and is kept in memory, to connect anew. Throws base::DatabaseError with the
    /// server's number and text.
    explicit OdbcDriver(const QString& connectionString);
    ~OdbcDriver() override;

    /// A command that takes longer than 30 seconds is given up.
    qint64 Execute(const QString& command, embedded::RowSink& sink) override;
    /// Takes the time it needs.
    void RunScript(const QString& name, const QString& script) override;
    bool HasDatabases() const override { return m_isSqlServer; }
    /// Sent at once to a SQL Server; elsewhere only remembered for KeyColumns.
    void SetDefaultDatabase(const QString& name) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;
    std::vector<QString> KeyColumns(const QString& table) override;

private:
    void Connect();
    /// Connects anew after a loss. Throws base::DatabaseError.
    void Reconnect();
    void RunBatch(const QString& text);
    /// Does `work` on a living connection; whatever fails in it ends in Fail().
    template <typename Work>
    auto Guarded(Work work);
    /// Notes a lost connection, undoes an open transaction, throws base::DatabaseError.
    [[noreturn]] void Fail(const OdbcDiagnosis& diagnosis);
    /// Throws base::DatabaseError naming the first character that the server cannot hold.
    void RequireKnownCharacters(const QString& command);
    bool IsKnown(char32_t character);
    qint64 Run(const QString& command, embedded::RowSink& sink, quintptr seconds = 0);
    void UseDefaultDatabase();
    void AskKeys(QStringList pieces, embedded::RowSink& rows);
    void SetAutoCommit(bool on);
    void EndTransaction(SQLSMALLINT how);

    OdbcHandle m_environment;
    std::unique_ptr<OdbcHandle> m_connection;
    QString m_connectionString;
    QString m_defaultDatabase;
    QSet<char32_t> m_knownCharacters;
    std::optional<base::DatabaseError> m_lost;
    bool m_lostInTransaction = false;
    bool m_committing = false;
    int m_depth = 0;
    bool m_isSqlServer = false;
};

}  // namespace db
