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

/// The error that the action ends with; of number 0 for none.
template <typename Action>
base::DatabaseError ErrorOf(Action action) {
    try {
        action();
    } catch (const base::DatabaseError& error) {
        return error;
    }
    return {0, {}};
}

/// The file in another program's hands, which has done something to it.
auto InOtherHands(const QString& file, const char* statements) {
    sqlite3* other = nullptr;
    sqlite3_open(file.toUtf8().constData(), &other);
    sqlite3_exec(other, statements, nullptr, nullptr, nullptr);
    return std::unique_ptr<sqlite3, decltype(&sqlite3_close)>(other, sqlite3_close);
}

}  // namespace

class tst_Server : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        Server(File(), Server::Mode::Create).RunScript(u"counter.sql"_s, CounterScript);
    }

    void cleanup() { base::Clock::Replace({}); }

    void Opening_namesTheFileAndWhatIsWrong_data() {
        using Harm = std::function<void(const QString& name)>;
        Columns<Harm, QString>();
        const auto written = [](const QByteArray& content) {
            return [content](const QString& name) {
                QFile file(name);
                QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
            };
        };
        const auto row = [](const char* wrong, Harm harm) {
            QTest::newRow(wrong) << harm << QString::fromLatin1(wrong);
        };
        row("does not exist", [](const QString&) {});
        row("is empty", written({}));
        row("is not a hospital", written(QByteArray("Dear hospital, ").repeated(10)));
        row("is not a hospital file",
            [](const QString& name) { InOtherHands(name, "CREATE TABLE t (x)"); });
        row("is damaged", written(QByteArray("SQLite format 3\0", 16)));
        row("cannot be read", [](const QString& name) { QVERIFY(QDir().mkdir(name)); });
        row("its end is missing", [this](const QString& name) {
            QVERIFY(QFile::rename(File(), name) && QFile::resize(name, QFileInfo(name).size() / 2));
        });
    }

    void Opening_namesTheFileAndWhatIsWrong() {
        auto [harm, part] = Fetch<std::function<void(const QString&)>, QString>();
        const QString name = File("bad.capd");
        harm(name);
        const auto present = [this] { return QDir(m_folder->path()).entryList(); };
        const QStringList before = present();
        const auto error = ErrorOf([&] { Server server(name, Server::Mode::OpenExisting); });
        QCOMPARE(present(), before);
        const QString text = error.Description();
        QVERIFY2(text.contains(name) && text.contains(part), qPrintable(text));
    }

    void Opening_refusesAFileLockedByAnother() {
        const auto other = InOtherHands(File(),
                                        "PRAGMA locking_mode = EXCLUSIVE; BEGIN IMMEDIATE;"
                                        "UPDATE catalog_sessions SET last = last; COMMIT");
        const auto error = ErrorOf([&] { Opened(30); });
        QCOMPARE(error.Number(), 1222);
        QVERIFY(error.Description().contains(File()));
    }

    void Opening_readsAReadOnlyFileAndRefusesTheFirstWrite() {
        if (const auto failure = RunAsOrdinaryUser()) {
            QCOMPARE(*failure, QString());
            return;
        }
        QFile::setPermissions(File(), QFileDevice::ReadOwner | QFileDevice::ReadUser);
        QVERIFY(!QFileInfo(File()).isWritable());
        Server server = Opened();
        QCOMPARE(Rows(server, u"SELECT Last FROM tbCounter"_s), QStringList{u"0"_s});
        QCOMPARE(Rows(server, u"SELECT CASE WHEN @@SPID > 0 THEN 1 END"_s), QStringList{u"1"_s});
        const auto refused = ErrorOf([&] { Rows(server, u"sp_Next"_s); });
        QCOMPARE(refused.Number(), 3906);
        QVERIFY(refused.Description().contains(File()));
    }

    void Write_isRefusedOnceTheFileIsGone_data() {
        QTest::addColumn<QString>("harm");
        for (const char* harm : {"deleted", "moved", "replaced", "log deleted"})
            QTest::newRow(harm) << harm;
    }

    void Write_isRefusedOnceTheFileIsGone() {
        QFETCH(QString, harm);
        Server server = Opened();
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
        const auto refused = ErrorOf([&] { Rows(server, alone); });
        QCOMPARE(refused.Number(), 5120);
        QVERIFY(refused.Description().contains(File()));
        QCOMPARE(ErrorOf([&] { Rows(server, u"sp_Next"_s); }).Number(), 5120);
        server.BeginTrans();
        Rows(server, alone);
        QCOMPARE(ErrorOf([&] { server.CommitTrans(); }).Number(), 5120);
        QCOMPARE(server.TransactionDepth(), 0);
        QCOMPARE(Rows(server, u"SELECT Last FROM tbCounter"_s), QStringList{u"1"_s});
    }

    void Create_leavesNothingBehindWhereItFails() {
        const auto create = [this](const char* name) {
            return ErrorOf([&] { Server server(File(name), Server::Mode::Create); }).Description();
        };
        QVERIFY(!create("hospital.capd").isEmpty());
        QVERIFY(create("no such folder/hospital.capd").contains(u"no such folder"_s));
        for (const QString& name : QDir(m_folder->path()).entryList(QDir::Files))
            QVERIFY2(name.startsWith(u"hospital.capd"_s), qPrintable(name));
        // What was there is as it was, and stays when it is closed.
        for (const char* expected : {"1", "2"}) {
            Server server = Opened();
            QCOMPARE(Rows(server, u"CLINICAL_AREA..sp_Next"_s),
                     QStringList{QLatin1String(expected)});
        }
    }

    void TwoSessions_haveDifferentNumbers() {
        const QString ask = u"SELECT @@SPID"_s;
        Server first = Opened();
        Server second = Opened();
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
        constexpr int Times = 60;
        QStringList drawn[2];
        const auto draw = [&](QStringList& numbers) {
            Server server = Opened();
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

    void Others_readTheStateBeforeATransactionAndWaitToWrite() {
        Server first = Opened();
        Server second = Opened(40);
        const QString read = u"SELECT Last FROM tbCounter"_s;
        first.BeginTrans();
        Rows(first, u"sp_Next"_s);
        QCOMPARE(Rows(second, read), QStringList{u"0"_s});
        const auto refused = ErrorOf([&] { Rows(second, u"sp_Next"_s); });
        QCOMPARE(refused.Number(), 1222);
        QVERIFY(refused.Description().contains(File()));
        QCOMPARE(ErrorOf([&] { second.BeginTrans(); }).Number(), 1222);
        QCOMPARE(second.TransactionDepth(), 0);
        first.CommitTrans();
        QCOMPARE(Rows(second, read), QStringList{u"1"_s});
        QCOMPARE(Rows(second, u"sp_Next"_s), QStringList{u"2"_s});
    }

    // The other one begins anew as soon as it has ended, so that chance alone would leave next to
    // no moment to the one that waits.
    void Writer_whoHasWaitedIsNext() {
        std::atomic<int> begun = 0;
        std::atomic<bool> done = false;
        std::thread other([&] {
            Server server = Opened();
            while (!done) {
                server.BeginTrans();
                ++begun;
                std::this_thread::sleep_for(std::chrono::milliseconds(60));
                server.CommitTrans();
            }
        });
        Server patient = Opened();
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

    void Session_noticesProceduresChangedByAnother() {
        Server user = Opened();
        QCOMPARE(Rows(user, u"sp_Next"_s), QStringList{u"1"_s});
        Server upgrade = Opened();
        upgrade.RunScript(u"upgrade.sql"_s,
                          u"USE CLINICAL_AREA\nGO\nDROP PROCEDURE IF EXISTS sp_Next\nGO\n"
                          "ALTER TABLE tbCounter ADD Note varchar(5) NOT NULL DEFAULT "
                          "'x'\nGO\n"
                          "CREATE PROCEDURE sp_Next AS SELECT Note FROM tbCounter\nGO"_s);
        Rows(user, u"SELECT Last FROM tbCounter"_s);
        QCOMPARE(Rows(user, u"sp_Next"_s), QStringList{u"x"_s});
    }

    void Failure_inTheMiddleOfRowsLeavesNoLock() {
        Server first = Opened();
        Server second = Opened(40);
        Rows(first, u"INSERT INTO tbCounter VALUES (2, 5)"_s);
        const QString half = u"SELECT 10 / (5 - Last) FROM tbCounter ORDER BY ID"_s;
        QCOMPARE(ErrorOf([&] { Rows(first, half); }).Number(), 8134);
        QCOMPARE(Rows(second, u"sp_Next"_s), QStringList{u"1"_s});
        QCOMPARE(Rows(first, u"sp_Next"_s), QStringList{u"2"_s});
    }

    void Clock_isTheProgramsAndRoundsToTheServersTicks() {
        Server server = Opened();
        const QString now = u"SELECT GETDATE()"_s;
        base::Clock::Replace([] { return QDateTime({2026, 2, 3}, {4, 5, 6, 8}); });
        QCOMPARE(Rows(server, now), QStringList{u"2026-02-03 04:05:06.007"_s});
        base::Clock::Replace([] { return QDateTime({2026, 12, 31}, {23, 59, 59, 999}); });
        QCOMPARE(Rows(server, now), QStringList{u"2027-01-01 00:00:00.000"_s});
    }

    void Command_refusesANulCharacter() {
        Server server = Opened();
        QString command = u"SELECT 'a' FROM tbCounter"_s;
        command[8] = QChar(0);
        QCOMPARE(ErrorOf([&] { Rows(server, command); }).Number(), 102);
    }

    void KeyColumns_comeInKeyOrder() {
        Server server = Opened();
        const std::vector<QString> expected = {u"B"_s, u"A"_s};
        QCOMPARE(server.KeyColumns(u"clinical_area..tbkeyed"_s, {}), expected);
        QCOMPARE(ErrorOf([&] { server.KeyColumns(u"tbNone"_s, Database); }).Number(), 208);
    }

private:
    QString File(const char* name = "hospital.capd") const {
        return m_folder->filePath(QLatin1String(name));
    }
    Server Opened(int busyMilliseconds = Server::kBusyMilliseconds) const {
        return Server(File(), Server::Mode::OpenExisting, busyMilliseconds);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_Server)
#include "tst_Server.moc"
