#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "embedded/CallText.h"
#include "embedded/Catalog.h"
#include "embedded/Definitions.h"
#include "embedded/Modules.h"
#include "embedded/PlanRun.h"
#include "embedded/RowSink.h"
#include "embedded/SessionState.h"
#include "embedded/Value.h"

namespace embedded {

/// Runs the statements of procedures, functions and batches: control flow here, everything that
/// reads or calculates through statements of SQLite.
class Interpreter final {
public:
    Interpreter(Database& database, Catalog& catalog, SessionState& session);

    /// Runs a batch of a script, or the one statement of a client command.
    void RunBatch(Module& batch, RowSink& sink);
    /// A procedure with the plain arguments of a command text.
    void Call(Module& procedure, const std::vector<CallArgument>& arguments, RowSink& sink);
    std::shared_ptr<Module> Procedure(const std::string& key) { return m_modules.Procedure(key); }
    /// Compiles every statement, so that a script learns at once what cannot work. Tables,
    /// procedures and functions that do not exist yet are left for later.
    void Check(Module& module);
    /// Forgets procedures and functions, because the file's have changed.
    void Forget();
    /// Called with the script's name for the procedures and functions that a batch makes.
    void SetScript(const std::string& name) { m_script = name; }

private:
    /// One run of a procedure, function or batch.
    struct Frame {
        Module& module;
        RowSink& sink;
        std::vector<Value> variables;
        Value returned;
        std::optional<qint64> identity;
    };
    enum class Flow { Next, Break, Continue, Return };

    Flow Run(Statement& statement, Frame& frame);
    Flow RunAll(std::vector<StatementPtr>& statements, Frame& frame);
    Flow RunBody(Statement& statement, Frame& frame);
    Flow RunWhile(Statement& statement, While& loop, Frame& frame);
    void RunFrame(Frame& frame);
    void RunDefinition(Statement& statement, Frame& frame);
    void MakeModule(const CreateModule& create, const std::string& database);
    void RunFunction(Module& function, sqlite3_context* context, sqlite3_value** arguments);

    void RunSelect(Statement& statement, Frame& frame);
    void RunWrite(Statement& statement, Frame& frame);
    void RunAssign(Statement& statement, const Assign& assign, Frame& frame);
    void RunReturn(Statement& statement, const Return& result, Frame& frame);
    [[noreturn]] void RunThrow(const Throw& raise, Frame& frame);
    void RunExecute(const Execute& execute, Frame& frame);
    bool Holds(Statement& statement, Frame& frame);
    void SendRows(sqlite3_stmt* statement, const Plan& plan, Frame& frame);
    /// Steps to the end; the last row's values go into variables of the frame.
    void TakeRows(sqlite3_stmt* statement, const Plan& plan, Frame& frame);

    /// The plan of a statement, compiled when `module` first needs it.
    Plan& PlanOf(Statement& statement, Module& module);
    std::shared_ptr<Plan> Compile(Statement& statement, Module& module);
    void Bind(sqlite3_stmt* statement, const Plan& plan, const Frame& frame);

    void Check(std::vector<StatementPtr>& statements, Module& module);
    void CheckStatement(Statement& statement, Module& module);
    void CheckPlan(Statement& statement, Module& module);
    void CheckExecute(const Execute& execute, Module& module);

    /// The parameter that each argument goes to.
    static std::vector<int> SlotsOf(const Execute& execute, const Module& procedure);
    /// A constant or variable with its type; a condition's type where the expression is neither.
    Type ReadPlain(const Expression& expression, const Frame* frame, Value& value) const;
    void Assigned(Value& target, const Type& type, Value value, const Type& from);
    /// A text that does not fit a parameter's type is the caller's error 8114.
    void Passed(Value& target, const Type& type, Value value, const Type& from);
    void GiveDefault(const Module& module, size_t slot, Value& target);

    Database& m_database;
    Catalog& m_catalog;
    SessionState& m_session;
    Modules m_modules;
    Definitions m_definitions;
    std::unordered_map<std::string, PreparedStatement> m_conversions;
    std::string m_script;
    int m_depth = 0;
};

}  // namespace embedded
