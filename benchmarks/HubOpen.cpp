#include <QDateTime>
#include <QFile>
#include <QTest>

#include "app/mdiCAPD.h"
#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "hub/frmFinal.h"
#include "patients/frmPatientList.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/ListView.h"

namespace bench {

namespace {

constexpr int kRequests = 500;
constexpr double kFrameMilliseconds = 1000.0 / 60;

// Today's visits, as the frame lists them first, each with 500 requests; four of five processed.
void WriteRequests(const BareSqlite& file, const QString& idNum) {
    BareStatement request(
        file,
        "INSERT INTO \"STATION..tbNurseLogBook\" (HospNum, IdNum, PatientType, ItemCode, "
        "ItemName, Amount, Quantity, RequestDate, DeptID, RecordStatus, RequestedBy, Station) "
        "VALUES ('1', ?1, 'O', '1001', ?2, 10, 1, '2026-01-01 08:00:00.000', 'PH', ?3, "
        "'4601', 'CAPD')");
    for (int number = 0; number < kRequests; ++number) {
        request.Bind(1, idNum.toStdString());
        request.Bind(2, "Dialysis solution, bag " + std::to_string(number));
        request.Bind(3, number % 5 == 0 ? " " : "X");
        request.Write();
    }
}

int Listed(const QWidget& hub, const char* grid) {
    return hub.findChild<toolkit::FlexGrid*>(QLatin1String(grid))->Rows() - 1;
}

// From Enter in the patient list until every window has been painted.
double OpenHub(const mdiCAPD& frame) {
    auto* list = frame.findChild<toolkit::ListView*>();
    const double taken = Milliseconds([&] {
        QTest::keyClick(list, Qt::Key_Return);
        QCoreApplication::processEvents();
    });
    auto* hub = frame.findChild<frmFinal*>();
    if (!hub || Listed(*hub, "mshflexProcessed0") + Listed(*hub, "mshflexProcessed1") < kRequests)
        throw std::runtime_error("the hub did not list its requests");
    hub->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    return taken;
}

}  // namespace

void HubOpen() {
    const QString path = DemoHospital() + QStringLiteral(".hub");
    QFile::remove(path);
    if (!QFile::copy(DemoHospital(), path))
        throw std::runtime_error("the demo hospital could not be copied");
    const auto frame = StartSession(path);
    const BareSqlite file(path);
    frame->findChild<toolkit::ListView*>()->setCurrentIndex(
        frame->findChild<toolkit::ListView*>()->model()->index(0, 0));
    WriteRequests(file, frame->PatientList().IdNum());
    Print(AlternateTimed(
        QStringLiteral("hub-open"), QStringLiteral("ms"), 31, [&frame] { return OpenHub(*frame); },
        [] { return kFrameMilliseconds; }));
}

}  // namespace bench
