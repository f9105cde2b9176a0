#pragma once

#include <QString>

#include "components/PatientLister.h"

/// What the patient search hands over when a patient is opened: a copy, so that nothing the
/// listing finds later can change the patient on screen.
struct OpenedPatient {
    components::ListedPatient Record;  ///< as the listing found it
    QString Room;                      ///< an in-patient's room; "OPD" for every other patient
    QString RoomClassID;               ///< in-patients only
    QString Company;                   ///< account number, one blank, company
    QString CAPDNum;                   ///< of the row that was opened; empty off the register
    int PatientType = 1;  ///< the option searched with: 0 CAPD, 1 out-, 2 in-, 3 ER patients
};
