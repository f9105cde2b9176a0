#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <atomic>
#include <chrono>
#include <thread>

#include "OrdinaryUser.h"
#include "Rows.h"
#include "base/Clock.h"
#include "base/Errors.h"
#include "embedded/Server.h"
#include "embedded/TextRows.h"

using namespace Qt::StringLiterals;
using embedded::Server;

namespace {

const QString Database = u"CLINICAL_AREA"_s;

const QString CounterScript =
    u"USE CLINICAL_AREA\nGO\n"
    "CREATE TABLE tbCounter (ID int NOT NULL PRIMARY KEY, Last int NOT NULL)\n"
    "CREATE TABLE tbKeyed (A varchar(5) NOT NULL, B int NOT NULL, PRIMARY KEY (B, A))\nGO\n"
    "INSERT INTO tbCounter VALUES (1, 0)\nGO\n"
    "CREATE PROCEDURE sp_Next AS BEGIN\n"
    "  SET NOCOUNT ON; SET XACT_ABORT ON; DECLARE @n int;\n"
    "  BEGIN TRANSACTION;\n"
    "  SELECT @n = Last FROM tbCounter WITH (UPDLOCK, HOLDLOCK) WHERE ID = 1;\n"
    "  UPDATE tbCounter SET Last = @n + 1 WHERE ID = 1;\n"
    "  COMMIT TRANSACTION;\n"
    "  SELECT @n + 1 AS Last;\n"
    "END\nGO\n"_s;

QStringList Rows(Server& server, const QString& command) {
    TextRows rows;
    server.Execute(command, Database, &rows);
    return rows.Lines;
}

/// The number of the error that the action ends with; 0 for none. `text` takes its description.
template <typename Action>
int ErrorOf(Action action, QString* text = nullptr) {
    try {
        action();
    } catch (const base::DatabaseError& error) {
        if (text != nullptr)
            *text = error.Description();
        return error.Number();
    }
    return 0;
}

void WriteFile(const QString& name, const QByteArray& content) {
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

}  // namespace

class tst_Server : public QObject {
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void cleanup() {
        base::Clock::Replace({});
        m_folder.reset();
    }

    void Opening_namesTheFileAndWhatIsWrong_data() {
        Columns<QString, QString>();
        QTest::newRow("missing") << "missing"
                                 << "does not exist";
        QTest::newRow("empty") << "empty"
                               << "is empty";
        QTest::newRow("text") << "text"
                              << "is not a hospital file";
        QTest::newRow("header alone") << "header"
                                      << "is damaged";
        QTest::newRow("another program's") << "foreign"
                                           << "is not a hospital file";
        QTest::newRow("folder") << "folder"
                                << "cannot be read";
    }

    void Opening_namesTheFileAndWhatIsWrong() {
        auto [kind, part] = Fetch<QString, QString>();
        const QString name = File("bad.capd");
        if (kind == u"empty"_s)
            WriteFile(name, {});
        if (kind == u"text"_s)
            WriteFile(name, "Once upon a time there was a hospital that kept its files on paper.");
        if (kind == u"header"_s)
            WriteFile(name, QByteArray("SQLite format 3\0", 16));
        if (kind == u"folder"_s)
            QVERIFY(QDir().mkdir(name));
        if (kind == u"foreign"_s) {
            sqlite3* other = nullptr;
            QCOMPARE(sqlite3_open(name.toUtf8().constData(), &other), SQLITE_OK);
            sqlite3_exec(other, "CREATE TABLE t (x)", nullptr, nullptr, nullptr);
            sqlite3_close(other);
        }
        QString text;
        QVERIFY(ErrorOf([&] { Server server(name, Server::Mode::OpenExisting); }, &text) != 0);
        QVERIFY2(text.contains(name) && text.contains(part), qPrintable(text));
    }

    void Opening_refusesAFileCutShort() {
        MakeHospital();
        QFile file(File());
        QVERIFY(file.resize(file.size() / 2));
        QString text;
        QVERIFY(ErrorOf([&] { Server server(File(), Server::Mode::OpenExisting); }, &text) != 0);
        QVERIFY2(text.contains(u"its end is missing"_s), qPrintable(text));
    }

    void Opening_refusesAFileLockedByAnother() {
        MakeHospital();
        sqlite3* other = nullptr;
        QCOMPARE(sqlite3_open(File().toUtf8().constData(), &other), SQLITE_OK);
        sqlite3_exec(other,
                     "PRAGMA locking_mode = EXCLUSIVE; BEGIN IMMEDIATE;"
                     "UPDATE catalog_sessions SET last = last; COMMIT",
                     nullptr, nullptr, nullptr);
        QString text;
        const int number =
            ErrorOf([&] { Server server(File(), Server::Mode::OpenExisting, 30); }, &text);
        sqlite3_close(other);
        QCOMPARE(number, 1222);
        QVERIFY2(text.contains(File()), qPrintable(text));
    }

    void Opening_readsAReadOnlyFileAndRefusesTheFirstWrite() {
        if (const auto failure = RunAsOrdinaryUser()) {
            QCOMPARE(*failure, QString());
            return;
        }
        MakeHospital();
        QFile::setPermissions(File(), QFileDevice::ReadOwner | QFileDevice::ReadUser);
        QVERIFY(!QFileInfo(File()).isWritable());
        Server server(File(), Server::Mode::OpenExisting);
        QCOMPARE(Rows(server, u"SELECT Last FROM tbCounter"_s), QStringList{u"0"_s});
        QCOMPARE(Rows(server, u"SELECT CASE WHEN @@SPID > 0 THEN 1 END"_s), QStringList{u"1"_s});
        QString text;
        QCOMPARE(ErrorOf([&] { Rows(server, u"sp_Next"_s); }, &text), 3906);
        QVERIFY(text.contains(File()));
    }

    void Write_isRefusedOnceTheFileIsGone_data() {
        QTest::addColumn<QString>("harm");
        for (const char* harm : {"deleted", "moved", "replaced", "log deleted"})
            QTest::newRow(harm) << harm;
    }

    void Write_isRefusedOnceTheFileIsGone() {
        QFETCH(QString, harm);
        MakeHospital();
        Server server(File(), Server::Mode::OpenExisting);
        QCOMPARE(Rows(server, u"sp_Next"_s), QStringList{u"1"_s});
        if (harm == u"replaced")
            QVERIFY(QFile::copy(File(), File("backup.capd")));
        if (harm == u"moved")
            QVERIFY(QFile::rename(File(), File("elsewhere.capd")));
        else
            QVERIFY(QFile::remove(harm == u"log deleted" ? File("hospital.capd-wal") : File()));
        if (harm == u"replaced")
            QVERIFY(QFile::rename(File("backup.capd"), File()));

        // Alone, as a client's transaction, and in a procedure's own one.
        const QString alone = u"UPDATE tbCounter SET Last = 7"_s;
        QString text;
        QCOMPARE(ErrorOf([&] { Rows(server, alone); }, &text), 5120);
        QVERIFY2(text.contains(File()), qPrintable(text));
        QCOMPARE(ErrorOf([&] { Rows(server, u"sp_Next"_s); }), 5120);
        server.BeginTrans();
        Rows(server, alone);
        QCOMPARE(ErrorOf([&] { server.CommitTrans(); }), 5120);
        QCOMPARE(server.TransactionDepth(), 0);
        QCOMPARE(Rows(server, u"SELECT Last FROM tbCounter"_s), QStringList{u"1"_s});
    }

    void Create_leavesNothingBehindWhereItFails() {
        MakeHospital();
        QVERIFY(ErrorOf([&] { Server server(File(), Server::Mode::Create); }) != 0);
        Server untouched(File(), Server::Mode::OpenExisting);
        QCOMPARE(Rows(untouched, u"sp_Next"_s), QStringList{u"1"_s});

        const QString nowhere = File("no such folder/hospital.capd");
        QString text;
        QVERIFY(ErrorOf([&] { Server server(nowhere, Server::Mode::Create); }, &text) != 0);
        QVERIFY2(text.contains(u"no such folder"_s), qPrintable(text));
        for (const QString& name : QDir(m_folder->path()).entryList(QDir::Files))
            QVERIFY2(name.startsWith(u"hospital.capd"_s), qPrintable(name));
    }

    void Rows_areThereAfterReopening() {
        MakeHospital();
        for (const char* expected : {"1", "2"}) {
            Server server(File(), Server::Mode::OpenExisting);
            QCOMPARE(Rows(server, u"CLINICAL_AREA..sp_Next"_s),
                     QStringList{QLatin1String(expected)});
        }
    }

    void TwoSessions_haveDifferentNumbers() {
        MakeHospital();
        const QString ask = u"SELECT @@SPID"_s;
        Server first(File(), Server::Mode::OpenExisting);
        Server second(File(), Server::Mode::OpenExisting);
        // A number asked for inside a transaction that is undone may not come twice either.
        first.BeginTrans();
        const QStringList within = Rows(first, ask);
        first.RollbackTrans();
        const QStringList other = Rows(second, ask);
        const QStringList after = Rows(first, ask);
        QVERIFY(other != after);
        QCOMPARE(Rows(first, ask), after);
        QCOMPARE(Rows(second, ask), other);
        QVERIFY(!within.isEmpty());
    }

    void TwoSessions_countWithoutLosingANumber() {
        MakeHospital();
        constexpr int Times = 60;
        QStringList drawn[2];
        const auto draw = [&](QStringList& numbers) {
            Server server(File(), Server::Mode::OpenExisting);
            for (int i = 0; i < Times; ++i)
                numbers += Rows(server, u"sp_Next"_s);
        };
        std::thread other([&] { draw(drawn[1]); });
        draw(drawn[0]);
        other.join();
        const QStringList all = drawn[0] + drawn[1];
        QCOMPARE(all.size(), 2 * Times);
        QCOMPARE(QSet<QString>(all.begin(), all.end()).size(), 2 * Times);
        QVERIFY(all.contains(QString::number(2 * Times)));
    }

    void Writer_givesUpAfterItsTime() {
        MakeHospital();
        Server first(File(), Server::Mode::OpenExisting);
        Server second(File(), Server::Mode::OpenExisting, 40);
        first.BeginTrans();
        QString text;
        QCOMPARE(ErrorOf([&] { Rows(second, u"sp_Next"_s); }, &text), 1222);
        QVERIFY(text.contains(File()));
        QCOMPARE(ErrorOf([&] { second.BeginTrans(); }), 1222);
        QCOMPARE(second.TransactionDepth(), 0);
        first.CommitTrans();
        QCOMPARE(Rows(second, u"sp_Next"_s), QStringList{u"1"_s});
    }

    // The other one begins anew as soon as it has ended, so that chance alone would leave next to
    // no moment to the one that waits.
    void Writer_whoHasWaitedIsNext() {
        MakeHospital();
        std::atomic<int> begun = 0;
        std::atomic<bool> done = false;
        std::thread other([&] {
            Server server(File(), Server::Mode::OpenExisting);
            while (!done) {
                server.BeginTrans();
                ++begun;
                std::this_thread::sleep_for(std::chrono::milliseconds(60));
                server.CommitTrans();
            }
        });
        Server patient(File(), Server::Mode::OpenExisting);
        int overtaken = 0;
        for (int turn = 0; turn < 5; ++turn) {
            while (begun == 0)
                std::this_thread::yield();
            const int before = begun;
            patient.BeginTrans();
            overtaken = std::max(overtaken, begun - before);
            patient.CommitTrans();
            begun = 0;
        }
        done = true;
        other.join();
        QVERIFY2(overtaken <= 5, qPrintable(QString::number(overtaken)));
    }

    void Reader_seesTheStateBeforeAnothersTransaction() {
        MakeHospital();
        Server writer(File(), Server::Mode::OpenExisting);
        Server reader(File(), Server::Mode::OpenExisting, 40);
        const QString read = u"SELECT Last FROM tbCounter"_s;
        writer.BeginTrans();
        Rows(writer, u"sp_Next"_s);
        QCOMPARE(Rows(reader, read), QStringList{u"0"_s});
        writer.CommitTrans();
        QCOMPARE(Rows(reader, read), QStringList{u"1"_s});
    }

    void Session_noticesProceduresChangedByAnother() {
        MakeHospital();
        Server user(File(), Server::Mode::OpenExisting);
        QCOMPARE(Rows(user, u"sp_Next"_s), QStringList{u"1"_s});
        Server upgrade(File(), Server::Mode::OpenExisting);
        upgrade.RunScript(u"upgrade.sql"_s,
                          u"USE CLINICAL_AREA\nGO\nDROP PROCEDURE IF EXISTS sp_Next\nGO\n"
                          "ALTER TABLE tbCounter ADD Note varchar(5) NOT NULL DEFAULT "
                          "'x'\nGO\n"
                          "CREATE PROCEDURE sp_Next AS SELECT Note FROM tbCounter\nGO"_s);
        Rows(user, u"SELECT Last FROM tbCounter"_s);
        QCOMPARE(Rows(user, u"sp_Next"_s), QStringList{u"x"_s});
    }

    void Rollback_takesBackWhatAScriptMade() {
        MakeHospital();
        Server server(File(), Server::Mode::OpenExisting);
        server.BeginTrans();
        server.RunScript(u"made.sql"_s,
                         u"USE CLINICAL_AREA\nGO\nCREATE TABLE tbMade (X int)\nGO\n"
                         "CREATE PROCEDURE sp_Made AS SELECT 1 FROM tbMade\nGO"_s);
        QCOMPARE(Rows(server, u"sp_Made"_s), QStringList());
        server.RollbackTrans();
        QCOMPARE(ErrorOf([&] { Rows(server, u"sp_Made"_s); }), 2812);
        QCOMPARE(ErrorOf([&] { Rows(server, u"SELECT X FROM tbMade"_s); }), 208);
    }

    void Script_thatFailsUndoesTheCallersTransaction() {
        MakeHospital();
        Server server(File(), Server::Mode::OpenExisting);
        server.BeginTrans();
        QString text;
        const int number = ErrorOf(
            [&] {
                server.RunScript(u"half.sql"_s,
                                 u"USE CLINICAL_AREA\nGO\nUPDATE tbCounter SET Last = 9\n"
                                 "GO\nEXEC sp_Next 'too many'\nGO"_s);
            },
            &text);
        QCOMPARE(number, 8144);
        QVERIFY2(text.startsWith(u"half.sql:5: "_s), qPrintable(text));
        QCOMPARE(server.TransactionDepth(), 0);
        server.RollbackTrans();
        QCOMPARE(Rows(server, u"SELECT Last FROM tbCounter"_s), QStringList{u"0"_s});
    }

    void Failure_inTheMiddleOfRowsLeavesNoLock() {
        MakeHospital();
        Server first(File(), Server::Mode::OpenExisting);
        Server second(File(), Server::Mode::OpenExisting, 40);
        Rows(first, u"INSERT INTO tbCounter VALUES (2, 5)"_s);
        TextRows rows;
        const int number = ErrorOf([&] {
            first.Execute(u"SELECT 10 / (5 - Last) FROM tbCounter ORDER BY ID"_s, Database, &rows);
        });
        QCOMPARE(number, 8134);
        QCOMPARE(Rows(second, u"sp_Next"_s), QStringList{u"1"_s});
        QCOMPARE(Rows(first, u"sp_Next"_s), QStringList{u"2"_s});
    }

    void Clock_isTheProgramsAndRoundsToTheServersTicks() {
        MakeHospital();
        Server server(File(), Server::Mode::OpenExisting);
        const QString now = u"SELECT GETDATE()"_s;
        base::Clock::Replace([] { return QDateTime({2026, 2, 3}, {4, 5, 6, 8}); });
        QCOMPARE(Rows(server, now), QStringList{u"2026-02-03 04:05:06.007"_s});
        base::Clock::Replace([] { return QDateTime({2026, 12, 31}, {23, 59, 59, 999}); });
        QCOMPARE(Rows(server, now), QStringList{u"2027-01-01 00:00:00.000"_s});
    }

    void Command_refusesANulCharacter() {
        MakeHospital();
        Server server(File(), Server::Mode::OpenExisting);
        QString command = u"SELECT 'a' FROM tbCounter"_s;
        command[8] = QChar(0);
        QCOMPARE(ErrorOf([&] { Rows(server, command); }), 102);
    }

    void KeyColumns_comeInKeyOrder() {
        MakeHospital();
        Server server(File(), Server::Mode::OpenExisting);
        const std::vector<QString> expected = {u"B"_s, u"A"_s};
        QCOMPARE(server.KeyColumns(u"clinical_area..tbkeyed"_s, {}), expected);
        QCOMPARE(ErrorOf([&] { server.KeyColumns(u"tbNone"_s, Database); }), 208);
    }

private:
    QString File(const char* name = "hospital.capd") const {
        return m_folder->filePath(QLatin1String(name));
    }
    void MakeHospital() const {
        Server server(File(), Server::Mode::Create);
        server.RunScript(u"counter.sql"_s, CounterScript);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_Server)
#include "tst_Server.moc"
