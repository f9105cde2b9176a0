#include "charges/frmRequest.h"

#include <QKeyEvent>

#include "base/Numbers.h"
#include "charges/ChargeGrid.h"
#include "charges/DoctorFields.h"
#include "charges/PatientClass.h"
#include "charges/clsComputeDiscount.h"
#include "patients/PatientOnScreen.h"
#include "toolkit/Twips.h"
#include "ui_frmRequest.h"

namespace {

constexpr int kLeft = 1500, kTop = 800, kHeight = 5895;

}  // namespace

frmRequest::frmRequest(PatientOnScreen& patient, QWidget* parent)
    : QDialog(parent),
      ui(std::make_unique<Ui::frmRequest>()),
      m_patient(patient),
      m_idNum(patient.IdNum()),
      m_hospNum(patient.HospNum()) {
    ui->setupUi(this);
    m_charges = new ChargeGrid(*ui->grdInput, RequestRules(), this);
    new DoctorFields(*ui->txtDoctorID, *ui->txtDoctor, *ui->cmdDoctor, *ui->grdInput, this);
    connect(m_charges, &ChargeGrid::TotalsChanged, this, &frmRequest::ShowTotals);
    connect(m_charges, &ChargeGrid::Told, ui->lblMessage, &QLabel::setText);
    connect(m_charges, &ChargeGrid::ItemCommitted, this, [this] {
        ui->cmdSave->setEnabled(true);
        ui->cmdSavePrint->setEnabled(true);
    });
    connect(ui->cmdSave, &QPushButton::clicked, this, &frmRequest::cmdSave_Click);
    connect(ui->cmdSavePrint, &QPushButton::clicked, this, &frmRequest::cmdSave_Click);
    connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

frmRequest::~frmRequest() = default;

void frmRequest::setVisible(bool visible) {
    if (visible && !m_loaded)
        Load();
    QDialog::setVisible(visible);
}

void frmRequest::Load() {
    m_charges->Initialize_TableInput(ui->cmdSave, ui->cmdClose);
    move(toolkit::Twips(kLeft, this), toolkit::Twips(kTop, this));
    setMinimumHeight(toolkit::Twips(kHeight, this));
    ui->lblPatient->setText(
        QStringLiteral("%1, %2 %3")
            .arg(m_patient.LastName(), m_patient.FirstName(), m_patient.MiddleName())
            .trimmed());
    ui->lblIdNum->setText(m_idNum.trimmed());
    ui->lblCompany->setText(m_patient.Company());
    clsComputeDiscount::Shared().SetIdNum(m_idNum.trimmed());
    ShowPatientClass();
    m_loaded = true;
}

void frmRequest::ShowPatientClass() {
    const PatientClass patientClass =
        PatientClassLabels(clsComputeDiscount::Shared(), m_idNum.trimmed());
    ui->lblPatientClass->setText(patientClass.ClassLabel);
    ui->lblDiscount->setText(patientClass.DiscountLabel);
}

void frmRequest::ShowTotals(const ChargeTotals& totals) {
    ui->txtGross->setText(base::MoneyText(totals.Gross));
    ui->txtDiscount->setText(base::MoneyText(totals.Discount));
    ui->txtNetAmount->setText(base::MoneyText(totals.NetAmount));
}

void frmRequest::cmdSave_Click() {
    if (!ui->grdInput->EndEditMode())
        return;
    ui->lblMessage->setText(QStringLiteral("Saving is not part of this version yet."));
}

// Enter belongs to the boxes and the sheet, and Esc takes back what is being typed: only a button
// that has the keyboard closes the window with all that was typed in it.
void frmRequest::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) && button)
        button->click();
    else if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Escape)
        QDialog::keyPressEvent(event);
}

void frmRequest::done(int result) {
    // A cell left half typed is dropped with the sheet: nothing of it is looked up any more.
    ui->grdInput->blockSignals(true);
    QDialog::done(result);
}
