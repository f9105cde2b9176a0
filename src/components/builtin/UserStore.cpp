#include "components/builtin/UserStore.h"

#include <QSysInfo>

#include "components/builtin/Passwords.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

namespace components {

namespace {

const QString kCount = QStringLiteral("PATIENT_DATA..sp_User_Count");
const QString kCreate = QStringLiteral("PATIENT_DATA..sp_User_Create");
const QString kFind = QStringLiteral("PATIENT_DATA..sp_User_Find");
const QString kRecord = QStringLiteral("PATIENT_DATA..sp_User_RecordLogin");

const QString kAccepted = QStringLiteral("OK");
const QString kRefused = QStringLiteral("REFUSED");

}  // namespace

struct UserStore::StoredUser {
    User Who;
    QString PasswordHash;
    bool Locked;
};

bool UserStore::IsEmpty() const {
    return m_connection.Execute(kCount)->Fields(0).Number() == 0;
}

void UserStore::Add(const User& user, const QString& password) {
    m_connection.Execute(db::Call(kCreate, {user.UserName, user.EmployeeCode, user.EmployeeName,
                                            Passwords::Hash(password), user.DeptCode}));
}

std::optional<User> UserStore::LogIn(const QString& userName, const QString& password,
                                     const QString& deptCode) {
    const std::optional<StoredUser> user = Find(userName);
    // A locked or unknown user's password is checked all the same: the time taken tells nothing.
    const bool matches = Passwords::Matches(password, user ? user->PasswordHash : QString());
    const bool accepted = user && matches && !user->Locked && user->Who.DeptCode == deptCode;
    Record(userName, accepted);
    return accepted ? std::optional(user->Who) : std::nullopt;
}

std::optional<User> UserStore::Admit(const QString& userName, const QString& deptCode) {
    const std::optional<StoredUser> user = Find(userName);
    const bool accepted = user && user->Who.DeptCode == deptCode;
    Record(userName, accepted);
    return accepted ? std::optional(user->Who) : std::nullopt;
}

std::optional<UserStore::StoredUser> UserStore::Find(const QString& userName) const {
    const auto row = m_connection.Execute(db::Call(kFind, {userName}));
    if (row->Eof())
        return std::nullopt;
    const auto text = [&row](const char* column) {
        return row->Fields(QLatin1String(column)).Text();
    };
    return StoredUser{{text("UserName"), text("EmployeeCode"), text("EmployeeName"), text("DeptCode")},
                      text("PasswordHash"),
                      row->Fields(QStringLiteral("IsLocked")).Number() != 0};
}

void UserStore::Record(const QString& userName, bool accepted) {
    m_connection.Execute(db::Call(
        kRecord, {userName, accepted ? kAccepted : kRefused, QSysInfo::machineHostName()}));
}

}  // namespace components
