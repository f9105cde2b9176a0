#include "patients/frmRegistration.h"

#include "base/Dates.h"
#include "db/CommandText.h"
#include "deploy/ColumnLengths.h"
#include "session/Saved.h"
#include "session/modGlobals.h"
#include "toolkit/EntryKeys.h"
#include "toolkit/MsgBox.h"
#include "toolkit/Tips.h"
#include "ui_frmRegistration.h"

namespace {

QString ReadCommand(const QString& hospNum) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_SearchPatientData"), {hospNum});
}

QString ChangeCommand(const QString& hospNum) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_SheetChange"), {hospNum});
}

QString SaveCommand(const QStringList& arguments) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_RegisterPatient"), arguments);
}

constexpr int kArguments = 29;
const QString kTable = QStringLiteral("tbCAPDPatient");
const QString kChangedAt = QStringLiteral("ChangedAt");
const QString kNumberCaption = QStringLiteral("CAPD No. : ");

}  // namespace

frmRegistration::frmRegistration(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmRegistration>()) {
    ui->setupUi(this);
    ui->pdFields->SetCatheters(
        {QStringLiteral("  Silastic "), QStringLiteral("  Stiff"), QStringLiteral("  Tenckhoff")});
    ui->pdFields->LimitTo(kTable);
    ui->txtNextKin->setMaxLength(deploy::ColumnLength(kTable, QStringLiteral("NextKin")));
    ui->txtStatus->setMaxLength(deploy::ColumnLength(kTable, QStringLiteral("Status")));
    std::vector<QWidget*> order{ui->txtNextKin, ui->txtStatus, ui->optWithPeritonitis0};
    for (QWidget* field : ui->pdFields->EntryOrder())
        order.push_back(field);
    order.insert(order.end(), {ui->cmdSave, ui->cmdClose});
    new toolkit::EntryKeys(*this, order, *ui->cmdClose);
    connect(ui->cmdSave, &QPushButton::clicked, this, &frmRegistration::cmdSave_Click);
    connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    ui->txtNextKin->setFocus();
}

frmRegistration::~frmRegistration() = default;

QString frmRegistration::NumberOnFile(const QString& hospNum) {
    db::Recordset sheet;
    sheet.Open(ReadCommand(hospNum), modGlobals::gConnection, 2, 1, -1);
    return sheet.Eof() ? QString() : sheet.Fields(QStringLiteral("CAPDNum")).Text();
}

void frmRegistration::SetHospNum(const QString& hospNum) {
    m_hospNum = hospNum;
    Load();
}

void frmRegistration::Load() {
    ui->lblCAPDNum->hide();
    db::Recordset sheet;
    sheet.Open(ReadCommand(m_hospNum), modGlobals::gConnection, 2, 1, -1);
    if (sheet.RecordCount() > 0) {
        const auto text = [&sheet](const char16_t* column) {
            return sheet.Fields(QString::fromUtf16(column)).Text();
        };
        ui->txtHospNum->setText(text(u"HospNum"));
        ui->txtAddress1->setText(text(u"address1"));
        ui->txtAddress2->setText(text(u"address2"));
        ui->txtAddress3->setText(text(u"address3"));
        ui->txtAge->setText(text(u"Age"));
        ui->txtSex->setText(text(u"Sex"));
        ui->txtOccupation->setText(text(u"occupation"));
        ui->txtNextKin->setText(text(u"nextKin"));
        ui->txtStatus->setText(text(u"Status"));
        ui->pdFields->Load(sheet);
        m_changedAt = sheet.Fields(kChangedAt).Value().Moment();
        m_numberOnFile = text(u"CAPDNum");
        ui->lblCAPDNum->setText(
            kNumberCaption + (m_numberOnFile.isEmpty() ? QStringLiteral("(NEW)") : m_numberOnFile));
        ui->lblCAPDNum->show();
        ui->pdFields->ChoosePurpose(text(u"Purpose"));
        if (text(u"WithPeritonitis").trimmed() == QStringLiteral("Y"))
            ui->optWithPeritonitis1->setChecked(true);
    }
    sheet.Close();
}

// The label then holds the bare number, which the save sends back; what it is stands beside it. A
// list read before another station registered the patient knows no number: the file does.
void frmRegistration::ShowPatient(const components::ListedPatient& patient, const QString& idNum,
                                  const QString& capdNum) {
    ui->lblCAPDNum->setText(capdNum);
    ui->lblCAPDNum->show();
    const QString known = m_numberOnFile.isEmpty() ? QStringLiteral("(NEW)") : m_numberOnFile;
    ui->lblCAPDNumCaption->setText(capdNum.isEmpty() ? kNumberCaption + known
                                                     : kNumberCaption.trimmed());
    ui->txtHospNum->setText(patient.HospitalNumber);
    ui->txtLastName->setText(patient.LastName);
    ui->txtFirstName->setText(patient.FirstName);
    ui->txtMiddleName->setText(patient.MiddleName);
    ui->txtAge->setText(patient.Age);
    ui->txtSex->setText(patient.Sex);
    ui->txtIdNum->setText(idNum);
    // A long text is read from its beginning, and whole under the mouse.
    for (QLineEdit* box : findChildren<QLineEdit*>()) {
        box->setCursorPosition(0);
        if (box->isReadOnly())
            box->setToolTip(toolkit::TipOf(box->text()));
    }
}

QStringList frmRegistration::Arguments() const {
    QStringList arguments(kArguments, QString());
    ui->pdFields->PutInto(arguments);
    const auto put = [&arguments](int position, const QString& text) {
        arguments[position - 1] = text;
    };
    put(1, ui->txtHospNum->text());
    put(2, ui->txtIdNum->text());
    put(3, ui->lblCAPDNum->text());
    put(4, ui->pdFields->ChronicPD().trimmed());
    put(6, ui->txtNextKin->text());
    put(26, ui->txtStatus->text());
    put(27, modGlobals::gCurrentUser->EmployeeCode());
    put(28, ui->pdFields->Purpose());
    put(29, ui->optWithPeritonitis1->isChecked() ? QStringLiteral("Y") : QStringLiteral("N"));
    return arguments;
}

// The question is asked outside of the transaction: nobody else waits for its answer.
std::shared_ptr<db::Recordset> frmRegistration::Save() {
    for (;;) {
        QDateTime changedAt;
        QString changedBy;
        {
            db::Transaction transaction(*modGlobals::gConnection);
            const auto change =
                modGlobals::gConnection->Execute(ChangeCommand(ui->txtHospNum->text()));
            if (!change->Eof()) {
                changedAt = change->Fields(kChangedAt).Value().Moment();
                changedBy = change->Fields(QStringLiteral("ChangedBy")).Text();
            }
            if (changedAt == m_changedAt) {
                auto registered = modGlobals::gConnection->Execute(SaveCommand(Arguments()));
                transaction.Commit();
                return registered;
            }
        }
        if (toolkit::MsgBox(
                QStringLiteral("%1 saved this patient's sheet at %2, after it was opened here.\n\n"
                               "Save this one over it? What was changed there is lost then.")
                    .arg(changedBy, base::DateTimeText(changedAt)),
                toolkit::BoxIcon::Exclamation, QStringLiteral("Message"),
                toolkit::BoxButtons::YesNo) != toolkit::BoxAnswer::Yes)
            return nullptr;
        m_changedAt = changedAt;
    }
}

void frmRegistration::cmdSave_Click() {
    if (!ui->pdFields->DatesAreMeant())
        return;
    const auto registered = Save();
    if (!registered)
        return;
    // What is saved is saved once, whatever key was pressed meanwhile.
    ui->cmdSave->setEnabled(false);
    const QString patient =
        QStringLiteral("%1, %2 %3")
            .arg(ui->txtLastName->text(), ui->txtFirstName->text(), ui->txtMiddleName->text());
    const Saved saved(QStringLiteral("The registration is saved"), patient.trimmed(),
                      registered->Eof()
                          ? QString()
                          : QStringLiteral("CAPD No. %1").arg(registered->Fields(0).Text()));
    saved.Then(QStringLiteral("Reading the list"), [this] {
        toolkit::MsgBox(QStringLiteral("Registration Successfully Saved."),
                        toolkit::BoxIcon::Information, QStringLiteral("Message"));
        accept();
    });
}
