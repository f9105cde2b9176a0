#include "deploy/TableCheck.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>

#include "base/Errors.h"
#include "db/EmbeddedDriver.h"
#include "deploy/Deployment.h"
#include "deploy/Rows.h"

namespace deploy {

namespace {

/// Every table that the schema scripts make, as DATABASE..table.
QStringList TablesOf(const ScriptSet& scripts) {
    static const QRegularExpression line(
        QStringLiteral("^\\s*(?:USE\\s+(\\w+)|CREATE\\s+TABLE\\s+(\\w+))"),
        QRegularExpression::MultilineOption | QRegularExpression::CaseInsensitiveOption);
    QStringList tables;
    for (const Script& script : scripts.Schema()) {
        QString database;
        for (const auto& match : line.globalMatch(script.Text)) {
            if (match.capturedLength(1) > 0)
                database = match.captured(1);
            else
                tables << database + QStringLiteral("..") + match.captured(2);
        }
    }
    return tables;
}

std::vector<embedded::ResultColumn> ColumnsOf(db::Driver& driver, const QString& table) {
    return Rows::Ask(driver, QStringLiteral("SELECT * FROM %1 WHERE 1 = 0").arg(table)).Columns();
}

QStringList MissingColumns(const QString& table, const std::vector<embedded::ResultColumn>& present,
                           const std::vector<embedded::ResultColumn>& needed) {
    QStringList missing;
    for (const embedded::ResultColumn& column : needed) {
        const auto found = std::find_if(present.begin(), present.end(), [&](const auto& candidate) {
            return candidate.Name.compare(column.Name, Qt::CaseInsensitive) == 0;
        });
        if (found == present.end())
            missing << QStringLiteral("Table %1 lacks the column %2.").arg(table, column.Name);
        else if (found->Kind != column.Kind)
            missing << QStringLiteral("Column %2 of table %1 is of another kind.")
                           .arg(table, column.Name);
    }
    return missing;
}

}  // namespace

QStringList MissingInTables(db::Driver& driver, const ScriptSet& scripts) {
    // What the scripts make is seen best by letting them make it, in an empty file beside.
    const QTemporaryDir folder;
    db::EmbeddedDriver model(folder.filePath(QStringLiteral("model")),
                             embedded::Server::Mode::Create);
    model.BeginTrans();
    for (const Script& script : scripts.Schema())
        model.RunScript(script.Name, script.Text);
    QStringList missing;
    for (const QString& table : TablesOf(scripts)) {
        try {
            missing << MissingColumns(table, ColumnsOf(driver, table), ColumnsOf(model, table));
        } catch (const base::DatabaseError& error) {
            if (error.Number() != kUnknownTable)
                throw;
            missing << QStringLiteral("Table %1 is missing.").arg(table);
        }
    }
    model.RollbackTrans();
    return missing;
}

}  // namespace deploy
