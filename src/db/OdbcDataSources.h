#pragma once

#include <QStringList>

namespace db {

/// Names of the ODBC data sources that this workstation knows, sorted; empty where there is no
/// driver manager's list.
QStringList OdbcDataSources();

}  // namespace db
