#pragma once

#include <QString>
#include <vector>

/// Connection strings: "Key=value;Key={va;lue}", where a closing brace inside braces is doubled.
namespace db {

struct ConnectionPart {
    QString Key;
    /// Without the braces.
    QString Value;
    /// As it stands in the string, "Key=value".
    QString Written;
};

std::vector<ConnectionPart> ConnectionParts(const QString& connectionString);

/// The value of a key, whatever its case; empty where it is not there.
QString ConnectionValue(const QString& connectionString, const QString& key);

struct LogOn {
    QString User;
    QString Password;
};

/// The user and password that stand in the string itself.
LogOn LogOnOf(const QString& connectionString);

/// The string without what logs a user on; unchanged where it holds nothing of that.
QString WithoutLogOn(const QString& connectionString);

/// The string with "UID" and "PWD" in braces added; unchanged for an empty user.
QString WithLogOn(const QString& connectionString, const LogOn& logOn);

/// A server's message with the user and the password blotted out.
QString WithoutSecrets(const QString& message, const LogOn& logOn);

}  // namespace db
