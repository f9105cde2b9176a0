#include "hub/ClinicalTab.h"

#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QTextDocument>

#include "base/Clock.h"
#include "base/Dates.h"
#include "components/PatientFinder.h"
#include "db/Recordset.h"
#include "hub/ClinicalSummary.h"
#include "hub/OnlyScrolling.h"
#include "patients/PatientOnScreen.h"
#include "print/DocumentPages.h"
#include "print/PrintDialogs.h"
#include "session/modGlobals.h"
#include "toolkit/Busy.h"
#include "toolkit/Tips.h"
#include "ui_ClinicalTab.h"

namespace {

const QString kLayout =
    QStringLiteral(" |<Admision No. |<Admision Date/Time     |<Discharged Date/Time |<Room No.");
constexpr int kWidths[] = {1, 2500, 4000, 4000, 1000};
enum Column { Number = 1, Admitted, Discharged, Room };

const QStringList& Fields() {
    static const QStringList fields{QStringLiteral("Admision No."),
                                    QStringLiteral("Admision Date/Time"),
                                    QStringLiteral("Discharged Date/Time"), QStringLiteral("Room")};
    return fields;
}

}  // namespace

ClinicalTab::ClinicalTab(QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::ClinicalTab>()) {
    ui->setupUi(this);
    connect(ui->cmdClinical0, &QPushButton::clicked, this, &ClinicalTab::cmdClinical_View);
    connect(ui->mshflexClin, &toolkit::FlexGrid::RowOpened, this, &ClinicalTab::cmdClinical_View);
    connect(ui->cmdClinical1, &QPushButton::clicked, this, &ClinicalTab::ExitRequested);
    connect(ui->cmdClinical2, &QPushButton::clicked, this, &ClinicalTab::LoadClinicalTab);
    connect(ui->cmdPrint, &QPushButton::clicked, this,
            [this] { print::AskAndPrint(this, Pages(), Title()); });
    connect(ui->cmdSavePdf, &QPushButton::clicked, this,
            [this] { print::AskAndSavePdf(this, *Pages(), Title()); });
    Empty();
}

ClinicalTab::~ClinicalTab() = default;

void ClinicalTab::Empty() {
    ui->rtbClinical->clear();
    ui->ProgressBarMeter->setValue(0);
    m_number.clear();
    toolkit::FlexGrid& stays = *ui->mshflexClin;
    stays.Clear();
    stays.SetRows(2);
    stays.SetFormatString(kLayout);
    for (int col = 0; col < int(std::size(kWidths)); ++col)
        stays.SetColWidth(col, kWidths[col]);
    stays.clearSelection();
    ShowPatient({});
    ShowState();
}

void ClinicalTab::LoadClinicalTab() {
    const toolkit::Busy busy;
    Empty();
    const components::StayRecord* stay =
        LoadStay(m_patient->IdNum().trimmed(), m_patient->HospNum());
    if (stay)
        ShowPatient(stay->Patient);
    ShowStays(stay ? stay->AdmissionDate : QString());
}

void ClinicalTab::ShowPatient(const components::PersonRecord& patient) {
    const std::pair<QLabel*, const QString&> values[] = {
        {ui->lblAddress, patient.CompleteAddress}, {ui->lblBirthPlace, patient.BirthPlace},
        {ui->lblNationality, patient.Nationality}, {ui->lblReligion, patient.Religion},
        {ui->lblCivilStatus, patient.CivilStatus}, {ui->lblSpouse, patient.SpouseName},
        {ui->lblFather, patient.FatherName},       {ui->lblMother, patient.MotherName}};
    for (const auto& [label, value] : values) {
        label->setText(value);
        label->setToolTip(toolkit::TipOf(value));
    }
}

void ClinicalTab::ShowStays(const QString& admissionDate) {
    const auto stays = modGlobals::gConfinement->GetConfinementPeriod(
        modGlobals::gCurrentUser->SQLConnection()->ConnectionString(), m_patient->HospNum(),
        admissionDate);
    if (!stays->Eof())
        ui->mshflexClin->FillFrom(stays->Rows(), Fields());
    stays->Close();
    ShowState();
}

void ClinicalTab::ShowState() {
    const bool hasStays = !ui->mshflexClin->TextMatrix(1, Number).isEmpty();
    ui->cmdClinical0->setEnabled(hasStays);
    ui->lblHint->setText(hasStays ? QStringLiteral("Enter shows the summary of the chosen stay.")
                                  : QStringLiteral("No stay of this patient is on file."));
    for (QPushButton* button : {ui->cmdPrint, ui->cmdSavePdf})
        button->setEnabled(!m_number.isEmpty());
}

void ClinicalTab::cmdClinical_View() {
    const toolkit::FlexGrid& stays = *ui->mshflexClin;
    const int row = stays.Row();
    const SummaryStay stay{m_patient->HospNum(), m_patient->IdNum(),
                           stays.TextMatrix(row, Number).trimmed(), stays.TextMatrix(row, Admitted),
                           stays.TextMatrix(row, Discharged)};
    if (stay.Number.isEmpty() || m_isComposing)
        return;
    const toolkit::Busy busy;
    const QScopedValueRollback<bool> composing(m_isComposing, true);
    const OnlyScrolling untilDone(*ui->rtbClinical);
    m_number.clear();
    ShowState();
    ClinicalSummary(*ui->rtbClinical->document(), [this](int percent) {
        ui->ProgressBarMeter->setValue(percent);
        QCoreApplication::processEvents();
    }).Compose(stay);
    ui->rtbClinical->moveCursor(QTextCursor::Start);
    m_number = stay.Number;
    ShowState();
    ui->rtbClinical->setFocus();
}

std::shared_ptr<const print::ReportPages> ClinicalTab::Pages() const {
    return print::PagesOf(
        *ui->rtbClinical->document(),
        {QStringLiteral("%1    Clinical Summary    Printed %2 by %3")
             .arg(modGlobals::gCompany.trimmed(), base::DateTimeText(base::Clock::Now()),
                  modGlobals::gCurrentUser->employeename()),
         QStringLiteral("%1, %2 %3    Hosp. No. %4    %5")
             .arg(m_patient->LastName(), m_patient->FirstName(), m_patient->MiddleName(),
                  m_patient->HospNum(), m_number)});
}

QString ClinicalTab::Title() const {
    return QStringLiteral("Clinical Summary ") + m_number;
}
