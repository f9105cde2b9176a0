#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

namespace bench {

namespace {

const std::string kColumns =
    "SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, m.MiddleName, c.CAPDNum, "
    "v.RoomID, m.Address FROM ";
// The plus keeps the yardstick from walking two million stays by date to spare itself a sort.
const std::string kNewestFirst = " ORDER BY +v.AdmDate DESC, v.IdNum DESC";
const std::string kMaster = "\"PATIENT_DATA..tbMaster\" m ";
const std::string kSheet = "\"CLINICAL_AREA..tbCAPDPatient\" c ";

// How a mode's rows are joined when the search goes by a visit's column, by the patient's name.
struct Mode {
    const char* Number;
    const char* Title;
    std::string Rows;
    std::string Condition;
    /// Beginnings of numbers that some hundred rows of this mode have.
    const char* HospNum;
    const char* IdNum;
    const char* HospNumColumn = "v.HospNum";
};

std::string Visits(const std::string& table) {
    return "\"PATIENT_DATA.." + table + "\" v JOIN " + kMaster +
           "ON m.HospNum = v.HospNum LEFT JOIN " + kSheet + "ON c.HospNum = v.HospNum ";
}

const std::string kLatest = kSheet + "JOIN " + kMaster +
                            "ON m.HospNum = c.HospNum JOIN \"PATIENT_DATA..tbOutPatient\" v ON "
                            "v.IdNum = (SELECT x.IdNum FROM "
                            "\"PATIENT_DATA..tbOutPatient\" x WHERE x.HospNum = c.HospNum ORDER BY "
                            "x.AdmDate DESC, x.IdNum DESC LIMIT 1) ";

// Nothing of this register is of today: "current" is what is not discharged.
const std::vector<Mode>& Modes() {
    static const std::vector<Mode> modes{
        {"1", "out-current", Visits("tbOutPatient"),
         " AND v.PatientType = 'O' AND v.DcrDate IS NULL", "0006", "A0012"},
        {"2", "out-all", Visits("tbOutPatient"), " AND v.PatientType = 'O'", "000600", "A001200"},
        {"3", "capd-current", kLatest, " AND v.DcrDate IS NULL", "000", "A001", "c.HospNum"},
        {"4", "capd-all", kLatest, "", "0006", "A001", "c.HospNum"},
        {"5", "emergency", Visits("tbOutPatient"), " AND v.PatientType = 'E'", "00064", "A00128"},
        {"6", "in", Visits("tbPatient"), "", "00068", "00136"}};
    return modes;
}

struct Search {
    const char* Title;
    QString HospNum;
    QString IdNum;
    QString LastName;
    const char* Column;
};

std::vector<Search> Searches(const Mode& mode) {
    return {{"lastname", {}, {}, QStringLiteral("Name0250"), "m.LastName"},
            {"hospnum", QLatin1String(mode.HospNum), {}, {}, mode.HospNumColumn},
            {"idnum", {}, QLatin1String(mode.IdNum), {}, "v.IdNum"}};
}

void Compare(const QString& name, db::Connection& connection, const QString& command,
             const BareSqlite& bare, const std::string& sql, const QString& prefix) {
    BareStatement statement(bare, sql);
    if (!prefix.isEmpty()) {
        statement.Bind(1, prefix.toStdString());
        statement.Bind(2, (prefix + QChar(0xFFFD)).toStdString());
    }
    int ours = 0;
    int theirs = 0;
    Figures figures = Alternate(
        name, 31, [&] { ours = connection.Execute(command)->RecordCount(); },
        [&] { theirs = statement.ReadAll(); });
    if (ours != theirs)
        throw std::runtime_error(name.toStdString() + ": " + std::to_string(ours) +
                                 " rows, the yardstick " + std::to_string(theirs));
    figures.Name += QStringLiteral(" (%1 rows)").arg(ours);
    Print(figures);
}

}  // namespace

// The patient search on a million patients: procedure to filled recordset, in every mode.
void SearchLarge() {
    const QString file = LargeHospital();
    const auto connection = Open(file);
    const BareSqlite bare(file);
    const QString procedure = QStringLiteral("CLINICAL_AREA..sp_CAPD_Patientsearch");
    for (const Mode& mode : Modes())
        for (const Search& search : Searches(mode)) {
            const QString prefix = search.HospNum + search.IdNum + search.LastName;
            Compare(QStringLiteral("search-1m %1 %2")
                        .arg(QLatin1String(mode.Title), QLatin1String(search.Title)),
                    *connection,
                    db::Call(procedure, {QLatin1String(mode.Number), search.HospNum, search.IdNum,
                                         search.LastName}),
                    bare,
                    kColumns + mode.Rows + "WHERE " + search.Column + " >= ?1 AND " +
                        search.Column + " < ?2" + mode.Condition + kNewestFirst,
                    prefix);
        }
    Compare(QStringLiteral("search-1m first list"), *connection,
            db::Call(procedure, {QStringLiteral("1"), {}, QStringLiteral("A"), {}}), bare,
            kColumns + Modes()[0].Rows + "WHERE 1" + Modes()[0].Condition + kNewestFirst, {});
}

}  // namespace bench
