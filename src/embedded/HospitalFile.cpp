#include "embedded/HospitalFile.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QtEndian>

#include "embedded/Catalog.h"

namespace embedded::HospitalFile {

namespace {

// "CAPD": what tells a hospital's file from other files of SQLite.
constexpr int ApplicationId = 0x43415044;
constexpr int HeaderSize = 100;

Failure Unfit(const QString& file, const char* why) {
    return Failure(5133, "The file '" + file.toStdString() + "' " + why + ".");
}

// What SQLite would only notice when it reads the missing end.
bool IsCutShort(const QByteArray& header, const QFileInfo& file) {
    const auto* bytes = reinterpret_cast<const uchar*>(header.constData());
    const quint16 stated = qFromBigEndian<quint16>(bytes + 16);
    const qint64 pageSize = stated == 1 ? 65536 : stated;
    const qint64 pages = qFromBigEndian<quint32>(bytes + 28);
    const bool journaled = QFileInfo(file.filePath() + QStringLiteral("-wal")).size() > 0;
    return !journaled && file.size() < pages * pageSize;
}

void Inspect(const QString& name) {
    const QFileInfo info(name);
    if (!info.exists()) {
        throw Unfit(name, "does not exist");
    }
    QFile file(name);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        throw Unfit(name, "cannot be read");
    }
    const QByteArray header = file.read(HeaderSize);
    if (header.isEmpty()) {
        throw Unfit(name, "is empty");
    }
    if (!header.startsWith(QByteArrayLiteral("SQLite format 3\0"))) {
        throw Unfit(name, "is not a hospital file");
    }
    if (header.size() < HeaderSize || IsCutShort(header, info)) {
        throw Unfit(name, "is damaged: its end is missing");
    }
}

void RemoveWithSides(const QString& file) {
    for (const char* side : {"", "-wal", "-shm", "-journal", "-turn"}) {
        QFile::remove(file + QLatin1String(side));
    }
}

void Fill(const QString& file) {
    Database database(file, true, false, 0);
    database.Run("PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; BEGIN IMMEDIATE");
    Catalog::Create(database);
    database.Run(("PRAGMA application_id = " + std::to_string(ApplicationId)).c_str());
    database.Run("COMMIT");
}

}  // namespace

void Make(const QString& file) {
    if (QFileInfo::exists(file)) {
        throw Unfit(file, "exists already");
    }
    const quint32 number = QRandomGenerator::global()->generate();
    const QString making = QStringLiteral("%1.making-%2").arg(file).arg(number);
    try {
        Fill(making);
    } catch (const Failure&) {
        RemoveWithSides(making);
        throw;
    }
    if (!QFile::rename(making, file)) {
        RemoveWithSides(making);
        throw Unfit(file, "cannot be made");
    }
}

std::unique_ptr<Database> Open(const QString& file, int busyMilliseconds) {
    Inspect(file);
    // Without a writable folder SQLite cannot share the file; it then only reads, and what another
    // program left unfinished beside it must not be overlooked.
    const QFileInfo info(file);
    const bool readOnly = !info.isWritable();
    if (readOnly && QFileInfo(file + QStringLiteral("-wal")).size() > 0) {
        throw Unfit(file, "is read-only and holds unfinished work of another program");
    }
    auto database = std::make_unique<Database>(file, false, readOnly, busyMilliseconds);
    if (database->Number("PRAGMA application_id") != ApplicationId) {
        throw Unfit(file, "is not a hospital file");
    }
    database->Run("PRAGMA synchronous = FULL; PRAGMA temp_store = MEMORY");
    database->RefuseCommitsWhenLost();
    return database;
}

}  // namespace embedded::HospitalFile
