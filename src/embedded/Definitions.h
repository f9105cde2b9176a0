#pragma once

#include <functional>
#include <string>

#include "embedded/Catalog.h"
#include "embedded/ExpressionCompiler.h"

namespace embedded {

/// Makes, changes and drops what the file holds. Each step leaves SQLite's tables and the catalog
/// in agreement, in the transaction that the caller has open.
class Definitions final {
public:
    Definitions(Database& database, Catalog& catalog, FunctionSource& functions)
        : m_database(database), m_catalog(catalog), m_functions(functions) {}

    void Make(const CreateTable& create, const std::string& database);
    void Change(const AlterTable& alter, const std::string& database);
    void Make(const CreateIndex& create, const std::string& database);
    void Remove(const Drop& drop, const std::string& database);
    /// `module` is what `text` says.
    void Save(const Module& module, const ModuleText& text);

private:
    Table Describe(const CreateTable& create, const std::string& database) const;
    std::string ColumnText(const ColumnDefinition& column, const Table& table, bool keyed) const;
    std::string CheckText(const std::string& check, const std::string& name, const Table& table);
    std::string ColumnChecks(const ColumnDefinition& column, const Table& table);
    void Add(const AlterTable& add, Table table);
    void Collate(const ColumnDefinition& definition, const Table& table);
    std::string Names(const std::vector<std::string>& names, const Table& table, bool unique) const;
    std::string FilledWith(const ColumnDefinition& column, const Table& table);
    void Changed();

    Database& m_database;
    Catalog& m_catalog;
    FunctionSource& m_functions;
};

}  // namespace embedded
