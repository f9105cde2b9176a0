#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

namespace bench {

namespace {

constexpr int kCalls = 1000;

}  // namespace

// A thousand calls of a procedure with one indexed SELECT, beside the same prepared statement.
void ProcedureCall() {
    const QString file = DemoHospital();
    const auto connection = Open(file);
    const BareSqlite bare(file);
    BareStatement statement(
        bare,
        "SELECT UserName, EmployeeCode, EmployeeName, PasswordHash, DeptCode, Failures, "
        "LockedUntil, t_bit(CASE WHEN LockedUntil > ?2 THEN 1 ELSE 0 END) AS IsLocked "
        "FROM \"PATIENT_DATA..tbUser\" WHERE UserName = t_ltrim(t_rtrim(?1))");
    const QString command =
        db::Call(QStringLiteral("PATIENT_DATA..sp_User_Find"), {QStringLiteral("nurse1")});
    db::Recordset rows;
    Figures figures = Alternate(
        QStringLiteral("procedure-call"), 51,
        [&] {
            for (int call = 0; call < kCalls; ++call) {
                if (rows.State() != 0)
                    rows.Close();
                rows.Open(command, connection);
            }
        },
        [&] {
            for (int call = 0; call < kCalls; ++call) {
                statement.Bind(1, "nurse1");
                statement.Bind(2, "2026-01-01 00:00:00.000");
                if (statement.ReadAll() != 1)
                    throw std::runtime_error("the demo hospital has no nurse1");
            }
        });
    figures.Unit = QStringLiteral("us");
    Print(figures);
}

}  // namespace bench
