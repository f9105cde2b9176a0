#include <QCryptographicHash>
#include <QDirIterator>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMilliseconds = 900000;

QString ReadByTheOther(const QStringList& paths) {
    QProcess reader;
    reader.setProcessChannelMode(QProcess::MergedChannels);
    reader.start(QStringLiteral(CAPD_TEST_DIR "/read_tsql.py"), paths);
    if (!reader.waitForFinished(kPatienceMilliseconds))
        return u"The reader did not come to an end: "_s + reader.errorString();
    const QString output = QString::fromUtf8(reader.readAll()).trimmed();
    const bool ended = reader.exitStatus() == QProcess::NormalExit;
    return ended && reader.exitCode() == 0 ? QString() : output + u" (failed)"_s;
}

}  // namespace

/// The server's scripts, read by a T-SQL parser that knows nothing of this program's own.
class tst_ServerLint : public QObject {
    Q_OBJECT

private slots:
    void Slip_isSeen() {
        const QTemporaryDir folder;
        QFile script(folder.filePath(u"slip.sql"_s));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("USE BILLING\nGO\n\nSELECT a FROM FROM tbSlip WHERE\nGO\n");
        script.close();
        const QString fault = ReadByTheOther({script.fileName()});
        QVERIFY2(fault.contains(u"slip.sql:4: "_s), qPrintable(fault));
    }

    // What has passed once is remembered in the build tree by its text; the demo hospital's long
    // lists are read in the long run only.
    void Scripts_areTransactSql() {
        const QDir passed(QCoreApplication::applicationDirPath() + u"/../linted"_s);
        QVERIFY(passed.mkpath(u"."_s));
        QStringList paths;
        QStringList marks;
        QDirIterator files(QStringLiteral(CAPD_SOURCE_DIR "/server"), {u"*.sql"_s}, QDir::Files,
                           QDirIterator::Subdirectories);
        int seen = 0;
        while (files.hasNext()) {
            const QString path = files.next();
            if (path.contains(u"/demo/"_s) && !qEnvironmentVariableIsSet("CAPD_STRESS"))
                continue;
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString mark = QString::fromLatin1(
                QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256).toHex());
            ++seen;
            if (passed.exists(mark))
                continue;
            paths << file.fileName();
            marks << passed.filePath(mark);
        }
        QVERIFY(seen > 50);
        if (paths.isEmpty())
            return;
        QCOMPARE(ReadByTheOther(paths), QString());
        for (const QString& mark : marks)
            QVERIFY(QFile(mark).open(QIODevice::WriteOnly));
    }
};

QTEST_GUILESS_MAIN(tst_ServerLint)
#include "tst_ServerLint.moc"
