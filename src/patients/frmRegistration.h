#pragma once

#include <QDateTime>
#include <QDialog>
#include <memory>

#include "components/PatientLister.h"

namespace db {
class Recordset;
}

namespace Ui {
class frmRegistration;
}

/// The unit's information sheet of one patient: shows what is on file and saves the whole sheet,
/// which puts the patient on the CAPD register or changes the registration. Accepted once saved.
class frmRegistration final : public QDialog {
    Q_OBJECT
public:
    explicit frmRegistration(QWidget* parent = nullptr);
    ~frmRegistration() override;

    /// The CAPD number that the register has for a patient; empty for one who is not on it.
    static QString NumberOnFile(const QString& hospNum);

    const QString& HospNum() const { return m_hospNum; }
    /// Sets the patient and loads the sheet; throws base::DatabaseError when it cannot be read.
    void SetHospNum(const QString& hospNum);
    /// Name, age, sex and numbers as the listing found them; the CAPD number may be empty.
    void ShowPatient(const components::ListedPatient& patient, const QString& idNum,
                     const QString& capdNum);

private:
    void Load();
    void cmdSave_Click();
    /// The saved row; null where another's change was not to be overwritten, and nothing is saved.
    std::shared_ptr<db::Recordset> Save();
    QStringList Arguments() const;

    std::unique_ptr<Ui::frmRegistration> ui;
    QString m_hospNum;
    QString m_numberOnFile;
    /// Of the sheet as it was loaded, or as the user chose to overwrite it; invalid for a new one.
    QDateTime m_changedAt;
};
