#pragma once

#include "tour/Tour.h"

class frmPatientList;

/// The part of the day in which a patient comes onto the register and is seen; begins and ends with
/// the main window and its list.
class RegisterDay final {
public:
    explicit RegisterDay(Tour& tour) : m_tour(tour) {}
    void Walk();

private:
    void RegisterAPatient();
    void ChangeTheSheet();
    void RegisterAVisit();
    void ReadVisits();
    /// From the patient list, by arrows, to the first patient with a CAPD number, or without one.
    void Choose(bool registered, const QString& butNot = {});
    void ReadBox(const QString& step, const QString& said);
    void LeaveWindow(const QString& step);
    frmPatientList& Patients() const;

    Tour& m_tour;
    QString m_registered;
};
