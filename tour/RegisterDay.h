#pragma once

#include "tour/DayPart.h"

class frmPatientList;

/// The part of the day in which a patient comes onto the register and is seen; begins and ends with
/// the main window and its list.
class RegisterDay final : public DayPart {
public:
    using DayPart::DayPart;
    void Walk();

private:
    void RegisterAPatient();
    void ChangeTheSheet();
    void RegisterAVisit();
    void ReadVisits();
    /// From the patient list, by arrows, to the first patient with a CAPD number, or without one.
    void Choose(bool registered, const QString& butNot = {});
    void LeaveWindow(const QString& step);
    frmPatientList& Patients() const;

    QString m_registered;
};
