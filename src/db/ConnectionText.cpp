#include "db/ConnectionText.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

namespace db {

namespace {

QString UpToSemicolon(const QString& text, qsizetype& at) {
    const qsizetype end = text.indexOf(QLatin1Char(';'), at);
    const qsizetype stop = end < 0 ? text.size() : end;
    const QString value = text.mid(at, stop - at).trimmed();
    at = stop;
    return value;
}

QString BracedValue(const QString& text, qsizetype& at) {
    QString value;
    for (++at; at < text.size(); ++at) {
        if (text.at(at) == QLatin1Char('}')) {
            if (at + 1 >= text.size() || text.at(at + 1) != QLatin1Char('}')) {
                break;
            }
            ++at;
        }
        value.append(text.at(at));
    }
    UpToSemicolon(text, at);
    return value;
}

QString Braced(QString value) {
    return QLatin1Char('{') + value.replace(QLatin1Char('}'), QStringLiteral("}}")) +
           QLatin1Char('}');
}

bool IsAnyOf(const QString& key, std::initializer_list<QLatin1String> names) {
    return std::any_of(names.begin(), names.end(), [&key](QLatin1String name) {
        return key.compare(name, Qt::CaseInsensitive) == 0;
    });
}

bool IsUserKey(const QString& key) {
    return IsAnyOf(key, {QLatin1String("UID"), QLatin1String("User"), QLatin1String("User ID")});
}

bool IsPasswordKey(const QString& key) {
    return IsAnyOf(key, {QLatin1String("PWD"), QLatin1String("Password")});
}

}  // namespace

std::vector<ConnectionPart> ConnectionParts(const QString& connectionString) {
    std::vector<ConnectionPart> parts;
    qsizetype at = 0;
    while (at < connectionString.size()) {
        const qsizetype start = at;
        const qsizetype equals = connectionString.indexOf(QLatin1Char('='), at);
        const qsizetype semicolon = connectionString.indexOf(QLatin1Char(';'), at);
        ConnectionPart part;
        if (equals >= 0 && (semicolon < 0 || equals < semicolon)) {
            part.Key = connectionString.mid(at, equals - at).trimmed();
            at = equals + 1;
            while (at < connectionString.size() && connectionString.at(at).isSpace()) {
                ++at;
            }
            const bool braced =
                at < connectionString.size() && connectionString.at(at) == QLatin1Char('{');
            part.Value =
                braced ? BracedValue(connectionString, at) : UpToSemicolon(connectionString, at);
        } else {
            UpToSemicolon(connectionString, at);
        }
        part.Written = connectionString.mid(start, at - start);
        if (!part.Written.trimmed().isEmpty()) {
            parts.push_back(part);
        }
        ++at;
    }
    return parts;
}

QString ConnectionValue(const QString& connectionString, const QString& key) {
    for (const ConnectionPart& part : ConnectionParts(connectionString)) {
        if (part.Key.compare(key, Qt::CaseInsensitive) == 0) {
            return part.Value;
        }
    }
    return {};
}

LogOn LogOnOf(const QString& connectionString) {
    LogOn logOn;
    for (const ConnectionPart& part : ConnectionParts(connectionString)) {
        if (IsUserKey(part.Key)) {
            logOn.User = part.Value;
        } else if (IsPasswordKey(part.Key)) {
            logOn.Password = part.Value;
        }
    }
    return logOn;
}

QString WithoutLogOn(const QString& connectionString) {
    QStringList kept;
    bool dropped = false;
    for (const ConnectionPart& part : ConnectionParts(connectionString)) {
        if (IsUserKey(part.Key) || IsPasswordKey(part.Key)) {
            dropped = true;
        } else {
            kept.append(part.Written);
        }
    }
    return dropped ? kept.join(QLatin1Char(';')) : connectionString;
}

QString WithLogOn(const QString& connectionString, const LogOn& logOn) {
    if (logOn.User.isEmpty()) {
        return connectionString;
    }
    const QString separator =
        connectionString.isEmpty() || connectionString.endsWith(QLatin1Char(';'))
            ? QString()
            : QStringLiteral(";");
    return connectionString + separator + QStringLiteral("UID=") + Braced(logOn.User) +
           QStringLiteral(";PWD=") + Braced(logOn.Password);
}

QString WithoutSecrets(const QString& message, const LogOn& logOn) {
    QString shown = message;
    if (!logOn.Password.isEmpty()) {
        shown.replace(logOn.Password, QStringLiteral("***"));
    }
    // A user "sa" must not blot out the middle of other words.
    if (!logOn.User.isEmpty()) {
        const QRegularExpression whole(
            QStringLiteral("(?<!\\w)%1(?!\\w)").arg(QRegularExpression::escape(logOn.User)),
            QRegularExpression::CaseInsensitiveOption |
                QRegularExpression::UseUnicodePropertiesOption);
        shown.replace(whole, QStringLiteral("***"));
    }
    return shown;
}

}  // namespace db
