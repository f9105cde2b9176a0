#include <QtTest>

#include "Rows.h"
#include "base/Errors.h"
#include "base/Numbers.h"
#include "base/Texts.h"

using namespace Qt::StringLiterals;

class tst_Numbers : public QObject {
    Q_OBJECT

private slots:
    void Val_readsTheLeadingNumber_data() {
        Columns<QString, double>();
        QTest::newRow("empty") << QString() << 0.0;
        QTest::newRow("word") << u"abc12"_s << 0.0;
        QTest::newRow("rest ignored") << u"12.5 mg"_s << 12.5;
        QTest::newRow("blanks inside") << u"  1 615 ml"_s << 1615.0;
        QTest::newRow("two points") << u"1.2.3"_s << 1.2;
        QTest::newRow("grouping ends it") << u"1,250.00"_s << 1.0;
        QTest::newRow("sign") << u"-3.5"_s << -3.5;
        QTest::newRow("plus") << u"+4"_s << 4.0;
        QTest::newRow("two signs") << u"--4"_s << 0.0;
        QTest::newRow("point first") << u".5"_s << 0.5;
        QTest::newRow("point only") << u"."_s << 0.0;
        QTest::newRow("exponent") << u"2e3x"_s << 2000.0;
        QTest::newRow("signed exponent") << u"25E-1"_s << 2.5;
        QTest::newRow("open exponent") << u"7e"_s << 7.0;
        QTest::newRow("too small") << u"1e-999"_s << 0.0;
    }

    void Val_readsTheLeadingNumber() {
        auto [text, number] = Fetch<QString, double>();
        QCOMPARE(base::Val(text), number);
        QVERIFY_EXCEPTION_THROWN(base::Val(u"1e999"_s), base::RuntimeError);
    }

    void PlainText_showsFifteenDigitsWithoutExponent_data() {
        Columns<double, QString>();
        QTest::newRow("zero") << 0.0 << u"0"_s;
        QTest::newRow("minus zero") << -0.0 << u"0"_s;
        QTest::newRow("whole") << 1500.0 << u"1500"_s;
        QTest::newRow("money") << 12.5 << u"12.5"_s;
        QTest::newRow("binary dust") << 0.1 + 0.2 << u"0.3"_s;
        QTest::newRow("fifteen digits") << 1.0 / 3 << u"0.333333333333333"_s;
        QTest::newRow("carry") << 0.9999999999999999 << u"1"_s;
        QTest::newRow("small") << -0.00001234 << u"-0.00001234"_s;
        QTest::newRow("large") << 1.5e17 << u"150000000000000000"_s;
        QTest::newRow("seventeen digits") << 12345678901234567.0 << u"12345678901234600"_s;
        QTest::newRow("too small") << -1e-16 << u"0"_s;
    }

    void PlainText_showsFifteenDigitsWithoutExponent() {
        auto [number, text] = Fetch<double, QString>();
        QCOMPARE(base::PlainText(number), text);
    }

    void MoneyText_roundsTheDecimalTextAwayFromZero_data() {
        Columns<double, QString>();
        QTest::newRow("binary below the half") << 1.005 << u"1.01"_s;
        QTest::newRow("negative half") << -1.005 << u"-1.01"_s;
        QTest::newRow("zero") << 0.0 << u"0.00"_s;
        QTest::newRow("no minus zero") << -0.004 << u"0.00"_s;
        QTest::newRow("first cent") << 0.005 << u"0.01"_s;
        QTest::newRow("below the first cent") << 0.0049 << u"0.00"_s;
        QTest::newRow("carry over all nines") << 999.995 << u"1000.00"_s;
        QTest::newRow("carry into a new digit") << 0.995 << u"1.00"_s;
        QTest::newRow("one decimal") << 2.5 << u"2.50"_s;
        QTest::newRow("millions") << 123456789.125 << u"123456789.13"_s;
        QTest::newRow("beyond fifteen digits") << 1e16 << u"10000000000000000.00"_s;
    }

    void MoneyText_roundsTheDecimalTextAwayFromZero() {
        auto [amount, text] = Fetch<double, QString>();
        QCOMPARE(base::MoneyText(amount), text);
    }

    void RoundDecimal_agreesWithTheTextOnEveryHalf() {
        // The quick binary way and the decimal text must never part, above all around half cents.
        for (int tenths = -30000; tenths <= 30000; ++tenths) {
            const double amount = tenths / 1000.0;
            const int cents = (std::abs(tenths) + 5) / 10;
            const double expected = (tenths < 0 ? -cents : cents) / 100.0;
            if (base::RoundDecimal(amount, 2) != expected)
                QFAIL(qPrintable(QString::number(amount, 'g', 17)));
        }
    }

    void RoundDecimal_roundsToTensAndDecimals_data() {
        Columns<double, int, double>();
        QTest::newRow("tens") << 125.0 << -1 << 130.0;
        QTest::newRow("hundreds up") << 950.0 << -2 << 1000.0;
        QTest::newRow("beyond the number") << 499.0 << -3 << 0.0;
        QTest::newRow("half of the next power") << 500.0 << -3 << 1000.0;
        QTest::newRow("far beyond") << 500.0 << -5 << 0.0;
        QTest::newRow("money half") << 0.00005 << 4 << 0.0001;
        QTest::newRow("large money") << 922337203685477.58 << 4 << 922337203685478.0;
        QTest::newRow("more decimals than digits") << 1.25 << 20 << 1.25;
    }

    void RoundDecimal_roundsToTensAndDecimals() {
        auto [number, decimals, rounded] = Fetch<double, int, double>();
        QCOMPARE(base::RoundDecimal(number, decimals), rounded);
        QCOMPARE(base::RoundDecimal(-number, decimals), -rounded);
    }

    void ToInt16_roundsHalvesToEvenAndRefusesTheRest() {
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

    void IsNumeric_tellsAdmissionFromVisit_data() {
        Columns<QString, bool>();
        QTest::newRow("admission") << u"2026001234"_s << true;
        QTest::newRow("visit") << u"A20260012B"_s << false;
        QTest::newRow("walk-in") << u"T123C"_s << false;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("blanks") << u"   "_s << false;
        QTest::newRow("blanks around") << u" 12 "_s << true;
        QTest::newRow("blank inside") << u"1 2"_s << false;
        QTest::newRow("decimals") << u"-1.5"_s << true;
        QTest::newRow("point only") << u"-."_s << false;
        QTest::newRow("exponent") << u"1e5"_s << true;
        QTest::newRow("open exponent") << u"1e"_s << false;
        QTest::newRow("letter behind") << u"123B"_s << false;
    }

    void IsNumeric_tellsAdmissionFromVisit() {
        auto [text, numeric] = Fetch<QString, bool>();
        QCOMPARE(base::IsNumeric(text), numeric);
    }

    void ProperCase_raisesFirstLettersOnly() {
        QCOMPARE(base::ProperCase(u"DELA CRUZ  maria"_s), u"Dela Cruz  Maria"_s);
        QCOMPARE(base::ProperCase(u"o'BRIEN-smith ñUÑEZ"_s), u"O'brien-smith Ñuñez"_s);
    }
};

QTEST_GUILESS_MAIN(tst_Numbers)
#include "tst_Numbers.moc"
