#pragma once

#include <QString>

namespace components {

/// Makes the practice hospital unless it is there, and shows how far it is. Throws
/// base::RuntimeError; nothing half-made is left.
void MakeDemoHospitalOnce(const QString& file);

/// Makes the unit's own empty hospital the first time. Once made on this workstation it is never
/// made again: a file that is gone is an error, not an empty hospital.
void MakeOwnHospitalOnce(const QString& file);

}  // namespace components
