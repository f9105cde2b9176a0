#include "embedded/Catalog.h"

#include "embedded/Text.h"

namespace embedded {

namespace {

// Names are joined by a character that no name holds.
constexpr char Separator = '\n';

std::string Joined(const std::vector<std::string>& names) {
    std::string joined;
    for (const std::string& name : names) {
        joined += (joined.empty() ? "" : std::string(1, Separator)) + name;
    }
    return joined;
}

std::vector<std::string> Split(const std::string& joined) {
    std::vector<std::string> names;
    size_t begin = 0;
    while (begin < joined.size()) {
        const size_t end = std::min(joined.find(Separator, begin), joined.size());
        names.push_back(joined.substr(begin, end - begin));
        begin = end + 1;
    }
    return names;
}

void Bind(sqlite3_stmt* statement, int index, const std::string& text) {
    sqlite3_bind_text(statement, index, text.data(), int(text.size()), SQLITE_TRANSIENT);
}

std::string TextAt(sqlite3_stmt* statement, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return text == nullptr ? std::string()
                           : std::string(text, size_t(sqlite3_column_bytes(statement, column)));
}

}  // namespace

std::string ObjectKey(const ObjectName& name, const std::string& database) {
    return NameKey(name.database.empty() ? database : name.database) + ".." + NameKey(name.name);
}

const Column* Table::Find(const std::string& column) const {
    for (const Column& candidate : columns) {
        if (SameName(candidate.name, column)) {
            return &candidate;
        }
    }
    return nullptr;
}

void Catalog::Create(Database& database) {
    database.Run(
        "CREATE TABLE catalog_tables (key TEXT PRIMARY KEY, name TEXT NOT NULL,"
        " database TEXT NOT NULL, short_name TEXT NOT NULL, primary_key TEXT NOT NULL)"
        " STRICT, WITHOUT ROWID;"
        "CREATE TABLE catalog_columns (table_name TEXT, position INTEGER, name TEXT NOT NULL,"
        " type TEXT NOT NULL, nullable INTEGER NOT NULL, identity INTEGER NOT NULL,"
        " default_text TEXT NOT NULL, PRIMARY KEY (table_name, position)) STRICT, WITHOUT ROWID;"
        "CREATE TABLE catalog_modules (function INTEGER, key TEXT, script TEXT NOT NULL,"
        " database TEXT NOT NULL, first_line INTEGER NOT NULL, text TEXT NOT NULL,"
        " PRIMARY KEY (function, key)) STRICT;"
        "CREATE TABLE catalog_sessions (last INTEGER NOT NULL) STRICT;"
        "INSERT INTO catalog_sessions VALUES (50);");
}

const Table& Catalog::TableOf(const ObjectName& name, const std::string& database) {
    const Table* table = FindTable(name, database);
    if (table == nullptr) {
        throw Failure(208, "Invalid object name '" + name.Text() + "'.", name.line);
    }
    return *table;
}

const Table* Catalog::FindTable(const ObjectName& name, const std::string& database) {
    const std::string key = ObjectKey(name, database);
    const auto known = m_tables.find(key);
    if (known != m_tables.end()) {
        return known->second.get();
    }
    std::unique_ptr<Table> table = Read(key);
    if (!table) {
        return nullptr;
    }
    return m_tables.emplace(key, std::move(table)).first->second.get();
}

std::unique_ptr<Table> Catalog::Read(const std::string& key) {
    if (!m_readTable) {
        m_readTable = m_database.Prepare(
            "SELECT name, database, short_name, primary_key FROM catalog_tables WHERE key = ?1");
        m_readColumns = m_database.Prepare(
            "SELECT name, type, nullable, identity, default_text FROM catalog_columns"
            " WHERE table_name = ?1 ORDER BY position");
    }
    const StatementReset reset(m_readTable.get());
    Bind(m_readTable.get(), 1, key);
    if (!m_database.Step(m_readTable.get())) {
        return nullptr;
    }
    auto table = std::make_unique<Table>();
    table->name = TextAt(m_readTable.get(), 0);
    table->database = TextAt(m_readTable.get(), 1);
    table->shortName = TextAt(m_readTable.get(), 2);
    table->primaryKey = Split(TextAt(m_readTable.get(), 3));
    sqlite3_stmt* columns = m_readColumns.get();
    const StatementReset columnsReset(columns);
    Bind(columns, 1, key);
    while (m_database.Step(columns)) {
        table->columns.push_back({TextAt(columns, 0), Type::FromName(TextAt(columns, 1)),
                                  sqlite3_column_int(columns, 2) != 0,
                                  sqlite3_column_int(columns, 3) != 0, TextAt(columns, 4)});
    }
    return table;
}

std::optional<ModuleText> Catalog::FindModule(const std::string& key, bool function) {
    if (!m_readModule) {
        m_readModule = m_database.Prepare(
            "SELECT text, script, database, first_line FROM catalog_modules"
            " WHERE function = ?1 AND key = ?2");
    }
    sqlite3_stmt* statement = m_readModule.get();
    const StatementReset reset(statement);
    sqlite3_bind_int(statement, 1, function ? 1 : 0);
    Bind(statement, 2, key);
    if (!m_database.Step(statement)) {
        return std::nullopt;
    }
    return ModuleText{TextAt(statement, 0), TextAt(statement, 1), TextAt(statement, 2),
                      sqlite3_column_int(statement, 3)};
}

void Catalog::AddTable(const Table& table) {
    const PreparedStatement statement =
        m_database.Prepare("INSERT INTO catalog_tables VALUES (?1, ?2, ?3, ?4, ?5)", false);
    Bind(statement.get(), 1, NameKey(table.name));
    Bind(statement.get(), 2, table.name);
    Bind(statement.get(), 3, table.database);
    Bind(statement.get(), 4, table.shortName);
    Bind(statement.get(), 5, Joined(table.primaryKey));
    m_database.Step(statement.get());
    for (size_t i = 0; i < table.columns.size(); ++i) {
        Write(table, i, table.columns[i]);
    }
}

void Catalog::AddColumns(const Table& table, const std::vector<Column>& columns) {
    for (size_t i = 0; i < columns.size(); ++i) {
        Write(table, table.columns.size() + i, columns[i]);
    }
}

void Catalog::Write(const Table& table, size_t position, const Column& column) {
    const PreparedStatement statement = m_database.Prepare(
        "INSERT INTO catalog_columns VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7)", false);
    Bind(statement.get(), 1, NameKey(table.name));
    sqlite3_bind_int(statement.get(), 2, int(position));
    Bind(statement.get(), 3, column.name);
    Bind(statement.get(), 4, column.type.Name());
    sqlite3_bind_int(statement.get(), 5, column.nullable ? 1 : 0);
    sqlite3_bind_int(statement.get(), 6, column.identity ? 1 : 0);
    Bind(statement.get(), 7, column.defaultText);
    m_database.Step(statement.get());
}

void Catalog::ChangeColumn(const Table& table, const Column& column) {
    const PreparedStatement statement = m_database.Prepare(
        "UPDATE catalog_columns SET type = ?3 WHERE table_name = ?1 AND name = ?2", false);
    Bind(statement.get(), 1, NameKey(table.name));
    Bind(statement.get(), 2, column.name);
    Bind(statement.get(), 3, column.type.Name());
    m_database.Step(statement.get());
}

void Catalog::RemoveTable(const Table& table) {
    for (const char* sql : {"DELETE FROM catalog_columns WHERE table_name = ?1",
                            "DELETE FROM catalog_tables WHERE key = ?1"}) {
        const PreparedStatement statement = m_database.Prepare(sql, false);
        Bind(statement.get(), 1, NameKey(table.name));
        m_database.Step(statement.get());
    }
}

void Catalog::SaveModule(const std::string& key, bool function, const ModuleText& module) {
    const PreparedStatement statement =
        m_database.Prepare("INSERT INTO catalog_modules VALUES (?1, ?2, ?3, ?4, ?5, ?6)", false);
    sqlite3_bind_int(statement.get(), 1, function ? 1 : 0);
    Bind(statement.get(), 2, key);
    Bind(statement.get(), 3, module.script);
    Bind(statement.get(), 4, module.database);
    sqlite3_bind_int(statement.get(), 5, module.firstLine);
    Bind(statement.get(), 6, module.text);
    m_database.Step(statement.get());
}

void Catalog::RemoveModule(const std::string& key, bool function) {
    const PreparedStatement statement =
        m_database.Prepare("DELETE FROM catalog_modules WHERE function = ?1 AND key = ?2", false);
    sqlite3_bind_int(statement.get(), 1, function ? 1 : 0);
    Bind(statement.get(), 2, key);
    m_database.Step(statement.get());
}

int Catalog::Version() {
    if (!m_readVersion) {
        m_readVersion = m_database.Prepare("PRAGMA user_version");
    }
    const StatementReset reset(m_readVersion.get());
    return m_database.Step(m_readVersion.get()) ? sqlite3_column_int(m_readVersion.get(), 0) : 0;
}

void Catalog::CountUp() {
    const std::string sql = "PRAGMA user_version = " + std::to_string(Version() + 1);
    m_database.Run(sql.c_str());
}

void Catalog::Forget() {
    m_tables.clear();
}

}  // namespace embedded
