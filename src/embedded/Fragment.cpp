#include "embedded/Fragment.h"

#include <algorithm>

#include "embedded/Failure.h"
#include "embedded/Text.h"

namespace embedded {

using Kind = Type::Kind;

namespace {

Fragment Number(int number) {
    return {std::to_string(number), {Kind::Int, 0, 0, 0}};
}

Fragment Retyped(Fragment value, const Type& type) {
    value.type = type;
    return value;
}

[[noreturn]] void RefuseConversion(const Type& from, const Type& to, int line) {
    throw Failure(257,
                  "Implicit conversion from data type " + from.Name() + " to " + to.Name() +
                      " is not allowed.",
                  line);
}

int TextLength(const Type& type) {
    switch (type.kind) {
        case Kind::Varchar:
            return type.length;
        case Kind::Bit:
            return 1;
        case Kind::Int:
            return type.precision > 0 ? type.precision : 11;
        case Kind::BigInt:
            return 20;
        case Kind::Decimal:
            return type.precision + 3;
        default:
            return 30;
    }
}

Fragment TextOf(const Fragment& value) {
    const Type type = Type::Varchar(TextLength(value.type));
    switch (value.type.kind) {
        case Kind::Varchar:
            return value;
        case Kind::Money:
            return CallOf("t_text_money", {value}, type);
        case Kind::Decimal:
            return CallOf("t_text_decimal", {value, Number(value.type.scale)}, type);
        case Kind::Float:
            return CallOf("t_text_float", {value}, type);
        case Kind::DateTime:
            return CallOf("t_text_datetime", {value, Number(0)}, type);
        default:
            return {"CAST(" + value.sql + " AS TEXT)", type, false, value.fixed};
    }
}

Fragment CutTo(const Fragment& text, const Type& target) {
    if (target.length == Type::Max || text.type.length <= target.length) {
        return Retyped(text, target);
    }
    return CallOf("t_cut", {text, Number(target.length)}, target);
}

Fragment ToWhole(const Fragment& value, const Type& target) {
    const char* name = target.kind == Kind::Bit      ? "t_bit"
                       : target.kind == Kind::BigInt ? "t_bigint"
                                                     : "t_int";
    if (value.type.IsWhole() && value.type.kind <= target.kind) {
        return Retyped(value, target);
    }
    if (value.type.kind == Kind::Money && target.kind != Kind::Bit) {
        const Fragment whole = CallOf("t_int_round", {value}, target);
        return target.kind == Kind::Int
                   ? whole
                   : CallOf(name, {CallOf("t_round", {value, Number(0)}, value.type)}, target);
    }
    return CallOf(name, {value}, target);
}

Fragment ToDecimal(const Fragment& value, const Type& target) {
    if (value.type.IsWhole() || value.type.kind == Kind::Decimal) {
        const Type from = value.type.AsDecimal();
        if (from.scale <= target.scale &&
            from.precision - from.scale <= target.precision - target.scale) {
            return Retyped(value, target);
        }
    }
    return CallOf("t_decimal", {value, Number(target.precision), Number(target.scale)}, target);
}

Fragment ToDateTime(const Fragment& value, const Type& target, int line) {
    if (value.type.IsText()) {
        return CallOf("t_datetime", {value}, target);
    }
    if (!value.type.IsWhole()) {
        RefuseConversion(value.type, target, line);
    }
    // A whole number counts days from 1900.
    return {"t_dateadd('day', " + value.sql + ", '1900-01-01 00:00:00.000')", target, false,
            value.fixed};
}

// What the server reads in these styles is what the default reads, month before day.
bool ReadsAsDefault(int style) {
    static const int styles[] = {0, 20, 21, 100, 101, 110, 111, 112, 120, 121, 126};
    return std::find(std::begin(styles), std::end(styles), style) != std::end(styles);
}

}  // namespace

Fragment CallOf(const char* name, const std::vector<Fragment>& arguments, const Type& type) {
    Fragment call{std::string(name) + "(", type};
    for (size_t i = 0; i < arguments.size(); ++i) {
        call.sql += (i > 0 ? ", " : "") + arguments[i].sql;
        call.fixed = call.fixed && arguments[i].fixed;
    }
    call.sql += ")";
    return call;
}

Fragment Converted(const Fragment& value, const Type& target, int line) {
    if (value.type.kind == Kind::Null || value.type == target) {
        return Retyped(value, target);
    }
    if (value.type.kind == Kind::DateTime && target.IsNumber()) {
        RefuseConversion(value.type, target, line);
    }
    switch (target.kind) {
        case Kind::Varchar:
            return CutTo(TextOf(value), target);
        case Kind::Bit:
        case Kind::Int:
        case Kind::BigInt:
            return ToWhole(value, target);
        case Kind::Money:
            return value.type.IsWhole() ? Retyped(value, target)
                                        : CallOf("t_money", {value}, target);
        case Kind::Decimal:
            return ToDecimal(value, target);
        case Kind::Float:
            return value.type.IsText() ? CallOf("t_float", {value}, target)
                                       : Retyped(value, target);
        case Kind::DateTime:
            return ToDateTime(value, target, line);
        default:
            return value;
    }
}

Fragment ConvertedInStyle(const Fragment& value, const Type& target, int style, int line) {
    if (target.kind == Kind::Varchar && value.type.kind == Kind::DateTime) {
        return CutTo(CallOf("t_text_datetime", {value, Number(style)}, Type::Varchar(30)), target);
    }
    if (target.kind == Kind::Varchar && value.type.kind == Kind::Money) {
        return CutTo(CallOf("t_text_money", {value, Number(style)}, Type::Varchar(30)), target);
    }
    const bool plain = style == 0 || (target.kind == Kind::DateTime && ReadsAsDefault(style));
    if (!plain && value.type.kind != Kind::Null) {
        throw OutsideSubset("CONVERT style " + std::to_string(style), line);
    }
    return Converted(value, target, line);
}

Fragment TriedConversion(const Fragment& value, const Type& target, int line) {
    if (!value.type.IsText() || target.kind == Kind::Varchar) {
        return Converted(value, target, line);
    }
    const std::string name = target.Name();
    std::vector<Fragment> arguments = {{Literal(name.substr(0, name.find('('))), {}}, value};
    if (target.kind == Kind::Decimal) {
        arguments.push_back(Number(target.precision));
        arguments.push_back(Number(target.scale));
    }
    return CallOf("t_try", arguments, target);
}

Fragment ForColumn(const Fragment& value, const Type& target, const std::string& column, int line) {
    if (target.kind != Kind::Varchar || value.type.kind == Kind::Null) {
        return Converted(value, target, line);
    }
    const Fragment text = TextOf(value);
    if (target.length == Type::Max || text.type.length <= target.length) {
        return text;
    }
    return CallOf("t_fit", {text, Number(target.length), {Literal(column), {}}}, target);
}

namespace {

// An index stands in the order with accents, where the texts of the same letters are neighbours.
std::string ComparedByLetters(const Fragment& left, const std::string& operation,
                              const Fragment& right) {
    if (operation == "=" && left.fixed && right.column) {
        return ComparedByLetters(right, operation, left);
    }
    const std::string compared =
        "(" + left.sql + " COLLATE LETTERS " + operation + " " + right.sql + ")";
    if (operation != "=" || !left.column || !right.fixed) {
        return compared;
    }
    const std::string letters = "t_letters(" + right.sql + ")";
    return "(" + left.sql + " BETWEEN " + letters + " AND " + letters + " || char(1) AND " +
           compared + ")";
}

}  // namespace

std::string Compared(const Fragment& left, const std::string& operation, const Fragment& right,
                     int line) {
    const Type common = CommonType(left.type, right.type);
    const auto meeting = [&](const Fragment& value) {
        // Numbers compare by value whatever their types; texts without being cut.
        const bool alike =
            value.type.kind == common.kind || (value.type.IsNumber() && common.IsNumber());
        return alike ? value : Converted(value, common, line);
    };
    const Fragment first = meeting(left);
    const Fragment second = meeting(right);
    if (common.accentless) {
        return ComparedByLetters(first, operation, second);
    }
    const bool collated = common.IsText() && !first.column && !second.column;
    return "(" + (collated ? first.sql + " COLLATE TEXTS" : first.sql) + " " + operation + " " +
           second.sql + ")";
}

Fragment Calculated(const Fragment& left, char operation, const Fragment& right, int line) {
    const Type common = CommonType(left.type, right.type);
    if (common.kind == Kind::DateTime) {
        throw OutsideSubset("arithmetic on datetime, use DATEADD", line);
    }
    const bool fixed = left.fixed && right.fixed;
    if (common.IsText()) {
        if (operation != '+') {
            throw Failure(8117, "Operand data type varchar is invalid for this operator.", line);
        }
        const auto wide = left.type.length == Type::Max || right.type.length == Type::Max;
        Type type = common;
        type.length = wide ? Type::Max : std::min(8000, left.type.length + right.type.length);
        return {"(" + left.sql + " || " + right.sql + ")", type, false, fixed};
    }
    const auto meeting = [&](const Fragment& value) {
        return value.type.IsText() ? Converted(value, common, line) : value;
    };
    const Fragment first = meeting(left);
    const Fragment second = meeting(right);
    const Type type = ArithmeticType(operation, first.type, second.type);
    if (operation == '/' || operation == '%') {
        const char* name = operation == '%' ? "t_mod" : type.IsWhole() ? "t_idiv" : "t_fdiv";
        const Fragment quotient = CallOf(name, {first, second}, {Kind::Float, 0, 0, 0});
        return type.IsWhole() || type.kind == Kind::Float ? Retyped(quotient, type)
                                                          : Converted(quotient, type, line);
    }
    Fragment result{"(" + first.sql + " " + operation + " " + second.sql + ")", type, false, fixed};
    if (type.kind != Kind::Float) {
        result.type = {Kind::Float, 0, 0, 0};
        result = Converted(result, type, line);
    }
    return result;
}

std::string Collated(const Fragment& value) {
    return value.type.accentless ? value.sql + " COLLATE LETTERS" : Ordered(value);
}

std::string Ordered(const Fragment& value) {
    return value.type.IsText() && !value.column ? value.sql + " COLLATE TEXTS" : value.sql;
}

}  // namespace embedded
