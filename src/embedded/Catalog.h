#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "embedded/Ast.h"
#include "embedded/Database.h"

namespace embedded {

struct Column {
    std::string name;
    Type type;
    bool nullable = true;
    bool identity = false;
    /// As written; empty for none.
    std::string defaultText;

    bool operator==(const Column& other) const = default;
};

struct Table {
    /// "DATABASE..table", as SQLite knows it.
    std::string name;
    std::string database;
    std::string shortName;
    std::vector<Column> columns;
    std::vector<std::string> primaryKey;

    /// Null where there is no such column.
    const Column* Find(const std::string& column) const;
};

/// A procedure or function as it is kept in the file.
struct ModuleText {
    std::string text;
    std::string script;
    std::string database;
    int firstLine = 1;
};

/// What the file holds besides rows: the T-SQL types of its tables, and its procedures and
/// functions. Read from the file's own system tables when first asked for.
class Catalog final {
public:
    explicit Catalog(Database& database) : m_database(database) {}

    /// Makes the system tables in an empty file.
    static void Create(Database& database);

    /// Unqualified names belong to `database`. Throws Failure 208 for an unknown table.
    const Table& TableOf(const ObjectName& name, const std::string& database);
    const Table* FindTable(const ObjectName& name, const std::string& database);
    /// `key` is "DATABASE..NAME" in upper case.
    std::optional<ModuleText> FindModule(const std::string& key, bool function);

    void AddTable(const Table& table);
    void AddColumns(const Table& table, const std::vector<Column>& columns);
    void ChangeColumn(const Table& table, const Column& column);
    void RemoveTable(const Table& table);
    void SaveModule(const std::string& key, bool function, const ModuleText& module);
    void RemoveModule(const std::string& key, bool function);

    /// Counts up with every change of tables, procedures or functions, of any session.
    int Version();
    void CountUp();
    /// Forgets what was read; pointers to tables end.
    void Forget();

private:
    std::unique_ptr<Table> Read(const std::string& key);
    void Write(const Table& table, size_t position, const Column& column);

    Database& m_database;
    std::unordered_map<std::string, std::unique_ptr<Table>> m_tables;
    PreparedStatement m_readTable;
    PreparedStatement m_readColumns;
    PreparedStatement m_readModule;
    PreparedStatement m_readVersion;
};

/// "DATABASE..NAME" in upper case.
std::string ObjectKey(const ObjectName& name, const std::string& database);

}  // namespace embedded
