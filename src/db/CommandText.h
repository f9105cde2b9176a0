#pragma once

#include <QString>
#include <QStringList>
#include <initializer_list>

/// How command texts are put together. Every value stands between single quotes, with the quotes
/// inside it doubled, so that a name such as O'Hara can be saved, found and do no harm.
namespace db {

/// `text` between single quotes. Throws DatabaseError for a NUL character, naming it.
QString Quoted(const QString& text);

/// A name in brackets.
QString Bracketed(QString name);

/// "DATABASE..procedure 'a','b'"; the bare name where there are no arguments.
QString Call(const QString& procedure, std::initializer_list<QString> arguments = {});
QString Call(const QString& procedure, const QStringList& arguments);

/// Replaces every occurrence of each placeholder ("##", "#1", ...) by the value, with the quotes
/// inside it doubled; the template itself holds the quotes. A value is never searched again for
/// placeholders.
QString FromTemplate(const QString& text,
                     std::initializer_list<std::pair<QString, QString>> placeholders);

}  // namespace db
