#include <QTest>
#include <algorithm>
#include <cstring>

#include "FakeDriver.h"
#include "FakeOdbc.h"
#include "Rows.h"
#include "db/Driver.h"
#include "db/Recordset.h"

using namespace Qt::StringLiterals;
using db::Connection;
using db::Recordset;
using db::Value;
using FakeOdbc::Failure;
using FakeOdbc::Result;
using FakeOdbc::Results;

namespace {

Result OneText(const QString& text, SQLULEN width = 20) {
    return {.Columns = {{u"x"_s, SQL_VARCHAR, width}}, .Rows = {{text}}};
}

const Results kNothing{Result{}};
const Failure kRefused{u"23000"_s, 547, u"[Maker][Driver 18][SQL Server]Refused."_s};
const Failure kCut{u"08S01"_s, 10054, u"[Maker]Link failure"_s};

}  // namespace

/// What only a SQL Server does, on a stand-in for the driver manager.
class tst_OdbcServer : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_world = {};
        Answer(kNothing);
    }

    void cleanup() {
        m_connection.reset();
        QCOMPARE(m_world.OpenHandles, 0);
    }

    void Connecting_setsTheSession() {
        Open();
        QCOMPARE(m_world.Commands, QStringList{u"SET DATEFORMAT mdy"_s});
        QCOMPARE(m_world.LogInSeconds, quintptr(15));
        m_connection->Execute(u"sp"_s);
        QCOMPARE(m_world.CommandSeconds, quintptr(30));
        m_connection.reset();
        QCOMPARE(m_world.Steps, QStringList{u"disconnect"_s});
        m_world.Commands.clear();
        m_world.DbmsName = u"Other"_s;
        Open();
        m_connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        QVERIFY(m_world.Commands.isEmpty());
    }

    void Connecting_hidesTheLogOnAndEncrypts() {
        const QString encrypted = u";Encrypt=yes;Encryption=require"_s;
        m_connection = Connection::Open(u"DSN=h;UID=other;PWD=x"_s, u"ana"_s, u"p}w;d"_s);
        QCOMPARE(m_world.ConnectionString, u"DSN=h;UID={ana};PWD={p}}w;d}"_s + encrypted);
        QCOMPARE(m_connection->ConnectionString(), u"DSN=h"_s);
        m_connection = Connection::Open(u"DSN=h;UID=ana;PWD=x"_s);
        QCOMPARE(m_world.ConnectionString, u"DSN=h;UID={ana};PWD={x}"_s + encrypted);
        QCOMPARE(Connection::Find(u"DSN=h"_s), m_connection);
        for (const QString& asked : {u"DSN=h;Encrypt=no"_s, u"DSN=h;encryption=off;"_s}) {
            m_connection = Connection::Open(asked);
            QCOMPARE(m_world.ConnectionString, asked);
        }
        m_world.Fails[u"connect"_s] = {u"28000"_s, 18456, u"[M][D]Login failed for user 'ana'."_s};
        const auto error = ErrorOf([] { Connection::Open(u"DSN=h"_s, u"ana"_s); });
        QCOMPARE(error.Number(), 18456);
        QCOMPARE(error.Description(), u"Login failed for user '***'."_s);
    }

    void Connecting_failsCleanly_data() {
        Columns<std::function<void()>, QString>();
        const auto row = [](const QString& text, std::function<void()> harm) {
            QTest::newRow(qPrintable(text)) << harm << text;
        };
        row(u"ODBC gives no further handle."_s, [this] { m_world.NoHandles = true; });
        row(u"No name."_s, [this] { m_world.Fails[u"info"_s] = {{}, 1, u"No name."_s}; });
        row(u"Refused."_s, [this] { Answer({{.Failed = kRefused}}); });
        row(u"The server gave no reason."_s, [this] {
            m_world.Fails[u"connect"_s] = kRefused;
            m_world.NoDiagnosis = true;
        });
    }

    void Connecting_failsCleanly() {
        auto [harm, text] = Fetch<std::function<void()>, QString>();
        harm();
        QCOMPARE(ErrorOf([this] { Open(); }).Description(), text);
        QVERIFY(!Connection::Find(u"DSN=hospital"_s));
    }

    void DefaultDatabase_isUsed() {
        Open();
        m_connection->SetDefaultDatabase(u"odd]name"_s);
        QCOMPARE(m_world.Commands.last(), u"USE [odd]]name]"_s);
        Answer({{.Failed = kRefused}});
        QCOMPARE(ErrorOf([this] { m_connection->SetDefaultDatabase(u"gone"_s); }).Number(), 547);
        QCOMPARE(m_connection->DefaultDatabase(), u"odd]name"_s);
    }

    void Rows_comeBehindRowCounts() {
        Open();
        Answer({{.RowCount = 3},
                {.RowCount = 0},
                OneText(u"first"_s),
                OneText(u"second"_s),
                {.RowCount = 2},
                {.RowCount = -1}});
        int written = 0;
        const auto rows = m_connection->Execute(u"sp"_s, &written);
        QCOMPARE(rows->RecordCount(), 1);
        QCOMPARE(rows->Fields(0).Text(), u"first"_s);
        QCOMPARE(written, 2);
        Answer({{.RowCount = 0}});
        m_connection->Execute(u"DELETE x"_s, &written);
        QCOMPARE(written, 0);
    }

    void Error_ofAnyResultIsRaised_data() {
        Columns<Results>();
        const Result rows = OneText(u"x"_s);
        Result broken = rows;
        broken.Failed = kRefused;
        const Result failed{.Failed = kRefused};
        const Result later{.Failed = Failure{u"42000"_s, 1, u"later"_s}};
        QTest::newRow("at once") << Results{failed};
        QTest::newRow("behind a row count") << Results{{.RowCount = 1}, failed};
        QTest::newRow("behind the rows") << Results{rows, failed, rows};
        QTest::newRow("within the rows") << Results{broken, rows};
        QTest::newRow("the first of two") << Results{failed, rows, later};
    }

    void Error_ofAnyResultIsRaised() {
        auto [results] = Fetch<Results>();
        Open();
        Answer(results);
        Recordset rows;
        const auto error = ErrorOf([&] { rows.Open(u"sp 'x'"_s, m_connection); });
        QCOMPARE(error.Number(), 547);
        QCOMPARE(error.Description(), u"Refused."_s);
        QCOMPARE(error.Command(), u"sp 'x'"_s);
        QCOMPARE(rows.State(), 0);
    }

    void Script_namesTheLineThatFailed() {
        const auto driver = db::OpenDriver(u"DSN=hospital"_s);
        m_world.Answer = [](const QString& batch) -> Results {
            Failure failure = kRefused;
            failure.Line = 2;
            return batch.startsWith(u"b"_s) ? Results{{.Failed = failure}} : kNothing;
        };
        const auto error =
            ErrorOf([&] { driver->RunScript(u"x.sql"_s, u"a\nGO\n\nGO\nb\nc\nGO\nd\n"_s); });
        QCOMPARE(error.Number(), 547);
        QCOMPARE(error.Description(), u"x.sql:6: Refused."_s);
        QCOMPARE(m_world.Commands.mid(1), (QStringList{u"a\n"_s, u"b\nc\n"_s}));
        QCOMPARE(m_world.CommandSeconds, quintptr(0));
        const auto letter =
            ErrorOf([&] { driver->RunScript(u"x.sql"_s, u"GO\nb ș"_s); }).Description();
        QVERIFY2(letter.startsWith(u"x.sql:2: "_s), qPrintable(letter));
    }

    void Blocks_bringEveryKind() {
        Open();
        Result slips{.Columns = {{u"id"_s, SQL_INTEGER},
                                 {u"paid"_s, SQL_BIT},
                                 {u"amount"_s, SQL_DECIMAL},
                                 {u"rate"_s, SQL_REAL},
                                 {u"seen"_s, SQL_TYPE_TIMESTAMP},
                                 {u"name"_s, SQL_VARCHAR, 10}}};
        for (int row = 0; row < 2345; ++row) {
            slips.Rows.push_back({QString::number(row), row % 2 ? u"1"_s : QString(), u"12.5000"_s,
                                  u"0.25"_s, u"2026-03-07T13:05:09.997"_s,
                                  row % 3 ? u"é\U0001F600"_s : QString()});
        }
        Answer({slips});
        const auto rows = m_connection->Execute(u"sp"_s)->Rows();
        QCOMPARE(rows->RowCount(), 2345);
        QVERIFY(m_world.LargestBlock > 100);
        for (int row = 0; row < rows->RowCount(); ++row) {
            QVERIFY(rows->At(row, 0) == Value(row));
            QVERIFY(rows->At(row, 1) == (row % 2 ? Value(1) : Value()));
            QVERIFY(rows->At(row, 2) == Value(12.5));
            QVERIFY(rows->At(row, 3) == Value(0.25));
            QVERIFY(rows->Utf8At(row, 4) == "2026-03-07 13:05:09.997");
            QVERIFY(rows->At(row, 5) == (row % 3 ? Value(u"é\U0001F600"_s) : Value()));
        }
    }

    void Blocks_cutNothingOff() {
        Open();
        for (const int length : {3, 7, 8, 20}) {
            Answer({OneText(u"x"_s.repeated(length), 3)});
            const auto open = [this] { return m_connection->Execute(u"sp"_s); };
            if (length <= 7) {
                QCOMPARE(open()->Fields(0).Text().size(), length);
            } else {
                QVERIFY(ErrorOf(open).Description().contains(u"\"x\""_s));
            }
        }
    }

    void LongTexts_keepTheirPairs() {
        Open();
        const QString text = u"x"_s + u"\U0001F600"_s.repeated(100000);
        Answer({{.Columns = {{u"id"_s, SQL_BIGINT},
                             {u"note"_s, SQL_LONGVARCHAR, 0},
                             {u"amount"_s, SQL_NUMERIC}},
                 .Rows = {{u"1"_s, text, u"0.1"_s},
                          {QString(), QString(), QString()},
                          {u"3"_s, u""_s, u"7"_s}}}});
        const auto rows = m_connection->Execute(u"sp"_s)->Rows();
        QCOMPARE(rows->RowCount(), 3);
        QVERIFY(m_world.Pieces > 3);
        QVERIFY(rows->TextAt(0, 1) == text);
        QVERIFY(rows->At(0, 2) == Value(0.1));
        for (int column = 0; column < 3; ++column) {
            QVERIFY(rows->At(1, column).IsNull());
        }
        QVERIFY(rows->At(2, 1) == Value(QString()));
        QVERIFY(rows->At(2, 0) == Value(3));
    }

    void Transaction_endsWhereTheServerEndedIt() {
        Open();
        m_connection->BeginTrans();
        Answer({{.Failed = kRefused}});
        QCOMPARE(ErrorOf([this] { m_connection->Execute(u"sp"_s); }).Number(), 547);
        QCOMPARE(m_world.Steps,
                 (QStringList{u"autocommit off"_s, u"rollback"_s, u"autocommit on"_s}));
        m_connection->RollbackTrans();
        QCOMPARE(m_world.Steps.size(), 3);
        QCOMPARE(ErrorOf([this] { m_connection->CommitTrans(); }).Number(), 3902);
        m_world.Steps.clear();
        m_world.Fails[u"end"_s] = kRefused;
        m_connection->BeginTrans();
        QCOMPARE(ErrorOf([this] { m_connection->CommitTrans(); }).Number(), 547);
        QCOMPARE(m_world.Steps.last(), u"autocommit on"_s);
        m_world.Fails = {{u"autocommit"_s, {{}, 9, {}}}};
        QCOMPARE(ErrorOf([this] { m_connection->BeginTrans(); }).Number(), 9);
        QCOMPARE(ErrorOf([this] { m_connection->CommitTrans(); }).Number(), 3902);
    }

    void LostConnection_isToldOnceAndMadeAnew_data() {
        Columns<QString, bool>();
        QTest::newRow("by its state") << u"08S01"_s << false;
        QTest::newRow("found dead") << u"HYT00"_s << true;
    }

    void LostConnection_isToldOnceAndMadeAnew() {
        auto [state, dead] = Fetch<QString, bool>();
        Open();
        m_connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        Failure failure = kCut;
        failure.State = state;
        failure.Number = dead ? 0 : failure.Number;  // some drivers tell none
        Answer({{.Failed = failure}});
        m_world.Dead = dead;
        m_world.Commands.clear();
        const auto lost = ErrorOf([this] { m_connection->Execute(u"sp 'a'"_s); });
        QVERIFY(lost.Description().contains(u"Look whether this was saved"_s));
        QCOMPARE(lost.Number(), 10054);
        QCOMPARE(m_world.Commands, QStringList{u"sp 'a'"_s});
        m_world.Fails[u"connect"_s] = kCut;
        const auto away = ErrorOf([this] { m_connection->Execute(u"sp 'b'"_s); });
        QVERIFY(away.Description().startsWith(u"The server cannot be reached again"_s));
        m_world.Fails.clear();
        Answer(kNothing);
        m_world.Commands.clear();
        m_connection->Execute(u"sp 'c'"_s);
        QCOMPARE(m_world.Commands,
                 (QStringList{u"SET DATEFORMAT mdy"_s, u"USE [CLINICAL_AREA]"_s, u"sp 'c'"_s}));
    }

    void LostConnection_neverWritesTheRestOfAnAction() {
        Open();
        m_connection->BeginTrans();
        Answer({{.Failed = kCut}});
        const auto lost = ErrorOf([this] { m_connection->Execute(u"sp 'line 1'"_s); });
        QVERIFY(lost.Description().contains(u"Nothing of this was saved"_s));
        Answer(kNothing);
        QCOMPARE(ErrorOf([this] { m_connection->Execute(u"sp 'line 2'"_s); }).Number(), 10054);
        QCOMPARE(ErrorOf([this] { m_connection->CommitTrans(); }).Number(), 10054);
        QVERIFY(!m_world.Commands.contains(u"sp 'line 2'"_s));
        m_connection->RollbackTrans();
        m_connection->Execute(u"sp 'next'"_s);
        QCOMPARE(m_world.Commands.last(), u"sp 'next'"_s);
        // Nobody knows whether a commit that got no answer was heard.
        m_connection->BeginTrans();
        m_world.Fails[u"end"_s] = kCut;
        const auto unsure = ErrorOf([this] { m_connection->CommitTrans(); });
        QVERIFY(unsure.Description().contains(u"Look whether this was saved"_s));
    }

    void LostRace_isToldPlainly() {
        Open();
        Answer({{.Failed = Failure{u"40001"_s, 1205, u"victim"_s}}});
        const auto lost = ErrorOf([this] { m_connection->Execute(u"sp 'line 1'"_s); });
        QCOMPARE(lost.Number(), 1205);
        QVERIFY(lost.Description().contains(u"Try again"_s));
    }

    void Letters_areTriedOnce() {
        Open();
        m_world.Answer = [](const QString& command) -> Results {
            if (!command.startsWith(u"SELECT CAST"_s)) {
                return kNothing;
            }
            QString letter = command.section(QLatin1Char('\''), 1, 1);
            return {OneText(letter == u"ș"_s ? u"s"_s : letter, 8)};
        };
        m_world.Commands.clear();
        m_connection->Execute(u"sp 'Peña, Ñuñez'"_s);
        m_connection->Execute(u"sp 'ñ'"_s);
        QCOMPARE(m_world.Commands, (QStringList{u"SELECT CAST(N'ñ' AS varchar(8))"_s,
                                                u"SELECT CAST(N'Ñ' AS varchar(8))"_s,
                                                u"sp 'Peña, Ñuñez'"_s, u"sp 'ñ'"_s}));
        const auto error = ErrorOf([this] { m_connection->Execute(u"sp 'ș'"_s); });
        QVERIFY2(error.Description().contains(u"\"ș\" (U+0219)"_s),
                 qPrintable(error.Description()));
        QVERIFY(!m_world.Commands.contains(u"sp 'ș'"_s));
    }

    void Keys_areAskedByParts_data() {
        Columns<QString, QString>();
        QTest::newRow("bare") << u"tb"_s << u"EXEC [CLINICAL_AREA].sys.sp_pkeys 'tb'"_s;
        QTest::newRow("no owner") << u"BILLING..tb"_s << u"EXEC [BILLING].sys.sp_pkeys 'tb'"_s;
        QTest::newRow("all") << u"[B.L].\"dbo\".[t b]"_s
                             << u"EXEC [B.L].sys.sp_pkeys 't b', 'dbo'"_s;
    }

    void Keys_areAskedByParts() {
        auto [table, asked] = Fetch<QString, QString>();
        const auto driver = db::OpenDriver(u"DSN=hospital"_s);
        driver->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        Answer({{.Columns = std::vector<FakeOdbc::Column>(6, {u"k"_s}),
                 .Rows = {{u"db"_s, u"dbo"_s, u"tb"_s, u"id"_s, u"1"_s, u"pk"_s}}}});
        QCOMPARE(driver->KeyColumns(table), std::vector<QString>{u"id"_s});
        QCOMPARE(m_world.Commands.last(), asked);
    }

private:
    void Answer(const Results& results) {
        m_world.Answer = [results](const QString&) { return results; };
    }
    void Open() { m_connection = Connection::Open(u"DSN=hospital"_s); }

    std::shared_ptr<Connection> m_connection;
    FakeOdbc::World& m_world = FakeOdbc::TheWorld();
};

QTEST_GUILESS_MAIN(tst_OdbcServer)
#include "tst_OdbcServer.moc"
