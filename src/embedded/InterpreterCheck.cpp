#include "embedded/Interpreter.h"

// What is found out about a procedure or function when its script is loaded.
namespace embedded {

namespace {

// What may be made after the procedure that names it: tables, procedures, functions.
bool MayComeLater(const Failure& failure) {
    return failure.Number() == 208 || failure.Number() == 4121;
}

bool WritesOrCalls(const Statement& statement) {
    return std::holds_alternative<Insert>(statement.body) ||
           std::holds_alternative<Update>(statement.body) ||
           std::holds_alternative<Delete>(statement.body) ||
           std::holds_alternative<Execute>(statement.body) ||
           std::holds_alternative<Throw>(statement.body) ||
           std::holds_alternative<BeginTransaction>(statement.body) ||
           std::holds_alternative<CommitTransaction>(statement.body) ||
           std::holds_alternative<Nothing>(statement.body);
}

}  // namespace

void Interpreter::Check(Module& module) {
    Check(module.statements, module);
}

void Interpreter::Check(std::vector<StatementPtr>& statements, Module& module) {
    for (const StatementPtr& statement : statements) {
        try {
            CheckStatement(*statement, module);
        } catch (Failure& failure) {
            if (failure.Line() == 0) {
                failure.SetLine(statement->line);
            }
            throw;
        }
    }
}

void Interpreter::CheckStatement(Statement& statement, Module& module) {
    if (module.kind == Module::Kind::Function && WritesOrCalls(statement)) {
        throw Failure(443, "Invalid use of a side-effecting statement within a function.");
    }
    if (auto* block = std::get_if<Block>(&statement.body)) {
        Check(block->statements, module);
        return;
    }
    if (auto* execute = std::get_if<Execute>(&statement.body)) {
        CheckExecute(*execute, module);
        return;
    }
    auto* result = std::get_if<Return>(&statement.body);
    const bool returns = result != nullptr && module.kind == Module::Kind::Function;
    auto* choice = std::get_if<If>(&statement.body);
    auto* loop = std::get_if<While>(&statement.body);
    auto* select = std::get_if<SelectPtr>(&statement.body);
    if (returns || choice != nullptr || loop != nullptr || select != nullptr ||
        std::holds_alternative<Insert>(statement.body) ||
        std::holds_alternative<Update>(statement.body) ||
        std::holds_alternative<Delete>(statement.body) ||
        std::holds_alternative<Assign>(statement.body)) {
        CheckPlan(statement, module);
    }
    const auto checkInner = [&](StatementPtr& inner) {
        if (inner) {
            CheckStatement(*inner, module);
        }
    };
    if (choice != nullptr) {
        checkInner(choice->then);
        checkInner(choice->otherwise);
    } else if (loop != nullptr) {
        checkInner(loop->body);
    }
}

void Interpreter::CheckPlan(Statement& statement, Module& module) {
    try {
        const std::shared_ptr<Plan> plan = Compile(statement, module);
        const bool sends =
            std::holds_alternative<SelectPtr>(statement.body) && plan->targets.empty();
        if (sends && module.kind == Module::Kind::Function) {
            throw Failure(444,
                          "Select statements included within a function cannot return data "
                          "to a client.");
        }
        m_database.Prepare(plan->sql, false);
    } catch (Failure& failure) {
        if (!MayComeLater(failure)) {
            if (failure.Line() == 0) {
                failure.SetLine(statement.line);
            }
            throw;
        }
    }
}

void Interpreter::CheckExecute(const Execute& execute, Module& module) {
    const auto procedure = Procedure(ObjectKey(execute.procedure, module.database));
    if (!procedure) {
        return;
    }
    std::vector<bool> given(procedure->parameters.size(), false);
    for (const int slot : SlotsOf(execute, *procedure)) {
        given[size_t(slot)] = true;
    }
    for (size_t slot = 0; slot < given.size(); ++slot) {
        if (!given[slot] && !procedure->parameters[slot].hasDefault) {
            throw Failure(201, "Procedure or function '" + procedure->name.name +
                                   "' expects parameter '" + procedure->variables[slot].name +
                                   "', which was not supplied.");
        }
    }
}

}  // namespace embedded
