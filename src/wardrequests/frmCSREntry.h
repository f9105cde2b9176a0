#pragma once

#include "wardrequests/frmWardEntry.h"

/// Requests supplies, of the central supply room for the patient whose hub is open, who must stay
/// open as long as this window.
class frmCSREntry final : public frmWardEntry {
    Q_OBJECT
public:
    explicit frmCSREntry(PatientOnScreen& patient, QWidget* parent = nullptr)
        : frmWardEntry(SupplyRequests(), patient, parent) {}
};
