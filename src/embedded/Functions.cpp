#include "embedded/Functions.h"

#include "base/Collation.h"
#include "embedded/Conversions.h"
#include "embedded/FunctionCall.h"

namespace embedded {

namespace {

template <base::Accents accents>
int CompareForSqlite(void*, int leftSize, const void* left, int rightSize, const void* right) {
    return base::CompareTexts(std::string_view(static_cast<const char*>(left), size_t(leftSize)),
                              std::string_view(static_cast<const char*>(right), size_t(rightSize)),
                              accents);
}

template <base::Accents accents>
void RegisterCollation(sqlite3* database, const char* name) {
    if (sqlite3_create_collation_v2(database, name, SQLITE_UTF8, nullptr,
                                    &CompareForSqlite<accents>, nullptr) != SQLITE_OK)
        throw std::bad_alloc();
}

void Throw(FunctionCall& call) {
    throw Failure(int(call.Integer(0)), std::string(call.Text(1)));
}

void Try(FunctionCall& call) {
    struct Conversion {
        std::string_view Kind;
        Function Convert;
        int Arguments;
    };
    static constexpr Conversion kConversions[] = {
        {"int", &ToInt, 2},         {"int_round", &ToIntRounded, 2}, {"bigint", &ToBigInt, 2},
        {"bit", &ToBit, 2},         {"money", &ToMoney, 2},          {"float", &ToFloat, 2},
        {"decimal", &ToDecimal, 4}, {"datetime", &ToDateTime, 2},
    };
    const std::string_view kind = call.Text(0);
    for (const Conversion& conversion : kConversions) {
        if (conversion.Kind != kind || conversion.Arguments != call.Count())
            continue;
        FunctionCall rest = call.Rest();
        try {
            conversion.Convert(rest);
        } catch (const Failure&) {
            call.ReturnNull();
        }
        return;
    }
    throw Failure(243, "Type " + std::string(kind) + " is not a defined system type.");
}

}  // namespace

void RegisterFunctions(sqlite3* database) {
    RegisterCollation<base::Accents::Count>(database, "TEXTS");
    RegisterCollation<base::Accents::Ignored>(database, "LETTERS");
    RegisterTextFunctions(database);
    RegisterNumberFunctions(database);
    RegisterDateFunctions(database);
    // A constant is computed ahead; a refusal must wait until its statement comes to it.
    RegisterFunction<&Throw, Nulls::AreSeen>(database, "t_throw", 2, Answers::MayChange);
    RegisterFunction<&Try>(database, "t_try", 2);
    RegisterFunction<&Try>(database, "t_try", 4);
}

}  // namespace embedded
