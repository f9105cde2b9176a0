#include "app/mdiCAPD.h"

#include <QCloseEvent>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QShortcut>
#include <QToolButton>

#include "assessment/frmAssessmentStatus.h"
#include "charges/frmAssessment.h"
#include "db/Connection.h"
#include "hub/frmFinal.h"
#include "patients/frmPatientList.h"
#include "patients/frmRegistration.h"
#include "reports/UnitReports.h"
#include "session/Saved.h"
#include "session/modGlobals.h"
#include "toolkit/Busy.h"
#include "toolkit/Images.h"
#include "toolkit/ListView.h"
#include "toolkit/MsgBox.h"
#include "toolkit/Tips.h"
#include "ui_mdiCAPD.h"
#include "visits/frmCAPDVisit.h"

using components::PatientLister;
using toolkit::BoxIcon;

namespace {

/// A sheet, a list or a viewer over the frame, with which something else is begun; boxes belong to
/// what they speak of.
bool IsOpenedFrom(const QWidget& frame, const QObject* watched) {
    const auto* dialog = qobject_cast<const QDialog*>(watched);
    if (!dialog || dialog->objectName() == u"MsgBox")
        return false;
    return !dialog->parentWidget() || dialog->parentWidget()->window() == &frame;
}

QString FullName(const QString& last, const QString& first, const QString& middle) {
    return QStringLiteral("%1, %2 %3").arg(last, first, middle).trimmed();
}

}  // namespace

mdiCAPD::mdiCAPD() : ui(std::make_unique<Ui::mdiCAPD>()), m_lblChosenPatient(new QLabel(this)) {
    ui->setupUi(this);
    connect(ui->mnuNew, &QAction::triggered, this, &mdiCAPD::NewRegistration);
    connect(ui->mnuVist, &QAction::triggered, this, &mdiCAPD::RegisterVisit);
    connect(ui->mnuAssessmentEntry, &QAction::triggered, this,
            [this] { frmAssessment(this).exec(); });
    connect(ui->mnuAssessmentStatus, &QAction::triggered, this,
            [this] { frmAssessmentStatus(this).exec(); });
    connect(ui->mnuCAPDVisits, &QAction::triggered, this, &modMain::PrintCAPDVisits);
    connect(ui->mnuIncomeReport, &QAction::triggered, this, &modMain::PrintIncome);
    connect(ui->mnuCAPDPatients, &QAction::triggered, this, &modMain::PrintCAPDPatients);
    AddToolButton(QStringLiteral("New"), ui->mnuNew,
                  toolkit::Images::Icon(toolkit::Image::NewSheet));
    AddToolButton(QStringLiteral("Assessment"), ui->mnuAssessmentEntry,
                  toolkit::Images::Icon(toolkit::Image::Assessment));
    // The chosen patient stays in sight whatever else the status bar says.
    m_lblChosenPatient->setObjectName(QStringLiteral("lblChosenPatient"));
    m_lblChosenPatient->setTextFormat(Qt::PlainText);
    statusBar()->addPermanentWidget(m_lblChosenPatient);
    // Real patients charted by mistake in the demo hospital would be missed too late.
    if (modGlobals::gCurrentUser->ServerName() == components::kPracticeData)
        AddWarning(QStringLiteral("lblPractice"), QStringLiteral("PRACTICE DATA"));
    if (modGlobals::gCurrentUser->SQLConnection()->IsReadOnly())
        AddWarning(QStringLiteral("lblReadOnly"), QStringLiteral("READ ONLY"));
    connect(new QShortcut(Qt::CTRL | Qt::Key_F6, this), &QShortcut::activated, this,
            &mdiCAPD::SwitchChild);
    qApp->installEventFilter(this);
    db::Connection::SetWaitHook([this](bool waiting) { ShowWaiting(waiting); });
    // What the bar has no room for is read under the mouse.
    connect(statusBar(), &QStatusBar::messageChanged, this, [this](const QString& text) {
        statusBar()->setToolTip(toolkit::TipOf(text));
        ShowChosenPatient();
    });
    Saved::SetHook([this](const QString& sentence) { statusBar()->showMessage(sentence); });
}

void mdiCAPD::AddWarning(const QString& name, const QString& text) {
    auto* warning = new QLabel(text, this);
    warning->setObjectName(name);
    warning->setStyleSheet(QStringLiteral("color: #a40000; font-weight: bold;"));
    warning->setContentsMargins(0, 0, 24, 0);
    statusBar()->insertPermanentWidget(0, warning);
}

// The children go last and still send events: nothing of this frame may listen to them any more.
mdiCAPD::~mdiCAPD() {
    db::Connection::SetWaitHook({});
    Saved::SetHook({});
    qApp->removeEventFilter(this);
    if (m_hub)
        m_hub->disconnect(this);
}

// Painted at once: no event is handled before the wait is over.
void mdiCAPD::ShowWaiting(bool waiting) {
    if (waiting) {
        m_waiting = std::make_unique<toolkit::Busy>();
        m_textBeforeWaiting = statusBar()->currentMessage();
        statusBar()->showMessage(QStringLiteral("Another program is writing…"));
    } else {
        m_waiting.reset();
        statusBar()->showMessage(m_textBeforeWaiting);
    }
    statusBar()->repaint();
}

void mdiCAPD::Load() {
    ShowPatientList();
    if (!ConnectSupplyCatalogue())
        close();
}

bool mdiCAPD::ConnectSupplyCatalogue() {
    const auto connection = modGlobals::gCurrentUser->SQLConnection();
    if (!modGlobals::gSupplyList->InitConnection(connection) ||
        !modGlobals::gSupplyList2->InitConnection(connection)) {
        toolkit::MsgBox(QStringLiteral("Cannot load supplies list."), BoxIcon::Critical);
        return false;
    }
    if (!modGlobals::gSupplyInfo->InitConnect(connection)) {
        toolkit::MsgBox(QStringLiteral("Cannot load supplies information."), BoxIcon::Critical);
        return false;
    }
    return true;
}

// The numbers are in sight whatever the name is, and give way to what is told meanwhile.
void mdiCAPD::ShowChosenPatient() {
    const bool isTelling = !statusBar()->currentMessage().isEmpty();
    const QString name = m_lblChosenPatient->fontMetrics().elidedText(
        m_chosenName, Qt::ElideRight, width() / (isTelling ? 5 : 3));
    m_lblChosenPatient->setText(isTelling ? name : name + m_chosenNumbers);
    m_lblChosenPatient->setToolTip(toolkit::TipOf(m_chosenName + m_chosenNumbers));
}

void mdiCAPD::ShowPatientList() {
    m_patientList = new frmPatientList;
    connect(m_patientList, &frmPatientList::PatientOpened, this, &mdiCAPD::PatientOpened);
    connect(m_patientList, &frmPatientList::PatientChosen, this,
            [this](const QString& hospNum, const QString& idNum, const QString& capdNum,
                   const QString& name) {
                // The numbers are in sight whatever the name is, and the frame fits the screen.
                m_chosenName = name;
                m_chosenNumbers =
                    QStringLiteral("    Hosp. No. %1    Adm. No. %2    CAPD No. %3")
                        .arg(hospNum, idNum, capdNum.isEmpty() ? QStringLiteral("none") : capdNum);
                ShowChosenPatient();
            });
    connect(m_patientList, &frmPatientList::PatientChosen, statusBar(), &QStatusBar::clearMessage);
    connect(m_patientList, &frmPatientList::StatusText, this,
            [this](const QString& text) { statusBar()->showMessage(text); });
    m_patientListFrame =
        ui->mdiArea->addSubWindow(m_patientList, Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    m_patientListFrame->show();
    FitChildren();
}

// A child takes the whole frame, under its own caption: a maximized one would put that caption
// into the frame's.
void mdiCAPD::FitChildren() {
    m_patientListFrame->setGeometry(ui->mdiArea->viewport()->rect());
    if (m_hubFrame)
        m_hubFrame->setGeometry(ui->mdiArea->viewport()->rect());
}

void mdiCAPD::closeEvent(QCloseEvent* event) {
    m_unloading = true;
    QMainWindow::closeEvent(event);
}

bool mdiCAPD::eventFilter(QObject* watched, QEvent* event) {
    // Nothing opens the patient search again, so nothing but the frame closes it.
    if (watched == m_patientListFrame && event->type() == QEvent::Close && !m_unloading) {
        event->ignore();
        return true;
    }
    if (m_patientListFrame && watched == ui->mdiArea->viewport() && event->type() == QEvent::Resize)
        FitChildren();
    // What was saved is told until then.
    if (event->type() == QEvent::Show && !event->spontaneous() && IsOpenedFrom(*this, watched))
        statusBar()->clearMessage();
    // Where a box and the sheet under it close at once, window managers may leave the keys to
    // nobody.
    if (event->type() == QEvent::Hide && !event->spontaneous()) {
        const auto* dialog = qobject_cast<QDialog*>(watched);
        if (dialog && dialog->parentWidget())
            dialog->parentWidget()->window()->activateWindow();
    }
    // In a text box Ctrl+C or Ctrl+A still means the menu; Ctrl+Insert copies.
    if (event->type() == QEvent::ShortcutOverride && isActiveWindow()) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (IsMenuShortcut(QKeySequence(key->keyCombination()))) {
            event->ignore();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

bool mdiCAPD::IsMenuShortcut(const QKeySequence& keys) const {
    for (const QMenu* menu : menuBar()->findChildren<QMenu*>())
        for (const QAction* action : menu->actions())
            if (!action->shortcut().isEmpty() && action->shortcut() == keys)
                return true;
    return false;
}

void mdiCAPD::AddToolButton(const QString& key, const QAction* twin, const QIcon& icon) {
    auto* action = ui->Toolbar1->addAction(icon, key);
    action->setToolTip(
        QStringLiteral("%1 (%2)").arg(twin->text().remove(u'&'), twin->shortcut().toString()));
    connect(action, &QAction::triggered, this, [this, key] { Toolbar1_ButtonClick(key); });
}

void mdiCAPD::Toolbar1_ButtonClick(const QString& key) {
    if (key.toUpper() == QStringLiteral("NEW"))
        NewRegistration();
    else if (key.toUpper() == QStringLiteral("ASSESSMENT"))
        ui->mnuAssessmentEntry->trigger();
}

void mdiCAPD::NewRegistration() {
    QString idNum = m_patientList->IdNum();
    const QString capdNum = m_patientList->CAPDNum();
    if (!ListPatient(idNum))
        return;
    const components::ListedPatient patient = modGlobals::gOutpatientSearch->Outpatient();
    if (!IsMeant(patient))
        return;
    auto sheet = std::make_unique<frmRegistration>(this);
    sheet->SetHospNum(patient.HospitalNumber);
    sheet->ShowPatient(patient, idNum, capdNum);
    ShowModal(sheet.release());
}

void mdiCAPD::RegisterVisit() {
    QString idNum = m_patientList->IdNum();
    QString hospNum = m_patientList->HospNum();
    QString capdNum = m_patientList->CAPDNum();
    const bool chosen = !idNum.isEmpty();
    if (!ListPatient(idNum))
        return;
    // Who is picked from the listing's own list has no row here: the register knows the number.
    if (!chosen) {
        hospNum = modGlobals::gOutpatientSearch->Outpatient().HospitalNumber;
        capdNum = frmRegistration::NumberOnFile(hospNum);
    }
    if (capdNum.isEmpty()) {
        toolkit::MsgBox(QStringLiteral("Patient does not exist in CAPD record. Register First."),
                        BoxIcon::Information, QStringLiteral("Message"));
        return;
    }
    const components::ListedPatient patient = modGlobals::gOutpatientSearch->Outpatient();
    if (!IsMeant(patient))
        return;
    auto* visit = new frmCAPDVisit(this);
    visit->SetCAPDNum(capdNum);
    visit->SetHospNum(hospNum);
    visit->SetIdNum(idNum);
    visit->SetPatientName(FullName(patient.LastName, patient.FirstName, patient.MiddleName));
    ShowModal(visit);
}

// A saved sheet may have given the patient a number: the list reads itself anew, so that the visit
// that follows finds it.
void mdiCAPD::ShowModal(QDialog* sheet) {
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->setWindowModality(Qt::ApplicationModal);
    connect(sheet, &QDialog::accepted, m_patientList, &frmPatientList::Renew);
    sheet->show();
}

bool mdiCAPD::ListPatient(QString& idNum) {
    const QString wanted = idNum;
    if (modGlobals::gOutpatientSearch->PatientListing(idNum, PatientLister::kOutpatients, false))
        return true;
    statusBar()->showMessage(
        wanted.isEmpty()
            ? QStringLiteral("No patient was chosen.")
            : QStringLiteral("There is no out-patient visit with the number %1.").arg(wanted));
    return false;
}

// Both sheets are the list's chosen patient's, while the name in sight is the hub's.
bool mdiCAPD::IsMeant(const components::ListedPatient& chosen) const {
    const bool inHub = m_hubFrame && ui->mdiArea->activeSubWindow() == m_hubFrame;
    if (!inHub || m_hub->HospNum().trimmed() == chosen.HospitalNumber.trimmed())
        return true;
    const QString inSight = FullName(m_hub->LastName(), m_hub->FirstName(), m_hub->MiddleName());
    const QString name = FullName(chosen.LastName, chosen.FirstName, chosen.MiddleName);
    return toolkit::MsgBox(QStringLiteral("This window shows %1, but in the patient list %2 is "
                                          "chosen.\n\nGo on with %2?")
                               .arg(inSight, name),
                           BoxIcon::Exclamation, QStringLiteral("Message"),
                           toolkit::BoxButtons::YesNo) == toolkit::BoxAnswer::Yes;
}

void mdiCAPD::PatientOpened(const OpenedPatient& patient) {
    statusBar()->clearMessage();
    if (m_hub) {
        ui->mdiArea->setActiveSubWindow(m_hubFrame);
        m_hub->Open(patient);
        return;
    }
    // A patient whose lists cannot be read opens no window.
    auto hub = std::make_unique<frmFinal>();
    hub->resize(ui->mdiArea->viewport()->size());
    hub->Open(patient);
    ShowHub(hub.release());
}

void mdiCAPD::ShowHub(frmFinal* hub) {
    m_hub = hub;
    m_hubFrame =
        ui->mdiArea->addSubWindow(hub, Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                           Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    m_hubFrame->setWindowIcon(toolkit::Images::Icon(toolkit::Image::Blank));
    connect(hub, &QObject::destroyed, this, &mdiCAPD::ReturnToPatientList);
    m_hubFrame->setGeometry(ui->mdiArea->viewport()->rect());
    m_hubFrame->show();
}

void mdiCAPD::ReturnToPatientList() {
    if (m_hubFrame)
        m_hubFrame->close();
    FocusPatientList();
}

// The list has the keys, whatever field had them when the hub was opened.
void mdiCAPD::FocusPatientList() {
    ui->mdiArea->setActiveSubWindow(m_patientListFrame);
    m_patientList->findChild<toolkit::ListView*>()->setFocus(Qt::OtherFocusReason);
}

void mdiCAPD::SwitchChild() {
    const bool inHub = m_hubFrame && ui->mdiArea->activeSubWindow() == m_hubFrame;
    if (inHub)
        FocusPatientList();
    else if (m_hubFrame)
        ui->mdiArea->setActiveSubWindow(m_hubFrame);
}
