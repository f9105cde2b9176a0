#include "components/builtin/UserStore.h"

#include <QSysInfo>

#include "components/builtin/Passwords.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

namespace components {

namespace {

const QString kCount = QStringLiteral("PATIENT_DATA..sp_User_Count");
const QString kSetUp = QStringLiteral("PATIENT_DATA..sp_Hospital_SetUp");
const QString kFind = QStringLiteral("PATIENT_DATA..sp_User_Find");
const QString kRecord = QStringLiteral("PATIENT_DATA..sp_User_RecordLogin");

// What is recorded of an attempt; all but the first count towards the lock.
const QString kSuccess = QStringLiteral("OK");
const QString kLocked = QStringLiteral("LOCKED");
const QString kDepartment = QStringLiteral("DEPARTMENT");
const QString kWrongPassword = QStringLiteral("WRONG PASSWORD");

}  // namespace

struct UserStore::StoredUser {
    User Who;
    QString PasswordHash;
    bool Locked;
};

bool UserStore::IsEmpty() const {
    return m_connection.Execute(kCount)->Fields(QStringLiteral("CanLogIn")).Number() == 0;
}

void UserStore::SetUpHospital(const QString& name, const QString& address, const User& first,
                              const QString& password) {
    m_connection.Execute(
        db::Call(kSetUp, {name, address, first.UserName, first.EmployeeCode, first.EmployeeName,
                          Passwords::Hash(password), first.DeptCode}));
}

std::optional<User> UserStore::LogIn(const QString& userName, const QString& password,
                                     const QString& deptCode) {
    const std::optional<StoredUser> user = Find(userName);
    // A locked or unknown user's password is checked all the same: the time taken tells nothing.
    const bool matches = Passwords::Matches(password, user ? user->PasswordHash : QString());
    return Decide(userName, user, matches, deptCode);
}

std::optional<User> UserStore::Admit(const QString& userName, const QString& deptCode) {
    return Decide(userName, Find(userName), true, deptCode);
}

std::optional<User> UserStore::Decide(const QString& userName,
                                      const std::optional<StoredUser>& user, bool matches,
                                      const QString& deptCode) {
    QString outcome = kSuccess;
    if (user && user->Locked)
        outcome = kLocked;
    else if (!user || !matches)
        outcome = kWrongPassword;
    else if (user->Who.DeptCode != deptCode)
        outcome = kDepartment;
    // A hospital that can only be looked at keeps no record of who did.
    if (!m_connection.IsReadOnly())
        m_connection.Execute(db::Call(kRecord, {userName, outcome, QSysInfo::machineHostName()}));
    return outcome == kSuccess ? std::optional(user->Who) : std::nullopt;
}

std::optional<UserStore::StoredUser> UserStore::Find(const QString& userName) const {
    const auto row = m_connection.Execute(db::Call(kFind, {userName}));
    if (row->Eof())
        return std::nullopt;
    const auto text = [&row](const char* column) {
        return row->Fields(QLatin1String(column)).Text();
    };
    return StoredUser{
        {text("UserName"), text("EmployeeCode"), text("EmployeeName"), text("DeptCode")},
        text("PasswordHash"),
        row->Fields(QStringLiteral("IsLocked")).Number() != 0};
}

}  // namespace components
