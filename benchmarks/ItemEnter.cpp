#include <QApplication>
#include <QTest>

#include "app/mdiCAPD.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "charges/ChargeRules.h"
#include "charges/frmRequest.h"
#include "db/Recordset.h"
#include "patients/PatientOnScreen.h"
#include "session/modGlobals.h"
#include "toolkit/EntryGrid.h"

namespace bench {

namespace {

constexpr double kFrameMilliseconds = 1000.0 / 60;
// As a line's price takes them: the item twice, its net amount and its discount by five each.
constexpr int kExpectedCommands = 12;

class Visitor final : public PatientOnScreen {
public:
    explicit Visitor(QString idNum) : m_idNum(std::move(idNum)) {}
    QString HospNum() const override { return {}; }
    QString IdNum() const override { return m_idNum; }
    QString CAPDNum() const override { return {}; }
    QString LastName() const override { return QStringLiteral("Visitor"); }
    QString FirstName() const override { return {}; }
    QString MiddleName() const override { return {}; }
    QString Age() const override { return {}; }
    QString Sex() const override { return {}; }
    QString Company() const override { return {}; }
    void Get_CanPenProc() override {}

private:
    QString m_idNum;
};

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

}  // namespace

void ItemEnter() {
    const auto frame = StartSession(DemoHospital());
    Visitor patient(SeniorVisit());
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
    Print(AlternateTimed(QStringLiteral("item-enter"), QStringLiteral("ms"), 101, enter,
                         [] { return kFrameMilliseconds; }));

    int commands = 0;
    db::Connection::SetCommandHook([&commands](const QString&) { ++commands; });
    enter();
    db::Connection::SetCommandHook({});
    Print({QStringLiteral("item-enter-commands"), double(commands), double(kExpectedCommands),
           QStringLiteral("commands")});
}

}  // namespace bench
