#pragma once

#include <sqlite3.h>

#include <QElapsedTimer>
#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "embedded/Failure.h"
#include "embedded/WriteTurn.h"

namespace embedded {

struct StatementCloser {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using PreparedStatement = std::unique_ptr<sqlite3_stmt, StatementCloser>;

/// The open file: SQLite's handle, its statements, and its errors as the server would put them.
class Database final {
public:
    /// Opens or makes the file. `readOnly` opens it without ever writing beside it.
    Database(const QString& file, bool create, bool readOnly, int busyMilliseconds);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    sqlite3* Handle() const { return m_handle; }
    PreparedStatement Prepare(std::string_view sql, bool lasting = true);
    /// Runs statements that return nothing of interest.
    void Run(const char* sql);
    /// True when the step produced a row; throws Failure.
    bool Step(sqlite3_stmt* statement);
    qint64 Number(const char* sql);
    /// Begins a transaction that writes. Waits for the other programs on the file, up to the limit,
    /// and is not overtaken by those that came later. Throws Failure 1222.
    void BeginWriting();
    bool InTransaction() const { return sqlite3_get_autocommit(m_handle) == 0; }
    /// From now on a commit fails, undone, when the file or its log is no longer where it was
    /// opened.
    void RefuseCommitsWhenLost();
    /// Changes whenever another session has written to the file; costs nothing.
    unsigned DataVersion() const;
    bool IsReadOnly() const { return sqlite3_db_readonly(m_handle, "main") == 1; }
    /// What went wrong last.
    Failure LastFailure() const;

    /// As Server's.
    static void SetWaitHook(std::function<void(bool waiting)> hook);

private:
    static int WaitForLock(void* self, int count);
    /// One short pause; false when the limit is reached.
    bool Wait();
    void EndWait();
    Failure InUse() const;
    static int IsLost(void* self);
    Failure FileFailure(int code, const std::string& message) const;
    Failure ConstraintFailure(int code, const std::string& message) const;

    sqlite3* m_handle = nullptr;
    QString m_file;
    int m_busyMilliseconds;
    std::unique_ptr<WriteTurn> m_turn;
    PreparedStatement m_begin;
    // Valid while this session waits.
    QElapsedTimer m_waiting;
    bool m_waitShown = false;
};

/// Ends the run of a statement on every way out, so that it holds no lock and can run again.
class StatementReset final {
public:
    explicit StatementReset(sqlite3_stmt* statement) : m_statement(statement) {}
    ~StatementReset() { sqlite3_reset(m_statement); }
    StatementReset(const StatementReset&) = delete;
    StatementReset& operator=(const StatementReset&) = delete;

private:
    sqlite3_stmt* m_statement;
};

}  // namespace embedded
