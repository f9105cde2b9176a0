#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "FakeDriver.h"
#include "Rows.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "embedded/Server.h"

using namespace Qt::StringLiterals;
using db::Connection;
using db::Recordset;
using db::Value;

namespace {

constexpr int kChangeInPlace = 3;

const QString kSelect = u"SELECT * FROM slip ORDER BY id"_s;
const QString kCount = u"SELECT COUNT(*) FROM slip"_s;
const QString kInsert = u"INSERT INTO slip (id, part) VALUES (1, 'a')"_s;

}  // namespace

/// Both drivers: the embedded one, and ODBC through a real driver manager, on a file of a driver
/// that every workstation can have.
class tst_Drivers : public QObject {
    Q_OBJECT

private slots:
    void initTestCase_data() {
        QTest::addColumn<QString>("engine");
        QTest::newRow("embedded") << u"Driver=Embedded;File={%1/ward;1.db}"_s;
        QTest::newRow("ODBC") << u"Driver=SQLite3;Database=%1/x.db;Timeout=100;"_s;
    }

    // The driver manager's own list of drivers, so that no workstation's settings count.
    void initTestCase() {
        QFile drivers(m_settings.filePath(u"odbcinst.ini"_s));
        QVERIFY(drivers.open(QIODevice::WriteOnly));
        drivers.write("[SQLite3]\nDriver=libsqlite3odbc.so\n");
        qputenv("ODBCSYSINI", QFile::encodeName(m_settings.path()));
    }

    void init() {
        QFETCH_GLOBAL(QString, engine);
        m_connection.reset();
        m_folder = std::make_unique<QTemporaryDir>();
        m_string = engine.arg(m_folder->path());
        m_embedded = engine.contains(u"Embedded"_s);
        const QString table =
            u"CREATE TABLE slip (id INT NOT NULL, part VARCHAR(20) NOT NULL, amount FLOAT, "
            "price DECIMAL(10,4), paid BIT, seen %1, born %1, note VARCHAR(%2), "
            "PRIMARY KEY (part, id))"_s;
        if (m_embedded) {
            const QString file = m_folder->filePath(u"ward;1.db"_s);
            embedded::Server(file, embedded::Server::Mode::Create)
                .RunScript(u"slips"_s,
                           u"USE CLINICAL_AREA\nGO\n"_s + table.arg(u"DATETIME"_s, u"MAX"_s));
        }
        m_connection = Opened();
        if (!m_embedded)
            m_connection->Execute(table.arg(u"TIMESTAMP"_s, u"9"_s));
    }

    void Open_namesWhatItCannotReach_data() {
        Columns<QString, QString>();
        QTest::newRow("source") << u"DSN=no_such_hospital"_s << u"Data source name not found"_s;
        QTest::newRow("driver") << u"Driver={No Such};Server=x"_s << u"'No Such'"_s;
        QTest::newRow("file") << u"Driver=SQLite3;Database=/no/such/folder/x.db"_s << u"connect"_s;
        QTest::newRow("hospital") << u"driver=embedded; file=/no/such/x.db"_s << u"/no/such/x.db"_s;
    }

    void Open_namesWhatItCannotReach() {
        auto [text, named] = Fetch<QString, QString>();
        const auto error = ErrorOf([&] { Connection::Open(text, u"ana"_s, u"s}e;cret"_s); });
        QVERIFY2(error.Description().contains(named), qPrintable(error.Description()));
        QVERIFY(!error.Description().contains(u"ana"_s));
        QVERIFY(!error.Description().contains(u"cret"_s));
        QVERIFY(!Connection::Find(text));
    }

    void Cells_comeAsTheirKinds() {
        m_connection->Execute(
            u"INSERT INTO slip VALUES (7, 'O''Hara Peña', 0.1, 12.5000, 1, '2026-03-07 "
            "13:05:09.997', '1950-12-31', '')"_s);
        m_connection->Execute(u"INSERT INTO slip (id, part) VALUES (8, 'b')"_s);
        Recordset slips;
        slips.Open(kSelect, db::ConnectionRef(m_string));
        QCOMPARE(slips.RecordCount(), 2);
        QVERIFY(slips.Fields(u"ID"_s).Value() == Value(7));
        QVERIFY(slips.Fields(u"part"_s).Value() == Value(u"O'Hara Peña"_s));
        QVERIFY(slips.Fields(u"amount"_s).Value() == Value(0.1));
        QCOMPARE(slips.Fields(u"price"_s).Text(), u"12.5"_s);
        QVERIFY(slips.Fields(u"paid"_s).Value() == Value(1));
        QCOMPARE(slips.Fields(u"seen"_s).Value().Moment(),
                 QDateTime(QDate(2026, 3, 7), QTime(13, 5, 9, 997)));
        QCOMPARE(slips.Fields(u"born"_s).Text(), u"12/31/1950"_s);
        QVERIFY(slips.Fields(u"note"_s).Value() == Value(QString()));
        slips.MoveNext();
        for (int field = 2; field < 8; ++field)
            QVERIFY(slips.Fields(field).Value().IsNull());
    }

    void Texts_comeWhole_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("accents") << u"Núñez-Peña, ș €"_s;
        QTest::newRow("quotes") << u"O'Hara \"x\" {y} ?;--"_s;
        QTest::newRow("blanks") << u"  x\t\r\n "_s;
        QTest::newRow("wider than its column") << u"x"_s.repeated(5000);
        QTest::newRow("a million") << u"xéș"_s.repeated(350000);
        for (const int size : {32766, 32767, 32768, 65534, 65535})
            QTest::addRow("%d", size) << u"é"_s.repeated(size);
    }

    void Texts_comeWhole() {
        QFETCH(QString, text);
        m_connection->Execute(db::FromTemplate(
            u"INSERT INTO slip (id, part, note) VALUES (1, '', '##')"_s, {{u"##"_s, text}}));
        QVERIFY(Text(u"SELECT note FROM slip"_s) == text);
    }

    void Character_beyondTheDriver_isRefused() {
        const QString command =
            db::Call(u"INSERT INTO slip (id, part) SELECT 1,"_s, {u"\U0001F627"_s});
        const auto error = ErrorOf([&] { m_connection->Execute(command); });
        if (m_embedded) {
            QCOMPARE(Text(u"SELECT part FROM slip"_s), u"\U0001F627"_s);
            return;
        }
        QVERIFY(error.Description().contains(u"\"\U0001F627\" (U+1F627)"_s));
        QCOMPARE(error.Command(), command);
        QCOMPARE(Text(kCount), u"0"_s);
    }

    void ManyRows_comeWhole() {
        m_connection->Execute(
            u"INSERT INTO slip (id, part, seen) VALUES (0, 'a', '2026-03-07 00:00:00')"_s);
        for (int rows = 1; rows < 4000; rows *= 2)
            m_connection->Execute(
                u"INSERT INTO slip (id, part, seen) SELECT id + %1, part, seen FROM slip"_s.arg(
                    rows));
        m_connection->Execute(u"UPDATE slip SET amount = id / 4.0 WHERE id % 3 > 0"_s);
        const auto rows =
            m_connection->Execute(u"SELECT id, amount, seen FROM slip ORDER BY id"_s)->Rows();
        QCOMPARE(rows->RowCount(), 4096);
        for (int row = 0; row < rows->RowCount(); ++row) {
            QVERIFY(rows->At(row, 0) == Value(row));
            QVERIFY(rows->At(row, 1) == (row % 3 == 0 ? Value() : Value(row / 4.0)));
            QCOMPARE(rows->TextAt(row, 2), u"3/7/2026"_s);
        }
    }

    void Error_carriesNumberTextAndCommand() {
        const QString command = u"SELECT * FROM nowhere"_s;
        const auto error = ErrorOf([&] { m_connection->Execute(command); });
        QCOMPARE(error.Number(), m_embedded ? 208 : 1);
        QCOMPARE(error.Command(), command);
        QVERIFY(error.Description().contains(u"nowhere"_s));
        QVERIFY(!error.Description().contains(QLatin1Char('[')));
        QCOMPARE(Text(kCount), u"0"_s);
    }

    void RowsWritten_areCountedAndRowsReadStayOpen() {
        const auto done = [this](const QString& command) {
            int written = 7;
            const auto rows = m_connection->Execute(command, &written);
            return std::pair(written, rows->State());
        };
        const QString three = u"INSERT INTO slip (id, part) VALUES (1, 'a'), (2, 'a'), (3, 'b')"_s;
        QCOMPARE(done(three), std::pair(3, 0));
        QCOMPARE(done(u"UPDATE slip SET note = 'x' WHERE part = 'a'"_s), std::pair(2, 0));
        QCOMPARE(done(u"DELETE FROM slip WHERE part = 'z'"_s), std::pair(0, 0));
        QCOMPARE(done(kSelect), std::pair(-1, 1));
    }

    void Transaction_keepsAllOrNothing() {
        const QString another = u"INSERT INTO slip (id, part) VALUES (2, 'b')"_s;
        {
            db::Transaction kept(*m_connection);
            m_connection->Execute(kInsert);
            db::Transaction inner(*m_connection);
            m_connection->Execute(another);
            inner.Commit();
            QCOMPARE(Opened()->Execute(kCount)->Fields(0).Text(), u"0"_s);
            kept.Commit();
        }
        QCOMPARE(Text(kCount), u"2"_s);
        {
            const db::Transaction left(*m_connection);
            m_connection->Execute(u"DELETE FROM slip"_s);
            const db::Transaction inner(*m_connection);
        }
        QCOMPARE(Text(kCount), u"2"_s);
        m_connection->RollbackTrans();
        m_connection->BeginTrans();
        m_connection->Execute(u"DELETE FROM slip"_s);
        m_connection = Opened();
        QCOMPARE(Text(kCount), u"2"_s);
    }

    void Error_undoesTheWholeTransaction() {
        m_connection->BeginTrans();
        m_connection->BeginTrans();
        m_connection->Execute(kInsert);
        QCOMPARE(ErrorOf([&] { m_connection->Execute(kInsert); }).Command(), kInsert);
        const auto refused = ErrorOf([&] { m_connection->CommitTrans(); });
        QCOMPARE(refused.Number(), 3902);
        m_connection->RollbackTrans();
        QCOMPARE(Text(kCount), u"0"_s);
        m_connection->Execute(kInsert);
        QCOMPARE(Opened()->Execute(kCount)->Fields(0).Text(), u"1"_s);
    }

    void Update_meetsTheRowThatWasRead() {
        m_connection->Execute(
            u"INSERT INTO slip (id, part, amount, seen) VALUES (1, 'O''Hara', 0.1, "
            "'2026-03-07T13:05:09.997'), (2, 'O''Hara', 0.1, '2026-03-07T13:05:09.997'), "
            "(1, 'z', 0.1, '2026-03-07T13:05:09.997')"_s);
        Recordset slips;
        slips.Open(
            u"SELECT id, part, amount, paid, seen, note AS remarks FROM [slip] ORDER BY part, id"_s,
            m_connection, 2, kChangeInPlace);
        slips.Fields(u"amount"_s).SetValue(Value(0.3));
        slips.Fields(u"paid"_s).SetValue(0);
        slips.Fields(u"seen"_s).SetValue(
            Value(QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59, 997))));
        slips.Fields(u"remarks"_s).SetValue(Value(u"é'"_s));
        slips.Update();
        slips.Fields(u"seen"_s).SetValue(Value(QDateTime(QDate(2026, 3, 8), QTime(1, 2, 3, 40))));
        slips.Fields(u"remarks"_s).SetValue(Value());
        slips.Update();
        const auto after = m_connection->Execute(u"SELECT * FROM slip ORDER BY part, id"_s);
        QVERIFY(after->Fields(u"amount"_s).Value() == Value(0.3));
        QVERIFY(after->Fields(u"paid"_s).Value() == Value(0));
        QCOMPARE(after->Fields(u"seen"_s).Value().Moment(),
                 QDateTime(QDate(2026, 3, 8), QTime(1, 2, 3, 40)));
        QVERIFY(after->Fields(u"note"_s).Value().IsNull());
        QCOMPARE(Text(u"SELECT COUNT(*) FROM slip WHERE amount = 0.1"_s), u"2"_s);
    }

    void Update_refusesARowChangedMeanwhile() {
        m_connection->Execute(u"INSERT INTO slip (id, part, amount) VALUES (1, 'a', 5)"_s);
        Recordset mine;
        mine.Open(kSelect, m_connection, 2, kChangeInPlace);
        mine.Fields(u"amount"_s).SetValue(6);
        const auto other = Opened();
        other->Execute(u"UPDATE slip SET amount = 5.5, note = 'theirs'"_s);
        QCOMPARE(ErrorOf([&] { mine.Update(); }).Number(), db::kRowChanged);
        QCOMPARE(Text(u"SELECT amount FROM slip"_s), u"5.5"_s);
        // A change of another field of the row is none of ours.
        mine.Close();
        mine.Open(kSelect, m_connection, 2, kChangeInPlace);
        mine.Fields(u"amount"_s).SetValue(6);
        other->Execute(u"UPDATE slip SET note = 'again'"_s);
        mine.Update();
        QCOMPARE(Text(u"SELECT note FROM slip WHERE amount = 6"_s), u"again"_s);
    }

private:
    std::shared_ptr<Connection> Opened() const {
        auto connection = Connection::Open(m_string);
        connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        return connection;
    }
    QString Text(const QString& command) {
        return m_connection->Execute(command)->Fields(0).Text();
    }

    QTemporaryDir m_settings;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_string;
    bool m_embedded = false;
    std::shared_ptr<Connection> m_connection;
};

QTEST_GUILESS_MAIN(tst_Drivers)
#include "tst_Drivers.moc"
