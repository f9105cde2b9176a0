#pragma once

#include <QDir>
#include <QFile>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTest>

#include "base/Errors.h"
#include "embedded/Server.h"
#include "embedded/TextRows.h"

using namespace Qt::StringLiterals;

// A *.test file is a row of blocks, apart by empty lines: the text to send and, each line behind
// "= ", what must come back:
//
//   sp_Thing_Find 'cat'     one command of a client
//   = A1|Catheter           rows (cells joined by "|"), ok for none, changed <n>, columns <kinds>
//                           <names> before the rows, or error [<number>[: part of its text]]
//
// Where nothing stands behind the text, ok must come back. A first line "run" changes nothing,
// "script" sends statements as a script, behind the two lines "USE CLINICAL_AREA" and "GO";
// "begin", "commit" and "rollback" are the client's own transaction. Behind a first line "each" or
// "scripts", every line is a command or a script of its own with its answer, rows apart by " / ":
//
//   each
//   SELECT LEN('ab  '), LEFT('abc', 2) => 2|ab
//
// Only accepted statements stand in them, so that they hold on either engine.
namespace StatementFile {

const QStringList kActions{u"run"_s, u"script"_s, u"begin"_s, u"commit"_s, u"rollback"_s};

struct Block {
    int Line = 0;
    QString Action;
    QString Text;
    QStringList Expected;
};

inline QString TextOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// One line behind "each" or "scripts": the text to send and its answer.
inline Block LineOf(const QString& text, int number, bool script) {
    const QStringList parts = text.split(u" => "_s);
    const bool isAction = kActions.contains(parts[0]);
    return {number,
            script     ? u"script"_s
            : isAction ? parts[0]
                       : QString(),
            parts[0], parts.value(1).split(u" / "_s)};
}

inline QList<Block> Read(const QString& path) {
    const QStringList lines = TextOf(path).split(QLatin1Char('\n'));
    QList<Block> blocks;
    for (int i = 0; i < lines.size(); ++i) {
        if (lines[i].isEmpty() || lines[i].startsWith(QLatin1Char('#')))
            continue;
        const bool scripts = lines[i] == u"scripts";
        if (scripts || lines[i] == u"each") {
            for (++i; i < lines.size() && !lines[i].isEmpty(); ++i)
                if (!lines[i].startsWith(QLatin1Char('#')))
                    blocks << LineOf(lines[i], i + 1, scripts);
            continue;
        }
        Block block{i + 1, {}, {}, {}};
        if (kActions.contains(lines[i]))
            block.Action = lines[i++];
        for (; i < lines.size() && !lines[i].isEmpty() && !lines[i].startsWith(u'='); ++i)
            block.Text += lines[i] + QLatin1Char('\n');
        for (; i < lines.size() && lines[i].startsWith(u'='); ++i)
            block.Expected << lines[i].mid(2);
        if (block.Expected.isEmpty())
            block.Expected << u"ok"_s;
        blocks << block;
    }
    return blocks;
}

inline QStringList Answer(embedded::Server& server, const Block& block) {
    TextRows rows;
    qint64 changed = -1;
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
        return {u"error %1: %2"_s.arg(error.Number()).arg(error.Description())};
    }
    QStringList answer;
    const QString first = block.Expected.value(0);
    if (first.startsWith(u"columns"_s))
        answer << u"columns %1 %2"_s.arg(rows.Kinds.join(QString()),
                                         rows.Columns.join(QLatin1Char(' ')));
    if (first.startsWith(u"changed"_s))
        answer << u"changed %1"_s.arg(changed);
    answer << rows.Lines;
    return answer.isEmpty() ? QStringList{u"ok"_s} : answer;
}

inline bool IsExpected(const QStringList& answer, const QStringList& expected) {
    if (expected.size() != 1 || !expected[0].startsWith(u"error"_s))
        return answer == expected;
    const QString number = expected[0].section(QLatin1Char(':'), 0, 0);
    const QString part = expected[0].section(QLatin1Char(':'), 1).trimmed();
    const QString got = answer.value(0);
    return (number == u"error"_s ? got.startsWith(number)
                                 : got.section(QLatin1Char(':'), 0, 0) == number) &&
           got.contains(part);
}

/// A row for each file of the folder.
inline void Files(const QString& folder) {
    QTest::addColumn<QString>("path");
    const QFileInfoList files = QDir(folder).entryInfoList({u"*.test"_s});
    QVERIFY(!files.isEmpty());
    for (const QFileInfo& file : files)
        QTest::newRow(qPrintable(file.fileName())) << file.filePath();
}

/// Runs a file; what differed, empty where nothing did.
inline QString Run(embedded::Server& server, const QString& path) {
    const QString next = u"\n             "_s;
    QString differences;
    const QList<Block> blocks = Read(path);
    if (blocks.isEmpty())
        return path + u" holds no tests"_s;
    for (const Block& block : blocks) {
        const QStringList answer = Answer(server, block);
        if (!IsExpected(answer, block.Expected))
            differences += u"\nline %1, %2\n   expected: %3\n   answered: %4"_s.arg(block.Line)
                               .arg(block.Text.simplified().left(100), block.Expected.join(next),
                                    answer.mid(0, 20).join(next));
    }
    return differences;
}

}  // namespace StatementFile
