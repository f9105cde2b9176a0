#include "toolkit/DateEdit.h"

#include <QtTest>
#include <QtWidgets>

#include "Rows.h"
#include "base/Clock.h"

using namespace Qt::StringLiterals;

class tst_DateEdit : public QObject {
    Q_OBJECT
private slots:
    void init() {
        base::Clock::Replace([] { return QDateTime(QDate(2026, 11, 23), QTime(8, 0)); });
    }

    void Typing_readsTheDateAsItIsWritten_data() {
        Columns<QString, QDate, QString, bool>();
        const QDate day(2025, 9, 1);
        Row("short month and day", "9/1/2025", day, "9/1/2025", false);
        Row("long month and day", "09/01/2025", day, "9/1/2025", false);
        Row("two-digit year", "9/1/25", day, "9/1/2025", false);
        Row("other dividers", "9-1.2025", day, "9/1/2025", false);
        Row("digits alone", "090125", day, "9/1/2025", false);
        Row("leap day", "2/29/2024", QDate(2024, 2, 29), "2/29/2024", false);
        Row("to come, in the past", "11/24/26", QDate(1926, 11, 24), "11/24/1926", true);
        Row("today, in the past", "112326", QDate(2026, 11, 23), "11/23/2026", true);
        Row("first year", "1/1/1753", QDate(1753, 1, 1), "1/1/1753", false);
        // What is no date stays as typed and never becomes another one.
        for (const char* typed : {"2/30/2026", "13/1/2026", "2/29/2025", "2/3", "12/31/1752"})
            Row(typed, typed, QDate(), typed, false);
    }

    void Typing_readsTheDateAsItIsWritten() {
        auto [typed, date, shown, forPast] = Fetch<QString, QDate, QString, bool>();
        toolkit::DateEdit box;
        if (forPast)
            box.SetForPast();
        box.setDate(QDate(2026, 11, 30));
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        box.clearFocus();
        box.setFocus(Qt::TabFocusReason);
        QTest::keyClicks(&box, typed);
        box.clearFocus();
        QCOMPARE(box.date(), date);
        QCOMPARE(box.text(), shown);
        QCOMPARE(box.IsUnreadable(), !date.isValid());
    }

    void Emptied_isNoDateAgain() {
        toolkit::DateEdit box;
        QVERIFY(!box.date().isValid());
        box.setDate(QDate(2026, 11, 30));
        box.selectAll();
        QTest::keyClick(&box, Qt::Key_Delete);
        QVERIFY(!box.date().isValid() && !box.IsUnreadable());
    }

    void Arrows_stepThePartAtTheCaret_data() {
        Columns<QDate, int, Qt::Key, QString>();
        const QDate day(2026, 1, 31);
        Row("month", day, 0, Qt::Key_Up, "2/28/2026");
        Row("day", day, 2, Qt::Key_Up, "2/1/2026");
        Row("year", day, 9, Qt::Key_Down, "1/31/2025");
        Row("last year", QDate(9999, 12, 31), 10, Qt::Key_Up, "12/31/9999");
        Row("no date", QDate(), 0, Qt::Key_Up, "11/23/2026");
    }

    void Arrows_stepThePartAtTheCaret() {
        auto [date, caret, key, shown] = Fetch<QDate, int, Qt::Key, QString>();
        toolkit::DateEdit box;
        box.setDate(date);
        box.setCursorPosition(caret);
        QTest::keyClick(&box, key);
        QCOMPARE(box.text(), shown);
    }

    void Calendar_givesTheChosenDay() {
        toolkit::DateEdit box;
        box.show();
        QTest::keyClick(&box, Qt::Key_F4);
        auto* calendar = box.findChild<QCalendarWidget*>();
        QCOMPARE(calendar->selectedDate(), QDate(2026, 11, 23));
        emit calendar->activated(QDate(2026, 12, 1));
        QCOMPARE(box.text(), u"12/1/2026"_s);
        QVERIFY(!calendar->isVisible());
    }
};

QTEST_MAIN(tst_DateEdit)
#include "tst_DateEdit.moc"
