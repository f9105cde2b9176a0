#include "reports/frmReportViewer.h"

#include <QScreen>

#include "session/modGlobals.h"
#include "toolkit/Busy.h"
#include "ui_frmReportViewer.h"

frmReportViewer::frmReportViewer(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmReportViewer>()) {
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize(size().boundedTo(screen()->availableSize() * 9 / 10));
    m_ui->CRViewer1->setFocus();
}

frmReportViewer::~frmReportViewer() {
    modGlobals::gReport.reset();
}

void frmReportViewer::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!m_loaded)
        Form_Load();
    m_loaded = true;
}

void frmReportViewer::Form_Load() {
    const toolkit::Busy busy;
    if (modGlobals::gReport)
        m_ui->CRViewer1->SetReport(modGlobals::gReport->Pages(), windowTitle());
}
