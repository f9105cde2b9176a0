#include "deploy/ColumnLengths.h"

#include <QHash>
#include <QRegularExpression>

#include "base/Errors.h"
#include "deploy/ScriptSet.h"

namespace deploy {

namespace {

constexpr int kNoSuchColumn = 3265;

QString Key(const QString& table, const QString& column) {
    return (table + u'.' + column).toLower();
}

// Line by line, as the scripts are laid out: a table begins with its name, a column has one line.
QHash<QString, int> ReadLengths() {
    static const QRegularExpression tableLine(
        QStringLiteral("^(?:CREATE|ALTER) TABLE (\\w+)(?: ADD (\\w+) varchar\\((\\d+)\\))?"));
    static const QRegularExpression columnLine(QStringLiteral("^\\s+(\\w+) varchar\\((\\d+)\\)"));
    QHash<QString, int> lengths;
    for (const Script& script : ScriptSet::Own().Schema()) {
        QString table;
        for (const QString& line : script.Text.split(u'\n')) {
            const auto begins = tableLine.match(line);
            const auto column = columnLine.match(line);
            if (begins.hasMatch())
                table = begins.captured(1);
            if (begins.hasMatch() && !begins.captured(2).isEmpty())
                lengths[Key(table, begins.captured(2))] = begins.captured(3).toInt();
            else if (column.hasMatch())
                lengths[Key(table, column.captured(1))] = column.captured(2).toInt();
        }
    }
    return lengths;
}

}  // namespace

int ColumnLength(const QString& table, const QString& column) {
    static const QHash<QString, int> lengths = ReadLengths();
    const int length = lengths.value(Key(table, column));
    if (length == 0)
        throw base::RuntimeError(
            kNoSuchColumn,
            QStringLiteral("There is no text column %1 in the table %2.").arg(column, table));
    return length;
}

}  // namespace deploy
