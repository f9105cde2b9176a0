#pragma once

#include "toolkit/EntryGrid.h"

namespace toolkit {

/// A commit while its handler runs: dialogs that the handler opens take the focus away and bring
/// it back, and nothing of that may commit again.
struct EntryGrid::Commit {
    int Row;
    int Col;
    QString Former;
    QString Typed;
    Leaving How;
    bool Moved = false;
    bool Refused = false;
    bool Rewritten = false;
};

}  // namespace toolkit
