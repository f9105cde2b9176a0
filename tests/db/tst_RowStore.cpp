#include <QRandomGenerator>
#include <QTest>

#include "Rows.h"
#include "base/Dates.h"
#include "db/ChunkPool.h"
#include "db/RowStore.h"

using namespace Qt::StringLiterals;
using db::RowStore;
using db::Value;
using embedded::ColumnKind;

class tst_RowStore : public QObject {
    Q_OBJECT

private slots:
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

    void RandomCells_comeBackAsTheyWent() {
        constexpr int kRows = 20000;
        constexpr int kColumns = 9;
        QRandomGenerator random(46);
        const QString letters = u"abc é ñ ș € \U0001F600 0123456789"_s;
        RowStore store;
        std::vector<embedded::ResultColumn> columns;
        for (int column = 0; column < kColumns; ++column) {
            columns.push_back({u"c%1"_s.arg(column), ColumnKind::Text});
        }
        store.BeginResult(columns);
        std::vector<Value> expected;
        for (int cell = 0; cell < kRows * kColumns; ++cell) {
            const quint32 draw = random.bounded(6U);
            if (draw == 0) {
                store.Null();
                expected.emplace_back();
            } else if (draw == 1) {
                const qint64 number = qint64(random.generate64());
                store.Integer(number);
                expected.emplace_back(number);
            } else if (draw == 2) {
                const double number = (random.generateDouble() - 0.5) * 1e9;
                store.Double(number);
                expected.emplace_back(number);
            } else if (draw == 3) {
                const auto moment = QDateTime(QDate(1950, 1, 1), QTime(0, 0))
                                        .addMSecs(random.bounded(qint64(4e12)));
                store.DateTime(base::StoredDateTime(moment).toStdString());
                expected.emplace_back(moment);
            } else {
                // Now and then a row is longer than a chunk.
                const bool isLong = random.bounded(10000U) == 0;
                const QString text = letters.repeated(isLong ? 100000 : int(random.bounded(4U)));
                store.Text(text.toStdString());
                expected.emplace_back(text);
            }
            if (cell % kColumns == kColumns - 1)
                store.EndRow();
        }
        QCOMPARE(store.RowCount(), kRows);
        for (int row = 0; row < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column) {
                const Value& wanted = expected[std::size_t(row * kColumns + column)];
                QVERIFY(store.At(row, column) == wanted);
                QCOMPARE(store.TextAt(row, column), wanted.Text());
                const std::string_view utf8 = store.Utf8At(row, column);
                const bool isText = !utf8.empty() && !wanted.Moment().isValid();
                QVERIFY(!isText || utf8 == wanted.Text().toStdString());
            }
        }
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

    void Chunks_serveTheNextResult() {
        const auto fill = [](RowStore& store) {
            store.BeginResult({{u"n"_s, ColumnKind::Integer}});
            for (int row = 0; row < 200000; ++row) {
                store.Integer(row);
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
            QCOMPARE(next.TextAt(199999, 0), u"199999"_s);
        }
        QCOMPARE(db::ChunkPool::IdleChunks(), idle);
    }
};

QTEST_GUILESS_MAIN(tst_RowStore)
#include "tst_RowStore.moc"
