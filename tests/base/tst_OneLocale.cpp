#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// The tests of numbers, dates, texts and searches, run on workstations of other languages.
class tst_OneLocale final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void Tests_passInEveryLocale_data();
    void Tests_passInEveryLocale();

private:
    QTemporaryDir m_locales;
};

namespace {

const QStringList kPrograms = {
    QStringLiteral("tst_Numbers"),    QStringLiteral("tst_Dates"),
    QStringLiteral("tst_Collation"),  QStringLiteral("tst_Functions"),
    QStringLiteral("tst_Statements"), QStringLiteral("tst_OdbcDriver"),
    QStringLiteral("tst_DateEdit"),   QStringLiteral("tst_EntryGrid"),
    QStringLiteral("tst_ListView"),   QStringLiteral("tst_clsRegularPatientSearch")};

/// A dotless i and a decimal comma; umlauts and a decimal comma; neither accents nor UTF-8.
struct {
    const char* Name;
    const char* Source;
    const char* Characters;
} const kMade[] = {{"tr_TR.UTF-8", "tr_TR", "UTF-8"},
                   {"de_DE.UTF-8", "de_DE", "UTF-8"},
                   {"de_DE.ISO-8859-1", "de_DE", "ISO-8859-1"}};

QString OutputOf(const QString& program, const QStringList& arguments,
                 const QProcessEnvironment& environment, int* status) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.waitForFinished(300'000);
    *status = process.error() == QProcess::UnknownError ? process.exitCode() : -1;
    return QString::fromUtf8(process.readAll());
}

}  // namespace

void tst_OneLocale::initTestCase() {
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const auto& made : kMade) {
        int status = 0;
        const QString folder = m_locales.filePath(QLatin1String(made.Name));
        OutputOf(QStringLiteral("localedef"),
                 {QStringLiteral("-i"), QLatin1String(made.Source), QStringLiteral("-f"),
                  QLatin1String(made.Characters), folder},
                 environment, &status);
        environment.insert(QStringLiteral("LOCPATH"), m_locales.path());
        environment.insert(QStringLiteral("LC_ALL"), QLatin1String(made.Name));
        QCOMPARE(
            OutputOf(QStringLiteral("locale"), {QStringLiteral("charmap")}, environment, &status),
            QLatin1String(made.Characters) + u'\n');
    }
}

void tst_OneLocale::Tests_passInEveryLocale_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("program");
    QStringList locales{QString(), QStringLiteral("C")};
    for (const auto& made : kMade)
        locales << QLatin1String(made.Name);
    for (const QString& locale : locales)
        for (const QString& program : kPrograms)
            QTest::addRow("%s %s", qPrintable(locale), qPrintable(program)) << locale << program;
}

void tst_OneLocale::Tests_passInEveryLocale() {
    QFETCH(QString, locale);
    QFETCH(QString, program);
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"LANG", "LANGUAGE", "LC_ALL", "LC_CTYPE"})
        environment.remove(QLatin1String(name));
    environment.insert(QStringLiteral("LOCPATH"), m_locales.path());
    if (!locale.isEmpty())
        environment.insert(QStringLiteral("LC_ALL"), locale);
    int status = 0;
    const QString output =
        OutputOf(QCoreApplication::applicationDirPath() + u'/' + program, {}, environment, &status);
    QVERIFY2(status == 0, qPrintable(output));
    QVERIFY2(!output.contains(QStringLiteral("Detected locale")), qPrintable(output));
}

QTEST_GUILESS_MAIN(tst_OneLocale)
#include "tst_OneLocale.moc"
