#include "components/builtin/frmPickList.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>

#include "db/Recordset.h"
#include "toolkit/KeyGuard.h"
#include "toolkit/ListLimit.h"
#include "toolkit/UpperCase.h"
#include "ui_frmPickList.h"

namespace components {

frmPickList::frmPickList(PickListSetup setup, std::shared_ptr<db::Connection> connection,
                         QWidget* parent)
    : QDialog(parent ? parent : QApplication::activeWindow()),
      ui(std::make_unique<Ui::frmPickList>()),
      m_setup(std::move(setup)),
      m_connection(std::move(connection)),
      m_model(m_setup.Columns) {
    ui->setupUi(this);
    toolkit::KeyGuard::TakesNoEarlyKeys(*this);
    setWindowTitle(m_setup.Title);
    ui->lblHospital->setText(m_setup.Heading);
    ui->lblHospital->setVisible(!m_setup.Heading.isEmpty());
    ui->lblTitle->setText(m_setup.Title);
    ui->lvwRecords->SetListModel(&m_model, m_setup.Columns);
    ShowLooks();
    ui->txtSearch->setValidator(new toolkit::UpperCase(ui->txtSearch));
    ui->txtSearch->installEventFilter(this);
    ui->lvwRecords->installEventFilter(this);
    connect(ui->txtSearch, &QLineEdit::textEdited, this, &frmPickList::Search);
    connect(ui->lvwRecords, &toolkit::ListView::RowChosen, this, &frmPickList::ShowChoice);
    connect(ui->lvwRecords, &toolkit::ListView::RowOpened, this, &frmPickList::cmdSelect_Click);
    connect(ui->cmdSelect, &QPushButton::clicked, this, &frmPickList::cmdSelect_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmPickList::~frmPickList() = default;

QString frmPickList::Pick(const QString& text, std::shared_ptr<const db::RowStore> found) {
    ui->txtSearch->setText(text);
    if (found)
        Show(std::move(found));
    else
        Search();
    ui->txtSearch->selectAll();
    m_code.clear();
    return exec() == Accepted ? m_code : QString();
}

void frmPickList::ShowLooks() {
    for (int column = 0; column < int(m_setup.Columns.size()); ++column) {
        const auto look = m_setup.Looks.find(m_setup.Columns[column].Field);
        if (look != m_setup.Looks.end())
            ui->lvwRecords->setItemDelegateForColumn(column,
                                                     new PickListDelegate(look->second, this));
    }
}

void frmPickList::Search() {
    db::Recordset found;
    found.Open(m_setup.Command(ui->txtSearch->text().trimmed()), m_connection);
    Show(found.Rows());
}

void frmPickList::Show(std::shared_ptr<const db::RowStore> rows) {
    m_rows = std::move(rows);
    m_model.SetRows(m_rows);
    ui->lblTotal->setText(QString::number(m_rows->RowCount()));
    ui->lblLimit->setText(toolkit::ListLimitText(m_rows->RowCount()));
    // Enter takes the first of what was searched, never of everything there is.
    const bool marksFirst = m_rows->RowCount() > 0 && !ui->txtSearch->text().trimmed().isEmpty();
    ui->lvwRecords->setCurrentIndex(marksFirst ? m_model.index(0, 0) : QModelIndex());
    ShowChoice();
}

void frmPickList::ShowChoice() {
    ui->cmdSelect->setEnabled(ui->lvwRecords->currentIndex().isValid());
}

void frmPickList::cmdSelect_Click() {
    const QModelIndex current = ui->lvwRecords->currentIndex();
    if (!current.isValid())
        return;
    m_code =
        m_rows->TextAt(m_model.SourceRow(current.row()), m_rows->ColumnIndex(m_setup.CodeField));
    accept();
}

bool frmPickList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == ui->txtSearch && key == Qt::Key_Down && m_model.rowCount() > 0) {
        if (!ui->lvwRecords->currentIndex().isValid())
            ui->lvwRecords->setCurrentIndex(m_model.index(0, 0));
        ui->lvwRecords->setFocus();
        return true;
    }
    if (watched == ui->lvwRecords && key == Qt::Key_Up &&
        ui->lvwRecords->currentIndex().row() <= 0) {
        ui->txtSearch->setFocus();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace components
