#pragma once

#include "wardrequests/frmWardEntry.h"

/// Requests medicines, of the pharmacy for the patient whose hub is open, who must stay open as
/// long as this window.
class frmPHEntry final : public frmWardEntry {
    Q_OBJECT
public:
    explicit frmPHEntry(PatientOnScreen& patient, QWidget* parent = nullptr)
        : frmWardEntry(PharmacyRequests(), patient, parent) {}
};
