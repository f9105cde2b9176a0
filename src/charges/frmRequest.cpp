#include "charges/frmRequest.h"

#include <QKeyEvent>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QScreen>

#include "base/Numbers.h"
#include "charges/ChargeGrid.h"
#include "charges/DoctorFields.h"
#include "charges/PatientClass.h"
#include "charges/RequestSlip.h"
#include "charges/SlipCodes.h"
#include "charges/SlipReversal.h"
#include "charges/clsComputeDiscount.h"
#include "funds/frmPDAF.h"
#include "funds/modCDF.h"
#include "patients/PatientOnScreen.h"
#include "toolkit/MsgBox.h"
#include "toolkit/Twips.h"
#include "ui_frmRequest.h"

using toolkit::BoxIcon;
using toolkit::MsgBox;

namespace {

constexpr int kLeft = 1500, kTop = 800, kHeight = 5895, kHeightWithList = 8790;

}  // namespace

frmRequest::frmRequest(PatientOnScreen& patient, QWidget* parent)
    : QDialog(parent),
      ui(std::make_unique<Ui::frmRequest>()),
      m_patient(patient),
      m_idNum(patient.IdNum()),
      m_hospNum(patient.HospNum()) {
    ui->setupUi(this);
    ui->fraList->hide();
    m_list = std::make_unique<ChargeList>(*ui->grdCharges);
    m_charges = new ChargeGrid(*ui->grdInput, RequestRules(), this);
    new DoctorFields(*ui->txtDoctorID, *ui->txtDoctor, *ui->cmdDoctor, *ui->grdInput, this);
    connect(m_charges, &ChargeGrid::TotalsChanged, this, &frmRequest::ShowTotals);
    connect(m_charges, &ChargeGrid::Told, ui->lblMessage, &QLabel::setText);
    connect(m_charges, &ChargeGrid::ItemCommitted, this, [this] {
        ui->cmdSave->setEnabled(true);
        ui->cmdSavePrint->setEnabled(true);
    });
    connect(ui->cmdSave, &QPushButton::clicked, this, &frmRequest::cmdSave_Click);
    connect(ui->cmdSavePrint, &QPushButton::clicked, this, &frmRequest::cmdSavePrint_Click);
    connect(ui->cmdRePrint, &QPushButton::clicked, this, &frmRequest::cmdRePrint_Click);
    connect(ui->cmdRevoke, &QPushButton::clicked, this, &frmRequest::cmdRevoke_Click);
    connect(ui->cmdCDF, &QPushButton::clicked, this, &frmRequest::cmdCDF_Click);
    connect(ui->cmdList, &QPushButton::clicked, this, &frmRequest::cmdList_Click);
    connect(ui->Command1, &QPushButton::clicked, this, &frmRequest::Command1_Click);
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
        SlipPatientName(m_patient.LastName(), m_patient.FirstName(), m_patient.MiddleName())
            .trimmed());
    ui->lblIdNum->setText(m_idNum.trimmed());
    ui->lblCompany->setText(m_patient.Company());
    clsComputeDiscount::Shared().SetIdNum(m_idNum.trimmed());
    ShowPatientClass();
    CheckFund();
    m_list->Load(m_idNum);
    m_loaded = true;
}

// A sponsored patient whose fund is used up is not charged before the company has answered.
void frmRequest::CheckFund() {
    const bool isSponsored = modCDF::CheckCompany(m_idNum.trimmed());
    ui->cmdCDF->setVisible(isSponsored);
    if (!isSponsored)
        return;
    m_fund.SetHospNum(m_hospNum);
    m_fund.SetIdNum(m_idNum);
    m_fund.SetDeptID(SlipCodes::kUnit);
    m_fund.Show_FundBalance();
    if (m_fund.OutputFundBalance() != 0)
        return;
    MsgBox(QStringLiteral("Cannot post charges, CDF Balance is 0.00 or Cost Center is not "
                          "applicable for the Fund.Contact Credit and Collection for Information"),
           BoxIcon::Exclamation);
    ui->cmdSave->hide();
    ui->cmdSavePrint->hide();
    ui->grdInput->SetSaveButton(nullptr);
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

SlipHead frmRequest::Head() const {
    return {m_patient.HospNum(), m_patient.IdNum(), m_patient.CAPDNum(), ui->txtDoctorID->text(),
            ui->txtDoctor->text()};
}

SlipTexts frmRequest::Texts(const QString& slipNumber) const {
    SlipTexts texts;
    texts.SlipNumber = slipNumber;
    texts.PatientName =
        SlipPatientName(m_patient.LastName(), m_patient.FirstName(), m_patient.MiddleName());
    texts.Company = ui->lblCompany->text();
    texts.IdNum = m_patient.IdNum();
    texts.HospNum = m_patient.HospNum();
    texts.Doctor = ui->txtDoctor->text();
    texts.Age = m_patient.Age();
    texts.Sex = m_patient.Sex();
    texts.PatientClass = ui->lblPatientClass->text();
    return texts;
}

SlipPrint::Layout frmRequest::Layout() const {
    return modCDF::CheckCompany(m_idNum.trimmed()) ? SlipPrint::Layout::ByCompany
                                                   : SlipPrint::Layout::Plain;
}

void frmRequest::SaveCharges(
    const std::function<void(const QString&, const std::vector<SlipLine>&)>& finish) {
    if (!ui->grdInput->EndEditMode() || m_isWriting || m_isSaved)
        return;
    const QScopedValueRollback writing(m_isWriting, true);
    const auto lines = LinesToSave(*ui->grdInput);
    if (!lines)
        return;
    const QString slipNumber = RequestSlip(Head(), m_fund).Save(*lines);
    // The slip stands: whatever fails from here on, this sheet must not be saved again.
    m_isSaved = true;
    const auto closing = qScopeGuard([this] { accept(); });
    cmdCDF_Click();
    finish(slipNumber, *lines);
}

void frmRequest::cmdSave_Click() {
    SaveCharges([](const QString&, const std::vector<SlipLine>&) {});
}

void frmRequest::cmdSavePrint_Click() {
    SaveCharges([this](const QString& slipNumber, const std::vector<SlipLine>& lines) {
        MsgBox(QStringLiteral("Record successfully Saved!"));
        SlipPrint::Open(Layout(), Texts(slipNumber), PrintLines(lines, true));
        SlipPrint::Show();
    });
}

void frmRequest::cmdRePrint_Click() {
    const QString slipNumber = m_list->Slip();
    ui->lblMessage->clear();
    if (m_isWriting)
        return;
    if (slipNumber.isEmpty()) {
        ui->lblMessage->setText(QStringLiteral("There is no slip to be printed again."));
        return;
    }
    const QScopedValueRollback writing(m_isWriting, true);
    SlipTexts texts = Texts(slipNumber);
    texts.Doctor = RequestingDoctorOf(slipNumber);
    texts.IsReprint = true;
    SlipPrint::Open(Layout(), texts, PrintLines(m_list->LinesOf(slipNumber)));
    SlipPrint::Show();
}

void frmRequest::cmdRevoke_Click() {
    ui->lblMessage->clear();
    if (m_isWriting)
        return;
    const QScopedValueRollback writing(m_isWriting, true);
    if (!m_list->IsOnCharge()) {
        MsgBox(QStringLiteral("There are no Charges to be revoked."), BoxIcon::Information,
               QStringLiteral("Message"));
        return;
    }
    const QString slipNumber = m_list->Slip();
    SlipHead head;
    head.HospNum = m_hospNum;
    head.IdNum = m_idNum.trimmed();
    SlipReversal(head, slipNumber, m_fund).Revoke(m_list->LinesOf(slipNumber));
    m_list->Load(m_idNum);
}

void frmRequest::cmdCDF_Click() {
    if (!modCDF::CheckCompany(m_idNum.trimmed()))
        return;
    frmPDAF view(this);
    view.SetHospNum(m_hospNum.trimmed());
    view.SetIdNum(m_idNum.trimmed());
    view.exec();
}

void frmRequest::cmdList_Click() {
    if (!ui->fraList->isVisible()) {
        m_heightWithoutList = height();
        ui->fraList->show();
        setMinimumHeight(toolkit::Twips(kHeightWithList, this));
        const int room = screen()->availableGeometry().bottom() - y();
        resize(width(), std::min(height() + ui->fraList->sizeHint().height(), room));
    }
    m_list->Load(m_idNum);
    ui->grdCharges->setFocus();
}

void frmRequest::Command1_Click() {
    ui->fraList->hide();
    setMinimumHeight(toolkit::Twips(kHeight, this));
    move(toolkit::Twips(kLeft, this), toolkit::Twips(kTop, this));
    resize(width(), m_heightWithoutList);
    ui->grdInput->setFocus();
}

// Enter belongs to the boxes and the sheet, and Esc takes back what is being typed: only a button
// that has the keyboard closes the window with all that was typed in it.
void frmRequest::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) && button) {
        if (!event->isAutoRepeat())
            button->click();
    } else if (key == Qt::Key_Escape && ui->fraList->isAncestorOf(focusWidget())) {
        Command1_Click();
    } else if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Escape) {
        QDialog::keyPressEvent(event);
    }
}

void frmRequest::done(int result) {
    // A cell left half typed is dropped with the sheet: nothing of it is looked up any more.
    ui->grdInput->blockSignals(true);
    QDialog::done(result);
}
