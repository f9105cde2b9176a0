#include "patients/frmPatientListing.h"

#include <QApplication>
#include <QKeyEvent>

#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"
#include "toolkit/Busy.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/KeyGuard.h"
#include "toolkit/ListLimit.h"
#include "toolkit/UpperCase.h"
#include "ui_frmPatientListing.h"

namespace {

constexpr int kHospNumColumn = 1;
constexpr int kWidths[] = {200, 1000, 2000, 2000, 2000, 1500};

}  // namespace

frmPatientListing::frmPatientListing()
    : QDialog(QApplication::activeWindow()), ui(std::make_unique<Ui::frmPatientListing>()) {
    ui->setupUi(this);
    toolkit::KeyGuard::TakesNoEarlyKeys(*this);
    ui->txtSearch->setValidator(new toolkit::UpperCase(ui->txtSearch));
    ui->txtSearch->installEventFilter(this);
    connect(ui->txtSearch, &QLineEdit::returnPressed, this, &frmPatientListing::List);
    connect(ui->chkCurrent, &QCheckBox::clicked, this, &frmPatientListing::List);
    connect(ui->grdTable, &toolkit::FlexGrid::CurrentRowChanged, this,
            [this] { ui->cmdSelect->setEnabled(m_hasRows); });
    connect(ui->grdTable, &toolkit::FlexGrid::RowOpened, this, &frmPatientListing::cmdSelect_Click);
    connect(ui->cmdSelect, &QPushButton::clicked, this, &frmPatientListing::cmdSelect_Click);
    connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

frmPatientListing::~frmPatientListing() = default;

int frmPatientListing::exec() {
    m_valid = false;
    Load();
    return QDialog::exec();
}

void frmPatientListing::Load() {
    m_resultCode.clear();
    ui->cmbSearch->clear();
    ui->cmbSearch->addItems({QStringLiteral("Last Name"), QStringLiteral("Admission #")});
    setWindowTitle(m_caption);
    ui->lblTitle->setText(QStringLiteral("    ") + m_caption);
    ui->chkCurrent->setText(m_currentCaption);
    ui->chkCurrent->setVisible(!m_currentCaption.isEmpty());
    ui->cmdAddWalkIn->setVisible(m_enableAddPatient);
    ui->txtSearch->setText(m_record);
    List();
}

QString frmPatientListing::spPatientList(const QString& current, const QString& searchBy,
                                         const QString& text) const {
    return db::FromTemplate(m_query, {{QStringLiteral("#1"), current},
                                      {QStringLiteral("#2"), searchBy},
                                      {QStringLiteral("#3"), text}});
}

void frmPatientListing::List() {
    const toolkit::Busy busy;
    db::Recordset found;
    found.SetCursorLocation(3);
    found.Open(spPatientList(QString::number(int(ui->chkCurrent->isChecked())),
                             QString::number(ui->cmbSearch->currentIndex()),
                             ui->txtSearch->text().trimmed()),
               modGlobals::gCurrentUser->SQLConnection(), 2, 3, -1);
    ui->grdTable->setUpdatesEnabled(false);
    ui->grdTable->Bind(found.Eof() ? nullptr : found.Rows());
    FormatGrid();
    ui->grdTable->setUpdatesEnabled(true);
    ui->lblLimit->setText(toolkit::ListLimitText(found.RecordCount()));
    m_hasRows = !found.Eof();
    // Nobody is marked in a list of everybody.
    if (ui->txtSearch->text().trimmed().isEmpty())
        ui->grdTable->SetRow(0);
    ui->cmdSelect->setEnabled(m_hasRows && ui->grdTable->Row() > 0);
}

void frmPatientListing::FormatGrid() {
    ui->grdTable->SetCols(int(std::size(kWidths)));
    for (int col = 0; col < int(std::size(kWidths)); ++col)
        ui->grdTable->SetColWidth(col, kWidths[col]);
    ui->cmdSelect->setEnabled(false);
}

void frmPatientListing::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && isVisible())
        ui->txtSearch->setFocus(Qt::TabFocusReason);
}

bool frmPatientListing::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down) {
        ui->grdTable->SetRow(1);
        ui->grdTable->setFocus();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmPatientListing::cmdSelect_Click() {
    if (!ui->cmdSelect->isEnabled())
        return;
    m_valid = true;
    m_resultCode = ui->grdTable->TextMatrix(ui->grdTable->Row(), kHospNumColumn);
    accept();
}
