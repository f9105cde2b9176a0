#pragma once

#include <QString>

namespace base {

/// First letter of each blank-separated word upper case, the other letters lower case.
QString ProperCase(const QString& text);

}  // namespace base
