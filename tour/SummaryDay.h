#pragma once

#include "tour/Tour.h"

/// The part of the day in which a stay's clinical summary is read and printed; begins and ends
/// with the patient list.
class SummaryDay final {
public:
    explicit SummaryDay(Tour& tour) : m_tour(tour) {}
    void Walk();

private:
    void OpenPatient(const char* type, const QString& query);
    void ReadSummary(const QString& name);

    Tour& m_tour;
};
