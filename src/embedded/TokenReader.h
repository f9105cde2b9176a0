#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "embedded/Ast.h"
#include "embedded/Failure.h"
#include "embedded/Lexer.h"

namespace embedded {

/// Walks the tokens of one text: what all parsers share.
class TokenReader {
protected:
    explicit TokenReader(std::vector<Token> tokens) : m_tokens(std::move(tokens)) {}
    ~TokenReader() = default;

    const Token& Peek(size_t ahead = 0) const;
    const Token& Take();
    int Line() const { return Peek().line; }

    bool IsWord(std::string_view word, size_t ahead = 0) const;
    bool IsSymbol(std::string_view symbol, size_t ahead = 0) const;
    bool AcceptWord(std::string_view word);
    bool AcceptSymbol(std::string_view symbol);
    void ExpectWord(std::string_view word);
    void ExpectSymbol(std::string_view symbol);

    /// A name that is quoted or no keyword.
    bool IsName(size_t ahead = 0) const;
    std::string TakeName();
    /// `name`, `dbo.name`, `DATABASE..name`, `DATABASE.dbo.name`.
    ObjectName TakeObjectName();
    int TakeInteger();
    Type TakeType();

    [[noreturn]] void Refuse() const;

    size_t m_position = 0;

private:
    std::vector<Token> m_tokens;
};

}  // namespace embedded
