#include "embedded/Type.h"

#include <algorithm>
#include <cstdlib>

namespace embedded {

namespace {

constexpr int MostDigits = 38;
constexpr const char* Accentless = " COLLATE Latin1_General_CI_AI";

/// A result of more than 38 digits keeps its whole part and gives up decimals, down to six.
Type Fitted(int precision, int scale) {
    if (precision > MostDigits) {
        const int whole = precision - scale;
        scale = std::max(std::min(scale, 6), MostDigits - whole);
        precision = MostDigits;
    }
    return Type::Decimal(precision, scale);
}

}  // namespace

Type Type::Varchar(int length) {
    return {Kind::Varchar, length, 0, 0};
}

Type Type::Decimal(int precision, int scale) {
    return {Kind::Decimal, 0, precision, scale};
}

Type Type::AsDecimal() const {
    switch (kind) {
        case Kind::Decimal:
            return *this;
        case Kind::Money:
            return Decimal(19, 4);
        case Kind::BigInt:
            return Decimal(precision > 0 ? precision : 19, 0);
        case Kind::Bit:
            return Decimal(1, 0);
        default:
            return Decimal(precision > 0 ? precision : 10, 0);
    }
}

std::string Type::Name() const {
    switch (kind) {
        case Kind::Null:
        case Kind::Int:
            return "int";
        case Kind::Varchar:
            return "varchar(" + (length == Max ? "max" : std::to_string(length)) + ")" +
                   (accentless ? Accentless : "");
        case Kind::Bit:
            return "bit";
        case Kind::BigInt:
            return "bigint";
        case Kind::Money:
            return "money";
        case Kind::Decimal:
            return "decimal(" + std::to_string(precision) + "," + std::to_string(scale) + ")";
        case Kind::Float:
            return "float";
        case Kind::DateTime:
            return "datetime";
        case Kind::Condition:
            return "condition";
    }
    return {};
}

Type Type::FromName(const std::string& name) {
    static const std::pair<const char*, Kind> plain[] = {
        {"bit", Kind::Bit},     {"int", Kind::Int},     {"bigint", Kind::BigInt},
        {"money", Kind::Money}, {"float", Kind::Float}, {"datetime", Kind::DateTime}};
    for (const auto& [known, kind] : plain) {
        if (name == known) {
            return {kind, 0, 0, 0};
        }
    }
    const char* digits = name.c_str() + name.find('(') + 1;
    if (name.compare(0, 8, "varchar(") == 0) {
        Type text = Varchar(*digits == 'm' ? Max : std::atoi(digits));
        text.accentless = name.find(Accentless) != std::string::npos;
        return text;
    }
    return Decimal(std::atoi(digits), std::atoi(name.c_str() + name.find(',') + 1));
}

ColumnKind Type::ResultKind() const {
    switch (kind) {
        case Kind::Varchar:
            return ColumnKind::Text;
        case Kind::DateTime:
            return ColumnKind::DateTime;
        case Kind::Money:
        case Kind::Decimal:
        case Kind::Float:
            return ColumnKind::Double;
        default:
            return ColumnKind::Integer;
    }
}

const char* Type::StoredAs() const {
    switch (ResultKind()) {
        case ColumnKind::Text:
            return "TEXT COLLATE TEXTS";
        case ColumnKind::DateTime:
            return "TEXT";
        case ColumnKind::Double:
            return "REAL";
        case ColumnKind::Integer:
            break;
    }
    return "INTEGER";
}

Type CommonType(const Type& left, const Type& right) {
    if (left.kind != right.kind) {
        const Type& higher = left.kind > right.kind ? left : right;
        const Type& lower = left.kind > right.kind ? right : left;
        if (higher.kind == Type::Kind::Decimal && lower.IsNumber()) {
            return CommonType(higher, lower.AsDecimal());
        }
        Type common = higher;
        if (common.IsWhole()) {
            common.precision = 0;
        }
        return common;
    }
    Type common = left;
    common.length = std::max(left.length, right.length);
    common.accentless = left.accentless || right.accentless;
    common.scale = std::max(left.scale, right.scale);
    if (left.kind == Type::Kind::Decimal) {
        const int whole = std::max(left.precision - left.scale, right.precision - right.scale);
        common.precision = std::min(MostDigits, whole + common.scale);
    } else {
        common.precision = left.precision == right.precision ? left.precision : 0;
    }
    return common;
}

Type ArithmeticType(char operation, const Type& left, const Type& right) {
    Type common = CommonType(left, right);
    if (common.kind == Type::Kind::Bit || common.kind == Type::Kind::Null) {
        common.kind = Type::Kind::Int;
    }
    if (common.kind != Type::Kind::Decimal) {
        common.precision = 0;
        return common;
    }
    const Type a = left.AsDecimal();
    const Type b = right.AsDecimal();
    switch (operation) {
        case '*':
            return Fitted(a.precision + b.precision + 1, a.scale + b.scale);
        case '/': {
            const int scale = std::max(6, a.scale + b.precision + 1);
            return Fitted(a.precision - a.scale + b.scale + scale, scale);
        }
        case '%':
            return Fitted(
                std::min(a.precision - a.scale, b.precision - b.scale) + std::max(a.scale, b.scale),
                std::max(a.scale, b.scale));
        default:
            return Fitted(common.precision + 1, common.scale);
    }
}

}  // namespace embedded
