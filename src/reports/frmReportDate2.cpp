#include "reports/frmReportDate2.h"

#include <QScreen>
#include <QShowEvent>

#include "base/Clock.h"
#include "base/Dates.h"
#include "toolkit/MsgBox.h"
#include "ui_frmReportDate2.h"

frmReportDate2& frmReportDate2::Shared() {
    static frmReportDate2* const window = new frmReportDate2;
    return *window;
}

frmReportDate2::frmReportDate2(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmReportDate2>()) {
    m_ui->setupUi(this);
    connect(m_ui->cmdEnter, &QPushButton::clicked, this, &frmReportDate2::cmdEnter_Click);
    connect(m_ui->cmdClose, &QPushButton::clicked, this, &frmReportDate2::reject);
}

frmReportDate2::~frmReportDate2() = default;

void frmReportDate2::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (event->spontaneous())
        return;
    m_closed = false;
    const QDate today = base::Clock::Today();
    m_ui->dtStart->setDate(today);
    m_ui->dtEnd->setDate(today);
    m_ui->dtStart->setFocus(Qt::TabFocusReason);
    const QRect area = screen()->availableGeometry();
    move(area.center() - rect().center());
}

void frmReportDate2::cmdEnter_Click() {
    for (toolkit::DateEdit* box : {m_ui->dtStart, m_ui->dtEnd}) {
        if (box->date().isValid())
            continue;
        toolkit::MsgBox(QStringLiteral("Please enter a date."), toolkit::BoxIcon::Information,
                        QStringLiteral("Message"));
        box->setFocus(Qt::TabFocusReason);
        return;
    }
    if (m_ui->dtEnd->date() < m_ui->dtStart->date()) {
        toolkit::MsgBox(QStringLiteral("The end date is before the start date."),
                        toolkit::BoxIcon::Information, QStringLiteral("Message"));
        m_ui->dtEnd->setFocus(Qt::TabFocusReason);
        return;
    }
    m_startDate = base::ShortDate(m_ui->dtStart->date());
    m_endDate = base::ShortDate(m_ui->dtEnd->date());
    accept();
}

void frmReportDate2::reject() {
    m_closed = true;
    QDialog::reject();
}
