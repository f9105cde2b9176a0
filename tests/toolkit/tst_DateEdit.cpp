#include "Rows.h"
#include "toolkit/DateEdit.h"

#include <QtTest>

#include "base/Clock.h"

using namespace Qt::StringLiterals;

class tst_DateEdit : public QObject {
    Q_OBJECT
private slots:
    void Typing_readsTheDateAsItIsWritten_data() {
        Columns<QString, QDate, QString>();
        const auto row = [](const char* name, const QString& typed, const QDate& date,
                            const QString& shown) {
            QTest::newRow(name) << typed << date << shown;
        };
        const QDate day(2025, 9, 1);
        const QString written = u"9/1/2025"_s;
        row("short month and day", written, day, written);
        row("long month and day", u"09/01/2025"_s, day, written);
        row("two-digit year", u"9/1/25"_s, day, written);
        row("other dividers", u"9-1.2025"_s, day, written);
        row("digits alone", u"090125"_s, day, written);
        row("leap day", u"2/29/2024"_s, QDate(2024, 2, 29), u"2/29/2024"_s);
        // What is no date stays as typed and never becomes another one.
        for (const QString& typed :
             {u"2/30/2026"_s, u"13/1/2026"_s, u"2/29/2025"_s, u"2/3"_s, u"1/1/0205"_s})
            row(qPrintable(typed), typed, QDate(), typed);
    }

    void Typing_readsTheDateAsItIsWritten() {
        auto [typed, date, shown] = Fetch<QString, QDate, QString>();
        toolkit::DateEdit box;
        box.setDate(QDate(2026, 11, 30));
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        box.clearFocus();
        box.setFocus(Qt::TabFocusReason);
        QTest::keyClicks(&box, typed);
        box.clearFocus();
        QCOMPARE(box.date(), date);
        QCOMPARE(box.text(), shown);
        QCOMPARE(box.IsUnreadable(), !box.date().isValid());
        // What has happened was not in a year to come.
        base::Clock::Replace([] { return QDateTime(QDate(2026, 11, 23), QTime(8, 0)); });
        box.SetForPast();
        box.setText(u"11/24/26"_s);
        QCOMPARE(box.date(), QDate(1926, 11, 24));
        box.setText(u"112326"_s);
        QCOMPARE(box.date(), QDate(2026, 11, 23));
        base::Clock::Replace({});
    }

    void Emptied_isNoDateAgain() {
        toolkit::DateEdit box;
        QVERIFY(!box.date().isValid());
        box.setDate(QDate(2026, 11, 30));
        box.selectAll();
        QTest::keyClick(&box, Qt::Key_Delete);
        QVERIFY(!box.date().isValid() && !box.IsUnreadable());
    }

    void Arrows_stepThePartAtTheCaret() {
        toolkit::DateEdit box;
        box.setDate(QDate(2026, 1, 31));
        box.home(false);
        QTest::keyClick(&box, Qt::Key_Up);
        QCOMPARE(box.text(), u"2/28/2026"_s);
        box.end(false);
        QTest::keyClick(&box, Qt::Key_Down);
        QCOMPARE(box.text(), u"2/28/2025"_s);
        box.setText(u"12/31/9999"_s);
        box.end(false);
        QTest::keyClick(&box, Qt::Key_Up);
        QCOMPARE(box.text(), u"12/31/9999"_s);
    }
};

QTEST_MAIN(tst_DateEdit)
#include "tst_DateEdit.moc"
