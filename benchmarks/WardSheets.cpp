#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "app/mdiCAPD.h"
#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "patients/PatientOnScreen.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"
#include "wardrequests/NurseLogBook.h"
#include "wardrequests/frmPHEntry.h"

namespace bench {

namespace {

constexpr double kFrameMilliseconds = 1000.0 / 60;
constexpr int kLines = 50;

class Visitor final : public PatientOnScreen {
public:
    QString HospNum() const override { return QStringLiteral("7"); }
    QString IdNum() const override { return QStringLiteral("A7B"); }
    QString CAPDNum() const override { return {}; }
    QString LastName() const override { return QStringLiteral("Visitor"); }
    QString FirstName() const override { return {}; }
    QString MiddleName() const override { return {}; }
    QString Age() const override { return {}; }
    QString Sex() const override { return {}; }
    QString Company() const override { return {}; }
    void Get_CanPenProc() override {}
};

std::vector<WardRequestLine> Lines() {
    std::vector<WardRequestLine> lines;
    for (int line = 0; line < kLines; ++line)
        lines.push_back({QString::number(1001 + line), QStringLiteral("AMLODIPINE 5 MG"),
                         QStringLiteral("BID"), QStringLiteral("2"), QStringLiteral("17"),
                         QStringLiteral("WITH FOOD"), QStringLiteral("8.5")});
    return lines;
}

// The same rows, prepared once, in one transaction.
void WriteBare(BareSqlite& file, BareStatement& request,
               const std::vector<WardRequestLine>& lines) {
    file.Run("BEGIN IMMEDIATE");
    for (const WardRequestLine& line : lines) {
        int position = 0;
        for (const QString& text : {line.Code, line.Description, line.Amount, line.Quantity,
                                    line.Frequency, line.Remarks, line.UnitPrice})
            request.Bind(++position, text.toStdString());
        request.Write();
    }
    file.Run("COMMIT");
}

int Written(const BareSqlite& file) {
    BareStatement count(file, "SELECT 1 FROM \"STATION..tbNurseLogBook\" WHERE IdNum = 'A7B'");
    return count.ReadAll();
}

}  // namespace

// From Enter on a medicine's code until its line, checked and filled, has been painted.
void WardEnter() {
    const auto frame = StartSession(DemoHospital());
    Visitor patient;
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

// Fifty lines into the log book, first command to commit, beside the same rows through the bare
// library in one transaction.
void WardSave50() {
    const QString path = CopyOfDemoHospital(QStringLiteral("-ward"));
    const auto connection = Open(path);
    BareSqlite file(path);
    BareStatement request(
        file,
        "INSERT INTO \"STATION..tbNurseLogBook\" (HospNum, IdNum, PatientType, ItemCode, ItemName, "
        "Amount, Quantity, Dosage, RequestDate, DeptID, RecordStatus, RequestedBy, Remarks, "
        "Station, UnitPrice, Option1, Option2, Option3, Option4, Option5, Option6, Option7) VALUES "
        "('7', 'A7B', 'O', ?1, ?2, CAST(?3 AS REAL), CAST(?4 AS REAL), ?5, "
        "'2026-01-31 10:00:00.000', 'PH', ' ', '4601', ?6, 'CAPD', CAST(?7 AS REAL), '', ' ', 'Y', "
        "'0', '0', '0', '0')");
    const WardRequestHead head{QStringLiteral("7"), QStringLiteral("A7B"), QStringLiteral("PH"),
                               QStringLiteral("4601")};
    const std::vector<WardRequestLine> lines = Lines();
    const Figures figures = Alternate(
        QStringLiteral("ward-save-50"), 51, [&] { AppendToNurseLogBook(*connection, head, lines); },
        [&] { WriteBare(file, request, lines); });
    if (Written(file) != 2 * 52 * kLines)
        throw std::runtime_error("not every request was written");
    Print(figures);
}

}  // namespace bench
