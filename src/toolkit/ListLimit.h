#pragma once

#include <QString>

namespace toolkit {

/// The server's lists to pick from end at so many rows.
inline constexpr int kListLimit = 500;

/// What a list that ends there says of itself; empty for a shorter one.
inline QString ListLimitText(int rows) {
    return rows >= kListLimit ? QStringLiteral("first %1; type more").arg(kListLimit) : QString();
}

}  // namespace toolkit
