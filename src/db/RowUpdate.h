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

/// The UPDATE for the changed fields. `stored` gives a field's value as it was fetched: together
/// with the key it decides whether the row is still the one that was read. Key columns that the
/// statement did not read are left out.
QString UpdateCommand(const UpdateTarget& target, const std::vector<QString>& keyColumns,
                      const std::map<int, Value>& changes,
                      const std::function<Value(int field)>& stored);

}  // namespace db
