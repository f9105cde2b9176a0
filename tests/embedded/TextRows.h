#pragma once

#include <QString>
#include <QStringList>

#include "base/Numbers.h"
#include "embedded/RowSink.h"

using namespace Qt::StringLiterals;

/// Keeps rows as lines of text, cells joined by "|", null as "NULL".
class TextRows final : public embedded::RowSink {
public:
    void BeginResult(const std::vector<embedded::ResultColumn>& columns) override {
        Columns.clear();
        Kinds.clear();
        for (const embedded::ResultColumn& column : columns) {
            Columns << column.Name;
            Kinds << u"INTD"_s.at(int(column.Kind));
        }
    }
    void Null() override { m_cells << u"NULL"_s; }
    void Integer(qint64 value) override { m_cells << QString::number(value); }
    void Double(double value) override { m_cells << base::PlainText(value); }
    void Text(std::string_view utf8) override {
        m_cells << QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
    }
    void DateTime(std::string_view stored) override { Text(stored); }
    void EndRow() override {
        Lines << m_cells.join(QLatin1Char('|'));
        m_cells.clear();
    }

    QStringList Columns;
    /// One letter a column: I whole, N number, T text, D moment.
    QStringList Kinds;
    QStringList Lines;

private:
    QStringList m_cells;
};
