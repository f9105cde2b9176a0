#include "charges/DoctorFields.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>

#include "deploy/ColumnLengths.h"
#include "session/modGlobals.h"
#include "toolkit/EntryGrid.h"
#include "toolkit/MsgBox.h"

using modGlobals::gCodeSearch;

namespace {

const QString kNotOnFile = QStringLiteral("0");
const QString kTitle = QStringLiteral("DR. ");

}  // namespace

DoctorFields::DoctorFields(QLineEdit& doctorId, QLineEdit& doctor, QPushButton& search,
                           QPushButton& close, toolkit::EntryGrid& grid, QObject* parent)
    : QObject(parent),
      txtDoctorID(doctorId),
      txtDoctor(doctor),
      cmdDoctor(search),
      cmdClose(close),
      m_grid(grid) {
    const QString table = QStringLiteral("tbCAPDRequest");
    txtDoctorID.setMaxLength(deploy::ColumnLength(table, QStringLiteral("DoctorID")));
    txtDoctor.setMaxLength(deploy::ColumnLength(table, QStringLiteral("DoctorName")));
    txtDoctorID.installEventFilter(this);
    connect(&cmdDoctor, &QPushButton::clicked, this, &DoctorFields::cmdDoctor_Click);
    connect(&txtDoctorID, &QLineEdit::returnPressed, this, &DoctorFields::txtDoctorID_KeyPress);
    connect(&txtDoctorID, &QLineEdit::textChanged, this, &DoctorFields::txtDoctorID_Change);
    connect(&txtDoctor, &QLineEdit::textChanged, this, &DoctorFields::txtDoctor_Change);
    txtDoctorID_Change();
}

void DoctorFields::cmdDoctor_Click() {
    if (!SearchDoctor(txtDoctor.text()))
        return;
    // First and middle name bring their own blanks.
    const components::DoctorRecord& doctor = gCodeSearch->Doctor();
    Show(kTitle + doctor.FirstName + doctor.MiddleName + doctor.LastName);
    MoveOn();
}

void DoctorFields::txtDoctorID_KeyPress() {
    if (txtDoctorID.text() == kNotOnFile)
        txtDoctor.setFocus(Qt::TabFocusReason);
    else if (LookUp())
        MoveOn();
}

bool DoctorFields::eventFilter(QObject* watched, QEvent* event) {
    const bool handled = QObject::eventFilter(watched, event);
    if (event->type() != QEvent::FocusOut)
        return handled;
    // Another program in front, or a menu, is not yet leaving the box.
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        txtDoctorID_LostFocus();
    return handled;
}

void DoctorFields::txtDoctorID_LostFocus() {
    const QWidget* next = QApplication::focusWidget();
    const bool leadsOn = next && next->window() == txtDoctorID.window() && next->isVisible() &&
                         next != &cmdDoctor && next != &cmdClose;
    if (leadsOn && !m_lookingUp && !IsLookedUp() && !LookUp())
        txtDoctorID.setFocus(Qt::OtherFocusReason);
}

bool DoctorFields::Resolve() {
    if (IsLookedUp() || LookUp())
        return true;
    txtDoctorID.setFocus(Qt::OtherFocusReason);
    return false;
}

bool DoctorFields::IsLookedUp() const {
    const QString code = txtDoctorID.text();
    return code.isEmpty() || code == kNotOnFile || code == m_foundID;
}

bool DoctorFields::LookUp() {
    const QScopedValueRollback lookingUp(m_lookingUp, true);
    gCodeSearch->SetSearchMode(true);
    if (!SearchDoctor(txtDoctorID.text()))
        return false;
    const components::DoctorRecord& doctor = gCodeSearch->Doctor();
    Show(kTitle + doctor.FirstName.trimmed() + u' ' + doctor.LastName);
    return true;
}

void DoctorFields::txtDoctorID_Change() {
    const bool isNotOnFile = txtDoctorID.text() == kNotOnFile;
    // The name of the doctor of another code must not be saved with this one.
    txtDoctor.setText(txtDoctorID.text() == m_foundID ? m_foundName : QString());
    cmdDoctor.setEnabled(!isNotOnFile);
    txtDoctor.setReadOnly(!isNotOnFile);
    // Nothing can be typed into the locked name: the Tab key passes it by.
    txtDoctor.setFocusPolicy(isNotOnFile ? Qt::StrongFocus : Qt::ClickFocus);
    if (isNotOnFile)
        txtDoctor.setFocus(Qt::OtherFocusReason);
}

// A name that is typed belongs to the code "0" alone.
void DoctorFields::txtDoctor_Change() {
    if (txtDoctorID.text() != kNotOnFile)
        return;
    m_foundID = kNotOnFile;
    m_foundName = txtDoctor.text();
}

bool DoctorFields::SearchDoctor(QString text) {
    if (gCodeSearch->SearchListing(text, components::CodeSearch::kDoctors))
        return true;
    if (gCodeSearch->Cancelled())
        toolkit::MsgBox(QStringLiteral("You must fill in the Requesting Doctor First!"),
                        toolkit::BoxIcon::Critical, QStringLiteral("DoctorId"));
    return false;
}

void DoctorFields::Show(const QString& name) {
    m_foundName = name;
    m_foundID = gCodeSearch->Doctor().ResultCode;
    txtDoctorID.setText(m_foundID);
    txtDoctor.setText(name);
    txtDoctor.setCursorPosition(0);
    if (m_grid.InEditMode())
        m_grid.EndEditMode();
}

void DoctorFields::MoveOn() {
    QWidget* focused = txtDoctorID.window()->focusWidget();
    // In the sheet the Tab key would only walk from cell to cell.
    if (!focused || focused == &m_grid || m_grid.isAncestorOf(focused))
        return;
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QCoreApplication::sendEvent(focused, &tab);
}
