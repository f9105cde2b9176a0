#include "wardrequests/WardChecks.h"

#include <optional>

#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"
#include "toolkit/MsgBox.h"

namespace {

const QString kStatus = QStringLiteral("STATION..Nurse_CheckExamStatus");
const QString kPosted = QStringLiteral("STATION..Nurse_CheckExam_Posted");

const QString kTitle = QStringLiteral("Message ");

// The moment that the procedure answers with; nothing where it has no row.
std::optional<QString> MomentFound(const QString& procedure, const QString& column,
                                   const QString& idNum, const QString& code,
                                   const QString& department) {
    db::Recordset found;
    found.SetCursorLocation(3);
    found.Open(db::Call(procedure, {idNum.trimmed(), code.trimmed(), department.trimmed()}),
               modGlobals::gCurrentUser->SQLConnection());
    if (found.Eof())
        return std::nullopt;
    return found.Fields(column).Text().trimmed();
}

}  // namespace

bool CheckExamStatus(const QString& idNum, const QString& code, const QString& department) {
    const auto requested =
        MomentFound(kStatus, QStringLiteral("Requestdate"), idNum, code, department);
    if (!requested)
        return false;
    toolkit::MsgBox(QStringLiteral("Supply/ Medicine is already requested at ") + *requested,
                    toolkit::BoxIcon::None, kTitle);
    return true;
}

bool CheckExamPosted(const QString& idNum, const QString& code, const QString& department) {
    const auto processed =
        MomentFound(kPosted, QStringLiteral("ProcessDate"), idNum, code, department);
    if (!processed)
        return false;
    const QString question =
        QStringLiteral("This Request has been PROCCESSED TODAY AT %1! Do you wish to REPEAT it ?")
            .arg(*processed);
    return toolkit::MsgBox(question, toolkit::BoxIcon::Critical, kTitle,
                           toolkit::BoxButtons::YesNo) == toolkit::BoxAnswer::No;
}
