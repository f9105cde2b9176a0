#include <QRandomGenerator>
#include <QTest>

#include "base/Dates.h"
#include "db/ChunkPool.h"
#include "db/RowStore.h"

using db::RowStore;
using db::Value;
using embedded::ColumnKind;

class tst_RowStore : public QObject {
    Q_OBJECT

private slots:
    void Value_showsItsText_data();
    void Value_showsItsText();
    void Value_givesItsRawText_data();
    void Value_givesItsRawText();
    void Value_isANumber();
    void RandomCells_comeBackAsTheyWent();
    void Row_longerThanAChunk_staysWhole();
    void Names_ignoreCaseAndTheFirstOneWins();
    void SecondResult_isIgnored();
    void Chunks_serveTheNextResult();
};

void tst_RowStore::Value_showsItsText_data() {
    QTest::addColumn<Value>("value");
    QTest::addColumn<QString>("text");
    const QDate day(2026, 3, 7);
    QTest::newRow("null") << Value() << QString();
    QTest::newRow("whole") << Value(-42) << QStringLiteral("-42");
    QTest::newRow("large") << Value(qint64(9007199254740993)) << QStringLiteral("9007199254740993");
    QTest::newRow("money") << Value(12.5) << QStringLiteral("12.5");
    QTest::newRow("tenths") << Value(0.1 + 0.2) << QStringLiteral("0.3");
    QTest::newRow("midnight") << Value(day.startOfDay()) << QStringLiteral("3/7/2026");
    QTest::newRow("afternoon") << Value(QDateTime(day, QTime(13, 5, 9)))
                               << QStringLiteral("3/7/2026 1:05:09 PM");
    QTest::newRow("after midnight")
        << Value(QDateTime(day, QTime(0, 0, 1))) << QStringLiteral("3/7/2026 12:00:01 AM");
}

void tst_RowStore::Value_showsItsText() {
    QFETCH(Value, value);
    QTEST(value.Text(), "text");
}

void tst_RowStore::Value_givesItsRawText_data() {
    QTest::addColumn<Value>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("17 digits") << Value(0.1) << QStringLiteral("0.10000000000000001");
    QTest::newRow("no exponent below")
        << Value(0.00001) << QStringLiteral("0.000010000000000000001");
    QTest::newRow("no exponent above") << Value(-1e20) << QStringLiteral("-100000000000000000000");
    QTest::newRow("tiny") << Value(1e-300) << QStringLiteral("1e-300");
    QTest::newRow("moment") << Value(QDateTime(QDate(2026, 3, 7), QTime(13, 5, 9, 997)))
                            << QStringLiteral("2026-03-07T13:05:09.997");
    QTest::newRow("text") << Value(QStringLiteral(" x ")) << QStringLiteral(" x ");
}

void tst_RowStore::Value_givesItsRawText() {
    QFETCH(Value, value);
    QTEST(value.RawText(), "text");
    if (!value.Moment().isValid()) {
        QCOMPARE(value.RawText().toDouble(), value.Number());
    }
}

void tst_RowStore::Value_isANumber() {
    QCOMPARE(Value(QStringLiteral(" 12.5 mg")).Number(), 12.5);
    QCOMPARE(Value().Number(), 0.0);
    QCOMPARE(Value(7).Number(), 7.0);
    QVERIFY(!Value(QStringLiteral("2026-03-07")).Moment().isValid());
}

void tst_RowStore::RandomCells_comeBackAsTheyWent() {
    constexpr int kRows = 20000;
    constexpr int kColumns = 9;
    QRandomGenerator random(46);
    const QString letters = QStringLiteral("abc é ñ ș € \U0001F600 0123456789");
    RowStore store;
    std::vector<embedded::ResultColumn> columns;
    for (int column = 0; column < kColumns; ++column) {
        columns.push_back({QStringLiteral("c%1").arg(column), ColumnKind::Text});
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
            const auto moment =
                QDateTime(QDate(1950, 1, 1), QTime(0, 0)).addMSecs(random.bounded(qint64(4e12)));
            store.DateTime(base::StoredDateTime(moment).toStdString());
            expected.emplace_back(moment);
        } else {
            const QString text = letters.repeated(int(random.bounded(4U)));
            store.Text(text.toStdString());
            expected.emplace_back(text);
        }
        if (cell % kColumns == kColumns - 1) {
            store.EndRow();
        }
    }
    QCOMPARE(store.RowCount(), kRows);
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            const Value& wanted = expected[std::size_t(row * kColumns + column)];
            QVERIFY(store.At(row, column) == wanted);
            QCOMPARE(store.TextAt(row, column), wanted.Text());
        }
    }
}

void tst_RowStore::Row_longerThanAChunk_staysWhole() {
    RowStore store;
    store.BeginResult({{QStringLiteral("a"), ColumnKind::Integer},
                       {QStringLiteral("b"), ColumnKind::Text},
                       {QStringLiteral("c"), ColumnKind::Text}});
    const std::string note(db::ChunkPool::kChunkBytes - 100, 'x');
    for (int row = 0; row < 5; ++row) {
        store.Integer(row);
        store.Text(note);
        store.Text(row % 2 == 0 ? std::string() : note);
        store.EndRow();
    }
    for (int row = 0; row < 5; ++row) {
        QCOMPARE(store.TextAt(row, 0), QString::number(row));
        QVERIFY(store.Utf8At(row, 1) == note);
        QVERIFY(store.Utf8At(row, 2) == (row % 2 == 0 ? std::string() : note));
        QVERIFY(store.Utf8At(row, 0).empty());
    }
}

void tst_RowStore::Names_ignoreCaseAndTheFirstOneWins() {
    RowStore store;
    store.BeginResult({{QStringLiteral("HospNum"), ColumnKind::Text},
                       {QStringLiteral("amount"), ColumnKind::Double},
                       {QStringLiteral("AMOUNT"), ColumnKind::Double},
                       {QString(), ColumnKind::Text}});
    QCOMPARE(store.ColumnIndex(QStringLiteral("hospnum")), 0);
    QCOMPARE(store.ColumnIndex(QStringLiteral("Amount")), 1);
    QCOMPARE(store.ColumnIndex(QStringLiteral("IdNum")), -1);
    QCOMPARE(store.ColumnIndex(QStringLiteral("zzz")), -1);
    QCOMPARE(RowStore().ColumnIndex(QStringLiteral("x")), -1);
}

void tst_RowStore::SecondResult_isIgnored() {
    RowStore store;
    store.BeginResult({});
    store.BeginResult({{QStringLiteral("first"), ColumnKind::Integer}});
    store.Integer(1);
    store.EndRow();
    store.BeginResult({{QStringLiteral("second"), ColumnKind::Text}});
    store.Text("2");
    store.Null();
    store.Double(3);
    store.EndRow();
    QCOMPARE(store.RowCount(), 1);
    QCOMPARE(store.ColumnCount(), 1);
    QCOMPARE(store.TextAt(0, 0), QStringLiteral("1"));
}

void tst_RowStore::Chunks_serveTheNextResult() {
    const auto fill = [](RowStore& store) {
        store.BeginResult({{QStringLiteral("n"), ColumnKind::Integer}});
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
        QCOMPARE(next.TextAt(199999, 0), QStringLiteral("199999"));
    }
    QCOMPARE(db::ChunkPool::IdleChunks(), idle);
}

QTEST_GUILESS_MAIN(tst_RowStore)
#include "tst_RowStore.moc"
