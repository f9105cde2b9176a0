#pragma once

#include <linux/capability.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QProcess>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

/// Root may write to every file. For root, runs the current test function again in a process that
/// has lost this right, and returns what it printed where it failed, else an empty text. Nothing
/// where this process is such a one already: then the caller goes on.
inline std::optional<QString> RunAsOrdinaryUser() {
    const auto mark = u"CAPD_TEST_ORDINARY_USER"_s;
    if (geteuid() != 0 || qEnvironmentVariableIsSet(qPrintable(mark)))
        return std::nullopt;
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(mark, u"1"_s);
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.setChildProcessModifier([] {
        prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0);
        prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH, 0, 0, 0);
    });
    child.start(QCoreApplication::applicationFilePath(),
                {QString::fromLatin1(QTest::currentTestFunction())});
    child.waitForFinished();
    const QString output = QString::fromUtf8(child.readAll());
    return child.exitCode() == 0 ? QString() : output + child.errorString();
}
