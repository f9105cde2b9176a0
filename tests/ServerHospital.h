#pragma once

#include <QMap>
#include <QRegularExpression>
#include <stdexcept>
#include <vector>

#include "db/Driver.h"
#include "deploy/Rows.h"
#include "deploy/ScriptSet.h"

using namespace Qt::StringLiterals;

/// The demo hospital on the server that CAPD_SERVER names. Each test finds it as it was made: what
/// it held then is kept beside it, in tables named demo_<table>.
class ServerHospital final {
public:
    static QString ConnectionString() { return qEnvironmentVariable("CAPD_SERVER"); }

    /// False for texts with letters that a Western code page lacks, as a server's may be: it
    /// refuses them.
    static bool Keeps(const QString& text) {
        return ConnectionString().isEmpty() || text == QString::fromLatin1(text.toLatin1());
    }

    /// Puts back whatever a test has changed. Throws where no demo hospital is there: nothing of a
    /// hospital with real patients is ever put back.
    static void Restore() {
        const auto driver = db::OpenDriver(ConnectionString());
        const auto demo = deploy::Rows::Ask(*driver,
                                            u"SELECT COUNT(*) FROM CLINICAL_AREA..tbDeployedScript "
                                            "WHERE ScriptName LIKE 'demo/%'"_s);
        if (demo.Cells().front().front() == u"0")
            throw std::runtime_error("There is no demo hospital on the server.");
        static const QStringList commands = KeepAndList(*driver);
        for (const QString& command : commands)
            deploy::Run(*driver, command);
    }

private:
    struct Table {
        QString Database;
        QString Name;
        QStringList Columns;
        bool IsNumbered = false;

        QString Command() const {
            const QString kept = u"demo_"_s + Name;
            const QString numbering =
                IsNumbered ? u"SET IDENTITY_INSERT %1 "_s.arg(Name) : QString();
            return u"IF EXISTS (SELECT %3 FROM %1 EXCEPT SELECT %3 FROM %2) OR EXISTS (SELECT "
                   "%3 FROM %2 EXCEPT SELECT %3 FROM %1) BEGIN DELETE FROM %1; %4 INSERT INTO "
                   "%1 (%3) SELECT %3 FROM %2; %5 END\n"_s.arg(
                       Name, kept, Columns.join(u','),
                       IsNumbered ? numbering + u"ON;"_s : QString(),
                       IsNumbered ? numbering + u"OFF;"_s : QString());
        }
    };

    /// Keeps the rows of tables whose rows are not kept yet. Answers what puts all of them back, a
    /// command for each database.
    static QStringList KeepAndList(db::Driver& driver) {
        QMap<QString, QString> commands;
        for (Table& table : Tables()) {
            const QString columns =
                u"SELECT COLUMN_NAME FROM %1.INFORMATION_SCHEMA.COLUMNS WHERE "
                "TABLE_NAME = '%2%3' ORDER BY ORDINAL_POSITION"_s;
            const auto kept =
                deploy::Rows::Ask(driver, columns.arg(table.Database, u"demo_"_s, table.Name));
            deploy::Run(driver, u"USE "_s + table.Database);
            if (kept.Cells().empty())
                deploy::Run(driver, u"SELECT * INTO demo_%1 FROM %1"_s.arg(table.Name));
            const auto all =
                deploy::Rows::Ask(driver, columns.arg(table.Database, QString(), table.Name));
            for (const QStringList& row : all.Cells())
                table.Columns << row.front();
            commands[table.Database] += table.Command();
        }
        QStringList texts;
        for (auto database = commands.begin(); database != commands.end(); ++database)
            texts << u"USE "_s + database.key() << database.value();
        return texts;
    }

    static std::vector<Table> Tables() {
        static const QRegularExpression made(
            u"^(?:USE (\\w+)|CREATE TABLE (\\w+) \\(([^)]*IDENTITY)?)"_s,
            QRegularExpression::MultilineOption);
        std::vector<Table> tables;
        QString database;
        for (const deploy::Script& script : deploy::ScriptSet::Own().Schema()) {
            for (const auto& match : made.globalMatch(script.Text)) {
                if (match.hasCaptured(1))
                    database = match.captured(1);
                else
                    tables.push_back({database, match.captured(2), {}, match.hasCaptured(3)});
            }
        }
        return tables;
    }
};
