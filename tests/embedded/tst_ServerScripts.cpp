#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "base/Errors.h"
#include "embedded/Server.h"
#include "embedded/TextRows.h"

// Runs the *.test files of the folder server/ against the hospital's own tables and procedures.
// They are written as tst_Statements.cpp describes; a first line "# demo" asks for the demo
// hospital's rows, and "error" without a number takes any refusal.
class tst_ServerScripts : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void File_givesTheExpectedAnswers_data();
    void File_givesTheExpectedAnswers();
    void EveryProcedure_isNamedAsItsFile();
    void Demo_isMadeInAFewSeconds();

private:
    static QStringList Scripts(const QString& folder);
    static QString Text(const QString& path);
    static void Run(embedded::Server& server, const QStringList& paths);
    static QStringList Answer(embedded::Server& server, const QString& action, const QString& text,
                              const QStringList& expected);
    static bool IsExpected(const QStringList& answer, const QStringList& expected);

    QTemporaryDir m_folder;
    QString m_empty;
    QString m_demo;
    qint64 m_demoMilliseconds = 0;
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

QString tst_ServerScripts::Text(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void tst_ServerScripts::Run(embedded::Server& server, const QStringList& paths) {
    server.BeginTrans();
    for (const QString& path : paths)
        server.RunScript(QFileInfo(path).fileName(), Text(path));
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
        QElapsedTimer timer;
        timer.start();
        embedded::Server server(m_demo, embedded::Server::Mode::OpenExisting);
        Run(server, Scripts(QStringLiteral("demo")));
        m_demoMilliseconds = timer.elapsed();
    } catch (const base::DatabaseError& error) {
        QFAIL(qPrintable(error.Description()));
    }
}

QStringList tst_ServerScripts::Answer(embedded::Server& server, const QString& action,
                                      const QString& text, const QStringList& expected) {
    TextRows rows;
    qint64 changed = -1;
    try {
        if (action == QStringLiteral("script"))
            server.RunScript(QStringLiteral("made.sql"), text);
        else
            changed = server.Execute(text, QStringLiteral("CLINICAL_AREA"), &rows);
    } catch (const base::DatabaseError& error) {
        return {QStringLiteral("error %1: %2").arg(error.Number()).arg(error.Description())};
    }
    QStringList answer;
    const QString first = expected.value(0);
    if (first.startsWith(QStringLiteral("columns")))
        answer << QStringLiteral("columns %1 %2")
                      .arg(rows.Kinds.join(QString()), rows.Columns.join(QLatin1Char(' ')));
    if (first.startsWith(QStringLiteral("changed")))
        answer << QStringLiteral("changed %1").arg(changed);
    answer << rows.Lines;
    return answer.isEmpty() ? QStringList{QStringLiteral("ok")} : answer;
}

bool tst_ServerScripts::IsExpected(const QStringList& answer, const QStringList& expected) {
    if (expected.size() == 1 && expected[0].startsWith(QStringLiteral("error")))
        return answer.value(0).section(QLatin1Char(':'), 0, 0) == expected[0] ||
               (expected[0] == QStringLiteral("error") && answer.value(0).startsWith(expected[0]));
    return answer == expected;
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
    const QString text = Text(path);
    const QTemporaryDir folder;
    const QString hospital = folder.filePath(QStringLiteral("hospital.capd"));
    QVERIFY(QFile::copy(text.startsWith(QStringLiteral("# demo")) ? m_demo : m_empty, hospital));
    embedded::Server server(hospital, embedded::Server::Mode::OpenExisting);

    QString differences;
    QStringList lines = text.split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        if (lines[i].isEmpty() || lines[i].startsWith(QLatin1Char('#')))
            continue;
        const int begin = i;
        while (i < lines.size() && lines[i] != QStringLiteral("----"))
            ++i;
        const QString sent = lines.mid(begin + 1, i - begin - 1).join(QLatin1Char('\n'));
        QStringList expected;
        // One empty answer line is a row with one empty text.
        do
            expected << lines.value(++i);
        while (!lines.value(i + 1).isEmpty());
        const QStringList answer = Answer(server, lines[begin], sent, expected);
        if (!IsExpected(answer, expected))
            differences += QStringLiteral("\nline %1, %2\n   expected: %3\n   answered: %4")
                               .arg(begin + 1)
                               .arg(sent.simplified().left(100),
                                    expected.join(QStringLiteral("\n             ")),
                                    answer.mid(0, 20).join(QStringLiteral("\n             ")));
    }
    QVERIFY2(differences.isEmpty(), qPrintable(differences));
}

void tst_ServerScripts::EveryProcedure_isNamedAsItsFile() {
    const QStringList paths = Scripts(QStringLiteral("procedures"));
    QVERIFY(paths.size() > 20);
    const QString roles = Text(QStringLiteral(CAPD_SOURCE_DIR "/server/schema/90_roles.sql"));
    for (const QString& path : paths) {
        const QFileInfo file(path);
        const QString name = file.completeBaseName();
        const QString text = Text(path);
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

void tst_ServerScripts::Demo_isMadeInAFewSeconds() {
    QVERIFY2(m_demoMilliseconds < 20000, qPrintable(QString::number(m_demoMilliseconds)));
}

QTEST_GUILESS_MAIN(tst_ServerScripts)
#include "tst_ServerScripts.moc"
