#include "patients/frmPatientList.h"

#include <QButtonGroup>
#include <QKeyEvent>

#include "db/CommandText.h"
#include "session/modGlobals.h"
#include "toolkit/Busy.h"
#include "toolkit/Keys.h"
#include "toolkit/ListView.h"
#include "toolkit/MsgBox.h"
#include "toolkit/UpperCase.h"
#include "ui_frmPatientList.h"

namespace {

QString SearchCommand(const QString& mode, const QString& hospNum, const QString& idNum,
                      const QString& lastName) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_Patientsearch"),
                    {mode, hospNum.trimmed(), idNum.trimmed(), lastName.trimmed()});
}

enum PatientType { CapdPatients, OutPatients, InPatients, ErPatients };

enum Column { IdNumColumn, HospNumColumn, LastName = 3, FirstName, MiddleName, CapdNumColumn };

const std::vector<toolkit::ListColumn>& Columns() {
    static const std::vector<toolkit::ListColumn> columns{
        {QStringLiteral(" Adm. No."), 1000, QStringLiteral("IdNum")},
        {QStringLiteral(" Hosp.No."), 1050, QStringLiteral("HospNum")},
        {QStringLiteral(" Adm.Date"), 1900, QStringLiteral("AdmDate")},
        {QStringLiteral(" Last Name"), 1550, QStringLiteral("LastName")},
        {QStringLiteral(" First Name"), 1550, QStringLiteral("FirstName")},
        {QStringLiteral(" Middle Name"), 1550, QStringLiteral("MiddleName")},
        {QStringLiteral(" CAPD Num"), 1050, QStringLiteral("CAPDNum")},
        {QStringLiteral(" PatientType  "), 1350, QStringLiteral("roomid")},
        {QStringLiteral(" Address"), 2300, QStringLiteral("Address")}};
    return columns;
}

const QString kHintNobody =
    QStringLiteral("Nobody was found. Type a number or a last name, then press Enter.");
const QString kHintToOpen = QStringLiteral(
    "Enter or double click opens the patient.  A star marks a CAPD patient.\n"
    "Letters and digits search anew, Ctrl+1 to Ctrl+9 sort by a column.");

}  // namespace

frmPatientList::frmPatientList(QWidget* parent)
    : QWidget(parent),
      ui(std::make_unique<Ui::frmPatientList>()),
      m_rows(new toolkit::RowListModel(Columns(), this)) {
    ui->setupUi(this);
    SetUpFields();
    SetUpList();
    Load();
}

frmPatientList::~frmPatientList() = default;

void frmPatientList::SetUpFields() {
    ui->OptPatientType->setId(ui->OptPatientType0, CapdPatients);
    ui->OptPatientType->setId(ui->OptPatientType1, OutPatients);
    ui->OptPatientType->setId(ui->OptPatientType2, InPatients);
    ui->OptPatientType->setId(ui->OptPatientType3, ErPatients);
    // The Tab key comes to the type that is searched now; the arrows go on to the others.
    const auto leadTab = [](QAbstractButton* option, bool chosen) {
        option->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
    };
    for (QAbstractButton* option : ui->OptPatientType->buttons())
        leadTab(option, option->isChecked());
    connect(ui->OptPatientType, &QButtonGroup::buttonToggled, this, leadTab);
    connect(ui->OptPatientType, &QButtonGroup::buttonToggled, this,
            &frmPatientList::OptPatientType_Click);
    for (QLineEdit* field : Fields()) {
        field->setValidator(new toolkit::UpperCase(field));
        field->installEventFilter(this);
        connect(field, &QLineEdit::returnPressed, this, &frmPatientList::cmdSearch_Click);
    }
    connect(ui->txtLastName, &QLineEdit::textEdited, this, &frmPatientList::txtLastName_Change);
    connect(ui->cmdSearch, &QPushButton::clicked, this, &frmPatientList::cmdSearch_Click);
}

void frmPatientList::SetUpList() {
    // The room of the star is kept on every row, so that the numbers stand in one line.
    m_rows->SetImages([rows = m_rows](int row) {
        return rows->TextAt(row, CapdNumColumn).isEmpty() ? toolkit::Image::Blank
                                                          : toolkit::Image::Star;
    });
    ui->lvwSearchPatient->SetListModel(m_rows, Columns());
    ui->lvwSearchPatient->installEventFilter(this);
    connect(ui->lvwSearchPatient, &toolkit::ListView::RowChosen, this,
            &frmPatientList::lvwSearchPatient_ItemClick);
    connect(ui->lvwSearchPatient, &toolkit::ListView::RowOpened, this,
            &frmPatientList::lvwSearchPatient_DblClick);
}

void frmPatientList::Load() {
    ui->OptPatientType1->setChecked(true);
    ui->chkCurrent->setChecked(true);
    if (m_hospNum.isEmpty() && m_idNum.isEmpty() && m_capdNum.isEmpty())
        Search({}, QStringLiteral("A"), {});
    else
        Search(m_hospNum, m_idNum, {});
}

std::array<QLineEdit*, 3> frmPatientList::Fields() const {
    return {ui->txtIdNum, ui->txtHospNum, ui->txtLastName};
}

bool frmPatientList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    auto& key = static_cast<QKeyEvent&>(*event);
    if (watched == ui->lvwSearchPatient)
        return ListKey(key) || QWidget::eventFilter(watched, event);
    if (key.key() == Qt::Key_Down && ui->lvwSearchPatient->isEnabled()) {
        ui->lvwSearchPatient->setFocus(Qt::TabFocusReason);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

// The next patient is often typed before a search box has the keys. Numbers of visits begin with a
// letter: digits are an admission's only among in-patients, else a hospital number.
bool frmPatientList::ListKey(QKeyEvent& key) {
    if (key.key() == Qt::Key_Escape) {
        ui->txtLastName->setFocus(Qt::TabFocusReason);
        return true;
    }
    if (!toolkit::IsCharacter(key) || !key.text()[0].isLetterOrNumber())
        return false;
    const bool inPatients = ui->OptPatientType->checkedId() == InPatients;
    QLineEdit* field = !key.text()[0].isDigit() ? ui->txtLastName
                       : inPatients             ? ui->txtIdNum
                                                : ui->txtHospNum;
    for (QLineEdit* box : Fields())
        box->clear();
    field->setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(field, &key);
    return true;
}

// No name goes on with a digit: what began as one is the number of a visit.
void frmPatientList::txtLastName_Change(const QString& text) {
    if (text.size() < 2 || !text[0].isLetter() || !text[1].isDigit())
        return;
    ui->txtLastName->clear();
    ui->txtIdNum->setFocus(Qt::OtherFocusReason);
    ui->txtIdNum->setText(text);
}

// Emergency and in-patients are always searched whole.
void frmPatientList::OptPatientType_Click(QAbstractButton* option, bool chosen) {
    if (!chosen)
        return;
    const int type = ui->OptPatientType->id(option);
    const bool canBeCurrent = type == CapdPatients || type == OutPatients;
    if (canBeCurrent == ui->chkCurrent->isEnabled())
        return;
    if (!canBeCurrent)
        m_wasCurrent = ui->chkCurrent->isChecked();
    ui->chkCurrent->setChecked(canBeCurrent && m_wasCurrent);
    ui->chkCurrent->setEnabled(canBeCurrent);
}

void frmPatientList::cmdSearch_Click() {
    const QString idNum = ui->txtIdNum->text().trimmed();
    const QString hospNum = ui->txtHospNum->text().trimmed();
    const QString lastName = ui->txtLastName->text().trimmed();
    if (idNum.isEmpty() && hospNum.isEmpty() && lastName.isEmpty()) {
        toolkit::MsgBox(QStringLiteral("Please Enter a search text."),
                        toolkit::BoxIcon::Information, QStringLiteral("Message"));
        return;
    }
    Search(hospNum, idNum, lastName);
    if (m_rows->rowCount() == 0)
        SelectSearchedText();
}

// The next try replaces the text that found nobody.
void frmPatientList::SelectSearchedText() {
    QLineEdit* searched = nullptr;
    for (QLineEdit* box : Fields())
        if (!box->text().trimmed().isEmpty() && (!searched || box->hasFocus()))
            searched = box;
    searched->setFocus(Qt::OtherFocusReason);
    searched->selectAll();
}

QString frmPatientList::SearchMode() const {
    const bool current = ui->chkCurrent->isChecked();
    switch (ui->OptPatientType->checkedId()) {
        case CapdPatients:
            return current ? QStringLiteral("3") : QStringLiteral("4");
        case InPatients:
            return QStringLiteral("6");
        case ErPatients:
            return QStringLiteral("5");
        default:
            return current ? QStringLiteral("1") : QStringLiteral("2");
    }
}

void frmPatientList::Search(const QString& hospNum, const QString& idNum, const QString& lastName) {
    emit StatusText({});
    Run(SearchCommand(SearchMode(), hospNum, idNum, lastName));
    m_searchedType = ui->OptPatientType->checkedId();
    // The first row becomes the chosen patient with the keyboard on it: what a key would act on
    // is what the status bar names.
    if (ui->lvwSearchPatient->isVisible())
        ui->lvwSearchPatient->setCurrentIndex(m_rows->index(0, 0));
}

// A patient who has left the list meanwhile, as one of yesterday's does at midnight, stays the
// chosen one: nobody else becomes it.
void frmPatientList::Renew() {
    const QString chosen = m_idNum;
    Run(m_lastSearch);
    for (int row = 0; row < m_rows->rowCount(); ++row)
        if (m_rows->TextAt(row, IdNumColumn) == chosen) {
            ui->lvwSearchPatient->setCurrentIndex(m_rows->index(row, 0));
            lvwSearchPatient_ItemClick(row);
            return;
        }
}

void frmPatientList::Run(const QString& command) {
    const toolkit::Busy busy;
    if (m_recordset.State() > 0)
        m_recordset.Close();
    m_recordset.SetCursorLocation(3);
    m_recordset.Open(command, modGlobals::gCurrentUser->SQLConnection(), 2, 1, -1);
    m_lastSearch = command;
    ShowRows();
    m_recordset.Close();
}

void frmPatientList::ShowRows() {
    ui->lblHint->setText(m_recordset.Eof() ? kHintNobody : kHintToOpen);
    if (m_recordset.Eof()) {
        ui->lvwSearchPatient->setEnabled(false);
        m_rows->SetRows(nullptr);
        return;
    }
    // A value that cannot be filled in leaves its place empty; the others are shown.
    m_rows->SetRows(m_recordset.Rows(), toolkit::RowListModel::Missing::Empty);
    ui->lvwSearchPatient->setEnabled(true);
    ui->lblRecCount->setText(
        QStringLiteral("Total No. of Records: %1").arg(m_recordset.RecordCount()));
    if (ui->lvwSearchPatient->isVisible())
        ui->lvwSearchPatient->setFocus(Qt::OtherFocusReason);
}

void frmPatientList::RememberRow(int row) {
    m_idNum = m_rows->TextAt(row, IdNumColumn);
    m_hospNum = m_rows->TextAt(row, HospNumColumn);
    m_capdNum = m_rows->TextAt(row, CapdNumColumn);
}

QString frmPatientList::NameOf(int row) const {
    return QStringLiteral("%1, %2 %3")
        .arg(m_rows->TextAt(row, LastName), m_rows->TextAt(row, FirstName),
             m_rows->TextAt(row, MiddleName))
        .trimmed();
}

void frmPatientList::lvwSearchPatient_ItemClick(int row) {
    if (row < 0)
        return;
    RememberRow(row);
    modGlobals::RaiseTabFlags();
    emit PatientChosen(m_hospNum, m_idNum, m_capdNum, NameOf(row));
}

void frmPatientList::lvwSearchPatient_DblClick(int row) {
    RememberRow(row);
    // The record is of the kind that was searched for, whatever option has been set since.
    const bool inPatient = m_searchedType == InPatients;
    const auto& listing = modGlobals::gOutpatientSearch;
    QString idNum = m_idNum;
    if (!listing->PatientListing(idNum,
                                 inPatient ? components::PatientLister::kInpatients
                                           : components::PatientLister::kOutpatients,
                                 false)) {
        if (!m_idNum.isEmpty())
            emit StatusText(
                QStringLiteral("No patient is listed under the number %1.").arg(m_idNum));
        return;
    }
    OpenedPatient patient;
    patient.Record = inPatient ? listing->Inpatient() : listing->Outpatient();
    patient.Room = inPatient ? patient.Record.roomid : QStringLiteral("OPD");
    patient.RoomClassID = inPatient ? patient.Record.RoomClassID : QString();
    patient.Company = patient.Record.AccountNum + u' ' + patient.Record.Company;
    patient.CAPDNum = m_capdNum;
    patient.PatientType = m_searchedType;
    emit PatientOpened(patient);
}
