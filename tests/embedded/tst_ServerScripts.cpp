#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QMap>
#include <QRegularExpression>
#include <QTest>

#include "embedded/StatementFile.h"

// Runs the *.test files of the folder server/ against the hospital's own tables and procedures.
// A first line "# demo" asks for the demo hospital's rows.
class tst_ServerScripts : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void File_givesTheExpectedAnswers_data();
    void File_givesTheExpectedAnswers();
    void EveryProcedure_isNamedAsItsFile();
    void EveryName_saysItsDatabaseAndIsGranted();

private:
    static QStringList Scripts(const QString& folder);
    static void Run(embedded::Server& server, const QStringList& paths);

    QTemporaryDir m_folder;
    QString m_empty;
    QString m_demo;
};

QStringList tst_ServerScripts::Scripts(const QString& folder) {
    QStringList paths;
    QDirIterator files(QStringLiteral(CAPD_SOURCE_DIR "/server/") + folder,
                       {QStringLiteral("*.sql")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        paths << files.next();
    paths.sort();
    return paths;
}

void tst_ServerScripts::Run(embedded::Server& server, const QStringList& paths) {
    server.BeginTrans();
    for (const QString& path : paths)
        server.RunScript(QFileInfo(path).fileName(), StatementFile::TextOf(path));
    server.CommitTrans();
}

// Both hospitals are made once; every file of tests gets a copy.
void tst_ServerScripts::initTestCase() {
    m_empty = m_folder.filePath(QStringLiteral("empty.capd"));
    m_demo = m_folder.filePath(QStringLiteral("demo.capd"));
    try {
        {
            embedded::Server server(m_empty, embedded::Server::Mode::Create);
            Run(server, Scripts(QStringLiteral("schema")) + Scripts(QStringLiteral("procedures")));
        }
        QVERIFY(QFile::copy(m_empty, m_demo));
        embedded::Server server(m_demo, embedded::Server::Mode::OpenExisting);
        Run(server, Scripts(QStringLiteral("demo")));
    } catch (const base::DatabaseError& error) {
        QFAIL(qPrintable(error.Description()));
    }
}

void tst_ServerScripts::File_givesTheExpectedAnswers_data() {
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(CAPD_TEST_DIR "/server"));
    const QStringList names = folder.entryList({QStringLiteral("*.test")});
    QVERIFY(!names.isEmpty());
    for (const QString& name : names)
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

void tst_ServerScripts::File_givesTheExpectedAnswers() {
    QFETCH(QString, path);
    const bool demo = StatementFile::TextOf(path).startsWith(QStringLiteral("# demo"));
    const QTemporaryDir folder;
    const QString hospital = folder.filePath(QStringLiteral("hospital.capd"));
    QVERIFY(QFile::copy(demo ? m_demo : m_empty, hospital));
    embedded::Server server(hospital, embedded::Server::Mode::OpenExisting);
    const QString differences = StatementFile::Run(server, path);
    QVERIFY2(differences.isEmpty(), qPrintable(differences));
}

void tst_ServerScripts::EveryProcedure_isNamedAsItsFile() {
    const QStringList paths = Scripts(QStringLiteral("procedures"));
    QVERIFY(paths.size() > 20);
    const QString roles =
        StatementFile::TextOf(QStringLiteral(CAPD_SOURCE_DIR "/server/schema/90_roles.sql"));
    for (const QString& path : paths) {
        const QFileInfo file(path);
        const QString name = file.completeBaseName();
        const QString text = StatementFile::TextOf(path);
        const bool function = name.startsWith(QStringLiteral("fn_"));
        const QString kind = function ? QStringLiteral("FUNCTION ") : QStringLiteral("PROCEDURE ");
        QVERIFY2(text.contains(QStringLiteral("\nUSE ") + file.dir().dirName() + QLatin1Char('\n')),
                 qPrintable(name));
        QVERIFY2(
            text.contains(QStringLiteral("\nDROP ") + kind + QStringLiteral("IF EXISTS ") + name),
            qPrintable(name));
        QVERIFY2(text.contains(QStringLiteral("\nCREATE ") + kind + name), qPrintable(name));
        QVERIFY2(function ||
                     text.contains(QStringLiteral("    SET NOCOUNT ON;\n    SET XACT_ABORT ON;\n")),
                 qPrintable(name));
        QVERIFY2(
            roles.contains(QStringLiteral("GRANT EXECUTE ON ") + name + QStringLiteral(" TO ")),
            qPrintable(name));
    }
}

// In a procedure, a bare name means its own database to one server and the caller's to another; and
// who runs it needs rights of his own on what it reaches in another database.
void tst_ServerScripts::EveryName_saysItsDatabaseAndIsGranted() {
    static const QRegularExpression comment(QStringLiteral("--[^\n]*"));
    static const QRegularExpression use(
        QStringLiteral(R"(\b(FROM|JOIN|INTO|UPDATE|EXEC)\s+(?:(\w+)\.(?:dbo)?\.)?(\w+))"));
    static const QMap<QString, QString> rights{{QStringLiteral("FROM"), QStringLiteral("SELECT")},
                                               {QStringLiteral("JOIN"), QStringLiteral("SELECT")},
                                               {QStringLiteral("INTO"), QStringLiteral("INSERT")},
                                               {QStringLiteral("UPDATE"), QStringLiteral("UPDATE")},
                                               {QStringLiteral("EXEC"), QStringLiteral("EXECUTE")}};
    const QString roles =
        StatementFile::TextOf(QStringLiteral(CAPD_SOURCE_DIR "/server/schema/90_roles.sql"));
    int foreign = 0;
    for (const QString& path : Scripts(QStringLiteral("procedures"))) {
        const QString own = QFileInfo(path).dir().dirName();
        QString text = StatementFile::TextOf(path);
        for (const auto& match : use.globalMatch(text.remove(comment))) {
            const QString said =
                QFileInfo(path).baseName() + QStringLiteral(": ") + match.captured();
            QVERIFY2(match.hasCaptured(2), qPrintable(said));
            const QString database = match.captured(2);
            if (database == own)
                continue;
            ++foreign;
            const QString of = roles.section(QStringLiteral("USE %1\n").arg(database), 1, 1)
                                   .section(QStringLiteral("\nUSE "), 0, 0);
            const QRegularExpression grant(QStringLiteral("\nGRANT [^\n]*%1[^\n]* ON %2 TO")
                                               .arg(rights[match.captured(1)], match.captured(3)),
                                           QRegularExpression::CaseInsensitiveOption);
            QVERIFY2(grant.match(of).hasMatch(), qPrintable(said));
        }
    }
    QVERIFY(foreign > 20);
}

QTEST_GUILESS_MAIN(tst_ServerScripts)
#include "tst_ServerScripts.moc"
