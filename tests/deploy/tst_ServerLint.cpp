#include <QCryptographicHash>
#include <QDirIterator>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int kPatienceMilliseconds = 900000;

/// One rule that asks next to nothing: what counts is whether the scripts can be read at all.
QString ReadByTheOther(const QStringList& paths) {
    QProcess reader;
    reader.setProcessChannelMode(QProcess::MergedChannels);
    reader.start(
        QStringLiteral("sqlfluff"),
        QStringList{QStringLiteral("lint"), QStringLiteral("--dialect"), QStringLiteral("tsql"),
                    QStringLiteral("--rules"), QStringLiteral("L009"), QStringLiteral("--nocolor"),
                    QStringLiteral("--disable-progress-bar"), QStringLiteral("--processes"),
                    QStringLiteral("2")} +
            paths);
    if (!reader.waitForFinished(kPatienceMilliseconds))
        return QStringLiteral("sqlfluff did not come to an end");
    static const QRegularExpression refused(
        QStringLiteral("^(== .*FAIL.*|L:.*\\bPRS\\b.*|.*Traceback.*)$"),
        QRegularExpression::MultilineOption);
    QStringList lines;
    for (const auto& match : refused.globalMatch(QString::fromUtf8(reader.readAll())))
        lines << match.captured();
    if (reader.exitStatus() != QProcess::NormalExit || (reader.exitCode() != 0 && lines.isEmpty()))
        lines << QStringLiteral("sqlfluff failed: %1").arg(reader.exitCode());
    return lines.join(u'\n');
}

}  // namespace

/// The server's scripts, read by a T-SQL parser that knows nothing of this program's own.
class tst_ServerLint : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void Slip_isSeen();
    void Scripts_areTransactSql();
};

void tst_ServerLint::initTestCase() {
    if (QStandardPaths::findExecutable(QStringLiteral("sqlfluff")).isEmpty())
        QSKIP("sqlfluff is not installed here");
}

void tst_ServerLint::Slip_isSeen() {
    const QTemporaryDir folder;
    QFile script(folder.filePath(QStringLiteral("slip.sql")));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("USE BILLING\nGO\n\nSELECT a FROM FROM tbSlip WHERE\nGO\n");
    script.close();
    QVERIFY(ReadByTheOther({script.fileName()}).contains(QStringLiteral("PRS")));
}

// It reads slowly: what has passed once is remembered in the build tree by its text, and the
// demo hospital's long lists are read in the long run only.
void tst_ServerLint::Scripts_areTransactSql() {
    const QDir passed(QCoreApplication::applicationDirPath() + QStringLiteral("/../linted"));
    QVERIFY(passed.mkpath(QStringLiteral(".")));
    QStringList paths;
    QStringList marks;
    QDirIterator files(QStringLiteral(CAPD_SOURCE_DIR "/server"), {QStringLiteral("*.sql")},
                       QDir::Files, QDirIterator::Subdirectories);
    int seen = 0;
    while (files.hasNext()) {
        const QString path = files.next();
        if (path.contains(QStringLiteral("/demo/")) && !qEnvironmentVariableIsSet("CAPD_STRESS"))
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

QTEST_GUILESS_MAIN(tst_ServerLint)
#include "tst_ServerLint.moc"
