#include <QElapsedTimer>
#include <QtTest>
#include <random>

#include "Rows.h"
#include "base/Collation.h"

using namespace Qt::StringLiterals;

namespace {

std::string Utf8(const QString& text) {
    return text.toStdString();
}

int Sign(int order) {
    return (order > 0) - (order < 0);
}

int Compare(const std::string& left, const std::string& right) {
    return Sign(base::CompareTexts(std::string_view(left), std::string_view(right)));
}

}  // namespace

class tst_Collation : public QObject {
    Q_OBJECT

private slots:
    void CompareTexts_putsLettersBeforeAccents_data() {
        Columns<QString, QString, int>();
        const auto row = [](const char* name, const char16_t* left, const char16_t* right,
                            int order) {
            QTest::newRow(name) << QString::fromUtf16(left) << QString::fromUtf16(right) << order;
        };
        row("both empty", u"", u"", 0);
        row("case", u"dela CRUZ", u"Dela Cruz", 0);
        row("trailing blanks", u"CRUZ   ", u"cruz", 0);
        row("only blanks", u"   ", u"", 0);
        row("leading blank counts", u" Cruz", u"Cruz", -1);
        row("prefix first", u"Cruz", u"Cruzado", -1);
        row("digits before letters", u"9", u"a", -1);
        row("signs before digits", u"_", u"1", -1);
        row("signs before letters", u"{", u"A", -1);
        row("accent is a difference", u"Pena", u"Peña", -1);
        row("case of accented letters", u"PEÑA", u"peña", 0);
        row("letters decide before accents", u"Peñ", u"Penb", -1);
        row("later letters outweigh an accent", u"Peña", u"Penb", -1);
        row("accent beside its letter", u"Peña", u"Peo", -1);
        row("accent apart from its letter", u"Pen\u0303a", u"Peña", 0);
        row("accent at the end", u"Jose", u"José", -1);
        row("accent at the end and a blank", u"José ", u"José", 0);
        row("first accent decides", u"éa", u"eá", 1);
        row("sharp s", u"Strasse", u"Straße", 0);
        row("letters of their own", u"z", u"ø", -1);
        row("other scripts", u"Ω", u"ω", 0);
        row("beyond the first plane", u"\U00010400", u"\U00010428", 0);
    }

    void CompareTexts_putsLettersBeforeAccents() {
        auto [left, right, order] = Fetch<QString, QString, int>();
        QCOMPARE(Compare(Utf8(left), Utf8(right)), order);
        QCOMPARE(Compare(Utf8(right), Utf8(left)), -order);
        QCOMPARE(Sign(base::CompareTexts(QStringView(left), QStringView(right))), order);
        QCOMPARE(Sign(base::CompareTexts(QStringView(right), QStringView(left))), -order);
    }

    void CompareTexts_isOneTotalOrder() {
        // An index is only as good as its order: any three texts, plain or accented, must agree.
        const QString letters = u"aAbn ñÑ\u0303éø'9"_s;
        std::mt19937 random(7);
        std::vector<std::string> texts;
        for (int i = 0; i < 160; ++i) {
            QString text;
            const int length = int(random() % 5);
            for (int k = 0; k < length; ++k)
                text += letters[qsizetype(random() % letters.size())];
            texts.push_back(Utf8(text));
        }
        texts.push_back("a\xFF");
        texts.push_back("\xC3");
        for (const std::string& a : texts) {
            for (const std::string& b : texts) {
                const int order = Compare(a, b);
                QCOMPARE(Compare(b, a), -order);
                for (const std::string& c : texts) {
                    const int onward = Compare(b, c);
                    const int whole = Compare(a, c);
                    if (order <= 0 && onward <= 0 &&
                        (whole > 0 || (order + onward < 0 && whole == 0)))
                        QFAIL((a + " / " + b + " / " + c).c_str());
                }
            }
        }
    }

    void CompareTexts_keepsMalformedBytesApart() {
        QCOMPARE(Compare("a\xFE", "a\xFF"), -1);
        QCOMPARE(Compare("a\xFF", "a\xFF"), 0);
        QCOMPARE(Compare("a\xF4\x8F\xBF\xBF", "a\x80"), -1);
    }

    void MatchesLike_knowsWildcardsSetsAndEscapes_data() {
        Columns<QString, QString, char, bool>();
        const auto row = [](const char* name, const char16_t* text, const char16_t* pattern,
                            bool matches, char escape = 0) {
            QTest::newRow(name) << QString::fromUtf16(text) << QString::fromUtf16(pattern) << escape
                                << matches;
        };
        row("same in another case", u"Dela Cruz", u"DELA cruz", true);
        row("part only", u"Dela Cruz", u"Dela", false);
        row("prefix", u"Dela Cruz", u"dela%", true);
        row("anything", u"", u"%", true);
        row("nothing for one", u"", u"_", false);
        row("inside", u"Dela Cruz", u"%la c%", true);
        row("ends", u"Dela Cruz", u"d%z", true);
        row("second try of a run", u"aab", u"%ab", true);
        row("trailing blanks left over", u"Cruz  ", u"cruz", true);
        row("trailing blanks asked for", u"Cruz", u"cruz ", false);
        row("blank wanted and there", u"Cruz ", u"cruz ", true);
        row("one accented character", u"Peña", u"Pe_a", true);
        row("accents count", u"Peña", u"Pena", false);
        row("accents in another case", u"PEÑA", u"peñ%", true);
        row("accent apart", u"Pen\u0303a", u"peñ_", true);
        row("range", u"b", u"[a-c]", true);
        row("range in capitals", u"B", u"[a-c]", true);
        row("outside the range", u"d", u"[a-c]", false);
        row("accent within a range", u"á", u"[a-c]", true);
        row("excluded", u"b", u"[^a-c]", false);
        row("not excluded", u"x1", u"[^a-c]1", true);
        row("list", u"A20B", u"A[0-9][0-9]B", true);
        row("minus at the end of a set", u"-", u"[a-]", true);
        row("percent in a set", u"100%", u"100[%]", true);
        row("set left open", u"a", u"[a", false);
        row("empty set", u"a", u"[]", false);
        row("escaped percent", u"100%", u"100!%", true, '!');
        row("escaped percent is itself", u"100x", u"100!%", false, '!');
        row("escaped escape", u"a!b", u"a!!b", true, '!');
        row("escape at the end", u"a", u"a!", false, '!');
        row("escape in a set", u"]", u"[!]]", true, '!');
    }

    void MatchesLike_knowsWildcardsSetsAndEscapes() {
        auto [text, pattern, escape, matches] = Fetch<QString, QString, char, bool>();
        QCOMPARE(base::MatchesLike(Utf8(text), Utf8(pattern), char32_t(escape)), matches);
    }

    void MatchesLike_staysQuickOnManyWildcards() {
        const std::string text(4000, 'a');
        std::string pattern;
        for (int i = 0; i < 40; ++i)
            pattern += "%a";
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!base::MatchesLike(text, pattern + "%b", 0));
        QVERIFY(base::MatchesLike(text, pattern, 0));
        QVERIFY2(timer.elapsed() < 2000, "a pattern of many wildcards takes too long");
    }

    void LikePrefix_endsAtTheFirstWildcard_data() {
        Columns<QByteArray, char, QByteArray>();
        QTest::newRow("percent") << QByteArray("Cru%z") << '\0' << QByteArray("Cru");
        QTest::newRow("underscore") << QByteArray("_ru") << '\0' << QByteArray("");
        QTest::newRow("set") << QByteArray("A[0-9]") << '\0' << QByteArray("A");
        QTest::newRow("none") << QByteArray("Peña") << '\0' << QByteArray("Peña");
        QTest::newRow("escape") << QByteArray("50!%!!x%") << '!' << QByteArray("50%!x");
        QTest::newRow("open escape") << QByteArray("50!") << '!' << QByteArray("50");
    }

    void LikePrefix_endsAtTheFirstWildcard() {
        auto [pattern, escape, prefix] = Fetch<QByteArray, char, QByteArray>();
        QCOMPARE(
            QByteArray::fromStdString(base::LikePrefix(pattern.toStdString(), char32_t(escape))),
            prefix);
    }

    void ToUpper_knowsAccentsAndKeepsLengths() {
        QCOMPARE(base::ToUpper("Peña straße \xFF"), std::string("PEÑA STRAßE \xFF"));
        QCOMPARE(base::ToLower("PEÑA Ω"), std::string("peña ω"));
    }
};

QTEST_GUILESS_MAIN(tst_Collation)
#include "tst_Collation.moc"
