#pragma once

#include <QWidget>
#include <array>
#include <memory>

#include "db/Recordset.h"
#include "patients/OpenedPatient.h"

namespace Ui {
class frmPatientList;
}
namespace toolkit {
class RowListModel;
}
class QAbstractButton;
class QLineEdit;

/// The unit's working list of patients: finds them by number or last name, chooses one for the
/// registration and visit sheets, and opens one in the hub.
class frmPatientList final : public QWidget {
    Q_OBJECT
public:
    /// Loads at once: throws base::DatabaseError when the first search fails.
    explicit frmPatientList(QWidget* parent = nullptr);
    ~frmPatientList() override;

    /// Numbers of the patient last chosen; empty until one is.
    const QString& HospNum() const { return m_hospNum; }
    const QString& IdNum() const { return m_idNum; }
    const QString& CAPDNum() const { return m_capdNum; }

    /// Sets the window up as at first: today's out-patients, or the patient chosen before.
    void Load();
    /// Repeats the last search; the chosen visit stays chosen where it is still found.
    void Renew();

signals:
    /// The current row is now this patient's; `name` reads "LAST, First Middle".
    void PatientChosen(const QString& hospNum, const QString& idNum, const QString& capdNum,
                       const QString& name);
    void PatientOpened(const OpenedPatient& patient);
    /// A short word for the status bar.
    void StatusText(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SetUpFields();
    void SetUpList();
    std::array<QLineEdit*, 3> Fields() const;
    bool ListKey(QKeyEvent& key);
    void txtLastName_Change(const QString& text);
    void OptPatientType_Click(QAbstractButton* option, bool chosen);
    void cmdSearch_Click();
    void SelectSearchedText();
    void lvwSearchPatient_ItemClick(int row);
    void lvwSearchPatient_DblClick(int row);
    QString SearchMode() const;
    void Search(const QString& hospNum, const QString& idNum, const QString& lastName);
    void Run(const QString& command);
    void ShowRows();
    void RememberRow(int row);
    QString NameOf(int row) const;

    std::unique_ptr<Ui::frmPatientList> ui;
    toolkit::RowListModel* m_rows;
    db::Recordset m_recordset;
    QString m_hospNum;
    QString m_idNum;
    QString m_capdNum;
    int m_searchedType = 1;
    bool m_wasCurrent = true;
    QString m_lastSearch;
};
