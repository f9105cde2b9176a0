#pragma once

#include "db/Connection.h"
#include "db/Driver.h"

namespace db {

/// What a recordset needs of its connection, beside the members that windows use.
class Connection::Impl final {
public:
    Impl(std::unique_ptr<Driver> driver, QString connectionString);

    /// Shows the command to the hook and sends it. A failure carries the command text.
    qint64 Run(const QString& command, embedded::RowSink& sink);
    /// The hook sees `name`; a failure carries it.
    void RunStep(const QString& name, void (Driver::*step)());
    std::vector<QString> KeyColumns(const QString& table);

    std::unique_ptr<Driver> Engine;
    QString Text;
    QString DefaultDatabase;
    int CursorLocation = 3;
};

}  // namespace db
