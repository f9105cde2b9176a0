#include <QApplication>
#include <QFile>
#include <QMainWindow>
#include <QProcess>
#include <QTimer>
#include <cstdlib>
#include <iostream>

#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "toolkit/ListView.h"

namespace bench {

void ListLargeInChild();

namespace {

// Ends the process as soon as a widget has been painted: tidying up is not part of the start.
class EndWhenPainted final : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Paint)
            return false;
        watched->removeEventFilter(this);
        QTimer::singleShot(0, [] { std::quick_exit(0); });
        return false;
    }
};

void RunUntilPainted(QWidget* widget) {
    EndWhenPainted end;
    widget->installEventFilter(&end);
    QApplication::exec();
}

double ChildMilliseconds(const QString& child, const QString& argument) {
    return Milliseconds([&] {
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--child"), child, argument});
        if (!process.waitForFinished(60'000) || process.exitCode() != 0)
            throw std::runtime_error("a child of the bench failed: " +
                                     process.readAllStandardError().toStdString());
    });
}

void PrintPeakMemory() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        throw std::runtime_error("the system does not tell the peak memory");
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            std::cout << line.mid(6).simplified().split(' ').front().toDouble() / 1024 << std::endl;
}

}  // namespace

// From the start of the process to the first list painted, beside an empty window of this build.
void Start() {
    const QString file = DemoHospital();
    Print(AlternateTimed(
        QStringLiteral("start"), QStringLiteral("ms"), 15,
        [&file] { return ChildMilliseconds(QStringLiteral("start"), file); },
        [] { return ChildMilliseconds(QStringLiteral("empty"), QString()); }));
}

int RunChild(const QString& name, const QString& argument) {
    if (name == QStringLiteral("start")) {
        const auto frame = StartSession(argument);
        RunUntilPainted(frame->findChild<toolkit::ListView*>()->viewport());
    } else if (name == QStringLiteral("empty")) {
        QMainWindow window;
        window.resize(1280, 760);
        window.show();
        RunUntilPainted(&window);
    } else if (name == QStringLiteral("list-100k")) {
        ListLargeInChild();
        PrintPeakMemory();
    } else if (name == QStringLiteral("empty-memory")) {
        QMainWindow window;
        window.show();
        QApplication::processEvents();
        PrintPeakMemory();
    } else {
        return 2;
    }
    return 0;
}

}  // namespace bench
