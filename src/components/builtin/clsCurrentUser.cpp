#include "components/builtin/clsCurrentUser.h"

#include <QSettings>

#include "base/Errors.h"
#include "components/builtin/frmFirstUser.h"
#include "components/builtin/frmLogin.h"

namespace components {

namespace {

const QString kRefusal = QStringLiteral(
    "Log-in refused. Check the user and the password. Five refusals lock a user for five minutes.");
const QString kNoUserYet = QStringLiteral("This hospital has no user yet.");
const QString kSourceSetting = QStringLiteral("login/source");
const QString kUserSetting = QStringLiteral("login/user");

// "Login failed for user": the one error of a server that asks for another password.
constexpr int kServerRefusedLogIn = 18456;

}  // namespace

void clsCurrentUser::ShowMain() {
    QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("capd"));
    frmLogin dialog(AllDataSources());
    dialog.Choose(settings.value(kSourceSetting).toString(),
                  settings.value(kUserSetting).toString());
    dialog.SetLogIn([this, &dialog] { return LogIn(dialog); });
    if (dialog.exec() != QDialog::Accepted)
        return;
    settings.setValue(kSourceSetting, dialog.Source().Title());
    settings.setValue(kUserSetting, m_user.UserName);
}

QString clsCurrentUser::LogIn(const frmLogin& asked) {
    const DataSource& source = asked.Source();
    QString userName = asked.UserName();
    QString password = asked.Password();
    std::shared_ptr<db::Connection> connection;
    try {
        connection = source.Open(userName, password);
    } catch (const base::DatabaseError& error) {
        if (error.Number() == kServerRefusedLogIn)
            return kRefusal;
        throw;
    }
    UserStore users(*connection);
    if (source.Where == DataSource::Kind::Own && users.IsEmpty() &&
        !AskFirstUser(users, userName, password))
        return kNoUserYet;
    const std::optional<User> user = source.IsEmbedded()
                                         ? users.LogIn(userName, password, m_deptCode)
                                         : users.Admit(userName, m_deptCode);
    if (!user)
        return kRefusal;
    m_user = *user;
    m_serverName = source.ServerName();
    m_connection = connection;
    return {};
}

bool clsCurrentUser::AskFirstUser(UserStore& users, QString& userName, QString& password) const {
    frmFirstUser dialog;
    if (dialog.exec() != QDialog::Accepted)
        return false;
    User first = dialog.Entered();
    first.DeptCode = m_deptCode;
    users.SetUpHospital(dialog.HospitalName(), dialog.Address(), first, dialog.Password());
    userName = first.UserName;
    password = dialog.Password();
    return true;
}

}  // namespace components
