#pragma once

#include <QDialog>
#include <memory>

#include "wardrequests/WardVariant.h"

class PatientOnScreen;
class Saved;
class WardSheet;

namespace Ui {
class frmWardEntry;
}

/// What the pharmacy's and the central supply's request windows have in common, shown modal over
/// the patient's hub: the sheet, its buttons, and saving it into the nurses' log book. Once it
/// has saved it is closed, and nothing can be saved from it again.
class frmWardEntry : public QDialog {
    Q_OBJECT
public:
    ~frmWardEntry() override;

    /// Lays the sheet out at the first showing, when the grid has its width.
    void setVisible(bool visible) override;

protected:
    frmWardEntry(const WardVariant& variant, PatientOnScreen& patient, QWidget* parent);
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum Button { Save, Cancel, Delete };

    void cmdMedOption_Click(Button button);
    std::unique_ptr<const Saved> SaveRequests();
    void DeleteRequest();
    void ShowHint();
    bool HasEntries() const;

    std::unique_ptr<Ui::frmWardEntry> ui;
    const WardVariant& m_variant;
    PatientOnScreen& m_patient;
    WardSheet* m_sheet;
    QString m_usualHint;
    bool m_busy = false;
    bool m_laidOut = false;
};
