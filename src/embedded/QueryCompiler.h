#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "embedded/ExpressionCompiler.h"

namespace embedded {

/// Turns one T-SQL statement into one statement for SQLite. Throws Failure with the line.
class QueryCompiler final : private ExpressionCompiler {
public:
    QueryCompiler(Catalog& catalog, FunctionSource& functions, const Module& module)
        : ExpressionCompiler(catalog, functions, module) {}

    std::shared_ptr<Plan> Query(const Select& select);
    std::shared_ptr<Plan> Insertion(const Insert& insert);
    std::shared_ptr<Plan> Change(const Update& update);
    std::shared_ptr<Plan> Deletion(const Delete& statement);
    /// One value for a variable.
    std::shared_ptr<Plan> Assignment(const Expression& value, const Type& type, int slot);
    /// One row with 1 or 0; null counts as false.
    std::shared_ptr<Plan> Test(const Expression& condition);
    /// The condition of a table's CHECK.
    std::string Check(const Expression& condition, const Table& table);

private:
    Selected Subselect(const Select& select, const Scope& outer) override;

    /// What the columns of a query are to become.
    struct Targets {
        /// Converts the value at that position.
        std::function<Fragment(const Fragment& value, size_t position, int line)> convert;
        size_t count = 0;
        /// Values that follow the query's own.
        std::vector<std::string> extras;
    };
    struct Branch {
        const SelectBranch* source = nullptr;
        Scope scope;
        Grouping grouping;
        std::vector<std::string> names;
        std::vector<Fragment> values;
        std::string from;
        std::string rest;
        std::string limit;
    };

    Selected CompileSelect(const Select& select, const Scope* outer, const Targets* targets);
    void ReadBranch(Branch& branch, const Scope* outer);
    void ReadSources(Branch& branch);
    void ReadItems(Branch& branch);
    void AddStar(Branch& branch, const SelectItem& item);
    void ReadGroups(Branch& branch);
    std::string LimitOf(const SelectBranch& branch, const Scope& scope);
    void Unify(std::vector<Branch>& branches, const Targets* targets, int line);
    std::string BranchText(const Branch& branch, const Targets* targets) const;
    std::string Order(const Select& select, Branch& first, bool united);
    std::string OrderValue(const Expression& value, Branch& first, bool united);
    /// Position of the column that ORDER BY names by number or alias; -1 for none.
    int OrderedColumn(const Expression& value, const Branch& first) const;
    std::vector<int> TakenBy(const Select& select) const;

    std::vector<const Column*> InsertColumns(const Insert& insert, const Table& table) const;
    std::string InsertRows(const Insert& insert, const Table& table,
                           const std::vector<const Column*>& columns,
                           const std::vector<std::string>& defaults);
    std::string InsertSelect(const Insert& insert, const Table& table,
                             const std::vector<const Column*>& columns,
                             const std::vector<std::string>& defaults);
    std::string DefaultValue(const Column& column, const Table& table);
    Fragment Assigned(const Fragment& value, const Column& column, const Table& table, int line);
    std::shared_ptr<Plan> Finish(std::string sql, bool writes);
};

}  // namespace embedded
