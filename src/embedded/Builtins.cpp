#include "embedded/Builtins.h"

#include <algorithm>
#include <map>

#include "embedded/Failure.h"
#include "embedded/Text.h"

namespace embedded {

using Kind = Type::Kind;

namespace {

constexpr Type Int = {Kind::Int, 0, 0, 0};
constexpr Type Moment = {Kind::DateTime, 0, 0, 0};

/// A call being compiled: its arguments and where it stands.
struct Call {
    const std::string& name;
    const std::string& part;
    const std::vector<Fragment>& arguments;
    int line;

    Fragment Text(size_t index) const {
        return arguments[index].type.IsText()
                   ? arguments[index]
                   : Converted(arguments[index], Type::Varchar(8000), line);
    }
    Fragment Whole(size_t index) const { return Converted(arguments[index], Int, line); }
    Fragment Date(size_t index) const { return Converted(arguments[index], Moment, line); }
};

// A text argument stays as long as it was; other values as texts take the widest form.
Type TextType(const Fragment& text) {
    return text.type.IsText() ? text.type : Type::Varchar(8000);
}

Fragment IsNull(const Call& call) {
    const Fragment& first = call.arguments[0];
    const Type type = first.type.kind == Kind::Null ? call.arguments[1].type : first.type;
    const Fragment second = Converted(call.arguments[1], type, call.line);
    return CallOf("ifnull", {first, second}, type);
}

Fragment Coalesce(const Call& call) {
    Type type = call.arguments[0].type;
    for (const Fragment& argument : call.arguments) {
        type = CommonType(type, argument.type);
    }
    std::vector<Fragment> converted;
    for (const Fragment& argument : call.arguments) {
        converted.push_back(Converted(argument, type, call.line));
    }
    return CallOf("coalesce", converted, type);
}

Fragment NullIf(const Call& call) {
    const Fragment& first = call.arguments[0];
    const Fragment& second = call.arguments[1];
    return {"CASE WHEN " + Compared(first, "=", second, call.line) + " THEN NULL ELSE " +
                first.sql + " END",
            first.type, false, first.fixed && second.fixed};
}

Fragment Concat(const Call& call) {
    Fragment result{"(", Type::Varchar(0)};
    for (size_t i = 0; i < call.arguments.size(); ++i) {
        const Fragment text = call.Text(i);
        result.sql += (i > 0 ? " || " : "") + ("ifnull(" + text.sql + ", '')");
        result.fixed = result.fixed && text.fixed;
        result.type.accentless = result.type.accentless || text.type.accentless;
        const bool wide = text.type.length == Type::Max || result.type.length == Type::Max;
        result.type.length =
            wide ? Type::Max : std::min(8000, result.type.length + text.type.length);
    }
    result.sql += ")";
    return result;
}

Fragment Len(const Call& call) {
    return CallOf("t_len", {call.Text(0)}, Int);
}

Fragment TextToText(const Call& call) {
    static const std::map<std::string, const char*> names = {
        {"LTRIM", "t_ltrim"}, {"RTRIM", "t_rtrim"}, {"UPPER", "t_upper"}, {"LOWER", "t_lower"}};
    const Fragment text = call.Text(0);
    return CallOf(names.at(call.name), {text}, TextType(text));
}

Fragment Side(const Call& call) {
    const Fragment text = call.Text(0);
    return CallOf(call.name == "LEFT" ? "t_left" : "t_right", {text, call.Whole(1)},
                  TextType(text));
}

Fragment Substring(const Call& call) {
    const Fragment text = call.Text(0);
    return CallOf("t_substring", {text, call.Whole(1), call.Whole(2)}, TextType(text));
}

Fragment Replace(const Call& call) {
    Type type = TextType(call.Text(0));
    type.length = 8000;
    return CallOf("t_replace", {call.Text(0), call.Text(1), call.Text(2)}, type);
}

Fragment CharIndex(const Call& call) {
    std::vector<Fragment> arguments = {call.Text(0), call.Text(1)};
    if (call.arguments.size() == 3) {
        arguments.push_back(call.Whole(2));
    }
    return CallOf("t_charindex", arguments, Int);
}

Fragment NumberOf(const Call& call) {
    const Fragment& value = call.arguments[0];
    if (value.type.kind == Kind::DateTime) {
        throw Failure(8116, "Argument data type datetime is invalid for " + call.name + ".",
                      call.line);
    }
    return value.type.IsText() ? Converted(value, {Kind::Float, 0, 0, 0}, call.line) : value;
}

Fragment Round(const Call& call) {
    const Fragment value = NumberOf(call);
    return CallOf("t_round", {value, call.Whole(1)}, value.type);
}

Fragment Abs(const Call& call) {
    const Fragment value = NumberOf(call);
    return CallOf("abs", {value}, value.type);
}

Fragment DatePart(const Call& call, const std::string& name) {
    static const std::map<std::string, const char*> parts = {{"YEAR", "year"},
                                                             {"YY", "year"},
                                                             {"YYYY", "year"},
                                                             {"QUARTER", "quarter"},
                                                             {"QQ", "quarter"},
                                                             {"MONTH", "month"},
                                                             {"MM", "month"},
                                                             {"DAY", "day"},
                                                             {"DD", "day"},
                                                             {"DAYOFYEAR", "dayofyear"},
                                                             {"WEEK", "week"},
                                                             {"WK", "week"},
                                                             {"WEEKDAY", "weekday"},
                                                             {"DW", "weekday"},
                                                             {"HOUR", "hour"},
                                                             {"HH", "hour"},
                                                             {"MINUTE", "minute"},
                                                             {"MI", "minute"},
                                                             {"SECOND", "second"},
                                                             {"SS", "second"},
                                                             {"MILLISECOND", "millisecond"},
                                                             {"MS", "millisecond"}};
    const auto found = parts.find(name);
    if (found == parts.end()) {
        throw Failure(155, "'" + name + "' is not a recognized " + call.name + " option.",
                      call.line);
    }
    return {Literal(found->second), Type::Varchar(11)};
}

Fragment DateAdd(const Call& call) {
    return CallOf("t_dateadd", {DatePart(call, call.part), call.Whole(0), call.Date(1)}, Moment);
}

Fragment DateDiff(const Call& call) {
    return CallOf("t_datediff", {DatePart(call, call.part), call.Date(0), call.Date(1)}, Int);
}

Fragment PartOf(const Call& call) {
    const std::string& part = call.name == "DATEPART" ? call.part : call.name;
    return CallOf("t_datepart", {DatePart(call, part), call.Date(0)}, Int);
}

struct Builtin {
    size_t fewest;
    size_t most;
    Fragment (*compile)(const Call& call);
};

const std::map<std::string, Builtin>& KnownBuiltins() {
    static const std::map<std::string, Builtin> known = {{"ISNULL", {2, 2, IsNull}},
                                                         {"NULLIF", {2, 2, NullIf}},
                                                         {"COALESCE", {2, 100, Coalesce}},
                                                         {"CONCAT", {2, 100, Concat}},
                                                         {"LEN", {1, 1, Len}},
                                                         {"LTRIM", {1, 1, TextToText}},
                                                         {"RTRIM", {1, 1, TextToText}},
                                                         {"UPPER", {1, 1, TextToText}},
                                                         {"LOWER", {1, 1, TextToText}},
                                                         {"LEFT", {2, 2, Side}},
                                                         {"RIGHT", {2, 2, Side}},
                                                         {"SUBSTRING", {3, 3, Substring}},
                                                         {"REPLACE", {3, 3, Replace}},
                                                         {"CHARINDEX", {2, 3, CharIndex}},
                                                         {"ROUND", {2, 2, Round}},
                                                         {"ABS", {1, 1, Abs}},
                                                         {"DATEADD", {2, 2, DateAdd}},
                                                         {"DATEDIFF", {2, 2, DateDiff}},
                                                         {"DATEPART", {1, 1, PartOf}},
                                                         {"YEAR", {1, 1, PartOf}},
                                                         {"MONTH", {1, 1, PartOf}},
                                                         {"DAY", {1, 1, PartOf}}};
    return known;
}

Type SumType(const std::string& name, const Type& type) {
    switch (type.kind) {
        case Kind::Decimal:
            return Type::Decimal(38, name == "AVG" ? std::max(6, type.scale) : type.scale);
        case Kind::Int:
        case Kind::BigInt:
            return {type.kind, 0, 0, 0};
        default:
            return type;
    }
}

}  // namespace

bool IsAggregate(const std::string& name) {
    return name == "COUNT" || name == "SUM" || name == "MIN" || name == "MAX" || name == "AVG";
}

Fragment AggregateCall(const std::string& name, bool distinct, const std::optional<Fragment>& value,
                       int line) {
    if (!value) {
        return {"count(*)", Int, false, false};
    }
    const bool extreme = name == "MIN" || name == "MAX";
    const std::string argument =
        (distinct ? "DISTINCT " : "") + (extreme ? Ordered(*value) : Collated(*value));
    if (name == "COUNT") {
        return {"count(" + argument + ")", Int, false, false};
    }
    if (extreme) {
        return {(name == "MIN" ? "min(" : "max(") + argument + ")", value->type, false, false};
    }
    const Type::Kind kind = value->type.kind;
    if (!value->type.IsNumber() || kind == Kind::Bit) {
        throw Failure(
            8117,
            "Operand data type " + value->type.Name() + " is invalid for " + name + " operator.",
            line);
    }
    const Type type = SumType(name, value->type);
    if (name == "AVG" && type.IsWhole()) {
        return {"t_idiv(sum(" + argument + "), count(" + argument + "))", type, false, false};
    }
    const Fragment raw{
        (name == "SUM" ? "sum(" : "avg(") + argument + ")", {Kind::Float, 0, 0, 0}, false, false};
    return kind == Kind::Float ? raw : Converted(raw, type, line);
}

Fragment BuiltinCall(const std::string& name, const std::string& part,
                     const std::vector<Fragment>& arguments, int line) {
    const auto found = KnownBuiltins().find(name);
    if (found == KnownBuiltins().end()) {
        throw Failure(195, "'" + name + "' is not a recognized built-in function name.", line);
    }
    const Builtin& builtin = found->second;
    if (arguments.size() < builtin.fewest || arguments.size() > builtin.most) {
        throw Failure(174,
                      "The " + name + " function requires " + std::to_string(builtin.fewest) +
                          " argument(s).",
                      line);
    }
    return builtin.compile({name, part, arguments, line});
}

}  // namespace embedded
