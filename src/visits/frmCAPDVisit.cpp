#include "visits/frmCAPDVisit.h"

#include <QScreen>
#include <array>

#include "base/Errors.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/Saved.h"
#include "session/modGlobals.h"
#include "toolkit/Busy.h"
#include "toolkit/EntryKeys.h"
#include "toolkit/MsgBox.h"
#include "toolkit/Twips.h"
#include "ui_frmCAPDVisit.h"
#include "visits/frmPastVisit.h"

namespace {

QString TodayCommand(const QString& idNum) {
    return QStringLiteral(
               "SELECT IdNum FROM CLINICAL_AREA..tbCAPDLogBook WHERE TransDate between "
               "convert(varchar(10),getdate(),101) and getdate() and IdNum = ") +
           db::Quoted(idNum);
}

QString SaveCommand(const QStringList& arguments) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_RegisterPatient"), arguments);
}

QString VisitsCommand(const QString& hospNum) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_GetVisits"), {hospNum});
}

constexpr int kArguments = 27;
constexpr int kSecondVisit = 50204;
constexpr int kHeightWithVisits = 8820;
constexpr int kDiagnosisColumn = 4, kPressureColumn = 6;
constexpr int kNarrowestChart = 280;
constexpr std::array<int, 5> kColumnTwips{100, 1100, 2100, 1000, 3000};

}  // namespace

frmCAPDVisit::frmCAPDVisit(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmCAPDVisit>()) {
    ui->setupUi(this);
    ui->pdFields->SetCatheters(
        {QStringLiteral("  Silatic "), QStringLiteral("  Stiff"), QStringLiteral("  Tenchkoff")});
    ui->pdFields->LimitTo(QStringLiteral("tbCAPDLogBook"));
    ui->fraVisits->hide();
    std::vector<QWidget*> order = ui->pdFields->EntryOrder();
    order.insert(order.end(), {ui->cmdSave, ui->cmdClose, ui->cmdView});
    new toolkit::EntryKeys(*this, order, *ui->cmdClose);
    connect(ui->cmdSave, &QPushButton::clicked, this, &frmCAPDVisit::cmdSave_Click);
    connect(ui->cmdView, &QPushButton::clicked, this, &frmCAPDVisit::cmdView_Click);
    connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui->grdTable, &toolkit::FlexGrid::CurrentRowChanged, this,
            &frmCAPDVisit::grdTable_RowColChange);
    connect(ui->grdTable, &toolkit::FlexGrid::RowOpened, this, &frmCAPDVisit::grdTable_DblClick);
    order.front()->setFocus();
}

frmCAPDVisit::~frmCAPDVisit() = default;

void frmCAPDVisit::SetCAPDNum(const QString& capdNum) {
    ui->txtCAPDNum->setText(capdNum);
}

void frmCAPDVisit::SetPatientName(const QString& name) {
    ui->lblPatient->setText(name);
}

// The server's day counts, not the one on which this window was opened.
bool frmCAPDVisit::HasVisitToday() const {
    db::Recordset today;
    today.Open(TodayCommand(m_idNum), modGlobals::gConnection, 2, 1, -1);
    return today.RecordCount() >= 1;
}

QStringList frmCAPDVisit::Arguments() const {
    QStringList arguments(kArguments, QString());
    arguments[0] = m_hospNum;
    arguments[1] = m_idNum;
    arguments[2] = ui->txtCAPDNum->text();
    ui->pdFields->PutInto(arguments);
    arguments[kArguments - 1] = modGlobals::gCurrentUser->EmployeeCode();
    if (!ui->pdFields->Purpose().isEmpty())
        arguments.append(ui->pdFields->Purpose());
    return arguments;
}

void frmCAPDVisit::RefuseSecondVisit() {
    toolkit::MsgBox(QStringLiteral("Patient's visit for this day is already registered."),
                    toolkit::BoxIcon::Information, QStringLiteral("Message"));
}

void frmCAPDVisit::cmdSave_Click() {
    if (!ui->pdFields->DatesAreMeant())
        return;
    if (HasVisitToday())
        return RefuseSecondVisit();
    if (ui->pdFields->IsEmpty() &&
        toolkit::MsgBox(QStringLiteral("This visit has no readings.\n\nSave it all the same?"),
                        toolkit::BoxIcon::Exclamation, QStringLiteral("Message"),
                        toolkit::BoxButtons::YesNo) != toolkit::BoxAnswer::Yes)
        return;
    try {
        modGlobals::gConnection->Execute(SaveCommand(Arguments()));
    } catch (const base::DatabaseError& error) {
        // Another nurse was faster between the check and the save: the same answer, and what was
        // typed stays.
        if (error.Number() != kSecondVisit)
            throw;
        return RefuseSecondVisit();
    }
    ui->cmdSave->setEnabled(false);
    const Saved saved(QStringLiteral("Today's visit is saved"), ui->lblPatient->text(),
                      QStringLiteral("CAPD No. %1").arg(ui->txtCAPDNum->text()));
    saved.Then(QStringLiteral("Reading the list"), [this] {
        toolkit::MsgBox(QStringLiteral("Registration Successfully Saved."),
                        toolkit::BoxIcon::Information, QStringLiteral("Message"));
        accept();
    });
}

void frmCAPDVisit::cmdView_Click() {
    const toolkit::Busy busy;
    db::Recordset visits;
    visits.SetCursorLocation(3);
    visits.Open(VisitsCommand(m_hospNum), modGlobals::gConnection, 2, 1, -1);
    ShowVisitGrid();
    if (visits.RecordCount() > 0) {
        ui->grdTable->Bind(visits.Rows());
        m_visits = visits.Rows();
        ui->chtVisits->SetVisits(visits::ReadVisits(*m_visits));
        grdTable_RowColChange(ui->grdTable->Row());
        ShowReadings();
        ui->grdTable->setFocus(Qt::OtherFocusReason);
    }
    visits.Close();
}

void frmCAPDVisit::grdTable_RowColChange(int row) {
    ui->chtVisits->Mark(row - 1);
    ui->lblVisit->setText(ui->chtVisits->MarkText());
}

void frmCAPDVisit::grdTable_DblClick(int row) {
    if (m_visits && row >= 1)
        frmPastVisit(*m_visits, row - 1, ui->lblPatient->text(), this).exec();
}

// Weight and pressure are what a visit is looked up for: they stand in sight, the chart beside
// them.
void frmCAPDVisit::ShowReadings() {
    const toolkit::FlexGrid& grid = *ui->grdTable;
    ui->grdTable->setColumnWidth(kDiagnosisColumn,
                                 toolkit::Twips(kColumnTwips[kDiagnosisColumn], this));
    int needed = grid.width() - grid.viewport()->width() +
                 grid.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    for (int column = 0; column <= kPressureColumn; ++column)
        needed += grid.columnWidth(column);
    ui->grdTable->setMinimumWidth(qMin(needed, width() - kNarrowestChart));
}

void frmCAPDVisit::ShowVisitGrid() {
    ui->fraVisits->show();
    setMinimumHeight(qMax(toolkit::Twips(kHeightWithVisits, this), minimumSizeHint().height()));
    resize(width(), qMax(height(), minimumHeight()));
    const QRect area = screen()->availableGeometry();
    if (frameGeometry().bottom() > area.bottom())
        move(x(), qMax(area.top(), y() - (frameGeometry().bottom() - area.bottom())));
    m_visits.reset();
    ui->lblVisit->clear();
    ui->grdTable->Bind(nullptr);
    if (ui->grdTable->Cols() < int(kColumnTwips.size()))
        ui->grdTable->SetCols(int(kColumnTwips.size()));
    for (size_t column = 0; column < kColumnTwips.size(); ++column)
        ui->grdTable->SetColWidth(int(column), kColumnTwips[column]);
    ui->chtVisits->SetVisits({});
}
