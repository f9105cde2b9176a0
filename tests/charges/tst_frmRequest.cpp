#include "charges/frmRequest.h"

#include <QClipboard>
#include <QDialog>
#include <QGroupBox>
#include <QTimer>

#include "ChargeSession.h"
#include "components/PickListKeys.h"
#include "toolkit/MsgBox.h"
#include "toolkit/Twips.h"

using namespace ChargeColumn;
using toolkit::BoxAnswer;
using toolkit::BoxIcon;
using toolkit::BoxScript;

// The charge window as a clerk works in it: by keys, over a demo hospital.
class tst_frmRequest final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void Load_showsThePatientAndItsClass_data();
    void Load_showsThePatientAndItsClass();
    void Load_thatFailsShowsNothing();
    void Sheet_isLaidOut();

    void RevenueCode_isTakenAsTheServerSpellsIt_data();
    void RevenueCode_isTakenAsTheServerSpellsIt();
    void RevenueCode_ambiguousIsPickedOrCancelled();
    void RevenueCode_unknownIsRefused();
    void RevenueCode_changedEmptiesTheLine();
    void RevenueCode_isListedByF1();

    void StockItem_isPricedAndDiscounted();
    void StockItem_isFoundByItsName();
    void StockItem_notFoundLeavesTheLine();
    void StockItem_mayStandTwice();
    void StockItem_isListedByF1();
    void Item_beforeItsRevenueCodeIsNotFound();

    void Fee_isPricedWithoutDiscount();
    void Fee_onAnotherLineIsRefused();
    void Fee_cancelledLeavesTheLine();
    void Fee_openPriceIsTyped();
    void Amount_isHeldAgainstThePrice_data();
    void Amount_isHeldAgainstThePrice();
    void Amount_isNotTypedOnStockLines();

    void Quantity_pricesTheLine_data();
    void Quantity_pricesTheLine();
    void Quantity_scalesFromOneUnit();
    void Quantity_thatOverflowsIsRefused();
    void RemovedLine_takesItsAmountsAlong();

    void Cells_takeAnyText_data();
    void Cells_takeAnyText();
    void ServerGone_leavesTheSheet_data();
    void ServerGone_leavesTheSheet();
    void ServerGone_isToldOfAFee();

    void Saving_isNotPartYet();
    void Closing_looksNothingUp();

private:
    std::unique_ptr<ChargeSession> m_session;
    std::unique_ptr<ChargeWindow> m_window;
    std::unique_ptr<BoxScript> m_boxes;
    QTimer m_watch;
    ChargeWindow& Open(const QString& discountType = QStringLiteral("SM"),
                       const QString& classification = {});
    void ExpectBox(const char* text, BoxIcon icon, const char* title = "CAPD") const;
};

void tst_frmRequest::init() {
    // A list that no test waits for is closed late, and fails the test, instead of hanging it.
    connect(&m_watch, &QTimer::timeout, &m_watch, [] {
        if (auto* list = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            list->reject();
            QTest::qFail("a list that nobody expected", __FILE__, __LINE__);
        }
    });
    m_watch.start(4000);
    m_session = std::make_unique<ChargeSession>();
    m_boxes = std::make_unique<BoxScript>();
}

void tst_frmRequest::cleanup() {
    m_watch.disconnect();
    PluggedDriver::Gone = false;
    const QString fault = m_window && !QTest::currentTestFailed() ? m_window->Fault() : QString();
    m_window.reset();
    const QStringList leftovers = m_boxes->Leftovers();
    m_boxes.reset();
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
    QCOMPARE(leftovers, QStringList());
}

ChargeWindow& tst_frmRequest::Open(const QString& discountType, const QString& classification) {
    m_window = std::make_unique<ChargeWindow>(m_session->Visit(discountType, classification));
    return *m_window;
}

void tst_frmRequest::ExpectBox(const char* text, BoxIcon icon, const char* title) const {
    QVERIFY(!m_boxes->Shown().empty());
    const toolkit::ShownBox& box = m_boxes->Shown().back();
    QCOMPARE(box.Text, QString::fromUtf8(text));
    QCOMPARE(box.Title, QString::fromUtf8(title));
    QVERIFY(box.Icon == icon);
}

void tst_frmRequest::Load_showsThePatientAndItsClass_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("classification");
    QTest::addColumn<QString>("classLabel");
    QTest::addColumn<QString>("discountLabel");
    QTest::newRow("pay") << "SM"
                         << ""
                         << "Pay Patient"
                         << "Senior Citizen";
    QTest::newRow("service") << "QF"
                             << "C2"
                             << "Class: C2 Service Patient"
                             << "Med.Social Service Discount Class: C2";
}

void tst_frmRequest::Load_showsThePatientAndItsClass() {
    QFETCH(QString, type);
    QFETCH(QString, classification);
    const ChargeWindow& window = Open(type, classification);
    QCOMPARE(window.Window.windowTitle(), QStringLiteral("RequestEntry"));
    QCOMPARE(window.Find<QGroupBox>("fraPostCharges").title(), QStringLiteral("Post Charges"));
    QCOMPARE(window.Label("lblHint"), QStringLiteral("Revenue Codes :     CA - CAPD Supplies"));
    QCOMPARE(window.Label("lblCompany"), QStringLiteral("A-17 <b>Kidney & Sons"));
    QCOMPARE(window.Label("lblPatient"), QStringLiteral("O'HARA, Ana Luz"));
    QTEST(window.Label("lblPatientClass"), "classLabel");
    QTEST(window.Label("lblDiscount"), "discountLabel");
    QCOMPARE(window.Totals(), QStringList(3, QStringLiteral("0.00")));
    QVERIFY(!window.Find<QPushButton>("cmdSave").isEnabled());
    QVERIFY(!window.Find<QPushButton>("cmdSavePrint").isEnabled());
}

void tst_frmRequest::Load_thatFailsShowsNothing() {
    ScreenPatient patient(m_session->Visit(QStringLiteral("SM")));
    frmRequest window(patient);
    PluggedDriver::Gone = true;
    QVERIFY_EXCEPTION_THROWN(window.exec(), base::DatabaseError);
    QVERIFY(!window.isVisible());
}

void tst_frmRequest::Sheet_isLaidOut() {
    const ChargeWindow& window = Open();
    QCOMPARE(window.Line(0).join(u','),
             QStringLiteral(",Dept.,Code,Examimantion Description,Type,Price,Quantity,Amount,"
                            "WithItems,LocationID,,InventoryCode,NetAmount,Discount"));
    QCOMPARE(window.Grid.Rows(), 2);
    QCOMPARE(window.At(), QPoint(1, Dept));
    const int widths[] = {100, 1000, 1000, 4000, 1500, 1000, 1000, 1000, 0, 0, 0, 0, 0, 0};
    for (int col = 0; col < ChargeColumn::Count; ++col)
        QCOMPARE(window.Grid.columnWidth(col), toolkit::Twips(widths[col], &window.Grid));
}

void tst_frmRequest::RevenueCode_isTakenAsTheServerSpellsIt_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("line");
    QTest::newRow("supplies") << "ca"
                              << "|CA||CAPD SUPPLIES|||||Y|46||CA||";
    QTest::newRow("fees") << "CY"
                          << "|CY||CAPD CONSULTATION FEE|||||Y|||||";
    QTest::newRow("by description") << "prof"
                                    << "|MD||PROFESSIONAL FEE|||||Y|||||";
}

void tst_frmRequest::RevenueCode_isTakenAsTheServerSpellsIt() {
    QFETCH(QString, typed);
    const ChargeWindow& window = Open();
    window.Enter(typed);
    QTEST(window.Line(1).join(u'|'), "line");
    QCOMPARE(window.At(), QPoint(1, Code));
}

void tst_frmRequest::RevenueCode_ambiguousIsPickedOrCancelled() {
    ChargeWindow& window = Open();
    {
        PickListKeys keys;
        window.Enter(QStringLiteral("c"));
        QCOMPARE(keys.Shown, 1);
        QCOMPARE(window.Cell(1, Dept), QString());
        QCOMPARE(window.At(), QPoint(1, Dept));
        QCOMPARE(window.Grid.EditText(), QStringLiteral("c"));
    }
    QString criteria, caption;
    PickListKeys keys([&](QDialog& list) {
        auto* box = list.findChild<QLineEdit*>(QStringLiteral("txtSearchStr"));
        criteria = box->text();
        caption = list.windowTitle();
        QTest::keyClicks(box, QStringLiteral("central"));
        QTest::keyClick(box, Qt::Key_Return);
    });
    window.Key(Qt::Key_Return);
    QCOMPARE(keys.Shown, 1);
    QCOMPARE(criteria, QStringLiteral("c"));
    QCOMPARE(caption, QStringLiteral("Revenue Codes"));
    QCOMPARE(window.Cell(1, Dept), QStringLiteral("CS"));
    QCOMPARE(window.Cell(1, LocationID), QStringLiteral("21"));
    QCOMPARE(window.At(), QPoint(1, Code));
}

void tst_frmRequest::RevenueCode_unknownIsRefused() {
    const ChargeWindow& window = Open();
    m_boxes->Answer(BoxAnswer::Ok);
    window.Enter(QStringLiteral("ZZ"));
    ExpectBox("Item does not exists.", BoxIcon::Exclamation);
    QCOMPARE(window.At(), QPoint(1, Dept));
    QCOMPARE(window.Line(1).join(QString()), QString());
    window.Key(Qt::Key_Escape);
    window.Enter(QStringLiteral("CY"));
    QCOMPARE(window.At(), QPoint(1, Code));
}

void tst_frmRequest::RevenueCode_changedEmptiesTheLine() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"), QStringLiteral("2"));
    const QStringList before = window.Line(1);
    // The same code again, in whatever case, is no change.
    window.EnterAt(1, Dept, QStringLiteral("ca"));
    QCOMPARE(window.Line(1), before);
    window.EnterAt(1, Dept, QStringLiteral("CY"));
    QCOMPARE(window.Line(1).join(u'|'), QStringLiteral("|CY||CAPD CONSULTATION FEE|||||Y|||||"));
    QCOMPARE(window.Totals(), QStringList(3, QStringLiteral("0.00")));
}

void tst_frmRequest::RevenueCode_isListedByF1() {
    const ChargeWindow& window = Open();
    window.Enter(QStringLiteral("CA"));
    window.Grid.SetCol(Dept);
    int offered = 0;
    PickListKeys keys([&](QDialog& list) {
        offered = list.findChild<QLabel*>(QStringLiteral("lblTotal"))->text().toInt();
        auto* box = list.findChild<QLineEdit*>(QStringLiteral("txtSearchStr"));
        QTest::keyClicks(box, QStringLiteral("CY"));
        QTest::keyClick(box, Qt::Key_Return);
    });
    window.Key(Qt::Key_F1);
    // All codes, whatever stands in the cell.
    QCOMPARE(offered, 5);
    QCOMPARE(window.Cell(1, Dept), QStringLiteral("CY"));
    QCOMPARE(window.At(), QPoint(1, Code));
}

void tst_frmRequest::StockItem_isPricedAndDiscounted() {
    ChargeWindow& window = Open();
    window.Enter(QStringLiteral("CA"));
    window.Enter(QStringLiteral(" 102 "));
    QCOMPARE(window.Line(1).join(u'|'),
             QStringLiteral("|CA|102|DIALYSIS SOLUTION 2.3% 2 L||390.25|1|390.25|Y|46|390.25|CA|"
                            "312.2|78.05"));
    QCOMPARE(window.At(), QPoint(1, Type));
    QVERIFY(window.Find<QPushButton>("cmdSave").isEnabled());
    QVERIFY(window.Find<QPushButton>("cmdSavePrint").isEnabled());
    QCOMPARE(window.Totals().join(u'|'), QStringLiteral("390.25|78.05|312.20"));
    // Type and quantity may stay as they are: Enter walks to the next line.
    window.Type(QStringLiteral("s"));
    window.Key(Qt::Key_Return);
    QCOMPARE(window.Cell(1, Type), QStringLiteral("STAT"));
    window.Key(Qt::Key_Return);
    QCOMPARE(window.At(), QPoint(2, Dept));
}

void tst_frmRequest::StockItem_isFoundByItsName() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("drain"));
    QCOMPARE(window.Cell(1, Code), QStringLiteral("108"));
    // Several of that name: the list is narrowed by what was typed.
    QString narrowed;
    PickListKeys keys([&](QDialog& list) {
        narrowed = PickListKeys::Box(list)->text();
        QTest::keyClick(PickListKeys::Box(list), Qt::Key_Down);
        QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Down);
        QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Return);
    });
    window.Charge(QStringLiteral("CA"), QStringLiteral("dialysis"));
    QCOMPARE(keys.Shown, 1);
    QCOMPARE(narrowed, QStringLiteral("DIALYSIS"));
    QVERIFY(window.Cell(2, Description).startsWith(QStringLiteral("DIALYSIS SOLUTION")));
    QCOMPARE(window.At(), QPoint(2, Type));
}

void tst_frmRequest::StockItem_notFoundLeavesTheLine() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"), QStringLiteral("4"));
    const QStringList before = window.Line(1);
    PickListKeys cancelled;
    m_boxes->Answer(BoxAnswer::Ok);
    window.EnterAt(1, Code, QStringLiteral("9999"));
    ExpectBox("Item not found on file.", BoxIcon::Information);
    QCOMPARE(cancelled.Shown, 1);
    QCOMPARE(window.Line(1), before);
    QCOMPARE(window.At(), QPoint(1, Code));
    // What was typed waits to be corrected.
    QCOMPARE(window.Grid.EditText(), QStringLiteral("9999"));
}

void tst_frmRequest::StockItem_mayStandTwice() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"));
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"));
    QCOMPARE(window.Cell(2, Code), QStringLiteral("101"));
}

void tst_frmRequest::StockItem_isListedByF1() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"));
    window.Grid.SetCell(1, Code);
    PickListKeys keys([](QDialog& list) {
        QTest::keyClicks(PickListKeys::Box(list), QStringLiteral("face"));
        QTest::keyClick(PickListKeys::Box(list), Qt::Key_Return);
    });
    window.Key(Qt::Key_F1);
    QCOMPARE(keys.Shown, 1);
    QCOMPARE(window.Cell(1, Code), QStringLiteral("113"));
    QCOMPARE(window.At(), QPoint(1, Type));
}

void tst_frmRequest::Item_beforeItsRevenueCodeIsNotFound() {
    ChargeWindow& window = Open();
    PickListKeys none;
    window.EnterAt(1, Code, QStringLiteral("101"));
    QCOMPARE(none.Shown, 0);
    QCOMPARE(window.Label("lblMessage"),
             QStringLiteral("Type the revenue code of the line first."));
    QCOMPARE(window.Line(1).join(QString()), QString());
    QCOMPARE(window.At(), QPoint(1, Code));
}

void tst_frmRequest::Fee_isPricedWithoutDiscount() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("MD"), QStringLiteral("802"));
    QCOMPARE(window.Line(1).join(u'|'),
             QStringLiteral("N|MD|802|NEPHROLOGIST'S FOLLOW-UP||500.00|1|500.00|Y||500.00||500|0"));
    QCOMPARE(window.At(), QPoint(1, Type));
    QCOMPARE(window.Totals().join(u'|'), QStringLiteral("500.00|0.00|500.00"));
}

void tst_frmRequest::Fee_onAnotherLineIsRefused() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CY"), QStringLiteral("501"));
    window.Charge(QStringLiteral("CY"), QStringLiteral("502"));
    m_boxes->Answer(BoxAnswer::Ok);
    window.EnterAt(2, Code, QStringLiteral("501"));
    ExpectBox("Exam already selected.", BoxIcon::Exclamation, "Assessment");
    QCOMPARE(window.Cell(2, Code), QString());
    QCOMPARE(window.At(), QPoint(2, Code));
    QCOMPARE(window.Totals().first(), QStringLiteral("450.00"));
    // The line's own fee, typed anew, is no duplicate; nor is the code under another revenue code.
    window.Enter(QStringLiteral("503"));
    m_session->Connection->Execute(QStringLiteral(
        "INSERT INTO BILLING..tbOtherRevenue (RevenueID, ItemCode, OtherRevenue, RateA) "
        "VALUES ('MD', '501', 'SAME NUMBER', 10)"));
    window.Charge(QStringLiteral("MD"), QStringLiteral("501"));
    QCOMPARE(window.Cell(3, Description), QStringLiteral("SAME NUMBER"));
}

void tst_frmRequest::Fee_cancelledLeavesTheLine() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CY"), QStringLiteral("501"));
    const QStringList before = window.Line(1);
    PickListKeys cancelled;
    window.EnterAt(1, Code, QStringLiteral("cap"));
    QCOMPARE(cancelled.Shown, 1);
    QCOMPARE(window.Line(1), before);
    QCOMPARE(window.At(), QPoint(1, Code));
}

void tst_frmRequest::Fee_openPriceIsTyped() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CY"), QStringLiteral("510"));
    QCOMPARE(window.Cell(1, OpenPrice), QStringLiteral("Y"));
    QCOMPARE(window.Cell(1, Price), QStringLiteral("0.00"));
    window.EnterAt(1, Amount, QStringLiteral("123.5"));
    QCOMPARE(window.Cell(1, Amount), QStringLiteral("123.50"));
    QCOMPARE(window.Totals().join(u'|'), QStringLiteral("123.50|0.00|123.50"));
    window.EnterAt(1, Quantity, QStringLiteral("3"));
    QCOMPARE(window.Cell(1, Amount), QStringLiteral("123.50"));
}

void tst_frmRequest::Amount_isHeldAgainstThePrice_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("refused");
    QTest::addColumn<QString>("amount");
    QTest::newRow("equal") << "450" << false << "450.00";
    QTest::newRow("a centavo below") << "449.99" << true << "450.00";
    QTest::newRow("a fraction below") << "449.999" << true << "450.00";
    QTest::newRow("above") << "1000.005" << false << "1000.01";
    QTest::newRow("only a point") << "." << true << "450.00";
}

void tst_frmRequest::Amount_isHeldAgainstThePrice() {
    QFETCH(QString, typed);
    QFETCH(bool, refused);
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CY"), QStringLiteral("501"));
    if (refused)
        m_boxes->Answer(BoxAnswer::Ok);
    window.EnterAt(1, Amount, typed);
    if (refused)
        ExpectBox("You cannot enter amount lesser than the price.", BoxIcon::Information,
                  "Message");
    QTEST(window.Cell(1, Amount), "amount");
}

void tst_frmRequest::Amount_isNotTypedOnStockLines() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"));
    window.EnterAt(1, Amount, QStringLiteral("9999"));
    QCOMPARE(window.Cell(1, Amount), QStringLiteral("385.00"));
    // Nor where there is no item yet.
    window.Grid.AddLine();
    window.EnterAt(2, Amount, QStringLiteral("9999"));
    QCOMPARE(window.Cell(2, Amount), QString());
}

void tst_frmRequest::Quantity_pricesTheLine_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("amounts");
    QTest::newRow("zero counts as one") << "0"
                                        << "385.00|308|77";
    QTest::newRow("only a point") << "."
                                  << "385.00|308|77";
    QTest::newRow("a minus is not taken") << "-2"
                                          << "770.00|616|154";
    QTest::newRow("letters are not taken") << "x"
                                           << "385.00|308|77";
    QTest::newRow("half to even, down") << "2.5"
                                        << "770.00|616|154";
    QTest::newRow("half to even, up") << "3.5"
                                      << "1540.00|1232|308";
    QTest::newRow("less than half a unit") << "0.4"
                                           << "0.00|0|0";
    QTest::newRow("most") << "32767"
                          << "12615295.00|10092236|2523059";
}

void tst_frmRequest::Quantity_pricesTheLine() {
    QFETCH(QString, typed);
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"), typed);
    QTEST(
        window.Line(1)[Amount] + u'|' + window.Cell(1, NetAmount) + u'|' + window.Cell(1, Discount),
        "amounts");
    QCOMPARE(window.Totals()[1], base::MoneyText(base::Val(window.Cell(1, Discount))));
}

void tst_frmRequest::Quantity_scalesFromOneUnit() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("102"), QStringLiteral("2"));
    window.EnterAt(1, Quantity, QStringLiteral("3"));
    QCOMPARE(window.Cell(1, Amount), QStringLiteral("1170.75"));
    QCOMPARE(window.Cell(1, NetAmount), QStringLiteral("936.6"));
    QCOMPARE(window.Cell(1, Discount), QStringLiteral("234.15"));
    // Another item on the line begins with its own values, for one unit.
    window.EnterAt(1, Code, QStringLiteral("105"));
    QCOMPARE(window.Cell(1, Quantity), QStringLiteral("1"));
    window.EnterAt(1, Quantity, QStringLiteral("10"));
    QCOMPARE(window.Totals().join(u'|'), QStringLiteral("300.00|60.00|240.00"));
}

void tst_frmRequest::Quantity_thatOverflowsIsRefused() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"), QStringLiteral("2"));
    const QStringList before = window.Line(1);
    for (const QString& typed : {QStringLiteral("32767.5"), QString(400, u'9')}) {
        window.Grid.SetCell(1, Quantity);
        QVERIFY_EXCEPTION_THROWN(window.Enter(typed), base::RuntimeError);
        QCOMPARE(window.Line(1), before);
        window.Key(Qt::Key_Escape);
    }
}

void tst_frmRequest::RemovedLine_takesItsAmountsAlong() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"));
    window.Charge(QStringLiteral("CA"), QStringLiteral("102"));
    window.Charge(QStringLiteral("CY"), QStringLiteral("501"));
    window.Grid.SetCell(1, Code);
    window.Key(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(window.Totals().join(u'|'), QStringLiteral("840.25|78.05|762.20"));
    // The lines behind it keep their own values of one unit.
    window.EnterAt(1, Quantity, QStringLiteral("2"));
    window.EnterAt(2, Quantity, QStringLiteral("2"));
    QCOMPARE(window.Totals().join(u'|'), QStringLiteral("1680.50|156.10|1524.40"));
    window.Key(Qt::Key_Delete, Qt::ControlModifier);
    window.Key(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(window.Totals(), QStringList(3, QStringLiteral("0.00")));
    window.Charge(QStringLiteral("CY"), QStringLiteral("501"));
    QCOMPARE(window.Totals().first(), QStringLiteral("450.00"));
}

void tst_frmRequest::Cells_takeAnyText_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << "'; DELETE tbCAPDSlip --\"";
    QTest::newRow("a thousand letters") << QString(1000, u'Z');
    QTest::newRow("a table") << "101\t2\r\n102\t3\r\n";
    QTest::newRow("patterns") << "%_[!'";
    QTest::newRow("accents") << QStringLiteral("Peña ₱");
}

void tst_frmRequest::Cells_takeAnyText() {
    QFETCH(QString, text);
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"), QStringLiteral("2"));
    window.Charge(QStringLiteral("CY"), QStringLiteral("501"));
    PickListKeys cancelled;
    const int unfound = 3;
    for (int box = 0; box < unfound; ++box)
        m_boxes->Answer(BoxAnswer::Ok);
    for (const QPoint& cell :
         {QPoint(1, Dept), QPoint(2, Dept), QPoint(1, Code), QPoint(2, Code)}) {
        const QStringList before = window.Line(cell.x());
        window.Grid.setFocus();
        window.Grid.SetCell(cell.x(), cell.y());
        QGuiApplication::clipboard()->setText(text);
        window.Key(Qt::Key_Insert, Qt::ShiftModifier);
        window.Key(Qt::Key_Return);
        QCOMPARE(window.Line(cell.x()), before);
        window.Key(Qt::Key_Escape);
    }
    QVERIFY(window.Find<QLabel>("lblMessage").text().isEmpty());
}

void tst_frmRequest::ServerGone_leavesTheSheet_data() {
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("answered");
    QTest::newRow("revenue code") << int(Dept) << "CY" << 0;
    QTest::newRow("item") << int(Code) << "105" << 0;
    QTest::newRow("before its discount") << int(Code) << "105" << 2;
    QTest::newRow("between net amount and discount") << int(Code) << "105" << 7;
    QTest::newRow("before the last answer") << int(Code) << "105" << 11;
}

void tst_frmRequest::ServerGone_leavesTheSheet() {
    QFETCH(int, column);
    QFETCH(QString, text);
    QFETCH(int, answered);
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"), QStringLiteral("2"));
    const QStringList before = window.Line(1);
    window.Grid.SetCell(1, column);
    PluggedDriver::Gone = true;
    PluggedDriver::Left = answered;
    QVERIFY_EXCEPTION_THROWN(window.Enter(text), base::DatabaseError);
    QCOMPARE(window.Line(1), before);
    QCOMPARE(window.Fault(), QString());
    QCOMPARE(window.Grid.EditText(), text);
    // It is back: the same Enter goes through.
    PluggedDriver::Gone = false;
    window.Key(Qt::Key_Return);
    QCOMPARE(window.Cell(1, column), text);
    QVERIFY(window.Line(1) != before);
}

void tst_frmRequest::ServerGone_isToldOfAFee() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CY"), QStringLiteral("501"));
    const QStringList before = window.Line(1);
    PluggedDriver::Gone = true;
    window.EnterAt(1, Code, QStringLiteral("502"));
    QCOMPARE(window.Label("lblMessage"), QStringLiteral("10054  The server is gone."));
    QCOMPARE(window.Line(1), before);
    PluggedDriver::Gone = false;
    window.Key(Qt::Key_Return);
    QCOMPARE(window.Cell(1, Code), QStringLiteral("502"));
    QCOMPARE(window.Label("lblMessage"), QString());
}

void tst_frmRequest::Saving_isNotPartYet() {
    ChargeWindow& window = Open();
    window.Key(Qt::Key_Escape);
    QCOMPARE(window.Focus(), QStringLiteral("cmdClose"));
    QVERIFY(window.Window.isVisible());
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"));
    const QStringList before = window.Line(1);
    window.Key(Qt::Key_Escape);
    QCOMPARE(window.Focus(), QStringLiteral("cmdSave"));
    window.Key(Qt::Key_Return);
    QCOMPARE(window.Label("lblMessage"), QStringLiteral("Saving is not part of this version yet."));
    QVERIFY(window.Window.isVisible());
    QCOMPARE(window.Line(1), before);
    // What is being typed and cannot stand is asked about first.
    m_boxes->Answer(BoxAnswer::Ok);
    window.Find<QLabel>("lblMessage").clear();
    window.Grid.setFocus();
    window.Grid.SetCell(1, Dept);
    window.Type(QStringLiteral("ZZ"));
    window.Key(Qt::Key_P, Qt::AltModifier);
    QTest::qWait(150);
    QCOMPARE(window.Label("lblMessage"), QString());
    ExpectBox("Item does not exists.", BoxIcon::Exclamation);
}

void tst_frmRequest::Closing_looksNothingUp() {
    ChargeWindow& window = Open();
    window.Type(QStringLiteral("ZZ"));
    QTest::mouseClick(&window.Find<QPushButton>("cmdClose"), Qt::LeftButton);
    QVERIFY(!window.Window.isVisible());
    QVERIFY(m_boxes->Shown().empty());
}

QTEST_MAIN(tst_frmRequest)
#include "tst_frmRequest.moc"
