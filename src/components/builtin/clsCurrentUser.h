#pragma once

#include "components/CurrentUser.h"
#include "components/builtin/UserStore.h"

namespace components {

class frmLogin;

/// The log-in over the embedded hospitals and the ODBC data sources of this workstation.
class clsCurrentUser final : public CurrentUser {
public:
    /// The practice hospital's only known password; every user of it has it.
    static inline const QString kDemoUser = QStringLiteral("nurse1");
    static inline const QString kDemoPassword = QStringLiteral("practice");

    void SetPasswordDeptCode(const QString& code) override { m_deptCode = code; }
    /// Asks until somebody got in or gave up; says why a hospital could not be opened.
    void ShowMain() override;
    bool Connected() const override { return m_connection != nullptr; }
    std::shared_ptr<db::Connection> SQLConnection() const override { return m_connection; }
    QString EmployeeCode() const override { return m_user.EmployeeCode; }
    QString employeename() const override { return m_user.EmployeeName; }
    QString ServerName() const override { return m_serverName; }

private:
    /// Why nobody got in; empty when somebody did. Throws base::RuntimeError where the hospital
    /// cannot be opened.
    QString LogIn(const frmLogin& asked);
    bool AskFirstUser(UserStore& users, QString& userName, QString& password) const;

    QString m_deptCode;
    User m_user;
    QString m_serverName;
    std::shared_ptr<db::Connection> m_connection;
};

}  // namespace components
