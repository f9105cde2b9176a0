#include "benchmarks/Measure.h"

#include <QElapsedTimer>
#include <algorithm>
#include <iostream>

namespace bench {

namespace {

double Median(std::vector<double> values) {
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

double Milliseconds(const std::function<void()>& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

Figures Alternate(const QString& name, int rounds, const std::function<void()>& ours,
                  const std::function<void()>& yardstick) {
    return AlternateTimed(
        name, QStringLiteral("ms"), rounds, [&ours] { return Milliseconds(ours); },
        [&yardstick] { return Milliseconds(yardstick); });
}

Figures AlternateTimed(const QString& name, const QString& unit, int rounds,
                       const std::function<double()>& ours,
                       const std::function<double()>& yardstick) {
    std::vector<double> oursTaken;
    std::vector<double> yardstickTaken;
    for (int round = 0; round <= rounds; ++round) {
        const double first = ours();
        const double second = yardstick();
        if (round == 0)
            continue;
        oursTaken.push_back(first);
        yardstickTaken.push_back(second);
    }
    return {name, Median(std::move(oursTaken)), Median(std::move(yardstickTaken)), unit};
}

void Print(const Figures& figures) {
    const auto number = [](double value) { return QString::number(value, 'g', 4).toStdString(); };
    const std::string unit = ' ' + figures.Unit.toStdString();
    std::cout << figures.Name.toStdString() << '\t' << number(figures.Ours) << unit << '\t'
              << number(figures.Yardstick) << unit << '\t'
              << number(figures.Ours / figures.Yardstick) << " x" << std::endl;
}

const std::vector<Measure>& AllMeasures() {
    static const std::vector<Measure> measures{
        {QStringLiteral("procedure-call"), false, ProcedureCall},
        {QStringLiteral("start"), false, Start},
        {QStringLiteral("code-search-key"), false, CodeSearchKey},
        {QStringLiteral("hub-open"), false, HubOpen},
        {QStringLiteral("item-enter"), false, ItemEnter},
        {QStringLiteral("slip-save"), false, SlipSave},
        {QStringLiteral("slip-first-page"), false, SlipFirstPage},
        {QStringLiteral("summary"), false, Summary},
        {QStringLiteral("round-trip"), false, RoundTrip},
        {QStringLiteral("results-10k"), false, ResultList},
        {QStringLiteral("registration-1000"), false, Registration},
        {QStringLiteral("visits-chart-1000"), false, VisitsChart},
        {QStringLiteral("ward-enter"), false, WardEnter},
        {QStringLiteral("ward-save-50"), false, WardSave50},
        {QStringLiteral("status-50k"), false, StatusList},
        {QStringLiteral("search-1m"), true, SearchLarge},
        {QStringLiteral("listing-1m"), true, ListingLarge},
        {QStringLiteral("list-100k"), true, ListLarge},
        {QStringLiteral("list-100k-memory"), true, ListLargeMemory}};
    return measures;
}

}  // namespace bench
