#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "base/Errors.h"
#include "embedded/Server.h"
#include "embedded/TextRows.h"

// Runs the *.test files of this folder. A file is a row of blocks, each a line that says what to
// do, the text to send, "----", and what must come back, up to an empty line:
//
//   script            statements as a script        ok, or error <number>[: part of its text]
//   run               one command of a client       ok, rows (cells joined by "|"), changed <n>,
//                                                   columns <kinds> <names>, or error ...
//   begin, commit, rollback                         the client's own transaction
//
// Only accepted statements and own tables stand in them, so that they hold on either engine.
class tst_Statements : public QObject {
    Q_OBJECT

private slots:
    void File_givesTheExpectedAnswers_data();
    void File_givesTheExpectedAnswers();

private:
    struct Block {
        int line = 0;
        QString action;
        QString text;
        QStringList expected;
    };
    static QList<Block> Read(const QString& path);
    static QStringList Answer(embedded::Server& server, const Block& block);
    static QString Difference(const Block& block, const QStringList& answer);
};

QList<tst_Statements::Block> tst_Statements::Read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<Block> blocks;
    bool answering = false;
    bool inside = false;
    int number = 0;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        ++number;
        if (!inside) {
            if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
                continue;
            blocks << Block{number, line, {}, {}};
            inside = true;
            answering = false;
        } else if (!answering && line == QStringLiteral("----")) {
            answering = true;
        } else if (!answering) {
            blocks.last().text += line + QLatin1Char('\n');
        } else if (line.isEmpty()) {
            inside = false;
        } else {
            blocks.last().expected << line;
        }
    }
    return blocks;
}

QStringList tst_Statements::Answer(embedded::Server& server, const Block& block) {
    TextRows rows;
    qint64 changed = -1;
    try {
        if (block.action == QStringLiteral("script"))
            server.RunScript(QStringLiteral("made.sql"), block.text);
        else if (block.action == QStringLiteral("begin"))
            server.BeginTrans();
        else if (block.action == QStringLiteral("commit"))
            server.CommitTrans();
        else if (block.action == QStringLiteral("rollback"))
            server.RollbackTrans();
        else
            changed = server.Execute(block.text, QStringLiteral("CLINICAL_AREA"), &rows);
    } catch (const base::DatabaseError& error) {
        return {QStringLiteral("error %1: %2").arg(error.Number()).arg(error.Description())};
    }
    QStringList answer;
    const QString first = block.expected.value(0);
    if (first.startsWith(QStringLiteral("columns")))
        answer << QStringLiteral("columns %1 %2")
                      .arg(rows.Kinds.join(QString()), rows.Columns.join(QLatin1Char(' ')));
    if (first.startsWith(QStringLiteral("changed")))
        answer << QStringLiteral("changed %1").arg(changed);
    answer << rows.Lines;
    return answer.isEmpty() ? QStringList{QStringLiteral("ok")} : answer;
}

QString tst_Statements::Difference(const Block& block, const QStringList& answer) {
    bool same = answer == block.expected;
    if (!same && answer.size() == 1 && block.expected.size() == 1 &&
        block.expected[0].startsWith(QStringLiteral("error"))) {
        const QString number = block.expected[0].section(QLatin1Char(':'), 0, 0);
        const QString part = block.expected[0].section(QLatin1Char(':'), 1).trimmed();
        same = answer[0].startsWith(number + QLatin1Char(':')) && answer[0].contains(part);
    }
    return same ? QString()
                : QStringLiteral("line %1, %2\n   expected: %3\n   answered: %4\n")
                      .arg(block.line)
                      .arg(block.text.simplified().left(100),
                           block.expected.join(QStringLiteral("\n             ")),
                           answer.join(QStringLiteral("\n             ")));
}

void tst_Statements::File_givesTheExpectedAnswers_data() {
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(CAPD_TEST_DIR));
    for (const QString& name : folder.entryList({QStringLiteral("*.test")}))
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

void tst_Statements::File_givesTheExpectedAnswers() {
    QFETCH(QString, path);
    const QList<Block> blocks = Read(path);
    QVERIFY(!blocks.isEmpty());
    const QTemporaryDir folder;
    embedded::Server server(folder.filePath(QStringLiteral("hospital.capd")),
                            embedded::Server::Mode::Create);
    QString differences;
    for (const Block& block : blocks)
        differences += Difference(block, Answer(server, block));
    QVERIFY2(differences.isEmpty(), qPrintable(QStringLiteral("\n") + differences));
}

QTEST_GUILESS_MAIN(tst_Statements)
#include "tst_Statements.moc"
