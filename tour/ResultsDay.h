#pragma once

#include "tour/Tour.h"

/// The results of the other departments, read by keyboard alone; begins with the main window and
/// its patient list.
class ResultsDay final {
public:
    explicit ResultsDay(Tour& tour) : m_tour(tour) {}
    void Walk();

private:
    /// From the CAPD register: the first patient whose latest visit every department answered.
    void OpenPatientOfEveryDepartment();
    /// To a result tab by its place, then into its list, and the first result opened.
    void ReadTab(const QString& step, int tab, const char* grid);
    void ExpectText(const char* box);
    void ViewLaboratory();
    void PrintHeart();
    /// In the viewer that is open, which is then left.
    void SavePdf(const QString& file);

    Tour& m_tour;
};
