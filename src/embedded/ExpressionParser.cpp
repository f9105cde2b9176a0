#include "embedded/ExpressionParser.h"

#include <cstdlib>

#include "embedded/Text.h"

namespace embedded {

using Kind = Expression::Kind;

namespace {

constexpr int DeepestNesting = 200;
constexpr int LongestChain = 2000;

Type NumberType(const Token& token) {
    if (token.kind == Token::Kind::Float) {
        return {Type::Kind::Float, 0, 0, 0};
    }
    const size_t point = token.text.find('.');
    if (point != std::string::npos) {
        const int scale = int(token.text.size() - point - 1);
        return Type::Decimal(std::max(1, int(token.text.size()) - 1), scale);
    }
    const int digits = int(token.text.size());
    if (digits < 10 || (digits == 10 && token.text <= "2147483647")) {
        return {Type::Kind::Int, 0, digits, 0};
    }
    return Type::Decimal(digits, 0);
}

}  // namespace

ExpressionPtr ExpressionParser::Make(Kind kind) const {
    auto made = std::make_unique<Expression>();
    made->kind = kind;
    made->line = Line();
    return made;
}

ExpressionPtr ExpressionParser::Join(Kind kind, ExpressionPtr left, ExpressionPtr right) {
    if (++m_joined > LongestChain) {
        throw Failure(191, "Some part of your SQL statement is nested too deeply.", Line());
    }
    ExpressionPtr joined = Make(kind);
    joined->line = left->line;
    joined->operands.push_back(std::move(left));
    joined->operands.push_back(std::move(right));
    return joined;
}

bool ExpressionParser::AtVariable() const {
    return Peek().kind == Token::Kind::Variable && Peek().text.compare(0, 2, "@@") != 0;
}

int ExpressionParser::TakeVariable() {
    if (!AtVariable()) {
        Refuse();
    }
    const Token& token = Take();
    for (size_t slot = 0; slot < m_module.variables.size(); ++slot) {
        if (SameName(m_module.variables[slot].name, token.text)) {
            return int(slot);
        }
    }
    throw Failure(137, "Must declare the scalar variable \"" + token.text + "\".", token.line);
}

ExpressionPtr ExpressionParser::ParseExpression() {
    // A text of nothing but brackets must not exhaust the stack, nor one of nothing but sums.
    if (m_depth == 0) {
        m_joined = 0;
    }
    if (++m_depth > DeepestNesting) {
        throw Failure(191, "Some part of your SQL statement is nested too deeply.", Line());
    }
    ExpressionPtr left = ParseAnd();
    while (AcceptWord("OR")) {
        left = Join(Kind::Or, std::move(left), ParseAnd());
    }
    --m_depth;
    return left;
}

ExpressionPtr ExpressionParser::ParseAnd() {
    ExpressionPtr left = ParseNot();
    while (AcceptWord("AND")) {
        left = Join(Kind::And, std::move(left), ParseNot());
    }
    return left;
}

ExpressionPtr ExpressionParser::ParseNot() {
    bool negated = false;
    while (AcceptWord("NOT")) {
        negated = !negated;
    }
    ExpressionPtr inner = ParseComparison();
    if (!negated) {
        return inner;
    }
    ExpressionPtr result = Make(Kind::Not);
    result->line = inner->line;
    result->operands.push_back(std::move(inner));
    return result;
}

ExpressionPtr ExpressionParser::ParseComparison() {
    ExpressionPtr left = ParseSum();
    for (const char* symbol : {"=", "<>", "!=", "<", "<=", ">", ">="}) {
        if (AcceptSymbol(symbol)) {
            ExpressionPtr result = Join(Kind::Comparison, std::move(left), ParseSum());
            result->text = std::string_view(symbol) == "!=" ? "<>" : symbol;
            return result;
        }
    }
    return ParseTest(std::move(left));
}

ExpressionPtr ExpressionParser::ParseTest(ExpressionPtr left) {
    if (AcceptWord("IS")) {
        ExpressionPtr result = Make(Kind::IsNull);
        result->negated = AcceptWord("NOT");
        ExpectWord("NULL");
        result->operands.push_back(std::move(left));
        return result;
    }
    const bool negated =
        IsWord("NOT") && (IsWord("IN", 1) || IsWord("LIKE", 1) || IsWord("BETWEEN", 1));
    if (negated) {
        Take();
    }
    ExpressionPtr result;
    if (AcceptWord("IN")) {
        result = ParseIn(std::move(left));
    } else if (AcceptWord("LIKE")) {
        result = Join(Kind::Like, std::move(left), ParseSum());
        if (AcceptWord("ESCAPE")) {
            result->operands.push_back(ParseSum());
        }
    } else if (AcceptWord("BETWEEN")) {
        result = Join(Kind::Between, std::move(left), ParseSum());
        ExpectWord("AND");
        result->operands.push_back(ParseSum());
    } else {
        return left;
    }
    result->negated = negated;
    return result;
}

ExpressionPtr ExpressionParser::ParseIn(ExpressionPtr left) {
    ExpressionPtr result = Make(Kind::In);
    result->operands.push_back(std::move(left));
    ExpectSymbol("(");
    if (IsWord("SELECT")) {
        result->select = ParseSelect();
    } else {
        do {
            result->operands.push_back(ParseSum());
        } while (AcceptSymbol(","));
    }
    ExpectSymbol(")");
    return result;
}

ExpressionPtr ExpressionParser::ParseSum() {
    ExpressionPtr left = ParseProduct();
    while (IsSymbol("+") || IsSymbol("-")) {
        const std::string symbol = Take().text;
        left = Join(Kind::Arithmetic, std::move(left), ParseProduct());
        left->text = symbol;
    }
    return left;
}

ExpressionPtr ExpressionParser::ParseProduct() {
    ExpressionPtr left = ParseSign();
    while (IsSymbol("*") || IsSymbol("/") || IsSymbol("%")) {
        const std::string symbol = Take().text;
        left = Join(Kind::Arithmetic, std::move(left), ParseSign());
        left->text = symbol;
    }
    return left;
}

ExpressionPtr ExpressionParser::ParseSign() {
    bool negative = false;
    while (IsSymbol("-") || IsSymbol("+")) {
        negative = (Take().text == "-") != negative;
    }
    ExpressionPtr inner = ParsePrimary();
    if (!negative) {
        return inner;
    }
    ExpressionPtr result = Make(Kind::Negative);
    result->line = inner->line;
    result->operands.push_back(std::move(inner));
    return result;
}

ExpressionPtr ExpressionParser::ParsePrimary() {
    if (AcceptSymbol("(")) {
        ExpressionPtr inner;
        if (IsWord("SELECT")) {
            inner = Make(Kind::Subquery);
            inner->select = ParseSelect();
        } else {
            inner = ParseExpression();
        }
        ExpectSymbol(")");
        return inner;
    }
    if (Peek().kind == Token::Kind::Variable) {
        ExpressionPtr variable = Make(Kind::Variable);
        if (AtVariable()) {
            variable->slot = TakeVariable();
            variable->type = m_module.variables[size_t(variable->slot)].type;
            return variable;
        }
        variable->kind = Kind::SystemVariable;
        variable->text = NameKey(Take().text);
        return variable;
    }
    return Peek().kind == Token::Kind::Word || IsName() ? ParseWord() : ParseConstant();
}

ExpressionPtr ExpressionParser::ParseConstant() {
    ExpressionPtr constant = Make(Kind::Number);
    switch (Peek().kind) {
        case Token::Kind::Text:
            constant->kind = Kind::Text;
            constant->type = Type::Varchar(std::max(1, CountCharacters(Peek().text)));
            break;
        case Token::Kind::Integer:
        case Token::Kind::Decimal:
        case Token::Kind::Float:
            constant->type = NumberType(Peek());
            break;
        default:
            Refuse();
    }
    constant->text = Take().text;
    return constant;
}

ExpressionPtr ExpressionParser::ParseWord() {
    if (IsWord("NULL")) {
        ExpressionPtr null = Make(Kind::Null);
        Take();
        return null;
    }
    if (IsWord("CASE")) {
        return ParseCase();
    }
    if (IsWord("EXISTS")) {
        ExpressionPtr exists = Make(Kind::Exists);
        Take();
        ExpectSymbol("(");
        exists->select = ParseSelect();
        ExpectSymbol(")");
        return exists;
    }
    if (Peek().kind == Token::Kind::Word && IsSymbol("(", 1)) {
        return ParseCall();
    }
    if (!IsName()) {
        Refuse();
    }
    // DATABASE.dbo.function( and dbo.function( are calls, everything else is a column.
    if ((IsSymbol(".", 1) && IsSymbol("(", 3)) || (IsSymbol(".", 3) && IsSymbol("(", 5))) {
        return ParseUserCall();
    }
    return ParseColumn();
}

ExpressionPtr ExpressionParser::ParseCase() {
    ExpressionPtr result = Make(Kind::Case);
    Take();
    ExpressionPtr subject;
    size_t subjectBegin = 0;
    if (!IsWord("WHEN")) {
        subjectBegin = m_position;
        subject = ParseExpression();
    }
    if (!IsWord("WHEN")) {
        Refuse();
    }
    while (AcceptWord("WHEN")) {
        ExpressionPtr condition = ParseExpression();
        if (subject) {
            condition = Join(Kind::Comparison, std::move(subject), std::move(condition));
            condition->text = "=";
            // Each WHEN compares with its own copy of the subject.
            const size_t resume = m_position;
            m_position = subjectBegin;
            subject = ParseExpression();
            m_position = resume;
        }
        result->operands.push_back(std::move(condition));
        ExpectWord("THEN");
        result->operands.push_back(ParseExpression());
    }
    result->operands.push_back(AcceptWord("ELSE") ? ParseExpression() : Make(Kind::Null));
    ExpectWord("END");
    return result;
}

ExpressionPtr ExpressionParser::ParseColumn() {
    ExpressionPtr column = Make(Kind::Column);
    column->text = TakeName();
    while (AcceptSymbol(".")) {
        AcceptSymbol(".");  // DATABASE..table.column: the table's name decides.
        column->qualifier = std::move(column->text);
        column->text = TakeName();
    }
    return column;
}

ExpressionPtr ExpressionParser::ParseCall() {
    if (IsWord("CAST") || IsWord("CONVERT")) {
        return ParseConversion(false);
    }
    if (IsWord("TRY_CONVERT")) {
        return ParseConversion(true);
    }
    ExpressionPtr call = Make(Kind::Call);
    call->text = NameKey(Take().text);
    ExpectSymbol("(");
    if (call->text == "DATEADD" || call->text == "DATEDIFF" || call->text == "DATEPART") {
        call->qualifier = NameKey(TakeName());
        ExpectSymbol(",");
    }
    if (AcceptSymbol("*")) {
        call->qualifier = "*";
        ExpectSymbol(")");
        return call;
    }
    call->distinct = AcceptWord("DISTINCT");
    ParseArguments(*call);
    return call;
}

ExpressionPtr ExpressionParser::ParseConversion(bool attempt) {
    ExpressionPtr result = Make(Kind::Convert);
    result->attempt = attempt;
    const bool cast = IsWord("CAST");
    Take();
    ExpectSymbol("(");
    if (cast) {
        result->operands.push_back(ParseExpression());
        ExpectWord("AS");
        result->type = TakeType();
    } else {
        result->type = TakeType();
        ExpectSymbol(",");
        result->operands.push_back(ParseExpression());
        if (AcceptSymbol(",")) {
            result->style = TakeInteger();
        }
    }
    ExpectSymbol(")");
    return result;
}

ExpressionPtr ExpressionParser::ParseUserCall() {
    ExpressionPtr call = Make(Kind::UserCall);
    call->function = TakeObjectName();
    ExpectSymbol("(");
    ParseArguments(*call);
    return call;
}

void ExpressionParser::ParseArguments(Expression& call) {
    if (AcceptSymbol(")")) {
        return;
    }
    do {
        call.operands.push_back(ParseExpression());
    } while (AcceptSymbol(","));
    ExpectSymbol(")");
}

}  // namespace embedded
