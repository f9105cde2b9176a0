#include "embedded/Definitions.h"

#include <algorithm>

#include "embedded/QueryCompiler.h"
#include "embedded/SessionState.h"
#include "embedded/StatementParser.h"
#include "embedded/Text.h"

namespace embedded {

namespace {

Failure AlreadyThere(const ObjectName& name) {
    return Failure(2714, "There is already an object named '" + name.name + "' in the database.",
                   name.line);
}

Column AsColumn(const ColumnDefinition& definition) {
    return {definition.name, definition.type, definition.nullable && !definition.identity,
            definition.identity, definition.defaultText};
}

// Names of indexes belong to their table.
std::string IndexName(const Table& table, const std::string& name) {
    return Identifier(table.name + "." + name);
}

}  // namespace

void Definitions::Changed() {
    m_catalog.CountUp();
    m_catalog.Forget();
}

void Definitions::Make(const CreateTable& create, const std::string& database) {
    if (m_catalog.FindTable(create.table, database) != nullptr) {
        throw AlreadyThere(create.table);
    }
    const Table table = Describe(create, database);
    const TableDefinition& definition = create.definition;
    std::string sql = "CREATE TABLE " + Identifier(table.name) + " (";
    bool identity = false;
    for (const ColumnDefinition& column : definition.columns) {
        const auto& key = table.primaryKey;
        const bool keyed = std::any_of(key.begin(), key.end(), [&](const std::string& name) {
            return SameName(name, column.name);
        });
        if (column.identity && (identity || !keyed || key.size() != 1)) {
            throw OutsideSubset("IDENTITY beside the primary key", column.line);
        }
        identity = identity || column.identity;
        sql += &column == &definition.columns.front() ? "" : ", ";
        sql += ColumnText(column, table, keyed) + ColumnChecks(column, table);
    }
    if (!identity && !table.primaryKey.empty()) {
        sql += ", PRIMARY KEY (" + Names(table.primaryKey, table, true) + ")";
    }
    for (const auto& unique : definition.uniques) {
        sql += ", UNIQUE (" + Names(unique, table, true) + ")";
    }
    for (const std::string& check : definition.checks) {
        sql += "," + CheckText(check, "CK_" + table.shortName, table);
    }
    m_database.Run((sql + ") STRICT").c_str());
    m_catalog.AddTable(table);
    Changed();
}

Table Definitions::Describe(const CreateTable& create, const std::string& database) const {
    Table table;
    table.database = create.table.database.empty() ? database : NameKey(create.table.database);
    table.shortName = create.table.name;
    table.name = table.database + ".." + table.shortName;
    table.primaryKey = create.definition.primaryKey;
    if (table.database.empty()) {
        throw Failure(208, "No database is in use for '" + table.shortName + "'.",
                      create.table.line);
    }
    for (const ColumnDefinition& definition : create.definition.columns) {
        if (table.Find(definition.name) != nullptr) {
            throw Failure(2705,
                          "Column name '" + definition.name + "' is specified more than once.",
                          definition.line);
        }
        table.columns.push_back(AsColumn(definition));
    }
    return table;
}

std::string Definitions::ColumnText(const ColumnDefinition& column, const Table& table,
                                    bool keyed) const {
    const std::string name = Identifier(column.name);
    if (column.identity) {
        return name + " INTEGER PRIMARY KEY AUTOINCREMENT";
    }
    std::string type = column.type.StoredAs();
    // A lone INTEGER key would fill itself in where a value is missing.
    if (keyed && table.primaryKey.size() == 1 && type == "INTEGER") {
        type = "INT";
    }
    return name + " " + type + (column.nullable && !keyed ? "" : " NOT NULL");
}

std::string Definitions::ColumnChecks(const ColumnDefinition& column, const Table& table) {
    std::string checks;
    for (const std::string& check : column.checks) {
        checks += CheckText(check, "CK_" + table.shortName + "_" + column.name, table);
    }
    return checks;
}

std::string Definitions::CheckText(const std::string& check, const std::string& name,
                                   const Table& table) {
    Module none;
    const ExpressionPtr condition = StatementParser::ParseValue(check);
    QueryCompiler compiler(m_catalog, m_functions, none);
    return " CONSTRAINT " + Identifier(name) + " CHECK (" + compiler.Check(*condition, table) + ")";
}

std::string Definitions::Names(const std::vector<std::string>& names, const Table& table,
                               bool unique) const {
    std::string list;
    for (const std::string& name : names) {
        const Column* column = table.Find(name);
        if (column == nullptr) {
            throw Failure(1911, "Column name '" + name + "' does not exist in the target table.");
        }
        // The rows stand in the order with accents, which takes Pena and Peña for two.
        if (unique && column->type.accentless) {
            throw OutsideSubset("a key over a column with COLLATE", 0);
        }
        list += (list.empty() ? "" : ", ") + Identifier(column->name);
    }
    return list;
}

void Definitions::Change(const AlterTable& alter, const std::string& database) {
    const Table& table = m_catalog.TableOf(alter.table, database);
    if (alter.changes) {
        Collate(alter.definition.columns.front(), table);
    } else {
        Add(alter, table);
    }
    Changed();
}

// Only what comparisons mean changes: rows and indexes keep their order.
void Definitions::Collate(const ColumnDefinition& definition, const Table& table) {
    Column changed = AsColumn(definition);
    const Column* column = table.Find(definition.name);
    if (column != nullptr) {
        changed.name = column->name;
        changed.defaultText = column->defaultText;
        changed.type.accentless = column->type.accentless;
    }
    const bool plain = definition.defaultText.empty() && definition.checks.empty() &&
                       !definition.primaryKey && !definition.unique;
    if (column == nullptr || !plain || !(changed == *column)) {
        throw OutsideSubset("ALTER COLUMN for anything but its COLLATE", definition.line);
    }
    changed.type = definition.type;
    Table keyed = table;
    keyed.columns = {changed};
    for (const std::string& key : table.primaryKey) {
        if (SameName(key, changed.name)) {
            Names({key}, keyed, true);
        }
    }
    m_catalog.ChangeColumn(table, changed);
}

void Definitions::Add(const AlterTable& add, Table table) {
    std::vector<Column> added;
    const Table before = table;
    for (const ColumnDefinition& definition : add.definition.columns) {
        if (table.Find(definition.name) != nullptr) {
            throw Failure(2705,
                          "Column name '" + definition.name + "' is specified more than once.",
                          definition.line);
        }
        if (definition.identity || definition.primaryKey || definition.unique) {
            throw OutsideSubset("a key in ALTER TABLE", definition.line);
        }
        table.columns.push_back(AsColumn(definition));
        added.push_back(table.columns.back());
        const std::string sql = "ALTER TABLE " + Identifier(table.name) + " ADD COLUMN " +
                                ColumnText(definition, table, false) +
                                FilledWith(definition, table) + ColumnChecks(definition, table);
        m_database.Run(sql.c_str());
    }
    m_catalog.AddColumns(before, added);
}

// Rows that are already there take the default of a column that may not be null.
std::string Definitions::FilledWith(const ColumnDefinition& column, const Table& table) {
    if (column.nullable) {
        return {};
    }
    if (column.defaultText.empty()) {
        throw Failure(4901,
                      "Column '" + column.name + "' of table '" + table.shortName +
                          "' can only be added with a DEFAULT or as NULL.",
                      column.line);
    }
    Module none;
    const ExpressionPtr value = StatementParser::ParseValue(column.defaultText);
    const auto plan =
        QueryCompiler(m_catalog, m_functions, none).Assignment(*value, column.type, -1);
    const PreparedStatement statement =
        m_database.Prepare("SELECT quote((" + plan->sql + "))", false);
    const std::string now = SessionState::Now();
    for (int i = 1; i <= int(plan->parameters.size()); ++i) {
        sqlite3_bind_text(statement.get(), i, now.data(), int(now.size()), SQLITE_STATIC);
    }
    m_database.Step(statement.get());
    return std::string(" DEFAULT ") +
           reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
}

void Definitions::Make(const CreateIndex& create, const std::string& database) {
    const Table& table = m_catalog.TableOf(create.table, database);
    std::string columns;
    for (const auto& [name, descending] : create.columns) {
        columns += (columns.empty() ? "" : ", ") + Names({name}, table, create.unique);
        columns += descending ? " DESC" : "";
    }
    const std::string sql = std::string("CREATE ") + (create.unique ? "UNIQUE " : "") + "INDEX " +
                            IndexName(table, create.name) + " ON " + Identifier(table.name) + " (" +
                            columns + ")";
    m_database.Run(sql.c_str());
    Changed();
}

void Definitions::Remove(const Drop& drop, const std::string& database) {
    if (drop.kind == Drop::Kind::Procedure || drop.kind == Drop::Kind::Function) {
        m_catalog.RemoveModule(ObjectKey(drop.name, database), drop.kind == Drop::Kind::Function);
        Changed();
        return;
    }
    const bool index = drop.kind == Drop::Kind::Index;
    const Table* table = m_catalog.FindTable(index ? drop.table : drop.name, database);
    if (table == nullptr) {
        return;
    }
    if (index) {
        m_database.Run(("DROP INDEX IF EXISTS " + IndexName(*table, drop.name.name)).c_str());
    } else {
        m_database.Run(("DROP TABLE " + Identifier(table->name)).c_str());
        m_catalog.RemoveTable(*table);
    }
    Changed();
}

void Definitions::Save(const Module& module, const ModuleText& text) {
    const std::string key = ObjectKey(module.name, module.database);
    const bool function = module.kind == Module::Kind::Function;
    if (m_catalog.FindModule(key, true) || m_catalog.FindModule(key, false)) {
        throw AlreadyThere(module.name);
    }
    if (module.database.empty()) {
        throw Failure(208, "No database is in use for '" + module.name.name + "'.",
                      module.name.line);
    }
    m_catalog.SaveModule(key, function, text);
    Changed();
}

}  // namespace embedded
