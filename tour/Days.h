#pragma once

#include <memory>

#include "app/mdiCAPD.h"
#include "tour/DayPart.h"

/// What a nurse chooses and types to get in; without a source, the one that is offered first.
struct NurseLogIn {
    QString Source;
    QString User;
    QString Password;
};

/// The steps of the working day, in the order in which they are added.
class Day final : public DayPart {
public:
    using DayPart::DayPart;

    void LogIn(const NurseLogIn& nurse);
    void FindPatients();
    void ChoosePatients();
    void PrintReports();

private:
    void TypeLogIn(const QString& user, const QString& password);
    void SearchFor(const QString& step, const char* box, const QString& text);
    void PickType(const QString& step, const char* option, bool current);
    void PrintReport(const QString& title, const QString& file, bool dated,
                     std::function<void()> open);
    mdiCAPD& Frame() const;
    frmPatientList& Patients() const;
    int ShownRows() const;

    std::unique_ptr<mdiCAPD> m_frame;
};
