#include "base/Numbers.h"

#include <QtTest>

#include "base/Errors.h"
#include "base/Texts.h"

using namespace Qt::StringLiterals;

/// The error's number and text.
static QByteArray Refused(const std::function<void()>& act) {
    try {
        act();
    } catch (const base::RuntimeError& error) {
        return QByteArray::number(error.Number()) + ' ' + error.what();
    }
    return {};
}

class tst_Numbers : public QObject {
    Q_OBJECT

private slots:
    void Val_readsTheLeadingNumber() {
        using Read = std::pair<const char*, double>;
        for (const auto& [text, number] :
             {Read{"", 0}, Read{"abc12", 0}, Read{"12.5 mg", 12.5}, Read{"  1 615 ml", 1615},
              Read{"1.2.3", 1.2}, Read{"1,250.00", 1}, Read{"-3.5", -3.5}, Read{"+4", 4},
              Read{"--4", 0}, Read{".5", 0.5}, Read{".", 0}, Read{"2e3x", 2000}, Read{"25E-1", 2.5},
              Read{"1D2", 100}, Read{"7e", 7}, Read{"1e2.5", 100}, Read{"1e-999", 0}})
            QVERIFY2(base::Val(QLatin1String(text)) == number, text);
        QCOMPARE(Refused([] { base::Val(u"1e999"_s); }), "6 Overflow");
    }

    void PlainText_showsFifteenDigitsWithoutExponent() {
        using Shown = std::pair<double, const char*>;
        for (const auto& [number, text] :
             {Shown{0, "0"}, Shown{-0.0, "0"}, Shown{1500, "1500"}, Shown{12.5, "12.5"},
              Shown{0.1 + 0.2, "0.3"}, Shown{1.0 / 3, "0.333333333333333"},
              Shown{0.9999999999999999, "1"}, Shown{-0.00001234, "-0.00001234"},
              Shown{1.5e17, "150000000000000000"}, Shown{12345678901234567, "12345678901234600"},
              Shown{-1e-16, "0"}, Shown{1e-15, "0.000000000000001"}, Shown{INFINITY, ""}})
            QCOMPARE(base::PlainText(number), QLatin1String(text));
    }

    void MoneyText_roundsTheDecimalTextAwayFromZero() {
        using Shown = std::pair<double, const char*>;
        // The binary number may lie below the half that its decimal text shows.
        for (const auto& [amount, text] :
             {Shown{1.005, "1.01"}, Shown{-1.005, "-1.01"}, Shown{0, "0.00"}, Shown{-0.004, "0.00"},
              Shown{0.005, "0.01"}, Shown{0.0049, "0.00"}, Shown{999.995, "1000.00"},
              Shown{0.995, "1.00"}, Shown{2.5, "2.50"}, Shown{123456789.125, "123456789.13"},
              Shown{1e16, "10000000000000000.00"}, Shown{NAN, ""}})
            QCOMPARE(base::MoneyText(amount), QLatin1String(text));
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

    void RoundDecimal_roundsToTensAndDecimals() {
        using Rounded = std::tuple<double, int, double>;
        for (const auto& [number, decimals, rounded] :
             {Rounded{125, -1, 130}, Rounded{950, -2, 1000}, Rounded{499, -3, 0},
              Rounded{500, -3, 1000}, Rounded{500, -5, 0}, Rounded{0.00005, 4, 0.0001},
              Rounded{922337203685477.58, 4, 922337203685478}, Rounded{1.25, 20, 1.25}}) {
            QCOMPARE(base::RoundDecimal(number, decimals), rounded);
            QCOMPARE(base::RoundDecimal(-number, decimals), -rounded);
        }
    }

    void ToInt16_roundsHalvesToEvenAndRefusesTheRest() {
        using Rounded = std::pair<double, short>;
        for (const auto& [number, rounded] : {Rounded{2.5, 2}, Rounded{3.5, 4}, Rounded{-0.5, 0},
                                              Rounded{32767.4, 32767}, Rounded{-32768.5, -32768}})
            QCOMPARE(base::ToInt16(number), rounded);
        for (const double outside : {32767.5, -32769.0, 1e300, std::nan("")})
            QCOMPARE(Refused([outside = outside] { base::ToInt16(outside); }), "6 Overflow");
    }

    void IsNumeric_tellsAdmissionFromVisit() {
        for (const char* number : {"2026001234", " 12 ", "-1.5", "+.5", "1e5", "1E-5"})
            QVERIFY2(base::IsNumeric(QString::fromLatin1(number)), number);
        for (const char* text :
             {"A20260012B", "T123C", "", "   ", "1 2", "-.", "1e", "123B", "1.2.3"})
            QVERIFY2(!base::IsNumeric(QString::fromLatin1(text)), text);
    }

    void ProperCase_raisesFirstLettersOnly() {
        QCOMPARE(base::ProperCase(u"DELA CRUZ  maria"_s), u"Dela Cruz  Maria"_s);
        QCOMPARE(base::ProperCase(u"o'BRIEN-smith ñUÑEZ"_s), u"O'brien-smith Ñuñez"_s);
    }
};

QTEST_GUILESS_MAIN(tst_Numbers)
#include "tst_Numbers.moc"
