#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "FakeDriver.h"
#include "Rows.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

using namespace Qt::StringLiterals;
using db::Connection;
using db::Recordset;
using db::Value;

namespace {

constexpr int kChangeInPlace = 3;

}  // namespace

/// Through a real driver manager, on a file of a driver that every workstation can have.
class tst_OdbcDriver : public QObject {
    Q_OBJECT

private slots:
    // The driver manager's own list of drivers, so that no workstation's settings count.
    void initTestCase() {
        QVERIFY(m_settings.isValid());
        QFile drivers(m_settings.filePath(u"odbcinst.ini"_s));
        QVERIFY(drivers.open(QIODevice::WriteOnly));
        drivers.write("[SQLite3]\nDriver=libsqlite3odbc.so\n");
        qputenv("ODBCSYSINI", QFile::encodeName(m_settings.path()));
    }

    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        m_string = u"Driver=SQLite3;Database=%1;Timeout=100;"_s.arg(m_folder->filePath(u"x.db"_s));
        m_connection = Connection::Open(m_string);
        m_connection->Execute(
            u"CREATE TABLE slip (id INTEGER, part VARCHAR(8), amount DOUBLE, price "
            "DECIMAL(10,4), paid BIT, seen TIMESTAMP, born DATE, note TEXT, "
            "PRIMARY KEY (part, id))"_s);
    }

    void cleanup() {
        m_connection.reset();
        m_folder.reset();
    }

    void Cells_comeAsTheirKinds() {
        m_connection->Execute(
            u"INSERT INTO slip VALUES (7, 'Peña', 0.1, 12.5000, 1, '2026-03-07 "
            "13:05:09.997', '1950-12-31', '')"_s);
        m_connection->Execute(u"INSERT INTO slip (id, part) VALUES (8, 'b')"_s);
        Recordset slips;
        slips.Open(u"SELECT * FROM slip ORDER BY id"_s, m_connection);
        QCOMPARE(slips.RecordCount(), 2);
        QVERIFY(slips.Fields(u"ID"_s).Value() == Value(7));
        QVERIFY(slips.Fields(u"part"_s).Value() == Value(u"Peña"_s));
        QVERIFY(slips.Fields(u"amount"_s).Value() == Value(0.1));
        QVERIFY(slips.Fields(u"price"_s).Value().Text() == u"12.5"_s);
        QVERIFY(slips.Fields(u"paid"_s).Value() == Value(1));
        QCOMPARE(slips.Fields(u"seen"_s).Value().Moment(),
                 QDateTime(QDate(2026, 3, 7), QTime(13, 5, 9, 997)));
        QCOMPARE(slips.Fields(u"born"_s).Text(), u"12/31/1950"_s);
        QVERIFY(slips.Fields(u"note"_s).Value() == Value(QString()));
        slips.MoveNext();
        for (int field = 2; field < 8; ++field) {
            QVERIFY(slips.Fields(field).Value().IsNull());
        }
    }

    void Texts_comeWhole_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("accents") << u"Núñez-Peña, ș €"_s;
        QTest::newRow("quotes") << u"O'Hara \"x\" {y} ?;--"_s;
        QTest::newRow("blanks") << u"  x\t\r\n "_s;
        QTest::newRow("wider than its column") << u"x"_s.repeated(5000);
        QTest::newRow("a million") << u"xéș"_s.repeated(350000);
        for (const int size : {32766, 32767, 32768, 65534, 65535}) {
            QTest::addRow("%d", size) << u"é"_s.repeated(size);
        }
    }

    void Texts_comeWhole() {
        QFETCH(QString, text);
        m_connection->Execute(db::FromTemplate(
            u"INSERT INTO slip (id, part, note) VALUES (1, '##', '##')"_s, {{u"##"_s, text}}));
        const auto slip = m_connection->Execute(u"SELECT part, note FROM slip"_s);
        QVERIFY(slip->Fields(0).Text() == text);
        QVERIFY(slip->Fields(1).Text() == text);
    }

    void Character_beyondTheDriver_isRefused() {
        const QString command = db::Call(u"INSERT INTO slip (note) SELECT"_s, {u"\U0001F627"_s});
        const auto error = ErrorOf([&] { m_connection->Execute(command); });
        QVERIFY2(error.Description().contains(u"\"\U0001F627\" (U+1F627)"_s),
                 qPrintable(error.Description()));
        QCOMPARE(error.Command(), command);
        QCOMPARE(Text(u"SELECT count(*) FROM slip"_s), u"0"_s);
    }

    void ManyRows_comeInBlocks() {
        m_connection->Execute(
            u"WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < "
            "2500) INSERT INTO slip (id, amount, seen) SELECT i, CASE WHEN i % 3 = 0 "
            "THEN NULL ELSE i / 4.0 END, '2026-03-07 00:00:00' FROM n"_s);
        const auto slips =
            m_connection->Execute(u"SELECT id, amount, seen FROM slip ORDER BY id"_s);
        QCOMPARE(slips->RecordCount(), 2501);
        const auto rows = slips->Rows();
        for (int row = 0; row < rows->RowCount(); ++row) {
            QVERIFY(rows->At(row, 0) == Value(row));
            QVERIFY(rows->At(row, 1) == (row % 3 == 0 ? Value() : Value(row / 4.0)));
            QCOMPARE(rows->TextAt(row, 2), u"3/7/2026"_s);
        }
    }

    void Error_carriesNumberTextAndCommand() {
        const QString command = u"SELECT * FROM nowhere"_s;
        const auto error = ErrorOf([&] { m_connection->Execute(command); });
        QCOMPARE(error.Number(), 1);
        QCOMPARE(error.Command(), command);
        QVERIFY2(error.Description().contains(u"no such table: nowhere"_s),
                 qPrintable(error.Description()));
        QVERIFY(!error.Description().contains(QLatin1Char('[')));
        QCOMPARE(Text(u"SELECT 'still here'"_s), u"still here"_s);
    }

    void Open_namesWhatItCannotReach_data() {
        Columns<QString, QString>();
        QTest::newRow("source") << u"DSN=no_such_hospital"_s << u"Data source name not found"_s;
        QTest::newRow("driver") << u"Driver={No Such};Server=x"_s << u"'No Such'"_s;
        QTest::newRow("file") << u"Driver=SQLite3;Database=/no/such/folder/x.db"_s << u"connect"_s;
    }

    void Open_namesWhatItCannotReach() {
        auto [text, named] = Fetch<QString, QString>();
        const auto error = ErrorOf([&] { Connection::Open(text, u"ana"_s, u"s}e;cret"_s); });
        QVERIFY2(error.Description().contains(named), qPrintable(error.Description()));
        QVERIFY(!error.Description().contains(u"ana"_s));
        QVERIFY(!error.Description().contains(u"cret"_s));
        QVERIFY(!Connection::Find(text));
    }

    void RowsWritten_areCounted() {
        int written = 0;
        m_connection->Execute(u"INSERT INTO slip (id, part) VALUES (1, 'a'), (2, 'a'), (3, 'b')"_s,
                              &written);
        QCOMPARE(written, 3);
        m_connection->Execute(u"UPDATE slip SET note = 'x' WHERE part = 'a'"_s, &written);
        QCOMPARE(written, 2);
        m_connection->Execute(u"DELETE FROM slip WHERE part = 'z'"_s, &written);
        QCOMPARE(written, 0);
        m_connection->Execute(u"SELECT * FROM slip"_s, &written);
        QCOMPARE(written, -1);
    }

    void Transaction_keepsAllOrNothing() {
        const QString count = u"SELECT count(*) FROM slip"_s;
        const QString insert = u"INSERT INTO slip (id) VALUES (1)"_s;
        {
            db::Transaction kept(*m_connection);
            m_connection->Execute(insert);
            db::Transaction inner(*m_connection);
            m_connection->Execute(insert);
            inner.Commit();
            QCOMPARE(Connection::Open(m_string)->Execute(count)->Fields(0).Text(), u"0"_s);
            kept.Commit();
        }
        QCOMPARE(Text(count), u"2"_s);
        {
            db::Transaction left(*m_connection);
            m_connection->Execute(insert);
            QCOMPARE(Text(count), u"3"_s);
        }
        QCOMPARE(Text(count), u"2"_s);
        m_connection->RollbackTrans();
        m_connection->BeginTrans();
        m_connection->Execute(insert);
        m_connection.reset();
        QCOMPARE(Connection::Open(m_string)->Execute(count)->Fields(0).Text(), u"2"_s);
    }

    void Error_undoesTheWholeTransaction() {
        const QString insert = u"INSERT INTO slip (id, part) VALUES (1, 'a')"_s;
        m_connection->BeginTrans();
        m_connection->BeginTrans();
        m_connection->Execute(insert);
        ErrorOf([&] { m_connection->Execute(insert); });
        const auto refused = ErrorOf([&] { m_connection->CommitTrans(); });
        QCOMPARE(refused.Number(), 3902);
        QCOMPARE(refused.Command(), u"CommitTrans"_s);
        m_connection->RollbackTrans();
        QCOMPARE(Text(u"SELECT count(*) FROM slip"_s), u"0"_s);
        m_connection->Execute(insert);
        QCOMPARE(
            Connection::Open(m_string)->Execute(u"SELECT count(*) FROM slip"_s)->Fields(0).Text(),
            u"1"_s);
    }

    void Update_meetsTheRowThatWasRead() {
        m_connection->Execute(
            u"INSERT INTO slip (id, part, amount, seen) VALUES (1, 'O''Hara', 0.1, "
            "'2026-03-07T13:05:09.997'), (2, 'b', 0.1, '2026-03-07T13:05:09.997')"_s);
        Recordset slips;
        slips.Open(u"SELECT id, part, amount, seen, note AS remarks FROM slip"_s, m_connection, 2,
                   kChangeInPlace);
        slips.Fields(u"amount"_s).SetValue(Value(0.3));
        slips.Fields(u"seen"_s).SetValue(Value(QDateTime(QDate(2026, 3, 8), QTime(1, 2, 3, 40))));
        slips.Fields(u"remarks"_s).SetValue(Value(u"é'"_s));
        slips.Update();
        slips.Fields(u"remarks"_s).SetValue(Value());
        slips.Update();
        const auto after = m_connection->Execute(u"SELECT * FROM slip ORDER BY id"_s);
        QVERIFY(after->Fields(u"amount"_s).Value() == Value(0.3));
        QCOMPARE(after->Fields(u"seen"_s).Value().Moment().time(), QTime(1, 2, 3, 40));
        QVERIFY(after->Fields(u"note"_s).Value().IsNull());
        after->MoveNext();
        QVERIFY(after->Fields(u"amount"_s).Value() == Value(0.1));
    }

    void Update_refusesARowChangedMeanwhile() {
        m_connection->Execute(u"INSERT INTO slip (id, part, amount) VALUES (1, 'a', 5)"_s);
        const QString select = u"SELECT * FROM slip"_s;
        Recordset mine;
        mine.Open(select, m_connection, 2, kChangeInPlace);
        mine.Fields(u"amount"_s).SetValue(6);
        const auto other = Connection::Open(m_string);
        other->Execute(u"UPDATE slip SET amount = 5.5, note = 'theirs'"_s);
        QCOMPARE(ErrorOf([&] { mine.Update(); }).Number(), -2147217864);
        QCOMPARE(Text(u"SELECT amount FROM slip"_s), u"5.5"_s);
        // A change of another field of the row is none of ours.
        mine.Close();
        mine.Open(select, m_connection, 2, kChangeInPlace);
        mine.Fields(u"amount"_s).SetValue(6);
        other->Execute(u"UPDATE slip SET note = 'again'"_s);
        mine.Update();
        QCOMPARE(Text(u"SELECT amount || note FROM slip"_s), u"6.0again"_s);
    }

    void Update_refusesATableWithoutAKey() {
        m_connection->Execute(u"CREATE TABLE heap (a VARCHAR(5), b INTEGER)"_s);
        m_connection->Execute(u"INSERT INTO heap VALUES ('x', 1), ('x', 2)"_s);
        Recordset heap;
        heap.Open(u"SELECT a FROM heap"_s, m_connection, 2, kChangeInPlace);
        heap.Fields(0).SetValue(Value(u"y"_s));
        QCOMPARE(ErrorOf([&] { heap.Update(); }).Number(), 3251);
        QCOMPARE(Text(u"SELECT count(*) FROM heap WHERE a = 'x'"_s), u"2"_s);
    }

    void Keys_comeInTheirOrder() {
        m_connection->Execute(
            u"INSERT INTO slip (id, part, amount) VALUES (1, 'a', 5), (2, 'a', 5), "
            "(1, 'b', 5)"_s);
        QString update;
        Connection::SetCommandHook([&](const QString& command) {
            update = command.startsWith(u"UPDATE"_s) ? command : update;
        });
        Recordset slips;
        slips.Open(u"SELECT amount, part, id FROM [slip] WHERE id = 2"_s, m_connection, 2,
                   kChangeInPlace);
        slips.Fields(0).SetValue(6);
        slips.Update();
        Connection::SetCommandHook({});
        QCOMPARE(update,
                 u"UPDATE [slip] SET [amount] = '6' WHERE [amount] = '5.0000000000000000' "
                 "AND [part] = 'a' AND [id] = '2'"_s);
        QCOMPARE(Text(u"SELECT count(*) FROM slip WHERE amount = 6"_s), u"1"_s);
    }

private:
    QString Text(const QString& command) {
        return m_connection->Execute(command)->Fields(0).Text();
    }

    QTemporaryDir m_settings;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_string;
    std::shared_ptr<Connection> m_connection;
};

QTEST_GUILESS_MAIN(tst_OdbcDriver)
#include "tst_OdbcDriver.moc"
