#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmReportDate2;
}

/// Asks for the first and the last day of a report. One shared window: startdate() and enddate()
/// keep those of its last "Enter".
class frmReportDate2 final : public QDialog {
    Q_OBJECT
public:
    /// The one window; lives as long as the program.
    static frmReportDate2& Shared();
    explicit frmReportDate2(QWidget* parent = nullptr);
    ~frmReportDate2() override;

    /// "M/d/yyyy"; empty before the first "Enter".
    const QString& startdate() const { return m_startDate; }
    const QString& enddate() const { return m_endDate; }
    /// True when the window was left without "Enter" since it was last shown.
    bool CloseForm() const { return m_closed; }

public slots:
    void reject() override;

protected:
    /// Centred on the screen, both days today, not cancelled.
    void showEvent(QShowEvent* event) override;

private:
    void cmdEnter_Click();

    std::unique_ptr<Ui::frmReportDate2> m_ui;
    QString m_startDate;
    QString m_endDate;
    bool m_closed = false;
};
