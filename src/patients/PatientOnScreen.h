#pragma once

#include <QString>

/// The patient whose hub is open, as the windows opened from it read it: the texts of the hub's
/// header boxes at the time of the call.
class PatientOnScreen {
public:
    virtual ~PatientOnScreen() = default;

    virtual QString HospNum() const = 0;
    virtual QString IdNum() const = 0;
    virtual QString CAPDNum() const = 0;
    virtual QString LastName() const = 0;
    virtual QString FirstName() const = 0;
    virtual QString MiddleName() const = 0;
    virtual QString Age() const = 0;
    virtual QString Sex() const = 0;
    /// Account number, one blank, company.
    virtual QString Company() const = 0;

    /// Reads the hub's two request lists anew.
    virtual void Get_CanPenProc() = 0;
};
