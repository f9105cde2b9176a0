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
    /// Stands over the three controls and the sheet, which must live as long.
    DoctorFields(QLineEdit& txtDoctorID, QLineEdit& txtDoctor, QPushButton& cmdDoctor,
                 toolkit::EntryGrid& grid, QObject* parent = nullptr);

private:
    void cmdDoctor_Click();
    void txtDoctorID_KeyPress();
    void txtDoctorID_Change();
    bool SearchDoctor(QString text);
    void Show(const QString& name);

    QLineEdit& txtDoctorID;
    QLineEdit& txtDoctor;
    QPushButton& cmdDoctor;
    toolkit::EntryGrid& m_grid;
    /// Of the doctor looked up last.
    QString m_foundID;
    QString m_foundName;
};
