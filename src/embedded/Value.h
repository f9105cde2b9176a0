#pragma once

#include <sqlite3.h>

#include <QtGlobal>
#include <string>

#include "embedded/Type.h"

namespace embedded {

/// What a variable holds: as SQLite would store it, a moment as its stored text.
struct Value {
    enum class Kind { Null, Integer, Real, Text };
    Kind kind = Kind::Null;
    qint64 integer = 0;
    double real = 0;
    std::string text;

    void SetNull() { kind = Kind::Null; }
    void Set(qint64 number) {
        kind = Kind::Integer;
        integer = number;
    }
    void Set(double number) {
        kind = Kind::Real;
        real = number;
    }
    /// Takes the value that SQLite hands over, as a value of that type.
    void Read(sqlite3_value* value, const Type& type);
    /// The text must stay as it is until the statement is reset.
    void Bind(sqlite3_stmt* statement, int index) const;
    /// As the result of a function.
    void Return(sqlite3_context* context) const;
};

}  // namespace embedded
