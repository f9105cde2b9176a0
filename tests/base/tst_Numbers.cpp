#include <QtTest>

#include "base/Errors.h"
#include "base/Numbers.h"
#include "base/Texts.h"

class tst_Numbers : public QObject {
    Q_OBJECT

private slots:
    void Val_readsTheLeadingNumber_data();
    void Val_readsTheLeadingNumber();
    void PlainText_showsFifteenDigitsWithoutExponent_data();
    void PlainText_showsFifteenDigitsWithoutExponent();
    void MoneyText_roundsTheDecimalTextAwayFromZero_data();
    void MoneyText_roundsTheDecimalTextAwayFromZero();
    void RoundDecimal_agreesWithTheTextOnEveryHalf();
    void RoundDecimal_roundsToTensAndDecimals_data();
    void RoundDecimal_roundsToTensAndDecimals();
    void ToInt16_roundsHalvesToEvenAndRefusesTheRest();
    void IsNumeric_tellsAdmissionFromVisit_data();
    void IsNumeric_tellsAdmissionFromVisit();
    void ProperCase_raisesFirstLettersOnly();
};

void tst_Numbers::Val_readsTheLeadingNumber_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    QTest::newRow("empty") << QString() << 0.0;
    QTest::newRow("word") << QStringLiteral("abc12") << 0.0;
    QTest::newRow("rest ignored") << QStringLiteral("12.5 mg") << 12.5;
    QTest::newRow("blanks inside") << QStringLiteral("  1 615 ml") << 1615.0;
    QTest::newRow("two points") << QStringLiteral("1.2.3") << 1.2;
    QTest::newRow("grouping ends it") << QStringLiteral("1,250.00") << 1.0;
    QTest::newRow("sign") << QStringLiteral("-3.5") << -3.5;
    QTest::newRow("plus") << QStringLiteral("+4") << 4.0;
    QTest::newRow("two signs") << QStringLiteral("--4") << 0.0;
    QTest::newRow("point first") << QStringLiteral(".5") << 0.5;
    QTest::newRow("point only") << QStringLiteral(".") << 0.0;
    QTest::newRow("exponent") << QStringLiteral("2e3x") << 2000.0;
    QTest::newRow("signed exponent") << QStringLiteral("25E-1") << 2.5;
    QTest::newRow("open exponent") << QStringLiteral("7e") << 7.0;
    QTest::newRow("too small") << QStringLiteral("1e-999") << 0.0;
}

void tst_Numbers::Val_readsTheLeadingNumber() {
    QFETCH(QString, text);
    QFETCH(double, number);
    QCOMPARE(base::Val(text), number);
    QVERIFY_EXCEPTION_THROWN(base::Val(QStringLiteral("1e999")), base::RuntimeError);
}

void tst_Numbers::PlainText_showsFifteenDigitsWithoutExponent_data() {
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0.0 << QStringLiteral("0");
    QTest::newRow("minus zero") << -0.0 << QStringLiteral("0");
    QTest::newRow("whole") << 1500.0 << QStringLiteral("1500");
    QTest::newRow("money") << 12.5 << QStringLiteral("12.5");
    QTest::newRow("binary dust") << 0.1 + 0.2 << QStringLiteral("0.3");
    QTest::newRow("fifteen digits") << 1.0 / 3 << QStringLiteral("0.333333333333333");
    QTest::newRow("carry") << 0.9999999999999999 << QStringLiteral("1");
    QTest::newRow("small") << -0.00001234 << QStringLiteral("-0.00001234");
    QTest::newRow("large") << 1.5e17 << QStringLiteral("150000000000000000");
    QTest::newRow("seventeen digits") << 12345678901234567.0 << QStringLiteral("12345678901234600");
    QTest::newRow("too small") << -1e-16 << QStringLiteral("0");
}

void tst_Numbers::PlainText_showsFifteenDigitsWithoutExponent() {
    QFETCH(double, number);
    QFETCH(QString, text);
    QCOMPARE(base::PlainText(number), text);
}

void tst_Numbers::MoneyText_roundsTheDecimalTextAwayFromZero_data() {
    QTest::addColumn<double>("amount");
    QTest::addColumn<QString>("text");
    QTest::newRow("binary below the half") << 1.005 << QStringLiteral("1.01");
    QTest::newRow("negative half") << -1.005 << QStringLiteral("-1.01");
    QTest::newRow("zero") << 0.0 << QStringLiteral("0.00");
    QTest::newRow("no minus zero") << -0.004 << QStringLiteral("0.00");
    QTest::newRow("first cent") << 0.005 << QStringLiteral("0.01");
    QTest::newRow("below the first cent") << 0.0049 << QStringLiteral("0.00");
    QTest::newRow("carry over all nines") << 999.995 << QStringLiteral("1000.00");
    QTest::newRow("carry into a new digit") << 0.995 << QStringLiteral("1.00");
    QTest::newRow("one decimal") << 2.5 << QStringLiteral("2.50");
    QTest::newRow("millions") << 123456789.125 << QStringLiteral("123456789.13");
    QTest::newRow("beyond fifteen digits") << 1e16 << QStringLiteral("10000000000000000.00");
}

void tst_Numbers::MoneyText_roundsTheDecimalTextAwayFromZero() {
    QFETCH(double, amount);
    QFETCH(QString, text);
    QCOMPARE(base::MoneyText(amount), text);
}

void tst_Numbers::RoundDecimal_agreesWithTheTextOnEveryHalf() {
    // The quick binary way and the decimal text must never part, above all around half cents.
    for (int tenths = -30000; tenths <= 30000; ++tenths) {
        const double amount = tenths / 1000.0;
        const int cents = (std::abs(tenths) + 5) / 10;
        const double expected = (tenths < 0 ? -cents : cents) / 100.0;
        if (base::RoundDecimal(amount, 2) != expected)
            QFAIL(qPrintable(QString::number(amount, 'g', 17)));
    }
}

void tst_Numbers::RoundDecimal_roundsToTensAndDecimals_data() {
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("rounded");
    QTest::newRow("tens") << 125.0 << -1 << 130.0;
    QTest::newRow("hundreds up") << 950.0 << -2 << 1000.0;
    QTest::newRow("beyond the number") << 499.0 << -3 << 0.0;
    QTest::newRow("half of the next power") << 500.0 << -3 << 1000.0;
    QTest::newRow("far beyond") << 500.0 << -5 << 0.0;
    QTest::newRow("money half") << 0.00005 << 4 << 0.0001;
    QTest::newRow("large money") << 922337203685477.58 << 4 << 922337203685478.0;
    QTest::newRow("more decimals than digits") << 1.25 << 20 << 1.25;
}

void tst_Numbers::RoundDecimal_roundsToTensAndDecimals() {
    QFETCH(double, number);
    QFETCH(int, decimals);
    QFETCH(double, rounded);
    QCOMPARE(base::RoundDecimal(number, decimals), rounded);
    QCOMPARE(base::RoundDecimal(-number, decimals), -rounded);
}

void tst_Numbers::ToInt16_roundsHalvesToEvenAndRefusesTheRest() {
    QCOMPARE(base::ToInt16(2.5), short(2));
    QCOMPARE(base::ToInt16(3.5), short(4));
    QCOMPARE(base::ToInt16(-0.5), short(0));
    QCOMPARE(base::ToInt16(32767.4), short(32767));
    QCOMPARE(base::ToInt16(-32768.5), short(-32768));
    for (const double outside : {32767.5, -32769.0, 1e300, std::nan("")}) {
        try {
            base::ToInt16(outside);
            QFAIL("taken");
        } catch (const base::RuntimeError& error) {
            QCOMPARE(error.Number(), 6);
            QCOMPARE(QByteArray(error.what()), QByteArray("Overflow"));
        }
    }
}

void tst_Numbers::IsNumeric_tellsAdmissionFromVisit_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("numeric");
    QTest::newRow("admission") << QStringLiteral("2026001234") << true;
    QTest::newRow("visit") << QStringLiteral("A20260012B") << false;
    QTest::newRow("walk-in") << QStringLiteral("T123C") << false;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("blanks") << QStringLiteral("   ") << false;
    QTest::newRow("blanks around") << QStringLiteral(" 12 ") << true;
    QTest::newRow("blank inside") << QStringLiteral("1 2") << false;
    QTest::newRow("decimals") << QStringLiteral("-1.5") << true;
    QTest::newRow("point only") << QStringLiteral("-.") << false;
    QTest::newRow("exponent") << QStringLiteral("1e5") << true;
    QTest::newRow("open exponent") << QStringLiteral("1e") << false;
    QTest::newRow("letter behind") << QStringLiteral("123B") << false;
}

void tst_Numbers::IsNumeric_tellsAdmissionFromVisit() {
    QFETCH(QString, text);
    QFETCH(bool, numeric);
    QCOMPARE(base::IsNumeric(text), numeric);
}

void tst_Numbers::ProperCase_raisesFirstLettersOnly() {
    QCOMPARE(base::ProperCase(QStringLiteral("DELA CRUZ  maria")),
             QStringLiteral("Dela Cruz  Maria"));
    QCOMPARE(base::ProperCase(QStringLiteral("o'BRIEN-smith ñUÑEZ")),
             QStringLiteral("O'brien-smith Ñuñez"));
}

QTEST_GUILESS_MAIN(tst_Numbers)
#include "tst_Numbers.moc"
