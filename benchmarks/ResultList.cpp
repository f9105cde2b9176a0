#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include "app/mdiCAPD.h"
#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "hub/ResultTabs.h"
#include "hub/frmFinal.h"
#include "patients/frmPatientList.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/ListView.h"

namespace bench {

namespace {

constexpr int kResults = 10'000;

// 10,000 examinations of one visit, each with a page of interpretation.
void WriteResults(const BareSqlite& file, const QString& idNum) {
    BareStatement result(file,
                         "INSERT INTO \"RADIOLOGY..tbRadResult\" (TransNum, Modality, HospNum, "
                         "IdNum, ExamName, TransDate, ResultDate, DoctorID, Interpretation) VALUES "
                         "(?1, 'U', '1', ?2, 'KIDNEYS AND BLADDER', '2026-01-01 08:00:00.000', "
                         "'2026-01-01 12:00:00.000', '110', ?3)");
    std::string text;
    while (text.size() < 1000)
        text += "Both kidneys are small with thin cortices. ";
    for (int number = 0; number < kResults; ++number) {
        result.Bind(1, "BENCH" + std::to_string(number));
        result.Bind(2, idNum.toStdString());
        result.Bind(3, text);
        result.Write();
    }
}

// From the click on the tab until its list has been painted.
double ShowResults(frmFinal& hub) {
    auto* tabs = hub.findChild<ResultTabs*>();
    tabs->setCurrentIndex(ResultTabs::Nuclear);
    QCoreApplication::processEvents();
    modGlobals::RaiseTabFlags();
    QTabBar* bar = tabs->tabBar();
    const QPoint place = bar->tabRect(ResultTabs::Ultrasound).center();
    const double taken = Milliseconds([&] {
        QTest::mouseClick(bar, Qt::LeftButton, {}, place);
        QCoreApplication::processEvents();
    });
    if (hub.findChild<toolkit::FlexGrid*>(QStringLiteral("mshflexUltra"))->Rows() <= kResults)
        throw std::runtime_error("the tab did not list the results");
    return taken;
}

}  // namespace

// Allowed: twice the bare fetching, plus one frame of 16.7 ms.
void ResultList() {
    const QString path = CopyOfDemoHospital(QStringLiteral(".results"));
    const auto frame = StartSession(path);
    const BareSqlite bare(path);
    auto* list = frame->findChild<toolkit::ListView*>();
    list->setCurrentIndex(list->model()->index(0, 0));
    const QString idNum = frame->PatientList().IdNum();
    {
        BareSqlite writer(path);
        writer.Run("BEGIN");
        WriteResults(writer, idNum);
        writer.Run("COMMIT");
    }
    QTest::keyClick(list, Qt::Key_Return);
    auto* hub = frame->findChild<frmFinal*>();
    if (!hub)
        throw std::runtime_error("the hub did not open");
    hub->findChild<QTabWidget*>(QStringLiteral("tabSSTab1"))->setCurrentIndex(1);
    QCoreApplication::processEvents();
    BareStatement statement(
        bare,
        "SELECT x.TransNum, x.ExamName, x.TransDate, x.ResultDate, d.LastName, d.FirstName, "
        "d.MiddleName, x.Interpretation FROM \"RADIOLOGY..tbRadResult\" x LEFT JOIN "
        "\"PATIENT_DATA..tbDoctor\" d ON d.DoctorID = x.DoctorID WHERE x.IdNum = ?1 AND "
        "x.Modality = 'U' ORDER BY x.TransDate DESC, x.TransNum DESC");
    statement.Bind(1, idNum.toStdString());
    Print(AlternateTimed(
        QStringLiteral("results-10k"), QStringLiteral("ms"), 15,
        [hub] { return ShowResults(*hub); },
        [&statement] {
            return Milliseconds([&statement] {
                if (statement.ReadAll() < kResults)
                    throw std::runtime_error("the yardstick read another list");
            });
        }));
}

}  // namespace bench
