#include "db/CommandText.h"

#include <algorithm>

#include "base/Errors.h"

namespace db {

namespace {

[[noreturn]] void Refuse(char16_t unit, const QString& name) {
    const QString code = QStringLiteral("U+%1").arg(uint(unit), 4, 16, QLatin1Char('0')).toUpper();
    throw base::DatabaseError(
        0, QStringLiteral("The character %1 (%2) cannot be sent to the server.").arg(code, name));
}

// The inside of a quoted text. Half a surrogate pair would reach the server as another character.
QString Doubled(const QString& text) {
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar unit = text.at(at);
        if (unit.isNull()) {
            Refuse(unit.unicode(), QStringLiteral("NUL"));
        }
        if (!unit.isSurrogate()) {
            continue;
        }
        const bool paired =
            unit.isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate();
        if (!paired) {
            Refuse(unit.unicode(), QStringLiteral("half a surrogate pair"));
        }
        ++at;
    }
    return QString(text).replace(QLatin1Char('\''), QStringLiteral("''"));
}

}  // namespace

QString Quoted(const QString& text) {
    return QLatin1Char('\'') + Doubled(text) + QLatin1Char('\'');
}

QString Bracketed(QString name) {
    return QLatin1Char('[') + name.replace(QLatin1Char(']'), QStringLiteral("]]")) +
           QLatin1Char(']');
}

QString Call(const QString& procedure, std::initializer_list<QString> arguments) {
    return Call(procedure, QStringList(arguments));
}

QString Call(const QString& procedure, const QStringList& arguments) {
    if (arguments.isEmpty()) {
        return procedure;
    }
    QStringList quoted;
    for (const QString& argument : arguments) {
        quoted.append(Quoted(argument));
    }
    return procedure + QLatin1Char(' ') + quoted.join(QLatin1Char(','));
}

QString FromTemplate(const QString& text,
                     std::initializer_list<std::pair<QString, QString>> placeholders) {
    QString command;
    qsizetype at = 0;
    while (at < text.size()) {
        const QStringView rest = QStringView(text).sliced(at);
        const auto found =
            std::find_if(placeholders.begin(), placeholders.end(), [rest](const auto& placeholder) {
                return !placeholder.first.isEmpty() && rest.startsWith(placeholder.first);
            });
        if (found == placeholders.end()) {
            command.append(text.at(at++));
        } else {
            command.append(Doubled(found->second));
            at += found->first.size();
        }
    }
    return command;
}

}  // namespace db
