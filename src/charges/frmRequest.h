#pragma once

#include <memory>

#include "charges/ChargeList.h"
#include "charges/ChargeRules.h"
#include "charges/ChargeSheetDialog.h"
#include "funds/clsPDAF.h"

class PatientOnScreen;

namespace Ui {
class frmRequest;
}

/// The charge sheet of a patient's visit: who asked for it, what was used and done, and what it
/// costs the patient; saved and printed as a charge slip. Under it the visit's earlier slips, which
/// can be printed again and revoked. Shown modal over the patient's hub.
class frmRequest final : public ChargeSheetDialog {
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

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Load();
    void ShowTotals(const ChargeTotals& totals);
    void ShowPatientClass();
    /// Shows what the visit's sponsor allows; false when nothing may be saved.
    bool ReadFund();
    void ShowFundGate(bool isOpen);
    void RefuseCharges();
    SlipHead Head() const;
    SlipTexts Texts(const QString& slipNumber) const;
    SlipPrint::Layout Layout() const;
    /// What both save buttons share; `finish` runs after the commit and the funds.
    void SaveCharges(const Finish& finish);
    void cmdSave_Click();
    void cmdSavePrint_Click();
    void cmdRePrint_Click();
    void cmdRevoke_Click();
    void cmdCDF_Click();
    void cmdList_Click();
    void Command1_Click();

    std::unique_ptr<Ui::frmRequest> ui;
    PatientOnScreen& m_patient;
    ChargeGrid* m_charges;
    std::unique_ptr<ChargeList> m_list;
    clsPDAF m_fund;
    QString m_idNum;
    QString m_hospNum;
    bool m_loaded = false;
    int m_heightWithoutList = 0;
};
