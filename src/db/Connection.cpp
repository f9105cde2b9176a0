#include "db/Connection.h"

#include <algorithm>
#include <mutex>
#include <vector>

#include "base/Errors.h"
#include "db/ConnectionImpl.h"
#include "db/ConnectionText.h"
#include "db/Recordset.h"
#include "db/RecordsetImpl.h"
#include "embedded/Server.h"

namespace db {

namespace {

struct OpenConnections {
    std::mutex Lock;
    std::vector<Connection*> Oldest;
};

// Never destroyed: the session's connection may be a global itself.
OpenConnections& TheOpenConnections() {
    static OpenConnections* const connections = new OpenConnections;
    return *connections;
}

std::function<void(const QString&)>& CommandHook() {
    static std::function<void(const QString&)> hook;
    return hook;
}

void ShowToHook(const QString& command) {
    if (CommandHook()) {
        CommandHook()(command);
    }
}

template <typename Work>
auto CarryingCommand(const QString& command, Work work) {
    try {
        return work();
    } catch (const base::DatabaseError& error) {
        if (!error.Command().isEmpty()) {
            throw;
        }
        throw base::DatabaseError(error.Number(), error.Description(), command);
    }
}

}  // namespace

Connection::Impl::Impl(std::unique_ptr<Driver> driver, QString connectionString)
    : Engine(std::move(driver)), Text(std::move(connectionString)) {}

qint64 Connection::Impl::Run(const QString& command, embedded::RowSink& sink) {
    ShowToHook(command);
    return CarryingCommand(command, [&] { return Engine->Execute(command, sink); });
}

void Connection::Impl::RunStep(const QString& name, void (Driver::*step)()) {
    ShowToHook(name);
    CarryingCommand(name, [&] { ((*Engine).*step)(); });
}

std::vector<QString> Connection::Impl::KeyColumns(const QString& table) {
    return Engine->KeyColumns(table);
}

std::shared_ptr<Connection> Connection::Open(const QString& connectionString, const QString& user,
                                             const QString& password) {
    const LogOn inside = LogOnOf(connectionString);
    const LogOn logOn = user.isEmpty() ? inside : LogOn{user, password};
    const QString kept = WithoutLogOn(connectionString);
    return std::make_shared<Connection>(OpenDriver(WithLogOn(kept, logOn)), kept);
}

Connection::Connection(std::unique_ptr<Driver> driver, QString connectionString)
    : m_impl(std::make_unique<Impl>(std::move(driver), WithoutLogOn(connectionString))) {
    const std::lock_guard guard(TheOpenConnections().Lock);
    TheOpenConnections().Oldest.push_back(this);
}

Connection::~Connection() {
    const std::lock_guard guard(TheOpenConnections().Lock);
    std::erase(TheOpenConnections().Oldest, this);
}

std::shared_ptr<Connection> Connection::Find(const QString& connectionString) {
    const QString wanted = WithoutLogOn(connectionString);
    const std::lock_guard guard(TheOpenConnections().Lock);
    for (Connection* connection : TheOpenConnections().Oldest) {
        if (connection->ConnectionString() == wanted) {
            if (auto shared = connection->weak_from_this().lock()) {
                return shared;
            }
        }
    }
    return nullptr;
}

const QString& Connection::ConnectionString() const {
    return m_impl->Text;
}

const QString& Connection::DefaultDatabase() const {
    return m_impl->DefaultDatabase;
}

void Connection::SetDefaultDatabase(const QString& name) {
    m_impl->Engine->SetDefaultDatabase(name);
    m_impl->DefaultDatabase = name;
}

bool Connection::IsReadOnly() const {
    return m_impl->Engine->IsReadOnly();
}

int Connection::CursorLocation() const {
    return m_impl->CursorLocation;
}

void Connection::SetCursorLocation(int location) {
    m_impl->CursorLocation = location;
}

std::shared_ptr<Recordset> Connection::Execute(const QString& commandText, int* recordsAffected,
                                               int options) {
    Q_UNUSED(options);
    auto rows = std::make_shared<RowStore>();
    const qint64 written = m_impl->Run(commandText, *rows);
    if (recordsAffected) {
        *recordsAffected = int(written);
    }
    auto recordset = std::make_shared<Recordset>();
    recordset->m_impl->Keep(std::move(rows), commandText);
    return recordset;
}

void Connection::BeginTrans() {
    m_impl->RunStep(QStringLiteral("BeginTrans"), &Driver::BeginTrans);
}

void Connection::CommitTrans() {
    m_impl->RunStep(QStringLiteral("CommitTrans"), &Driver::CommitTrans);
}

void Connection::RollbackTrans() {
    m_impl->RunStep(QStringLiteral("RollbackTrans"), &Driver::RollbackTrans);
}

void Connection::SetCommandHook(std::function<void(const QString& commandText)> hook) {
    CommandHook() = std::move(hook);
}

void Connection::SetWaitHook(std::function<void(bool waiting)> hook) {
    embedded::Server::SetWaitHook(std::move(hook));
}

Transaction::Transaction(Connection& connection) : m_connection(connection) {
    m_connection.BeginTrans();
}

Transaction::~Transaction() {
    if (!m_open) {
        return;
    }
    // A server that cannot be told to undo undoes by itself when the connection is gone; the error
    // that brought us here is the one to report.
    try {
        m_connection.RollbackTrans();
    } catch (const base::RuntimeError& error) {
        qWarning("A transaction could not be rolled back: %s", error.what());
    }
}

void Transaction::Commit() {
    m_connection.CommitTrans();
    m_open = false;
}

ConnectionRef::ConnectionRef(std::shared_ptr<Connection> connection)
    : m_connection(std::move(connection)) {
    if (!m_connection) {
        throw base::DatabaseError(3709, QStringLiteral("There is no connection to the server."));
    }
}

ConnectionRef::ConnectionRef(const QString& connectionString)
    : m_connection(Connection::Find(connectionString)) {
    if (!m_connection) {
        throw base::DatabaseError(3709, QStringLiteral("No connection is open for \"%1\".")
                                            .arg(WithoutLogOn(connectionString)));
    }
}

}  // namespace db
