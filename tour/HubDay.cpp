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

using namespace Qt::StringLiterals;

namespace {

const QString kHasRequests =
    u"v.BillingDate IS NULL AND EXISTS (SELECT 1 FROM STATION..tbNurseLogBook r WHERE r.IdNum = "
    "v.IdNum AND "
    "r.RecordStatus = ' ')"_s;
const QString kIsClosed = u"v.BillingDate IS NOT NULL"_s;
const QString kIsOpen = u"v.BillingDate IS NULL"_s;

bool Holds(const QString& condition, const QString& idNum) {
    return !Tour::Ask(
                u"SELECT v.IdNum FROM PATIENT_DATA..tbOutPatient v WHERE "
                "v.IdNum = '%1' AND %2"_s.arg(idNum, condition))
                ->Eof();
}

}  // namespace

frmPatientList& HubDay::Patients() const {
    return *Tour::Find<frmPatientList>("frmPatientList");
}

void HubDay::ExpectHubOfChosen() {
    const auto* hub = Tour::Find<frmFinal>("frmFinal");
    Expect(hub->isVisible() && hub->isAncestorOf(QApplication::focusWidget()),
           u"the hub is not in front"_s);
    Expect(hub->HospNum() == Patients().HospNum(), u"the hub shows another patient"_s);
}

void HubDay::OpenFirst(const QString& condition) {
    Expect(Tour::Find<toolkit::ListView>("lvwSearchPatient")->hasFocus(),
           u"the patient list has not the keys"_s);
    Tour::Press(Qt::Key_Home);
    const int rows = Tour::Find<toolkit::ListView>("lvwSearchPatient")->model()->rowCount();
    for (int row = 1; row < rows && !Holds(condition, Patients().IdNum()); ++row)
        Tour::Press(Qt::Key_Down);
    Expect(Holds(condition, Patients().IdNum()), u"there is no such patient in the list"_s);
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
    Quietly(u"hub left by Esc"_s, [] { Tour::Press(Qt::Key_Escape); });
    Step(u"hub with open requests"_s, [this] { OpenFirst(kHasRequests); });
    Quietly(u"requests are read"_s, [this] {
        ExpectHubOfChosen();
        for (const char* grid : {"mshflexProcessed0", "mshflexProcessed1"})
            Expect(!Tour::Find<toolkit::FlexGrid>(grid)->TextMatrix(1, 1).isEmpty(),
                   u"no request is listed"_s);
    });
    Step(u"results of the patient"_s, [this] {
        GoToTab("tabSSTab1", 1);
        GoToTab("tabSSTab2", 3);
        Expect(Tour::Find<QTabWidget>("tabSSTab2")->currentIndex() == 3, u"the tab stayed"_s);
    });
    Quietly(u"back to the requests"_s, [this] { GoToTab("tabSSTab1", 0); });
    Step(u"charges asked for"_s, [] { Push("cmdPostCharges"); });
    Quietly(u"charges left"_s, [this] {
        QWidget* charges = QApplication::activeModalWidget();
        Expect(charges != nullptr, u"the charges did not open"_s);
        charges->close();
    });
    Quietly(u"next patient"_s, [] { Tour::Press(Qt::Key_N, Qt::AltModifier); });
}

void HubDay::MeetClosedAccounts() {
    Quietly(u"closed account opened"_s, [this] { OpenFirst(kIsClosed); });
    Step(u"closed account is told"_s,
         [this] { Expect(QApplication::activeModalWidget() != nullptr, u"no message"_s); });
    Quietly(u"closed account read"_s, [] { Tour::Press(Qt::Key_Return); });
    Step(u"hub of a closed account"_s, [this] {
        ExpectHubOfChosen();
        Expect(!Tour::Find<QTabWidget>("tabSSTab1")->isTabEnabled(0), u"charges can be posted"_s);
    });
    Quietly(u"closed account left"_s, [] { Tour::Press(Qt::Key_Escape); });
}

void HubDay::OpenAnotherPatient() {
    Quietly(u"first of two patients"_s, [this] { OpenFirst(kHasRequests); });
    Step(u"patient list over the hub"_s, [this] {
        ExpectHubOfChosen();
        Tour::Press(Qt::Key_F6, Qt::ControlModifier);
    });
    Step(u"second patient in the hub"_s, [this] {
        const QString first = Patients().IdNum();
        OpenFirst(kIsOpen + u" AND v.IdNum <> '%1'"_s.arg(first));
        ExpectHubOfChosen();
        Expect(Tour::Find<frmFinal>("frmFinal")->IdNum() != first, u"the first patient stayed"_s);
    });
    Quietly(u"second patient left"_s, [] { Tour::Press(Qt::Key_Escape); });
}
