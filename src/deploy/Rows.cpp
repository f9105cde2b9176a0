#include "deploy/Rows.h"

namespace deploy {

Rows Rows::Ask(db::Driver& driver, const QString& command) {
    Rows rows;
    driver.Execute(command, rows);
    return rows;
}

void Rows::BeginResult(const std::vector<embedded::ResultColumn>& columns) {
    m_columns = columns;
    m_cells.clear();
}

void Rows::Text(std::string_view utf8) {
    m_row << QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

void Rows::EndRow() {
    m_cells.push_back(m_row);
    m_row.clear();
}

void Run(db::Driver& driver, const QString& command) {
    Rows::Ask(driver, command);
}

}  // namespace deploy
