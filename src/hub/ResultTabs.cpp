#include "hub/ResultTabs.h"

#include "db/Recordset.h"
#include "hub/ResultKinds.h"
#include "hub/ResultPage.h"
#include "reports/OpenReport.h"
#include "toolkit/FlexGrid.h"

namespace {

constexpr int kForwardOnly = 0;
constexpr int kRequestNumColumn = 2;
constexpr int kChargeSlipColumn = 7;

QString FullName(const PatientOnScreen& patient) {
    return patient.LastName() + QStringLiteral(", ") + patient.FirstName() + u' ' +
           patient.MiddleName();
}

}  // namespace

ResultTabs::ResultTabs(QWidget* parent) : QTabWidget(parent) {
    for (const ResultKind& kind : ResultKinds()) {
        auto* page = new ResultPage(kind);
        const Tab tab = Tab(m_pages.size());
        m_pages.push_back(page);
        addTab(page, kind.Caption);
        connect(page, &ResultPage::RefreshPressed, this, [this, tab] { Load(tab); });
        connect(page, &ResultPage::ExitPressed, this, &ResultTabs::ExitPressed);
    }
    connect(m_pages[Laboratory], &ResultPage::ViewPressed, this, &ResultTabs::cmdLabView_Click);
    connect(m_pages[HeartStation], &ResultPage::PrintPressed, this,
            &ResultTabs::cmdHeartPrint_Click);
    connect(this, &QTabWidget::currentChanged, this, &ResultTabs::LoadShown);
}

bool& ResultTabs::NeedsLoad(int tab) {
    const auto& flag = ResultKinds()[size_t(tab)].Flag;
    return flag ? modGlobals::gTabNeedsLoad[size_t(*flag)] : m_ptNeedsLoad;
}

void ResultTabs::TakePatient(const PatientOnScreen& patient, const QString& room) {
    for (ResultPage* page : m_pages)
        page->Empty();
    m_patient = &patient;
    m_room = room;
    m_ptNeedsLoad = true;
}

void ResultTabs::LoadShown() {
    if (!m_patient || !NeedsLoad(currentIndex()))
        return;
    Load(Tab(currentIndex()));
    NeedsLoad(currentIndex()) = false;
}

void ResultTabs::Load(Tab tab) {
    m_pages[size_t(tab)]->Load(*m_patient);
}

// The row that is current when the button is pressed names the request; the list is asked once
// more, because what was on it may have been withdrawn since.
void ResultTabs::cmdLabView_Click() {
    const auto exams = OpenLaboratoryList(*m_patient, kForwardOnly);
    if (exams->Eof())
        return;
    const toolkit::FlexGrid& grid = m_pages[Laboratory]->Grid();
    components::ResultViewer& viewer = *modGlobals::gResultViewer;
    viewer.SetSQLConnection(modGlobals::gCurrentUser->SQLConnection());
    viewer.SetHospitalNumber(m_patient->HospNum().trimmed());
    viewer.SetIDNumber(m_patient->IdNum().trimmed());
    viewer.SetRoomNumber(m_room.trimmed());
    viewer.SetPatientName(FullName(*m_patient));
    viewer.SetAge(m_patient->Age());
    viewer.SetSex(m_patient->Sex());
    viewer.SetStatus({});
    viewer.SetUserID(modGlobals::gCurrentUser->EmployeeCode());
    viewer.SetCSnumber(grid.TextMatrix(grid.Row(), kChargeSlipColumn));
    viewer.SetRequestNum(grid.TextMatrix(grid.Row(), kRequestNumColumn));
    viewer.SetAutoprint(true);
    viewer.Show_Results();
    if (exams->State() != 0)
        exams->Close();
}

void ResultTabs::cmdHeartPrint_Click() {
    modMain::OpenReport(modMain::ProgramDirectory() + QStringLiteral("/HeartResult.rpt"),
                        QStringLiteral("STATION"),
                        {m_patient->IdNum(), m_pages[HeartStation]->ShownResult(),
                         m_patient->HospNum(), FullName(*m_patient), m_patient->Age(),
                         m_patient->Sex(), modGlobals::gCurrentUser->employeename()});
    modMain::ShowReport(false, QStringLiteral("Heart Station Result"), false);
}
