#pragma once

#include <QStringList>
#include <functional>
#include <map>
#include <memory>

#include "base/Errors.h"
#include "db/Connection.h"
#include "db/Driver.h"

using namespace Qt::StringLiterals;

/// Answers and failures a test has laid out; the test looks at what it was sent afterwards.
struct FakeServer {
    std::function<qint64(const QString& command, embedded::RowSink& sink)> Answer;
    std::map<QString, std::vector<QString>> Keys;
    QStringList Steps;
    bool CommitFails = false;
};

class FakeDriver final : public db::Driver {
public:
    explicit FakeDriver(FakeServer& server) : m_server(server) {}
    qint64 Execute(const QString& command, embedded::RowSink& sink) override {
        m_server.Steps << command;
        return m_server.Answer(command, sink);
    }
    void SetDefaultDatabase(const QString&) override {}
    void BeginTrans() override { m_server.Steps << u"begin"_s; }
    void CommitTrans() override {
        m_server.Steps << u"commit"_s;
        if (m_server.CommitFails)
            throw base::DatabaseError(1205, u"deadlock"_s);
    }
    void RollbackTrans() override { m_server.Steps << u"rollback"_s; }
    std::vector<QString> KeyColumns(const QString& table) override { return m_server.Keys[table]; }

private:
    FakeServer& m_server;
};

/// The error that `work` throws; fails the test when it throws none.
template <typename Work>
base::DatabaseError ErrorOf(Work work) {
    try {
        work();
    } catch (const base::DatabaseError& error) {
        return error;
    }
    return base::DatabaseError(-1, u"no error was raised"_s);
}
