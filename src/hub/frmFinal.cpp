#include "hub/frmFinal.h"

#include <QEvent>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTabBar>

#include "base/Numbers.h"
#include "charges/frmRequest.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"
#include "toolkit/Busy.h"
#include "toolkit/FunctionKey.h"
#include "toolkit/MsgBox.h"
#include "toolkit/Tips.h"
#include "ui_frmFinal.h"
#include "wardrequests/frmCSREntry.h"
#include "wardrequests/frmPHEntry.h"

using components::PatientLister;
using modGlobals::HubTab;

namespace {

// Request types of the ward: what has been processed, and what still waits.
const QString kProcessed = QStringLiteral("1");
const QString kPending = QStringLiteral("2");

const QString kAccountClosed = QStringLiteral(
    "Cannot post charges because the patient's account has already been closed. "
    "Please contact BILLING DEPARTMENT for further instructions.");
const QString kNoRequests = QStringLiteral(
    " |<ITEM DESCRIPTION                                     |QTY|DEPT|<DATE/TIME         "
    "            |<Code");

constexpr int kOutPatients = 1;
constexpr int kTwipsToTheInch = 1440;
constexpr int kColumns = 12;
constexpr int kColumnsWithoutRequests = 6;

enum OuterTab { Requests, Results, Clinical };

const QStringList& Headers() {
    static const QStringList headers{QStringLiteral("ITEM DESCRIPTION"),
                                     QStringLiteral("QTY"),
                                     QStringLiteral("DEPT"),
                                     QStringLiteral("REQUEST DATE/TIME"),
                                     QStringLiteral("Code"),
                                     QStringLiteral("REQUESTED BY"),
                                     QStringLiteral("PROCESS DATE/TIME"),
                                     QStringLiteral("PROCESSED BY"),
                                     QStringLiteral("RESULT DATE/TIME"),
                                     QStringLiteral("RESULT BY"),
                                     QStringLiteral("REMARKS")};
    return headers;
}

// The fields are named as the headers; the server's own spelling of the last one differs.
const QStringList& Fields() {
    static const QStringList fields = Headers().mid(0, kColumns - 2) << QStringLiteral("Remarks");
    return fields;
}

bool& NeedsLoad(HubTab tab) {
    return modGlobals::gTabNeedsLoad[size_t(tab)];
}

void SetRequestWidths(toolkit::FlexGrid& grid) {
    const double width = grid.width() * double(kTwipsToTheInch) / grid.logicalDpiX();
    const int anchor = 1;
    const int thirteenth = base::ToInt16(width / 13);
    const int fifth = base::ToInt16(width / 5);
    const int widths[kColumns] = {anchor,        anchor + 3000,    thirteenth, thirteenth,
                                  anchor + 2000, thirteenth + 200, fifth,      anchor + 2000,
                                  fifth,         anchor + 2000,    fifth,      anchor + 3000};
    for (int col = 0; col < kColumns; ++col)
        grid.SetColWidth(col, widths[col]);
}

}  // namespace

frmFinal::frmFinal(QWidget* parent) : QWidget(parent), ui(std::make_unique<Ui::frmFinal>()) {
    ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    ui->tabSummary->SetPatient(*this);
    connect(ui->tabSummary, &ClinicalTab::ExitRequested, this, &QWidget::close);
    for (toolkit::FlexGrid* grid : {ui->mshflexProcessed0, ui->mshflexProcessed1})
        grid->installEventFilter(this);
    connect(ui->tabSSTab1, &QTabWidget::currentChanged, this, &frmFinal::tabSSTab1_Click);
    connect(ui->tabSSTab2, &ResultTabs::ExitPressed, this, &QWidget::close);
    connect(ui->cmdPostCharges, &QPushButton::clicked, this, &frmFinal::cmdPostCharges_Click);
    connect(ui->cmdCentralSupply, &QPushButton::clicked, this,
            [this] { frmCSREntry(*this, this).exec(); });
    connect(ui->cmdPharmacy, &QPushButton::clicked, this,
            [this] { frmPHEntry(*this, this).exec(); });
    connect(ui->cmdNextPatient, &QPushButton::clicked, this, &QWidget::close);
    SetKeys();
}

void frmFinal::SetKeys() {
    toolkit::SetFunctionKey(*ui->cmdPostCharges, Qt::Key_F5);
    toolkit::SetFunctionKey(*ui->cmdCentralSupply, Qt::Key_F6);
    toolkit::SetFunctionKey(*ui->cmdPharmacy, Qt::Key_F7);
    const auto add = [this](const QKeySequence& keys, auto action) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    add(Qt::Key_F8, [this] { ui->mshflexProcessed0->setFocus(Qt::ShortcutFocusReason); });
    add(Qt::Key_F9, [this] { ui->mshflexProcessed1->setFocus(Qt::ShortcutFocusReason); });
    add(Qt::CTRL | Qt::Key_Tab, [this] { GoThrough(*ui->tabSSTab1, 1); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, [this] { GoThrough(*ui->tabSSTab1, -1); });
    add(Qt::CTRL | Qt::Key_PageDown, [this] { GoThrough(*ui->tabSSTab2, 1); });
    add(Qt::CTRL | Qt::Key_PageUp, [this] { GoThrough(*ui->tabSSTab2, -1); });
    add(Qt::Key_Escape, [this] { close(); });
}

// The tab's list has the keys: one goes on reading where one came to.
void frmFinal::GoThrough(QTabWidget& tabs, int step) {
    if (!tabs.isVisible())
        return;
    int tab = tabs.currentIndex();
    do
        tab = (tab + step + tabs.count()) % tabs.count();
    while (!tabs.isTabEnabled(tab));
    tabs.setCurrentIndex(tab);
    FocusList(tabs);
}

void frmFinal::FocusList(const QTabWidget& tabs) {
    for (auto* list : tabs.currentWidget()->findChildren<toolkit::FlexGrid*>())
        if (list->isVisibleTo(&tabs))
            return list->setFocus(Qt::TabFocusReason);
}

frmFinal::~frmFinal() = default;

void frmFinal::Open(const OpenedPatient& patient) {
    const bool first = !m_loaded;
    m_loaded = true;
    // Emptied here, read anew when shown: also for the patient whose lists were read before, for an
    // empty list would say that nothing was requested and no result has come.
    modGlobals::RaiseTabFlags();
    EmptyLists();
    ui->tabSummary->Empty();
    ShowHeader(patient);
    ui->tabSSTab2->TakePatient(*this, patient.Room);
    ui->lblStatus->clear();
    if (first)
        Load(patient.PatientType);
    else if (!ui->tabSSTab1->isTabEnabled(Requests))
        DisableActivity(
            QStringLiteral("Close this window and open the patient again to see whether "
                           "charges can be posted."));
    LoadShownTab();
    if (ui->tabSSTab1->currentIndex() == Requests)
        ui->cmdPostCharges->setFocus();
    else
        FocusList(*ui->tabSSTab1);
}

void frmFinal::ShowHeader(const OpenedPatient& patient) {
    const components::ListedPatient& record = patient.Record;
    SetIdNum(record.IDNumber);
    ui->txtHospNum->setText(record.HospitalNumber);
    ui->txtIdNum->setText(record.IDNumber);
    ui->txtLastName->setText(record.LastName);
    ui->txtFirstName->setText(record.FirstName);
    ui->txtMiddleName->setText(record.MiddleName);
    ui->txtAge->setText(record.Age);
    ui->txtSex->setText(record.Sex);
    ui->txtRoomID->setText(patient.Room);
    SetRoomClassID(patient.RoomClassID);
    ui->txtCompany->setText(patient.Company);
    ui->txtCAPDNum->setText(patient.CAPDNum);
    // A long name is read from its beginning, and whole under the mouse.
    for (QLineEdit* box : ui->fraPatient->findChildren<QLineEdit*>()) {
        box->setCursorPosition(0);
        box->setToolTip(toolkit::TipOf(box->text()));
    }
}

void frmFinal::SetRoomClassID(const QString& roomClassId) {
    m_roomClassId = roomClassId;
    ui->txtPatClass->setText(roomClassId);
}

void frmFinal::Load(int patientType) {
    const QSignalBlocker untilLoaded(ui->tabSSTab1);
    if (patientType == kOutPatients) {
        DisableActivity(
            QStringLiteral("Opened from \"Out Patients\": nothing is requested or charged "
                           "from this window."));
    } else if (IsAccountClosed()) {
        DisableActivity(QStringLiteral("The patient's account is closed."));
        toolkit::MsgBox(kAccountClosed, toolkit::BoxIcon::Exclamation);
        return;
    }
    Get_CanPenProc();
    NeedsLoad(HubTab::Requests) = false;
}

bool frmFinal::IsAccountClosed() {
    QString idNum = m_idNum;
    const auto& listing = modGlobals::gOutpatientSearch;
    return listing->PatientListing(idNum, PatientLister::kOutpatients, false) &&
           !listing->Outpatient().BillingDate.isEmpty();
}

// The bar then shows the results, the next tab in the row.
void frmFinal::DisableActivity(const QString& why) {
    ui->tabSSTab1->setTabEnabled(Requests, false);
    ui->tabSSTab1->setTabToolTip(Requests, why);
    ui->lblStatus->setText(why);
}

void frmFinal::EmptyLists() {
    for (toolkit::FlexGrid* grid : {ui->mshflexProcessed0, ui->mshflexProcessed1})
        LayOutRequests(*grid);
}

void frmFinal::Get_CanPenProc() {
    const toolkit::Busy busy;
    EmptyLists();
    modGlobals::gCurrentUser->SQLConnection()->SetCursorLocation(3);
    FillRequests(*ui->mshflexProcessed1, kPending);
    FillRequests(*ui->mshflexProcessed0, kProcessed);
}

void frmFinal::LayOutRequests(toolkit::FlexGrid& grid) {
    grid.Clear();
    grid.SetRows(2);
    grid.SetCols(kColumns);
    SetRequestWidths(grid);
    for (int col = 1; col < kColumns; ++col)
        grid.SetTextMatrix(0, col, Headers().at(col - 1));
    grid.clearSelection();
}

void frmFinal::FillRequests(toolkit::FlexGrid& grid, const QString& requestType) {
    const auto requests = modGlobals::gWardRequest->GetRequests(
        modGlobals::gCurrentUser->SQLConnection()->ConnectionString(), m_idNum, requestType);
    if (requests->Eof()) {
        grid.SetCols(kColumnsWithoutRequests);
        grid.SetFormatString(kNoRequests);
        grid.SetRows(2);
        grid.clearSelection();
    } else {
        grid.FillFrom(requests->Rows(), Fields());
    }
    requests->Close();
}

// Columns stated as parts of the grid's width follow the window.
bool frmFinal::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        auto* grid = static_cast<toolkit::FlexGrid*>(watched);
        if (grid->Cols() == kColumns)
            SetRequestWidths(*grid);
    }
    return QWidget::eventFilter(watched, event);
}

void frmFinal::tabSSTab1_Click() {
    ui->lblStatus->setText(ui->tabSSTab1->tabToolTip(Requests));
    // The results are entered by their first list.
    if (ui->tabSSTab1->currentIndex() == Results)
        ui->tabSSTab2->setCurrentIndex(0);
    LoadShownTab();
}

void frmFinal::LoadShownTab() {
    switch (ui->tabSSTab1->currentIndex()) {
        case Requests:
            if (NeedsLoad(HubTab::Requests))
                Get_CanPenProc();
            NeedsLoad(HubTab::Requests) = false;
            break;
        case Results:
            ui->tabSSTab2->LoadShown();
            break;
        default:
            if (NeedsLoad(HubTab::Clinical))
                ui->tabSummary->LoadClinicalTab();
            NeedsLoad(HubTab::Clinical) = false;
    }
}

void frmFinal::Get_HeartResults() {
    ui->tabSSTab2->Load(ResultTabs::HeartStation);
}

void frmFinal::Get_PTResults() {
    ui->tabSSTab2->Load(ResultTabs::Rehabilitation);
}

void frmFinal::cmdPostCharges_Click() {
    ui->lblStatus->clear();
    frmRequest request(*this, this);
    request.SetIdNum(ui->txtIdNum->text().trimmed());
    request.SetHospNum(ui->txtHospNum->text().trimmed());
    request.exec();
}

QString frmFinal::HospNum() const {
    return ui->txtHospNum->text();
}
QString frmFinal::IdNum() const {
    return ui->txtIdNum->text();
}
QString frmFinal::CAPDNum() const {
    return ui->txtCAPDNum->text();
}
QString frmFinal::LastName() const {
    return ui->txtLastName->text();
}
QString frmFinal::FirstName() const {
    return ui->txtFirstName->text();
}
QString frmFinal::MiddleName() const {
    return ui->txtMiddleName->text();
}
QString frmFinal::Age() const {
    return ui->txtAge->text();
}
QString frmFinal::Sex() const {
    return ui->txtSex->text();
}
QString frmFinal::Company() const {
    return ui->txtCompany->text();
}
