#include "embedded/ScriptText.h"

#include "embedded/Text.h"

namespace embedded {

namespace {

bool IsGo(std::string_view line) {
    const size_t begin = line.find_first_not_of(" \t");
    const size_t end = line.find_last_not_of(" \t\r");
    return begin != std::string_view::npos && SameName(line.substr(begin, end - begin + 1), "GO");
}

}  // namespace

std::vector<ScriptBatch> Batches(std::string_view script) {
    std::vector<ScriptBatch> batches;
    size_t batchBegin = 0;
    int batchLine = 1;
    int line = 1;
    for (size_t begin = 0; begin < script.size(); ++line) {
        const size_t end = std::min(script.find('\n', begin), script.size());
        if (IsGo(script.substr(begin, end - begin))) {
            batches.push_back({script.substr(batchBegin, begin - batchBegin), batchLine});
            batchBegin = std::min(end + 1, script.size());
            batchLine = line + 1;
        }
        begin = end + 1;
    }
    batches.push_back({script.substr(batchBegin), batchLine});
    return batches;
}

}  // namespace embedded
