#include <QProcess>
#include <QTest>

#include "Rows.h"

/// The programs as they are called from a shell, without a display.
class tst_Programs final : public QObject {
    Q_OBJECT

private slots:
    void Call_endsAsSaid_data() {
        Columns<QString, QStringList, int, QString, QString>();
        const auto row = [](const char* call, int status, const char* output, const char* error) {
            QStringList words = QString::fromLatin1(call).split(u' ');
            const QString program = words.takeFirst();
            QTest::newRow(call) << program << words << status << QString::fromLatin1(output)
                                << QString::fromLatin1(error);
        };
        row("capd --help", 0, "Options:", "");
        row("capd --version", 0, "capd 1", "");
        row("capd --nope", 2, "", "capd: Unknown option 'nope'. See --help.\n");
        row("capd ward", 2, "", "capd: Unexpected argument 'ward'. See --help.\n");
        row("capd", 1, "", "capd: no display can be reached (DISPLAY or WAYLAND_DISPLAY).\n");
        row("capd-deploy --help", 0, "--dry-run", "");
        row("capd-deploy", 2, "", "capd-deploy: A connection string is missing. See --help.\n");
        row("capd-deploy a b", 2, "", "capd-deploy: Unexpected argument 'b'. See --help.\n");
    }

    void Call_endsAsSaid() {
        auto [program, arguments, status, output, error] =
            Fetch<QString, QStringList, int, QString, QString>();
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(QLatin1String(name));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationDirPath() + u'/' + program, arguments);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), status);
        QCOMPARE(QString::fromUtf8(process.readAllStandardError()), error);
        const QString printed = QString::fromUtf8(process.readAllStandardOutput());
        QVERIFY2(printed.contains(output) && printed.isEmpty() == output.isEmpty(),
                 qPrintable(printed));
    }
};

QTEST_GUILESS_MAIN(tst_Programs)
#include "tst_Programs.moc"
