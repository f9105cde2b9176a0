#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "FakeDriver.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "embedded/Server.h"

using namespace Qt::StringLiterals;
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
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        const QString file = m_folder->filePath(u"ward;1.db"_s);
        {
            embedded::Server server(file, embedded::Server::Mode::Create);
            server.RunScript(u"slips"_s, kScript);
        }
        m_string = u"Driver=Embedded;File={%1}"_s.arg(file);
        m_connection = Connection::Open(m_string, u"ana"_s, u"secret"_s);
        m_connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
    }

    void cleanup() {
        m_connection.reset();
        m_folder.reset();
    }

    void Open_namesAMissingFile() {
        QCOMPARE(m_connection->ConnectionString(), m_string);
        QCOMPARE(m_connection->CursorLocation(), 3);
        const auto error =
            ErrorOf([] { Connection::Open(u"driver=embedded; file=/no/such/ward.db"_s); });
        QVERIFY2(error.Description().contains(u"/no/such/ward.db"_s),
                 qPrintable(error.Description()));
    }

    void Cells_comeAsTheirKinds() {
        Recordset slip;
        slip.Open(u"CLINICAL_AREA..sp_SaveSlip '7','O''Hara Peña'"_s, db::ConnectionRef(m_string));
        QVERIFY(!slip.Eof());
        QVERIFY(slip.Fields(u"ID"_s).Value() == Value(7));
        QVERIFY(slip.Fields(u"part"_s).Value() == Value(u"O'Hara Peña"_s));
        QVERIFY(slip.Fields(u"amount"_s).Value() == Value(12.5));
        QVERIFY(slip.Fields(u"rate"_s).Value() == Value(0.1));
        QVERIFY(slip.Fields(u"paid"_s).Value() == Value(1));
        QCOMPARE(slip.Fields(u"seen"_s).Text(), u"3/7/2026 1:05:09 PM"_s);
        slip.Close();
        slip.Open(u"SELECT part FROM tbSlip WHERE id = 8"_s, m_connection);
        QVERIFY(slip.Eof());
    }

    void Update_meetsTheRowThatWasRead() {
        Save(u"1"_s, u"O'Hara"_s);
        Save(u"2"_s, u"b"_s);
        Recordset slips;
        slips.Open(u"SELECT * FROM CLINICAL_AREA..tbSlip WHERE id = 1"_s, m_connection, 2,
                   kChangeInPlace);
        slips.Fields(u"part"_s).SetValue(Value(u"D'Or"_s));
        slips.Fields(u"amount"_s).SetValue(Value(0.3));
        slips.Fields(u"rate"_s).SetValue(Value());
        slips.Fields(u"paid"_s).SetValue(0);
        slips.Fields(u"seen"_s).SetValue(
            Value(QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59, 997))));
        slips.Update();
        slips.Fields(u"rate"_s).SetValue(Value(0.7));
        slips.Fields(u"seen"_s).SetValue(Value());
        slips.Update();
        const auto after = m_connection->Execute(u"SELECT * FROM tbSlip ORDER BY id"_s);
        QCOMPARE(after->Fields(1).Text(), u"D'Or"_s);
        QVERIFY(after->Fields(2).Value() == Value(0.3));
        QVERIFY(after->Fields(3).Value() == Value(0.7));
        QVERIFY(after->Fields(4).Value() == Value(0));
        QVERIFY(after->Fields(5).Value().IsNull());
        after->MoveNext();
        QCOMPARE(after->Fields(1).Text(), u"b"_s);
    }

    void Update_refusesARowChangedMeanwhile() {
        Save(u"1"_s, u"a"_s);
        Recordset mine;
        mine.Open(u"SELECT amount, id FROM tbSlip"_s, m_connection, 2, kChangeInPlace);
        mine.Fields(0).SetValue(6);
        const auto other = Connection::Open(m_string);
        other->Execute(u"UPDATE CLINICAL_AREA..tbSlip SET amount = 5.5 WHERE id = 1"_s);
        QCOMPARE(ErrorOf([&] { mine.Update(); }).Number(), -2147217864);
        QCOMPARE(Text(u"SELECT amount FROM tbSlip"_s), u"5.5"_s);
    }

    void Error_undoesTheWholeTransaction() {
        const auto error = ErrorOf([this] {
            db::Transaction transaction(*m_connection);
            Save(u"1"_s, u"a"_s);
            Save(u"1"_s, u"again"_s);
            transaction.Commit();
        });
        QVERIFY(error.Number() > 0);
        QCOMPARE(error.Command(), u"CLINICAL_AREA..sp_SaveSlip '1','again'"_s);
        QCOMPARE(Text(u"SELECT COUNT(*) AS n FROM tbSlip"_s), u"0"_s);
        QVERIFY(ErrorOf([this] { m_connection->CommitTrans(); }).Number() > 0);
        m_connection->RollbackTrans();
        Save(u"1"_s, u"a"_s);
        QCOMPARE(Text(u"SELECT COUNT(*) AS n FROM tbSlip"_s), u"1"_s);
    }

    void Transactions_nest() {
        const auto other = Connection::Open(m_string);
        const QString count = u"SELECT COUNT(*) AS n FROM CLINICAL_AREA..tbSlip"_s;
        {
            db::Transaction outer(*m_connection);
            Save(u"1"_s, u"a"_s);
            db::Transaction inner(*m_connection);
            Save(u"2"_s, u"b"_s);
            inner.Commit();
            QCOMPARE(other->Execute(count)->Fields(0).Text(), u"0"_s);
            outer.Commit();
        }
        QCOMPARE(other->Execute(count)->Fields(0).Text(), u"2"_s);
        {
            db::Transaction outer(*m_connection);
            Save(u"3"_s, u"c"_s);
            { const db::Transaction inner(*m_connection); }
        }
        QCOMPARE(Text(count), u"2"_s);
    }

private:
    QString Text(const QString& command) {
        return m_connection->Execute(command)->Fields(0).Text();
    }
    void Save(const QString& id, const QString& part) {
        m_connection->Execute(db::Call(u"CLINICAL_AREA..sp_SaveSlip"_s, {id, part}));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_string;
    std::shared_ptr<Connection> m_connection;
};

QTEST_GUILESS_MAIN(tst_EmbeddedDriver)
#include "tst_EmbeddedDriver.moc"
