#pragma once

#include <QDialog>
#include <memory>

#include "db/RowStore.h"

namespace Ui {
class frmCAPDVisit;
}

/// Records that a registered patient came to the unit today, once a day, and shows the earlier
/// visits. Accepted once saved.
class frmCAPDVisit final : public QDialog {
    Q_OBJECT
public:
    explicit frmCAPDVisit(QWidget* parent = nullptr);
    ~frmCAPDVisit() override;

    const QString& HospNum() const { return m_hospNum; }
    void SetHospNum(const QString& hospNum) { m_hospNum = hospNum; }
    const QString& IdNum() const { return m_idNum; }
    void SetIdNum(const QString& idNum) { m_idNum = idNum; }
    void SetCAPDNum(const QString& capdNum);
    /// Whose visit this is, to be read only.
    void SetPatientName(const QString& name);

private:
    bool HasVisitToday() const;
    QStringList Arguments() const;
    void RefuseSecondVisit();
    void cmdSave_Click();
    void cmdView_Click();
    void ShowVisitGrid();
    void ShowReadings();
    void grdTable_RowColChange(int row);
    void grdTable_DblClick(int row);

    std::unique_ptr<Ui::frmCAPDVisit> ui;
    QString m_hospNum;
    QString m_idNum;
    std::shared_ptr<const db::RowStore> m_visits;
};
