#pragma once

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "embedded/Type.h"

/// What the parser makes of a text, before names are looked up.
namespace embedded {

struct Expression;
struct Select;
struct Statement;
struct Plan;
using ExpressionPtr = std::unique_ptr<Expression>;
using SelectPtr = std::unique_ptr<Select>;
using StatementPtr = std::unique_ptr<Statement>;

/// A table, procedure or function as it is written.
struct ObjectName {
    /// Empty where it is left to the surroundings.
    std::string database;
    std::string name;
    bool hasOwner = false;
    int line = 0;

    std::string Text() const {
        if (database.empty()) {
            return hasOwner ? "dbo." + name : name;
        }
        return database + (hasOwner ? ".dbo." : "..") + name;
    }
};

struct Expression {
    enum class Kind {
        Null,
        Number,
        Text,
        Variable,
        /// @@ROWCOUNT and its like, by upper-case name in `text`.
        SystemVariable,
        /// `text`, of the table or alias `qualifier` where that is not empty.
        Column,
        Negative,
        /// + - * / % in `text`.
        Arithmetic,
        /// = <> < <= > >= in `text`.
        Comparison,
        And,
        Or,
        Not,
        IsNull,
        Between,
        /// operands[0] among the others, or in `select`.
        In,
        Like,
        Exists,
        /// Pairs of condition and value, the ELSE value last (always there, perhaps Null).
        Case,
        /// A built-in function, by upper-case name in `text`.
        Call,
        /// CAST, CONVERT and TRY_CONVERT: operands[0] to `type`, the style in `style`.
        Convert,
        /// A function of the scripts, in `function`.
        UserCall,
        Subquery
    };

    Kind kind = Kind::Null;
    int line = 0;
    std::string text;
    std::string qualifier;
    std::vector<ExpressionPtr> operands;
    SelectPtr select;
    Type type;
    ObjectName function;
    int slot = -1;
    std::optional<int> style;
    /// NOT IN, NOT LIKE, NOT BETWEEN, IS NOT NULL; of TRY_CONVERT; of COUNT(DISTINCT x).
    bool negated = false;
    bool attempt = false;
    bool distinct = false;
};

struct SelectItem {
    /// Null for `*`.
    ExpressionPtr value;
    std::string alias;
    /// Of `t.*`.
    std::string qualifier;
    /// The variable that takes the value; -1 for a result column.
    int slot = -1;
    int line = 0;
};

struct TableSource {
    ObjectName name;
    std::string alias;
    /// "JOIN", "LEFT JOIN", ... as SQLite writes it; empty for the first.
    std::string join;
    ExpressionPtr condition;
};

struct SelectBranch {
    bool distinct = false;
    ExpressionPtr top;
    std::vector<SelectItem> items;
    std::vector<TableSource> sources;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;
};

struct OrderItem {
    ExpressionPtr value;
    bool descending = false;
};

/// One SELECT, or several joined by UNION ALL.
struct Select {
    std::vector<SelectBranch> branches;
    std::vector<OrderItem> orderBy;
    int line = 0;
};

struct Insert {
    ObjectName table;
    std::vector<std::string> columns;
    std::vector<std::vector<ExpressionPtr>> rows;
    SelectPtr select;
};

struct UpdateItem {
    std::string column;
    ExpressionPtr value;
    /// The variable of `@n = c = value`; -1 for none.
    int slot = -1;
    int line = 0;
};

struct Update {
    ObjectName table;
    std::vector<UpdateItem> items;
    ExpressionPtr where;
};

struct Delete {
    ObjectName table;
    ExpressionPtr where;
};

/// SET @v = value, and DECLARE @v type = value.
struct Assign {
    int slot = -1;
    ExpressionPtr value;
};

struct Block {
    std::vector<StatementPtr> statements;
};

struct If {
    ExpressionPtr condition;
    StatementPtr then;
    StatementPtr otherwise;
};

struct While {
    ExpressionPtr condition;
    StatementPtr body;
};

struct Return {
    ExpressionPtr value;
};

struct Throw {
    ExpressionPtr number;
    ExpressionPtr text;
};

struct Argument {
    /// Upper-case, with @; empty for one given by position.
    std::string name;
    /// A constant, a variable, or DEFAULT as null pointer.
    ExpressionPtr value;
};

struct Execute {
    ObjectName procedure;
    std::vector<Argument> arguments;
};

struct BeginTransaction {};
struct CommitTransaction {};
struct Break {};
struct Continue {};

struct ColumnDefinition {
    std::string name;
    Type type;
    bool nullable = true;
    bool identity = false;
    bool primaryKey = false;
    bool unique = false;
    /// The default and the conditions as written.
    std::string defaultText;
    std::vector<std::string> checks;
    int line = 0;
};

struct TableDefinition {
    std::vector<ColumnDefinition> columns;
    std::vector<std::string> primaryKey;
    std::vector<std::vector<std::string>> uniques;
    std::vector<std::string> checks;
};

struct CreateTable {
    ObjectName table;
    TableDefinition definition;
};

/// Adds columns, or gives one that is there another collation.
struct AlterTable {
    ObjectName table;
    TableDefinition definition;
    bool changes = false;
};

struct CreateIndex {
    std::string name;
    ObjectName table;
    bool unique = false;
    /// Column and, where asked for, " DESC".
    std::vector<std::pair<std::string, bool>> columns;
};

struct Drop {
    enum class Kind { Table, Procedure, Function, Index };
    Kind kind = Kind::Table;
    ObjectName name;
    /// Of an index.
    ObjectName table;
};

/// CREATE PROCEDURE and CREATE FUNCTION; the text is parsed for itself.
struct CreateModule {
    std::string text;
    int firstLine = 1;
};

struct UseDatabase {
    std::string database;
};

/// Accepted and without effect here: SET options, roles and rights.
struct Nothing {};

struct Statement {
    int line = 0;
    std::variant<Nothing, SelectPtr, Insert, Update, Delete, Assign, Block, If, While, Return,
                 Throw, Execute, BeginTransaction, CommitTransaction, Break, Continue, CreateTable,
                 AlterTable, CreateIndex, Drop, CreateModule, UseDatabase>
        body;
    /// What the statement needs of SQLite, made at its first run.
    std::shared_ptr<Plan> plan;
};

struct Variable {
    std::string name;
    Type type;
};

struct Parameter {
    bool hasDefault = false;
    /// A constant.
    ExpressionPtr defaultValue;
};

/// A procedure, a function, or the statements of one batch.
struct Module {
    enum class Kind { Procedure, Function, Batch };
    Kind kind = Kind::Batch;
    ObjectName name;
    /// What unqualified names belong to.
    std::string database;
    /// The first of the variables.
    std::vector<Parameter> parameters;
    std::vector<Variable> variables;
    Type returnType;
    std::vector<StatementPtr> statements;
};

}  // namespace embedded
