#pragma once

#include <memory>

#include "charges/ChargeRules.h"
#include "charges/ChargeSheetDialog.h"

class ChargeGrid;
class clsRegularPatientSearch;

namespace Ui {
class frmAssessment;
}

/// The charge sheet of a walk-in who pays cash: the patient is found by last name, the slip is
/// what the cashier collects against. Shown modal.
class frmAssessment final : public ChargeSheetDialog {
    Q_OBJECT
public:
    explicit frmAssessment(QWidget* parent = nullptr);
    ~frmAssessment() override;

    /// Loads at the first showing.
    void setVisible(bool visible) override;

private:
    void Load();
    void txtSname_Enter();
    void txtSname_LostFocus();
    void ShowPatient(const clsRegularPatientSearch& patient);
    void ShowPatientClass(const QString& hospNum);
    void ShowTotals(const ChargeTotals& totals);
    QString SaveAssessment(const Lines& lines);
    bool SaveOnce(const std::function<QString(const Lines&)>& save, const Finish& print);
    void Print(const QString& slipNumber, const Lines& lines) const;
    void cmdSave_Click();
    void cmdSavePrint_Click();

    std::unique_ptr<Ui::frmAssessment> ui;
    ChargeGrid* m_charges;
    /// Of the patient found; what is typed into the last name's box afterwards is not hers yet.
    QString m_patientName;
    QString m_lastName;
    QString m_sex;
    QString m_age;
    QString m_patientClass;  ///< "P" pays, "S" has a social service class
    bool m_loaded = false;
};
