#include "embedded/Modules.h"

#include "embedded/StatementParser.h"

namespace embedded {

std::shared_ptr<Module> Modules::Procedure(const std::string& key) {
    const auto known = m_procedures.find(key);
    if (known != m_procedures.end()) {
        return known->second;
    }
    std::shared_ptr<Module> procedure = Load(key, false);
    if (procedure) {
        m_procedures.emplace(key, procedure);
    }
    return procedure;
}

std::shared_ptr<const Module> Modules::Function(const ObjectName& name,
                                                const std::string& database) {
    const std::string key = ObjectKey(name, database);
    const auto known = m_functions.find(key);
    if (known != m_functions.end()) {
        return known->second;
    }
    std::shared_ptr<Module> function = Load(key, true);
    if (!function) {
        throw Failure(4121, "Cannot find the user-defined function \"" + name.Text() + "\".",
                      name.line);
    }
    Register(key, function);
    m_functions.emplace(key, function);
    return function;
}

std::shared_ptr<Module> Modules::Load(const std::string& key, bool function) {
    const std::optional<ModuleText> text = m_catalog.FindModule(key, function);
    return text ? StatementParser::ParseModule(text->text, text->firstLine, text->database)
                : nullptr;
}

void Modules::Register(const std::string& key, const std::shared_ptr<Module>& function) {
    const int count = int(function->parameters.size());
    std::unique_ptr<Registered>& known = m_registered[key + '/' + std::to_string(count)];
    if (known) {
        known->function = function;
        return;
    }
    known = std::make_unique<Registered>(Registered{this, function});
    const int result =
        sqlite3_create_function_v2(m_database.Handle(), key.c_str(), count, SQLITE_UTF8,
                                   known.get(), &Modules::RunFunction, nullptr, nullptr, nullptr);
    if (result != SQLITE_OK) {
        throw m_database.LastFailure();
    }
}

// SQLite knows no exceptions: a failure goes through it as text.
void Modules::RunFunction(sqlite3_context* context, int, sqlite3_value** arguments) {
    const auto* registered = static_cast<Registered*>(sqlite3_user_data(context));
    const std::shared_ptr<Module> function = registered->function;
    try {
        registered->modules->m_runner(*function, context, arguments);
    } catch (const Failure& failure) {
        const std::string text = "#" + std::to_string(failure.Number()) + ":" + failure.Text();
        sqlite3_result_error(context, text.data(), int(text.size()));
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

void Modules::Forget() {
    m_procedures.clear();
    m_functions.clear();
}

}  // namespace embedded
