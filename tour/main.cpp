#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <functional>
#include <iostream>
#include <vector>

#include "app/Application.h"
#include "components/Registry.h"
#include "components/builtin/HospitalFiles.h"
#include "components/builtin/clsCurrentUser.h"
#include "toolkit/Theme.h"
#include "tour/CashDay.h"
#include "tour/ChargesDay.h"
#include "tour/Days.h"
#include "tour/HubDay.h"
#include "tour/RegisterDay.h"
#include "tour/ResultsDay.h"
#include "tour/ServerSource.h"
#include "tour/SlipsDay.h"
#include "tour/SummaryDay.h"
#include "tour/WardDay.h"

using components::clsCurrentUser;

namespace {

/// The day in its order. Every part but "charges" and "hub", which need a patient chosen, begins
/// and ends with the main window and its list.
struct WholeDay {
    Tour& Walked;
    Day General{Walked};
    ChargesDay Charges{Walked};
    HubDay Hub{Walked};
    ResultsDay Results{Walked};
    SummaryDay Summary{Walked};
    CashDay Cash{Walked};
    RegisterDay Register{Walked};
    SlipsDay Slips{Walked};
    WardDay Ward{Walked};

    struct Part {
        QString Name;
        std::function<void()> Walk;
    };
    std::vector<Part> Parts() {
        return {
            {QStringLiteral("find"), [this] { General.FindPatients(); }},
            {QStringLiteral("register"), [this] { Register.Walk(); }},
            {QStringLiteral("choose"), [this] { General.ChoosePatients(); }},
            {QStringLiteral("charges"), [this] { Charges.Walk(); }},
            {QStringLiteral("hub"), [this] { Hub.Walk(); }},
            {QStringLiteral("results"), [this] { Results.Walk(); }},
            {QStringLiteral("summary"), [this] { Summary.Walk(); }},
            {QStringLiteral("cash"), [this] { Cash.Walk(); }},
            {QStringLiteral("slips"), [this] { Slips.Walk(); }},
            {QStringLiteral("ward"), [this] { Ward.Walk(); }},
            {QStringLiteral("reports"), [this] { General.PrintReports(); }},
        };
    }
};

}  // namespace

// Walks a working day through the real windows: capd_tour DIR [PART ...], all parts without one.
int main(int argc, char* argv[]) {
    Application application(argc, argv);
    const QStringList arguments = application.arguments().mid(1);
    if (arguments.isEmpty() || !QDir(arguments[0]).exists()) {
        std::cerr << "usage: capd_tour DIR [PART ...]" << std::endl;
        return 2;
    }
    const QDir folder(arguments[0]);
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    toolkit::ApplyTheme(application);
    components::RegisterBuiltIns();
    components::HospitalFiles::Place(folder.filePath(QStringLiteral("hospital.db")),
                                     folder.filePath(QStringLiteral("own.db")));
    const NurseLogIn nurse =
        ServerSource::IsNamed()
            ? ServerSource::Prepare(folder)
            : NurseLogIn{{}, clsCurrentUser::kDemoUser, clsCurrentUser::kDemoPassword};
    Tour tour(folder.absolutePath());
    WholeDay day{tour};
    day.General.LogIn(nurse);
    for (const WholeDay::Part& part : day.Parts())
        if (arguments.size() == 1 || arguments.contains(part.Name))
            part.Walk();
    return tour.Walk() == 0 ? 0 : 1;
}
