#include "deploy/HospitalFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <algorithm>

#include "base/Errors.h"
#include "db/Recordset.h"
#include "deploy/DeployedScripts.h"
#include "deploy/TableCheck.h"

namespace deploy {

namespace {

using embedded::Server;

constexpr int kUnknownTable = 208;
constexpr int kFileExists = 58;
constexpr int kFileAccess = 75;
constexpr int kNotThisVersion = 321;
/// An upgrade by another program may move many rows.
constexpr int kPatienceMilliseconds = 120000;

/// A transaction on the server that leaving early undoes.
class Undoing final {
public:
    explicit Undoing(Server& server) : m_server(server) { m_server.BeginTrans(); }
    ~Undoing() {
        if (!m_kept)
            m_server.RollbackTrans();
    }
    Undoing(const Undoing&) = delete;
    Undoing& operator=(const Undoing&) = delete;
    void Keep() {
        m_server.CommitTrans();
        m_kept = true;
    }

private:
    Server& m_server;
    bool m_kept = false;
};

base::DatabaseError NotMade(const QString& file, int number, const QString& cause) {
    return base::DatabaseError(number, QStringLiteral("The hospital file %1 could not be made: %2")
                                           .arg(QDir::toNativeSeparators(file), cause));
}

base::DatabaseError NotUpgraded(const QString& file, int number, const QString& cause) {
    return base::DatabaseError(number, QStringLiteral("The hospital file %1 cannot be used: %2")
                                           .arg(QDir::toNativeSeparators(file), cause));
}

/// A file name with signs that divide a connection string stands in braces there.
QString InConnectionText(QString file) {
    static const QString kDividing = QStringLiteral(";{}=");
    const bool divided =
        std::any_of(file.cbegin(), file.cend(), [](QChar c) { return kDividing.contains(c); });
    if (!divided)
        return file;
    return u'{' + file.replace(u'}', QStringLiteral("}}")) + u'}';
}

/// The file in making, beside its target so that it can be renamed; with what SQLite keeps next
/// to it. Removed again unless it has become the target.
class FileInMaking final {
public:
    explicit FileInMaking(const QString& target)
        : m_target(target), m_name(target + QStringLiteral(".making")) {
        Remove();
    }
    ~FileInMaking() { Remove(); }
    FileInMaking(const FileInMaking&) = delete;
    FileInMaking& operator=(const FileInMaking&) = delete;

    const QString& Name() const { return m_name; }

    void BecomeTarget() {
        // Closing has moved everything from the log into the file; a log that is still there
        // holds rows that would be left behind.
        const QFileInfo log(m_name + QStringLiteral("-wal"));
        if (log.exists() && log.size() > 0)
            throw NotMade(m_target, kFileAccess,
                          QStringLiteral("its last rows could not be written."));
        QFile made(m_name);
        // Patients and password hashes: nobody else's to read. What SQLite keeps beside it follows.
        made.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        if (!made.rename(m_target))
            throw NotMade(m_target, kFileAccess, made.errorString() + u'.');
    }

private:
    void Remove() {
        for (const char16_t* suffix : {u"", u"-wal", u"-shm", u"-journal"})
            QFile::remove(m_name + QString::fromUtf16(suffix));
    }

    QString m_target;
    QString m_name;
};

std::vector<const Script*> ScriptsToMake(const ScriptSet& scripts, Contents contents) {
    std::vector<const Script*> chosen;
    const auto add = [&chosen](const std::vector<Script>& kind) {
        for (const Script& script : kind)
            chosen.push_back(&script);
    };
    add(scripts.Schema());
    add(scripts.Procedures());
    add(scripts.Roles());
    if (contents == Contents::Demo)
        add(scripts.Demo());
    return chosen;
}

void Fill(Server& server, const ScriptSet& scripts, Contents contents, const Progress& progress) {
    const std::vector<const Script*> chosen = ScriptsToMake(scripts, contents);
    Undoing transaction(server);
    int done = 0;
    for (const Script* script : chosen) {
        if (progress)
            progress(done, int(chosen.size()));
        server.RunScript(script->Name, script->Text);
        ++done;
    }
    DeployedScripts deployed(server);
    for (const auto* kind : {&scripts.Schema(), &scripts.Migrations(), &scripts.Procedures()}) {
        for (const Script& script : *kind)
            deployed.Record(script);
    }
    deployed.RecordSet(scripts);
    transaction.Keep();
    if (progress)
        progress(done, int(chosen.size()));
}

/// Migrations belong to tables that this program does not know when their names are not its own.
void RefuseNewerFile(const QString& file, const ScriptSet& scripts,
                     const QHash<QString, QString>& deployed) {
    for (auto script = deployed.keyBegin(); script != deployed.keyEnd(); ++script) {
        const auto& migrations = scripts.Migrations();
        const bool known = std::any_of(migrations.begin(), migrations.end(),
                                       [&](const Script& own) { return own.Name == *script; });
        if (script->startsWith(u"migrations/") && !known)
            throw NotUpgraded(
                file, kNotThisVersion,
                QStringLiteral("a newer version of the program has changed it (%1).").arg(*script));
    }
}

void RunMigrations(Server& server, const ScriptSet& scripts,
                   const QHash<QString, QString>& deployed) {
    DeployedScripts record(server);
    for (const Script& script : scripts.Migrations()) {
        if (deployed.contains(script.Name))
            continue;
        server.RunScript(script.Name, script.Text);
        record.Record(script);
    }
}

/// The beginning of a procedure's script, which drops what stood under its name.
QString DropOnly(const Script& script) {
    return script.Text.left(script.Text.indexOf(QStringLiteral("\nCREATE ")) + 1);
}

/// All changed procedures are dropped before the first is made: one is checked against those it
/// calls, and must not meet their older form.
void RenewProcedures(Server& server, const ScriptSet& scripts,
                     const QHash<QString, QString>& deployed) {
    std::vector<const Script*> changed;
    for (const Script& script : scripts.Procedures())
        if (deployed.value(script.Name) != script.Checksum())
            changed.push_back(&script);
    for (const Script* script : changed)
        server.RunScript(script->Name, DropOnly(*script));
    DeployedScripts record(server);
    for (const Script* script : changed) {
        server.RunScript(script->Name, script->Text);
        record.Record(*script);
    }
    for (const Script& script : scripts.Roles())
        server.RunScript(script.Name, script.Text);
}

void Upgrade(Server& server, const QString& file, const ScriptSet& scripts) {
    // Whoever waited here for another program's upgrade finds it done.
    Undoing transaction(server);
    DeployedScripts deployed(server);
    if (deployed.SetChecksum() == scripts.Checksum())
        return;
    const QHash<QString, QString> before = deployed.All();
    RefuseNewerFile(file, scripts, before);
    RunMigrations(server, scripts, before);
    const QStringList missing = MissingInTables(server, scripts);
    if (!missing.isEmpty())
        throw NotUpgraded(file, kNotThisVersion, missing.join(u' '));
    RenewProcedures(server, scripts, before);
    for (const Script& script : scripts.Schema())
        deployed.Record(script);
    deployed.RecordSet(scripts);
    transaction.Keep();
}

/// True when the file has exactly the scripts of this checksum.
bool IsUpToDate(Server& server, const QString& file, const QString& checksum) {
    try {
        return DeployedScripts(server).SetChecksum() == checksum;
    } catch (const base::DatabaseError& error) {
        if (error.Number() != kUnknownTable)
            throw;
        throw NotUpgraded(file, kNotThisVersion,
                          QStringLiteral("it has no record of the scripts that made it."));
    }
}

bool UpgradeTo(const QString& file, const QString& checksum,
               const std::function<const ScriptSet&()>& scripts) {
    Server server(file, Server::Mode::OpenExisting, kPatienceMilliseconds);
    if (IsUpToDate(server, file, checksum))
        return false;
    try {
        Upgrade(server, file, scripts());
    } catch (const base::DatabaseError& error) {
        if (error.Number() == kNotThisVersion)
            throw;
        throw NotUpgraded(
            file, error.Number(),
            QStringLiteral("it could not be brought up to date. ") + error.Description());
    }
    return true;
}

}  // namespace

void MakeHospital(const QString& file, Contents contents, const Progress& progress) {
    MakeHospital(file, contents, progress, ScriptSet::Own());
}

void MakeHospital(const QString& file, Contents contents, const Progress& progress,
                  const ScriptSet& scripts) {
    if (QFileInfo::exists(file))
        throw NotMade(file, kFileExists, QStringLiteral("there is a file of this name already."));
    QDir().mkpath(QFileInfo(file).absolutePath());
    QLockFile making(file + QStringLiteral(".lock"));
    making.setStaleLockTime(0);
    if (!making.lock())
        throw NotMade(file, kFileAccess,
                      QStringLiteral("the folder %1 cannot be written to.")
                          .arg(QDir::toNativeSeparators(QFileInfo(file).absolutePath())));
    if (QFileInfo::exists(file))
        return;
    FileInMaking inMaking(file);
    try {
        Server server(inMaking.Name(), Server::Mode::Create);
        Fill(server, scripts, contents, progress);
    } catch (const base::DatabaseError& error) {
        throw NotMade(file, error.Number(), error.Description());
    }
    inMaking.BecomeTarget();
}

bool UpgradeHospital(const QString& file) {
    return UpgradeTo(file, QString::fromLatin1(kOwnScriptsChecksum),
                     []() -> const ScriptSet& { return ScriptSet::Own(); });
}

bool UpgradeHospital(const QString& file, const ScriptSet& scripts) {
    return UpgradeTo(file, scripts.Checksum(),
                     [&scripts]() -> const ScriptSet& { return scripts; });
}

std::shared_ptr<db::Connection> OpenHospital(const QString& file) {
    const QString session = QStringLiteral("Driver=Embedded;File=") + InConnectionText(file);
    const std::shared_ptr<db::Connection> connection = db::Connection::Open(session);
    // The look-up over the session itself spares opening the file twice at every start.
    const auto isUpToDate = [&connection] {
        try {
            const auto rows = connection->Execute(DeployedScripts::SetChecksumCommand());
            return !rows->Eof() && rows->Fields(0).Text() == QLatin1String(kOwnScriptsChecksum);
        } catch (const base::DatabaseError&) {
            return false;
        }
    };
    if (!isUpToDate())
        UpgradeHospital(file);
    return connection;
}

}  // namespace deploy
