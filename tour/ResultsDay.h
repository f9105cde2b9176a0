#pragma once

#include "tour/DayPart.h"

/// The results of the other departments, read by keyboard alone; begins with the main window and
/// its patient list.
class ResultsDay final : public DayPart {
public:
    using DayPart::DayPart;
    void Walk();

private:
    /// From the CAPD register: the first patient whose latest visit every department answered.
    void OpenPatientOfEveryDepartment();
    /// To a result tab by its place, then into its list, and the first result opened.
    void ReadTab(const QString& step, int tab, const char* grid);
    void ExpectText(const char* box);
    void ViewLaboratory();
    void PrintHeart();
};
