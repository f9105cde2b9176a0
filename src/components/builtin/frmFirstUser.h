#pragma once

#include <QDialog>
#include <memory>

#include "components/builtin/UserStore.h"

namespace Ui {
class frmFirstUser;
}

namespace components {

/// Asks a new hospital's first user for a name and a password.
class frmFirstUser final : public QDialog {
    Q_OBJECT
public:
    static constexpr int kShortestPassword = 8;

    explicit frmFirstUser(QWidget* parent = nullptr);
    ~frmFirstUser() override;

    /// What was entered; the department is the caller's.
    User Entered() const;
    QString Password() const;

private:
    void cmdSave_Click();
    QString WhatIsMissing() const;

    std::unique_ptr<Ui::frmFirstUser> ui;
};

}  // namespace components
