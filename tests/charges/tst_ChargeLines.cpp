#include "ChargeTest.h"

using namespace ChargeColumn;
using toolkit::BoxAnswer;
using toolkit::BoxIcon;

// The lines of the charge sheet as a clerk types them: by keys, over a demo hospital.
class tst_ChargeLines final : public ChargeTest {
    Q_OBJECT
private slots:
    void init() { SetUp(); }
    void cleanup() { TearDown(); }

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
};

void tst_ChargeLines::RevenueCode_isTakenAsTheServerSpellsIt_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("line");
    QTest::newRow("supplies") << "ca"
                              << "|CA||CAPD SUPPLIES|||||Y|46||CA||";
    QTest::newRow("fees") << "CY"
                          << "|CY||CAPD CONSULTATION FEE|||||Y|||||";
    QTest::newRow("by description") << "prof"
                                    << "|MD||PROFESSIONAL FEE|||||Y|||||";
}

void tst_ChargeLines::RevenueCode_isTakenAsTheServerSpellsIt() {
    QFETCH(QString, typed);
    const ChargeWindow& window = Open();
    window.Enter(typed);
    QTEST(window.Line(1).join(u'|'), "line");
    QCOMPARE(window.At(), QPoint(1, Code));
}

void tst_ChargeLines::RevenueCode_ambiguousIsPickedOrCancelled() {
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

void tst_ChargeLines::RevenueCode_unknownIsRefused() {
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

void tst_ChargeLines::RevenueCode_changedEmptiesTheLine() {
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

void tst_ChargeLines::RevenueCode_isListedByF1() {
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

void tst_ChargeLines::StockItem_isPricedAndDiscounted() {
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

void tst_ChargeLines::StockItem_isFoundByItsName() {
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

void tst_ChargeLines::StockItem_notFoundLeavesTheLine() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"), QStringLiteral("4"));
    const QStringList before = window.Line(1);
    m_session->Connection->Execute(
        QStringLiteral("UPDATE BILLING..tbDrug SET Status = 1 WHERE DrugCode = '105'"));
    m_session->Connection->Execute(
        QStringLiteral("UPDATE BILLING..tbDrugStock SET OnHand = -2 WHERE DrugCode = '108'"));
    PickListKeys cancelled;
    m_boxes->Answer(BoxAnswer::Ok);
    for (const QString& code : {QStringLiteral("9999"), QStringLiteral("105")}) {
        window.EnterAt(1, Code, code);
        QCOMPARE(window.Line(1), before);
        QCOMPARE(window.At(), QPoint(1, Code));
        // What was typed waits to be corrected.
        QCOMPARE(window.Grid.EditText(), code);
        window.Key(Qt::Key_Escape);
    }
    QCOMPARE(cancelled.Shown, 1);
    ExpectBox("Record is inactive...please reenter...", BoxIcon::Exclamation, "Message");
    window.EnterAt(1, Code, QStringLiteral("108"));
    QCOMPARE(window.Label("lblMessage"),
             window.Cell(1, Description) + QStringLiteral(": none in stock (-2)."));
}

void tst_ChargeLines::StockItem_mayStandTwice() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"));
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"));
    QCOMPARE(window.Cell(2, Code), QStringLiteral("101"));
}

void tst_ChargeLines::StockItem_isListedByF1() {
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

void tst_ChargeLines::Item_beforeItsRevenueCodeIsNotFound() {
    ChargeWindow& window = Open();
    PickListKeys none;
    window.EnterAt(1, Code, QStringLiteral("101"));
    QCOMPARE(none.Shown, 0);
    QCOMPARE(window.Label("lblMessage"),
             QStringLiteral("Type the revenue code of the line first."));
    QCOMPARE(window.Line(1).join(QString()), QString());
    QCOMPARE(window.At(), QPoint(1, Code));
}

void tst_ChargeLines::Fee_isPricedWithoutDiscount() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("MD"), QStringLiteral("802"));
    QCOMPARE(window.Line(1).join(u'|'),
             QStringLiteral("N|MD|802|NEPHROLOGIST'S FOLLOW-UP||500.00|1|500.00|Y||500.00||500|0"));
    QCOMPARE(window.At(), QPoint(1, Type));
    QCOMPARE(window.Totals().join(u'|'), QStringLiteral("500.00|0.00|500.00"));
}

void tst_ChargeLines::Fee_onAnotherLineIsRefused() {
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

void tst_ChargeLines::Fee_cancelledLeavesTheLine() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CY"), QStringLiteral("501"));
    const QStringList before = window.Line(1);
    PickListKeys cancelled;
    window.EnterAt(1, Code, QStringLiteral("cap"));
    QCOMPARE(cancelled.Shown, 1);
    QCOMPARE(window.Line(1), before);
    QCOMPARE(window.At(), QPoint(1, Code));
}

void tst_ChargeLines::Fee_openPriceIsTyped() {
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

void tst_ChargeLines::Amount_isHeldAgainstThePrice_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("refused");
    QTest::addColumn<QString>("amount");
    QTest::newRow("equal") << "450" << false << "450.00";
    QTest::newRow("a centavo below") << "449.99" << true << "450.00";
    QTest::newRow("a fraction below") << "449.999" << true << "450.00";
    QTest::newRow("above") << "1000.005" << false << "1000.01";
    QTest::newRow("only a point") << "." << true << "450.00";
}

void tst_ChargeLines::Amount_isHeldAgainstThePrice() {
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
    // Two of them cost what two of them cost, whatever was typed for the one.
    window.EnterAt(1, Quantity, QStringLiteral("2"));
    QCOMPARE(window.Cell(1, Amount), QStringLiteral("900.00"));
    const QString told = QStringLiteral("The amount 1000.01 is now price times quantity: 900.00.");
    QCOMPARE(window.Label("lblMessage"), typed.startsWith(u"1000") ? told : QString());
}

void tst_ChargeLines::Amount_isNotTypedOnStockLines() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"));
    window.EnterAt(1, Amount, QStringLiteral("9999"));
    QCOMPARE(window.Cell(1, Amount), QStringLiteral("385.00"));
    // Nor where there is no item yet.
    window.Grid.AddLine();
    window.EnterAt(2, Amount, QStringLiteral("9999"));
    QCOMPARE(window.Cell(2, Amount), QString());
}

void tst_ChargeLines::Quantity_pricesTheLine_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("amounts");
    QTest::addColumn<QString>("told");
    QTest::newRow("zero counts as one") << "0"
                                        << "385.00|308|77"
                                        << "0 counts as 1.";
    QTest::newRow("only a point") << "."
                                  << "385.00|308|77"
                                  << ". counts as 1.";
    QTest::newRow("a minus is not taken") << "-2"
                                          << "770.00|616|154"
                                          << "Taken: 2. Only digits and one point count.";
    QTest::newRow("letters are not taken") << "x"
                                           << "385.00|308|77"
                                           << "x: only digits and one point count here.";
    QTest::newRow("an exponent is not taken") << "1e1"
                                              << "4235.00|3388|847"
                                              << "Taken: 11. Only digits and one point count.";
    QTest::newRow("half to even, down") << "2.5"
                                        << "770.00|616|154"
                                        << "2.5 counts as 2.";
    QTest::newRow("half to even, up") << "3.5"
                                      << "1540.00|1232|308"
                                      << "3.5 counts as 4.";
    QTest::newRow("less than half a unit") << "0.4"
                                           << "385.00|308|77"
                                           << "0.4 counts as 1.";
    QTest::newRow("most") << "32767"
                          << "12615295.00|10092236|2523059"
                          << "";
}

void tst_ChargeLines::Quantity_pricesTheLine() {
    QFETCH(QString, typed);
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"), typed);
    QTEST(
        window.Line(1)[Amount] + u'|' + window.Cell(1, NetAmount) + u'|' + window.Cell(1, Discount),
        "amounts");
    QTEST(window.Label("lblMessage"), "told");
    QCOMPARE(window.Totals()[1], base::MoneyText(base::Val(window.Cell(1, Discount))));
    // The units that are priced are those that stand in the sheet.
    QCOMPARE(base::MoneyText(385 * base::Val(window.Cell(1, Quantity))), window.Cell(1, Amount));
}

void tst_ChargeLines::Quantity_scalesFromOneUnit() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("102"), QStringLiteral("2"));
    window.EnterAt(1, Quantity, QStringLiteral("3"));
    QCOMPARE(window.Cell(1, Amount), QStringLiteral("1170.75"));
    QCOMPARE(window.Cell(1, NetAmount), QStringLiteral("936.6"));
    QCOMPARE(window.Cell(1, Discount), QStringLiteral("234.15"));
    // Another item on the line begins with its own values, for one unit and of no type.
    window.Grid.SetTextMatrix(1, Type, QStringLiteral("STAT"));
    window.EnterAt(1, Code, QStringLiteral("105"));
    QCOMPARE(window.Cell(1, Type) + window.Cell(1, Quantity), QStringLiteral("1"));
    window.EnterAt(1, Quantity, QStringLiteral("10"));
    QCOMPARE(window.Totals().join(u'|'), QStringLiteral("300.00|60.00|240.00"));
}

void tst_ChargeLines::Quantity_thatOverflowsIsRefused() {
    ChargeWindow& window = Open();
    window.Charge(QStringLiteral("CA"), QStringLiteral("101"), QStringLiteral("2"));
    const QStringList before = window.Line(1);
    for (const QString& typed : {QStringLiteral("32767.5"), QString(400, u'9')}) {
        window.EnterAt(1, Quantity, typed);
        QCOMPARE(window.Line(1), before);
        QCOMPARE(window.Label("lblMessage"), QStringLiteral("The largest quantity is 32767."));
        window.Key(Qt::Key_Escape);
    }
}

void tst_ChargeLines::RemovedLine_takesItsAmountsAlong() {
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

QTEST_MAIN(tst_ChargeLines)
#include "tst_ChargeLines.moc"
