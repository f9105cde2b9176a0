#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "db/Value.h"

/// Writing a row back to the one table that its statement reads.
namespace db {

struct UpdateTarget {
    /// As the statement names it.
    QString Table;
    /// The table's column behind each field; empty for a computed field.
    std::vector<QString> Columns;
};

/// The table behind "SELECT columns FROM table [WHERE ...]"; nothing for any other command.
std::optional<UpdateTarget> TargetOf(const QString& statement, const QStringList& fieldNames);

/// True where the table has a key and the statement read all of it: without it, a change could meet
/// another row that looks the same.
bool HoldsKey(const UpdateTarget& target, const std::vector<QString>& keyColumns);

/// The UPDATE for the changed fields. `stored` gives a field's value as it was fetched: together
/// with the key, which the statement must have read, it decides whether the row is still the one
/// that was read.
QString UpdateCommand(const UpdateTarget& target, const std::vector<QString>& keyColumns,
                      const std::map<int, Value>& changes,
                      const std::function<Value(int field)>& stored);

}  // namespace db
