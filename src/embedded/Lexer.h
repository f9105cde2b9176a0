#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace embedded {

struct Token {
    enum class Kind { End, Word, QuotedName, Variable, Text, Integer, Decimal, Float, Symbol };
    Kind kind = Kind::End;
    /// The word as written, the inside of quotes, the number, or the symbol.
    std::string text;
    int line = 1;
    size_t begin = 0;
};

/// The tokens of a T-SQL text, comments left out, an End token last. `firstLine` is the number of
/// the text's first line. Throws Failure for what is not closed and for characters of no meaning.
std::vector<Token> Tokens(std::string_view text, int firstLine = 1);

}  // namespace embedded
