#pragma once

#include "embedded/TokenReader.h"

namespace embedded {

/// Reads values and conditions. One grammar serves both; the compiler tells them apart by type.
class ExpressionParser : protected TokenReader {
protected:
    ExpressionParser(std::vector<Token> tokens, Module& module)
        : TokenReader(std::move(tokens)), m_module(module) {}
    ~ExpressionParser() = default;

    ExpressionPtr ParseExpression();
    /// A constant or a call, perhaps with a sign: what may follow DEFAULT without brackets.
    ExpressionPtr ParsePlainValue() { return ParseSign(); }
    /// Reads from SELECT to the end of the query.
    virtual SelectPtr ParseSelect() = 0;

    bool AtVariable() const;
    /// The slot of the variable that stands here; refuses one not declared.
    int TakeVariable();

    Module& m_module;

private:
    ExpressionPtr ParseAnd();
    ExpressionPtr ParseNot();
    ExpressionPtr ParseComparison();
    ExpressionPtr ParseTest(ExpressionPtr left);
    ExpressionPtr ParseIn(ExpressionPtr left);
    ExpressionPtr ParseSum();
    ExpressionPtr ParseProduct();
    ExpressionPtr ParseSign();
    ExpressionPtr ParsePrimary();
    ExpressionPtr ParseConstant();
    ExpressionPtr ParseWord();
    ExpressionPtr ParseCase();
    ExpressionPtr ParseColumn();
    ExpressionPtr ParseCall();
    ExpressionPtr ParseConversion(bool attempt);
    ExpressionPtr ParseUserCall();
    void ParseArguments(Expression& call);

    ExpressionPtr Make(Expression::Kind kind) const;
    ExpressionPtr Join(Expression::Kind kind, ExpressionPtr left, ExpressionPtr right);

    int m_depth = 0;
    int m_joined = 0;
};

}  // namespace embedded
