#include "deploy/Rows.h"

namespace deploy {

namespace {

const QString kDatabase = QStringLiteral("CLINICAL_AREA");

}  // namespace

Rows Rows::Ask(embedded::Server& server, const QString& command) {
    Rows rows;
    server.Execute(command, kDatabase, &rows);
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

void Run(embedded::Server& server, const QString& command) {
    server.Execute(command, kDatabase, nullptr);
}

}  // namespace deploy
