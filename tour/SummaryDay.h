#pragma once

#include "tour/DayPart.h"

/// The part of the day in which a stay's clinical summary is read and printed; begins and ends
/// with the patient list.
class SummaryDay final : public DayPart {
public:
    using DayPart::DayPart;
    void Walk();

private:
    void OpenPatient(const char* type, const QString& query);
    void ReadSummary(const QString& name);
};
