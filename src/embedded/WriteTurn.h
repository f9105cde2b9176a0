#pragma once

#include <sqlite3.h>

#include <QString>
#include <vector>

namespace embedded {

/// Whose turn it is to write next, among the programs on one hospital file: a lock on the empty
/// file "<hospital>-turn", held by the one that has waited long. Nobody else begins to write
/// meanwhile. The system frees it when a program dies. The file is made when somebody waits for
/// the first time; where it cannot be made the order is left to chance.
class WriteTurn final {
public:
    explicit WriteTurn(const QString& hospitalFile)
        : m_name(hospitalFile + QStringLiteral("-turn")) {}
    ~WriteTurn();
    WriteTurn(const WriteTurn&) = delete;
    WriteTurn& operator=(const WriteTurn&) = delete;

    bool IsOthers();
    /// Takes the turn if it is free.
    void Take();
    void Leave();

private:
    void Open();

    // SQLite's handle of the file grows beyond its header, by what the system's locks need.
    std::vector<char> m_memory;
    QString m_name;
    // As SQLite wants it, with its own marks around it; lives as long as the file is open.
    sqlite3_filename m_systemName = nullptr;
    sqlite3_file* m_file = nullptr;
    bool m_mine = false;
};

}  // namespace embedded
