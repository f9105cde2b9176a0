#pragma once

#include "db/Driver.h"
#include "embedded/Server.h"

namespace db {

/// A session on a hospital file of this workstation.
class EmbeddedDriver final : public Driver {
public:
    /// Throws base::DatabaseError naming the file when it cannot be opened.
    explicit EmbeddedDriver(const QString& file);
    /// Makes the file, or waits longer for other programs, as embedded::Server does.
    EmbeddedDriver(const QString& file, embedded::Server::Mode mode,
                   int busyMilliseconds = embedded::Server::kBusyMilliseconds)
        : m_server(file, mode, busyMilliseconds) {}

    qint64 Execute(const QString& command, embedded::RowSink& sink) override;
    void SetDefaultDatabase(const QString& name) override { m_defaultDatabase = name; }
    void BeginTrans() override { m_server.BeginTrans(); }
    void CommitTrans() override { m_server.CommitTrans(); }
    void RollbackTrans() override { m_server.RollbackTrans(); }
    void RunScript(const QString& name, const QString& script) override {
        m_server.RunScript(name, script);
    }
    bool IsReadOnly() const override { return m_server.IsReadOnly(); }
    std::vector<QString> KeyColumns(const QString& table) override;

private:
    embedded::Server m_server;
    QString m_defaultDatabase;
};

}  // namespace db
