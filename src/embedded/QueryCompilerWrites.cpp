#include <algorithm>

#include "embedded/QueryCompiler.h"
#include "embedded/StatementParser.h"
#include "embedded/Text.h"

// The writing statements of QueryCompiler.
namespace embedded {

namespace {

std::string ColumnList(const std::vector<const Column*>& columns) {
    std::string list;
    for (const Column* column : columns) {
        list += (list.empty() ? "" : ", ") + Identifier(column->name);
    }
    return list;
}

const Column& ColumnNamed(const Table& table, const std::string& name, int line) {
    const Column* column = table.Find(name);
    if (column == nullptr) {
        throw Failure(207, "Invalid column name '" + name + "'.", line);
    }
    return *column;
}

}  // namespace

std::shared_ptr<Plan> QueryCompiler::Insertion(const Insert& insert) {
    const Table& table = m_catalog.TableOf(insert.table, m_module.database);
    std::vector<const Column*> columns = InsertColumns(insert, table);
    // What the statement leaves out takes its default here, where the clock is the program's own.
    std::vector<std::string> defaults;
    std::vector<const Column*> all = columns;
    bool identity = false;
    for (const Column& column : table.columns) {
        identity = identity || column.identity;
        const bool given = std::find(columns.begin(), columns.end(), &column) != columns.end();
        if (!given && !column.defaultText.empty()) {
            all.push_back(&column);
            defaults.push_back(DefaultValue(column, table));
        }
    }
    std::string sql = "INSERT INTO " + Identifier(table.name) + " (" + ColumnList(all) + ") ";
    sql += insert.select ? InsertSelect(insert, table, columns, defaults)
                         : InsertRows(insert, table, columns, defaults);
    std::shared_ptr<Plan> plan = Finish(std::move(sql), true);
    plan->setsIdentity = identity;
    return plan;
}

std::vector<const Column*> QueryCompiler::InsertColumns(const Insert& insert,
                                                        const Table& table) const {
    std::vector<const Column*> columns;
    if (insert.columns.empty()) {
        for (const Column& column : table.columns) {
            if (!column.identity) {
                columns.push_back(&column);
            }
        }
        return columns;
    }
    for (const std::string& name : insert.columns) {
        const Column& column = ColumnNamed(table, name, insert.table.line);
        if (column.identity) {
            throw Failure(544,
                          "Cannot insert explicit value for identity column in table '" +
                              table.shortName + "'.",
                          insert.table.line);
        }
        if (std::find(columns.begin(), columns.end(), &column) != columns.end()) {
            throw Failure(264, "The column name '" + name + "' is specified more than once.",
                          insert.table.line);
        }
        columns.push_back(&column);
    }
    return columns;
}

std::string QueryCompiler::DefaultValue(const Column& column, const Table& table) {
    if (column.defaultText.empty()) {
        return "NULL";
    }
    const ExpressionPtr value = StatementParser::ParseValue(column.defaultText);
    return Assigned(Value(*value, Scope{}), column, table, 0).sql;
}

Fragment QueryCompiler::Assigned(const Fragment& value, const Column& column, const Table& table,
                                 int line) {
    return ForColumn(value, column.type, table.shortName + "." + column.name, line);
}

std::string QueryCompiler::InsertRows(const Insert& insert, const Table& table,
                                      const std::vector<const Column*>& columns,
                                      const std::vector<std::string>& defaults) {
    std::string sql = "VALUES ";
    for (const auto& row : insert.rows) {
        if (row.size() != columns.size()) {
            throw Failure(213,
                          "Column name or number of supplied values does not match table "
                          "definition.",
                          insert.table.line);
        }
        sql += &row == &insert.rows.front() ? "(" : ", (";
        for (size_t i = 0; i < row.size(); ++i) {
            sql += i > 0 ? ", " : "";
            sql += row[i] ? Assigned(Value(*row[i], Scope{}), *columns[i], table, row[i]->line).sql
                          : DefaultValue(*columns[i], table);
        }
        for (const std::string& value : defaults) {
            sql += ", " + value;
        }
        sql += ")";
    }
    return sql;
}

std::string QueryCompiler::InsertSelect(const Insert& insert, const Table& table,
                                        const std::vector<const Column*>& columns,
                                        const std::vector<std::string>& defaults) {
    if (!TakenBy(*insert.select).empty()) {
        throw SyntaxFailure("=", insert.select->line);
    }
    Targets targets;
    targets.count = columns.size();
    targets.extras = defaults;
    targets.convert = [&](const Fragment& value, size_t position, int line) {
        return Assigned(value, *columns[position], table, line);
    };
    return CompileSelect(*insert.select, nullptr, &targets).sql;
}

std::shared_ptr<Plan> QueryCompiler::Change(const Update& update) {
    const Table& table = m_catalog.TableOf(update.table, m_module.database);
    Scope scope;
    scope.sources.push_back({table.shortName, &table});
    std::string sql = "UPDATE " + Identifier(table.name) + " AS " + Identifier(table.shortName);
    std::string returning;
    std::vector<int> targets;
    for (const UpdateItem& item : update.items) {
        const Column& column = ColumnNamed(table, item.column, item.line);
        if (column.identity) {
            throw Failure(8102, "Cannot update identity column '" + column.name + "'.", item.line);
        }
        sql += &item == &update.items.front() ? " SET " : ", ";
        const Fragment value = Value(*item.value, scope);
        sql += Identifier(column.name) + " = " + Assigned(value, column, table, item.line).sql;
        if (item.slot >= 0) {
            const Fragment written{Identifier(column.name), column.type, true, false};
            const Type& type = m_module.variables[size_t(item.slot)].type;
            returning += returning.empty() ? " RETURNING " : ", ";
            returning += Converted(written, type, item.line).sql;
            targets.push_back(item.slot);
        }
    }
    if (update.where) {
        sql += " WHERE " + Condition(*update.where, scope);
    }
    std::shared_ptr<Plan> plan = Finish(sql + returning, true);
    plan->targets = std::move(targets);
    return plan;
}

std::shared_ptr<Plan> QueryCompiler::Deletion(const Delete& statement) {
    const Table& table = m_catalog.TableOf(statement.table, m_module.database);
    Scope scope;
    scope.sources.push_back({table.shortName, &table});
    std::string sql =
        "DELETE FROM " + Identifier(table.name) + " AS " + Identifier(table.shortName);
    if (statement.where) {
        sql += " WHERE " + Condition(*statement.where, scope);
    }
    return Finish(std::move(sql), true);
}

}  // namespace embedded
