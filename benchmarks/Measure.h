#pragma once

#include <QString>
#include <functional>
#include <vector>

/// What the program costs, beside a yardstick that does the same work in the same process.
namespace bench {

/// One line of the bench's output.
struct Figures {
    QString Name;
    double Ours;
    double Yardstick;
    QString Unit;
};

/// Milliseconds that a piece of work takes.
double Milliseconds(const std::function<void()>& work);

/// Runs both in turn, after one unmeasured round, and gives the median of each in milliseconds.
Figures Alternate(const QString& name, int rounds, const std::function<void()>& ours,
                  const std::function<void()>& yardstick);

/// As Alternate, for work that says itself what it took.
Figures AlternateTimed(const QString& name, const QString& unit, int rounds,
                       const std::function<double()>& ours,
                       const std::function<double()>& yardstick);

/// Name, ours, yardstick, ratio, tab-separated.
void Print(const Figures& figures);

/// One measure of the bench: its name, whether it needs the large register, and its work, which
/// prints its lines.
struct Measure {
    QString Name;
    bool Large;
    std::function<void()> Run;
};
const std::vector<Measure>& AllMeasures();

/// A part of a measure that runs in a process of its own: its exit status. Nothing where the name
/// is none of those.
int RunChild(const QString& name, const QString& argument);

void ProcedureCall();
void SearchLarge();
void ListLarge();
void ListLargeMemory();
void Start();
void Summary();
void CodeSearchKey();
void HubOpen();
void ItemEnter();
void RoundTrip();
void ResultList();
void SlipFirstPage();
void SlipSave();
void Registration();
void VisitsChart();
void WardEnter();
void WardSave50();
void StatusList();
void ListingLarge();

}  // namespace bench
