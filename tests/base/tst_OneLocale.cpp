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
const QStringList kMade = {u"tr_TR.UTF-8"_s, u"de_DE.UTF-8"_s, u"de_DE.ISO-8859-1"_s};

}  // namespace

class tst_OneLocale final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        for (const QString& made : kMade) {
            const QString characters = made.section(u'.', 1);
            OutputOf(
                u"localedef"_s,
                {u"-i"_s, made.section(u'.', 0, 0), u"-f"_s, characters, m_locales.filePath(made)},
                {});
            QCOMPARE(OutputOf(u"locale"_s, {u"charmap"_s}, made), characters + u'\n');
        }
    }

    void Tests_passInEveryLocale_data() {
        Columns<QString, QString>();
        for (const QString& locale : QStringList{{}, u"C"_s} + kMade)
            for (const QString& program : kPrograms)
                Row(qPrintable(locale + u' ' + program), locale, program);
    }

    void Tests_passInEveryLocale() {
        auto [locale, program] = Fetch<QString, QString>();
        const QString output =
            OutputOf(QCoreApplication::applicationDirPath() + u'/' + program, {}, locale);
        QVERIFY2(m_status == 0, qPrintable(output));
        QVERIFY2(!output.contains(u"Detected locale"_s), qPrintable(output));
    }

private:
    QString OutputOf(const QString& program, const QStringList& arguments, const QString& locale) {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"LANG", "LANGUAGE", "LC_ALL", "LC_CTYPE"})
            environment.remove(QLatin1String(name));
        environment.insert(u"LOCPATH"_s, m_locales.path());
        if (!locale.isEmpty())
            environment.insert(u"LC_ALL"_s, locale);
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, arguments);
        process.waitForFinished(300'000);
        m_status = process.error() == QProcess::UnknownError ? process.exitCode() : -1;
        return QString::fromUtf8(process.readAll());
    }

    QTemporaryDir m_locales;
    int m_status = 0;
};

QTEST_GUILESS_MAIN(tst_OneLocale)
#include "tst_OneLocale.moc"
