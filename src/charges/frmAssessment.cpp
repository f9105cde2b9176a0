#include "charges/frmAssessment.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include "base/Errors.h"
#include "base/Numbers.h"
#include "charges/CashSlip.h"
#include "charges/ChargeGrid.h"
#include "charges/SlipPrint.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "patients/clsRegularPatientSearch.h"
#include "session/Saved.h"
#include "session/modGlobals.h"
#include "toolkit/MsgBox.h"
#include "toolkit/UpperCase.h"
#include "ui_frmAssessment.h"

using toolkit::BoxIcon;
using toolkit::MsgBox;

namespace {

const QString kClassLabel = QStringLiteral(
    "SELECT isnull(MSSNum,'') as MssNum, isnull(MSSClassification,'') as Mssclassification FROM "
    "PATIENT_DATA..tbMaster WHERE HospNum = ");
const QString kClass = QStringLiteral(
    "SELECT isnull(MSSClassification,'') as MSSClassification FROM PATIENT_DATA..tbMaster WHERE "
    "Hospnum = ");

const QString kMessage = QStringLiteral("Message");
const QString kSaved = QStringLiteral("Record Saved");
const QString kNotSaved = QStringLiteral("Record Not Successfully Saved");

/// The social service class that the command finds; nothing where there is no such patient.
std::optional<QString> ClassificationOf(const QString& command, const QString& hospNum) {
    db::Recordset found;
    found.SetCursorLocation(3);
    found.Open(command + db::Quoted(hospNum), modGlobals::gCurrentUser->SQLConnection(), 2, 1, -1);
    if (found.Eof())
        return {};
    return found.Fields(QStringLiteral("MSSClassification")).Text();
}

}  // namespace

frmAssessment::frmAssessment(QWidget* parent)
    : ChargeSheetDialog(parent), ui(std::make_unique<Ui::frmAssessment>()) {
    ui->setupUi(this);
    m_charges = SetUpSheet({*ui->txtDoctorID, *ui->txtDoctor, *ui->cmdDoctor, *ui->grdInput,
                            *ui->lblMessage, *ui->cmdSave, *ui->cmdSavePrint, *ui->cmdClose},
                           AssessmentRules());
    ui->txtSname->setValidator(new toolkit::UpperCase(ui->txtSname));
    connect(ui->txtSname, &QLineEdit::returnPressed, this, &frmAssessment::txtSname_Enter);
    connect(ui->txtSname, &QLineEdit::editingFinished, this, &frmAssessment::txtSname_LostFocus);
    connect(m_charges, &ChargeGrid::TotalsChanged, this, &frmAssessment::ShowTotals);
    connect(ui->cmdSave, &QPushButton::clicked, this, &frmAssessment::cmdSave_Click);
    connect(ui->cmdSavePrint, &QPushButton::clicked, this, &frmAssessment::cmdSavePrint_Click);
}

frmAssessment::~frmAssessment() = default;

void frmAssessment::setVisible(bool visible) {
    if (visible && !m_loaded)
        Load();
    QDialog::setVisible(visible);
}

void frmAssessment::Load() {
    m_charges->Initialize_TableInput(ui->cmdSave, ui->cmdClose);
    ShowPatientClass(ui->txtHospNum->text().trimmed());
    ui->fraCharges->setEnabled(false);
    ui->txtSname->setFocus();
    m_loaded = true;
}

void frmAssessment::txtSname_Enter() {
    clsRegularPatientSearch search;
    const QString typed = ui->txtSname->text().trimmed();
    ui->lblMessage->clear();
    if (search.ValidatePatient(typed, true))
        ShowPatient(search);
    else if (!m_patientName.isEmpty())
        ui->lblMessage->setText(
            QStringLiteral("Nobody was chosen. The sheet is still for %1.").arg(m_patientName));
    else
        ui->lblMessage->setText(QStringLiteral("Nobody was chosen."));
    ShowPatientClass(ui->txtHospNum->text().trimmed());
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QCoreApplication::sendEvent(ui->txtSname, &tab);
}

// A name that found nobody must not stand over the charges of the patient who was found before.
void frmAssessment::txtSname_LostFocus() {
    if (!m_patientName.isEmpty())
        ui->txtSname->setText(m_lastName);
}

void frmAssessment::ShowPatient(const clsRegularPatientSearch& patient) {
    ui->txtHospNum->setText(patient.HospNum());
    ui->txtIDNum->setText(u'T' + patient.HospNum() + u'C');
    ui->txtSname->setText(patient.LastName());
    ui->txtFname->setText(patient.FirstName());
    ui->txtMname->setText(patient.MiddleName());
    ui->txtRoomClassID->setText(QStringLiteral("A"));
    m_lastName = patient.LastName();
    m_patientName = SlipPatientName(patient.LastName(), patient.FirstName(), patient.MiddleName());
    m_sex = patient.Sex();
    m_age = patient.Age();
    const bool isPaying = ClassificationOf(kClass, patient.HospNum()).value_or(QString()).isEmpty();
    m_patientClass = isPaying ? QStringLiteral("P") : QStringLiteral("S");
    ui->fraCharges->setEnabled(true);
    // Before there is a sheet to go to, the Tab key does not lead to the way out.
    ui->cmdClose->setFocusPolicy(Qt::TabFocus);
}

void frmAssessment::ShowPatientClass(const QString& hospNum) {
    const std::optional<QString> classification = ClassificationOf(kClassLabel, hospNum);
    QString text;
    if (classification)
        text = classification->isEmpty()
                   ? QStringLiteral("Pay Patient")
                   : QStringLiteral("Service Patient: Class * ") + *classification;
    ui->lblpatientClass->setText(text);
    ui->lblpatientClass->setVisible(!text.isEmpty());
}

void frmAssessment::ShowTotals(const ChargeTotals& totals) {
    ui->txtGross->setText(base::MoneyText(totals.Gross));
}

QString frmAssessment::SaveAssessment(const Lines& lines) {
    const SlipHead head{ui->txtHospNum->text().trimmed(), ui->txtIDNum->text().trimmed(),
                        ui->txtCAPDNum->text().trimmed(), ui->txtDoctorID->text(),
                        ui->txtDoctor->text()};
    return CashSlip(head, m_patientName).Save(lines);
}

bool frmAssessment::SaveOnce(const std::function<QString(const Lines&)>& save,
                             const Finish& print) {
    const QString told = QStringLiteral("Slip %1 of %2 is saved").arg(u"%1", ui->txtIDNum->text());
    return SaveSheet(save, told, m_patientName,
                     [&print](const Saved& saved, const QString& slipNumber, const Lines& lines) {
                         MsgBox(kSaved, BoxIcon::Information, kMessage);
                         print(saved, slipNumber, lines);
                     });
}

void frmAssessment::cmdSave_Click() {
    SaveOnce([this](const Lines& lines) { return SaveAssessment(lines); },
             [](const Saved&, const QString&, const Lines&) {});
}

void frmAssessment::cmdSavePrint_Click() {
    bool isWritten = false;
    const auto save = [&](const Lines& lines) {
        const QString slipNumber = SaveAssessment(lines);
        isWritten = true;
        return slipNumber;
    };
    const auto print = [this](const Saved& saved, const QString& slipNumber, const Lines& lines) {
        saved.Then(QStringLiteral("Printing"), [&] { Print(slipNumber, lines); });
    };
    try {
        if (!SaveOnce(save, print))
            MsgBox(kNotSaved);
    } catch (const base::RuntimeError&) {
        if (!isWritten)
            MsgBox(kNotSaved);
        throw;
    }
}

void frmAssessment::Print(const QString& slipNumber, const Lines& lines) const {
    SlipTexts texts;
    texts.SlipNumber = slipNumber;
    texts.PatientName = m_patientName;
    texts.Company = QStringLiteral("OPD-CASH");
    texts.IdNum = ui->txtIDNum->text();
    texts.HospNum = ui->txtHospNum->text();
    texts.Doctor = ui->txtDoctor->text();
    texts.Age = m_age;
    texts.Sex = m_sex;
    texts.PatientClass = m_patientClass;
    SlipPrint::Open(SlipPrint::Layout::Plain, texts, PrintLines(lines, false));
    SlipPrint::Show();
}
