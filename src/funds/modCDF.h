#pragma once

#include <QString>

/// Whether a company's fund ("CDF") stands behind a visit.
namespace modCDF {

/// True when the visit is charged to a company. The number comes without blanks around it. Throws
/// base::DatabaseError.
bool CheckCompany(const QString& idNum);

}  // namespace modCDF
