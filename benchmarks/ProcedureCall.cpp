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
    const QString doctor =
        connection->Execute(QStringLiteral("SELECT TOP (1) DoctorID FROM PATIENT_DATA..tbDoctor"))
            ->Fields(0)
            .Text();
    const QString command = db::Call(QStringLiteral("PATIENT_DATA..sp_Doctor_Find"), {doctor});
    BareStatement statement(bare,
                            "SELECT DoctorID, LastName, FirstName, MiddleName, Specialty FROM "
                            "\"PATIENT_DATA..tbDoctor\" WHERE DoctorID = t_ltrim(t_rtrim(?1))");
    const std::string bound = doctor.toStdString();
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
                statement.Bind(1, bound);
                if (statement.ReadAll() != 1)
                    throw std::runtime_error("the demo hospital has no doctors");
            }
        });
    figures.Unit = QStringLiteral("us");
    Print(figures);
}

}  // namespace bench
