#pragma once

#include <QDialog>
#include <functional>
#include <vector>

#include "charges/ChargeSlip.h"

class ChargeGrid;
class DoctorFields;
class QLabel;
class QLineEdit;
class QPushButton;
class Saved;
struct ChargeRules;

namespace toolkit {
class EntryGrid;
}

/// The controls that every window with a charge sheet has.
struct ChargeSheetControls {
    QLineEdit& txtDoctorID;
    QLineEdit& txtDoctor;
    QPushButton& cmdDoctor;
    toolkit::EntryGrid& grdInput;
    QLabel& lblMessage;
    QPushButton& cmdSave;
    QPushButton& cmdSavePrint;
    QPushButton& cmdClose;
};

/// A window in which charges are typed and saved as one slip, a patient's or a walk-in's: its keys,
/// its buttons, and that a sheet is saved once. What its slip is and what follows it, the window
/// says.
class ChargeSheetDialog : public QDialog {
    Q_OBJECT
public:
    using QDialog::QDialog;
    void done(int result) override;

protected:
    /// Makes the sheet's rules, the doctor's fields and the buttons work over the controls, which
    /// the window has set up before. Saving stays disabled until an item was typed.
    ChargeGrid* SetUpSheet(const ChargeSheetControls& controls, const ChargeRules& rules);

    using Lines = std::vector<SlipLine>;
    using Finish =
        std::function<void(const Saved& saved, const QString& slipNumber, const Lines& lines)>;
    /// The saving of the sheet, once: `save` writes the slip and returns its number, empty where it
    /// may not be written; `told` says it, with %1 for the number, and of whom; `finish` runs after
    /// that and then, whatever fails in it, the window closes. A doctor's code is looked up and a
    /// cell half typed committed before; what the commit told is to be read first. False when
    /// nothing was saved. Throws what both throw.
    bool SaveSheet(const std::function<QString(const Lines& lines)>& save, const QString& told,
                   const QString& patient, const Finish& finish);

    /// What a button writes beside the sheet. Nothing happens while another button's writing runs
    /// or once the sheet is saved. Throws what `write` throws.
    void WriteAlone(const std::function<void()>& write);

    void keyPressEvent(QKeyEvent* event) override;

private:
    bool IsReadyToSave();

    toolkit::EntryGrid* m_grid = nullptr;
    ChargeGrid* m_charges = nullptr;
    DoctorFields* m_doctor = nullptr;
    bool m_isWriting = false;  ///< and stays so once the sheet's slip stands
};
