#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "embedded/RowSink.h"

namespace db {

/// What a connection needs of an engine. Errors are base::DatabaseError with the engine's number
/// and text; the connection adds the command.
class Driver {
public:
    virtual ~Driver() = default;
    /// Runs a command text; rows of the first result with columns go to `sink`. Returns the rows
    /// written, -1 where none.
    virtual qint64 Execute(const QString& command, embedded::RowSink& sink) = 0;
    virtual void SetDefaultDatabase(const QString& name) = 0;
    virtual void BeginTrans() = 0;
    virtual void CommitTrans() = 0;
    virtual void RollbackTrans() = 0;
    /// Runs a script, batches between GO lines. A failure's description begins with "<name>:<line>:
    /// ".
    virtual void RunScript(const QString& name, const QString& script);
    /// True where databases are made and dropped by commands, as on SQL Server.
    virtual bool HasDatabases() const { return false; }
    /// True where every write is refused.
    virtual bool IsReadOnly() const { return false; }
    /// Key columns of a table as named in a statement; empty where it has none.
    virtual std::vector<QString> KeyColumns(const QString& table) = 0;
};

/// The driver that a connection string asks for, logged on; the string may hold the log-on. Throws
/// base::DatabaseError without user and password in it.
std::unique_ptr<Driver> OpenDriver(const QString& connectionString);

}  // namespace db
