#pragma once

#include <QString>
#include <optional>

#include "db/Connection.h"

namespace components {

/// Who logged in.
struct User {
    QString UserName;
    QString EmployeeCode;
    QString EmployeeName;
    QString DeptCode;
};

/// The users of the hospital that a connection is open on.
class UserStore final {
public:
    explicit UserStore(db::Connection& connection) : m_connection(connection) {}

    bool IsEmpty() const;
    /// Opens a new hospital with its name, its address and its first user, all of it or nothing.
    /// Throws base::DatabaseError where it is open already.
    void SetUpHospital(const QString& name, const QString& address, const User& first,
                       const QString& password);

    /// The user of that name and password, when not locked and of that department. Nothing
    /// otherwise, and nothing tells which it was. Both are recorded in the hospital.
    std::optional<User> LogIn(const QString& userName, const QString& password,
                              const QString& deptCode);
    /// As LogIn where the server itself has checked the password.
    std::optional<User> Admit(const QString& userName, const QString& deptCode);

private:
    struct StoredUser;
    std::optional<StoredUser> Find(const QString& userName) const;
    std::optional<User> Decide(const QString& userName, const std::optional<StoredUser>& user,
                               bool matches, const QString& deptCode);

    db::Connection& m_connection;
};

}  // namespace components
