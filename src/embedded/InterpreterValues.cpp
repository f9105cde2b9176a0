#include <QByteArray>
#include <cstdlib>

#include "embedded/Fragment.h"
#include "embedded/Interpreter.h"
#include "embedded/Text.h"

// How values reach variables, parameters and statements.
namespace embedded {

void Interpreter::GiveDefault(const Module& module, size_t slot, Value& target) {
    const Parameter& parameter = module.parameters[slot];
    if (!parameter.hasDefault) {
        throw Failure(201, "Procedure or function '" + module.name.name + "' expects parameter '" +
                               module.variables[slot].name + "', which was not supplied.");
    }
    Value value;
    const Type from = ReadPlain(*parameter.defaultValue, nullptr, value);
    Assigned(target, module.variables[slot].type, std::move(value), from);
}

std::vector<int> Interpreter::SlotsOf(const Execute& execute, const Module& procedure) {
    std::vector<int> positions;
    for (const Argument& argument : execute.arguments) {
        size_t slot = positions.size();
        if (!argument.name.empty()) {
            slot = 0;
            while (slot < procedure.parameters.size() &&
                   !SameName(procedure.variables[slot].name, argument.name)) {
                ++slot;
            }
            if (slot == procedure.parameters.size()) {
                throw Failure(8145, argument.name + " is not a parameter for procedure " +
                                        procedure.name.name + ".");
            }
        }
        if (slot >= procedure.parameters.size()) {
            throw Failure(8144, "Procedure or function " + procedure.name.name +
                                    " has too many arguments specified.");
        }
        positions.push_back(int(slot));
    }
    return positions;
}

void Interpreter::Bind(sqlite3_stmt* statement, const Plan& plan, const Frame& frame) {
    using Source = PlanParameter::Source;
    int index = 0;
    for (const PlanParameter& parameter : plan.parameters) {
        ++index;
        switch (parameter.source) {
            case Source::Variable:
                frame.variables[size_t(parameter.slot)].Bind(statement, index);
                break;
            case Source::Now: {
                const std::string now = SessionState::Now();
                sqlite3_bind_text(statement, index, now.data(), int(now.size()), SQLITE_TRANSIENT);
                break;
            }
            case Source::RowCount:
                sqlite3_bind_int64(statement, index, m_session.rowCount);
                break;
            case Source::SessionId:
                sqlite3_bind_int64(statement, index, m_session.Id());
                break;
            case Source::TransactionDepth:
                sqlite3_bind_int(statement, index, m_session.transactions.Depth());
                break;
            case Source::Identity:
                frame.identity ? sqlite3_bind_int64(statement, index, *frame.identity)
                               : sqlite3_bind_null(statement, index);
        }
    }
}

Type Interpreter::ReadPlain(const Expression& expression, const Frame* frame, Value& value) const {
    switch (expression.kind) {
        case Expression::Kind::Null:
            return {};
        case Expression::Kind::Text:
            value.kind = Value::Kind::Text;
            value.text = expression.text;
            return expression.type;
        case Expression::Kind::Number:
            if (expression.type.kind == Type::Kind::Int) {
                value.Set(qint64(std::atoll(expression.text.c_str())));
            } else {
                value.Set(QByteArray::fromStdString(expression.text).toDouble());
            }
            return expression.type;
        case Expression::Kind::Variable:
            if (frame != nullptr) {
                value = frame->variables[size_t(expression.slot)];
                return expression.type;
            }
            break;
        case Expression::Kind::Negative: {
            const Type type = ReadPlain(*expression.operands[0], nullptr, value);
            if (type.IsNumber()) {
                value.kind == Value::Kind::Integer ? value.Set(-value.integer)
                                                   : value.Set(-value.real);
                return type;
            }
            break;
        }
        default:
            break;
    }
    return {Type::Kind::Condition, 0, 0, 0};
}

void Interpreter::Assigned(Value& target, const Type& type, Value value, const Type& from) {
    if (value.kind == Value::Kind::Null || from.kind == type.kind) {
        if (type.IsText() && value.kind == Value::Kind::Text) {
            CutText(value.text, type.length);
        }
        if (type.kind != Type::Kind::Decimal || value.kind == Value::Kind::Null || from == type) {
            target = std::move(value);
            return;
        }
    }
    const std::string sql = "SELECT " + Converted({"?1", from}, type, 0).sql;
    PreparedStatement& statement = m_conversions[sql];
    if (!statement) {
        statement = m_database.Prepare(sql);
    }
    const StatementReset reset(statement.get());
    value.Bind(statement.get(), 1);
    m_database.Step(statement.get());
    target.Read(sqlite3_column_value(statement.get(), 0), type);
}

void Interpreter::Passed(Value& target, const Type& type, Value value, const Type& from) {
    try {
        Assigned(target, type, std::move(value), from);
    } catch (const Failure& failure) {
        const int number = failure.Number();
        if (!from.IsText() || (number != 245 && number != 241 && number != 242 && number != 235)) {
            throw;
        }
        const std::string name = type.Name();
        throw Failure(
            8114, "Error converting data type varchar to " + name.substr(0, name.find('(')) + ".");
    }
}

}  // namespace embedded
