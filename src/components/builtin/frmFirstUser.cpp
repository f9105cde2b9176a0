#include "components/builtin/frmFirstUser.h"

#include <QPushButton>

#include "toolkit/MsgBox.h"
#include "ui_frmFirstUser.h"

namespace components {

frmFirstUser::frmFirstUser(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmFirstUser>()) {
    ui->setupUi(this);
    connect(ui->cmdSave, &QPushButton::clicked, this, &frmFirstUser::cmdSave_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmFirstUser::~frmFirstUser() = default;

QString frmFirstUser::HospitalName() const {
    return ui->txtHospital->text().trimmed();
}

QString frmFirstUser::Address() const {
    return ui->txtAddress->text().trimmed();
}

User frmFirstUser::Entered() const {
    return {.UserName = ui->txtUser->text().trimmed(),
            .EmployeeCode = ui->txtEmployeeCode->text().trimmed(),
            .EmployeeName = ui->txtName->text().trimmed(),
            .DeptCode = {}};
}

QString frmFirstUser::Password() const {
    return ui->txtPassword->text();
}

void frmFirstUser::cmdSave_Click() {
    const QString missing = WhatIsMissing();
    if (missing.isEmpty())
        accept();
    else
        toolkit::MsgBox(missing, toolkit::BoxIcon::Information, QStringLiteral("Message"));
}

QString frmFirstUser::WhatIsMissing() const {
    const User user = Entered();
    if (HospitalName().isEmpty())
        return QStringLiteral("Please enter the hospital's name.");
    if (user.UserName.isEmpty() || user.EmployeeCode.isEmpty() || user.EmployeeName.isEmpty())
        return QStringLiteral("Please enter the user, the full name and the employee code.");
    if (Password().size() < kShortestPassword)
        return QStringLiteral("The password needs at least %1 characters.").arg(kShortestPassword);
    if (Password() != ui->txtRepeat->text())
        return QStringLiteral("The two passwords differ.");
    return {};
}

}  // namespace components
