#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace db {

class Driver;
class Recordset;
class RowStore;

/// The session's road to the database server. Commands are sent one at a time, as text.
class Connection final : public std::enable_shared_from_this<Connection> {
public:
    /// Opens the connection. The string is "Driver=Embedded;File=<hospital file>" for the
    /// embedded server, anything else goes to ODBC; user and password are handed over and not
    /// kept. Throws base::DatabaseError.
    static std::shared_ptr<Connection> Open(const QString& connectionString,
                                            const QString& user = {}, const QString& password = {});
    /// Over any driver: used by tests with a driver that fails on purpose.
    explicit Connection(std::unique_ptr<Driver> driver, QString connectionString = {});
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// The open connection of this string; null where there is none.
    static std::shared_ptr<Connection> Find(const QString& connectionString);

    /// As it was opened, without user and password.
    const QString& ConnectionString() const;
    const QString& DefaultDatabase() const;
    void SetDefaultDatabase(const QString& name);
    /// True where every write is refused, as of a hospital file without write permission.
    bool IsReadOnly() const;
    /// 3 is a client-side snapshot, which every recordset here is.
    int CursorLocation() const;
    void SetCursorLocation(int location);

    /// Runs a command and returns its first rows (a closed recordset where it has none).
    /// `recordsAffected` receives the rows written, -1 where nothing was.
    std::shared_ptr<Recordset> Execute(const QString& commandText, int* recordsAffected = nullptr,
                                       int options = -1);

    void BeginTrans();
    void CommitTrans();
    /// Not an error where the server has already undone the transaction.
    void RollbackTrans();

    /// Called with every command text just before it is sent; also for BEGIN, COMMIT and
    /// ROLLBACK, as "BeginTrans", "CommitTrans", "RollbackTrans". One hook a process.
    static void SetCommandHook(std::function<void(const QString& commandText)> hook);
    /// Called with true when a command has waited half a second for another program that writes
    /// to the hospital file, and with false when that wait is over. One hook a process.
    static void SetWaitHook(std::function<void(bool waiting)> hook);

private:
    friend class Recordset;
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

/// A transaction that leaving early undoes: begun by its constructor, kept only by Commit().
class Transaction final {
public:
    explicit Transaction(Connection& connection);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void Commit();

private:
    Connection& m_connection;
    bool m_open = true;
};

/// Either an open connection or the string of one.
class ConnectionRef final {
public:
    ConnectionRef(std::shared_ptr<Connection> connection);
    /// Finds the open session of that string; throws base::DatabaseError where there is none.
    ConnectionRef(const QString& connectionString);
    Connection& Get() const { return *m_connection; }
    const std::shared_ptr<Connection>& Shared() const { return m_connection; }

private:
    std::shared_ptr<Connection> m_connection;
};

}  // namespace db
