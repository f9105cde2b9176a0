#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "db/Driver.h"

namespace deploy {

/// The rows of one command as texts, for the few small questions that deploying asks.
class Rows final : public embedded::RowSink {
public:
    /// Runs a command.
    static Rows Ask(db::Driver& driver, const QString& command);

    const std::vector<embedded::ResultColumn>& Columns() const { return m_columns; }
    const std::vector<QStringList>& Cells() const { return m_cells; }

    void BeginResult(const std::vector<embedded::ResultColumn>& columns) override;
    void Null() override { m_row << QString(); }
    void Integer(qint64 value) override { m_row << QString::number(value); }
    void Double(double value) override { m_row << QString::number(value); }
    void Text(std::string_view utf8) override;
    void DateTime(std::string_view stored) override { Text(stored); }
    void EndRow() override;

private:
    std::vector<embedded::ResultColumn> m_columns;
    std::vector<QStringList> m_cells;
    QStringList m_row;
};

/// Runs a command whose rows do not matter.
void Run(db::Driver& driver, const QString& command);

}  // namespace deploy
