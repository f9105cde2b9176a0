#pragma once

#include <QDir>
#include <QFile>
#include <stdexcept>

#include "ServerHospital.h"
#include "db/CommandText.h"
#include "db/ConnectionText.h"
#include "tour/Days.h"

using namespace Qt::StringLiterals;

/// The ODBC data source of the demo hospital on a server, as a workstation would have it.
class ServerSource final {
public:
    static bool IsNamed() { return !ServerHospital::ConnectionString().isEmpty(); }

    /// Puts the hospital back, writes the data source into the folder and makes the server's log-on
    /// the nurse's. Answers what the log-in is to be told.
    static NurseLogIn Prepare(const QDir& folder) {
        ServerHospital::Restore();
        const QString all = ServerHospital::ConnectionString();
        const db::LogOn logOn = db::LogOnOf(all);
        QFile file(folder.filePath(u"odbc.ini"_s));
        if (!file.open(QFile::WriteOnly))
            throw std::runtime_error("The data source cannot be written.");
        const QString settings = db::WithoutLogOn(all).replace(u';', u'\n') + u"\n"_s;
        file.write(u"[Hospital]\n%1"_s.arg(settings).toUtf8());
        qputenv("ODBCINI", file.fileName().toUtf8());
        deploy::Run(*db::OpenDriver(all),
                    u"UPDATE PATIENT_DATA..tbUser SET UserName = %1 WHERE UserName = "
                    "'nurse1'"_s.arg(db::Quoted(logOn.User)));
        return {u"Server: Hospital"_s, logOn.User, logOn.Password};
    }
};
