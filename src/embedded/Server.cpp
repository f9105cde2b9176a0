#include "embedded/Server.h"

#include <QFile>
#include <unordered_map>

#include "base/Errors.h"
#include "embedded/CallText.h"
#include "embedded/HospitalFile.h"
#include "embedded/Interpreter.h"
#include "embedded/NoRows.h"
#include "embedded/ScriptText.h"
#include "embedded/StatementParser.h"
#include "embedded/Text.h"

namespace embedded {

namespace {

constexpr size_t MostKeptCommands = 100;

base::DatabaseError ErrorOf(const Failure& failure, const QString& command = {}) {
    return base::DatabaseError(failure.Number(), QString::fromStdString(failure.Text()), command);
}

}  // namespace

class Server::Impl {
public:
    Impl(std::unique_ptr<Database> database)
        : m_database(std::move(database)),
          m_catalog(*m_database),
          m_session(*m_database),
          m_interpreter(*m_database, m_catalog, m_session) {
        m_version = m_catalog.Version();
        m_dataVersion = m_database->DataVersion();
    }

    qint64 Execute(const QString& command, const QString& defaultDatabase, RowSink& sink);
    void RunScript(const QString& scriptName, const QString& script);
    std::vector<QString> KeyColumns(const QString& table, const QString& defaultDatabase);

    SessionState& Session() { return m_session; }
    bool IsReadOnly() const { return m_database->IsReadOnly(); }
    /// Undoes everything, and forgets what was made in it.
    void UndoAll();

private:
    void ExecuteText(const std::string& text, const std::string& database, RowSink& sink);
    std::shared_ptr<Module> ProcedureNamed(std::string_view name, const std::string& database);
    void RunBatches(const std::string& text);
    void Refresh();
    void Recheck();
    void Forget();

    std::unique_ptr<Database> m_database;
    Catalog m_catalog;
    SessionState m_session;
    Interpreter m_interpreter;
    std::unordered_map<std::string, std::shared_ptr<Module>> m_targets;
    std::unordered_map<std::string, std::shared_ptr<Module>> m_commands;
    std::string m_key;
    int m_version = 0;
    unsigned m_dataVersion = 0;
};

qint64 Server::Impl::Execute(const QString& command, const QString& defaultDatabase,
                             RowSink& sink) {
    try {
        const QByteArray text = command.toUtf8();
        if (text.contains('\0')) {
            throw SyntaxFailure("NUL", 1);
        }
        Refresh();
        m_session.changed = -1;
        ExecuteText(text.toStdString(), NameKey(defaultDatabase.toStdString()), sink);
        return m_session.changed;
    } catch (const Failure& failure) {
        UndoAll();
        throw ErrorOf(failure, command);
    } catch (...) {
        UndoAll();
        throw;
    }
}

void Server::Impl::ExecuteText(const std::string& text, const std::string& database,
                               RowSink& sink) {
    if (const std::optional<CallText> call = ReadCallText(text)) {
        if (const auto procedure = ProcedureNamed(call->name, database)) {
            m_interpreter.Call(*procedure, call->arguments, sink);
            return;
        }
    }
    m_key.assign(database).append("\n").append(text);
    std::shared_ptr<Module> module;
    const auto known = m_commands.find(m_key);
    if (known != m_commands.end()) {
        module = known->second;
    } else {
        module = StatementParser::ParseCommand(text, database);
        if (m_commands.size() >= MostKeptCommands) {
            m_commands.clear();
        }
        m_commands.emplace(m_key, module);
    }
    m_interpreter.RunBatch(*module, sink);
}

std::shared_ptr<Module> Server::Impl::ProcedureNamed(std::string_view name,
                                                     const std::string& database) {
    m_key.assign(database).append("\n").append(name);
    const auto known = m_targets.find(m_key);
    if (known != m_targets.end()) {
        return known->second;
    }
    std::shared_ptr<Module> procedure;
    try {
        procedure = m_interpreter.Procedure(ObjectKey(StatementParser::ParseName(name), database));
    } catch (const Failure& failure) {
        if (failure.Number() != 102 && failure.Number() != 208) {
            throw;
        }
    }
    if (procedure) {
        m_targets.emplace(m_key, procedure);
    }
    return procedure;
}

void Server::Impl::RunScript(const QString& scriptName, const QString& script) {
    try {
        Refresh();
        m_interpreter.SetScript(scriptName.toStdString());
        std::string text = script.toStdString();
        if (text.find('\0') != std::string::npos) {
            throw SyntaxFailure("NUL", 1);
        }
        RunBatches(text);
    } catch (const Failure& failure) {
        UndoAll();
        const QString place =
            QStringLiteral("%1:%2: ").arg(scriptName).arg(std::max(1, failure.Line()));
        throw base::DatabaseError(failure.Number(), place + QString::fromStdString(failure.Text()));
    } catch (...) {
        UndoAll();
        throw;
    }
}

void Server::Impl::RunBatches(const std::string& text) {
    NoRows nowhere;
    std::string database;
    for (const ScriptBatch& batch : Batches(text)) {
        const auto module = StatementParser::ParseBatch(batch.text, batch.firstLine, database);
        m_interpreter.RunBatch(*module, nowhere);
        database = module->database;
        Recheck();
    }
}

std::vector<QString> Server::Impl::KeyColumns(const QString& table,
                                              const QString& defaultDatabase) {
    try {
        Refresh();
        const ObjectName name = StatementParser::ParseName(table.toStdString());
        std::vector<QString> columns;
        const std::string database = NameKey(defaultDatabase.toStdString());
        for (const std::string& column : m_catalog.TableOf(name, database).primaryKey) {
            columns.push_back(QString::fromStdString(column));
        }
        return columns;
    } catch (const Failure& failure) {
        throw ErrorOf(failure, table);
    }
}

void Server::Impl::UndoAll() {
    try {
        m_session.UndoAll();
        Recheck();
    } catch (const Failure&) {
        // The error that led here is the one to tell; a file that cannot even be read any more
        // refuses the next command by itself.
        Forget();
    }
}

// Another session may have changed procedures and tables since the last command.
void Server::Impl::Refresh() {
    if (m_database->DataVersion() != m_dataVersion) {
        Recheck();
    }
}

void Server::Impl::Recheck() {
    m_dataVersion = m_database->DataVersion();
    const int version = m_catalog.Version();
    if (version != m_version) {
        m_version = version;
        Forget();
    }
}

void Server::Impl::Forget() {
    m_targets.clear();
    m_commands.clear();
    m_interpreter.Forget();
}

Server::Server(const QString& file, Mode mode, int busyMilliseconds) {
    try {
        if (mode == Mode::Create) {
            HospitalFile::Make(file);
        }
        m_impl = std::make_unique<Impl>(HospitalFile::Open(file, busyMilliseconds));
    } catch (const Failure& failure) {
        throw ErrorOf(failure);
    }
}

Server::~Server() = default;

qint64 Server::Execute(const QString& command, const QString& defaultDatabase, RowSink* sink) {
    NoRows nowhere;
    return m_impl->Execute(command, defaultDatabase, sink != nullptr ? *sink : nowhere);
}

void Server::RunScript(const QString& scriptName, const QString& script) {
    m_impl->RunScript(scriptName, script);
}

void Server::BeginTrans() {
    try {
        m_impl->Session().transactions.Begin();
    } catch (const Failure& failure) {
        throw ErrorOf(failure, QStringLiteral("BEGIN TRANSACTION"));
    }
}

void Server::CommitTrans() {
    try {
        m_impl->Session().transactions.Commit();
    } catch (const Failure& failure) {
        m_impl->UndoAll();
        throw ErrorOf(failure, QStringLiteral("COMMIT TRANSACTION"));
    }
}

void Server::RollbackTrans() {
    m_impl->UndoAll();
}

int Server::TransactionDepth() const {
    return m_impl->Session().transactions.Depth();
}

void Server::SetWaitHook(std::function<void(bool waiting)> hook) {
    Database::SetWaitHook(std::move(hook));
}

bool Server::IsReadOnly() const {
    return m_impl->IsReadOnly();
}

std::vector<QString> Server::KeyColumns(const QString& table, const QString& defaultDatabase) {
    return m_impl->KeyColumns(table, defaultDatabase);
}

}  // namespace embedded
