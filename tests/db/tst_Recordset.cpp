#include <QTest>

#include "FakeDriver.h"
#include "Rows.h"
#include "db/ChunkPool.h"
#include "db/Recordset.h"
#include "db/RowStore.h"
#include "db/RowUpdate.h"

using namespace Qt::StringLiterals;
using db::Connection;
using db::Recordset;
using db::RowStore;
using db::Value;
using embedded::ColumnKind;
using embedded::RowSink;

namespace {

constexpr int kChangeInPlace = 3;
const QString kSelect = u"SELECT * FROM CLINICAL_AREA..tbCAPDSlip WHERE unit = '46'"_s;

// Two slips: one counted at a third of a second, one without a date.
qint64 AnswerSlips(const QString& command, RowSink& sink) {
    if (!command.startsWith(u"SELECT"_s, Qt::CaseInsensitive)) {
        return 1;
    }
    sink.BeginResult({{u"id"_s, ColumnKind::Integer},
                      {u"Counter"_s, ColumnKind::Double},
                      {u"remarks"_s, ColumnKind::Text},
                      {u"counted"_s, ColumnKind::DateTime}});
    sink.Integer(1);
    sink.Double(0.1);
    sink.Text("O'Hara");
    sink.DateTime("2026-03-07 13:05:09.997");
    sink.EndRow();
    sink.Integer(2);
    sink.Double(7);
    sink.Null();
    sink.Null();
    sink.EndRow();
    return -1;
}

}  // namespace

class tst_Recordset : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_server = {};
        m_server.Answer = AnswerSlips;
        m_server.Keys[u"CLINICAL_AREA..tbCAPDSlip"_s] = {u"ID"_s};
        m_connection = std::make_shared<Connection>(std::make_unique<FakeDriver>(m_server),
                                                    u"Server=fake;PWD=x"_s);
    }

    void cleanup() { m_connection.reset(); }

    void WrongUse_raisesItsNumber_data() {
        using Use = std::function<void(Recordset&)>;
        Columns<int, Use>();
        int number = 3704;
        const auto row = [&number](const char* name, Use use) {
            QTest::addRow("%d %s", number, name) << number << use;
        };
        row("Eof", [](Recordset& slips) { slips.Eof(); });
        row("RecordCount", [](Recordset& slips) { slips.RecordCount(); });
        row("MoveNext", [](Recordset& slips) { slips.MoveNext(); });
        row("Fields", [](Recordset& slips) { slips.Fields(0); });
        row("Close", [](Recordset& slips) { slips.Close(); });
        row("Rows", [](Recordset& slips) { slips.Rows(); });
        number = 3021;
        row("MoveNext", [](Recordset& slips) { slips.MoveNext(); });
        row("Value", [](Recordset& slips) { slips.Fields(0).Value(); });
        row("Update", [](Recordset& slips) { slips.Update(); });
        row("SetValue", [](Recordset& slips) { slips.Fields(0).SetValue(1); });
        number = 3265;
        row("index too large", [](Recordset& slips) { slips.Fields(4); });
        row("index too small", [](Recordset& slips) { slips.Fields(-1); });
        row("unknown name", [](Recordset& slips) { slips.Fields(u"amount"_s); });
        number = 3705;
        row("cursor location", [](Recordset& slips) { slips.SetCursorLocation(3); });
        number = 3251;
        row("SetValue", [](Recordset& slips) { slips.Fields(0).SetValue(1); });
    }

    // Of a closed recordset, past the last row, of an open or of a read-only one.
    void WrongUse_raisesItsNumber() {
        auto [number, use] = Fetch<int, std::function<void(Recordset&)>>();
        Recordset slips;
        slips.Open(kSelect, m_connection);
        for (int rows = 0; number == 3021 && rows < 2; ++rows)
            slips.MoveNext();
        if (number == 3704)
            slips.Close();
        const auto error = ErrorOf([&] { use(slips); });
        QCOMPARE(error.Number(), number);
        QCOMPARE(error.Command(), kSelect);
    }

    void Rows_outliveTheNextRead() {
        Recordset slips;
        slips.Open(kSelect, m_connection);
        const auto rows = slips.Rows();
        QCOMPARE(ErrorOf([&] { slips.Open(kSelect, m_connection); }).Number(), 3705);
        slips.Close();
        m_server.Answer = [](const QString&, RowSink& sink) {
            sink.BeginResult({{u"x"_s, ColumnKind::Text}});
            return qint64(-1);
        };
        slips.Open(kSelect, m_connection);
        QVERIFY(slips.Eof());
        QCOMPARE(ErrorOf([&] { slips.MoveFirst(); }).Number(), 3021);
        m_connection.reset();
        QCOMPARE(rows->RowCount(), 2);
        QCOMPARE(rows->TextAt(0, 2), u"O'Hara"_s);
    }

    void Update_sendsKeyAndFetchedValues() {
        Recordset slips;
        slips.Open(kSelect, m_connection, 2, kChangeInPlace);
        slips.Update();
        QCOMPARE(m_server.Steps.size(), 1);
        slips.Fields(u"counter"_s).SetValue(Value(0.2));
        slips.Fields(u"remarks"_s).SetValue(Value());
        slips.Fields(u"counted"_s).SetValue(Value(QDateTime(QDate(2026, 3, 8), QTime(0, 0))));
        QCOMPARE(slips.Fields(u"counter"_s).Text(), u"0.2"_s);
        slips.Update();
        const QString first =
            u"UPDATE CLINICAL_AREA..tbCAPDSlip SET [Counter] = '0.20000000000000001', "
            "[remarks] = NULL, [counted] = '2026-03-08T00:00:00.000' WHERE [id] = '1' AND "
            "[Counter] = '0.10000000000000001' AND [remarks] = 'O''Hara' AND "
            "[counted] = '2026-03-07T13:05:09.997'"_s;
        QCOMPARE(m_server.Steps.mid(1), (QStringList{u"begin"_s, first, u"commit"_s}));
        QCOMPARE(slips.Fields(u"counter"_s).Text(), u"0.2"_s);
        // What was just written is what the next change has to meet.
        m_server.Steps.clear();
        slips.Fields(u"remarks"_s).SetValue(Value(u"x"_s));
        slips.Update();
        QCOMPARE(m_server.Steps[1],
                 u"UPDATE CLINICAL_AREA..tbCAPDSlip SET [remarks] = 'x' WHERE "
                 "[id] = '1' AND [remarks] IS NULL"_s);
        // Leaving a row drops what was not sent.
        m_server.Steps.clear();
        slips.Fields(1).SetValue(8);
        slips.MoveNext();
        slips.Update();
        slips.MoveFirst();
        QCOMPARE(slips.Fields(1).Number(), 0.2);
        QCOMPARE(slips.Fields(u"remarks"_s).Text(), u"x"_s);
        QCOMPARE(m_server.Steps, QStringList());
    }

    // Where nothing was written there is nothing to undo: a transaction around it goes on.
    void Update_refusesWhatIsNotExactlyOneRow() {
        for (const int written : {0, 2, -1}) {
            Recordset slips;
            m_server.Answer = AnswerSlips;
            slips.Open(kSelect, m_connection, 2, kChangeInPlace);
            m_server.Answer = [written](const QString&, RowSink&) { return qint64(written); };
            slips.Fields(1).SetValue(8);
            const auto error = ErrorOf([&] { slips.Update(); });
            QCOMPARE(error.Number(), -2147217864);
            QVERIFY(error.Description().startsWith(u"Row cannot be located for updating."_s));
            QVERIFY(error.Command().startsWith(u"UPDATE"_s));
            QCOMPARE(m_server.Steps.last(), written == 0 ? u"commit"_s : u"rollback"_s);
        }
    }

    void Update_refusesRowsThatCannotBeTold() {
        auto& keys = m_server.Keys[u"CLINICAL_AREA..tbCAPDSlip"_s];
        Recordset slips;
        slips.Open(
            u"SELECT id, Counter AS c, remarks, counted + 1 FROM "
            "CLINICAL_AREA..tbCAPDSlip"_s,
            m_connection, 2, kChangeInPlace);
        slips.Fields(1).SetValue(8);
        for (const std::vector<QString>& key : {std::vector<QString>{}, {u"slipkey"_s}}) {
            keys = key;
            QCOMPARE(ErrorOf([&] { slips.Update(); }).Number(), 3251);
        }
        QCOMPARE(m_server.Steps.size(), 1);
        keys = {u"ID"_s};
        slips.Update();
        QCOMPARE(m_server.Steps[2],
                 u"UPDATE CLINICAL_AREA..tbCAPDSlip SET [Counter] = "
                 "'8' WHERE [id] = '1' AND [Counter] = "
                 "'0.10000000000000001'"_s);
        slips.Fields(3).SetValue(8);
        QCOMPARE(ErrorOf([&] { slips.Update(); }).Number(), 3251);
        slips.Close();
        slips.Open(u"SELECT * FROM a JOIN b ON a.x = b.x"_s, m_connection, 2, kChangeInPlace);
        slips.Fields(1).SetValue(8);
        QCOMPARE(ErrorOf([&] { slips.Update(); }).Number(), 3251);
    }

    void Statement_namesOneTable_data() {
        Columns<QString, QString, QString>();
        const auto row = [](const char* statement, const char* table, const char* columns) {
            QTest::newRow(statement) << QString::fromUtf8(statement) << QString::fromUtf8(table)
                                     << QString::fromUtf8(columns);
        };
        row("Select * from PATIENT_DATA..tbHospitalInfo", "PATIENT_DATA..tbHospitalInfo", "f1,f2");
        row("select a,b from t;", "t", "a,b");
        row("SELECT TOP (1) t.a, isnull(b,'') AS b FROM [my t] AS t WITH (NOLOCK) ORDER BY a",
            "[my t]", "a,");
        row("SELECT TOP 1 [a]]x] one, \"b\" FROM DB.dbo.[t] x WHERE a IN (SELECT z FROM u, v)",
            "DB.dbo.[t]", "a]x,b");
        row("SELECT a, 'x, y FROM z' FROM t WHERE b = 'GROUP'", "t", "a,");
        row("SELECT x.* FROM t x", "t", "f1,f2");
        row("SELECT count(*), 5 FROM t", "t", ",");
        for (const char* none :
             {"SELECT a, b FROM t, u", "SELECT a, b FROM t JOIN u ON t.x = u.x",
              "SELECT a, b FROM t x INNER JOIN u ON x.x = u.x", "SELECT a, b FROM t GROUP BY a, b",
              "SELECT a, b FROM t WHERE a = 1 UNION ALL SELECT a, b FROM u",
              "SELECT a, b FROM t HAVING a = 1",
              "SELECT a, b FROM t WHERE a = 1 EXCEPT SELECT 1, 2",
              "SELECT a, b FROM t WHERE a = 1 INTERSECT SELECT 1, 2", "SELECT DISTINCT a, b FROM t",
              "SELECT a FROM t", "SELECT a, b FROM (SELECT a, b FROM t) x",
              "SELECT a, b FROM t; DELETE t", "SELECT a, b FROM t.", "SELECT a, b",
              "CLINICAL_AREA..sp_CAPD_GetVisits 'x'", "SELECT a, (b FROM t", "SELECT a, 'b FROM t",
              ""})
            row(none, "", "");
    }

    void Statement_namesOneTable() {
        auto [statement, table, columns] = Fetch<QString, QString, QString>();
        const auto target = db::TargetOf(statement, {u"f1"_s, u"f2"_s});
        QCOMPARE(target.has_value(), !table.isEmpty());
        if (target) {
            const auto& read = target->Columns;
            QCOMPARE(target->Table, table);
            QCOMPARE(QStringList(read.begin(), read.end()).join(QLatin1Char(',')), columns);
        }
    }

    void Transaction_thatCannotBeCommittedIsUndone() {
        m_server.CommitFails = true;
        const auto error = ErrorOf([&] {
            db::Transaction failed(*m_connection);
            failed.Commit();
        });
        QCOMPARE(error.Number(), 1205);
        QCOMPARE(error.Command(), u"CommitTrans"_s);
        QCOMPARE(m_server.Steps.last(), u"rollback"_s);
    }

    void ConnectionRef_findsTheOpenSession() {
        QCOMPARE(&db::ConnectionRef(u"Server=fake"_s).Get(), m_connection.get());
        const auto unknown = ErrorOf([] { db::ConnectionRef(u"Server=x;PWD=secret"_s); });
        QCOMPARE(unknown.Number(), 3709);
        QVERIFY(!unknown.Description().contains(u"secret"_s));
        m_connection.reset();
        QVERIFY(!Connection::Find(u"Server=fake"_s));
        QCOMPARE(ErrorOf([this] { Recordset().Open(kSelect, m_connection); }).Number(), 3709);
    }

    void Value_showsItsTextAndGivesItRaw_data() {
        Columns<Value, QString, QString>();
        const auto row = [](const Value& value, const QString& text, const QString& raw) {
            QTest::newRow(qPrintable(raw)) << value << text << raw;
        };
        const QDate day(2026, 3, 7);
        row(Value(), QString(), QString());
        row(Value(u" x "_s), u" x "_s, u" x "_s);
        row(Value(-42), u"-42"_s, u"-42"_s);
        row(Value(qint64(9007199254740993)), u"9007199254740993"_s, u"9007199254740993"_s);
        row(Value(12.5), u"12.5"_s, u"12.500000000000000"_s);
        row(Value(0.1 + 0.2), u"0.3"_s, u"0.30000000000000004"_s);
        // The server reads no exponent into money.
        row(Value(0.00001), u"0.00001"_s, u"0.000010000000000000001"_s);
        row(Value(-1e20), u"-100000000000000000000"_s, u"-100000000000000000000"_s);
        row(Value(1e-300), u"0"_s, u"1e-300"_s);
        row(Value(day.startOfDay()), u"3/7/2026"_s, u"2026-03-07T00:00:00.000"_s);
        row(Value(QDateTime(day, QTime(13, 5, 9, 997))), u"3/7/2026 1:05:09 PM"_s,
            u"2026-03-07T13:05:09.997"_s);
        row(Value(QDateTime(day, QTime(0, 0, 1))), u"3/7/2026 12:00:01 AM"_s,
            u"2026-03-07T00:00:01.000"_s);
    }

    void Value_showsItsTextAndGivesItRaw() {
        auto [value, text, raw] = Fetch<Value, QString, QString>();
        QCOMPARE(value.Text(), text);
        QCOMPARE(value.RawText(), raw);
        if (!value.Moment().isValid())
            QCOMPARE(raw.toDouble(), value.Number());
    }

    void Text_isANumberAsFarAsItReadsAsOne() {
        QCOMPARE(Value(u" 12.5 mg"_s).Number(), 12.5);
        QVERIFY(!Value(u"2026-03-07"_s).Moment().isValid());
    }

    void Names_ignoreCaseAndTheFirstOneWins() {
        RowStore store;
        store.BeginResult({{u"HospNum"_s, ColumnKind::Text},
                           {u"amount"_s, ColumnKind::Double},
                           {u"AMOUNT"_s, ColumnKind::Double},
                           {QString(), ColumnKind::Text}});
        QCOMPARE(store.ColumnIndex(u"hospnum"_s), 0);
        QCOMPARE(store.ColumnIndex(u"Amount"_s), 1);
        QCOMPARE(store.ColumnIndex(u"IdNum"_s), -1);
        QCOMPARE(store.ColumnIndex(u"zzz"_s), -1);
        QCOMPARE(RowStore().ColumnIndex(u"x"_s), -1);
    }

    void SecondResult_isIgnored() {
        RowStore store;
        store.BeginResult({});
        store.BeginResult({{u"first"_s, ColumnKind::Integer}});
        store.Integer(1);
        store.EndRow();
        store.BeginResult({{u"second"_s, ColumnKind::Text}});
        store.Text("2");
        store.Null();
        store.Double(3);
        store.EndRow();
        QCOMPARE(store.RowCount(), 1);
        QCOMPARE(store.ColumnCount(), 1);
        QCOMPARE(store.TextAt(0, 0), u"1"_s);
    }

    // Some rows are longer than a chunk, though none of their cells is.
    void Chunks_keepEveryCellAndServeTheNextResult() {
        constexpr int kRows = 200'000;
        const auto textOf = [](int row) {
            return QString::number(row).repeated(row % 50'000 ? 1 : 40'000);
        };
        const auto fill = [&](RowStore& store) {
            store.BeginResult({{u"n"_s, ColumnKind::Integer},
                               {u"a"_s, ColumnKind::Text},
                               {u"b"_s, ColumnKind::Text}});
            for (int row = 0; row < kRows; ++row) {
                store.Integer(row);
                for (int column = 1; column < 3; ++column)
                    store.Text(textOf(row).toStdString());
                store.EndRow();
            }
        };
        {
            RowStore first;
            fill(first);
        }
        const std::size_t idle = db::ChunkPool::IdleChunks();
        QVERIFY(idle > 5);
        for (int round = 0; round < 3; ++round) {
            RowStore next;
            fill(next);
            QVERIFY(db::ChunkPool::IdleChunks() < idle);
            for (int row = 0; row < kRows; ++row) {
                QVERIFY(next.At(row, 0) == Value(row));
                QVERIFY(next.TextAt(row, 1) == textOf(row) && next.TextAt(row, 2) == textOf(row));
            }
        }
        QCOMPARE(db::ChunkPool::IdleChunks(), idle);
    }

private:
    FakeServer m_server;
    std::shared_ptr<Connection> m_connection;
};

QTEST_GUILESS_MAIN(tst_Recordset)
#include "tst_Recordset.moc"
