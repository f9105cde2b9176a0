#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "FakeDriver.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

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
    void initTestCase();
    void init();
    void cleanup();
    void Cells_comeAsTheirKinds();
    void Texts_comeWhole_data();
    void Texts_comeWhole();
    void Character_beyondTheDriver_isRefused();
    void ManyRows_comeInBlocks();
    void Error_carriesNumberTextAndCommand();
    void Open_namesWhatItCannotReach_data();
    void Open_namesWhatItCannotReach();
    void RowsWritten_areCounted();
    void Transaction_keepsAllOrNothing();
    void Error_undoesTheWholeTransaction();
    void Update_meetsTheRowThatWasRead();
    void Update_refusesARowChangedMeanwhile();
    void Update_refusesATableWithoutAKey();
    void Keys_comeInTheirOrder();

private:
    QString Text(const QString& command);

    QTemporaryDir m_settings;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_string;
    std::shared_ptr<Connection> m_connection;
};

// The driver manager's own list of drivers, so that no workstation's settings count.
void tst_OdbcDriver::initTestCase() {
    QVERIFY(m_settings.isValid());
    QFile drivers(m_settings.filePath(QStringLiteral("odbcinst.ini")));
    QVERIFY(drivers.open(QIODevice::WriteOnly));
    drivers.write("[SQLite3]\nDriver=libsqlite3odbc.so\n");
    qputenv("ODBCSYSINI", QFile::encodeName(m_settings.path()));
}

void tst_OdbcDriver::init() {
    m_folder = std::make_unique<QTemporaryDir>();
    m_string = QStringLiteral("Driver=SQLite3;Database=%1;Timeout=100;")
                   .arg(m_folder->filePath(QStringLiteral("x.db")));
    m_connection = Connection::Open(m_string);
    m_connection->Execute(
        QStringLiteral("CREATE TABLE slip (id INTEGER, part VARCHAR(8), amount DOUBLE, price "
                       "DECIMAL(10,4), paid BIT, seen TIMESTAMP, born DATE, note TEXT, "
                       "PRIMARY KEY (part, id))"));
}

void tst_OdbcDriver::cleanup() {
    m_connection.reset();
    m_folder.reset();
}

QString tst_OdbcDriver::Text(const QString& command) {
    return m_connection->Execute(command)->Fields(0).Text();
}

void tst_OdbcDriver::Cells_comeAsTheirKinds() {
    m_connection->Execute(
        QStringLiteral("INSERT INTO slip VALUES (7, 'Peña', 0.1, 12.5000, 1, '2026-03-07 "
                       "13:05:09.997', '1950-12-31', '')"));
    m_connection->Execute(QStringLiteral("INSERT INTO slip (id, part) VALUES (8, 'b')"));
    Recordset slips;
    slips.Open(QStringLiteral("SELECT * FROM slip ORDER BY id"), m_connection);
    QCOMPARE(slips.RecordCount(), 2);
    QVERIFY(slips.Fields(QStringLiteral("ID")).Value() == Value(7));
    QVERIFY(slips.Fields(QStringLiteral("part")).Value() == Value(QStringLiteral("Peña")));
    QVERIFY(slips.Fields(QStringLiteral("amount")).Value() == Value(0.1));
    QVERIFY(slips.Fields(QStringLiteral("price")).Value().Text() == QStringLiteral("12.5"));
    QVERIFY(slips.Fields(QStringLiteral("paid")).Value() == Value(1));
    QCOMPARE(slips.Fields(QStringLiteral("seen")).Value().Moment(),
             QDateTime(QDate(2026, 3, 7), QTime(13, 5, 9, 997)));
    QCOMPARE(slips.Fields(QStringLiteral("born")).Text(), QStringLiteral("12/31/1950"));
    QVERIFY(slips.Fields(QStringLiteral("note")).Value() == Value(QString()));
    slips.MoveNext();
    for (int field = 2; field < 8; ++field) {
        QVERIFY(slips.Fields(field).Value().IsNull());
    }
}

void tst_OdbcDriver::Texts_comeWhole_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("accents") << QStringLiteral("Núñez-Peña, ș €");
    QTest::newRow("quotes") << QStringLiteral("O'Hara \"x\" {y} ?;--");
    QTest::newRow("blanks") << QStringLiteral("  x\t\r\n ");
    QTest::newRow("wider than its column") << QStringLiteral("x").repeated(5000);
    QTest::newRow("a million") << QStringLiteral("xéș").repeated(350000);
    for (const int size : {32766, 32767, 32768, 65534, 65535}) {
        QTest::addRow("%d", size) << QStringLiteral("é").repeated(size);
    }
}

void tst_OdbcDriver::Texts_comeWhole() {
    QFETCH(QString, text);
    m_connection->Execute(
        db::FromTemplate(QStringLiteral("INSERT INTO slip (id, part, note) VALUES (1, '##', '##')"),
                         {{QStringLiteral("##"), text}}));
    const auto slip = m_connection->Execute(QStringLiteral("SELECT part, note FROM slip"));
    QVERIFY(slip->Fields(0).Text() == text);
    QVERIFY(slip->Fields(1).Text() == text);
}

void tst_OdbcDriver::Character_beyondTheDriver_isRefused() {
    const QString command =
        db::Call(QStringLiteral("INSERT INTO slip (note) SELECT"), {QStringLiteral("\U0001F627")});
    const auto error = ErrorOf([&] { m_connection->Execute(command); });
    QVERIFY2(error.Description().contains(QStringLiteral("\"\U0001F627\" (U+1F627)")),
             qPrintable(error.Description()));
    QCOMPARE(error.Command(), command);
    QCOMPARE(Text(QStringLiteral("SELECT count(*) FROM slip")), QStringLiteral("0"));
}

void tst_OdbcDriver::ManyRows_comeInBlocks() {
    m_connection->Execute(
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < "
                       "2500) INSERT INTO slip (id, amount, seen) SELECT i, CASE WHEN i % 3 = 0 "
                       "THEN NULL ELSE i / 4.0 END, '2026-03-07 00:00:00' FROM n"));
    const auto slips =
        m_connection->Execute(QStringLiteral("SELECT id, amount, seen FROM slip ORDER BY id"));
    QCOMPARE(slips->RecordCount(), 2501);
    const auto rows = slips->Rows();
    for (int row = 0; row < rows->RowCount(); ++row) {
        QVERIFY(rows->At(row, 0) == Value(row));
        QVERIFY(rows->At(row, 1) == (row % 3 == 0 ? Value() : Value(row / 4.0)));
        QCOMPARE(rows->TextAt(row, 2), QStringLiteral("3/7/2026"));
    }
}

void tst_OdbcDriver::Error_carriesNumberTextAndCommand() {
    const QString command = QStringLiteral("SELECT * FROM nowhere");
    const auto error = ErrorOf([&] { m_connection->Execute(command); });
    QCOMPARE(error.Number(), 1);
    QCOMPARE(error.Command(), command);
    QVERIFY2(error.Description().contains(QStringLiteral("no such table: nowhere")),
             qPrintable(error.Description()));
    QVERIFY(!error.Description().contains(QLatin1Char('[')));
    QCOMPARE(Text(QStringLiteral("SELECT 'still here'")), QStringLiteral("still here"));
}

void tst_OdbcDriver::Open_namesWhatItCannotReach_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("named");
    QTest::newRow("source") << QStringLiteral("DSN=no_such_hospital")
                            << QStringLiteral("Data source name not found");
    QTest::newRow("driver") << QStringLiteral("Driver={No Such};Server=x")
                            << QStringLiteral("'No Such'");
    QTest::newRow("file") << QStringLiteral("Driver=SQLite3;Database=/no/such/folder/x.db")
                          << QStringLiteral("connect");
}

void tst_OdbcDriver::Open_namesWhatItCannotReach() {
    QFETCH(QString, text);
    QFETCH(QString, named);
    const auto error =
        ErrorOf([&] { Connection::Open(text, QStringLiteral("ana"), QStringLiteral("s}e;cret")); });
    QVERIFY2(error.Description().contains(named), qPrintable(error.Description()));
    QVERIFY(!error.Description().contains(QStringLiteral("ana")));
    QVERIFY(!error.Description().contains(QStringLiteral("cret")));
    QVERIFY(!Connection::Find(text));
}

void tst_OdbcDriver::RowsWritten_areCounted() {
    int written = 0;
    m_connection->Execute(
        QStringLiteral("INSERT INTO slip (id, part) VALUES (1, 'a'), (2, 'a'), (3, 'b')"),
        &written);
    QCOMPARE(written, 3);
    m_connection->Execute(QStringLiteral("UPDATE slip SET note = 'x' WHERE part = 'a'"), &written);
    QCOMPARE(written, 2);
    m_connection->Execute(QStringLiteral("DELETE FROM slip WHERE part = 'z'"), &written);
    QCOMPARE(written, 0);
    m_connection->Execute(QStringLiteral("SELECT * FROM slip"), &written);
    QCOMPARE(written, -1);
}

void tst_OdbcDriver::Transaction_keepsAllOrNothing() {
    const QString count = QStringLiteral("SELECT count(*) FROM slip");
    const QString insert = QStringLiteral("INSERT INTO slip (id) VALUES (1)");
    {
        db::Transaction kept(*m_connection);
        m_connection->Execute(insert);
        db::Transaction inner(*m_connection);
        m_connection->Execute(insert);
        inner.Commit();
        QCOMPARE(Connection::Open(m_string)->Execute(count)->Fields(0).Text(), QStringLiteral("0"));
        kept.Commit();
    }
    QCOMPARE(Text(count), QStringLiteral("2"));
    {
        db::Transaction left(*m_connection);
        m_connection->Execute(insert);
        QCOMPARE(Text(count), QStringLiteral("3"));
    }
    QCOMPARE(Text(count), QStringLiteral("2"));
    m_connection->RollbackTrans();
    m_connection->BeginTrans();
    m_connection->Execute(insert);
    m_connection.reset();
    QCOMPARE(Connection::Open(m_string)->Execute(count)->Fields(0).Text(), QStringLiteral("2"));
}

void tst_OdbcDriver::Error_undoesTheWholeTransaction() {
    const QString insert = QStringLiteral("INSERT INTO slip (id, part) VALUES (1, 'a')");
    m_connection->BeginTrans();
    m_connection->BeginTrans();
    m_connection->Execute(insert);
    ErrorOf([&] { m_connection->Execute(insert); });
    const auto refused = ErrorOf([&] { m_connection->CommitTrans(); });
    QCOMPARE(refused.Number(), 3902);
    QCOMPARE(refused.Command(), QStringLiteral("CommitTrans"));
    m_connection->RollbackTrans();
    QCOMPARE(Text(QStringLiteral("SELECT count(*) FROM slip")), QStringLiteral("0"));
    m_connection->Execute(insert);
    QCOMPARE(Connection::Open(m_string)
                 ->Execute(QStringLiteral("SELECT count(*) FROM slip"))
                 ->Fields(0)
                 .Text(),
             QStringLiteral("1"));
}

void tst_OdbcDriver::Update_meetsTheRowThatWasRead() {
    m_connection->Execute(
        QStringLiteral("INSERT INTO slip (id, part, amount, seen) VALUES (1, 'O''Hara', 0.1, "
                       "'2026-03-07T13:05:09.997'), (2, 'b', 0.1, '2026-03-07T13:05:09.997')"));
    Recordset slips;
    slips.Open(QStringLiteral("SELECT id, part, amount, seen, note AS remarks FROM slip"),
               m_connection, 2, kChangeInPlace);
    slips.Fields(QStringLiteral("amount")).SetValue(Value(0.3));
    slips.Fields(QStringLiteral("seen"))
        .SetValue(Value(QDateTime(QDate(2026, 3, 8), QTime(1, 2, 3, 40))));
    slips.Fields(QStringLiteral("remarks")).SetValue(Value(QStringLiteral("é'")));
    slips.Update();
    slips.Fields(QStringLiteral("remarks")).SetValue(Value());
    slips.Update();
    const auto after = m_connection->Execute(QStringLiteral("SELECT * FROM slip ORDER BY id"));
    QVERIFY(after->Fields(QStringLiteral("amount")).Value() == Value(0.3));
    QCOMPARE(after->Fields(QStringLiteral("seen")).Value().Moment().time(), QTime(1, 2, 3, 40));
    QVERIFY(after->Fields(QStringLiteral("note")).Value().IsNull());
    after->MoveNext();
    QVERIFY(after->Fields(QStringLiteral("amount")).Value() == Value(0.1));
}

void tst_OdbcDriver::Update_refusesARowChangedMeanwhile() {
    m_connection->Execute(QStringLiteral("INSERT INTO slip (id, part, amount) VALUES (1, 'a', 5)"));
    const QString select = QStringLiteral("SELECT * FROM slip");
    Recordset mine;
    mine.Open(select, m_connection, 2, kChangeInPlace);
    mine.Fields(QStringLiteral("amount")).SetValue(6);
    const auto other = Connection::Open(m_string);
    other->Execute(QStringLiteral("UPDATE slip SET amount = 5.5, note = 'theirs'"));
    QCOMPARE(ErrorOf([&] { mine.Update(); }).Number(), -2147217864);
    QCOMPARE(Text(QStringLiteral("SELECT amount FROM slip")), QStringLiteral("5.5"));
    // A change of another field of the row is none of ours.
    mine.Close();
    mine.Open(select, m_connection, 2, kChangeInPlace);
    mine.Fields(QStringLiteral("amount")).SetValue(6);
    other->Execute(QStringLiteral("UPDATE slip SET note = 'again'"));
    mine.Update();
    QCOMPARE(Text(QStringLiteral("SELECT amount || note FROM slip")), QStringLiteral("6.0again"));
}

void tst_OdbcDriver::Update_refusesATableWithoutAKey() {
    m_connection->Execute(QStringLiteral("CREATE TABLE heap (a VARCHAR(5), b INTEGER)"));
    m_connection->Execute(QStringLiteral("INSERT INTO heap VALUES ('x', 1), ('x', 2)"));
    Recordset heap;
    heap.Open(QStringLiteral("SELECT a FROM heap"), m_connection, 2, kChangeInPlace);
    heap.Fields(0).SetValue(Value(QStringLiteral("y")));
    QCOMPARE(ErrorOf([&] { heap.Update(); }).Number(), 3251);
    QCOMPARE(Text(QStringLiteral("SELECT count(*) FROM heap WHERE a = 'x'")), QStringLiteral("2"));
}

void tst_OdbcDriver::Keys_comeInTheirOrder() {
    m_connection->Execute(
        QStringLiteral("INSERT INTO slip (id, part, amount) VALUES (1, 'a', 5), (2, 'a', 5), "
                       "(1, 'b', 5)"));
    QString update;
    Connection::SetCommandHook([&](const QString& command) {
        update = command.startsWith(QStringLiteral("UPDATE")) ? command : update;
    });
    Recordset slips;
    slips.Open(QStringLiteral("SELECT amount, part, id FROM [slip] WHERE id = 2"), m_connection, 2,
               kChangeInPlace);
    slips.Fields(0).SetValue(6);
    slips.Update();
    Connection::SetCommandHook({});
    QCOMPARE(update, QStringLiteral(
                         "UPDATE [slip] SET [amount] = '6' WHERE [amount] = '5.0000000000000000' "
                         "AND [part] = 'a' AND [id] = '2'"));
    QCOMPARE(Text(QStringLiteral("SELECT count(*) FROM slip WHERE amount = 6")),
             QStringLiteral("1"));
}

QTEST_GUILESS_MAIN(tst_OdbcDriver)
#include "tst_OdbcDriver.moc"
