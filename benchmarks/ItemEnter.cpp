#include <QApplication>
#include <QTest>

#include "app/mdiCAPD.h"
#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "benchmarks/Visitor.h"
#include "charges/ChargeRules.h"
#include "charges/frmRequest.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"
#include "toolkit/EntryGrid.h"

namespace bench {

namespace {

constexpr double kFrameMilliseconds = 1000.0 / 60;
// As a line's price takes them: the item twice, its net amount and its discount by five each.
constexpr int kExpectedCommands = 12;
constexpr int kSupplies = 200'000;

QString SeniorVisit() {
    return modGlobals::gConnection
        ->Execute(QStringLiteral(
            "SELECT TOP (1) IdNum FROM PATIENT_DATA..tbOutPatient WHERE DiscType = 'SM'"))
        ->Fields(0)
        .Text();
}

// From Enter on the item code until the priced and discounted line has been painted.
double EnterItem(toolkit::EntryGrid& grid, const QString& code) {
    using namespace ChargeColumn;
    grid.SetCell(1, Code);
    for (const QChar digit : code)
        QTest::keyClick(QApplication::focusWidget(), digit.toLatin1());
    QWidget* editor = QApplication::focusWidget();
    const double taken = Milliseconds([&] {
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    });
    if (grid.TextMatrix(1, Price).isEmpty() || grid.TextMatrix(1, Discount) == u"0")
        throw std::runtime_error("the line was not priced");
    return taken;
}

// A hospital with 200,000 supplies more at the unit's stock location.
QString HospitalOfSupplies() {
    const QString path = CopyOfDemoHospital(QStringLiteral("-supplies"));
    BareSqlite file(path);
    file.Run("BEGIN");
    BareStatement supply(file,
                         "INSERT INTO \"BILLING..tbDrug\" (DrugCode, DrugName, Kind, Unit, Status, "
                         "SellingPriceIn, SellingPriceOut) VALUES (?1, ?2, 'S', 'pc', 0, 10, 12)");
    BareStatement stock(file,
                        "INSERT INTO \"BILLING..tbDrugStock\" (DrugCode, LocationID, OnHand) "
                        "SELECT ?1, LocationID, 5 FROM \"BILLING..tbRevenueCode\" "
                        "WHERE RevenueID = 'CA'");
    for (int number = 0; number < kSupplies; ++number) {
        const std::string code = std::to_string(2'000'000 + number);
        supply.Bind(1, code);
        supply.Bind(2, char('A' + number % 26) + ("-tube " + code));
        supply.Write();
        stock.Bind(1, code);
        stock.Write();
    }
    file.Run("COMMIT");
    return path;
}

void MeasureItems(const QString& name, const QString& hospital) {
    const auto frame = StartSession(hospital);
    Visitor patient({}, SeniorVisit());
    frmRequest window(patient);
    window.show();
    if (!QTest::qWaitForWindowActive(&window))
        throw std::runtime_error("the charge window does not come to the front");
    auto* grid = window.findChild<toolkit::EntryGrid*>();
    grid->setFocus();
    grid->CommitText(QStringLiteral("CA"));
    bool other = false;
    const auto enter = [&] {
        other = !other;
        return EnterItem(*grid, other ? QStringLiteral("101") : QStringLiteral("102"));
    };
    Print(
        AlternateTimed(name, QStringLiteral("ms"), 101, enter, [] { return kFrameMilliseconds; }));

    int commands = 0;
    db::Connection::SetCommandHook([&commands](const QString&) { ++commands; });
    enter();
    db::Connection::SetCommandHook({});
    Print({name + QStringLiteral("-commands"), double(commands), double(kExpectedCommands),
           QStringLiteral("commands")});
}

// What the supply list asks at each key, beside the same rows through the bare library.
void MeasureSupplyList(const QString& name, const QString& hospital, const QString& text) {
    const auto connection = Open(hospital);
    const QString command =
        db::Call(QStringLiteral("BILLING..sp_Drug_Search"), {text, {}, QStringLiteral("46")});
    const BareSqlite file(hospital);
    BareStatement bare(file,
                       "SELECT d.DrugCode, d.DrugName, d.Status, d.SellingPriceIn, "
                       "d.SellingPriceOut, d.Unit, s.OnHand FROM \"BILLING..tbDrug\" d "
                       "JOIN \"BILLING..tbDrugStock\" s ON s.DrugCode = d.DrugCode "
                       "WHERE d.DrugName BETWEEN ?1 AND ?2 AND s.LocationID = '46' "
                       "ORDER BY d.DrugName, d.DrugCode LIMIT 500");
    bare.Bind(1, text.toStdString());
    bare.Bind(2, text.toStdString() + "\xEF\xBF\xBD");
    if (bare.ReadAll() != connection->Execute(command)->RecordCount())
        throw std::runtime_error("both find other supplies");
    Print(Alternate(
        name, 51, [&] { connection->Execute(command); }, [&] { bare.ReadAll(); }));
}

}  // namespace

void ItemEnter() {
    MeasureItems(QStringLiteral("item-enter"), DemoHospital());
    const QString large = HospitalOfSupplies();
    MeasureItems(QStringLiteral("item-enter-200k"), large);
    MeasureSupplyList(QStringLiteral("supply-list-200k"), large, QStringLiteral("t-tube"));
    MeasureSupplyList(QStringLiteral("supply-list-200k-all"), large, {});
}

}  // namespace bench
