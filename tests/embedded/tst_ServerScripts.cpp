#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "base/Clock.h"
#include "embedded/StatementFile.h"

using namespace Qt::StringLiterals;

// Runs the *.test files of the folder server/ against the hospital's own tables and procedures.
// A first line "# demo" asks for the demo hospital's rows.
class tst_ServerScripts : public QObject {
    Q_OBJECT

private slots:
    // Both hospitals are made once; every file of tests gets a copy.
    void initTestCase() {
        m_empty = m_folder.filePath(u"empty.capd"_s);
        m_demo = m_folder.filePath(u"demo.capd"_s);
        try {
            {
                embedded::Server server(m_empty, embedded::Server::Mode::Create);
                Run(server, Scripts(u"schema"_s) + Scripts(u"procedures"_s));
            }
            QVERIFY(QFile::copy(m_empty, m_demo));
            embedded::Server server(m_demo, embedded::Server::Mode::OpenExisting);
            Run(server, Scripts(u"demo"_s));
        } catch (const base::DatabaseError& error) {
            QFAIL(qPrintable(error.Description()));
        }
    }

    void cleanup() { base::Clock::Replace({}); }

    void File_givesTheExpectedAnswers_data() {
        StatementFile::Files(QStringLiteral(CAPD_TEST_DIR "/server"));
    }

    void File_givesTheExpectedAnswers() {
        QFETCH(QString, path);
        // The demo's dates are counted back from the day it was made.
        const bool demo = StatementFile::TextOf(path).startsWith(u"# demo"_s);
        if (!demo)
            base::Clock::Replace([] { return QDateTime({2026, 11, 23}, {12, 0}); });
        const QTemporaryDir folder;
        const QString hospital = folder.filePath(u"hospital.capd"_s);
        QVERIFY(QFile::copy(demo ? m_demo : m_empty, hospital));
        embedded::Server server(hospital, embedded::Server::Mode::OpenExisting);
        const QString differences = StatementFile::Run(server, path);
        QVERIFY2(differences.isEmpty(), qPrintable(differences));
    }

    void EveryProcedure_isNamedAsItsFile() {
        const QStringList paths = Scripts(u"procedures"_s);
        QVERIFY(paths.size() > 20);
        const QString roles =
            StatementFile::TextOf(QStringLiteral(CAPD_SOURCE_DIR "/server/schema/90_roles.sql"));
        for (const QString& path : paths) {
            const QFileInfo file(path);
            const QString name = file.completeBaseName();
            const QString text = StatementFile::TextOf(path);
            const bool function = name.startsWith(u"fn_"_s);
            const QString kind = function ? u"FUNCTION "_s : u"PROCEDURE "_s;
            QVERIFY2(text.contains(u"\nUSE "_s + file.dir().dirName() + QLatin1Char('\n')),
                     qPrintable(name));
            QVERIFY2(text.contains(u"\nDROP "_s + kind + u"IF EXISTS "_s + name), qPrintable(name));
            QVERIFY2(text.contains(u"\nCREATE "_s + kind + name), qPrintable(name));
            QVERIFY2(function || text.contains(u"    SET NOCOUNT ON;\n    SET XACT_ABORT ON;\n"_s),
                     qPrintable(name));
            QVERIFY2(roles.contains(u"GRANT EXECUTE ON "_s + name + u" TO "_s), qPrintable(name));
        }
    }

    // In a procedure, a bare name means its own database to one server and the caller's to another;
    // and who runs it needs rights of his own on what it reaches in another database.
    void EveryName_saysItsDatabaseAndIsGranted() {
        static const QRegularExpression comment(u"--[^\n]*"_s);
        static const QRegularExpression use(
            QStringLiteral(R"(\b(FROM|JOIN|INTO|UPDATE|EXEC)\s+(?:(\w+)\.(?:dbo)?\.)?(\w+))"));
        static const QMap<QString, QString> rights{{u"FROM"_s, u"SELECT"_s},
                                                   {u"JOIN"_s, u"SELECT"_s},
                                                   {u"INTO"_s, u"INSERT"_s},
                                                   {u"UPDATE"_s, u"UPDATE"_s},
                                                   {u"EXEC"_s, u"EXECUTE"_s}};
        const QString roles =
            StatementFile::TextOf(QStringLiteral(CAPD_SOURCE_DIR "/server/schema/90_roles.sql"));
        int foreign = 0;
        for (const QString& path : Scripts(u"procedures"_s)) {
            const QString own = QFileInfo(path).dir().dirName();
            QString text = StatementFile::TextOf(path);
            for (const auto& match : use.globalMatch(text.remove(comment))) {
                const QString said = QFileInfo(path).baseName() + u": "_s + match.captured();
                QVERIFY2(match.hasCaptured(2), qPrintable(said));
                const QString database = match.captured(2);
                if (database == own)
                    continue;
                ++foreign;
                const QString of =
                    roles.section(u"USE %1\n"_s.arg(database), 1, 1).section(u"\nUSE "_s, 0, 0);
                const QRegularExpression grant(u"\nGRANT [^\n]*%1[^\n]* ON %2 TO"_s.arg(
                                                   rights[match.captured(1)], match.captured(3)),
                                               QRegularExpression::CaseInsensitiveOption);
                QVERIFY2(grant.match(of).hasMatch(), qPrintable(said));
            }
        }
        QVERIFY(foreign > 20);
    }

private:
    static QStringList Scripts(const QString& folder) {
        QStringList paths;
        QDirIterator files(QStringLiteral(CAPD_SOURCE_DIR "/server/") + folder, {u"*.sql"_s},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            paths << files.next();
        paths.sort();
        return paths;
    }

    static void Run(embedded::Server& server, const QStringList& paths) {
        server.BeginTrans();
        for (const QString& path : paths)
            server.RunScript(QFileInfo(path).fileName(), StatementFile::TextOf(path));
        server.CommitTrans();
    }

    QTemporaryDir m_folder;
    QString m_empty;
    QString m_demo;
};

QTEST_GUILESS_MAIN(tst_ServerScripts)
#include "tst_ServerScripts.moc"
