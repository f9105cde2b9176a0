#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "FakeDriver.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "embedded/Server.h"

using db::Connection;
using db::Recordset;
using db::Value;

namespace {

constexpr int kChangeInPlace = 3;

const QString kScript = QStringLiteral(R"(USE CLINICAL_AREA
GO
CREATE TABLE tbSlip (
    id int NOT NULL PRIMARY KEY,
    part varchar(20) NULL,
    amount money NULL,
    rate float NULL,
    paid bit NULL,
    seen datetime NULL
)
GO
CREATE PROCEDURE sp_SaveSlip @id varchar(8000), @part varchar(8000)
AS
BEGIN
    SET NOCOUNT ON;
    SET XACT_ABORT ON;
    INSERT INTO tbSlip (id, part, amount, rate, paid, seen)
    VALUES (@id, @part, 12.5, 0.1, 1, '03/07/2026 13:05:09');
    SELECT id, part, amount, rate, paid, seen FROM tbSlip WHERE id = @id;
END
GO
)");

}  // namespace

/// Connections and recordsets over the embedded server itself.
class tst_EmbeddedDriver : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void Open_namesAMissingFile();
    void Cells_comeAsTheirKinds();
    void Update_meetsTheRowThatWasRead();
    void Update_refusesARowChangedMeanwhile();
    void Error_undoesTheWholeTransaction();
    void Transactions_nest();

private:
    QString Text(const QString& command) {
        return m_connection->Execute(command)->Fields(0).Text();
    }
    void Save(const QString& id, const QString& part) {
        m_connection->Execute(db::Call(QStringLiteral("CLINICAL_AREA..sp_SaveSlip"), {id, part}));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_string;
    std::shared_ptr<Connection> m_connection;
};

void tst_EmbeddedDriver::init() {
    m_folder = std::make_unique<QTemporaryDir>();
    const QString file = m_folder->filePath(QStringLiteral("ward;1.db"));
    {
        embedded::Server server(file, embedded::Server::Mode::Create);
        server.RunScript(QStringLiteral("slips"), kScript);
    }
    m_string = QStringLiteral("Driver=Embedded;File={%1}").arg(file);
    m_connection = Connection::Open(m_string, QStringLiteral("ana"), QStringLiteral("secret"));
    m_connection->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
}

void tst_EmbeddedDriver::cleanup() {
    m_connection.reset();
    m_folder.reset();
}

void tst_EmbeddedDriver::Open_namesAMissingFile() {
    QCOMPARE(m_connection->ConnectionString(), m_string);
    QCOMPARE(m_connection->CursorLocation(), 3);
    const auto error =
        ErrorOf([] { Connection::Open(QStringLiteral("driver=embedded; file=/no/such/ward.db")); });
    QVERIFY2(error.Description().contains(QStringLiteral("/no/such/ward.db")),
             qPrintable(error.Description()));
}

void tst_EmbeddedDriver::Cells_comeAsTheirKinds() {
    Recordset slip;
    slip.Open(QStringLiteral("CLINICAL_AREA..sp_SaveSlip '7','O''Hara Peña'"),
              db::ConnectionRef(m_string));
    QVERIFY(!slip.Eof());
    QVERIFY(slip.Fields(QStringLiteral("ID")).Value() == Value(7));
    QVERIFY(slip.Fields(QStringLiteral("part")).Value() == Value(QStringLiteral("O'Hara Peña")));
    QVERIFY(slip.Fields(QStringLiteral("amount")).Value() == Value(12.5));
    QVERIFY(slip.Fields(QStringLiteral("rate")).Value() == Value(0.1));
    QVERIFY(slip.Fields(QStringLiteral("paid")).Value() == Value(1));
    QCOMPARE(slip.Fields(QStringLiteral("seen")).Text(), QStringLiteral("3/7/2026 1:05:09 PM"));
    slip.Close();
    slip.Open(QStringLiteral("SELECT part FROM tbSlip WHERE id = 8"), m_connection);
    QVERIFY(slip.Eof());
}

void tst_EmbeddedDriver::Update_meetsTheRowThatWasRead() {
    Save(QStringLiteral("1"), QStringLiteral("O'Hara"));
    Save(QStringLiteral("2"), QStringLiteral("b"));
    Recordset slips;
    slips.Open(QStringLiteral("SELECT * FROM CLINICAL_AREA..tbSlip WHERE id = 1"), m_connection, 2,
               kChangeInPlace);
    slips.Fields(QStringLiteral("part")).SetValue(Value(QStringLiteral("D'Or")));
    slips.Fields(QStringLiteral("amount")).SetValue(Value(0.3));
    slips.Fields(QStringLiteral("rate")).SetValue(Value());
    slips.Fields(QStringLiteral("paid")).SetValue(0);
    slips.Fields(QStringLiteral("seen"))
        .SetValue(Value(QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59, 997))));
    slips.Update();
    slips.Fields(QStringLiteral("rate")).SetValue(Value(0.7));
    slips.Fields(QStringLiteral("seen")).SetValue(Value());
    slips.Update();
    const auto after = m_connection->Execute(QStringLiteral("SELECT * FROM tbSlip ORDER BY id"));
    QCOMPARE(after->Fields(1).Text(), QStringLiteral("D'Or"));
    QVERIFY(after->Fields(2).Value() == Value(0.3));
    QVERIFY(after->Fields(3).Value() == Value(0.7));
    QVERIFY(after->Fields(4).Value() == Value(0));
    QVERIFY(after->Fields(5).Value().IsNull());
    after->MoveNext();
    QCOMPARE(after->Fields(1).Text(), QStringLiteral("b"));
}

void tst_EmbeddedDriver::Update_refusesARowChangedMeanwhile() {
    Save(QStringLiteral("1"), QStringLiteral("a"));
    Recordset mine;
    mine.Open(QStringLiteral("SELECT amount, id FROM tbSlip"), m_connection, 2, kChangeInPlace);
    mine.Fields(0).SetValue(6);
    const auto other = Connection::Open(m_string);
    other->Execute(QStringLiteral("UPDATE CLINICAL_AREA..tbSlip SET amount = 5.5 WHERE id = 1"));
    QCOMPARE(ErrorOf([&] { mine.Update(); }).Number(), -2147217864);
    QCOMPARE(Text(QStringLiteral("SELECT amount FROM tbSlip")), QStringLiteral("5.5"));
}

void tst_EmbeddedDriver::Error_undoesTheWholeTransaction() {
    const auto error = ErrorOf([this] {
        db::Transaction transaction(*m_connection);
        Save(QStringLiteral("1"), QStringLiteral("a"));
        Save(QStringLiteral("1"), QStringLiteral("again"));
        transaction.Commit();
    });
    QVERIFY(error.Number() > 0);
    QCOMPARE(error.Command(), QStringLiteral("CLINICAL_AREA..sp_SaveSlip '1','again'"));
    QCOMPARE(Text(QStringLiteral("SELECT COUNT(*) AS n FROM tbSlip")), QStringLiteral("0"));
    QVERIFY(ErrorOf([this] { m_connection->CommitTrans(); }).Number() > 0);
    m_connection->RollbackTrans();
    Save(QStringLiteral("1"), QStringLiteral("a"));
    QCOMPARE(Text(QStringLiteral("SELECT COUNT(*) AS n FROM tbSlip")), QStringLiteral("1"));
}

void tst_EmbeddedDriver::Transactions_nest() {
    const auto other = Connection::Open(m_string);
    const QString count = QStringLiteral("SELECT COUNT(*) AS n FROM CLINICAL_AREA..tbSlip");
    {
        db::Transaction outer(*m_connection);
        Save(QStringLiteral("1"), QStringLiteral("a"));
        db::Transaction inner(*m_connection);
        Save(QStringLiteral("2"), QStringLiteral("b"));
        inner.Commit();
        QCOMPARE(other->Execute(count)->Fields(0).Text(), QStringLiteral("0"));
        outer.Commit();
    }
    QCOMPARE(other->Execute(count)->Fields(0).Text(), QStringLiteral("2"));
    {
        db::Transaction outer(*m_connection);
        Save(QStringLiteral("3"), QStringLiteral("c"));
        { const db::Transaction inner(*m_connection); }
    }
    QCOMPARE(Text(count), QStringLiteral("2"));
}

QTEST_GUILESS_MAIN(tst_EmbeddedDriver)
#include "tst_EmbeddedDriver.moc"
