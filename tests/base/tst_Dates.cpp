#include "base/Dates.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_Dates : public QObject {
    Q_OBJECT

private slots:
    void DateTimeText_writesAmericanDatesWithHalfDays() {
        const QDate date(2026, 2, 5);
        using Shown = std::pair<QTime, QString>;
        for (const auto& [time, text] :
             {Shown{{0, 0}, u"2/5/2026"_s}, Shown{{0, 0, 1}, u"2/5/2026 12:00:01 AM"_s},
              Shown{{9, 5, 7}, u"2/5/2026 9:05:07 AM"_s}, Shown{{12, 0}, u"2/5/2026 12:00:00 PM"_s},
              Shown{{23, 59, 59, 997}, u"2/5/2026 11:59:59 PM"_s}})
            QCOMPARE(base::DateTimeText(QDateTime(date, time)), text);
        QCOMPARE(base::ShortDate(date), u"2/5/2026"_s);
        QCOMPARE(base::ShortDate(QDate(205, 12, 31)), u"12/31/0205"_s);
        QCOMPARE(base::ShortDate({}) + base::DateTimeText({}) + base::StoredDateTime({}),
                 QString());
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

    void FromStoredDateTime_refusesOtherForms() {
        for (const QString& text : {QString(), u"2026-02-05"_s, u"2026-02-30 00:00:00.000"_s,
                                    u"2026-02-05 24:00:00.000"_s, u"2026-02-05T00:00:00.000"_s,
                                    u"2026-02- 5 00:00:00.000"_s, u"2026-02-05 00:00:00.0000"_s,
                                    u"0000-02-05 00:00:00.000"_s})
            QVERIFY2(!base::FromStoredDateTime(text).has_value(), qPrintable(text));
    }
};

QTEST_GUILESS_MAIN(tst_Dates)
#include "tst_Dates.moc"
