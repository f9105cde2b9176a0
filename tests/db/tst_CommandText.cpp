#include <QTest>

#include "base/Errors.h"
#include "db/CommandText.h"
#include "db/ConnectionText.h"

class tst_CommandText : public QObject {
    Q_OBJECT

private slots:
    void Call_quotesEveryArgument();
    void Value_thatNoServerTakes_isRefused_data();
    void Value_thatNoServerTakes_isRefused();
    void Template_replacesEachPlaceholderOnce_data();
    void Template_replacesEachPlaceholderOnce();
    void LogOn_isTakenOutOfTheString_data();
    void LogOn_isTakenOutOfTheString();
    void LogOn_isAddedInBraces();
    void Secrets_areBlottedOut();
};

void tst_CommandText::Call_quotesEveryArgument() {
    const QString procedure = QStringLiteral("CLINICAL_AREA..sp_CAPD_GetVisits");
    QCOMPARE(db::Call(procedure), procedure);
    QCOMPARE(db::Call(procedure, {QString()}), procedure + QStringLiteral(" ''"));
    QCOMPARE(db::Call(procedure, {QStringLiteral("O'Hara"), QStringLiteral("5"),
                                  QStringLiteral("'; DELETE x --")}),
             procedure + QStringLiteral(" 'O''Hara','5','''; DELETE x --'"));
}

void tst_CommandText::Value_thatNoServerTakes_isRefused_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("named");
    QTest::newRow("NUL") << QString(QStringLiteral("a") + QChar(u'\0')) << QStringLiteral("U+0000");
    QTest::newRow("high half") << QString(QChar(char16_t(0xD83D))) << QStringLiteral("U+D83D");
    QTest::newRow("low half") << QString(QStringLiteral("é") + QChar(char16_t(0xDE00)))
                              << QStringLiteral("U+DE00");
    QTest::newRow("halves apart") << QString(QString(QChar(char16_t(0xD83D))) + QLatin1Char('x'))
                                  << QStringLiteral("U+D83D");
}

void tst_CommandText::Value_thatNoServerTakes_isRefused() {
    QFETCH(QString, value);
    QFETCH(QString, named);
    const std::vector<std::function<QString()>> builders{
        [&] { return db::Quoted(value); }, [&] { return db::Call(QStringLiteral("p"), {value}); },
        [&] {
            return db::FromTemplate(QStringLiteral("'##'"), {{QStringLiteral("##"), value}});
        }};
    for (const auto& build : builders) {
        try {
            build();
            QFAIL("not refused");
        } catch (const base::DatabaseError& error) {
            QVERIFY(error.Description().contains(named));
        }
    }
}

void tst_CommandText::Template_replacesEachPlaceholderOnce_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("command");
    const QString two = QStringLiteral("p '#1','#2','#1'");
    QTest::newRow("every occurrence")
        << two << QStringLiteral("a") << QStringLiteral("b") << QStringLiteral("p 'a','b','a'");
    QTest::newRow("quotes") << two << QStringLiteral("D'Or") << QString()
                            << QStringLiteral("p 'D''Or','','D''Or'");
    QTest::newRow("placeholder in a value") << two << QStringLiteral("#2") << QStringLiteral("#1")
                                            << QStringLiteral("p '#2','#1','#2'");
    QTest::newRow("unused") << QStringLiteral("p '#3'") << QStringLiteral("a") << QString()
                            << QStringLiteral("p '#3'");
}

void tst_CommandText::Template_replacesEachPlaceholderOnce() {
    QFETCH(QString, text);
    QFETCH(QString, first);
    QFETCH(QString, second);
    QTEST(db::FromTemplate(text, {{QStringLiteral("#1"), first}, {QStringLiteral("#2"), second}}),
          "command");
}

void tst_CommandText::LogOn_isTakenOutOfTheString_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("kept");
    QTest::addColumn<QString>("password");
    QTest::newRow("none") << QStringLiteral("DSN=hospital; Encrypt=yes;")
                          << QStringLiteral("DSN=hospital; Encrypt=yes;") << QString();
    QTest::newRow("plain") << QStringLiteral("DSN=h;uid=ana;PWD=secret;X=1")
                           << QStringLiteral("DSN=h;X=1") << QStringLiteral("secret");
    QTest::newRow("braces") << QStringLiteral("User ID=a;Password = {a;b}}c} ;DSN={x;UID=y}")
                            << QStringLiteral("DSN={x;UID=y}") << QStringLiteral("a;b}c");
    QTest::newRow("unclosed") << QStringLiteral("DSN=h;PWD={sec;ret") << QStringLiteral("DSN=h")
                              << QStringLiteral("sec;ret");
    QTest::newRow("no key") << QStringLiteral("junk;PWD=s") << QStringLiteral("junk")
                            << QStringLiteral("s");
}

void tst_CommandText::LogOn_isTakenOutOfTheString() {
    QFETCH(QString, text);
    QTEST(db::WithoutLogOn(text), "kept");
    QTEST(db::LogOnOf(text).Password, "password");
}

void tst_CommandText::LogOn_isAddedInBraces() {
    const db::LogOn logOn{QStringLiteral("ana"), QStringLiteral("a;b}c")};
    const QString text = db::WithLogOn(QStringLiteral("DSN=h"), logOn);
    QCOMPARE(text, QStringLiteral("DSN=h;UID={ana};PWD={a;b}}c}"));
    QCOMPARE(db::LogOnOf(text).Password, logOn.Password);
    QCOMPARE(db::WithLogOn(QStringLiteral("DSN=h;"), {}), QStringLiteral("DSN=h;"));
}

void tst_CommandText::Secrets_areBlottedOut() {
    QCOMPARE(db::WithoutSecrets(QStringLiteral("Login failed for user 'Sa' (salt, p.w)."),
                                {QStringLiteral("sa"), QStringLiteral("p.w")}),
             QStringLiteral("Login failed for user '***' (salt, ***)."));
    QCOMPARE(db::WithoutSecrets(QStringLiteral("No server."), {}), QStringLiteral("No server."));
}

QTEST_GUILESS_MAIN(tst_CommandText)
#include "tst_CommandText.moc"
