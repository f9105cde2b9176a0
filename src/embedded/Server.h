#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "embedded/RowSink.h"

namespace embedded {

/// One session on a hospital file: the embedded database server. It takes the same command
/// texts and scripts as the hospital's SQL Server, in the subset that docs/sql-subset.md lists.
/// Not thread-safe; one session belongs to one thread.
class Server final {
public:
    enum class Mode { OpenExisting, Create };
    /// How long a session waits for the others on the file.
    static constexpr int kBusyMilliseconds = 30'000;

    /// Opens the file, or makes an empty one that must not exist yet. Throws base::DatabaseError
    /// naming the file when it is missing, empty, truncated, no hospital file, not readable or
    /// locked longer than `busyMilliseconds`. A read-only file opens; the first write then fails.
    Server(const QString& file, Mode mode, int busyMilliseconds = kBusyMilliseconds);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Runs one client command: a procedure call or a plain statement, in any spelling of case.
    /// Unqualified names belong to `defaultDatabase`. Rows go to `sink` (may be null: discarded);
    /// returns the number of rows that the last writing statement changed, -1 where none wrote.
    /// Throws base::DatabaseError with the server's number and text; the failing statement's
    /// writes, and an open transaction with all of its writes, are then undone.
    qint64 Execute(const QString& command, const QString& defaultDatabase, RowSink* sink);

    /// Runs a script (batches between GO lines). Throws base::DatabaseError whose description
    /// begins with "<scriptName>:<line>: ". Nothing outside the subset is ignored.
    void RunScript(const QString& scriptName, const QString& script);

    /// The client's own transaction; BeginTrans nests. RollbackTrans undoes all levels and does
    /// nothing where the server has already undone them.
    void BeginTrans();
    void CommitTrans();
    void RollbackTrans();
    /// Open transactions, the procedures' own included (@@TRANCOUNT).
    int TransactionDepth() const;

    /// True for a file that can only be looked at.
    bool IsReadOnly() const;

    /// Key columns of a table given as `DATABASE..table` (or unqualified), in key order; empty
    /// where the table has no key. Throws base::DatabaseError 208 for an unknown table.
    std::vector<QString> KeyColumns(const QString& table, const QString& defaultDatabase);

    /// Called with true when a session has waited half a second for another program to finish
    /// writing, and with false when that wait is over. One hook a process.
    static void SetWaitHook(std::function<void(bool waiting)> hook);

private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace embedded
