#include <QDirIterator>
#include <QMap>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "base/Clock.h"
#include "base/Errors.h"
#include "embedded/Server.h"
#include "embedded/TextRows.h"

using namespace Qt::StringLiterals;

// Runs the *.test files: the accepted statements, and, in server/, the hospital's own procedures
// over its tables. Each file gets a hospital of its own, with the demo's rows where its first line
// is "# demo". A file is a row of commands, each with what must come back:
//
//   SELECT LEN('ab  '), LEFT('abc', 2) => 2|ab
//
//   sp_Thing_Find 'cat'     on several lines, as far as the next empty one
//   = A1|Catheter
//
//   each sp_Thing_Find      begins every command as far as the next empty line
//   'cat' => A1|Catheter
//
// What comes back: rows (cells joined by "|", rows on one line by " / "), ok for none, which may be
// left out, changed <n>, columns <kinds> <names> before the rows, or error [<number>[: part of its
// text]]. Behind a line "script" stand statements that are sent as a script, behind the two lines
// "USE CLINICAL_AREA" and "GO"; behind a line "scripts" each line is one. "begin", "commit" and
// "rollback" are the client's own transaction. Only accepted statements stand in them, so that they
// hold on either engine.
namespace {

const QString kNext = u"\n             "_s;
const QStringList kActions{u"script"_s, u"begin"_s, u"commit"_s, u"rollback"_s};

struct Block {
    int Line = 0;
    QString Action;
    QString Text;
    QStringList Expected;
};

QString TextOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QList<Block> Read(const QString& path) {
    QList<Block> blocks;
    QString action;
    QString beginning;
    bool isOpen = false;
    int number = 0;
    for (const QString& line : TextOf(path).split(u'\n')) {
        ++number;
        if (line.startsWith(u'#'))
            continue;
        const QString text = line.section(u" => "_s, 0, 0);
        if (line.isEmpty()) {
            isOpen = false;
            action.clear();
            beginning.clear();
        } else if (line == u"scripts"_s) {
            action = u"script"_s;
        } else if (line.startsWith(u"each "_s)) {
            beginning = line.mid(5) + u' ';
        } else if (line.startsWith(u'=')) {
            blocks.last().Expected << line.mid(2);
            isOpen = false;
        } else if (isOpen) {
            blocks.last().Text += line + u'\n';
        } else {
            const bool isAction = kActions.contains(text);
            blocks << Block{number,
                            isAction ? text : action,
                            isAction ? QString() : beginning + text + u'\n',
                            {}};
            isOpen = text == line;
            if (!isOpen)
                blocks.last().Expected = line.section(u" => "_s, 1).split(u" / "_s);
        }
    }
    return blocks;
}

QStringList Answer(embedded::Server& server, const Block& block) {
    TextRows rows;
    qint64 changed = -1;
    const QString first = block.Expected.value(0);
    try {
        if (block.Action == u"script"_s)
            server.RunScript(u"made.sql"_s, u"USE CLINICAL_AREA\nGO\n"_s + block.Text);
        else if (block.Action == u"begin"_s)
            server.BeginTrans();
        else if (block.Action == u"commit"_s)
            server.CommitTrans();
        else if (block.Action == u"rollback"_s)
            server.RollbackTrans();
        else
            changed = server.Execute(block.Text, u"CLINICAL_AREA"_s, &rows);
    } catch (const base::DatabaseError& error) {
        const QString number = u"error %1"_s.arg(error.Number());
        const bool isExpected = first.section(u':', 0, 0) == number &&
                                error.Description().contains(first.section(u':', 1).trimmed());
        return {isExpected ? first : number + u": "_s + error.Description()};
    }
    QStringList answer;
    if (first.startsWith(u"columns"_s))
        answer << u"columns %1 %2"_s.arg(rows.Kinds.join(QString()), rows.Columns.join(u' '));
    if (first.startsWith(u"changed"_s))
        answer << u"changed %1"_s.arg(changed);
    answer << rows.Lines;
    return answer.isEmpty() && first == u"ok"_s ? QStringList{first} : answer;
}

}  // namespace

class tst_Statements : public QObject {
    Q_OBJECT

private slots:
    // Both hospitals are made once; every file of tests gets a copy.
    void initTestCase() {
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
        QTest::addColumn<QString>("path");
        for (const QString& path : Files(QStringLiteral(CAPD_TEST_DIR), u"*.test"_s))
            QTest::newRow(qPrintable(QFileInfo(path).fileName())) << path;
    }

    void File_givesTheExpectedAnswers() {
        QFETCH(QString, path);
        // The demo's dates are counted back from the day it was made.
        const bool demo = TextOf(path).startsWith(u"# demo"_s);
        if (path.contains(u"/server/"_s) && !demo)
            base::Clock::Replace([] { return QDateTime({2026, 11, 23}, {12, 0}); });
        const QString hospital = m_folder.filePath(QFileInfo(path).baseName());
        QVERIFY(QFile::copy(demo ? m_demo : m_empty, hospital));
        embedded::Server server(hospital, embedded::Server::Mode::OpenExisting);
        const QList<Block> blocks = Read(path);
        QVERIFY(!blocks.isEmpty());
        QString differences;
        for (const Block& block : blocks) {
            const QStringList answer = Answer(server, block);
            if (answer != block.Expected)
                differences += u"\nline %1, %2\n   expected: %3\n   answered: %4"_s.arg(block.Line)
                                   .arg(block.Text.simplified().left(100),
                                        block.Expected.join(kNext), answer.join(kNext));
        }
        QVERIFY2(differences.isEmpty(), qPrintable(differences));
    }

    void EveryProcedure_isNamedAsItsFile() {
        const QStringList paths = Scripts(u"procedures"_s);
        QVERIFY(paths.size() > 20);
        const QString roles = TextOf(QStringLiteral(CAPD_SOURCE_DIR "/server/schema/90_roles.sql"));
        for (const QString& path : paths) {
            const QFileInfo file(path);
            const QString name = file.completeBaseName();
            const QString text = TextOf(path);
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
        const QString roles = TextOf(QStringLiteral(CAPD_SOURCE_DIR "/server/schema/90_roles.sql"));
        int foreign = 0;
        for (const QString& path : Scripts(u"procedures"_s)) {
            const QString own = QFileInfo(path).dir().dirName();
            QString text = TextOf(path);
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
    static QStringList Files(const QString& folder, const QString& name) {
        QStringList paths;
        QDirIterator files(folder, {name}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            paths << files.next();
        paths.sort();
        return paths;
    }
    static QStringList Scripts(const QString& folder) {
        return Files(QStringLiteral(CAPD_SOURCE_DIR "/server/") + folder, u"*.sql"_s);
    }

    static void Run(embedded::Server& server, const QStringList& paths) {
        server.BeginTrans();
        for (const QString& path : paths)
            server.RunScript(QFileInfo(path).fileName(), TextOf(path));
        server.CommitTrans();
    }

    const QTemporaryDir m_folder;
    const QString m_empty = m_folder.filePath(u"empty.capd"_s);
    const QString m_demo = m_folder.filePath(u"demo.capd"_s);
};

QTEST_GUILESS_MAIN(tst_Statements)
#include "tst_Statements.moc"
