#include <QTest>

#include "FakeDriver.h"
#include "Rows.h"
#include "db/CommandText.h"
#include "db/ConnectionText.h"

using namespace Qt::StringLiterals;

class tst_CommandText : public QObject {
    Q_OBJECT

private slots:
    void Call_withoutArgumentsIsItsName() { QCOMPARE(db::Call(u"p"_s), u"p"_s); }

    void Value_thatNoServerTakes_isRefused_data() {
        Columns<QString, QString>();
        QTest::newRow("NUL") << QString(u"a"_s + QChar(u'\0')) << u"U+0000"_s;
        QTest::newRow("high half") << QString(QChar(char16_t(0xD83D))) << u"U+D83D"_s;
        QTest::newRow("low half") << QString(u"é"_s + QChar(char16_t(0xDE00))) << u"U+DE00"_s;
        QTest::newRow("halves apart")
            << QString(QString(QChar(char16_t(0xD83D))) + QLatin1Char('x')) << u"U+D83D"_s;
    }

    void Value_thatNoServerTakes_isRefused() {
        auto [value, named] = Fetch<QString, QString>();
        for (const auto& build : std::vector<std::function<QString()>>{
                 [&] { return db::Quoted(value); }, [&] { return db::Call(u"p"_s, {value}); },
                 [&] {
                     return db::FromTemplate(u"'#'"_s, {{u"#"_s, value}});
                 }})
            QVERIFY(ErrorOf(build).Description().contains(named));
    }

    void Template_replacesEachPlaceholderOnce_data() {
        Columns<QString, QString, QString, QString>();
        const QString two = u"p '#1','#2','#1'"_s;
        QTest::newRow("every occurrence") << two << u"a"_s << u"b"_s << u"p 'a','b','a'"_s;
        QTest::newRow("quotes") << two << u"D'Or"_s << QString() << u"p 'D''Or','','D''Or'"_s;
        QTest::newRow("placeholder in a value")
            << two << u"#2"_s << u"#1"_s << u"p '#2','#1','#2'"_s;
        QTest::newRow("unused") << u"p '#3'"_s << u"a"_s << QString() << u"p '#3'"_s;
    }

    void Template_replacesEachPlaceholderOnce() {
        auto [text, first, second, command] = Fetch<QString, QString, QString, QString>();
        QCOMPARE(db::FromTemplate(text, {{u"#1"_s, first}, {u"#2"_s, second}}), command);
    }

    void LogOn_isTakenOutOfTheString_data() {
        Columns<QString, QString, QString>();
        QTest::newRow("none") << u"DSN=hospital; Encrypt=yes;"_s << u"DSN=hospital; Encrypt=yes;"_s
                              << QString();
        QTest::newRow("plain") << u"DSN=h;uid=ana;PWD=secret;X=1"_s << u"DSN=h;X=1"_s
                               << u"secret"_s;
        QTest::newRow("braces") << u"User ID=a;Password = {a;b}}c} ;DSN={x;UID=y}"_s
                                << u"DSN={x;UID=y}"_s << u"a;b}c"_s;
        QTest::newRow("unclosed") << u"DSN=h;PWD={sec;ret"_s << u"DSN=h"_s << u"sec;ret"_s;
        QTest::newRow("no key") << u"junk;PWD=s"_s << u"junk"_s << u"s"_s;
    }

    void LogOn_isTakenOutOfTheString() {
        auto [text, kept, password] = Fetch<QString, QString, QString>();
        QCOMPARE(db::WithoutLogOn(text), kept);
        QCOMPARE(db::LogOnOf(text).Password, password);
    }

    void Secrets_areBlottedOut() {
        QCOMPARE(
            db::WithoutSecrets(u"Login failed for user 'Sa' (salt, p.w)."_s, {u"sa"_s, u"p.w"_s}),
            u"Login failed for user '***' (salt, ***)."_s);
        QCOMPARE(db::WithoutSecrets(u"No server."_s, {}), u"No server."_s);
    }
};

QTEST_GUILESS_MAIN(tst_CommandText)
#include "tst_CommandText.moc"
