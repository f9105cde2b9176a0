#pragma once

#include <QDialog>
#include <memory>

#include "funds/clsPDAF.h"

namespace Ui {
class frmPDAF;
}

/// Shows what a sponsored patient's funds have left and what the visit costs beyond them. Set IdNum
/// and HospNum, then exec(). Writes nothing.
class frmPDAF final : public QDialog {
    Q_OBJECT
public:
    explicit frmPDAF(QWidget* parent = nullptr);
    ~frmPDAF() override;

    void SetIdNum(const QString& idNum) { m_idNum = idNum; }
    void SetHospNum(const QString& hospNum) { m_hospNum = hospNum; }

    /// Reads the figures and shows the window until it is closed. Throws base::DatabaseError, and
    /// shows nothing, when they cannot be read.
    int exec() override;

private:
    void Load();

    std::unique_ptr<Ui::frmPDAF> m_ui;
    clsPDAF m_fund;
    QString m_idNum;
    QString m_hospNum;
};
