#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "embedded/Catalog.h"
#include "embedded/Fragment.h"
#include "embedded/Plan.h"

namespace embedded {

/// Finds the scripts' own scalar functions.
class FunctionSource {
public:
    virtual ~FunctionSource() = default;
    /// Makes the function known to SQLite too. Throws Failure for an unknown one.
    virtual std::shared_ptr<const Module> Function(const ObjectName& name,
                                                   const std::string& database) = 0;
};

/// The tables whose columns an expression may name; inner queries see the outer ones.
struct Scope {
    struct Source {
        std::string alias;
        const Table* table;
    };
    std::vector<Source> sources;
    const Scope* outer = nullptr;
    /// Columns stand without their table, as a table's own conditions need them.
    bool bare = false;
};

/// Turns values and conditions into pieces of SQLite statements, by type.
class ExpressionCompiler {
protected:
    ExpressionCompiler(Catalog& catalog, FunctionSource& functions, const Module& module)
        : m_catalog(catalog), m_functions(functions), m_module(module) {}
    ~ExpressionCompiler() = default;

    struct Selected {
        std::string sql;
        std::vector<std::string> names;
        std::vector<Fragment> values;
    };
    /// An inner query.
    virtual Selected Subselect(const Select& select, const Scope& outer) = 0;

    Fragment Value(const Expression& expression, const Scope& scope);
    std::string Condition(const Expression& expression, const Scope& scope);

    /// What grouping asks of the columns of one scope: each stands in a key or in an aggregate.
    struct Grouping {
        const Scope* scope;
        std::vector<std::string> keys;
        std::vector<const Expression*> loose;
        bool aggregates = false;
        int insideAggregate = 0;
        Grouping* outer;
    };
    Grouping* m_grouping = nullptr;

    std::vector<PlanParameter> m_parameters;
    Catalog& m_catalog;
    FunctionSource& m_functions;
    const Module& m_module;

private:
    Fragment Compile(const Expression& expression, const Scope& scope);
    Fragment CompileKind(const Expression& expression, const Scope& scope);
    Fragment Constant(const Expression& expression) const;
    Fragment Parameter(PlanParameter::Source source, const Type& type, int slot = -1);
    Fragment SystemVariable(const Expression& expression);
    Fragment ColumnOf(const Expression& expression, const Scope& scope);
    Fragment Negative(const Expression& expression, const Scope& scope);
    Fragment Arithmetic(const Expression& expression, const Scope& scope);
    Fragment Case(const Expression& expression, const Scope& scope);
    Fragment Call(const Expression& expression, const Scope& scope);
    Fragment Aggregate(const Expression& expression, const Scope& scope);
    Fragment Conversion(const Expression& expression, const Scope& scope);
    Fragment UserCall(const Expression& expression, const Scope& scope);
    Fragment Subquery(const Expression& expression, const Scope& scope);
    Fragment ConditionOf(const Expression& expression, const Scope& scope);
    std::string Joined(const Expression& expression, const char* word, const Scope& scope);
    std::string Between(const Expression& expression, const Scope& scope);
    std::string In(const Expression& expression, const Scope& scope);
    std::string InSelect(const Expression& expression, const Scope& scope);
    std::string Like(const Expression& expression, const Scope& scope);
    void NoteColumn(const Expression& expression, const Scope& scope);
};

}  // namespace embedded
