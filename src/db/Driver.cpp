#include "db/Driver.h"

#include "base/Errors.h"
#include "db/ConnectionText.h"
#include "db/EmbeddedDriver.h"
#include "db/OdbcDriver.h"
#include "embedded/NoRows.h"
#include "embedded/ScriptText.h"

namespace db {

namespace {

bool IsEmbedded(const QString& connectionString) {
    const QString driver = ConnectionValue(connectionString, QStringLiteral("Driver"));
    return driver.compare(QStringLiteral("Embedded"), Qt::CaseInsensitive) == 0;
}

}  // namespace

void Driver::RunScript(const QString& name, const QString& script) {
    const std::string text = script.toStdString();
    embedded::NoRows nowhere;
    for (const embedded::ScriptBatch& batch : embedded::Batches(text)) {
        const QString command =
            QString::fromUtf8(batch.text.data(), qsizetype(batch.text.size())).trimmed();
        if (command.isEmpty()) {
            continue;
        }
        try {
            Execute(command, nowhere);
        } catch (const base::DatabaseError& error) {
            throw base::DatabaseError(error.Number(), QStringLiteral("%1:%2: %3")
                                                          .arg(name)
                                                          .arg(batch.firstLine)
                                                          .arg(error.Description()));
        }
    }
}

std::unique_ptr<Driver> OpenDriver(const QString& connectionString) {
    try {
        if (IsEmbedded(connectionString)) {
            return std::make_unique<EmbeddedDriver>(
                ConnectionValue(connectionString, QStringLiteral("File")));
        }
        return std::make_unique<OdbcDriver>(connectionString);
    } catch (const base::DatabaseError& error) {
        throw base::DatabaseError(error.Number(),
                                  WithoutSecrets(error.Description(), LogOnOf(connectionString)));
    }
}

}  // namespace db
