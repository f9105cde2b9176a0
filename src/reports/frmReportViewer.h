#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmReportViewer;
}

/// Shows gReport when it is first shown, and releases it when it is closed.
class frmReportViewer final : public QDialog {
    Q_OBJECT
public:
    explicit frmReportViewer(QWidget* parent = nullptr);
    ~frmReportViewer() override;

    /// Both are accepted and without effect: a report is always seen before it is printed, and
    /// the unit's reports have no group tree.
    void SetShowGroupTree(bool) {}
    void SetDirectPrint(bool) {}

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Form_Load();

    std::unique_ptr<Ui::frmReportViewer> m_ui;
    bool m_loaded = false;
};
