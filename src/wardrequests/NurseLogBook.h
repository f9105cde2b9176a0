#pragma once

#include <QString>
#include <vector>

namespace db {
class Connection;
}

/// One line of a request, its cells' texts as they stand.
struct WardRequestLine {
    QString Code;
    QString Description;
    QString Frequency;
    QString Quantity;
    QString Amount;
    QString Remarks;
    QString UnitPrice;
};

/// Whom the lines are for, who asks, and whom they ask.
struct WardRequestHead {
    QString HospNum;
    QString IdNum;
    QString Department;
    QString EmployeeCode;
};

/// Writes every line into the nurses' log book, each with the moment at which it is written: all
/// of them or, on a base::DatabaseError, none. No lines make an empty transaction.
void AppendToNurseLogBook(db::Connection& connection, const WardRequestHead& head,
                          const std::vector<WardRequestLine>& lines);
