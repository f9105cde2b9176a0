#include "base/Errors.h"

#include <utility>

namespace base {

RuntimeError::RuntimeError(int number, QString description)
    : m_number(number), m_description(std::move(description)), m_utf8(m_description.toUtf8()) {}

DatabaseError::DatabaseError(int number, QString description, QString command)
    : RuntimeError(number, std::move(description)), m_command(std::move(command)) {}

}  // namespace base
