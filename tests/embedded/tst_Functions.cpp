#include <sqlite3.h>

#include <QtTest>

#include "embedded/Functions.h"

using namespace Qt::StringLiterals;

namespace {

void Columns() {
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("answer");
}

void Row(const char* query, const char* answer) {
    QTest::newRow(query) << QString::fromUtf8(query) << QString::fromUtf8(answer);
}

}  // namespace

class tst_Functions : public QObject {
    Q_OBJECT

private slots:
    void init() {
        QCOMPARE(sqlite3_open(":memory:", &m_database), SQLITE_OK);
        embedded::RegisterFunctions(m_database);
    }

    void cleanup() { sqlite3_close(m_database); }

    void Texts_data() {
        Columns();
        Row("t_upper('Peña')", "PEÑA");
        Row("t_lower('PEÑA')", "peña");
        Row("t_len('Peña  ')", "4");
        Row("t_len('   ')", "0");
        Row("t_len('a😀')", "3");
        Row("t_ltrim('  a ')", "a ");
        Row("t_ltrim('   ')", "");
        Row("t_rtrim(' a  ')", " a");
        Row("t_left('Peña', 3)", "Peñ");
        Row("t_left('Peña', 30)", "Peña");
        Row("t_right('Peña', 2)", "ña");
        Row("t_right('Peña', 0)", "");
        Row("t_right('Peña', 30)", "Peña");
        Row("t_substring('Peñaranda', 3, 2)", "ña");
        Row("t_substring('abc', 0, 2)", "a");
        Row("t_substring('abc', -5, 3)", "");
        Row("t_substring('abc', 2, 9223372036854775807)", "bc");
        Row("t_substring('abc', 9, 1)", "");
        Row("t_replace('Ana and ANA', 'ana', 'x')", "x and x");
        Row("t_replace('Peña Pena', 'PENA', 'x')", "Peña x");
        Row("t_replace('aaa', 'a', 'aa')", "aaaaaa");
        Row("t_replace('abc', '', 'x')", "abc");
        Row("t_charindex('CRUZ', 'dela Cruz')", "6");
        Row("t_charindex('a', 'Peña')", "4");
        Row("t_charindex('a', 'banana', 3)", "4");
        Row("t_charindex('a', 'banana', -1)", "2");
        Row("t_charindex('a', 'banana', 7)", "0");
        Row("t_charindex('', 'banana')", "0");
        Row("t_like('dela%', 'Dela Cruz')", "1");
        Row("t_like('100!%', '100%', '!')", "1");
        Row("t_like('100!%', '1000', '!')", "0");
        Row("t_cut('Peña', 3)", "Peñ");
        Row("t_fit('Peña   ', 4, 'T.C')", "Peña");
        Row("t_fit('Peña', 4, 'T.C')", "Peña");
        Row("t_fit(12, 4, 'T.C')", "12");
        Row("'Peña' COLLATE TEXTS = 'PEÑA '", "1");
        Row("'Peña' COLLATE TEXTS = 'Pena'", "0");
    }

    void Texts() { Check(); }

    void Numbers_data() {
        Columns();
        Row("t_int(' 12 ')", "12");
        Row("t_int('')", "0");
        Row("t_int('+7')", "7");
        Row("t_int(-2.9)", "-2");
        Row("t_int_round(2.5)", "3");
        Row("t_int_round(-2.5)", "-3");
        Row("t_bigint('9223372036854775807')", "9223372036854775807");
        Row("t_bit('TRUE')", "1");
        Row("t_bit('')", "0");
        Row("t_bit(0.2)", "1");
        Row("t_money('$1,250.12345')", "1250.1235");
        Row("t_money('')", "0.0");
        Row("t_money(1.00005)", "1.0001");
        Row("t_float(' 1.5e2 ')", "150.0");
        Row("t_float('')", "0.0");
        Row("t_float('-.5')", "-0.5");
        Row("t_decimal('12.345', 5, 2)", "12.35");
        Row("t_decimal(999.994, 5, 2)", "999.99");
        Row("t_round(1.005, 2)", "1.01");
        Row("t_round(-2.5, 0)", "-3.0");
        Row("t_round(1250, -2)", "1300");
        Row("t_round(-1250, -2)", "-1300");
        Row("t_round(49, -2)", "0");
        Row("t_round(7, 2)", "7");
        Row("t_idiv(7, -2)", "-3");
        Row("t_fdiv(7, 2)", "3.5");
        Row("t_mod(-7, 2)", "-1");
        Row("t_mod(7.5, 2)", "1.5");
        Row("t_text_money(1234567.895)", "1234567.90");
        Row("t_text_money(1234567.895, 1)", "1,234,567.90");
        Row("t_text_money(-123456.5, 1)", "-123,456.50");
        Row("t_text_money(-123.5, 1)", "-123.50");
        Row("t_text_money(1.5, 2)", "1.5000");
        Row("t_text_decimal(2.5, 3)", "2.500");
        Row("t_text_float(1234567.0)", "1.23457e+006");
        Row("t_text_float(0.1)", "0.1");
        Row("t_text_float(0.00001)", "1e-005");
    }

    void Numbers() { Check(); }

    void Dates_data() {
        Columns();
        Row("t_datetime('')", "1900-01-01 00:00:00.000");
        Row("t_datetime('2/5/2026')", "2026-02-05 00:00:00.000");
        Row("t_datetime(' 2/5/2026 9:05:07 PM ')", "2026-02-05 21:05:07.000");
        Row("t_datetime('2/5/2026 12:05 AM')", "2026-02-05 00:05:00.000");
        Row("t_datetime('2/5/2026 12:05 pm')", "2026-02-05 12:05:00.000");
        Row("t_datetime('02/05/2026 21:05')", "2026-02-05 21:05:00.000");
        Row("t_datetime('2/5/49')", "2049-02-05 00:00:00.000");
        Row("t_datetime('2026-02-05')", "2026-02-05 00:00:00.000");
        Row("t_datetime('2026-02-05 09:05')", "2026-02-05 09:05:00.000");
        Row("t_datetime('2026-02-05 09:05:06.001')", "2026-02-05 09:05:06.000");
        Row("t_datetime('2026-02-05 09:05:06.002')", "2026-02-05 09:05:06.003");
        Row("t_datetime('2026-02-05 09:05:06.5')", "2026-02-05 09:05:06.500");
        Row("t_datetime('2026-02-05T09:05:06.995')", "2026-02-05 09:05:06.997");
        Row("t_datetime('2026-12-31 23:59:59.999')", "2027-01-01 00:00:00.000");
        Row("t_datetime('20260205')", "2026-02-05 00:00:00.000");
        Row("t_datetime('9:05 PM')", "1900-01-01 21:05:00.000");
        Row("t_datetime('Nov 22 2026  9:05PM')", "2026-11-22 21:05:00.000");
        Row("t_datetime(1.5)", "1900-01-02 12:00:00.000");
        Row("t_dateadd('month', 1, '2026-01-31')", "2026-02-28 00:00:00.000");
        Row("t_dateadd('yy', -2, '2028-02-29 10:00')", "2026-02-28 10:00:00.000");
        Row("t_dateadd('qq', 1, '2026-11-30')", "2027-02-28 00:00:00.000");
        Row("t_dateadd('dd', -1, '2026-03-01')", "2026-02-28 00:00:00.000");
        Row("t_dateadd('hh', -1, '2026-03-01')", "2026-02-28 23:00:00.000");
        Row("t_dateadd('ms', 2, '2026-03-01')", "2026-03-01 00:00:00.003");
        Row("t_dateadd('ss', 86400, '1899-12-31')", "1900-01-01 00:00:00.000");
        Row("t_datediff('year', '2025-12-31 23:59', '2026-01-01')", "1");
        Row("t_datediff('month', '2026-03-01', '2026-01-31')", "-2");
        Row("t_datediff('day', '2026-01-01 23:59', '2026-01-02')", "1");
        Row("t_datediff('day', '1899-12-31', '1900-01-01 12:00')", "1");
        Row("t_datediff('hour', '2026-01-01 01:59', '2026-01-01 02:00')", "1");
        Row("t_datediff('week', '2026-11-21', '2026-11-22')", "1");
        Row("t_datediff('week', '1899-12-30', '1899-12-31')", "1");
        Row("t_datediff('ms', '2026-01-01', '2026-01-01 00:00:00.007')", "7");
        Row("t_datediff('qq', '2026-03-31', '2026-04-01')", "1");
        Row("t_datepart('weekday', '2026-11-22')", "1");
        Row("t_datepart('dw', '1899-12-30')", "7");
        Row("t_datepart('dayofyear', '2028-12-31')", "366");
        Row("t_datepart('week', '2026-01-04')", "2");
        Row("t_datepart('QUARTER', '2026-11-22')", "4");
        Row("t_datepart('mi', '2026-11-22 21:05:06.997')", "5");
        Row("t_datepart('ms', '2026-11-22 21:05:06.997')", "997");
        Row("t_text_datetime('2026-11-22 21:05:06.997', 0)", "Nov 22 2026  9:05PM");
        Row("t_text_datetime('2026-11-02 00:05', 100)", "Nov  2 2026 12:05AM");
        Row("t_text_datetime('2026-11-02', 101)", "11/02/2026");
        Row("t_text_datetime('2026-11-02', 102)", "2026.11.02");
        Row("t_text_datetime('2026-11-02', 103)", "02/11/2026");
        Row("t_text_datetime('2026-11-02 21:05:06.997', 108)", "21:05:06");
        Row("t_text_datetime('2026-11-02', 110)", "11-02-2026");
        Row("t_text_datetime('2026-11-02', 111)", "2026/11/02");
        Row("t_text_datetime('2026-11-02', 112)", "20261102");
        Row("t_text_datetime('2026-11-02 21:05:06.997', 114)", "21:05:06:997");
        Row("t_text_datetime('2026-11-02 21:05:06.997', 120)", "2026-11-02 21:05:06");
        Row("t_text_datetime('2026-11-02 21:05:06.997', 121)", "2026-11-02 21:05:06.997");
    }

    void Dates() { Check(); }

    void Refusals_data() {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("answer");
        const auto beyond = [](const char* type) {
            return QByteArray(
                       "#8115:Arithmetic overflow error converting expression to data type ") +
                   type + ".";
        };
        Row("t_int('12a')",
            "#245:Conversion failed when converting the varchar value '12a' to data type int.");
        Row("t_int('1.5')",
            "#245:Conversion failed when converting the varchar value '1.5' to data type int.");
        Row("t_int('+-1')",
            "#245:Conversion failed when converting the varchar value '+-1' to data type int.");
        Row("t_int('2147483648')",
            "#248:The conversion of the varchar value '2147483648' overflowed an int column.");
        Row("t_int(2147483648)", beyond("int"));
        Row("t_int(1e300)", beyond("int"));
        Row("t_bigint('1e5')", "#8114:Error converting data type varchar to bigint.");
        Row("t_bigint(9.3e18)", beyond("bigint"));
        Row("t_bit('yes')",
            "#245:Conversion failed when converting the varchar value 'yes' to data type bit.");
        Row("t_money('12x')",
            "#235:Cannot convert a char value to money. The char value has incorrect syntax.");
        Row("t_money(1e15)", beyond("money"));
        Row("t_float('12 3')", "#8114:Error converting data type varchar to float.");
        Row("t_float('inf')", "#8114:Error converting data type varchar to float.");
        Row("t_decimal('', 5, 2)", "#8114:Error converting data type varchar to numeric.");
        Row("t_decimal(999.995, 5, 2)",
            "#8115:Arithmetic overflow error converting numeric to data type numeric.");
        Row("t_idiv(1, 0)", "#8134:Divide by zero error encountered.");
        Row("t_fdiv(1, 0.0)", "#8134:Divide by zero error encountered.");
        Row("t_mod(1, 0)", "#8134:Divide by zero error encountered.");
        Row("t_idiv(-9223372036854775807 - 1, -1)", beyond("bigint"));
        Row("t_left('a', -1)",
            "#537:Invalid length parameter passed to the LEFT or SUBSTRING function.");
        Row("t_like('a', 'a', '!!')",
            "#506:The invalid escape character \"!!\" was specified in a LIKE predicate.");
        Row("t_fit('Peñaranda', 4, 'BILLING..tbFee.Name')",
            "#2628:String or binary data would be truncated in table 'BILLING..tbFee', column "
            "'Name'. "
            "Truncated value: 'Peña'.");
        Row("t_throw(50001, 'The account is closed.')", "#50001:The account is closed.");
        for (const char* text : {"'abc'", "'1/2'", "'2026-02-05X'", "'1/2/2026 9'", "'1/2/2026 9:'",
                                 "'1-2/2026'", "'1/2/2026 9:05 XM'", "'12345678901'"}) {
            Row(qPrintable(u"t_datetime(%1)"_s.arg(QString::fromUtf8(text))),
                "#241:Conversion failed when converting date and/or time from character string.");
        }
        for (const char* text : {"'2/30/2026'", "'13/1/2026'", "'1/1/1752'", "'1/2/2026 25:00'",
                                 "'0/1/2026'", "'9999-12-31 23:59:59.999'"}) {
            Row(qPrintable(u"t_datetime(%1)"_s.arg(QString::fromUtf8(text))),
                "#242:The conversion of a varchar data type to a datetime data type resulted in an "
                "out-of-range value.");
        }
        Row("t_dateadd('day', -1, '1753-01-01')",
            "#517:Adding a value to a 'datetime' column caused an overflow.");
        Row("t_dateadd('year', 2147483647, '2026-01-01')",
            "#517:Adding a value to a 'datetime' column caused an overflow.");
        Row("t_datepart('fortnight', '2026-01-01')",
            "#155:'fortnight' is not a recognized datepart option.");
    }

    void Refusals() { Check(); }

    void AnyNull_givesNull_data() {
        QTest::addColumn<QString>("query");
        for (const char* query :
             {"t_upper(NULL)", "t_len(NULL)", "t_replace('a', 'a', NULL)", "t_charindex(NULL, 'a')",
              "t_like(NULL, 'a')", "t_low(NULL)", "t_int(NULL)", "t_money(NULL)",
              "t_round(NULL, 1)", "t_idiv(NULL, 0)", "t_datetime(NULL)",
              "t_dateadd('day', NULL, 'no date')", "t_datediff('day', NULL, 'no date')",
              "t_fit(NULL, 1, 'T.C')", "t_try('int', NULL)"})
            QTest::newRow(query) << QString::fromUtf8(query);
    }

    void AnyNull_givesNull() {
        QFETCH(QString, query);
        QCOMPARE(Ask(u"SELECT "_s + query), u"null"_s);
    }

    void Try_givesNullWhereTheConversionRefuses_data() {
        Columns();
        Row("t_try('int', '12')", "12");
        Row("t_try('int', '12x')", "null");
        Row("t_try('bigint', 'x')", "null");
        Row("t_try('bit', 'x')", "null");
        Row("t_try('money', '1,5')", "15.0");
        Row("t_try('money', 'x')", "null");
        Row("t_try('float', 'x')", "null");
        Row("t_try('decimal', '12.345', 5, 2)", "12.35");
        Row("t_try('decimal', '12345', 5, 2)", "null");
        Row("t_try('datetime', '2/30/2026')", "null");
        Row("t_try('datetime', '2/28/2026')", "2026-02-28 00:00:00.000");
    }

    void Try_givesNullWhereTheConversionRefuses() { Check(); }

    void LowAndHigh_encloseEveryMatch() {
        // What lies outside the range is never looked at: a match there would be a lost patient.
        const QStringList names{u"Pena"_s,   u"PEÑA"_s,  u"Peñas"_s,        u"pen\u0303a"_s,
                                u"Pe"_s,     u"Pe   "_s, u"Pe\U0001F600"_s, u"de la Cruz"_s,
                                u"De  la"_s, u"100%"_s,  QString()};
        const QStringList patterns{u"pe%"_s,     u"peñ%"_s, u"Pen_"_s,  u"%a"_s,  u"de %"_s,
                                   u"[a-z]e%"_s, u"pe"_s,   u"100!%"_s, QString()};
        int matches = 0;
        for (const QString& name : names) {
            for (const QString& pattern : patterns) {
                for (const char* letters : {"", "_letters"}) {
                    const QString begins =
                        u"t%1('%2')"_s.arg(QLatin1String(*letters ? letters : "_ltrim"), pattern);
                    const QString text =
                        u"SELECT t_like%1('%2', '%3', '!') || ('%3' COLLATE TEXTS "
                        "BETWEEN t_low(%4, '!') AND t_high(%4, '!'))"_s.arg(QLatin1String(letters),
                                                                            pattern, name, begins);
                    const QString answer = Ask(text);
                    QVERIFY2(answer != u"10"_s, qPrintable(text));
                    matches += answer == u"11"_s;
                }
            }
        }
        QVERIFY(matches > 50);
    }

    void LowAndHigh_letAPrefixUseTheIndex() {
        Ask(u"CREATE TABLE t(name TEXT COLLATE TEXTS) STRICT"_s);
        Ask(u"CREATE INDEX i ON t(name)"_s);
        sqlite3_stmt* statement = nullptr;
        QCOMPARE(sqlite3_prepare_v2(m_database,
                                    "EXPLAIN QUERY PLAN SELECT name FROM t WHERE name BETWEEN "
                                    "t_low(?1) AND t_high(?1) AND t_like(?1, name)",
                                    -1, &statement, nullptr),
                 SQLITE_OK);
        QCOMPARE(sqlite3_step(statement), SQLITE_ROW);
        const QByteArray plan(reinterpret_cast<const char*>(sqlite3_column_text(statement, 3)));
        sqlite3_finalize(statement);
        QVERIFY2(plan.startsWith("SEARCH"), plan.constData());
    }

    void Refusals_waitUntilTheirBranchIsTaken() {
        const QString query = u"SELECT CASE WHEN %1 THEN %2 ELSE 'fine' END"_s;
        for (const QString& refusing : {u"t_throw(50001, 'no')"_s, u"t_int('x')"_s}) {
            QCOMPARE(Ask(query.arg(u"abs(random()) < 0"_s, refusing)), u"fine"_s);
            QVERIFY(Ask(query.arg(u"1"_s, refusing)).startsWith(u'#'));
        }
    }

    void DateAdd_agreesWithTheCalendarOverCenturies() {
        const QDate first(1753, 1, 1);
        for (int days = 0; days < 3012000; days += 997) {
            const QDate date = first.addDays(days);
            const QString stored = date.toString(u"yyyy-MM-dd"_s);
            const QString query =
                u"SELECT t_dateadd('day', %1, '1753-01-01') || ' ' || "
                "t_datepart('weekday', '%2') || ' ' || t_datediff('day', '1753-01-01', '%2')"_s
                    .arg(days)
                    .arg(stored);
            QCOMPARE(
                Ask(query),
                u"%1 00:00:00.000 %2 %3"_s.arg(stored).arg(date.dayOfWeek() % 7 + 1).arg(days));
        }
    }

private:
    /// The first cell of a query as text, "null", or its error.
    QString Ask(const QString& query) {
        sqlite3_stmt* statement = nullptr;
        const QByteArray text = query.toUtf8();
        sqlite3_prepare_v2(m_database, text.constData(), -1, &statement, nullptr);
        QString answer;
        const int step = sqlite3_step(statement);
        if (step == SQLITE_ROW && sqlite3_column_type(statement, 0) == SQLITE_NULL)
            answer = u"null"_s;
        else if (step == SQLITE_ROW)
            answer =
                QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
        else if (step != SQLITE_DONE)
            answer = QString::fromUtf8(sqlite3_errmsg(m_database));
        sqlite3_finalize(statement);
        return answer;
    }

    void Check() {
        QFETCH(QString, query);
        QFETCH(QString, answer);
        QCOMPARE(Ask(u"SELECT "_s + query), answer);
    }

    sqlite3* m_database = nullptr;
};

QTEST_GUILESS_MAIN(tst_Functions)
#include "tst_Functions.moc"
