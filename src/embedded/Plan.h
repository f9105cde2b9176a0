#pragma once

#include <string>
#include <vector>

#include "embedded/Database.h"
#include "embedded/RowSink.h"
#include "embedded/Type.h"

namespace embedded {

/// What a numbered parameter of a SQLite statement stands for.
struct PlanParameter {
    enum class Source { Variable, Now, RowCount, SessionId, TransactionDepth, Identity };
    Source source = Source::Variable;
    int slot = -1;

    bool operator==(const PlanParameter& other) const = default;
};

/// One compiled statement: the text for SQLite, where its parameters come from and where its
/// columns go. Prepared at its first run and kept.
struct Plan {
    std::string sql;
    std::vector<PlanParameter> parameters;
    std::vector<ResultColumn> columns;
    /// The variables that take the columns, in order; empty for rows that go to the client.
    std::vector<int> targets;
    bool writes = false;
    /// An INSERT into a table with an identity column.
    bool setsIdentity = false;
    PreparedStatement statement;
    bool running = false;
};

}  // namespace embedded
