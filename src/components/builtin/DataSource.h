#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "db/Connection.h"

namespace components {

/// A hospital that the log-in offers: the practice one, the unit's own file, or a server.
struct DataSource {
    enum class Kind { Demo, Own, Odbc };
    Kind Where = Kind::Demo;
    /// The ODBC data source's name; empty for the embedded hospitals.
    QString Name;

    /// As the log-in lists it, and as it is remembered.
    QString Title() const;
    /// The server's name for reports' log-on.
    QString ServerName() const;
    bool IsEmbedded() const { return Where != Kind::Odbc; }

    /// Opens it; an embedded hospital file is made when it is not there yet, and brought up to
    /// date. Throws base::RuntimeError naming the file or the data source, also where a server
    /// answers that holds no hospital.
    std::shared_ptr<db::Connection> Open(const QString& user, const QString& password) const;

private:
    void RequireHospital(db::Connection& connection) const;
};

/// Every hospital this workstation can reach.
std::vector<DataSource> AllDataSources();

}  // namespace components
