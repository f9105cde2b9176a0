#pragma once

#include <QString>

/// Where the embedded hospitals of this workstation are kept.
namespace components::HospitalFiles {

/// The practice hospital; made anew when it is missing.
QString Demo();
/// The unit's own hospital.
QString Own();

/// Keeps them elsewhere from now on: a demo day walks through a folder of its own.
void Place(const QString& demoFile, const QString& ownFile);

}  // namespace components::HospitalFiles
