#include "ChargeTest.h"
#include "Rows.h"

using namespace Qt::StringLiterals;
using namespace ChargeColumn;
using toolkit::BoxAnswer;
using toolkit::BoxIcon;

// The lines of the charge sheet as a clerk types them: by keys, over a demo hospital.
class tst_ChargeLines final : public ChargeTest {
    Q_OBJECT
private slots:
    void init() { SetUp(); }
    void cleanup() { TearDown(); }

    void RevenueCode_isTakenAsTheServerSpellsIt_data() {
        Columns<QString, QString>();
        QTest::newRow("supplies") << "ca"
                                  << "|CA||CAPD SUPPLIES|||||Y|46||CA||";
        QTest::newRow("fees") << "CY"
                              << "|CY||CAPD CONSULTATION FEE|||||Y|||||";
        QTest::newRow("by description") << "prof"
                                        << "|MD||PROFESSIONAL FEE|||||Y|||||";
    }

    void RevenueCode_isTakenAsTheServerSpellsIt() {
        auto [typed, line] = Fetch<QString, QString>();
        const ChargeWindow& window = Open();
        window.Enter(typed);
        QCOMPARE(window.Line(1).join(u'|'), line);
        QCOMPARE(window.At(), QPoint(1, Code));
    }

    void RevenueCode_ambiguousIsPickedOrCancelled() {
        ChargeWindow& window = Open();
        {
            PickListKeys keys;
            window.Enter(u"c"_s);
            QCOMPARE(keys.Shown, 1);
            QCOMPARE(window.Cell(1, Dept), QString());
            QCOMPARE(window.At(), QPoint(1, Dept));
            QCOMPARE(window.Grid.EditText(), u"c"_s);
        }
        QString criteria, caption;
        PickListKeys keys([&](QDialog& list) {
            auto* box = list.findChild<QLineEdit*>(u"txtSearchStr"_s);
            criteria = box->text();
            caption = list.windowTitle();
            QTest::keyClicks(box, u"central"_s);
            QTest::keyClick(box, Qt::Key_Return);
        });
        window.Key(Qt::Key_Return);
        QCOMPARE(keys.Shown, 1);
        QCOMPARE(criteria, u"c"_s);
        QCOMPARE(caption, u"Revenue Codes"_s);
        QCOMPARE(window.Cell(1, Dept), u"CS"_s);
        QCOMPARE(window.Cell(1, LocationID), u"21"_s);
        QCOMPARE(window.At(), QPoint(1, Code));
    }

    void RevenueCode_unknownIsRefused() {
        const ChargeWindow& window = Open();
        m_boxes->Answer(BoxAnswer::Ok);
        window.Enter(u"ZZ"_s);
        ExpectBox("Item does not exists.", BoxIcon::Exclamation);
        QCOMPARE(window.At(), QPoint(1, Dept));
        QCOMPARE(window.Line(1).join(QString()), QString());
        window.Key(Qt::Key_Escape);
        window.Enter(u"CY"_s);
        QCOMPARE(window.At(), QPoint(1, Code));
    }

    void RevenueCode_changedEmptiesTheLine() {
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"101"_s, u"2"_s);
        const QStringList before = window.Line(1);
        // The same code again, in whatever case, is no change.
        window.EnterAt(1, Dept, u"ca"_s);
        QCOMPARE(window.Line(1), before);
        window.EnterAt(1, Dept, u"CY"_s);
        QCOMPARE(window.Line(1).join(u'|'), u"|CY||CAPD CONSULTATION FEE|||||Y|||||"_s);
        QCOMPARE(window.Totals(), QStringList(3, u"0.00"_s));
    }

    void RevenueCode_isListedByF1() {
        const ChargeWindow& window = Open();
        window.Enter(u"CA"_s);
        window.Grid.SetCol(Dept);
        int offered = 0;
        PickListKeys keys([&](QDialog& list) {
            offered = list.findChild<QLabel*>(u"lblTotal"_s)->text().toInt();
            auto* box = list.findChild<QLineEdit*>(u"txtSearchStr"_s);
            QTest::keyClicks(box, u"CY"_s);
            QTest::keyClick(box, Qt::Key_Return);
        });
        window.Key(Qt::Key_F1);
        // All codes, whatever stands in the cell.
        QCOMPARE(offered, 5);
        QCOMPARE(window.Cell(1, Dept), u"CY"_s);
        QCOMPARE(window.At(), QPoint(1, Code));
    }

    void StockItem_isPricedAndDiscounted() {
        ChargeWindow& window = Open();
        window.Enter(u"CA"_s);
        window.Enter(u" 102 "_s);
        QCOMPARE(window.Line(1).join(u'|'),
                 u"|CA|102|DIALYSIS SOLUTION 2.3% 2 L||390.25|1|390.25|Y|46|390.25|CA|"
                 "312.2|78.05"_s);
        QCOMPARE(window.At(), QPoint(1, Type));
        QVERIFY(window.Find<QPushButton>("cmdSave").isEnabled());
        QVERIFY(window.Find<QPushButton>("cmdSavePrint").isEnabled());
        QCOMPARE(window.Totals().join(u'|'), u"390.25|78.05|312.20"_s);
        // Type and quantity may stay as they are: Enter walks to the next line.
        window.Type(u"s"_s);
        window.Key(Qt::Key_Return);
        QCOMPARE(window.Cell(1, Type), u"STAT"_s);
        window.Key(Qt::Key_Return);
        QCOMPARE(window.At(), QPoint(2, Dept));
    }

    void StockItem_isFoundByItsName() {
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"drain"_s);
        QCOMPARE(window.Cell(1, Code), u"108"_s);
        // Several of that name: the list is narrowed by what was typed.
        QString narrowed;
        PickListKeys keys([&](QDialog& list) {
            narrowed = PickListKeys::Box(list)->text();
            QTest::keyClick(PickListKeys::Box(list), Qt::Key_Down);
            QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Down);
            QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Return);
        });
        window.Charge(u"CA"_s, u"dialysis"_s);
        QCOMPARE(keys.Shown, 1);
        QCOMPARE(narrowed, u"DIALYSIS"_s);
        QVERIFY(window.Cell(2, Description).startsWith(u"DIALYSIS SOLUTION"_s));
        QCOMPARE(window.At(), QPoint(2, Type));
    }

    void StockItem_notFoundLeavesTheLine() {
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"101"_s, u"4"_s);
        const QStringList before = window.Line(1);
        m_session->Connection->Execute(
            u"UPDATE BILLING..tbDrug SET Status = 1 WHERE DrugCode = '105'"_s);
        m_session->Connection->Execute(
            u"UPDATE BILLING..tbDrugStock SET OnHand = -2 WHERE DrugCode = '108'"_s);
        PickListKeys cancelled;
        m_boxes->Answer(BoxAnswer::Ok);
        for (const QString& code : {u"9999"_s, u"105"_s}) {
            window.EnterAt(1, Code, code);
            QCOMPARE(window.Line(1), before);
            QCOMPARE(window.At(), QPoint(1, Code));
            // What was typed waits to be corrected.
            QCOMPARE(window.Grid.EditText(), code);
            window.Key(Qt::Key_Escape);
        }
        QCOMPARE(cancelled.Shown, 1);
        ExpectBox("Record is inactive...please reenter...", BoxIcon::Exclamation, "Message");
        window.EnterAt(1, Code, u"108"_s);
        QCOMPARE(window.Label("lblMessage"),
                 window.Cell(1, Description) + u": none in stock (-2)."_s);
    }

    void StockItem_mayStandTwice() {
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"101"_s);
        window.Charge(u"CA"_s, u"101"_s);
        QCOMPARE(window.Cell(2, Code), u"101"_s);
    }

    void StockItem_isListedByF1() {
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"101"_s);
        window.Grid.SetCell(1, Code);
        PickListKeys keys([](QDialog& list) {
            QTest::keyClicks(PickListKeys::Box(list), u"face"_s);
            QTest::keyClick(PickListKeys::Box(list), Qt::Key_Return);
        });
        window.Key(Qt::Key_F1);
        QCOMPARE(keys.Shown, 1);
        QCOMPARE(window.Cell(1, Code), u"113"_s);
        QCOMPARE(window.At(), QPoint(1, Type));
    }

    void Item_beforeItsRevenueCodeIsNotFound() {
        ChargeWindow& window = Open();
        PickListKeys none;
        window.EnterAt(1, Code, u"101"_s);
        QCOMPARE(none.Shown, 0);
        QCOMPARE(window.Label("lblMessage"), u"Type the revenue code of the line first."_s);
        QCOMPARE(window.Line(1).join(QString()), QString());
        QCOMPARE(window.At(), QPoint(1, Code));
    }

    void Fee_isPricedWithoutDiscount() {
        ChargeWindow& window = Open();
        window.Charge(u"MD"_s, u"802"_s);
        QCOMPARE(window.Line(1).join(u'|'),
                 u"N|MD|802|NEPHROLOGIST'S FOLLOW-UP||500.00|1|500.00|Y||500.00||500|0"_s);
        QCOMPARE(window.At(), QPoint(1, Type));
        QCOMPARE(window.Totals().join(u'|'), u"500.00|0.00|500.00"_s);
    }

    void Fee_onAnotherLineIsRefused() {
        ChargeWindow& window = Open();
        window.Charge(u"CY"_s, u"501"_s);
        window.Charge(u"CY"_s, u"502"_s);
        m_boxes->Answer(BoxAnswer::Ok);
        window.EnterAt(2, Code, u"501"_s);
        ExpectBox("Exam already selected.", BoxIcon::Exclamation, "Assessment");
        QCOMPARE(window.Cell(2, Code), QString());
        QCOMPARE(window.At(), QPoint(2, Code));
        QCOMPARE(window.Totals().first(), u"450.00"_s);
        // The line's own fee, typed anew, is no duplicate; nor is the code under another revenue
        // code.
        window.Enter(u"503"_s);
        m_session->Connection->Execute(
            u"INSERT INTO BILLING..tbOtherRevenue (RevenueID, ItemCode, OtherRevenue, RateA) "
            "VALUES ('MD', '501', 'SAME NUMBER', 10)"_s);
        window.Charge(u"MD"_s, u"501"_s);
        QCOMPARE(window.Cell(3, Description), u"SAME NUMBER"_s);
    }

    void Fee_cancelledLeavesTheLine() {
        ChargeWindow& window = Open();
        window.Charge(u"CY"_s, u"501"_s);
        const QStringList before = window.Line(1);
        PickListKeys cancelled;
        window.EnterAt(1, Code, u"cap"_s);
        QCOMPARE(cancelled.Shown, 1);
        QCOMPARE(window.Line(1), before);
        QCOMPARE(window.At(), QPoint(1, Code));
    }

    void Fee_openPriceIsTyped() {
        ChargeWindow& window = Open();
        window.Charge(u"CY"_s, u"510"_s);
        QCOMPARE(window.Cell(1, OpenPrice), u"Y"_s);
        QCOMPARE(window.Cell(1, Price), u"0.00"_s);
        window.EnterAt(1, Amount, u"123.5"_s);
        QCOMPARE(window.Cell(1, Amount), u"123.50"_s);
        QCOMPARE(window.Totals().join(u'|'), u"123.50|0.00|123.50"_s);
        window.EnterAt(1, Quantity, u"3"_s);
        QCOMPARE(window.Cell(1, Amount), u"123.50"_s);
    }

    void Amount_isHeldAgainstThePrice_data() {
        Columns<QString, bool, QString>();
        QTest::newRow("equal") << "450" << false << "450.00";
        QTest::newRow("a centavo below") << "449.99" << true << "450.00";
        QTest::newRow("a fraction below") << "449.999" << true << "450.00";
        QTest::newRow("above") << "1000.005" << false << "1000.01";
        QTest::newRow("only a point") << "." << true << "450.00";
    }

    void Amount_isHeldAgainstThePrice() {
        auto [typed, refused, amount] = Fetch<QString, bool, QString>();
        ChargeWindow& window = Open();
        window.Charge(u"CY"_s, u"501"_s);
        if (refused)
            m_boxes->Answer(BoxAnswer::Ok);
        window.EnterAt(1, Amount, typed);
        if (refused)
            ExpectBox("You cannot enter amount lesser than the price.", BoxIcon::Information,
                      "Message");
        QCOMPARE(window.Cell(1, Amount), amount);
        // Two of them cost what two of them cost, whatever was typed for the one.
        window.EnterAt(1, Quantity, u"2"_s);
        QCOMPARE(window.Cell(1, Amount), u"900.00"_s);
        const QString told = u"The amount 1000.01 is now price times quantity: 900.00."_s;
        QCOMPARE(window.Label("lblMessage"), typed.startsWith(u"1000") ? told : QString());
    }

    void Amount_isNotTypedOnStockLines() {
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"101"_s);
        window.EnterAt(1, Amount, u"9999"_s);
        QCOMPARE(window.Cell(1, Amount), u"385.00"_s);
        // Nor where there is no item yet.
        window.Grid.AddLine();
        window.EnterAt(2, Amount, u"9999"_s);
        QCOMPARE(window.Cell(2, Amount), QString());
    }

    void Quantity_pricesTheLine_data() {
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

    void Quantity_pricesTheLine() {
        QFETCH(QString, typed);
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"101"_s, typed);
        QTEST(window.Line(1)[Amount] + u'|' + window.Cell(1, NetAmount) + u'|' +
                  window.Cell(1, Discount),
              "amounts");
        QTEST(window.Label("lblMessage"), "told");
        QCOMPARE(window.Totals()[1], base::MoneyText(base::Val(window.Cell(1, Discount))));
        // The units that are priced are those that stand in the sheet.
        QCOMPARE(base::MoneyText(385 * base::Val(window.Cell(1, Quantity))),
                 window.Cell(1, Amount));
    }

    void Quantity_scalesFromOneUnit() {
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"102"_s, u"2"_s);
        window.EnterAt(1, Quantity, u"3"_s);
        QCOMPARE(window.Cell(1, Amount), u"1170.75"_s);
        QCOMPARE(window.Cell(1, NetAmount), u"936.6"_s);
        QCOMPARE(window.Cell(1, Discount), u"234.15"_s);
        // Another item on the line begins with its own values, for one unit and of no type.
        window.Grid.SetTextMatrix(1, Type, u"STAT"_s);
        window.EnterAt(1, Code, u"105"_s);
        QCOMPARE(window.Cell(1, Type) + window.Cell(1, Quantity), u"1"_s);
        window.EnterAt(1, Quantity, u"10"_s);
        QCOMPARE(window.Totals().join(u'|'), u"300.00|60.00|240.00"_s);
    }

    void Quantity_thatOverflowsIsRefused() {
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"101"_s, u"2"_s);
        const QStringList before = window.Line(1);
        for (const QString& typed : {u"32767.5"_s, QString(400, u'9')}) {
            window.EnterAt(1, Quantity, typed);
            QCOMPARE(window.Line(1), before);
            QCOMPARE(window.Label("lblMessage"), u"The largest quantity is 32767."_s);
            window.Key(Qt::Key_Escape);
        }
    }

    void RemovedLine_takesItsAmountsAlong() {
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"101"_s);
        window.Charge(u"CA"_s, u"102"_s);
        window.Charge(u"CY"_s, u"501"_s);
        window.Grid.SetCell(1, Code);
        window.Key(Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(window.Totals().join(u'|'), u"840.25|78.05|762.20"_s);
        // The lines behind it keep their own values of one unit.
        window.EnterAt(1, Quantity, u"2"_s);
        window.EnterAt(2, Quantity, u"2"_s);
        QCOMPARE(window.Totals().join(u'|'), u"1680.50|156.10|1524.40"_s);
        window.Key(Qt::Key_Delete, Qt::ControlModifier);
        window.Key(Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(window.Totals(), QStringList(3, u"0.00"_s));
        window.Charge(u"CY"_s, u"501"_s);
        QCOMPARE(window.Totals().first(), u"450.00"_s);
    }
};

QTEST_MAIN(tst_ChargeLines)
#include "tst_ChargeLines.moc"
