#include <QtTest>

#include "base/Clock.h"
#include "base/Dates.h"

class tst_Dates : public QObject {
    Q_OBJECT

private slots:
    void DateTimeText_writesAmericanDatesWithHalfDays_data();
    void DateTimeText_writesAmericanDatesWithHalfDays();
    void StoredDateTime_comesBackAndSortsAsText();
    void FromStoredDateTime_refusesOtherForms_data();
    void FromStoredDateTime_refusesOtherForms();
    void Texts_ofInvalidDatesAreEmpty();
    void Clock_standsWhereATestPutsIt();
};

void tst_Dates::DateTimeText_writesAmericanDatesWithHalfDays_data() {
    QTest::addColumn<QTime>("time");
    QTest::addColumn<QString>("text");
    QTest::newRow("midnight") << QTime(0, 0) << QStringLiteral("2/5/2026");
    QTest::newRow("just after midnight")
        << QTime(0, 0, 1) << QStringLiteral("2/5/2026 12:00:01 AM");
    QTest::newRow("morning") << QTime(9, 5, 7) << QStringLiteral("2/5/2026 9:05:07 AM");
    QTest::newRow("noon") << QTime(12, 0) << QStringLiteral("2/5/2026 12:00:00 PM");
    QTest::newRow("last moment") << QTime(23, 59, 59, 997)
                                 << QStringLiteral("2/5/2026 11:59:59 PM");
}

void tst_Dates::DateTimeText_writesAmericanDatesWithHalfDays() {
    QFETCH(QTime, time);
    QFETCH(QString, text);
    const QDate date(2026, 2, 5);
    QCOMPARE(base::DateTimeText(QDateTime(date, time)), text);
    QCOMPARE(base::ShortDate(date), QStringLiteral("2/5/2026"));
}

void tst_Dates::StoredDateTime_comesBackAndSortsAsText() {
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
    QCOMPARE(earlier, QStringLiteral("9999-12-31 23:59:59.997"));
}

void tst_Dates::FromStoredDateTime_refusesOtherForms_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("date only") << QStringLiteral("2026-02-05");
    QTest::newRow("no such day") << QStringLiteral("2026-02-30 00:00:00.000");
    QTest::newRow("no such hour") << QStringLiteral("2026-02-05 24:00:00.000");
    QTest::newRow("T between") << QStringLiteral("2026-02-05T00:00:00.000");
    QTest::newRow("blank digit") << QStringLiteral("2026-02- 5 00:00:00.000");
    QTest::newRow("longer") << QStringLiteral("2026-02-05 00:00:00.0000");
}

void tst_Dates::FromStoredDateTime_refusesOtherForms() {
    QFETCH(QString, text);
    QVERIFY(!base::FromStoredDateTime(text).has_value());
}

void tst_Dates::Texts_ofInvalidDatesAreEmpty() {
    QCOMPARE(base::ShortDate(QDate()), QString());
    QCOMPARE(base::DateTimeText(QDateTime()), QString());
    QCOMPARE(base::StoredDateTime(QDateTime()), QString());
}

void tst_Dates::Clock_standsWhereATestPutsIt() {
    const QDateTime midnight(QDate(2026, 12, 31), QTime(0, 0));
    base::Clock::Replace([midnight] { return midnight; });
    QCOMPARE(base::Clock::Now(), midnight);
    QCOMPARE(base::Clock::Today(), QDate(2026, 12, 31));
    base::Clock::Replace({});
    QVERIFY(qAbs(base::Clock::Now().secsTo(QDateTime::currentDateTime())) < 60);
}

QTEST_GUILESS_MAIN(tst_Dates)
#include "tst_Dates.moc"
