#include <QAction>
#include <QCoreApplication>
#include <QDate>
#include <QDialog>
#include <QEvent>
#include <QPushButton>

#include "app/mdiCAPD.h"
#include "base/Dates.h"
#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "patients/frmPatientList.h"
#include "patients/frmRegistration.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/ListView.h"
#include "visits/frmCAPDVisit.h"

namespace bench {

namespace {

constexpr int kVisits = 1000;
constexpr int kRounds = 31;

class SeesPaint final : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        Painted = Painted || event->type() == QEvent::Paint;
        return false;
    }
    bool Painted = false;
};

void UntilPainted(QWidget& widget) {
    SeesPaint seen;
    widget.installEventFilter(&seen);
    widget.update();
    while (!seen.Painted)
        QCoreApplication::processEvents();
}

void Close(QDialog* window) {
    window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

/// The first registered patient of the list, with a thousand visits of earlier years.
QString ChoosePatient(mdiCAPD& frame, const BareSqlite& file) {
    auto* list = frame.findChild<toolkit::ListView*>();
    for (int row = 0; row < list->model()->rowCount(); ++row) {
        list->setCurrentIndex(list->model()->index(row, 0));
        if (!frame.PatientList().CAPDNum().isEmpty())
            break;
    }
    const QString hospNum = frame.PatientList().HospNum();
    BareStatement visit(
        file,
        "INSERT INTO \"CLINICAL_AREA..tbCAPDLogBook\" (IdNum, HospNum, CAPDNum, TransDate, "
        "VisitDay, Diagnosis, Weight, BP, Remarks, UserID) VALUES ('A1B', ?1, '1001', ?2, ?2, "
        "'Chronic kidney disease, stage 5', ?3, ?4, 'Exit site clean and dry.', '4601')");
    const QDateTime first(QDate(2015, 1, 1), QTime(0, 0));
    for (int number = 0; number < kVisits; ++number) {
        visit.Bind(1, hospNum.toStdString());
        visit.Bind(2, base::StoredDateTime(first.addDays(number * 3)).toStdString());
        visit.Bind(3, number % 11 ? std::to_string(50 + number % 17) + ".5" : std::string());
        visit.Bind(4, number % 13 ? std::to_string(110 + number % 40) + "/80" : std::string());
        visit.Write();
    }
    return hospNum;
}

/// An empty window of the same size, and what is shown of the file read with nothing in between.
double Yardstick(const BareSqlite& file, const std::string& sql, const QString& hospNum) {
    return Milliseconds([&] {
        BareStatement rows(file, sql);
        rows.Bind(1, hospNum.toStdString());
        rows.ReadAll();
        QDialog window;
        window.resize(1120, 700);
        window.show();
        UntilPainted(window);
    });
}

struct Session {
    explicit Session(const QString& suffix)
        : Path(CopyOfDemoHospital(suffix)),
          Frame(StartSession(Path)),
          File(Path),
          HospNum(ChoosePatient(*Frame, File)) {}

    QString Path;
    std::unique_ptr<mdiCAPD> Frame;
    BareSqlite File;
    QString HospNum;
};

double OpenSheet(const mdiCAPD& frame) {
    frmRegistration* sheet = nullptr;
    const double taken = Milliseconds([&] {
        frame.findChild<QAction*>(QStringLiteral("mnuNew"))->trigger();
        sheet = frame.findChild<frmRegistration*>();
        if (!sheet)
            throw std::runtime_error("the registration sheet did not open");
        UntilPainted(*sheet);
    });
    Close(sheet);
    return taken;
}

double ViewVisits(const mdiCAPD& frame) {
    frame.findChild<QAction*>(QStringLiteral("mnuVist"))->trigger();
    auto* window = frame.findChild<frmCAPDVisit*>();
    if (!window)
        throw std::runtime_error("the visit window did not open");
    UntilPainted(*window);
    const auto* grid = window->findChild<toolkit::FlexGrid*>();
    const auto* chart = window->findChild<QAbstractScrollArea*>(QStringLiteral("chtVisits"));
    const double taken = Milliseconds([&] {
        window->findChild<QPushButton*>(QStringLiteral("cmdView"))->click();
        UntilPainted(*chart->viewport());
    });
    if (grid->Rows() - 1 < kVisits)
        throw std::runtime_error("the visits were not listed");
    Close(window);
    return taken;
}

}  // namespace

void Registration() {
    const Session session(QStringLiteral(".registration"));
    Print(AlternateTimed(
        QStringLiteral("registration-1000"), QStringLiteral("ms"), kRounds,
        [&] { return OpenSheet(*session.Frame); },
        [&] {
            return Yardstick(session.File,
                             "SELECT c.*, m.* FROM \"CLINICAL_AREA..tbCAPDPatient\" c JOIN "
                             "\"PATIENT_DATA..tbMaster\" m ON m.HospNum = c.HospNum WHERE "
                             "c.HospNum = ?1",
                             session.HospNum);
        }));
}

void VisitsChart() {
    const Session session(QStringLiteral(".visits"));
    Print(AlternateTimed(
        QStringLiteral("visits-chart-1000"), QStringLiteral("ms"), kRounds,
        [&] { return ViewVisits(*session.Frame); },
        [&] {
            return Yardstick(session.File,
                             "SELECT * FROM \"CLINICAL_AREA..tbCAPDLogBook\" WHERE HospNum = ?1 "
                             "ORDER BY VisitDay DESC",
                             session.HospNum);
        }));
}

}  // namespace bench
