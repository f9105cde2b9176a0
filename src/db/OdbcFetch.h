#pragma once

#include "db/OdbcHandles.h"
#include "embedded/RowSink.h"

namespace db {

/// Hands the current result of a statement to the sink, its columns first. Where the widths of
/// texts can be trusted (`widthsHold`) and are small, rows come in blocks; otherwise cell by
/// cell, so that nothing is cut off. Throws OdbcFailure.
void FetchRows(const OdbcHandle& statement, bool widthsHold, embedded::RowSink& sink);

}  // namespace db
