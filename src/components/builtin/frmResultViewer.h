#pragma once

#include <QDialog>
#include <memory>

#include "print/ReportPages.h"

namespace Ui {
class frmResultViewer;
}

namespace components {

/// A laboratory result on the screen, from where it is printed or saved as PDF.
class frmResultViewer final : public QDialog {
    Q_OBJECT
public:
    /// The patient stands in the caption and in the name proposed for a file.
    explicit frmResultViewer(const QString& patientName, QWidget* parent = nullptr);
    ~frmResultViewer() override;

    void SetResult(std::shared_ptr<const print::ReportPages> pages);

private:
    std::unique_ptr<Ui::frmResultViewer> m_ui;
};

}  // namespace components
