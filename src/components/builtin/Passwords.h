#pragma once

#include <QString>

/// Password hashes (Argon2id) of the embedded hospital's users.
namespace components::Passwords {

/// A new salted hash as text, at most 128 characters. Throws base::RuntimeError where the machine
/// has not the memory for it.
QString Hash(const QString& password);

/// Whether the password belongs to the hash. An empty or foreign hash belongs to no password, and
/// takes as long as a real one to say so: who waits cannot tell an unknown user.
bool Matches(const QString& password, const QString& hash);

}  // namespace components::Passwords
