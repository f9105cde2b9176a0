#include "components/builtin/DataSource.h"

#include "base/Errors.h"
#include "components/CurrentUser.h"
#include "components/builtin/HospitalFiles.h"
#include "components/builtin/HospitalMaking.h"
#include "components/builtin/UserStore.h"
#include "db/OdbcDataSources.h"
#include "deploy/HospitalFile.h"

namespace components {

QString DataSource::Title() const {
    switch (Where) {
        case Kind::Demo:
            return QStringLiteral("Demo hospital (practice data)");
        case Kind::Own:
            return QStringLiteral("This unit's own hospital file");
        case Kind::Odbc:
            break;
    }
    return QStringLiteral("Server: %1").arg(Name);
}

QString DataSource::ServerName() const {
    if (Where == Kind::Demo)
        return kPracticeData;
    return IsEmbedded() ? QStringLiteral("(embedded)") : Name;
}

std::shared_ptr<db::Connection> DataSource::Open(const QString& user,
                                                 const QString& password) const {
    switch (Where) {
        case Kind::Demo:
            MakeDemoHospitalOnce(HospitalFiles::Demo());
            return deploy::OpenHospital(HospitalFiles::Demo());
        case Kind::Own:
            MakeOwnHospitalOnce(HospitalFiles::Own());
            return deploy::OpenHospital(HospitalFiles::Own());
        case Kind::Odbc:
            break;
    }
    const auto connection =
        db::Connection::Open(QStringLiteral("DSN=%1").arg(Name), user, password);
    RequireHospital(*connection);
    return connection;
}

// A server that answers and takes the user may still be another one than was meant.
void DataSource::RequireHospital(db::Connection& connection) const {
    try {
        UserStore(connection).IsEmpty();
    } catch (const base::DatabaseError& error) {
        throw base::DatabaseError(
            error.Number(), QStringLiteral("\"%1\" answers, but the hospital is not there: %2")
                                .arg(Name, error.Description()));
    }
}

std::vector<DataSource> AllDataSources() {
    std::vector<DataSource> sources{{DataSource::Kind::Demo, {}}, {DataSource::Kind::Own, {}}};
    for (const QString& name : db::OdbcDataSources())
        sources.push_back({DataSource::Kind::Odbc, name});
    return sources;
}

}  // namespace components
