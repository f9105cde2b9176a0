#pragma once

#include <sqlite3.h>

#include <new>
#include <string>
#include <string_view>

#include "embedded/Failure.h"

namespace embedded {

/// One call of an own function by SQLite: its arguments and the place of its result.
class FunctionCall final {
public:
    FunctionCall(sqlite3_context* context, int count, sqlite3_value** values)
        : m_context(context), m_count(count), m_values(values) {}

    int Count() const { return m_count; }
    /// SQLITE_NULL, SQLITE_INTEGER, SQLITE_FLOAT or SQLITE_TEXT.
    int Kind(int i) const { return sqlite3_value_type(m_values[i]); }
    bool IsNull(int i) const { return Kind(i) == SQLITE_NULL; }
    bool AnyNull() const {
        for (int i = 0; i < m_count; ++i) {
            if (IsNull(i))
                return true;
        }
        return false;
    }
    /// UTF-8, valid until another form of the same argument is asked for.
    std::string_view Text(int i) const {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(m_values[i]));
        return text == nullptr ? std::string_view()
                               : std::string_view(text, size_t(sqlite3_value_bytes(m_values[i])));
    }
    sqlite3_int64 Integer(int i) const { return sqlite3_value_int64(m_values[i]); }
    double Number(int i) const { return sqlite3_value_double(m_values[i]); }

    /// The call without its first argument.
    FunctionCall Rest() const { return {m_context, m_count - 1, m_values + 1}; }

    void ReturnNull() { sqlite3_result_null(m_context); }
    void Return(sqlite3_int64 value) { sqlite3_result_int64(m_context, value); }
    void ReturnReal(double value) { sqlite3_result_double(m_context, value); }
    void Return(std::string_view text) {
        // An empty text is not null, even where its view points nowhere.
        sqlite3_result_text64(m_context, text.empty() ? "" : text.data(), text.size(),
                              SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    void ReturnArgument(int i) { sqlite3_result_value(m_context, m_values[i]); }
    /// The error leaves SQLite as "#<number>:<text>".
    void ReturnFailure(const Failure& failure) {
        const std::string text = "#" + std::to_string(failure.Number()) + ":" + failure.Text();
        sqlite3_result_error(m_context, text.data(), int(text.size()));
    }
    void ReturnOutOfMemory() { sqlite3_result_error_nomem(m_context); }

private:
    sqlite3_context* m_context;
    int m_count;
    sqlite3_value** m_values;
};

using Function = void (*)(FunctionCall& call);

enum class Nulls { GiveNull, AreSeen };
enum class Answers { AreConstant, MayChange };

/// Runs a function for SQLite, which knows no exceptions.
template <Function function, Nulls nulls>
void RunFunction(sqlite3_context* context, int count, sqlite3_value** values) {
    FunctionCall call(context, count, values);
    try {
        if (nulls == Nulls::GiveNull && call.AnyNull())
            call.ReturnNull();
        else
            function(call);
    } catch (const Failure& failure) {
        call.ReturnFailure(failure);
    } catch (const std::bad_alloc&) {
        call.ReturnOutOfMemory();
    }
}

/// Makes a function known under a name; one name may have several counts of arguments.
template <Function function, Nulls nulls = Nulls::GiveNull>
void RegisterFunction(sqlite3* database, const char* name, int count,
                      Answers answers = Answers::AreConstant) {
    const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS |
                      (answers == Answers::AreConstant ? SQLITE_DETERMINISTIC : 0);
    if (sqlite3_create_function_v2(database, name, count, flags, nullptr,
                                   &RunFunction<function, nulls>, nullptr, nullptr,
                                   nullptr) != SQLITE_OK)
        throw std::bad_alloc();
}

}  // namespace embedded
