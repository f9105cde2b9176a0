#pragma once

#include <QDialog>
#include <memory>

#include "components/builtin/UserStore.h"

namespace Ui {
class frmFirstUser;
}

namespace components {

/// Asks for a new hospital's name and its first user.
class frmFirstUser final : public QDialog {
    Q_OBJECT
public:
    static constexpr int kShortestPassword = 8;

    explicit frmFirstUser(QWidget* parent = nullptr);
    ~frmFirstUser() override;

    QString HospitalName() const;
    QString Address() const;
    /// What was entered; the department is the caller's.
    User Entered() const;
    QString Password() const;

private:
    void cmdSave_Click();
    QString WhatIsMissing() const;

    std::unique_ptr<Ui::frmFirstUser> ui;
};

}  // namespace components
