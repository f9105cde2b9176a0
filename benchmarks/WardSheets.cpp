#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "app/mdiCAPD.h"
#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "benchmarks/Visitor.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"
#include "wardrequests/NurseLogBook.h"
#include "wardrequests/frmPHEntry.h"

namespace bench {

namespace {

constexpr double kFrameMilliseconds = 1000.0 / 60;
constexpr int kLines = 50;

QString Code(int line) {
    return QString::number(20001 + line);
}

// Every line is of another medicine: none waits twice.
void AddMedicines(BareSqlite& file) {
    BareStatement medicine(
        file,
        "INSERT INTO \"BILLING..tbDrug\" (DrugCode, DrugName, Kind, Unit, "
        "Status, SellingPriceIn, SellingPriceOut) VALUES (?1, 'AMLODIPINE 5 MG', "
        "'M', 'TAB', 0, 8.5, 9.25)");
    for (int line = 0; line < kLines; ++line) {
        medicine.Bind(1, Code(line).toStdString());
        medicine.Write();
    }
}

std::vector<WardRequestLine> Lines() {
    std::vector<WardRequestLine> lines;
    for (int line = 0; line < kLines; ++line)
        lines.push_back({Code(line), QStringLiteral("AMLODIPINE 5 MG"), QStringLiteral("BID"),
                         QStringLiteral("2"), QStringLiteral("17"), QStringLiteral("WITH FOOD"),
                         QStringLiteral("8.5")});
    return lines;
}

// The same questions and rows, prepared once, in one transaction.
class BareLogBook final {
public:
    explicit BareLogBook(BareSqlite& file)
        : m_file(file),
          m_visit(
              file,
              "SELECT 1 FROM \"PATIENT_DATA..tbOutPatient\" WHERE IdNum = ?1 AND BillingDate IS "
              "NOT NULL"),
          m_stay(
              file,
              "SELECT 1 FROM \"PATIENT_DATA..tbPatient\" WHERE IdNum = ?1 AND BillingDate IS NOT "
              "NULL"),
          m_item(file, "SELECT 1 FROM \"BILLING..tbDrug\" WHERE DrugCode = ?1 AND Status = 0"),
          m_waiting(file,
                    "SELECT 1 FROM \"STATION..tbNurseLogBook\" WHERE IdNum = ?1 AND ItemCode = ?2 "
                    "AND DeptID = 'PH' AND RecordStatus = ' '"),
          m_request(
              file,
              "INSERT INTO \"STATION..tbNurseLogBook\" (HospNum, IdNum, PatientType, ItemCode, "
              "ItemName, Amount, Quantity, Dosage, RequestDate, DeptID, RecordStatus, "
              "RequestedBy, Remarks, Station, UnitPrice, Option1, Option2, Option3, Option4, "
              "Option5, Option6, Option7) VALUES ('7', ?8, 'O', ?1, ?2, CAST(?3 AS REAL), "
              "CAST(?4 AS REAL), ?5, '2026-01-31 10:00:00.000', 'PH', ' ', '4601', ?6, 'CAPD', "
              "CAST(?7 AS REAL), '', ' ', 'Y', '0', '0', '0', '0')") {}

    void Write(const std::string& visit, const std::vector<WardRequestLine>& lines) {
        m_file.Run("BEGIN IMMEDIATE");
        for (const WardRequestLine& line : lines) {
            const std::string code = line.Code.toStdString();
            m_visit.Bind(1, visit);
            m_stay.Bind(1, visit);
            m_item.Bind(1, code);
            m_waiting.Bind(1, visit);
            m_waiting.Bind(2, code);
            if (m_visit.ReadAll() + m_stay.ReadAll() + m_waiting.ReadAll() != 0 ||
                m_item.ReadAll() != 1)
                throw std::runtime_error("the item cannot be requested");
            int position = 0;
            for (const QString& text : {line.Code, line.Description, line.Amount, line.Quantity,
                                        line.Frequency, line.Remarks, line.UnitPrice})
                m_request.Bind(++position, text.toStdString());
            m_request.Bind(++position, visit);
            m_request.Write();
        }
        m_file.Run("COMMIT");
    }

private:
    BareSqlite& m_file;
    BareStatement m_visit, m_stay, m_item, m_waiting, m_request;
};

int Written(const BareSqlite& file) {
    BareStatement count(file, "SELECT 1 FROM \"STATION..tbNurseLogBook\" WHERE IdNum LIKE '%V'");
    return count.ReadAll();
}

}  // namespace

// From Enter on a medicine's code until its line, checked and filled, has been painted.
void WardEnter() {
    const auto frame = StartSession(DemoHospital());
    Visitor patient(QStringLiteral("7"), QStringLiteral("A7B"));
    frmPHEntry window(patient);
    window.show();
    if (!QTest::qWaitForWindowActive(&window))
        throw std::runtime_error("the request window does not come to the front");
    auto* grid = window.findChild<toolkit::FlexGrid*>();
    auto* box = window.findChild<QLineEdit*>(QStringLiteral("txtEntry"));
    bool other = false;
    const auto enter = [&] {
        other = !other;
        QTest::keyClick(box, Qt::Key_Home);
        QTest::keyClicks(box, other ? QStringLiteral("1001") : QStringLiteral("1002"));
        const double taken = Milliseconds([&] {
            QTest::keyClick(box, Qt::Key_Return);
            QCoreApplication::processEvents();
        });
        if (grid->TextMatrix(1, WardColumn::Code) != (other ? u"1001" : u"1002") ||
            grid->Col() != WardColumn::Frequency)
            throw std::runtime_error("the line was not filled");
        return taken;
    };
    Print(AlternateTimed(QStringLiteral("ward-enter"), QStringLiteral("ms"), 101, enter,
                         [] { return kFrameMilliseconds; }));
}

// Fifty lines into the log book, each for a visit of its own, first command to commit, beside the
// same questions and rows through the bare library in one transaction.
void WardSave50() {
    const QString path = CopyOfDemoHospital(QStringLiteral("-ward"));
    const auto connection = Open(path);
    BareSqlite file(path);
    AddMedicines(file);
    BareLogBook bare(file);
    const std::vector<WardRequestLine> lines = Lines();
    int visits = 0;
    const auto nextVisit = [&visits] { return QStringLiteral("A%1V").arg(++visits); };
    const Figures figures = Alternate(
        QStringLiteral("ward-save-50"), 51,
        [&] {
            AppendToNurseLogBook(
                *connection,
                {QStringLiteral("7"), nextVisit(), QStringLiteral("PH"), QStringLiteral("4601")},
                lines);
        },
        [&] { bare.Write(nextVisit().toStdString(), lines); });
    if (Written(file) != 2 * 52 * kLines)
        throw std::runtime_error("not every request was written");
    Print(figures);
}

}  // namespace bench
