#pragma once

#include <QDialog>
#include <memory>

#include "charges/ChargeRules.h"

class ChargeGrid;
class PatientOnScreen;

namespace Ui {
class frmRequest;
}

/// The charge sheet of a patient's visit: who asked for it, what was used and done, and what it
/// costs the patient. Shown modal over the patient's hub.
class frmRequest final : public QDialog {
    Q_OBJECT
public:
    /// For the patient whose hub is open, who must stay open as long as this window.
    explicit frmRequest(PatientOnScreen& patient, QWidget* parent = nullptr);
    ~frmRequest() override;

    /// At first those of the patient on screen; set them before the window is shown.
    const QString& IdNum() const { return m_idNum; }
    void SetIdNum(const QString& idNum) { m_idNum = idNum; }
    const QString& HospNum() const { return m_hospNum; }
    void SetHospNum(const QString& hospNum) { m_hospNum = hospNum; }

    /// Loads at the first showing. Throws base::DatabaseError and shows nothing when that fails.
    void setVisible(bool visible) override;
    void done(int result) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Load();
    void ShowTotals(const ChargeTotals& totals);
    void ShowPatientClass();
    void cmdSave_Click();

    std::unique_ptr<Ui::frmRequest> ui;
    PatientOnScreen& m_patient;
    ChargeGrid* m_charges;
    QString m_idNum;
    QString m_hospNum;
    bool m_loaded = false;
};
