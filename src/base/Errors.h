#pragma once

#include <QString>
#include <exception>

namespace base {

/// Behind the description of a command that wrote nothing.
inline const QString kNothingSaved = QStringLiteral(" Nothing was saved.");

/// What is broken and cannot be answered by a value: shown to the user as a number and a
/// description, and the action ends.
class RuntimeError : public std::exception {
public:
    RuntimeError(int number, QString description);

    int Number() const { return m_number; }
    const QString& Description() const { return m_description; }
    /// The description as UTF-8; belongs to this object.
    const char* what() const noexcept override { return m_utf8.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_utf8;
};

/// A command that the server, or the road to it, refused.
class DatabaseError final : public RuntimeError {
public:
    DatabaseError(int number, QString description, QString command = {});

    /// The command text as it was sent; empty where no command was being sent.
    const QString& Command() const { return m_command; }

private:
    QString m_command;
};

}  // namespace base
