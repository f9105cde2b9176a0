#include <QtTest>

#include "Rows.h"
#include "base/Clock.h"
#include "base/Dates.h"

using namespace Qt::StringLiterals;

class tst_Dates : public QObject {
    Q_OBJECT

private slots:
    void DateTimeText_writesAmericanDatesWithHalfDays_data() {
        Columns<QTime, QString>();
        QTest::newRow("midnight") << QTime(0, 0) << u"2/5/2026"_s;
        QTest::newRow("just after midnight") << QTime(0, 0, 1) << u"2/5/2026 12:00:01 AM"_s;
        QTest::newRow("morning") << QTime(9, 5, 7) << u"2/5/2026 9:05:07 AM"_s;
        QTest::newRow("noon") << QTime(12, 0) << u"2/5/2026 12:00:00 PM"_s;
        QTest::newRow("last moment") << QTime(23, 59, 59, 997) << u"2/5/2026 11:59:59 PM"_s;
    }

    void DateTimeText_writesAmericanDatesWithHalfDays() {
        auto [time, text] = Fetch<QTime, QString>();
        const QDate date(2026, 2, 5);
        QCOMPARE(base::DateTimeText(QDateTime(date, time)), text);
        QCOMPARE(base::ShortDate(date), u"2/5/2026"_s);
    }

    void StoredDateTime_comesBackAndSortsAsText() {
        const QList<QDateTime> moments{QDateTime(QDate(1753, 1, 1), QTime(0, 0)),
                                       QDateTime(QDate(2026, 2, 28), QTime(9, 5)),
                                       QDateTime(QDate(2026, 11, 2), QTime(21, 5, 6, 997)),
                                       QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59, 997))};
        QString earlier;
        for (const QDateTime& moment : moments) {
            const QString stored = base::StoredDateTime(moment);
            QVERIFY(earlier < stored);
            QCOMPARE(base::FromStoredDateTime(stored), std::optional(moment));
            earlier = stored;
        }
        QCOMPARE(earlier, u"9999-12-31 23:59:59.997"_s);
    }

    void FromStoredDateTime_refusesOtherForms_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("date only") << u"2026-02-05"_s;
        QTest::newRow("no such day") << u"2026-02-30 00:00:00.000"_s;
        QTest::newRow("no such hour") << u"2026-02-05 24:00:00.000"_s;
        QTest::newRow("T between") << u"2026-02-05T00:00:00.000"_s;
        QTest::newRow("blank digit") << u"2026-02- 5 00:00:00.000"_s;
        QTest::newRow("longer") << u"2026-02-05 00:00:00.0000"_s;
    }

    void FromStoredDateTime_refusesOtherForms() {
        QFETCH(QString, text);
        QVERIFY(!base::FromStoredDateTime(text).has_value());
    }

    void Texts_ofInvalidDatesAreEmpty() {
        QCOMPARE(base::ShortDate(QDate()), QString());
        QCOMPARE(base::DateTimeText(QDateTime()), QString());
        QCOMPARE(base::StoredDateTime(QDateTime()), QString());
    }

    void Clock_standsWhereATestPutsIt() {
        const QDateTime midnight(QDate(2026, 12, 31), QTime(0, 0));
        base::Clock::Replace([midnight] { return midnight; });
        QCOMPARE(base::Clock::Now(), midnight);
        QCOMPARE(base::Clock::Today(), QDate(2026, 12, 31));
        base::Clock::Replace({});
        QVERIFY(qAbs(base::Clock::Now().secsTo(QDateTime::currentDateTime())) < 60);
    }
};

QTEST_GUILESS_MAIN(tst_Dates)
#include "tst_Dates.moc"
