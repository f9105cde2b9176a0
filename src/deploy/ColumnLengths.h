#pragma once

#include <QString>

namespace deploy {

/// How many characters a text column holds, as the schema scripts make it: what a box that is saved
/// into it may take. Throws base::RuntimeError where no script makes such a text column.
int ColumnLength(const QString& table, const QString& column);

}  // namespace deploy
