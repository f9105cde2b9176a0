#include "embedded/Value.h"

namespace embedded {

void Value::Read(sqlite3_value* value, const Type& type) {
    if (sqlite3_value_type(value) == SQLITE_NULL) {
        SetNull();
        return;
    }
    switch (type.ResultKind()) {
        case ColumnKind::Integer:
            Set(qint64(sqlite3_value_int64(value)));
            break;
        case ColumnKind::Double:
            Set(sqlite3_value_double(value));
            break;
        default:
            kind = Kind::Text;
            text.assign(reinterpret_cast<const char*>(sqlite3_value_text(value)),
                        size_t(sqlite3_value_bytes(value)));
    }
}

void Value::Bind(sqlite3_stmt* statement, int index) const {
    switch (kind) {
        case Kind::Null:
            sqlite3_bind_null(statement, index);
            break;
        case Kind::Integer:
            sqlite3_bind_int64(statement, index, integer);
            break;
        case Kind::Real:
            sqlite3_bind_double(statement, index, real);
            break;
        case Kind::Text:
            sqlite3_bind_text(statement, index, text.data(), int(text.size()), SQLITE_STATIC);
            break;
    }
}

void Value::Return(sqlite3_context* context) const {
    switch (kind) {
        case Kind::Null:
            sqlite3_result_null(context);
            break;
        case Kind::Integer:
            sqlite3_result_int64(context, integer);
            break;
        case Kind::Real:
            sqlite3_result_double(context, real);
            break;
        case Kind::Text:
            sqlite3_result_text(context, text.data(), int(text.size()), SQLITE_TRANSIENT);
            break;
    }
}

}  // namespace embedded
