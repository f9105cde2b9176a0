#pragma once

#include <QString>
#include <memory>

#include "db/Connection.h"

/// The hospitals that are measured; made once, beside the bench program.
namespace bench {

/// The demo hospital.
QString DemoHospital();
/// A copy of it under a name of its own, made anew each time.
QString CopyOfDemoHospital(const QString& suffix);

/// A register of 1,000,000 patients and 2,000,000 stays; 100,000 visits of patients named Quill.
/// Throws where it has not been made.
QString LargeHospital();
void MakeLargeHospital();

std::shared_ptr<db::Connection> Open(const QString& file);

}  // namespace bench
