#include "components/builtin/frmResultViewer.h"

#include <QScreen>

#include "toolkit/CellText.h"
#include "ui_frmResultViewer.h"

namespace components {

frmResultViewer::frmResultViewer(const QString& patientName, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmResultViewer>()) {
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(QStringLiteral("Laboratory Result - ") + toolkit::OneLine(patientName));
    resize(size().boundedTo(screen()->availableSize() * 9 / 10));
    m_ui->preResult->setFocus();
}

frmResultViewer::~frmResultViewer() = default;

void frmResultViewer::SetResult(std::shared_ptr<const print::ReportPages> pages) {
    m_ui->preResult->SetReport(std::move(pages), windowTitle());
}

}  // namespace components
