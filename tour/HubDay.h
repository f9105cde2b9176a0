#pragma once

#include "tour/DayPart.h"

class frmPatientList;

/// The part of the day that is spent in the patient hub; begins with a hub open.
class HubDay final : public DayPart {
public:
    using DayPart::DayPart;
    void Walk();

private:
    void ReadRequests();
    void MeetClosedAccounts();
    void OpenAnotherPatient();
    /// From the patient list: goes down to the first patient that `condition` on the visit (an
    /// alias "v") holds for, and presses Enter.
    void OpenFirst(const QString& condition);
    void GoToTab(const char* tabs, int tab);
    frmPatientList& Patients() const;
    /// The hub is in front and names the patient chosen in the list.
    void ExpectHubOfChosen();
};
