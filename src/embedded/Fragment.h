#pragma once

#include <string>
#include <vector>

#include "embedded/Type.h"

namespace embedded {

/// A value as a piece of a SQLite statement, with its T-SQL type.
struct Fragment {
    std::string sql;
    Type type;
    /// A column and nothing around it: an index on it can serve, and its collation holds.
    bool column = false;
    /// Holds no column: the same for every row.
    bool fixed = true;
};

/// "name(a, b)" of that type; fixed where all arguments are.
Fragment CallOf(const char* name, const std::vector<Fragment>& arguments, const Type& type);

/// The value in another type, the way an assignment converts it: decimals rounded, texts cut at
/// the length. Throws Failure for conversions that the subset leaves out.
Fragment Converted(const Fragment& value, const Type& target, int line);
/// CONVERT with a style.
Fragment ConvertedInStyle(const Fragment& value, const Type& target, int style, int line);
/// TRY_CONVERT: null where the conversion fails.
Fragment TriedConversion(const Fragment& value, const Type& target, int line);
/// The value for a column, which refuses texts that are too long; `column` is "table.column".
Fragment ForColumn(const Fragment& value, const Type& target, const std::string& column, int line);

/// A condition over two values of any types.
std::string Compared(const Fragment& left, const std::string& operation, const Fragment& right,
                     int line);
/// left + - * / % right.
Fragment Calculated(const Fragment& left, char operation, const Fragment& right, int line);

/// The value with the collation of texts, for grouping.
std::string Collated(const Fragment& value);
/// The same for ordering, where accents always count.
std::string Ordered(const Fragment& value);

}  // namespace embedded
