#include <sqlite3.h>

#include <QtTest>

#include "embedded/Functions.h"

using namespace Qt::StringLiterals;

// What no statement shows: the ends of a search and the calendar over centuries.
class tst_Functions : public QObject {
    Q_OBJECT

private slots:
    void init() {
        QCOMPARE(sqlite3_open(":memory:", &m_database), SQLITE_OK);
        embedded::RegisterFunctions(m_database);
    }

    void cleanup() { sqlite3_close(m_database); }

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
        const QString plan = Ask(
            u"EXPLAIN QUERY PLAN SELECT name FROM t WHERE name BETWEEN t_low(?1) AND t_high(?1) "
            "AND t_like(?1, name)"_s,
            3);
        QVERIFY2(plan.startsWith(u"SEARCH"_s), qPrintable(plan));
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
    /// Of the first row, the column as text.
    QString Ask(const QString& query, int column = 0) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(m_database, query.toUtf8().constData(), -1, &statement, nullptr);
        sqlite3_step(statement);
        const auto* text = sqlite3_column_text(statement, column);
        const QString answer = QString::fromUtf8(reinterpret_cast<const char*>(text));
        sqlite3_finalize(statement);
        return answer;
    }

    sqlite3* m_database = nullptr;
};

QTEST_GUILESS_MAIN(tst_Functions)
#include "tst_Functions.moc"
