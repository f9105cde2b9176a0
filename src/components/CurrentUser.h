#pragma once

#include <QString>
#include <memory>

#include "components/Component.h"
#include "db/Connection.h"

namespace components {

/// The ServerName() of the demo hospital.
inline const QString kPracticeData = QStringLiteral("(practice data)");

/// `Corvane_User.clsCurrentUser`: the log-in, who is working here, and the open connection.
class CurrentUser : public Component {
public:
    /// The department whose users get in.
    virtual void SetPasswordDeptCode(const QString& code) = 0;
    /// Shows the log-in and returns when it is done; what was refused has been told to the user.
    virtual void ShowMain() = 0;
    virtual bool Connected() const = 0;
    /// The session's connection; null unless Connected().
    virtual std::shared_ptr<db::Connection> SQLConnection() const = 0;
    virtual QString EmployeeCode() const = 0;
    virtual QString employeename() const = 0;
    virtual QString ServerName() const = 0;
};

}  // namespace components
