#include <QFile>
#include <iostream>

#include "app/Application.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "toolkit/Theme.h"

namespace {

int Run(const QStringList& names, bool large) {
    if (large)
        bench::MakeLargeHospital();
    int ran = 0;
    for (const bench::Measure& measure : bench::AllMeasures()) {
        const bool asked = names.contains(measure.Name);
        if (asked || (names.isEmpty() && (large || !measure.Large))) {
            measure.Run();
            ++ran;
        }
    }
    if (ran == 0 || (!names.isEmpty() && ran != names.size())) {
        std::cerr << "bench: no such measure; there are:";
        for (const bench::Measure& measure : bench::AllMeasures())
            std::cerr << ' ' << measure.Name.toStdString() << (measure.Large ? " (--large)" : "");
        std::cerr << std::endl;
        return 2;
    }
    return 0;
}

}  // namespace

int main(int argc, char* argv[]) {
    Application application(argc, argv);
    toolkit::ApplyTheme(application);
    QStringList arguments = application.arguments().mid(1);
    try {
        if (arguments.size() == 3 && arguments.front() == QStringLiteral("--child"))
            return bench::RunChild(arguments[1], arguments[2]);
        const bool large = arguments.removeAll(QStringLiteral("--large")) > 0;
        return Run(arguments, large);
    } catch (const std::exception& error) {
        std::cerr << "bench: " << error.what() << std::endl;
        return 1;
    }
}
