#include "charges/frmRequest.h"

#include <QKeyEvent>
#include <QScreen>

#include "base/Numbers.h"
#include "charges/ChargeGrid.h"
#include "charges/PatientClass.h"
#include "charges/RequestSlip.h"
#include "charges/SlipCodes.h"
#include "charges/SlipReversal.h"
#include "charges/clsComputeDiscount.h"
#include "funds/frmPDAF.h"
#include "funds/modCDF.h"
#include "patients/PatientOnScreen.h"
#include "session/Saved.h"
#include "toolkit/FunctionKey.h"
#include "toolkit/MsgBox.h"
#include "toolkit/Twips.h"
#include "ui_frmRequest.h"

using toolkit::BoxIcon;
using toolkit::MsgBox;

namespace {

const QString kClearForReprint = QStringLiteral("DELETE clinical_area..tbCAPDChargeSlip");
constexpr int kLeft = 1500, kTop = 800, kHeight = 5895, kHeightWithList = 8790;

}  // namespace

frmRequest::frmRequest(PatientOnScreen& patient, QWidget* parent)
    : ChargeSheetDialog(parent),
      ui(std::make_unique<Ui::frmRequest>()),
      m_patient(patient),
      m_idNum(patient.IdNum()),
      m_hospNum(patient.HospNum()) {
    ui->setupUi(this);
    ui->fraList->hide();
    m_list = std::make_unique<ChargeList>(*ui->grdCharges);
    m_charges = SetUpSheet({*ui->txtDoctorID, *ui->txtDoctor, *ui->cmdDoctor, *ui->grdInput,
                            *ui->lblMessage, *ui->cmdSave, *ui->cmdSavePrint, *ui->cmdClose},
                           RequestRules());
    connect(m_charges, &ChargeGrid::TotalsChanged, this, &frmRequest::ShowTotals);
    connect(ui->cmdSave, &QPushButton::clicked, this, &frmRequest::cmdSave_Click);
    connect(ui->cmdSavePrint, &QPushButton::clicked, this, &frmRequest::cmdSavePrint_Click);
    connect(ui->cmdRePrint, &QPushButton::clicked, this, &frmRequest::cmdRePrint_Click);
    connect(ui->cmdRevoke, &QPushButton::clicked, this, &frmRequest::cmdRevoke_Click);
    connect(ui->cmdCDF, &QPushButton::clicked, this, &frmRequest::cmdCDF_Click);
    connect(ui->cmdList, &QPushButton::clicked, this, &frmRequest::cmdList_Click);
    connect(ui->Command1, &QPushButton::clicked, this, &frmRequest::Command1_Click);
    toolkit::SetFunctionKey(*ui->Command1, Qt::Key_F8);
    toolkit::SetFunctionKey(*ui->cmdClose, Qt::Key_F12);
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
    if (!ReadFund())
        RefuseCharges();
    m_list->Load(m_idNum);
    m_loaded = true;
}

bool frmRequest::ReadFund() {
    const bool isSponsored = modCDF::CheckCompany(m_idNum.trimmed());
    ui->cmdCDF->setVisible(isSponsored);
    if (isSponsored) {
        m_fund.SetHospNum(m_hospNum);
        m_fund.SetIdNum(m_idNum);
        m_fund.SetDeptID(SlipCodes::kUnit);
        m_fund.Show_FundBalance();
    }
    const bool isOpen = !isSponsored || m_fund.OutputFundBalance() != 0;
    ShowFundGate(isOpen);
    return isOpen;
}

void frmRequest::ShowFundGate(bool isOpen) {
    ui->cmdSave->setVisible(isOpen);
    ui->cmdSavePrint->setVisible(isOpen);
    ui->grdInput->SetSaveButton(isOpen ? ui->cmdSave : nullptr);
}

void frmRequest::RefuseCharges() {
    ShowFundGate(false);
    MsgBox(QStringLiteral("Cannot post charges, CDF Balance is 0.00 or Cost Center is not "
                          "applicable for the Fund.Contact Credit and Collection for Information"),
           BoxIcon::Exclamation);
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

void frmRequest::SaveCharges(const Finish& finish) {
    const auto save = [this](const Lines& lines) {
        const QString slipNumber = RequestSlip(Head(), m_fund).Save(lines);
        if (slipNumber.isEmpty())
            RefuseCharges();
        return slipNumber;
    };
    SaveSheet(save, QStringLiteral("Slip %1 is saved"), ui->lblPatient->text(),
              [&](const Saved& saved, const QString& slipNumber, const Lines& lines) {
                  saved.Then(QStringLiteral("Showing the fund"), [this] { cmdCDF_Click(); });
                  finish(saved, slipNumber, lines);
              });
}

void frmRequest::cmdSave_Click() {
    SaveCharges([](const Saved&, const QString&, const Lines&) {});
}

void frmRequest::cmdSavePrint_Click() {
    SaveCharges([this](const Saved& saved, const QString& slipNumber, const Lines& lines) {
        MsgBox(QStringLiteral("Record successfully Saved!"));
        saved.Then(QStringLiteral("Printing"), [&] {
            SlipPrint::Open(Layout(), Texts(slipNumber), PrintLines(lines, true));
            SlipPrint::Show();
        });
    });
}

void frmRequest::cmdRePrint_Click() {
    ui->lblMessage->clear();
    WriteAlone([this] {
        const QString slipNumber = m_list->Slip();
        // Another station may have revoked the slip since the list was read.
        m_list->Load(m_idNum);
        if (slipNumber.isEmpty() || m_list->Slip() != slipNumber) {
            ui->lblMessage->setText(
                slipNumber.isEmpty()
                    ? QStringLiteral("Choose a slip in the list first.")
                    : QStringLiteral("Slip %1 does not stand any more.").arg(slipNumber));
            return;
        }
        SlipTexts texts = Texts(slipNumber);
        texts.Clear = kClearForReprint;
        texts.Reprint = FirstPrintOf(slipNumber);
        texts.Doctor = texts.Reprint->Doctor;
        const Saved stands(QStringLiteral("Slip %1 stands").arg(slipNumber),
                           ui->lblPatient->text());
        stands.Then(QStringLiteral("Printing again"), [&] {
            SlipPrint::Open(Layout(), texts, PrintLines(m_list->LinesOf(slipNumber)));
            SlipPrint::Show();
        });
    });
}

void frmRequest::cmdRevoke_Click() {
    ui->lblMessage->clear();
    WriteAlone([this] {
        if (!m_list->IsOnCharge()) {
            MsgBox(QStringLiteral("There are no Charges to be revoked."), BoxIcon::Information,
                   QStringLiteral("Message"));
            return;
        }
        const QString slipNumber = m_list->Slip();
        SlipHead head;
        head.HospNum = m_hospNum;
        head.IdNum = m_idNum.trimmed();
        const auto lines = m_list->LinesOf(slipNumber);
        SlipReversal(head, slipNumber, m_fund).Revoke(lines);
        const Saved revoked(
            QStringLiteral("Slip %1 is revoked as far as it can be").arg(slipNumber),
            ui->lblPatient->text());
        revoked.Then(QStringLiteral("Reading the list"), [&] {
            m_list->Load(m_idNum);
            ui->lblMessage->setText(ReversalText(slipNumber, lines, m_list->LinesOf(slipNumber)));
        });
        // What was paid back may be charged again.
        revoked.Then(QStringLiteral("Reading the fund"), [this] { ReadFund(); });
    });
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

// While the list of charges has the keyboard, Esc puts the list away.
void frmRequest::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && ui->fraList->isAncestorOf(focusWidget()))
        Command1_Click();
    else
        ChargeSheetDialog::keyPressEvent(event);
}
