#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "Rows.h"

using namespace Qt::StringLiterals;

/// The tests of numbers, dates, texts and searches, run on workstations of other languages.

namespace {

const QStringList kPrograms = {u"tst_Numbers"_s,    u"tst_Dates"_s,
                               u"tst_Collation"_s,  u"tst_Functions"_s,
                               u"tst_Statements"_s, u"tst_Drivers"_s,
                               u"tst_DateEdit"_s,   u"tst_EntryGrid"_s,
                               u"tst_ListView"_s,   u"tst_clsRegularPatientSearch"_s};

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

class tst_OneLocale final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const auto& made : kMade) {
            int status = 0;
            const QString folder = m_locales.filePath(QLatin1String(made.Name));
            OutputOf(u"localedef"_s,
                     {u"-i"_s, QLatin1String(made.Source), u"-f"_s, QLatin1String(made.Characters),
                      folder},
                     environment, &status);
            environment.insert(u"LOCPATH"_s, m_locales.path());
            environment.insert(u"LC_ALL"_s, QLatin1String(made.Name));
            QCOMPARE(OutputOf(u"locale"_s, {u"charmap"_s}, environment, &status),
                     QLatin1String(made.Characters) + u'\n');
        }
    }

    void Tests_passInEveryLocale_data() {
        Columns<QString, QString>();
        QStringList locales{QString(), u"C"_s};
        for (const auto& made : kMade)
            locales << QLatin1String(made.Name);
        for (const QString& locale : locales)
            for (const QString& program : kPrograms)
                QTest::addRow("%s %s", qPrintable(locale), qPrintable(program))
                    << locale << program;
    }

    void Tests_passInEveryLocale() {
        auto [locale, program] = Fetch<QString, QString>();
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"LANG", "LANGUAGE", "LC_ALL", "LC_CTYPE"})
            environment.remove(QLatin1String(name));
        environment.insert(u"LOCPATH"_s, m_locales.path());
        if (!locale.isEmpty())
            environment.insert(u"LC_ALL"_s, locale);
        int status = 0;
        const QString output = OutputOf(QCoreApplication::applicationDirPath() + u'/' + program, {},
                                        environment, &status);
        QVERIFY2(status == 0, qPrintable(output));
        QVERIFY2(!output.contains(u"Detected locale"_s), qPrintable(output));
    }

private:
    QTemporaryDir m_locales;
};

QTEST_GUILESS_MAIN(tst_OneLocale)
#include "tst_OneLocale.moc"
