#pragma once

#include <QTest>
#include <tuple>

namespace rows {

inline constexpr const char* kNames[] = {"1", "2", "3", "4", "5", "6", "7", "8"};

template <class... Cells, size_t... At>
void Columns(std::index_sequence<At...>) {
    (QTest::addColumn<Cells>(kNames[At]), ...);
}

template <class... Cells, size_t... At>
std::tuple<Cells...> Fetch(std::index_sequence<At...>) {
    return {*static_cast<Cells*>(QTest::qData(kNames[At], qMetaTypeId<Cells>()))...};
}

}  // namespace rows

/// The columns of a test's table, in the order of its rows' cells.
template <class... Cells>
void Columns() {
    rows::Columns<Cells...>(std::index_sequence_for<Cells...>());
}

/// The cells of the row that the test runs with.
template <class... Cells>
std::tuple<Cells...> Fetch() {
    return rows::Fetch<Cells...>(std::index_sequence_for<Cells...>());
}

/// A row of the table; literals stand for texts.
template <class... Cells>
void Row(const char* name, const Cells&... cells) {
    QTestData& row = QTest::newRow(name);
    (row << ... << cells);
}
