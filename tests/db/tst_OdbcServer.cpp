#include <QTest>
#include <algorithm>
#include <cstring>

#include "FakeDriver.h"
#include "FakeOdbc.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

using db::Connection;
using db::Recordset;
using db::Value;
using FakeOdbc::Failure;
using FakeOdbc::Result;
using FakeOdbc::Results;

namespace {

Results NoRows() {
    return {Result{}};
}

Result OneText(const QString& text, SQLULEN width = 20) {
    return {.Columns = {{QStringLiteral("x"), SQL_VARCHAR, width}}, .Rows = {{text}}};
}

const Failure kRefused{QStringLiteral("23000"), 547,
                       QStringLiteral("[Maker][Driver 18][SQL Server]Refused.")};
const Failure kCut{QStringLiteral("08S01"), 10054, QStringLiteral("[Maker]Link failure")};

}  // namespace

/// What only a SQL Server does, on a stand-in for the driver manager.
class tst_OdbcServer : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void Connecting_setsTheSession();
    void Connecting_hidesTheLogOn();
    void Connecting_failsCleanly_data();
    void Connecting_failsCleanly();
    void DefaultDatabase_isUsed();
    void Rows_comeBehindRowCounts();
    void Error_ofAnyResultIsRaised_data();
    void Error_ofAnyResultIsRaised();
    void Blocks_bringEveryKind();
    void Blocks_cutNothingOff();
    void LongTexts_keepTheirPairs();
    void Transaction_endsWhereTheServerEndedIt();
    void LostConnection_isToldOnceAndMadeAnew_data();
    void LostConnection_isToldOnceAndMadeAnew();
    void LostConnection_neverWritesTheRestOfAnAction();
    void LostRace_isToldPlainly();
    void Letters_areTriedOnce();
    void Keys_areAskedByParts_data();
    void Keys_areAskedByParts();

private:
    void Open() { m_connection = Connection::Open(QStringLiteral("DSN=hospital")); }

    std::shared_ptr<Connection> m_connection;
    FakeOdbc::World& m_world = FakeOdbc::TheWorld();
};

void tst_OdbcServer::init() {
    m_world = {};
    m_world.Answer = [](const QString&) { return NoRows(); };
}

void tst_OdbcServer::cleanup() {
    m_connection.reset();
    QCOMPARE(m_world.OpenHandles, 0);
}

void tst_OdbcServer::Connecting_setsTheSession() {
    Open();
    QCOMPARE(m_world.Commands, QStringList{QStringLiteral("SET DATEFORMAT mdy")});
    QCOMPARE(m_world.LogInSeconds, quintptr(15));
    m_connection.reset();
    QCOMPARE(m_world.Steps, QStringList{QStringLiteral("disconnect")});
    m_world.Commands.clear();
    m_world.DbmsName = QStringLiteral("Other");
    Open();
    m_connection->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    QVERIFY(m_world.Commands.isEmpty());
}

void tst_OdbcServer::Connecting_hidesTheLogOn() {
    m_connection = Connection::Open(QStringLiteral("DSN=h;UID=other;PWD=x"), QStringLiteral("ana"),
                                    QStringLiteral("p}w;d"));
    QCOMPARE(m_world.ConnectionString,
             QStringLiteral("DSN=h;UID={ana};PWD={p}}w;d};Encrypt=yes;Encryption=require"));
    QCOMPARE(m_connection->ConnectionString(), QStringLiteral("DSN=h"));
    m_connection = Connection::Open(QStringLiteral("DSN=h;UID=ana;PWD=x"));
    QCOMPARE(m_world.ConnectionString,
             QStringLiteral("DSN=h;UID={ana};PWD={x};Encrypt=yes;Encryption=require"));
    QCOMPARE(Connection::Find(QStringLiteral("DSN=h")), m_connection);
    m_world.ConnectFails = Failure{QStringLiteral("28000"), 18456,
                                   QStringLiteral("[M][D]Login failed for user 'ana'.")};
    const auto error =
        ErrorOf([] { Connection::Open(QStringLiteral("DSN=h"), QStringLiteral("ana")); });
    QCOMPARE(error.Number(), 18456);
    QCOMPARE(error.Description(), QStringLiteral("Login failed for user '***'."));
}

void tst_OdbcServer::Connecting_failsCleanly_data() {
    QTest::addColumn<std::function<void(FakeOdbc::World&)>>("breakIt");
    QTest::addColumn<QString>("text");
    using World = FakeOdbc::World;
    const auto row = [](const char* name, std::function<void(World&)> breakIt, const char* text) {
        QTest::newRow(name) << breakIt << QString::fromUtf8(text);
    };
    row(
        "no handle", [](World& world) { world.NoHandles = true; }, "ODBC gives no further handle.");
    row(
        "no name", [](World& world) { world.InfoFails = kRefused; }, "Refused.");
    row(
        "no date order",
        [](World& world) {
            world.Answer = [](const QString&) { return Results{{.Failed = kRefused}}; };
        },
        "Refused.");
    row(
        "no reason",
        [](World& world) {
            world.ConnectFails = kRefused;
            world.NoDiagnosis = true;
        },
        "The server gave no reason.");
}

void tst_OdbcServer::Connecting_failsCleanly() {
    using Break = std::function<void(FakeOdbc::World&)>;
    QFETCH(Break, breakIt);
    breakIt(m_world);
    const auto error = ErrorOf([this] { Open(); });
    QTEST(error.Description(), "text");
    QVERIFY(!Connection::Find(QStringLiteral("DSN=hospital")));
}

void tst_OdbcServer::DefaultDatabase_isUsed() {
    Open();
    m_connection->SetDefaultDatabase(QStringLiteral("odd]name"));
    QCOMPARE(m_world.Commands.last(), QStringLiteral("USE [odd]]name]"));
    QCOMPARE(m_connection->DefaultDatabase(), QStringLiteral("odd]name"));
    m_world.Answer = [](const QString&) { return Results{{.Failed = kRefused}}; };
    QCOMPARE(ErrorOf([this] { m_connection->SetDefaultDatabase(QStringLiteral("gone")); }).Number(),
             547);
    QCOMPARE(m_connection->DefaultDatabase(), QStringLiteral("odd]name"));
}

void tst_OdbcServer::Rows_comeBehindRowCounts() {
    Open();
    m_world.Answer = [](const QString&) {
        return Results{{.RowCount = 3},
                       {.RowCount = 0},
                       OneText(QStringLiteral("first")),
                       OneText(QStringLiteral("second")),
                       {.RowCount = 2},
                       {.RowCount = -1}};
    };
    int written = 0;
    const auto rows = m_connection->Execute(QStringLiteral("sp"), &written);
    QCOMPARE(rows->RecordCount(), 1);
    QCOMPARE(rows->Fields(0).Text(), QStringLiteral("first"));
    QCOMPARE(written, 2);
    m_world.Answer = [](const QString&) { return Results{{.RowCount = 0}}; };
    m_connection->Execute(QStringLiteral("DELETE x"), &written);
    QCOMPARE(written, 0);
}

void tst_OdbcServer::Error_ofAnyResultIsRaised_data() {
    QTest::addColumn<FakeOdbc::Results>("results");
    const Result rows = OneText(QStringLiteral("x"));
    Result broken = rows;
    broken.Failed = kRefused;
    const Result failed{.Failed = kRefused};
    const Result later{.Failed = Failure{QStringLiteral("42000"), 1, QStringLiteral("later")}};
    QTest::newRow("at once") << Results{failed};
    QTest::newRow("behind a row count") << Results{{.RowCount = 1}, failed};
    QTest::newRow("behind the rows") << Results{rows, failed, rows};
    QTest::newRow("within the rows") << Results{broken, rows};
    QTest::newRow("the first of two") << Results{failed, rows, later};
}

void tst_OdbcServer::Error_ofAnyResultIsRaised() {
    QFETCH(FakeOdbc::Results, results);
    Open();
    m_world.Answer = [results](const QString&) { return results; };
    Recordset rows;
    const auto error = ErrorOf([&] { rows.Open(QStringLiteral("sp 'x'"), m_connection); });
    QCOMPARE(error.Number(), 547);
    QCOMPARE(error.Description(), QStringLiteral("Refused."));
    QCOMPARE(error.Command(), QStringLiteral("sp 'x'"));
    QCOMPARE(rows.State(), 0);
}

void tst_OdbcServer::Blocks_bringEveryKind() {
    Open();
    Result slips{.Columns = {{QStringLiteral("id"), SQL_INTEGER},
                             {QStringLiteral("paid"), SQL_BIT},
                             {QStringLiteral("amount"), SQL_DECIMAL},
                             {QStringLiteral("rate"), SQL_REAL},
                             {QStringLiteral("seen"), SQL_TYPE_TIMESTAMP},
                             {QStringLiteral("name"), SQL_VARCHAR, 10}}};
    for (int row = 0; row < 2345; ++row) {
        slips.Rows.push_back({QString::number(row), row % 2 ? QStringLiteral("1") : QString(),
                              QStringLiteral("12.5000"), QStringLiteral("0.25"),
                              QStringLiteral("2026-03-07T13:05:09.997"),
                              row % 3 ? QStringLiteral("é\U0001F600") : QString()});
    }
    m_world.Answer = [slips](const QString&) { return Results{slips}; };
    const auto rows = m_connection->Execute(QStringLiteral("sp"))->Rows();
    QCOMPARE(rows->RowCount(), 2345);
    QVERIFY(m_world.LargestBlock > 100);
    for (int row = 0; row < rows->RowCount(); ++row) {
        QVERIFY(rows->At(row, 0) == Value(row));
        QVERIFY(rows->At(row, 1) == (row % 2 ? Value(1) : Value()));
        QVERIFY(rows->At(row, 2) == Value(12.5));
        QVERIFY(rows->At(row, 3) == Value(0.25));
        QVERIFY(rows->Utf8At(row, 4) == "2026-03-07 13:05:09.997");
        QVERIFY(rows->At(row, 5) == (row % 3 ? Value(QStringLiteral("é\U0001F600")) : Value()));
    }
}

void tst_OdbcServer::Blocks_cutNothingOff() {
    Open();
    for (const int length : {3, 7, 8, 20}) {
        m_world.Answer = [length](const QString&) {
            return Results{OneText(QStringLiteral("x").repeated(length), 3)};
        };
        const auto open = [this] { return m_connection->Execute(QStringLiteral("sp")); };
        if (length <= 7) {
            QCOMPARE(open()->Fields(0).Text().size(), length);
        } else {
            QVERIFY(ErrorOf(open).Description().contains(QStringLiteral("\"x\"")));
        }
    }
}

void tst_OdbcServer::LongTexts_keepTheirPairs() {
    Open();
    const QString text = QStringLiteral("x") + QStringLiteral("\U0001F600").repeated(100000);
    m_world.Answer = [text](const QString&) {
        return Results{{.Columns = {{QStringLiteral("id"), SQL_BIGINT},
                                    {QStringLiteral("note"), SQL_LONGVARCHAR, 0},
                                    {QStringLiteral("amount"), SQL_NUMERIC}},
                        .Rows = {{QStringLiteral("1"), text, QStringLiteral("0.1")},
                                 {QString(), QString(), QString()},
                                 {QStringLiteral("3"), QStringLiteral(""), QStringLiteral("7")}}}};
    };
    const auto rows = m_connection->Execute(QStringLiteral("sp"))->Rows();
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

void tst_OdbcServer::Transaction_endsWhereTheServerEndedIt() {
    Open();
    m_connection->BeginTrans();
    m_world.Answer = [](const QString&) { return Results{{.Failed = kRefused}}; };
    QCOMPARE(ErrorOf([this] { m_connection->Execute(QStringLiteral("sp")); }).Number(), 547);
    QCOMPARE(m_world.Steps,
             (QStringList{QStringLiteral("autocommit off"), QStringLiteral("rollback"),
                          QStringLiteral("autocommit on")}));
    m_connection->RollbackTrans();
    QCOMPARE(m_world.Steps.size(), 3);
    QCOMPARE(ErrorOf([this] { m_connection->CommitTrans(); }).Number(), 3902);
    m_world.Steps.clear();
    m_world.EndFails = kRefused;
    m_connection->BeginTrans();
    QCOMPARE(ErrorOf([this] { m_connection->CommitTrans(); }).Number(), 547);
    QCOMPARE(m_world.Steps.last(), QStringLiteral("autocommit on"));
    m_world.EndFails.reset();
    m_world.AutoCommitFails = true;
    QCOMPARE(ErrorOf([this] { m_connection->BeginTrans(); }).Number(), 9);
    QCOMPARE(ErrorOf([this] { m_connection->CommitTrans(); }).Number(), 3902);
}

void tst_OdbcServer::LostConnection_isToldOnceAndMadeAnew_data() {
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("dead");
    QTest::newRow("by its state") << QStringLiteral("08S01") << false;
    QTest::newRow("found dead") << QStringLiteral("HYT00") << true;
}

void tst_OdbcServer::LostConnection_isToldOnceAndMadeAnew() {
    QFETCH(QString, state);
    QFETCH(bool, dead);
    Open();
    m_connection->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    Failure failure = kCut;
    failure.State = state;
    failure.Number = dead ? 0 : failure.Number;  // some drivers tell none
    m_world.Answer = [failure](const QString&) { return Results{{.Failed = failure}}; };
    m_world.Dead = dead;
    m_world.Commands.clear();
    const auto lost = ErrorOf([this] { m_connection->Execute(QStringLiteral("sp 'a'")); });
    QVERIFY(lost.Description().contains(QStringLiteral("Look whether this was saved")));
    QCOMPARE(lost.Number(), 10054);
    QCOMPARE(m_world.Commands, QStringList{QStringLiteral("sp 'a'")});
    m_world.ConnectFails = kCut;
    const auto away = ErrorOf([this] { m_connection->Execute(QStringLiteral("sp 'b'")); });
    QVERIFY(away.Description().startsWith(QStringLiteral("The server cannot be reached again")));
    m_world.ConnectFails.reset();
    m_world.Answer = [](const QString&) { return NoRows(); };
    m_world.Commands.clear();
    m_connection->Execute(QStringLiteral("sp 'c'"));
    QCOMPARE(m_world.Commands,
             (QStringList{QStringLiteral("SET DATEFORMAT mdy"),
                          QStringLiteral("USE [CLINICAL_AREA]"), QStringLiteral("sp 'c'")}));
}

void tst_OdbcServer::LostConnection_neverWritesTheRestOfAnAction() {
    Open();
    m_connection->BeginTrans();
    m_world.Answer = [](const QString&) { return Results{{.Failed = kCut}}; };
    const auto lost = ErrorOf([this] { m_connection->Execute(QStringLiteral("sp 'line 1'")); });
    QVERIFY(lost.Description().contains(QStringLiteral("Nothing of this was saved")));
    m_world.Answer = [](const QString&) { return NoRows(); };
    QCOMPARE(ErrorOf([this] { m_connection->Execute(QStringLiteral("sp 'line 2'")); }).Number(),
             10054);
    QCOMPARE(ErrorOf([this] { m_connection->CommitTrans(); }).Number(), 10054);
    QVERIFY(!m_world.Commands.contains(QStringLiteral("sp 'line 2'")));
    m_connection->RollbackTrans();
    m_connection->Execute(QStringLiteral("sp 'next'"));
    QCOMPARE(m_world.Commands.last(), QStringLiteral("sp 'next'"));
    // Nobody knows whether a commit that got no answer was heard.
    m_connection->BeginTrans();
    m_world.EndFails = kCut;
    const auto unsure = ErrorOf([this] { m_connection->CommitTrans(); });
    QVERIFY(unsure.Description().contains(QStringLiteral("Look whether this was saved")));
}

void tst_OdbcServer::LostRace_isToldPlainly() {
    Open();
    m_connection->BeginTrans();
    m_world.Answer = [](const QString&) {
        return Results{
            {.Failed = Failure{QStringLiteral("40001"), 1205, QStringLiteral("victim")}}};
    };
    const auto lost = ErrorOf([this] { m_connection->Execute(QStringLiteral("sp 'line 1'")); });
    QCOMPARE(lost.Number(), 1205);
    QVERIFY(lost.Description().contains(QStringLiteral("Try again")));
    QVERIFY(m_world.Steps.contains(QStringLiteral("rollback")));
}

void tst_OdbcServer::Letters_areTriedOnce() {
    Open();
    m_world.Answer = [](const QString& command) -> Results {
        if (!command.startsWith(QStringLiteral("SELECT CAST"))) {
            return NoRows();
        }
        QString letter = command.section(QLatin1Char('\''), 1, 1);
        return {OneText(letter == QStringLiteral("ș") ? QStringLiteral("s") : letter, 8)};
    };
    m_world.Commands.clear();
    m_connection->Execute(QStringLiteral("sp 'Peña, Ñuñez'"));
    m_connection->Execute(QStringLiteral("sp 'ñ'"));
    QCOMPARE(m_world.Commands,
             (QStringList{QStringLiteral("SELECT CAST(N'ñ' AS varchar(8))"),
                          QStringLiteral("SELECT CAST(N'Ñ' AS varchar(8))"),
                          QStringLiteral("sp 'Peña, Ñuñez'"), QStringLiteral("sp 'ñ'")}));
    const auto error = ErrorOf([this] { m_connection->Execute(QStringLiteral("sp 'ș'")); });
    QVERIFY2(error.Description().contains(QStringLiteral("\"ș\" (U+0219)")),
             qPrintable(error.Description()));
    QVERIFY(!m_world.Commands.contains(QStringLiteral("sp 'ș'")));
}

void tst_OdbcServer::Keys_areAskedByParts_data() {
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("asked");
    QTest::newRow("bare") << QStringLiteral("tb")
                          << QStringLiteral("EXEC [CLINICAL_AREA].sys.sp_pkeys 'tb'");
    QTest::newRow("no owner") << QStringLiteral("BILLING..tb")
                              << QStringLiteral("EXEC [BILLING].sys.sp_pkeys 'tb'");
    QTest::newRow("all") << QStringLiteral("[B.L].\"dbo\".[t b]")
                         << QStringLiteral("EXEC [B.L].sys.sp_pkeys 't b', 'dbo'");
}

void tst_OdbcServer::Keys_areAskedByParts() {
    QFETCH(QString, table);
    Open();
    m_connection->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    m_world.Answer = [](const QString& command) -> Results {
        if (command.startsWith(QStringLiteral("EXEC"))) {
            Result keys{.Columns = std::vector<FakeOdbc::Column>(6, {QStringLiteral("k")})};
            keys.Rows = {std::vector<QString>(6, QStringLiteral("id"))};
            return {keys};
        }
        if (command.startsWith(QStringLiteral("SELECT"))) {
            return {{.Columns = {{QStringLiteral("a")}, {QStringLiteral("ID"), SQL_INTEGER}},
                     .Rows = {{QStringLiteral("x"), QStringLiteral("5")}}}};
        }
        return {{.RowCount = 1}};
    };
    Recordset rows;
    rows.Open(QStringLiteral("SELECT * FROM ") + table, m_connection, 2, 3);
    rows.Fields(0).SetValue(Value(QStringLiteral("y")));
    m_world.Commands.clear();
    rows.Update();
    QTEST(m_world.Commands[0], "asked");
    QCOMPARE(m_world.Commands[1], QStringLiteral("UPDATE %1 SET [a] = 'y' WHERE [a] = 'x' AND "
                                                 "[ID] = '5'")
                                      .arg(table));
}

QTEST_GUILESS_MAIN(tst_OdbcServer)
#include "tst_OdbcServer.moc"
