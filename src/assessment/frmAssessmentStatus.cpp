#include "assessment/frmAssessmentStatus.h"

#include <QKeyEvent>

#include "assessment/CashAssessment.h"
#include "base/Numbers.h"
#include "charges/SlipPrint.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/Saved.h"
#include "session/modGlobals.h"
#include "toolkit/Busy.h"
#include "toolkit/ListView.h"
#include "toolkit/MsgBox.h"
#include "toolkit/UpperCase.h"
#include "ui_frmAssessmentStatus.h"

using toolkit::BoxIcon;
using toolkit::Image;
using toolkit::MsgBox;

namespace {

const QString kMessage = QStringLiteral("Message");
const QString kClear = QStringLiteral("DELETE CLINICAL_AREA..tbcapdChargeSlip");

QString StatusCommand(const QString& searchText) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_AssessmentStatus"), {searchText});
}

enum Column {
    PatientName,
    Code,
    Exam,
    Quantity,
    RefNum,
    Amount,
    Status,
    RecordStatus,
    AssessID,
    IdNum,
    RevenueID,
    RequestDoctor,
    Age,
    Sex,
    PatientClass,
    HospNum,
    TransDate
};

const std::vector<toolkit::ListColumn>& Columns() {
    static const std::vector<toolkit::ListColumn> columns{
        {QStringLiteral("Name"), 2600, QStringLiteral("PatientName")},
        {QStringLiteral("Code"), 700, QStringLiteral("Code")},
        {QStringLiteral("Item Description"), 2600, QStringLiteral("Exam")},
        {QStringLiteral("Quantity"), 800, QStringLiteral("Quantity"), QStringLiteral("1")},
        {QStringLiteral("RefNum"), 1000, QStringLiteral("RefNum")},
        {QStringLiteral("Amount"), 900, QStringLiteral("Amount"), {}, true},
        {QStringLiteral("Status"), 1200, QStringLiteral("Status")},
        {QStringLiteral("RecordStatus"), 1100, QStringLiteral("RecordStatus")},
        {QStringLiteral("AssessID"), 900, QStringLiteral("AssessID")},
        {QStringLiteral("Adm.Num."), 1100, QStringLiteral("IdNum")},
        {QStringLiteral("RevenueId"), 900, QStringLiteral("RevenueID")},
        {QStringLiteral("RequestingDoctor"), 1900, QStringLiteral("RequestDoctor")},
        {QStringLiteral("Age"), 500, QStringLiteral("Age")},
        {QStringLiteral("Sex"), 500, QStringLiteral("Sex")},
        {QStringLiteral("PatientClass"), 1100, QStringLiteral("PatientClass")},
        {QString(), 0, QStringLiteral("HospNum")},
        {QString(), 0, QStringLiteral("TransDate")}};
    return columns;
}

Image ImageOf(AssessmentState state) {
    switch (state) {
        case AssessmentState::Paid:
            return Image::Paid;
        case AssessmentState::Revoked:
            return Image::Revoked;
        default:
            return Image::Pending;
    }
}

}  // namespace

frmAssessmentStatus::frmAssessmentStatus(QWidget* parent)
    : QDialog(parent),
      ui(std::make_unique<Ui::frmAssessmentStatus>()),
      m_lines(new toolkit::RowListModel(Columns(), this)) {
    ui->setupUi(this);
    // A list that is hidden with its window asks once more, when the form itself is gone.
    m_lines->SetImages(
        [lines = m_lines](int row) { return ImageOf(StateOf(lines->TextAt(row, Status))); });
    ui->lvwListAssessment->SetListModel(m_lines, Columns());
    ui->lvwListAssessment->setColumnHidden(HospNum, true);
    ui->lvwListAssessment->setColumnHidden(TransDate, true);
    ui->txtSearch->setValidator(new toolkit::UpperCase(ui->txtSearch));
    ui->txtSearch->installEventFilter(this);
    connect(ui->txtSearch, &QLineEdit::returnPressed, this,
            [this] { Load(ui->txtSearch->text()); });
    connect(ui->btnCancel, &QPushButton::clicked, this, &frmAssessmentStatus::btnCancel_Click);
    connect(ui->btnPrint, &QPushButton::clicked, this, &frmAssessmentStatus::btnPrint_Click);
    connect(ui->btnClose, &QPushButton::clicked, this, &QDialog::reject);
}

frmAssessmentStatus::~frmAssessmentStatus() = default;

void frmAssessmentStatus::setVisible(bool visible) {
    if (visible && !m_loaded) {
        ui->cmbSearch->setCurrentIndex(1);
        Load({});
        m_loaded = true;
    }
    QDialog::setVisible(visible);
}

void frmAssessmentStatus::Load(const QString& searchText) {
    const toolkit::Busy busy;
    db::Recordset found;
    found.SetCursorLocation(3);
    found.Open(StatusCommand(searchText), modGlobals::gCurrentUser->SQLConnection(), 2, 1, -1);
    m_lines->SetRows(found.Rows());
    if (found.Eof()) {
        ui->btnCancel->setEnabled(false);
        ui->btnPrint->setEnabled(false);
        ui->lblMessage->setText(
            QStringLiteral("Nothing was found. Open this window again to revoke or reprint."));
    }
}

bool frmAssessmentStatus::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down && m_lines->rowCount() > 0) {
        ui->lvwListAssessment->setFocus(Qt::TabFocusReason);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

QString frmAssessmentStatus::Cell(int row, int column) const {
    return m_lines->TextAt(row, column);
}

int frmAssessmentStatus::ChosenRow() const {
    const int row = ui->lvwListAssessment->currentIndex().row();
    if (row < 0)
        MsgBox(QStringLiteral("Please select an assessment."), BoxIcon::Information, kMessage);
    return row;
}

void frmAssessmentStatus::btnCancel_Click() {
    const int row = ChosenRow();
    if (row < 0)
        return;
    const QString refNum = Cell(row, RefNum);
    AssessmentState state = StateOf(Cell(row, Status));
    // The list may be older than the cashier's receipt or a colleague's revocation.
    if (state == AssessmentState::Pending)
        state = RevokeAssessment(refNum);
    switch (state) {
        case AssessmentState::Paid:
            MsgBox(QStringLiteral("Entry is already Paid."), BoxIcon::None, kMessage);
            break;
        case AssessmentState::Revoked:
            MsgBox(QStringLiteral("Entry is already Revoked."), BoxIcon::None, kMessage);
            break;
        case AssessmentState::Pending: {
            const Saved revoked(QStringLiteral("Assessment slip %1 is revoked").arg(refNum),
                                Cell(row, PatientName));
            MsgBox(QStringLiteral("Data is Successfully Revoked."), BoxIcon::None, kMessage);
            state = AssessmentState::Revoked;
            break;
        }
    }
    ShowState(refNum, state);
}

void frmAssessmentStatus::ShowState(const QString& refNum, AssessmentState state) {
    for (int row = 0; row < m_lines->rowCount(); ++row) {
        if (Cell(row, RefNum) != refNum || StateOf(Cell(row, Status)) == state)
            continue;
        if (state == AssessmentState::Revoked) {
            m_lines->SetTextAt(row, Status, QStringLiteral("REVOKED"));
            m_lines->SetTextAt(row, RecordStatus, QStringLiteral("R"));
        } else {
            m_lines->SetTextAt(row, Status, QStringLiteral("PAID"));
        }
    }
}

void frmAssessmentStatus::btnPrint_Click() {
    const int chosen = ChosenRow();
    if (chosen < 0)
        return;
    const QString refNum = Cell(chosen, RefNum);
    const QString revenueId = Cell(chosen, RevenueID);
    const bool isOwn = revenueId.isEmpty() || revenueId == modGlobals::gRevenueID;
    std::vector<PrintLine> lines;
    for (int row = 0; row < m_lines->rowCount(); ++row) {
        if (Cell(row, RefNum) != refNum)
            continue;
        const double typed = base::Val(Cell(row, Quantity));
        const double quantity = typed == 0 ? 1 : typed;
        const double amount = base::Val(Cell(row, Amount));
        const QString exam = Cell(row, Exam);
        lines.push_back({Cell(row, Code), isOwn ? exam : QStringLiteral("** %1 **").arg(exam),
                         quantity, base::Val(base::MoneyText(amount / quantity)), amount, revenueId,
                         modGlobals::gCurrentUser->EmployeeCode(), 0, amount});
    }
    SlipTexts texts;
    texts.SlipNumber = refNum;
    texts.PatientName = Cell(chosen, PatientName);
    texts.Company = QStringLiteral("OPD-CASH");
    texts.IdNum = Cell(chosen, IdNum);
    texts.HospNum = Cell(chosen, HospNum);
    texts.Doctor = Cell(chosen, RequestDoctor);
    texts.Clear = kClear;
    texts.Reprint = FirstPrintOf(refNum);
    texts.Age = Cell(chosen, Age);
    texts.Sex = Cell(chosen, Sex);
    texts.PatientClass = Cell(chosen, PatientClass);
    const Saved stands(QStringLiteral("Assessment slip %1 stands").arg(refNum), texts.PatientName);
    stands.Then(QStringLiteral("Printing again"), [&] {
        SlipPrint::Open(SlipPrint::Layout::Plain, texts, lines);
        SlipPrint::Show();
    });
}
