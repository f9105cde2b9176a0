#include "wardrequests/NurseLogBook.h"

#include <QLocale>

#include "base/Clock.h"
#include "base/Numbers.h"
#include "db/CommandText.h"
#include "db/Connection.h"

namespace {

const QString kAppend = QStringLiteral("STATION..Nurse_AppendNurseLogBook");

// Twelve hours with AM and PM, whatever the language of the workstation.
QString RequestMoment() {
    return QLocale::c().toString(base::Clock::Now(), QStringLiteral("MM/dd/yyyy hh:mm:ss AP"));
}

QString AppendCommand(const WardRequestHead& head, const WardRequestLine& line) {
    const QString blank = QStringLiteral(" "), none = QStringLiteral("0");
    const QString patientType =
        base::IsNumeric(head.IdNum) ? QStringLiteral("I") : QStringLiteral("O");
    return db::Call(kAppend, {head.HospNum,
                              head.IdNum,
                              patientType,
                              line.Code,
                              line.Amount,
                              line.Quantity,
                              line.Frequency,
                              blank,
                              RequestMoment(),
                              head.Department,
                              QString(),
                              blank,
                              head.EmployeeCode,
                              line.Remarks,
                              line.Description,
                              QStringLiteral("CAPD"),
                              QStringLiteral("Y"),
                              line.UnitPrice.trimmed(),
                              none,
                              none,
                              none}) +
           QStringLiteral(",0");
}

}  // namespace

void AppendToNurseLogBook(db::Connection& connection, const WardRequestHead& head,
                          const std::vector<WardRequestLine>& lines) {
    db::Transaction transaction(connection);
    for (const WardRequestLine& line : lines)
        connection.Execute(AppendCommand(head, line));
    transaction.Commit();
}
