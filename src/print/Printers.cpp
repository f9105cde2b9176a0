#include "print/Printers.h"

#include <QCoreApplication>
#include <QPrinter>
#include <QPrinterInfo>
#include <chrono>
#include <future>
#include <thread>

#include "print/ReportOutput.h"

namespace print::Printers {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestLookUp = 3s;
constexpr auto kLongestGoodbye = 5s;

std::function<QStringList()> g_names;

/// A job begun just before the program is closed still gets a moment to reach the printer.
void AwaitAtExit(std::shared_future<void> done) {
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, qApp,
                     [done] { done.wait_for(kLongestGoodbye); });
}

}  // namespace

std::optional<QStringList> Names() {
    // A thread that never comes back is left behind with what it owns.
    std::promise<QStringList> promise;
    std::future<QStringList> names = promise.get_future();
    std::thread([promise = std::move(promise),
                 lookUp = g_names ? g_names : &QPrinterInfo::availablePrinterNames]() mutable {
        promise.set_value(lookUp());
    }).detach();
    if (names.wait_for(kLongestLookUp) != std::future_status::ready)
        return {};
    return names.get();
}

void Replace(std::function<QStringList()> names) {
    g_names = std::move(names);
}

void Start(std::shared_ptr<const ReportPages> pages, std::shared_ptr<QPrinter> printer, int first,
           int last, std::function<void(const QString& what)> failed) {
    std::promise<void> finished;
    AwaitAtExit(finished.get_future().share());
    std::thread([=, finished = std::move(finished)]() mutable {
        const QString fault = PrintPages(*pages, *printer, first, last);
        printer.reset();
        if (!fault.isEmpty())
            QMetaObject::invokeMethod(qApp, [failed, fault] { failed(fault); });
        finished.set_value();
    }).detach();
}

}  // namespace print::Printers
