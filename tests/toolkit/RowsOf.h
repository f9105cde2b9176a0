#pragma once

#include "db/RowStore.h"

using namespace Qt::StringLiterals;
using embedded::ColumnKind;

/// Rows of these columns, "cell|cell;cell|cell"; an empty cell is null.
inline std::shared_ptr<db::RowStore> RowsOf(const std::vector<embedded::ResultColumn>& columns,
                                            const QString& lines) {
    auto rows = std::make_shared<db::RowStore>();
    rows->BeginResult(columns);
    for (const QString& line : lines.split(u';', Qt::SkipEmptyParts)) {
        const QStringList cells = line.split(u'|');
        for (int column = 0; column < cells.size(); ++column) {
            const std::string text = cells[column].toStdString();
            if (text.empty())
                rows->Null();
            else if (columns[column].Kind == ColumnKind::Double)
                rows->Double(cells[column].toDouble());
            else if (columns[column].Kind == ColumnKind::DateTime)
                rows->DateTime(text);
            else
                rows->Text(text);
        }
        rows->EndRow();
    }
    return rows;
}
