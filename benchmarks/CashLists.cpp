#include <QLineEdit>
#include <QTest>

#include "app/mdiCAPD.h"
#include "assessment/frmAssessmentStatus.h"
#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "toolkit/ListView.h"

namespace bench {

namespace {

constexpr int kAssessments = 50'000;

QString HospitalOfAssessments() {
    const QString path = CopyOfDemoHospital(QStringLiteral(".assessments"));
    BareSqlite file(path);
    file.Run("BEGIN");
    file.Run("DELETE FROM \"BILLING..tbCashAssessment\"");
    BareStatement line(
        file,
        "INSERT INTO \"BILLING..tbCashAssessment\" (PatientName, RevenueID, ItemCode, Quantity, "
        "Amount, UserID, RefNum, IdNum, RecordStatus, DoctorID, HospNum, RequestDoctor, ORNum, "
        "TransDate) SELECT LastName || ', ' || FirstName, ?1, ?2, 1.0, 450.0, '4602', ?3, 'T' || "
        "HospNum || 'C', 'N', '101', HospNum, 'DR. X', ?4, ?5 FROM \"PATIENT_DATA..tbMaster\" "
        "WHERE HospNum = ?6");
    for (int number = 0; number < kAssessments; ++number) {
        const bool isSupply = number % 2 == 1;
        line.Bind(1, isSupply ? "CA" : "CY");
        line.Bind(2, std::to_string(isSupply ? 105 + number % 9 : 501 + number % 6));
        line.Bind(3, "C" + std::to_string(20000 + number / 2) + "D");
        line.Bind(4, number % 3 ? "700123" : "");
        line.Bind(5, QDateTime(QDate(2024, 1, 1), QTime(8, 0))
                         .addSecs(number / 2 * 60)
                         .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"))
                         .toStdString());
        line.Bind(6, std::to_string(200001 + number / 2 % 2000));
        line.Write();
    }
    file.Run("COMMIT");
    return path;
}

// The yardstick's age: today's date stands in the text, so that no row has to ask for it.
std::string AgeOfToday() {
    const QDate today = QDate::currentDate();
    return QStringLiteral(
               "%1 - CAST(substr(m.BirthDate, 1, 4) AS INTEGER) - ('%2' < "
               "substr(m.BirthDate, 6, 5))")
        .arg(today.year())
        .arg(today.toString(QStringLiteral("MM-dd")))
        .toStdString();
}

}  // namespace

// The status list of 50,000 lines, from Enter to painted.
void StatusList() {
    const QString file = HospitalOfAssessments();
    const auto frame = StartSession(file);
    frmAssessmentStatus window;
    window.show();
    auto* list = window.findChild<toolkit::ListView*>();
    auto* box = window.findChild<QLineEdit*>(QStringLiteral("txtSearch"));
    const BareSqlite bare(file);
    BareStatement statement(
        bare,
        "SELECT a.PatientName, a.ItemCode, COALESCE(o.OtherRevenue, g.DrugName), a.Quantity, "
        "a.RefNum, a.Amount, CASE WHEN a.RecordStatus = 'R' THEN 'REVOKED' WHEN a.ORNum > '' THEN "
        "'OR ' || a.ORNum ELSE 'PENDING' END, a.RecordStatus, a.AssessID, a.IdNum, a.RevenueID, "
        "a.RequestDoctor, " +
            AgeOfToday() +
            ", m.Sex, CASE WHEN m.MSSClassification > '' THEN 'S' ELSE 'P' END, a.HospNum, "
            "a.TransDate FROM \"BILLING..tbCashAssessment\" a LEFT JOIN "
            "\"BILLING..tbOtherRevenue\" o ON o.RevenueID = a.RevenueID AND o.ItemCode = "
            "a.ItemCode LEFT JOIN \"BILLING..tbDrug\" g ON g.DrugCode = a.ItemCode LEFT JOIN "
            "\"PATIENT_DATA..tbMaster\" m ON m.HospNum = a.HospNum ORDER BY a.TransDate DESC, "
            "a.AssessID");
    Print(Alternate(
        QStringLiteral("status-50k"), 7,
        [&] {
            QTest::keyClick(box, Qt::Key_Return);
            list->viewport()->repaint();
            if (list->model()->rowCount() != kAssessments)
                throw std::runtime_error("the status list is not complete");
        },
        [&] {
            if (statement.ReadAll() != kAssessments)
                throw std::runtime_error("the yardstick read another list");
        }));
}

// The listing's search on a million patients: procedure to filled recordset.
void ListingLarge() {
    const QString file = LargeHospital();
    const auto connection = Open(file);
    const BareSqlite bare(file);
    const std::string columns =
        "SELECT m.HospNum, m.LastName, m.FirstName, m.MiddleName, m.BirthDate, m.CivilStatus, "
        "m.Sex, " +
        AgeOfToday() +
        ", m.HouseStreet, "
        "m.Barangay, m.Town, m.Province FROM \"PATIENT_DATA..tbMaster\" m WHERE ";
    const std::string byName =
        "m.LastName >= ?1 AND m.LastName < ?2 ORDER BY m.LastName, m.FirstName LIMIT 500";
    const std::string byNumber =
        "m.HospNum IN (SELECT v.HospNum FROM \"PATIENT_DATA..tbOutPatient\" v WHERE v.IdNum >= ?1 "
        "AND v.IdNum < ?2 ORDER BY v.IdNum LIMIT 500) ORDER BY m.LastName, m.FirstName";
    const struct {
        const char* Title;
        const char* By;
        const char* Text;
        std::string Where;
    } searches[] = {{"lastname", "0", "Name02", byName},
                    {"no text", "0", "", byName},
                    {"number", "1", "A0012", byNumber},
                    {"number without text", "1", "", byNumber}};
    for (const auto& search : searches) {
        const QString text = QLatin1String(search.Text);
        const QString command = db::Call(QStringLiteral("RADIOLOGY..spGlobal_RegularPatients"),
                                         {QStringLiteral("0"), QLatin1String(search.By), text});
        BareStatement statement(bare, columns + search.Where);
        statement.Bind(1, text.toStdString());
        statement.Bind(2, (text + QChar(0xFFFD)).toStdString());
        int ours = 0, theirs = 0;
        Figures figures = Alternate(
            QStringLiteral("listing-1m ") + QLatin1String(search.Title), 31,
            [&] { ours = connection->Execute(command)->RecordCount(); },
            [&] { theirs = statement.ReadAll(); });
        if (ours != theirs)
            throw std::runtime_error("the yardstick found others than the listing");
        figures.Name += QStringLiteral(" (%1 rows)").arg(ours);
        Print(figures);
    }
}

}  // namespace bench
