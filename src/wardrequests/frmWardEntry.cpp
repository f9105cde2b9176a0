#include "wardrequests/frmWardEntry.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

#include "base/Errors.h"
#include "patients/PatientOnScreen.h"
#include "session/Saved.h"
#include "session/modGlobals.h"
#include "toolkit/Keys.h"
#include "toolkit/MsgBox.h"
#include "ui_frmWardEntry.h"
#include "wardrequests/NurseLogBook.h"
#include "wardrequests/WardSheet.h"

using toolkit::BoxIcon;
using toolkit::MsgBox;

namespace {

const QString kTitle = QStringLiteral("MESSAGE");

QString Counted(int count, const QString& one, const QString& more) {
    return QStringLiteral("%1 %2").arg(count).arg(count == 1 ? one : more);
}

}  // namespace

frmWardEntry::frmWardEntry(const WardVariant& variant, PatientOnScreen& patient, QWidget* parent)
    : QDialog(parent),
      ui(std::make_unique<Ui::frmWardEntry>()),
      m_variant(variant),
      m_patient(patient) {
    ui->setupUi(this);
    setObjectName(variant.WindowName);
    setWindowTitle(variant.Caption);
    ui->lblPatient->setText(QStringLiteral("%1, %2 %3")
                                .arg(patient.LastName(), patient.FirstName(), patient.MiddleName())
                                .trimmed());
    ui->lblIdNum->setText(patient.IdNum());
    m_sheet = new WardSheet(*ui->mshflexEntry, *ui->lblMessage, variant, patient.IdNum(), this);
    m_usualHint = ui->lblKeys->text();
    connect(m_sheet, &WardSheet::CellEntered, this, &frmWardEntry::ShowHint);
    connect(m_sheet, &WardSheet::Failed, this, &QDialog::reject);
    connect(ui->cmdMedOption0, &QPushButton::clicked, this, [this] { cmdMedOption_Click(Save); });
    connect(ui->cmdMedOption1, &QPushButton::clicked, this, [this] { cmdMedOption_Click(Cancel); });
    connect(ui->cmdMedOption2, &QPushButton::clicked, this, [this] { cmdMedOption_Click(Delete); });
}

frmWardEntry::~frmWardEntry() = default;

void frmWardEntry::setVisible(bool visible) {
    if (visible && !m_laidOut) {
        m_laidOut = true;
        ensurePolished();
        layout()->activate();
        m_sheet->Start();
    }
    QDialog::setVisible(visible);
}

// The lists are read once the button's work stands: what goes wrong there is told as such and
// offers nothing to save again.
void frmWardEntry::cmdMedOption_Click(Button button) {
    if (m_busy || !isVisible())
        return;
    const QScopedValueRollback<bool> busy(m_busy, true);
    std::unique_ptr<const Saved> saved;
    try {
        if (button == Save)
            saved = SaveRequests();
        else if (button == Delete)
            DeleteRequest();
        else
            reject();
    } catch (const base::RuntimeError& error) {
        MsgBox(QStringLiteral("Error While Saving Pharmacy Requests  ") + error.Description());
        return;
    }
    const auto reload = [this] { m_patient.Get_CanPenProc(); };
    if (saved)
        saved->Then(QStringLiteral("Reading the lists"), reload);
    else
        reload();
}

std::unique_ptr<const Saved> frmWardEntry::SaveRequests() {
    if (!m_sheet->StoreOpenCell())
        return nullptr;
    const WardRequestHead head{.HospNum = m_patient.HospNum(),
                               .IdNum = m_patient.IdNum(),
                               .Department = m_variant.Department,
                               .EmployeeCode = modGlobals::gCurrentUser->EmployeeCode()};
    const auto lines = m_sheet->Lines().Complete();
    AppendToNurseLogBook(*modGlobals::gCurrentUser->SQLConnection(), head, lines);
    const int leftOut = m_sheet->Lines().Incomplete();
    auto saved = std::make_unique<const Saved>(
        Counted(int(lines.size()), QStringLiteral("request is saved"),
                QStringLiteral("requests are saved")),
        ui->lblPatient->text(),
        leftOut == 0 ? QString()
                     : Counted(leftOut, QStringLiteral("line was left out"),
                               QStringLiteral("lines were left out")));
    accept();
    return saved;
}

void frmWardEntry::DeleteRequest() {
    const int row = ui->mshflexEntry->Row();
    if (!m_sheet->Lines().QualifiedRow(row)) {
        MsgBox(QStringLiteral("Row cannot be deleted because there are no entries yet."),
               BoxIcon::Information, kTitle);
    } else if (MsgBox(QStringLiteral("Are you sure to delete the request?"), BoxIcon::Question,
                      kTitle, toolkit::BoxButtons::YesNo) == toolkit::BoxAnswer::Yes) {
        m_sheet->Lines().RemoveRequest(row);
        m_sheet->LoadCell();
    }
    ui->mshflexEntry->setFocus();
}

void frmWardEntry::ShowHint() {
    const bool leavesOut = m_sheet->LeftIncomplete();
    ui->lblKeys->setText(
        leavesOut ? QStringLiteral("What is marked is not complete and is not requested.")
                  : m_usualHint);
}

bool frmWardEntry::HasEntries() const {
    for (int row = 1; row <= m_sheet->Lines().LastRow(); ++row)
        if (m_sheet->Lines().QualifiedRow(row))
            return true;
    return false;
}

// Enter belongs to the entry box, and Esc never throws away what was typed.
void frmWardEntry::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F3)
        m_sheet->DeleteRow();
    else if (event->key() == Qt::Key_Escape && HasEntries())
        ui->lblKeys->setText(QStringLiteral("Alt+S saves the requests, Alt+C drops them."));
    else if (!toolkit::IsEnter(*event))
        QDialog::keyPressEvent(event);
}
