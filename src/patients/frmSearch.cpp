#include "patients/frmSearch.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyle>
#include <QWindow>

#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/KeyGuard.h"
#include "toolkit/Keys.h"
#include "toolkit/UpperCase.h"
#include "ui_frmSearch.h"

namespace {

constexpr int kNameColumn = 1;
constexpr int kCodeColumn = 2;
constexpr int kWidths[] = {200, 4150, 1500};
constexpr int kTipImage = 16;

}  // namespace

frmSearch::frmSearch(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::frmSearch>()) {
    ui->setupUi(this);
    toolkit::KeyGuard::TakesNoEarlyKeys(*this);
    ui->imgHelpTip->setPixmap(
        style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(kTipImage, kTipImage));
    ui->txtSearchStr->setValidator(new toolkit::UpperCase(ui->txtSearchStr));
    ui->txtSearchStr->installEventFilter(this);
    QFont bold = ui->grdDispWindow->horizontalHeader()->font();
    bold.setBold(true);
    ui->grdDispWindow->horizontalHeader()->setFont(bold);
    connect(ui->txtSearchStr, &QLineEdit::textEdited, this, &frmSearch::txtSearchStr_Change);
    connect(ui->grdDispWindow, &toolkit::FlexGrid::CurrentRowChanged, this,
            &frmSearch::grdDispWindow_RowColChange);
    connect(ui->grdDispWindow, &toolkit::FlexGrid::RowOpened, this, &frmSearch::cmdSelect_Click);
    connect(ui->cmdSelect, &QPushButton::clicked, this, &frmSearch::cmdSelect_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmSearch::~frmSearch() = default;

frmSearch& frmSearch::Shared() {
    static std::unique_ptr<frmSearch> shared;
    if (!shared) {
        shared = std::make_unique<frmSearch>();
        // No window may outlive the application.
        qAddPostRoutine([] { shared.reset(); });
    }
    return *shared;
}

int frmSearch::exec() {
    m_valid = false;
    Load();
    // Shared by several windows, it belongs to none; on screen it stays over the one that asks.
    const QWidget* asking = QApplication::activeWindow();
    winId();
    windowHandle()->setTransientParent(asking ? asking->windowHandle() : nullptr);
    ui->txtSearchStr->setFocus();
    ui->txtSearchStr->selectAll();
    return QDialog::exec();
}

void frmSearch::reject() {
    m_valid = false;
    QDialog::reject();
}

void frmSearch::Load() {
    ui->lblHospital->setText(modGlobals::gCompany);
    setWindowTitle(m_caption);
    ui->lblSTitle->setText(m_caption);
    ui->lblTitle->setText(m_caption);
    ShowInBox(m_criteria);
    Search();
    SetColumnWidths();
}

void frmSearch::SetColumnWidths() {
    for (int col = 0; col < qMin(int(std::size(kWidths)), ui->grdDispWindow->Cols()); ++col)
        ui->grdDispWindow->SetColWidth(col, kWidths[col]);
}

void frmSearch::Search() {
    const auto found = modGlobals::gCurrentUser->SQLConnection()->Execute(
        db::FromTemplate(m_query, {{QStringLiteral("##"), m_criteria}}));
    const auto rows = found->State() > 0 ? found->Rows() : nullptr;
    ui->grdDispWindow->Bind(rows);
    // The grid shows a blank row for nothing; here nothing is there to be picked.
    if (!rows || rows->RowCount() == 0)
        ui->grdDispWindow->SetRows(1);
    // Enter takes the first of what was searched, never of everything there is.
    if (m_criteria.trimmed().isEmpty())
        ui->grdDispWindow->SetRow(0);
    ShowChoice();
    ui->lblTotal->setText(QString::number(ui->grdDispWindow->Rows() - 1));
}

bool frmSearch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn)
        ui->txtSearchStr->selectAll();
    if (event->type() == QEvent::KeyPress && SearchBoxKey(static_cast<QKeyEvent&>(*event)))
        return true;
    return QDialog::eventFilter(watched, event);
}

// Upper case is for what is typed: a description is shown as the server spells it.
void frmSearch::ShowInBox(const QString& text) {
    const QValidator* upperCase = ui->txtSearchStr->validator();
    ui->txtSearchStr->setValidator(nullptr);
    ui->txtSearchStr->setText(text);
    ui->txtSearchStr->setValidator(upperCase);
}

bool frmSearch::SearchBoxKey(const QKeyEvent& key) {
    if (key.key() == Qt::Key_Down) {
        ui->grdDispWindow->SetRow(1);
        ui->grdDispWindow->setFocus();
        return true;
    }
    if (toolkit::IsEnter(key))
        cmdSelect_Click();
    return toolkit::IsEnter(key);
}

void frmSearch::ShowChoice() {
    ui->cmdSelect->setEnabled(ui->grdDispWindow->Row() >= 1);
}

void frmSearch::txtSearchStr_Change(const QString& text) {
    m_criteria = text;
    Search();
}

void frmSearch::grdDispWindow_RowColChange(int row) {
    ShowInBox(ui->grdDispWindow->TextMatrix(row, kNameColumn));
    ShowChoice();
}

void frmSearch::cmdSelect_Click() {
    const int row = ui->grdDispWindow->Row();
    if (row < 1)
        return;
    m_resultCode = ui->grdDispWindow->TextMatrix(row, kCodeColumn);
    m_valid = true;
    accept();
}
