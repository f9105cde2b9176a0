#include "charges/DoctorFields.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

#include "session/modGlobals.h"
#include "toolkit/EntryGrid.h"
#include "toolkit/MsgBox.h"

using modGlobals::gCodeSearch;

namespace {

const QString kNotOnFile = QStringLiteral("0");
const QString kTitle = QStringLiteral("DR. ");

}  // namespace

DoctorFields::DoctorFields(QLineEdit& doctorId, QLineEdit& doctor, QPushButton& search,
                           toolkit::EntryGrid& grid, QObject* parent)
    : QObject(parent), txtDoctorID(doctorId), txtDoctor(doctor), cmdDoctor(search), m_grid(grid) {
    connect(&cmdDoctor, &QPushButton::clicked, this, &DoctorFields::cmdDoctor_Click);
    connect(&txtDoctorID, &QLineEdit::returnPressed, this, &DoctorFields::txtDoctorID_KeyPress);
    connect(&txtDoctorID, &QLineEdit::textChanged, this, &DoctorFields::txtDoctorID_Change);
    txtDoctorID_Change();
}

void DoctorFields::cmdDoctor_Click() {
    if (!SearchDoctor(txtDoctor.text()))
        return;
    // First and middle name bring their own blanks.
    const components::DoctorRecord& doctor = gCodeSearch->Doctor();
    Show(kTitle + doctor.FirstName + doctor.MiddleName + doctor.LastName);
}

void DoctorFields::txtDoctorID_KeyPress() {
    if (txtDoctorID.text() == kNotOnFile)
        return txtDoctor.setFocus(Qt::TabFocusReason);
    gCodeSearch->SetSearchMode(true);
    if (!SearchDoctor(txtDoctorID.text()))
        return;
    const components::DoctorRecord& doctor = gCodeSearch->Doctor();
    Show(kTitle + doctor.FirstName.trimmed() + u' ' + doctor.LastName);
}

void DoctorFields::txtDoctorID_Change() {
    const bool isNotOnFile = txtDoctorID.text() == kNotOnFile;
    // The name of the doctor of another code must not be saved with this one.
    if (txtDoctor.text() == m_foundName && txtDoctorID.text() != m_foundID)
        txtDoctor.clear();
    else if (txtDoctor.text().isEmpty() && txtDoctorID.text() == m_foundID)
        txtDoctor.setText(m_foundName);
    cmdDoctor.setEnabled(!isNotOnFile);
    txtDoctor.setReadOnly(!isNotOnFile);
    // Nothing can be typed into the locked name: the Tab key passes it by.
    txtDoctor.setFocusPolicy(isNotOnFile ? Qt::StrongFocus : Qt::ClickFocus);
    if (isNotOnFile)
        txtDoctor.setFocus(Qt::OtherFocusReason);
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
    QWidget* focused = txtDoctorID.window()->focusWidget();
    // In the sheet the Tab key would only walk from cell to cell.
    if (!focused || focused == &m_grid || m_grid.isAncestorOf(focused))
        return;
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
    QCoreApplication::sendEvent(focused, &tab);
}
