#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <algorithm>
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

using namespace Qt::StringLiterals;
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
            {u"find"_s, [this] { General.FindPatients(); }},
            {u"register"_s, [this] { Register.Walk(); }},
            {u"choose"_s, [this] { General.ChoosePatients(); }},
            {u"charges"_s, [this] { Charges.Walk(); }},
            {u"hub"_s, [this] { Hub.Walk(); }},
            {u"results"_s, [this] { Results.Walk(); }},
            {u"summary"_s, [this] { Summary.Walk(); }},
            {u"cash"_s, [this] { Cash.Walk(); }},
            {u"slips"_s, [this] { Slips.Walk(); }},
            {u"ward"_s, [this] { Ward.Walk(); }},
            {u"reports"_s, [this] { General.PrintReports(); }},
        };
    }
};

// Compares a file that the tour wrote with the one in the docs; prints the first line that differs.
bool IsAsInDocs(const QDir& docs, const QDir& folder, const QString& name) {
    const auto lines = [&](const QDir& of) {
        QFile file(of.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QByteArrayList();
    };
    const QByteArrayList known = lines(docs), found = lines(folder);
    const auto [line, other] =
        std::mismatch(known.begin(), known.end(), found.begin(), found.end());
    if (line == known.end() && other == found.end())
        return true;
    std::cout << "FAILED " << name.toStdString() << ", line " << line - known.begin() + 1
              << "\n  known: " << (line == known.end() ? "" : line->constData())
              << "\n  sent:  " << (other == found.end() ? "" : other->constData()) << std::endl;
    return false;
}

}  // namespace

// Walks a working day through the real windows.
//   capd_tour DIR [PART ...]  pictures into DIR; all parts without one
//   capd_tour --check DOCS    the whole day, quickly; its commands are held against those in DOCS
int main(int argc, char* argv[]) {
    Application application(argc, argv);
    QStringList arguments = application.arguments().mid(1);
    const bool check = arguments.removeOne(u"--check"_s);
    if (arguments.isEmpty() || !QDir(arguments[0]).exists()) {
        std::cerr << "usage: capd_tour DIR [PART ...] | --check DOCS" << std::endl;
        return 2;
    }
    const QTemporaryDir settings;
    const QDir folder(check ? settings.path() : QDir(arguments[0]).absolutePath());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    toolkit::ApplyTheme(application);
    components::RegisterBuiltIns();
    components::HospitalFiles::Place(folder.filePath(u"hospital.db"_s),
                                     folder.filePath(u"own.db"_s));
    const NurseLogIn nurse =
        ServerSource::IsNamed()
            ? ServerSource::Prepare(folder)
            : NurseLogIn{{}, clsCurrentUser::kDemoUser, clsCurrentUser::kDemoPassword};
    Tour tour(folder.path(), check);
    WholeDay day{tour};
    day.General.LogIn(nurse);
    for (const WholeDay::Part& part : day.Parts())
        if (arguments.size() == 1 || arguments.contains(part.Name))
            part.Walk();
    int failed = tour.Walk();
    if (check && !ServerSource::IsNamed())
        for (const QString& name : {u"round-trips.md"_s, u"commands.md"_s})
            failed += IsAsInDocs(arguments[0], folder, name) ? 0 : 1;
    return failed == 0 ? 0 : 1;
}
