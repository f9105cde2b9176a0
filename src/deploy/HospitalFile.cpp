#include "deploy/HospitalFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <algorithm>

#include "base/Errors.h"
#include "db/EmbeddedDriver.h"
#include "db/Recordset.h"
#include "deploy/DeployedScripts.h"

namespace deploy {

namespace {

using db::EmbeddedDriver;
using embedded::Server;

constexpr int kFileExists = 58;
constexpr int kFileAccess = 75;
/// An upgrade by another program may move many rows.
constexpr int kPatienceMilliseconds = 120000;

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

/// True when the file has exactly the scripts of this checksum.
bool IsUpToDate(EmbeddedDriver& driver, const QString& file, const QString& checksum) {
    try {
        return DeployedScripts(driver).SetChecksum() == checksum;
    } catch (const base::DatabaseError& error) {
        if (error.Number() != kUnknownTable)
            throw;
        throw NotUpgraded(file, kNotThisVersion,
                          QStringLiteral("it has no record of the scripts that made it."));
    }
}

bool UpgradeTo(const QString& file, const QString& checksum,
               const std::function<const ScriptSet&()>& scripts) {
    EmbeddedDriver driver(file, Server::Mode::OpenExisting, kPatienceMilliseconds);
    if (IsUpToDate(driver, file, checksum))
        return false;
    try {
        Deployment(driver, scripts(), Contents::Empty).Run();
    } catch (const base::DatabaseError& error) {
        if (error.Number() == kNotThisVersion)
            throw NotUpgraded(file, error.Number(), error.Description());
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
        EmbeddedDriver driver(inMaking.Name(), Server::Mode::Create);
        Deployment(driver, scripts, contents).Run(progress);
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
