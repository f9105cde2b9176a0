#pragma once

#include "embedded/Plan.h"

namespace embedded {

/// One run of a plan. A function that calls itself finds its own statement still running and
/// takes a second one for the time.
class PlanRun final {
public:
    PlanRun(Database& database, Plan& plan) : m_plan(plan), m_owner(!plan.running) {
        if (!m_owner) {
            m_second = database.Prepare(plan.sql, false);
            m_statement = m_second.get();
            return;
        }
        if (!plan.statement) {
            plan.statement = database.Prepare(plan.sql);
        }
        m_statement = plan.statement.get();
        plan.running = true;
    }
    ~PlanRun() {
        sqlite3_reset(m_statement);
        if (m_owner) {
            m_plan.running = false;
        }
    }
    PlanRun(const PlanRun&) = delete;
    PlanRun& operator=(const PlanRun&) = delete;

    sqlite3_stmt* Statement() const { return m_statement; }

private:
    Plan& m_plan;
    bool m_owner;
    PreparedStatement m_second;
    sqlite3_stmt* m_statement = nullptr;
};

}  // namespace embedded
