#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace embedded {

struct ScriptBatch {
    std::string_view text;
    int firstLine = 1;
};

/// The batches of a script: what stands between lines that hold GO alone.
std::vector<ScriptBatch> Batches(std::string_view script);

}  // namespace embedded
