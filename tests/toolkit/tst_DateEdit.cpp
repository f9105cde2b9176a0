#include "toolkit/DateEdit.h"

#include <QtTest>

class tst_DateEdit : public QObject {
    Q_OBJECT
private slots:
    void Typing_readsTheDateAsItIsWritten_data();
    void Typing_readsTheDateAsItIsWritten();
};

void tst_DateEdit::Typing_readsTheDateAsItIsWritten_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QDate>("date");
    QTest::newRow("short month and day") << QStringLiteral("9/1/2025") << QDate(2025, 9, 1);
    QTest::newRow("two-digit month") << QStringLiteral("12/3/2024") << QDate(2024, 12, 3);
    QTest::newRow("two-digit day") << QStringLiteral("2/28/2024") << QDate(2024, 2, 28);
    QTest::newRow("day that leads on") << QStringLiteral("1/9/2023") << QDate(2023, 1, 9);
    QTest::newRow("two-digit year") << QStringLiteral("11/1/25") << QDate(2025, 11, 1);
    QTest::newRow("long both") << QStringLiteral("10/31/2022") << QDate(2022, 10, 31);
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
}

QTEST_MAIN(tst_DateEdit)
#include "tst_DateEdit.moc"
