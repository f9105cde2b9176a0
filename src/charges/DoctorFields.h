#pragma once

#include <QObject>

class QLineEdit;
class QPushButton;

namespace toolkit {
class EntryGrid;
}

/// The requesting doctor above a charge sheet: by code, from the list, or, under the code "0", by
/// any name that is typed.
class DoctorFields final : public QObject {
    Q_OBJECT
public:
    /// Stands over the controls and the sheet, which must live as long. A code is looked up however
    /// its box is left, but for the search and for `cmdClose`.
    DoctorFields(QLineEdit& txtDoctorID, QLineEdit& txtDoctor, QPushButton& cmdDoctor,
                 QPushButton& cmdClose, toolkit::EntryGrid& grid, QObject* parent = nullptr);

    /// Looks up a code that was typed and not left: a save button's letter moves no cursor. False
    /// when it names nobody; the box then has the keyboard.
    bool Resolve();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void cmdDoctor_Click();
    void txtDoctorID_KeyPress();
    void txtDoctorID_Change();
    void txtDoctor_Change();
    void txtDoctorID_LostFocus();
    bool IsLookedUp() const;
    bool LookUp();
    bool SearchDoctor(QString text);
    void Show(const QString& name);
    void MoveOn();

    QLineEdit& txtDoctorID;
    QLineEdit& txtDoctor;
    QPushButton& cmdDoctor;
    QPushButton& cmdClose;
    toolkit::EntryGrid& m_grid;
    /// Of the doctor looked up or named last: the code that the name belongs to.
    QString m_foundID;
    QString m_foundName;
    bool m_lookingUp = false;
};
