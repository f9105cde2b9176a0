#pragma once

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QTemporaryDir>
#include <memory>
#include <stdexcept>

#include "ServerHospital.h"
#include "base/Errors.h"
#include "db/Connection.h"
#include "deploy/HospitalFile.h"

using namespace Qt::StringLiterals;

/// A test's own demo hospital: a copy of the hospital file, gone with this object, or, where one is
/// named, the hospital on the server, which then serves one test at a time. The file itself is made
/// once in the build tree, again when a script has changed or another day has begun; of several
/// test programs that start together one makes it and the others wait.
class TestHospital final {
public:
    enum class On { AnyServer, File };

    explicit TestHospital(On place = On::AnyServer)
        : m_onServer(place == On::AnyServer && !ServerHospital::ConnectionString().isEmpty()) {
        if (m_onServer) {
            ServerHospital::Restore();
            return;
        }
        if (!m_folder.isValid() || !QFile::copy(Template(), File()))
            throw std::runtime_error("The demo hospital could not be copied.");
        QFile::setPermissions(File(), QFile::ReadOwner | QFile::WriteOwner);
    }

    bool IsOnServer() const { return m_onServer; }
    /// Of the copy.
    QString File() const { return m_folder.filePath(u"hospital"_s); }
    /// With the log-on.
    QString ConnectionString() const {
        return m_onServer ? ServerHospital::ConnectionString()
                          : u"Driver=Embedded;File="_s + File();
    }

    /// A new session.
    std::shared_ptr<db::Connection> Connect() const {
        return db::Connection::Open(ConnectionString());
    }

private:
    static QString Template() {
        static const QString file = MakeTemplate();
        return file;
    }

    static QString MakeTemplate() {
        // Programs stand in bin/ of the build tree.
        const QDir folder(QCoreApplication::applicationDirPath() + u"/../test-hospital"_s);
        folder.mkpath(u"."_s);
        const QString file = folder.absoluteFilePath(u"demo-"_s + Key());
        QLockFile lock(folder.absoluteFilePath(u"making.lock"_s));
        lock.setStaleLockTime(0);
        if (!lock.lock())
            throw std::runtime_error("The build tree cannot be written to.");
        if (IsUsable(file))
            return file;
        for (const QString& old : folder.entryList({u"demo-*"_s}, QDir::Files))
            QFile::remove(folder.absoluteFilePath(old));
        deploy::MakeHospital(file, deploy::Contents::Demo);
        return file;
    }

    /// A file of an engine that has since changed its format is not.
    static bool IsUsable(const QString& file) {
        if (!QFile::exists(file))
            return false;
        try {
            return !deploy::UpgradeHospital(file);
        } catch (const base::DatabaseError&) {
            return false;
        }
    }

    /// The demo's dates are counted back from the day it is made.
    static QString Key() {
        const deploy::ScriptSet& scripts = deploy::ScriptSet::Own();
        QString all = QDate::currentDate().toString(Qt::ISODate) + scripts.Checksum();
        for (const deploy::Script& script : scripts.Demo())
            all += script.Checksum();
        return QString::fromLatin1(
            QCryptographicHash::hash(all.toLatin1(), QCryptographicHash::Sha256).toHex().left(16));
    }

    const bool m_onServer;
    QTemporaryDir m_folder;
};
