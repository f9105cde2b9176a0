#include "base/Collation.h"

#include <QtTest>
#include <random>

#include "Rows.h"

using namespace Qt::StringLiterals;

namespace {

int Sign(int order) {
    return (order > 0) - (order < 0);
}

int Compare(const std::string& left, const std::string& right) {
    return Sign(base::CompareTexts(std::string_view(left), std::string_view(right)));
}

/// A row for each claim: what stands left of the sign, and right of it.
void Claim(char sign, std::initializer_list<const char*> claims) {
    for (const char* claim : claims) {
        const QString text = QString::fromUtf8(claim);
        const auto at = text.indexOf(QLatin1Char(sign));
        Row(claim, text.first(at), text.mid(at + 1), sign);
    }
}

}  // namespace

class tst_Collation : public QObject {
    Q_OBJECT

private slots:
    void CompareTexts_putsLettersBeforeAccents_data() {
        Columns<QString, QString, char>();
        // Neither case nor blanks at the end count, nor how an accent was typed.
        Claim('=',
              {"=", "dela CRUZ=Dela Cruz", "CRUZ   =cruz", "   =", "PEÑA=peña", "Pen\u0303a=Peña",
               "José =José", "Strasse=Straße", "Ω=ω", "\U00010400=\U00010428"});
        // Signs, digits, letters; accents only where all letters are the same.
        Claim('<', {" Cruz<Cruz", "Cruz<Cruzado", "9<a", "_<1", "{<A", "z<ø", "Pena<Peña",
                    "Peñ<Penb", "Peña<Penb", "Peña<Peo", "Jose<José", "eá<éa"});
    }

    void CompareTexts_putsLettersBeforeAccents() {
        auto [left, right, sign] = Fetch<QString, QString, char>();
        const int order = sign == '<' ? -1 : 0;
        QCOMPARE(Compare(left.toStdString(), right.toStdString()), order);
        QCOMPARE(Compare(right.toStdString(), left.toStdString()), -order);
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
            texts.push_back(text.toStdString());
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
        Columns<QString, QString, char>();
        // The pattern stands right of the sign; an exclamation mark in it is its escape.
        Claim('~', {"Dela Cruz~DELA cruz",
                    "Dela Cruz~dela%",
                    "~%",
                    "Dela Cruz~%la c%",
                    "Dela Cruz~d%z",
                    "aab~%ab",
                    "Cruz  ~cruz",
                    "Cruz ~cruz ",
                    "Peña~Pe_a",
                    "PEÑA~peñ%",
                    "Pen\u0303a~peñ_",
                    "b~[a-c]",
                    "B~[a-c]",
                    "á~[a-c]",
                    "x1~[^a-c]1",
                    "A20B~A[0-9][0-9]B",
                    "-~[a-]",
                    "100%~100[%]",
                    "100%~100!%",
                    "a!b~a!!b",
                    "]~[!]]"});
        Claim('/', {"Dela Cruz/Dela", "/_", "Cruz/cruz ", "Peña/Pena", "d/[a-c]", "b/[^a-c]",
                    "a/[a", "a/[]", "100x/100!%", "a/a!"});
    }

    void MatchesLike_knowsWildcardsSetsAndEscapes() {
        auto [text, pattern, sign] = Fetch<QString, QString, char>();
        const char32_t escape = pattern.contains(u'!') ? U'!' : 0;
        QCOMPARE(base::MatchesLike(text.toStdString(), pattern.toStdString(), escape), sign == '~');
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

    void LikePrefix_endsAtTheFirstWildcard() {
        const std::tuple<const char*, char32_t, std::string> prefixes[] = {
            {"Cru%z", 0, "Cru"},         {"_ru", 0, ""},
            {"A[0-9]", 0, "A"},          {"Peña", 0, "Peña"},
            {"50!%!!x%", U'!', "50%!x"}, {"50!", U'!', "50"}};
        for (const auto& [pattern, escape, prefix] : prefixes)
            QCOMPARE(base::LikePrefix(pattern, escape), prefix);
    }

    void ToUpper_knowsAccentsAndKeepsLengths() {
        QCOMPARE(base::ToUpper("Peña straße \xFF"), std::string("PEÑA STRAßE \xFF"));
        QCOMPARE(base::ToLower("PEÑA Ω"), std::string("peña ω"));
    }
};

QTEST_GUILESS_MAIN(tst_Collation)
#include "tst_Collation.moc"
