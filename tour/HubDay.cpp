#include "tour/HubDay.h"

#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include "app/mdiCAPD.h"
#include "db/Recordset.h"
#include "hub/frmFinal.h"
#include "patients/frmPatientList.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/ListView.h"

namespace {

const QString kHasRequests = QStringLiteral(
    "v.BillingDate IS NULL AND EXISTS (SELECT 1 FROM STATION..tbNurseLogBook r WHERE r.IdNum = "
    "v.IdNum AND "
    "r.RecordStatus = ' ')");
const QString kIsClosed = QStringLiteral("v.BillingDate IS NOT NULL");
const QString kIsOpen = QStringLiteral("v.BillingDate IS NULL");

bool Holds(const QString& condition, const QString& idNum) {
    return !Tour::Ask(QStringLiteral("SELECT v.IdNum FROM PATIENT_DATA..tbOutPatient v WHERE "
                                     "v.IdNum = '%1' AND %2")
                          .arg(idNum, condition))
                ->Eof();
}

}  // namespace

frmPatientList& HubDay::Patients() const {
    return *Tour::Find<frmPatientList>("frmPatientList");
}

void HubDay::ExpectHubOfChosen() {
    const auto* hub = Tour::Find<frmFinal>("frmFinal");
    m_tour.Expect(hub->isVisible() && hub->isAncestorOf(QApplication::focusWidget()),
                  QStringLiteral("the hub is not in front"));
    m_tour.Expect(hub->HospNum() == Patients().HospNum(),
                  QStringLiteral("the hub shows another patient"));
}

void HubDay::OpenFirst(const QString& condition) {
    m_tour.Expect(Tour::Find<toolkit::ListView>("lvwSearchPatient")->hasFocus(),
                  QStringLiteral("the patient list has not the keys"));
    Tour::Press(Qt::Key_Home);
    const int rows = Tour::Find<toolkit::ListView>("lvwSearchPatient")->model()->rowCount();
    for (int row = 1; row < rows && !Holds(condition, Patients().IdNum()); ++row)
        Tour::Press(Qt::Key_Down);
    m_tour.Expect(Holds(condition, Patients().IdNum()),
                  QStringLiteral("there is no such patient in the list"));
    Tour::Press(Qt::Key_Return);
}

void HubDay::GoToTab(const char* tabs, int tab) {
    QTabBar* bar = Tour::Find<QTabWidget>(tabs)->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
}

void HubDay::Walk() {
    ReadRequests();
    MeetClosedAccounts();
    OpenAnotherPatient();
}

void HubDay::ReadRequests() {
    m_tour.Quietly(QStringLiteral("hub left by Esc"), [] { Tour::Press(Qt::Key_Escape); });
    m_tour.Step(QStringLiteral("hub with open requests"), [this] { OpenFirst(kHasRequests); });
    m_tour.Quietly(QStringLiteral("requests are read"), [this] {
        ExpectHubOfChosen();
        for (const char* grid : {"mshflexProcessed0", "mshflexProcessed1"})
            m_tour.Expect(!Tour::Find<toolkit::FlexGrid>(grid)->TextMatrix(1, 1).isEmpty(),
                          QStringLiteral("no request is listed"));
    });
    m_tour.Step(QStringLiteral("results of the patient"), [this] {
        GoToTab("tabSSTab1", 1);
        GoToTab("tabSSTab2", 3);
        m_tour.Expect(Tour::Find<QTabWidget>("tabSSTab2")->currentIndex() == 3,
                      QStringLiteral("the tab stayed"));
    });
    m_tour.Quietly(QStringLiteral("back to the requests"), [this] { GoToTab("tabSSTab1", 0); });
    m_tour.Step(QStringLiteral("charges asked for"), [] {
        Tour::Find<QPushButton>("cmdPostCharges")->setFocus();
        Tour::Press(Qt::Key_Return);
    });
    m_tour.Quietly(QStringLiteral("charges left"), [this] {
        QWidget* charges = QApplication::activeModalWidget();
        m_tour.Expect(charges != nullptr, QStringLiteral("the charges did not open"));
        charges->close();
    });
    m_tour.Quietly(QStringLiteral("next patient"), [] { Tour::Press(Qt::Key_N, Qt::AltModifier); });
}

void HubDay::MeetClosedAccounts() {
    m_tour.Quietly(QStringLiteral("closed account opened"), [this] { OpenFirst(kIsClosed); });
    m_tour.Step(QStringLiteral("closed account is told"), [this] {
        m_tour.Expect(QApplication::activeModalWidget() != nullptr, QStringLiteral("no message"));
    });
    m_tour.Quietly(QStringLiteral("closed account read"), [] { Tour::Press(Qt::Key_Return); });
    m_tour.Step(QStringLiteral("hub of a closed account"), [this] {
        ExpectHubOfChosen();
        m_tour.Expect(!Tour::Find<QTabWidget>("tabSSTab1")->isTabEnabled(0),
                      QStringLiteral("charges can be posted"));
    });
    m_tour.Quietly(QStringLiteral("closed account left"), [] { Tour::Press(Qt::Key_Escape); });
}

void HubDay::OpenAnotherPatient() {
    m_tour.Quietly(QStringLiteral("first of two patients"), [this] { OpenFirst(kHasRequests); });
    m_tour.Step(QStringLiteral("patient list over the hub"), [this] {
        ExpectHubOfChosen();
        Tour::Press(Qt::Key_F6, Qt::ControlModifier);
    });
    m_tour.Step(QStringLiteral("second patient in the hub"), [this] {
        const QString first = Patients().IdNum();
        OpenFirst(kIsOpen + QStringLiteral(" AND v.IdNum <> '%1'").arg(first));
        ExpectHubOfChosen();
        m_tour.Expect(Tour::Find<frmFinal>("frmFinal")->IdNum() != first,
                      QStringLiteral("the first patient stayed"));
    });
    m_tour.Quietly(QStringLiteral("second patient left"), [] { Tour::Press(Qt::Key_Escape); });
}
