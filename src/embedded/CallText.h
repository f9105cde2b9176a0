#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/Type.h"
#include "embedded/Value.h"

namespace embedded {

struct CallArgument {
    enum class Kind { Text, Number, Null };
    Kind kind = Kind::Null;
    /// Between the quotes, quotes inside still doubled; or the number.
    std::string_view raw;
    bool hasQuotes = false;
};

/// The usual command of the program, read without the parser: a name and plain arguments.
struct CallText {
    /// As written.
    std::string_view name;
    std::vector<CallArgument> arguments;
};

/// Nothing where the text has any other shape; the parser then judges it.
std::optional<CallText> ReadCallText(std::string_view text);

/// The text of an argument, quotes inside made single.
void Unquote(const CallArgument& argument, std::string& text);

}  // namespace embedded
