#pragma once

#include <functional>

#include "base/Errors.h"
#include "components/CurrentUser.h"
#include "db/Connection.h"
#include "db/Driver.h"

using namespace Qt::StringLiterals;

/// A server with a plug that can be pulled.
class PluggedDriver final : public db::Driver {
public:
    explicit PluggedDriver(const QString& connectionString)
        : m_engine(db::OpenDriver(connectionString)) {}
    static inline bool Gone = false;
    /// With Gone: so many commands are still answered.
    static inline int Left = 0;
    /// Sees each command before it is run.
    static inline std::function<void(db::Driver&, const QString&)> Before;

    qint64 Execute(const QString& command, embedded::RowSink& sink) override {
        if (Gone && Left-- <= 0)
            throw base::DatabaseError(10054, u"The server is gone."_s, command);
        if (Before)
            Before(*m_engine, command);
        return m_engine->Execute(command, sink);
    }
    void SetDefaultDatabase(const QString& name) override { m_engine->SetDefaultDatabase(name); }
    void BeginTrans() override { m_engine->BeginTrans(); }
    void CommitTrans() override {
        if (Gone && Left-- <= 0)
            throw base::DatabaseError(10054, u"The server is gone."_s);
        m_engine->CommitTrans();
    }
    void RollbackTrans() override { m_engine->RollbackTrans(); }
    std::vector<QString> KeyColumns(const QString& table) override {
        return m_engine->KeyColumns(table);
    }

private:
    std::unique_ptr<db::Driver> m_engine;
};

class SessionUser final : public components::CurrentUser {
public:
    explicit SessionUser(std::shared_ptr<db::Connection> connection, QString code = u"4601"_s,
                         QString name = u"Nurse One"_s)
        : m_connection(std::move(connection)), m_code(std::move(code)), m_name(std::move(name)) {}
    void SetPasswordDeptCode(const QString&) override {}
    void ShowMain() override {}
    bool Connected() const override { return true; }
    std::shared_ptr<db::Connection> SQLConnection() const override { return m_connection; }
    QString EmployeeCode() const override { return m_code; }
    QString employeename() const override { return m_name; }
    QString ServerName() const override { return {}; }

private:
    std::shared_ptr<db::Connection> m_connection;
    QString m_code;
    QString m_name;
};
