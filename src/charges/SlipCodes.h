#pragma once

#include <QString>

/// The revenue codes under which the lines of a slip are posted and paid.
namespace SlipCodes {

inline const QString kUnit = QStringLiteral("CY");  ///< the unit's fees and supplies
inline const QString kDoctor = QStringLiteral("MD");
inline const QString kDrCr = QStringLiteral("C");
constexpr int kStockCardFlag = 1;

}  // namespace SlipCodes
