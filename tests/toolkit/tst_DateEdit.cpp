#include "toolkit/DateEdit.h"

#include <QtTest>

#include "base/Clock.h"

class tst_DateEdit : public QObject {
    Q_OBJECT
private slots:
    void Typing_readsTheDateAsItIsWritten_data();
    void Typing_readsTheDateAsItIsWritten();
    void Emptied_isNoDateAgain();
    void Arrows_stepThePartAtTheCaret();
};

void tst_DateEdit::Typing_readsTheDateAsItIsWritten_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* name, const QString& typed, const QDate& date,
                        const QString& shown) { QTest::newRow(name) << typed << date << shown; };
    const QDate day(2025, 9, 1);
    const QString written = QStringLiteral("9/1/2025");
    row("short month and day", written, day, written);
    row("long month and day", QStringLiteral("09/01/2025"), day, written);
    row("two-digit year", QStringLiteral("9/1/25"), day, written);
    row("other dividers", QStringLiteral("9-1.2025"), day, written);
    row("digits alone", QStringLiteral("090125"), day, written);
    row("leap day", QStringLiteral("2/29/2024"), QDate(2024, 2, 29), QStringLiteral("2/29/2024"));
    // What is no date stays as typed and never becomes another one.
    for (const QString& typed :
         {QStringLiteral("2/30/2026"), QStringLiteral("13/1/2026"), QStringLiteral("2/29/2025"),
          QStringLiteral("2/3"), QStringLiteral("1/1/0205")})
        row(qPrintable(typed), typed, QDate(), typed);
}

void tst_DateEdit::Typing_readsTheDateAsItIsWritten() {
    QFETCH(QString, typed);
    toolkit::DateEdit box;
    box.setDate(QDate(2026, 11, 30));
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    box.clearFocus();
    box.setFocus(Qt::TabFocusReason);
    QTest::keyClicks(&box, typed);
    box.clearFocus();
    QTEST(box.date(), "date");
    QTEST(box.text(), "shown");
    QCOMPARE(box.IsUnreadable(), !box.date().isValid());
    // What has happened was not in a year to come.
    base::Clock::Replace([] { return QDateTime(QDate(2026, 11, 23), QTime(8, 0)); });
    box.SetForPast();
    box.setText(QStringLiteral("11/24/26"));
    QCOMPARE(box.date(), QDate(1926, 11, 24));
    box.setText(QStringLiteral("112326"));
    QCOMPARE(box.date(), QDate(2026, 11, 23));
    base::Clock::Replace({});
}

void tst_DateEdit::Emptied_isNoDateAgain() {
    toolkit::DateEdit box;
    QVERIFY(!box.date().isValid());
    box.setDate(QDate(2026, 11, 30));
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    QVERIFY(!box.date().isValid() && !box.IsUnreadable());
}

void tst_DateEdit::Arrows_stepThePartAtTheCaret() {
    toolkit::DateEdit box;
    box.setDate(QDate(2026, 1, 31));
    box.home(false);
    QTest::keyClick(&box, Qt::Key_Up);
    QCOMPARE(box.text(), QStringLiteral("2/28/2026"));
    box.end(false);
    QTest::keyClick(&box, Qt::Key_Down);
    QCOMPARE(box.text(), QStringLiteral("2/28/2025"));
    box.setText(QStringLiteral("12/31/9999"));
    box.end(false);
    QTest::keyClick(&box, Qt::Key_Up);
    QCOMPARE(box.text(), QStringLiteral("12/31/9999"));
}

QTEST_MAIN(tst_DateEdit)
#include "tst_DateEdit.moc"
