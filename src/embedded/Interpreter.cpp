#include "embedded/Interpreter.h"

#include <cstdlib>

#include "embedded/NoRows.h"
#include "embedded/QueryCompiler.h"
#include "embedded/StatementParser.h"
#include "embedded/Text.h"

namespace embedded {

namespace {

constexpr int DeepestCall = 32;

/// Counts a level of calls while it runs.
class Level {
public:
    explicit Level(int& depth) : m_depth(depth) {
        if (m_depth >= DeepestCall) {
            throw Failure(217,
                          "Maximum stored procedure or function nesting level exceeded "
                          "(limit 32).");
        }
        ++m_depth;
    }
    ~Level() { --m_depth; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

private:
    int& m_depth;
};

}  // namespace

Interpreter::Interpreter(Database& database, Catalog& catalog, SessionState& session)
    : m_database(database),
      m_catalog(catalog),
      m_session(session),
      m_modules(database, catalog,
                [this](Module& function, sqlite3_context* context, sqlite3_value** arguments) {
                    RunFunction(function, context, arguments);
                }),
      m_definitions(database, catalog, m_modules) {}

void Interpreter::RunBatch(Module& batch, RowSink& sink) {
    Frame frame{batch, sink, std::vector<Value>(batch.variables.size()), {}, {}};
    RunAll(batch.statements, frame);
}

void Interpreter::Call(Module& procedure, const std::vector<CallArgument>& arguments,
                       RowSink& sink) {
    Frame frame{procedure, sink, std::vector<Value>(procedure.variables.size()), {}, {}};
    const size_t wanted = procedure.parameters.size();
    if (arguments.size() > wanted) {
        throw Failure(8144, "Procedure or function " + procedure.name.name +
                                " has too many arguments specified.");
    }
    for (size_t i = 0; i < wanted; ++i) {
        const Type& type = procedure.variables[i].type;
        Value& target = frame.variables[i];
        if (i >= arguments.size()) {
            GiveDefault(procedure, i, target);
        } else if (arguments[i].kind == CallArgument::Kind::Text) {
            Value text;
            text.kind = Value::Kind::Text;
            Unquote(arguments[i], text.text);
            Passed(target, type, std::move(text), Type::Varchar(Type::Max));
        } else if (arguments[i].kind == CallArgument::Kind::Number) {
            Value number;
            number.Set(qint64(std::atoi(std::string(arguments[i].raw).c_str())));
            Assigned(target, type, std::move(number), {Type::Kind::Int, 0, 0, 0});
        }
    }
    RunFrame(frame);
}

void Interpreter::RunFrame(Frame& frame) {
    const Level level(m_depth);
    const int transactions = m_session.transactions.Depth();
    try {
        RunAll(frame.module.statements, frame);
    } catch (Failure& failure) {
        // Lines inside a procedure mean nothing to its caller's text.
        failure.SetLine(0);
        throw;
    }
    if (m_session.transactions.Depth() != transactions) {
        throw Failure(266, "Transaction count after EXECUTE of '" + frame.module.name.name +
                               "' differs from the count before it.");
    }
}

void Interpreter::RunFunction(Module& function, sqlite3_context* context,
                              sqlite3_value** arguments) {
    NoRows nowhere;
    Frame frame{function, nowhere, std::vector<Value>(function.variables.size()), {}, {}};
    for (size_t i = 0; i < function.parameters.size(); ++i) {
        frame.variables[i].Read(arguments[i], function.variables[i].type);
    }
    const qint64 rowCount = m_session.rowCount;
    RunFrame(frame);
    m_session.rowCount = rowCount;
    frame.returned.Return(context);
}

Interpreter::Flow Interpreter::RunAll(std::vector<StatementPtr>& statements, Frame& frame) {
    for (const StatementPtr& statement : statements) {
        const Flow flow = Run(*statement, frame);
        if (flow != Flow::Next) {
            return flow;
        }
    }
    return Flow::Next;
}

Interpreter::Flow Interpreter::Run(Statement& statement, Frame& frame) {
    try {
        return RunBody(statement, frame);
    } catch (Failure& failure) {
        if (failure.Line() == 0) {
            failure.SetLine(statement.line);
        }
        throw;
    }
}

Interpreter::Flow Interpreter::RunBody(Statement& statement, Frame& frame) {
    if (std::holds_alternative<SelectPtr>(statement.body)) {
        RunSelect(statement, frame);
    } else if (auto* assign = std::get_if<Assign>(&statement.body)) {
        RunAssign(statement, *assign, frame);
    } else if (auto* block = std::get_if<Block>(&statement.body)) {
        return RunAll(block->statements, frame);
    } else if (auto* choice = std::get_if<If>(&statement.body)) {
        if (Holds(statement, frame)) {
            return Run(*choice->then, frame);
        }
        return choice->otherwise ? Run(*choice->otherwise, frame) : Flow::Next;
    } else if (auto* loop = std::get_if<While>(&statement.body)) {
        return RunWhile(statement, *loop, frame);
    } else if (auto* result = std::get_if<Return>(&statement.body)) {
        RunReturn(statement, *result, frame);
        return Flow::Return;
    } else if (auto* raise = std::get_if<Throw>(&statement.body)) {
        RunThrow(*raise, frame);
    } else if (auto* execute = std::get_if<Execute>(&statement.body)) {
        RunExecute(*execute, frame);
    } else if (std::holds_alternative<BeginTransaction>(statement.body)) {
        m_session.transactions.Begin();
    } else if (std::holds_alternative<CommitTransaction>(statement.body)) {
        m_session.transactions.Commit();
    } else if (std::holds_alternative<Break>(statement.body)) {
        return Flow::Break;
    } else if (std::holds_alternative<Continue>(statement.body)) {
        return Flow::Continue;
    } else if (std::holds_alternative<Insert>(statement.body) ||
               std::holds_alternative<Update>(statement.body) ||
               std::holds_alternative<Delete>(statement.body)) {
        RunWrite(statement, frame);
    } else {
        RunDefinition(statement, frame);
    }
    return Flow::Next;
}

Interpreter::Flow Interpreter::RunWhile(Statement& statement, While& loop, Frame& frame) {
    while (Holds(statement, frame)) {
        const Flow flow = Run(*loop.body, frame);
        if (flow == Flow::Break) {
            break;
        }
        if (flow == Flow::Return) {
            return flow;
        }
    }
    return Flow::Next;
}

bool Interpreter::Holds(Statement& statement, Frame& frame) {
    Plan& plan = PlanOf(statement, frame.module);
    const PlanRun run(m_database, plan);
    Bind(run.Statement(), plan, frame);
    const bool holds =
        m_database.Step(run.Statement()) && sqlite3_column_int(run.Statement(), 0) != 0;
    m_session.rowCount = 0;
    return holds;
}

void Interpreter::RunSelect(Statement& statement, Frame& frame) {
    Plan& plan = PlanOf(statement, frame.module);
    const PlanRun run(m_database, plan);
    Bind(run.Statement(), plan, frame);
    if (plan.targets.empty()) {
        SendRows(run.Statement(), plan, frame);
    } else {
        TakeRows(run.Statement(), plan, frame);
    }
}

void Interpreter::SendRows(sqlite3_stmt* statement, const Plan& plan, Frame& frame) {
    RowSink& sink = frame.sink;
    sink.BeginResult(plan.columns);
    qint64 rows = 0;
    const int count = int(plan.columns.size());
    const ResultColumn* columns = plan.columns.data();
    while (m_database.Step(statement)) {
        ++rows;
        for (int i = 0; i < count; ++i) {
            const ColumnKind kind = columns[i].Kind;
            if (kind == ColumnKind::Text || kind == ColumnKind::DateTime) {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
                if (text == nullptr) {
                    sink.Null();
                    continue;
                }
                const std::string_view view(text, size_t(sqlite3_column_bytes(statement, i)));
                kind == ColumnKind::Text ? sink.Text(view) : sink.DateTime(view);
            } else if (sqlite3_column_type(statement, i) == SQLITE_NULL) {
                sink.Null();
            } else if (kind == ColumnKind::Integer) {
                sink.Integer(sqlite3_column_int64(statement, i));
            } else {
                sink.Double(sqlite3_column_double(statement, i));
            }
        }
        sink.EndRow();
    }
    m_session.rowCount = rows;
}

void Interpreter::TakeRows(sqlite3_stmt* statement, const Plan& plan, Frame& frame) {
    // Bound texts belong to the variables: these change only after the last step.
    std::vector<Value> taken(plan.targets.size());
    qint64 rows = 0;
    while (m_database.Step(statement)) {
        ++rows;
        for (size_t i = 0; i < taken.size(); ++i) {
            const Type& type = plan.targets[i] < 0
                                   ? frame.module.returnType
                                   : frame.module.variables[size_t(plan.targets[i])].type;
            taken[i].Read(sqlite3_column_value(statement, int(i)), type);
        }
    }
    for (size_t i = 0; rows > 0 && i < taken.size(); ++i) {
        Value& target =
            plan.targets[i] < 0 ? frame.returned : frame.variables[size_t(plan.targets[i])];
        target = std::move(taken[i]);
    }
    m_session.rowCount = rows;
}

void Interpreter::RunWrite(Statement& statement, Frame& frame) {
    Plan& plan = PlanOf(statement, frame.module);
    const PlanRun run(m_database, plan);
    Bind(run.Statement(), plan, frame);
    TakeRows(run.Statement(), plan, frame);
    m_session.rowCount = sqlite3_changes64(m_database.Handle());
    m_session.changed = m_session.rowCount;
    if (plan.setsIdentity && m_session.rowCount > 0) {
        frame.identity = sqlite3_last_insert_rowid(m_database.Handle());
    }
}

void Interpreter::RunAssign(Statement& statement, const Assign& assign, Frame& frame) {
    Value& target = frame.variables[size_t(assign.slot)];
    const Type& type = frame.module.variables[size_t(assign.slot)].type;
    Value plain;
    const Type from = ReadPlain(*assign.value, &frame, plain);
    if (from.kind != Type::Kind::Condition) {
        Assigned(target, type, std::move(plain), from);
    } else {
        Plan& plan = PlanOf(statement, frame.module);
        const PlanRun run(m_database, plan);
        Bind(run.Statement(), plan, frame);
        TakeRows(run.Statement(), plan, frame);
    }
    m_session.rowCount = 1;
}

void Interpreter::RunReturn(Statement& statement, const Return& result, Frame& frame) {
    if (result.value && frame.module.kind == Module::Kind::Function) {
        Plan& plan = PlanOf(statement, frame.module);
        const PlanRun run(m_database, plan);
        Bind(run.Statement(), plan, frame);
        TakeRows(run.Statement(), plan, frame);
    }
}

void Interpreter::RunThrow(const Throw& raise, Frame& frame) {
    Value number;
    Value text;
    const Type numberType = ReadPlain(*raise.number, &frame, number);
    const Type textType = ReadPlain(*raise.text, &frame, text);
    Value shownNumber;
    Value shownText;
    Assigned(shownNumber, {Type::Kind::Int, 0, 0, 0}, std::move(number), numberType);
    Assigned(shownText, Type::Varchar(2048), std::move(text), textType);
    if (shownNumber.kind == Value::Kind::Null || shownNumber.integer < 50000) {
        throw Failure(35100, "The error number in the THROW statement must be 50000 or above.");
    }
    throw Failure(int(shownNumber.integer), shownText.text);
}

void Interpreter::RunDefinition(Statement& statement, Frame& frame) {
    std::string& database = frame.module.database;
    if (auto* use = std::get_if<UseDatabase>(&statement.body)) {
        database = use->database;
        return;
    }
    if (std::holds_alternative<Nothing>(statement.body)) {
        return;
    }
    m_session.transactions.Begin();
    if (auto* table = std::get_if<CreateTable>(&statement.body)) {
        m_definitions.Make(*table, database);
    } else if (auto* alter = std::get_if<AlterTable>(&statement.body)) {
        m_definitions.Change(*alter, database);
    } else if (auto* index = std::get_if<CreateIndex>(&statement.body)) {
        m_definitions.Make(*index, database);
    } else if (auto* drop = std::get_if<Drop>(&statement.body)) {
        m_definitions.Remove(*drop, database);
    } else {
        MakeModule(std::get<CreateModule>(statement.body), database);
    }
    m_session.transactions.Commit();
    Forget();
}

void Interpreter::MakeModule(const CreateModule& create, const std::string& database) {
    const auto module = StatementParser::ParseModule(create.text, create.firstLine, database);
    Check(*module);
    m_definitions.Save(*module, {create.text, m_script, module->database, create.firstLine});
}

void Interpreter::RunExecute(const Execute& execute, Frame& frame) {
    const auto procedure = Procedure(ObjectKey(execute.procedure, frame.module.database));
    if (!procedure) {
        throw Failure(2812, "Could not find stored procedure '" + execute.procedure.Text() + "'.");
    }
    const std::vector<int> positions = SlotsOf(execute, *procedure);
    Frame called{*procedure, frame.sink, std::vector<Value>(procedure->variables.size()), {}, {}};
    std::vector<bool> given(procedure->parameters.size(), false);
    for (size_t i = 0; i < positions.size(); ++i) {
        const ExpressionPtr& value = execute.arguments[i].value;
        if (!value) {
            continue;
        }
        const size_t slot = size_t(positions[i]);
        given[slot] = true;
        Value plain;
        const Type from = ReadPlain(*value, &frame, plain);
        Passed(called.variables[slot], procedure->variables[slot].type, std::move(plain), from);
    }
    for (size_t slot = 0; slot < given.size(); ++slot) {
        if (!given[slot]) {
            GiveDefault(*procedure, slot, called.variables[slot]);
        }
    }
    RunFrame(called);
}

Plan& Interpreter::PlanOf(Statement& statement, Module& module) {
    if (!statement.plan) {
        statement.plan = Compile(statement, module);
    }
    return *statement.plan;
}

std::shared_ptr<Plan> Interpreter::Compile(Statement& statement, Module& module) {
    QueryCompiler compiler(m_catalog, m_modules, module);
    if (auto* select = std::get_if<SelectPtr>(&statement.body)) {
        return compiler.Query(**select);
    }
    if (auto* insert = std::get_if<Insert>(&statement.body)) {
        return compiler.Insertion(*insert);
    }
    if (auto* update = std::get_if<Update>(&statement.body)) {
        return compiler.Change(*update);
    }
    if (auto* removal = std::get_if<Delete>(&statement.body)) {
        return compiler.Deletion(*removal);
    }
    if (auto* assign = std::get_if<Assign>(&statement.body)) {
        const Type& type = module.variables[size_t(assign->slot)].type;
        return compiler.Assignment(*assign->value, type, assign->slot);
    }
    if (auto* result = std::get_if<Return>(&statement.body)) {
        return compiler.Assignment(*result->value, module.returnType, -1);
    }
    if (auto* choice = std::get_if<If>(&statement.body)) {
        return compiler.Test(*choice->condition);
    }
    return compiler.Test(*std::get<While>(statement.body).condition);
}

void Interpreter::Forget() {
    m_catalog.Forget();
    m_modules.Forget();
}

}  // namespace embedded
