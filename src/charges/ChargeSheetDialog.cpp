#include "charges/ChargeSheetDialog.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScopeGuard>
#include <QScopedValueRollback>

#include "charges/ChargeGrid.h"
#include "charges/DoctorFields.h"
#include "session/Saved.h"
#include "toolkit/EntryGrid.h"
#include "toolkit/Keys.h"

ChargeGrid* ChargeSheetDialog::SetUpSheet(const ChargeSheetControls& controls,
                                          const ChargeRules& rules) {
    m_grid = &controls.grdInput;
    auto* charges = m_charges = new ChargeGrid(controls.grdInput, rules, this);
    m_doctor = new DoctorFields(controls.txtDoctorID, controls.txtDoctor, controls.cmdDoctor,
                                controls.cmdClose, controls.grdInput, this);
    connect(charges, &ChargeGrid::Told, &controls.lblMessage, &QLabel::setText);
    connect(charges, &ChargeGrid::ItemCommitted, &controls.cmdSave,
            [&save = controls.cmdSave] { save.setEnabled(true); });
    connect(charges, &ChargeGrid::ItemCommitted, &controls.cmdSavePrint,
            [&save = controls.cmdSavePrint] { save.setEnabled(true); });
    connect(&controls.cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    return charges;
}

bool ChargeSheetDialog::SaveSheet(const std::function<QString(const Lines&)>& save,
                                  const QString& told, const QString& patient,
                                  const Finish& finish) {
    // A second press has nothing to add to the first.
    if (m_isWriting)
        return true;
    // Committing a cell may ask the nurse: from here on a press is already the second one.
    QScopedValueRollback writing(m_isWriting, true);
    if (!IsReadyToSave())
        return false;
    const auto lines = LinesToSave(*m_grid);
    if (!lines)
        return false;
    const QString slipNumber = save(*lines);
    if (slipNumber.isEmpty())
        return false;
    // The slip stands: whatever fails from here on, this sheet must not be saved again.
    writing.commit();
    const auto closing = qScopeGuard([this] { accept(); });
    finish(Saved(told.arg(slipNumber), patient), slipNumber, *lines);
    return true;
}

bool ChargeSheetDialog::IsReadyToSave() {
    const bool isCommitted = m_grid->EndEditMode();
    const bool isToBeRead = m_charges->TakeUnread();
    if (isCommitted && !isToBeRead)
        return m_doctor->Resolve();
    if (isCommitted)
        m_charges->TellThatSaveWaits();
    m_grid->setFocus(Qt::OtherFocusReason);
    return false;
}

void ChargeSheetDialog::WriteAlone(const std::function<void()>& write) {
    if (m_isWriting)
        return;
    const QScopedValueRollback writing(m_isWriting, true);
    write();
}

// Enter belongs to the boxes and the sheet, and Esc takes back what is being typed: only a button
// that has the keyboard closes the window with all that was typed in it.
void ChargeSheetDialog::keyPressEvent(QKeyEvent* event) {
    if (!toolkit::IsEnter(*event) && event->key() != Qt::Key_Escape)
        QDialog::keyPressEvent(event);
}

void ChargeSheetDialog::done(int result) {
    // A cell left half typed is dropped with the sheet: nothing of it is looked up any more.
    if (m_grid)
        m_grid->blockSignals(true);
    QDialog::done(result);
}
