#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <iostream>

#include "app/Application.h"
#include "components/Registry.h"
#include "components/builtin/HospitalFiles.h"
#include "toolkit/Theme.h"
#include "tour/ChargesDay.h"
#include "tour/Days.h"
#include "tour/HubDay.h"

// Walks a working day through the real windows: capd_tour DIR.
int main(int argc, char* argv[]) {
    Application application(argc, argv);
    if (argc != 2 || !QDir(QString::fromLocal8Bit(argv[1])).exists()) {
        std::cerr << "usage: capd_tour DIR" << std::endl;
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    toolkit::ApplyTheme(application);
    components::RegisterBuiltIns();
    components::HospitalFiles::Place(folder.filePath(QStringLiteral("hospital.db")),
                                     folder.filePath(QStringLiteral("own.db")));
    Tour tour(folder.absolutePath());
    Day day(tour);
    day.LogIn();
    day.FindPatients();
    day.ChoosePatients();
    ChargesDay charges(tour);
    charges.NameTheDoctor();
    charges.TypeSupplies();
    charges.TypeFees();
    charges.LeaveTheSheet();
    HubDay hub(tour);
    hub.ReadRequests();
    hub.MeetClosedAccounts();
    hub.OpenAnotherPatient();
    day.PrintReports();
    return tour.Walk() == 0 ? 0 : 1;
}
