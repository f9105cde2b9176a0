#include "embedded/ExpressionCompiler.h"

#include <algorithm>

#include "embedded/Builtins.h"
#include "embedded/Text.h"

namespace embedded {

using Kind = Expression::Kind;

namespace {

constexpr Type Int = {Type::Kind::Int, 0, 0, 0};

std::string Negated(const Expression& expression, const std::string& condition) {
    return expression.negated ? "(NOT " + condition + ")" : condition;
}

// A pattern that begins with a wildcard matches anywhere: no range of an index can help.
bool BeginsWithWildcard(const Expression& pattern) {
    return pattern.kind == Kind::Text && !pattern.text.empty() &&
           (pattern.text[0] == '%' || pattern.text[0] == '_' || pattern.text[0] == '[');
}

}  // namespace

Fragment ExpressionCompiler::Value(const Expression& expression, const Scope& scope) {
    Fragment value = Compile(expression, scope);
    if (value.type.kind == Type::Kind::Condition) {
        throw SyntaxFailure(expression.text.empty() ? "condition" : expression.text,
                            expression.line);
    }
    return value;
}

std::string ExpressionCompiler::Condition(const Expression& expression, const Scope& scope) {
    Fragment condition = Compile(expression, scope);
    if (condition.type.kind != Type::Kind::Condition) {
        throw Failure(4145,
                      "An expression of non-boolean type specified in a context where a condition "
                      "is expected, near '" +
                          expression.text + "'.",
                      expression.line);
    }
    return std::move(condition.sql);
}

Fragment ExpressionCompiler::Compile(const Expression& expression, const Scope& scope) {
    if (m_grouping == nullptr) {
        return CompileKind(expression, scope);
    }
    const size_t loose = m_grouping->loose.size();
    Fragment compiled = CompileKind(expression, scope);
    const auto& keys = m_grouping->keys;
    if (std::find(keys.begin(), keys.end(), compiled.sql) != keys.end()) {
        m_grouping->loose.resize(loose);
    }
    return compiled;
}

Fragment ExpressionCompiler::CompileKind(const Expression& expression, const Scope& scope) {
    switch (expression.kind) {
        case Kind::Null:
        case Kind::Number:
        case Kind::Text:
            return Constant(expression);
        case Kind::Variable:
            return Parameter(PlanParameter::Source::Variable, expression.type, expression.slot);
        case Kind::SystemVariable:
            return SystemVariable(expression);
        case Kind::Column:
            return ColumnOf(expression, scope);
        case Kind::Negative:
            return Negative(expression, scope);
        case Kind::Arithmetic:
            return Arithmetic(expression, scope);
        case Kind::Case:
            return Case(expression, scope);
        case Kind::Call:
            return Call(expression, scope);
        case Kind::Convert:
            return Conversion(expression, scope);
        case Kind::UserCall:
            return UserCall(expression, scope);
        case Kind::Subquery:
            return Subquery(expression, scope);
        default:
            return ConditionOf(expression, scope);
    }
}

Fragment ExpressionCompiler::Constant(const Expression& expression) const {
    switch (expression.kind) {
        case Kind::Text:
            return {Literal(expression.text), expression.type};
        case Kind::Number: {
            const bool whole = expression.text.find_first_of(".eE") == std::string::npos;
            const bool real = expression.type.kind != Type::Kind::Int && whole;
            return {real ? expression.text + ".0" : expression.text, expression.type};
        }
        default:
            return {"NULL", {}};
    }
}

Fragment ExpressionCompiler::Parameter(PlanParameter::Source source, const Type& type, int slot) {
    const PlanParameter parameter{source, slot};
    auto found = std::find(m_parameters.begin(), m_parameters.end(), parameter);
    if (found == m_parameters.end()) {
        found = m_parameters.insert(m_parameters.end(), parameter);
    }
    return {"?" + std::to_string(found - m_parameters.begin() + 1), type};
}

Fragment ExpressionCompiler::SystemVariable(const Expression& expression) {
    if (expression.text == "@@ROWCOUNT") {
        return Parameter(PlanParameter::Source::RowCount, Int);
    }
    if (expression.text == "@@SPID") {
        return Parameter(PlanParameter::Source::SessionId, Int);
    }
    if (expression.text == "@@TRANCOUNT") {
        return Parameter(PlanParameter::Source::TransactionDepth, Int);
    }
    throw Failure(137, "Must declare the scalar variable \"" + expression.text + "\".",
                  expression.line);
}

Fragment ExpressionCompiler::ColumnOf(const Expression& expression, const Scope& scope) {
    bool tableKnown = false;
    for (const Scope* level = &scope; level != nullptr; level = level->outer) {
        const Column* found = nullptr;
        std::string sql;
        for (const Scope::Source& source : level->sources) {
            if (!expression.qualifier.empty() && !SameName(source.alias, expression.qualifier)) {
                continue;
            }
            tableKnown = true;
            const Column* column = source.table->Find(expression.text);
            if (column == nullptr) {
                continue;
            }
            if (found != nullptr) {
                throw Failure(209, "Ambiguous column name '" + expression.text + "'.",
                              expression.line);
            }
            found = column;
            sql = (level->bare ? "" : Identifier(source.alias) + ".") + Identifier(column->name);
        }
        if (found != nullptr) {
            NoteColumn(expression, *level);
            return {sql, found->type, true, false};
        }
    }
    if (!expression.qualifier.empty() && !tableKnown) {
        throw Failure(4104,
                      "The multi-part identifier \"" + expression.qualifier + "." +
                          expression.text + "\" could not be bound.",
                      expression.line);
    }
    throw Failure(207, "Invalid column name '" + expression.text + "'.", expression.line);
}

void ExpressionCompiler::NoteColumn(const Expression& expression, const Scope& scope) {
    for (Grouping* grouping = m_grouping; grouping != nullptr; grouping = grouping->outer) {
        if (grouping->scope == &scope && grouping->insideAggregate == 0) {
            grouping->loose.push_back(&expression);
        }
    }
}

Fragment ExpressionCompiler::Negative(const Expression& expression, const Scope& scope) {
    Fragment value = Value(*expression.operands[0], scope);
    if (value.type.kind == Type::Kind::DateTime || value.type.IsText()) {
        throw Failure(8117, "Operand data type " + value.type.Name() + " is invalid for minus.",
                      expression.line);
    }
    value.sql = "(- " + value.sql + ")";
    value.column = false;
    return value;
}

Fragment ExpressionCompiler::Arithmetic(const Expression& expression, const Scope& scope) {
    const Fragment left = Value(*expression.operands[0], scope);
    const Fragment right = Value(*expression.operands[1], scope);
    return Calculated(left, expression.text[0], right, expression.line);
}

Fragment ExpressionCompiler::Case(const Expression& expression, const Scope& scope) {
    std::vector<std::string> conditions;
    std::vector<Fragment> values;
    Type type;
    for (size_t i = 0; i < expression.operands.size(); ++i) {
        const bool last = i + 1 == expression.operands.size();
        if (!last && i % 2 == 0) {
            conditions.push_back(Condition(*expression.operands[i], scope));
            continue;
        }
        values.push_back(Value(*expression.operands[i], scope));
        type = CommonType(type, values.back().type);
    }
    Fragment result{"CASE", type};
    for (size_t i = 0; i < values.size(); ++i) {
        const Fragment value = Converted(values[i], type, expression.line);
        result.sql += i < conditions.size() ? " WHEN " + conditions[i] + " THEN " : " ELSE ";
        result.sql += value.sql;
    }
    result.sql += " END";
    result.fixed = false;
    return result;
}

Fragment ExpressionCompiler::Call(const Expression& expression, const Scope& scope) {
    if (IsAggregate(expression.text)) {
        return Aggregate(expression, scope);
    }
    if (expression.text == "GETDATE" && expression.operands.empty()) {
        return Parameter(PlanParameter::Source::Now, {Type::Kind::DateTime, 0, 0, 0});
    }
    if (expression.text == "SCOPE_IDENTITY" && expression.operands.empty()) {
        return Parameter(PlanParameter::Source::Identity, {Type::Kind::BigInt, 0, 0, 0});
    }
    if (expression.distinct || expression.qualifier == "*") {
        throw SyntaxFailure(expression.text, expression.line);
    }
    std::vector<Fragment> arguments;
    for (const ExpressionPtr& operand : expression.operands) {
        arguments.push_back(Value(*operand, scope));
    }
    return BuiltinCall(expression.text, expression.qualifier, arguments, expression.line);
}

Fragment ExpressionCompiler::Aggregate(const Expression& expression, const Scope& scope) {
    const bool all = expression.qualifier == "*" && expression.text == "COUNT";
    if (m_grouping == nullptr || (!all && expression.operands.size() != 1)) {
        throw Failure(147, "An aggregate may not appear here: " + expression.text + ".",
                      expression.line);
    }
    m_grouping->aggregates = true;
    ++m_grouping->insideAggregate;
    std::optional<Fragment> value;
    if (!all) {
        value = Value(*expression.operands[0], scope);
    }
    --m_grouping->insideAggregate;
    return AggregateCall(expression.text, expression.distinct, value, expression.line);
}

Fragment ExpressionCompiler::Conversion(const Expression& expression, const Scope& scope) {
    const Fragment value = Value(*expression.operands[0], scope);
    if (expression.attempt) {
        return TriedConversion(value, expression.type, expression.line);
    }
    if (expression.style) {
        return ConvertedInStyle(value, expression.type, *expression.style, expression.line);
    }
    return Converted(value, expression.type, expression.line);
}

Fragment ExpressionCompiler::UserCall(const Expression& expression, const Scope& scope) {
    const auto function = m_functions.Function(expression.function, m_module.database);
    const size_t wanted = function->parameters.size();
    if (expression.operands.size() != wanted) {
        throw Failure(expression.operands.size() < wanted ? 313 : 8144,
                      "A wrong number of arguments was supplied for the function " +
                          expression.function.Text() + ".",
                      expression.line);
    }
    std::vector<Fragment> arguments;
    for (size_t i = 0; i < wanted; ++i) {
        arguments.push_back(Converted(Value(*expression.operands[i], scope),
                                      function->variables[i].type, expression.line));
    }
    const std::string name = Identifier(ObjectKey(function->name, function->database));
    Fragment call = CallOf(name.c_str(), arguments, function->returnType);
    call.fixed = false;
    return call;
}

Fragment ExpressionCompiler::Subquery(const Expression& expression, const Scope& scope) {
    const Selected selected = Subselect(*expression.select, scope);
    if (selected.values.size() != 1) {
        throw Failure(116, "Only one expression can be specified in a subquery of this kind.",
                      expression.line);
    }
    return {"(" + selected.sql + ")", selected.values[0].type, false, false};
}

Fragment ExpressionCompiler::ConditionOf(const Expression& expression, const Scope& scope) {
    constexpr Type condition = {Type::Kind::Condition, 0, 0, 0};
    switch (expression.kind) {
        case Kind::And:
            return {Joined(expression, " AND ", scope), condition, false, false};
        case Kind::Or:
            return {Joined(expression, " OR ", scope), condition, false, false};
        case Kind::Not:
            return {"(NOT " + Condition(*expression.operands[0], scope) + ")", condition, false,
                    false};
        case Kind::Comparison: {
            const Fragment left = Value(*expression.operands[0], scope);
            const Fragment right = Value(*expression.operands[1], scope);
            return {Compared(left, expression.text, right, expression.line), condition, false,
                    false};
        }
        case Kind::IsNull:
            return {"(" + Value(*expression.operands[0], scope).sql +
                        (expression.negated ? " IS NOT NULL)" : " IS NULL)"),
                    condition, false, false};
        case Kind::Between:
            return {Between(expression, scope), condition, false, false};
        case Kind::In:
            return {expression.select ? InSelect(expression, scope) : In(expression, scope),
                    condition, false, false};
        case Kind::Like:
            return {Like(expression, scope), condition, false, false};
        default:
            return {"EXISTS (" + Subselect(*expression.select, scope).sql + ")", condition, false,
                    false};
    }
}

std::string ExpressionCompiler::Joined(const Expression& expression, const char* word,
                                       const Scope& scope) {
    return "(" + Condition(*expression.operands[0], scope) + word +
           Condition(*expression.operands[1], scope) + ")";
}

std::string ExpressionCompiler::Between(const Expression& expression, const Scope& scope) {
    const Fragment value = Value(*expression.operands[0], scope);
    const Fragment low = Value(*expression.operands[1], scope);
    const Fragment high = Value(*expression.operands[2], scope);
    return Negated(expression, "(" + Compared(value, ">=", low, expression.line) + " AND " +
                                   Compared(value, "<=", high, expression.line) + ")");
}

std::string ExpressionCompiler::In(const Expression& expression, const Scope& scope) {
    std::vector<Fragment> values;
    Type type;
    for (const ExpressionPtr& operand : expression.operands) {
        values.push_back(Value(*operand, scope));
        type = CommonType(type, values.back().type);
    }
    const auto meeting = [&](const Fragment& value) {
        const bool alike =
            value.type.kind == type.kind || (value.type.IsNumber() && type.IsNumber());
        return alike ? value : Converted(value, type, expression.line);
    };
    values[0] = meeting(values[0]);
    values[0].type.accentless = type.accentless;
    std::string sql = "(" + Collated(values[0]) + " IN (";
    for (size_t i = 1; i < values.size(); ++i) {
        sql += (i > 1 ? ", " : "") + meeting(values[i]).sql;
    }
    return Negated(expression, sql + "))");
}

std::string ExpressionCompiler::InSelect(const Expression& expression, const Scope& scope) {
    Fragment value = Value(*expression.operands[0], scope);
    const Selected selected = Subselect(*expression.select, scope);
    if (selected.values.size() != 1) {
        throw Failure(116, "Only one expression can be specified in a subquery of this kind.",
                      expression.line);
    }
    const Type& inner = selected.values[0].type;
    const bool alike = value.type.kind == inner.kind || (value.type.IsNumber() && inner.IsNumber());
    if (!alike) {
        if (CommonType(value.type, inner).kind != inner.kind) {
            throw OutsideSubset("IN over " + inner.Name() + " for " + value.type.Name(),
                                expression.line);
        }
        value = Converted(value, inner, expression.line);
    }
    value.type.accentless = value.type.accentless || inner.accentless;
    return Negated(expression, "(" + Collated(value) + " IN (" + selected.sql + "))");
}

std::string ExpressionCompiler::Like(const Expression& expression, const Scope& scope) {
    const auto text = [&](const Expression& operand) {
        const Fragment value = Value(operand, scope);
        return value.type.IsText() ? value : Converted(value, Type::Varchar(8000), expression.line);
    };
    const Fragment value = text(*expression.operands[0]);
    const Fragment pattern = text(*expression.operands[1]);
    std::string escape;
    if (expression.operands.size() == 3) {
        escape = ", " + text(*expression.operands[2]).sql;
    }
    const bool accentless = value.type.accentless || pattern.type.accentless;
    const std::string like = (accentless ? "t_like_letters(" : "t_like(") + pattern.sql + ", " +
                             value.sql + escape + ")";
    if (expression.negated) {
        return "(NOT " + like + ")";
    }
    if (!value.column || !pattern.fixed || BeginsWithWildcard(*expression.operands[1])) {
        return like;
    }
    // The beginning of the pattern as a range: a comparison that an index can answer. Accents
    // decide last there, so the range of the letters holds them all.
    const std::string begins = accentless ? "t_letters(" + pattern.sql + ")" : pattern.sql;
    return "(" + value.sql + " BETWEEN t_low(" + begins + escape + ") AND t_high(" + begins +
           escape + ") AND " + like + ")";
}

}  // namespace embedded
