#pragma once

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

#include "embedded/Catalog.h"
#include "embedded/ExpressionCompiler.h"

namespace embedded {

/// The procedures and functions of the file, parsed at their first use in the session.
class Modules final : public FunctionSource {
public:
    /// Runs a function's body for SQLite.
    using Runner =
        std::function<void(Module& function, sqlite3_context* context, sqlite3_value** arguments)>;

    Modules(Database& database, Catalog& catalog, Runner runner)
        : m_database(database), m_catalog(catalog), m_runner(std::move(runner)) {}

    /// By key, "DATABASE..NAME"; null where there is none.
    std::shared_ptr<Module> Procedure(const std::string& key);
    std::shared_ptr<const Module> Function(const ObjectName& name,
                                           const std::string& database) override;
    /// Forgets what was parsed.
    void Forget();

private:
    struct Registered {
        Modules* modules;
        std::shared_ptr<Module> function;
    };
    static void RunFunction(sqlite3_context* context, int count, sqlite3_value** arguments);
    std::shared_ptr<Module> Load(const std::string& key, bool function);
    void Register(const std::string& key, const std::shared_ptr<Module>& function);

    Database& m_database;
    Catalog& m_catalog;
    Runner m_runner;
    std::unordered_map<std::string, std::shared_ptr<Module>> m_procedures;
    std::unordered_map<std::string, std::shared_ptr<Module>> m_functions;
    /// What SQLite calls, by key and number of arguments: made once, while no statement may run.
    std::unordered_map<std::string, std::unique_ptr<Registered>> m_registered;
};

}  // namespace embedded
