#pragma once

#include <climits>
#include <string>

#include "embedded/RowSink.h"

namespace embedded {

/// The type of a column, variable or expression. Kinds stand in order of precedence: where two
/// meet, the lower one is converted to the higher one.
struct Type {
    enum class Kind {
        Null,
        Varchar,
        Bit,
        Int,
        BigInt,
        Money,
        Decimal,
        Float,
        DateTime,
        /// The outcome of a comparison; no column or variable holds one.
        Condition
    };
    static constexpr int Max = INT_MAX;

    Kind kind = Kind::Null;
    /// Characters of a varchar; Max for varchar(max).
    int length = 0;
    /// Digits of a decimal; of a whole-number literal its own digits, else 0.
    int precision = 0;
    int scale = 0;
    /// Of a varchar: compared without accents, as its column was declared.
    bool accentless = false;

    bool operator==(const Type& other) const = default;
    bool IsText() const { return kind == Kind::Varchar; }
    bool IsWhole() const { return kind >= Kind::Bit && kind <= Kind::BigInt; }
    bool IsNumber() const { return kind >= Kind::Bit && kind <= Kind::Float; }

    static Type Varchar(int length);
    static Type Decimal(int precision, int scale);
    /// This number as a decimal: an int is decimal(10,0), money decimal(19,4).
    Type AsDecimal() const;
    /// As it is declared: "varchar(20)", with the collation of a column that has one.
    std::string Name() const;
    /// Reads what Name() writes.
    static Type FromName(const std::string& name);
    ColumnKind ResultKind() const;
    /// The SQLite type of a column that stores it.
    const char* StoredAs() const;
};

/// The type in which two values meet (comparison, CASE, UNION ALL).
Type CommonType(const Type& left, const Type& right);

/// The type of left `operation` right, for + - * / % of numbers.
Type ArithmeticType(char operation, const Type& left, const Type& right);

}  // namespace embedded
