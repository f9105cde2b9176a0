#include "embedded/TokenReader.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "embedded/Text.h"

namespace embedded {

namespace {

// Words that name nothing unless they are quoted; sorted.
constexpr std::array<std::string_view, 74> Keywords = {
    "ADD",   "ALL",      "ALTER",   "AND",       "AS",        "ASC",        "BEGIN",    "BETWEEN",
    "BREAK", "BY",       "CASE",    "CHECK",     "COMMIT",    "CONSTRAINT", "CONTINUE", "CREATE",
    "CROSS", "DECLARE",  "DEFAULT", "DELETE",    "DESC",      "DISTINCT",   "DROP",     "ELSE",
    "END",   "EXCEPT",   "EXEC",    "EXECUTE",   "EXISTS",    "FOR",        "FOREIGN",  "FROM",
    "FULL",  "FUNCTION", "GOTO",    "GRANT",     "GROUP",     "HAVING",     "IDENTITY", "IF",
    "IN",    "INDEX",    "INNER",   "INSERT",    "INTERSECT", "INTO",       "IS",       "JOIN",
    "KEY",   "LEFT",     "LIKE",    "MERGE",     "NOT",       "NULL",       "ON",       "OR",
    "ORDER", "OUTER",    "PRIMARY", "PROCEDURE", "RETURN",    "RIGHT",      "SELECT",   "SET",
    "TABLE", "THEN",     "TOP",     "UNION",     "UNIQUE",    "UPDATE",     "VALUES",   "WHEN",
    "WHERE", "WHILE"};

bool IsKeyword(const std::string& word) {
    const std::string key = NameKey(word);
    return key == "USE" || key == "WITH" ||
           std::binary_search(Keywords.begin(), Keywords.end(), std::string_view(key));
}

}  // namespace

const Token& TokenReader::Peek(size_t ahead) const {
    return m_tokens[std::min(m_position + ahead, m_tokens.size() - 1)];
}

const Token& TokenReader::Take() {
    const Token& token = Peek();
    ++m_position;
    return token;
}

bool TokenReader::IsWord(std::string_view word, size_t ahead) const {
    const Token& token = Peek(ahead);
    return token.kind == Token::Kind::Word && SameName(token.text, word);
}

bool TokenReader::IsSymbol(std::string_view symbol, size_t ahead) const {
    const Token& token = Peek(ahead);
    return token.kind == Token::Kind::Symbol && token.text == symbol;
}

bool TokenReader::AcceptWord(std::string_view word) {
    const bool there = IsWord(word);
    m_position += there ? 1 : 0;
    return there;
}

bool TokenReader::AcceptSymbol(std::string_view symbol) {
    const bool there = IsSymbol(symbol);
    m_position += there ? 1 : 0;
    return there;
}

void TokenReader::ExpectWord(std::string_view word) {
    if (!AcceptWord(word)) {
        Refuse();
    }
}

void TokenReader::ExpectSymbol(std::string_view symbol) {
    if (!AcceptSymbol(symbol)) {
        Refuse();
    }
}

bool TokenReader::IsName(size_t ahead) const {
    const Token& token = Peek(ahead);
    return token.kind == Token::Kind::QuotedName ||
           (token.kind == Token::Kind::Word && !IsKeyword(token.text));
}

std::string TokenReader::TakeName() {
    if (!IsName()) {
        Refuse();
    }
    return Take().text;
}

ObjectName TokenReader::TakeObjectName() {
    ObjectName name;
    name.line = Line();
    name.name = TakeName();
    if (!AcceptSymbol(".")) {
        return name;
    }
    if (AcceptSymbol(".")) {
        name.database = name.name;
        name.name = TakeName();
        return name;
    }
    std::string owner = std::move(name.name);
    name.name = TakeName();
    name.hasOwner = true;
    if (AcceptSymbol(".")) {
        name.database = std::move(owner);
        owner = std::move(name.name);
        name.name = TakeName();
    }
    if (!SameName(owner, "dbo")) {
        throw Failure(208, "Invalid object name '" + owner + "." + name.name + "'.", name.line);
    }
    return name;
}

int TokenReader::TakeInteger() {
    if (Peek().kind != Token::Kind::Integer || Peek().text.size() > 9) {
        Refuse();
    }
    return std::atoi(Take().text.c_str());
}

Type TokenReader::TakeType() {
    const int line = Line();
    const std::string name = NameKey(TakeName());
    if (name == "VARCHAR") {
        if (!AcceptSymbol("(")) {
            throw OutsideSubset("varchar without a length", line);
        }
        const int length = AcceptWord("MAX") ? Type::Max : TakeInteger();
        ExpectSymbol(")");
        if (length < 1 || (length > 8000 && length != Type::Max)) {
            throw Failure(131, "The size given to the type 'varchar' exceeds 8000.", line);
        }
        return Type::Varchar(length);
    }
    if (name == "DECIMAL") {
        ExpectSymbol("(");
        const int precision = TakeInteger();
        const int scale = AcceptSymbol(",") ? TakeInteger() : 0;
        ExpectSymbol(")");
        if (precision < 1 || precision > 38 || scale > precision) {
            throw Failure(2750, "The size given to the type 'decimal' is invalid.", line);
        }
        return Type::Decimal(precision, scale);
    }
    static const std::pair<std::string_view, Type::Kind> plain[] = {
        {"INT", Type::Kind::Int},     {"BIGINT", Type::Kind::BigInt},
        {"BIT", Type::Kind::Bit},     {"MONEY", Type::Kind::Money},
        {"FLOAT", Type::Kind::Float}, {"DATETIME", Type::Kind::DateTime}};
    for (const auto& [known, kind] : plain) {
        if (name == known) {
            return {kind, 0, 0, 0};
        }
    }
    throw Failure(243, "Type " + name + " is not a defined system type.", line);
}

void TokenReader::Refuse() const {
    const Token& token = Peek();
    throw SyntaxFailure(token.kind == Token::Kind::End ? "end of text" : token.text, token.line);
}

}  // namespace embedded
