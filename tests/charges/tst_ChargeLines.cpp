#include "ChargeWindow.h"

using namespace ChargeColumn;

namespace {

/// A catalogue that holds one item, at whatever price.
class OddCatalogue final : public components::SupplyInfo {
public:
    explicit OddCatalogue(double price) {
        m_drug.SellingPriceOut = price;
        m_drug.OnHand = 1;
    }
    bool InitConnect(const std::shared_ptr<db::Connection>&) override { return true; }
    bool SearchDrug(const QString&, const QString&) override { return true; }
    const components::DrugRecord& Drug() const override { return m_drug; }

private:
    components::DrugRecord m_drug;
};

/// Fees of whatever rate.
class OddFees final : public components::CodeSearch {
public:
    explicit OddFees(double rate) : m_fee{u"501"_s, u"FEE"_s, rate} {}
    void SetMTS_Server(const QString&) override {}
    void Initialize_Classes() override {}
    void SetCompanyName(const QString&) override {}
    void SetSearchMode(bool) override {}
    void SetConnection(const std::shared_ptr<db::Connection>&) override {}
    void SetOtherSectionID(const QString&) override {}
    bool SearchListing(QString&, int) override { return true; }
    const components::OtherRevenueRecord& OtherRevenue() const override { return m_fee; }

private:
    components::OtherRevenueRecord m_fee;
};

/// Types into the search box of the list of items and takes its first row.
PickListKeys PickItem(const QString& name) {
    return PickListKeys([name](QDialog& list) {
        QTest::keyClicks(PickListKeys::Box(list), name);
        QTest::keyClick(PickListKeys::Box(list), Qt::Key_Return);
    });
}

}  // namespace

// The lines of the charge sheet as a clerk types them: by keys, over a demo hospital.
class tst_ChargeLines final : public ChargeTest {
    Q_OBJECT
private slots:
    void init() {
        SetUp();
        Do(u"INSERT INTO BILLING..tbRevenueCode (RevenueID, Revenue, WithItems, SearchInventory, "
           "LocationID) VALUES ('CZ', 'NO ITEMS', 'N', 0, '9'), ('MZ', 'STOCK', 'N', 1, '9')"_s);
        Open();
    }
    void cleanup() { CloseAll(); }

    void RevenueCode_isTakenAsTheServerSpellsIt_data() {
        Columns<QString, QString, int>();
        Row("supplies", "ca", "|CA||CAPD SUPPLIES|||||Y|46||CA||", int(Code));
        Row("by description", "prof", "|MD||PROFESSIONAL FEE|||||Y|||||", int(Code));
        Row("stock alone", "MZ", "|MZ||STOCK|||||N|9||||", int(Code));
        Row("without items", "CZ", "|CZ||NO ITEMS|||||N|9||||", int(Dept));
    }

    void RevenueCode_isTakenAsTheServerSpellsIt() {
        auto [typed, line, col] = Fetch<QString, QString, int>();
        EnterText(typed);
        QCOMPARE(m_window->Line(1), line);
        QCOMPARE(m_window->At(), QPoint(1, col));
    }

    void RevenueCode_ambiguousIsPickedOrCancelled() {
        {
            PickListKeys keys;
            EnterText(u"c"_s);
            QCOMPARE(keys.Shown, 1);
            QCOMPARE(m_window->Cell(1, Dept), QString());
            QCOMPARE(m_window->At(), QPoint(1, Dept));
            QCOMPARE(m_window->Grid.EditText(), u"c"_s);
        }
        QString criteria;
        PickListKeys keys([&](QDialog& list) {
            auto& box = Find<QLineEdit>(list, "txtSearchStr");
            criteria = box.text();
            QTest::keyClicks(&box, u"central"_s);
            QTest::keyClick(&box, Qt::Key_Return);
        });
        PressKey(Qt::Key_Return);
        QCOMPARE(criteria, u"c"_s);
        QCOMPARE(m_window->Line(1).section(u'|', 1, 9), u"CS||CENTRAL SUPPLY|||||Y|21"_s);
        QCOMPARE(m_window->At(), QPoint(1, Code));
    }

    void RevenueCode_unknownIsRefused_data() {
        Columns<QString, bool>();
        Row("nothing begins so", "ZZ", false);
        Row("another department's", "XR", false);
        Row("gone while its list was open", "c", true);
    }

    void RevenueCode_unknownIsRefused() {
        auto [typed, gone] = Fetch<QString, bool>();
        Answer(BoxAnswer::Ok);
        PickListKeys keys([](QDialog& list) {
            Do(u"DELETE BILLING..tbRevenueCode WHERE RevenueID <> 'MD'"_s);
            Find<QLineEdit>(list, "txtSearchStr").setFocus();
            Click(list, "cmdSelect");
        });
        EnterText(typed);
        QCOMPARE(keys.Shown, int(gone));
        QCOMPARE(Said().Text, u"Item does not exists."_s);
        QCOMPARE(m_window->At(), QPoint(1, Dept));
        QCOMPARE(m_window->Line(1), QString(13, u'|'));
        PressKey(Qt::Key_Escape);
        EnterText(u"MD"_s);
        QCOMPARE(m_window->At(), QPoint(1, Code));
    }

    void RevenueCode_changedEmptiesTheLine() {
        m_window->Charge(u"CA"_s, u"101"_s, u"2"_s);
        const QString before = m_window->Line(1);
        // The same code again, in whatever case, is no change.
        m_window->EnterAt(1, Dept, u"ca"_s);
        QCOMPARE(m_window->Line(1), before);
        m_window->EnterAt(1, Dept, u"CY"_s);
        QCOMPARE(m_window->Line(1), u"|CY||CAPD CONSULTATION FEE|||||Y|||||"_s);
        QCOMPARE(m_window->Totals(), u"0.00|0.00|0.00"_s);
    }

    void Lists_openByF1() {
        EnterText(u"CA"_s);
        m_window->Grid.SetCol(Dept);
        int offered = 0;
        {
            PickListKeys keys([&](QDialog& list) {
                offered = PickListKeys::Total(list);
                auto& box = Find<QLineEdit>(list, "txtSearchStr");
                QTest::keyClicks(&box, u"CS"_s);
                QTest::keyClick(&box, Qt::Key_Return);
            });
            PressKey(Qt::Key_F1);
        }
        // All codes, whatever stands in the cell.
        QCOMPARE(offered, 7);
        QCOMPARE(m_window->Cell(1, Dept), u"CS"_s);
        QCOMPARE(m_window->At(), QPoint(1, Code));
        m_window->Charge(u"CA"_s, u"101"_s);
        m_window->Grid.SetCell(1, Code);
        const auto keys = PickItem(u"face"_s);
        PressKey(Qt::Key_F1);
        QCOMPARE(m_window->Cell(1, Code), u"113"_s);
        QCOMPARE(m_window->At(), QPoint(1, Type));
    }

    void StockItem_isPricedAndDiscounted() {
        EnterText(u"CA"_s);
        EnterText(u" 102 "_s);
        QCOMPARE(m_window->Line(1),
                 u"|CA|102|DIALYSIS SOLUTION 2.3% 2 L||390.25|1|390.25|Y|46|"
                 "390.25|CA|312.2|78.05"_s);
        QCOMPARE(m_window->Totals(), u"390.25|78.05|312.20"_s);
        // Type and quantity may stay as they are: Enter walks to the next line.
        EnterText(u"s"_s);
        QCOMPARE(m_window->Cell(1, Type), u"STAT"_s);
        PressKey(Qt::Key_Return);
        QCOMPARE(m_window->At(), QPoint(2, Dept));
    }

    void StockItem_isFoundByItsName() {
        // The list is narrowed by what was typed.
        QString narrowed;
        PickListKeys keys([&](QDialog& list) {
            narrowed = PickListKeys::Box(list)->text();
            QTest::keyClick(PickListKeys::Box(list), Qt::Key_Down);
            QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Down);
            QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Return);
        });
        m_window->Charge(u"CA"_s, u"dialysis"_s);
        QCOMPARE(narrowed, u"DIALYSIS"_s);
        QVERIFY(m_window->Cell(1, Description).startsWith(u"DIALYSIS SOLUTION"_s));
        QCOMPARE(m_window->At(), QPoint(1, Type));
    }

    void StockItem_notFoundLeavesTheLine() {
        m_window->Charge(u"CA"_s, u"101"_s, u"4"_s);
        const QString before = m_window->Line(1);
        Do(u"UPDATE BILLING..tbDrug SET Status = 1 WHERE DrugCode = '105'"_s);
        Do(u"UPDATE BILLING..tbDrugStock SET OnHand = -2 WHERE DrugCode = '108'"_s);
        PickListKeys cancelled;
        Answer(BoxAnswer::Ok);
        for (const QString& code : {u"9999"_s, u"105"_s}) {
            m_window->EnterAt(1, Code, code);
            QCOMPARE(m_window->Line(1), before);
            QCOMPARE(m_window->At(), QPoint(1, Code));
            // What was typed waits to be corrected.
            QCOMPARE(m_window->Grid.EditText(), code);
            PressKey(Qt::Key_Escape);
        }
        QCOMPARE(cancelled.Shown, 1);
        QCOMPARE(Said().Text, u"Record is inactive...please reenter..."_s);
        m_window->EnterAt(1, Code, u"108"_s);
        QCOMPARE(m_window->Text("lblMessage"),
                 m_window->Cell(1, Description) + u": none in stock (-2)."_s);
        // It may stand twice.
        m_window->Charge(u"CA"_s, u"108"_s);
        QCOMPARE(m_window->Cell(2, Code), u"108"_s);
    }

    void Item_beforeItsRevenueCodeIsNotFound() {
        m_window->EnterAt(1, Code, u"101"_s);
        QCOMPARE(m_window->Text("lblMessage"), u"Type the revenue code of the line first."_s);
        QCOMPARE(m_window->Line(1), QString(13, u'|'));
        QCOMPARE(m_window->At(), QPoint(1, Code));
    }

    // The price is read from the catalogue, its discount from the server, one after the other.
    void Discount_ofAnotherPriceIsNotGiven_data() {
        Columns<QString>();
        Row("changed", "UPDATE BILLING..tbDrug SET SellingPriceOut = 100");
        Row("gone", "DELETE BILLING..tbDrug WHERE DrugCode = '101'");
    }

    void Discount_ofAnotherPriceIsNotGiven() {
        auto [meanwhile] = Fetch<QString>();
        PluggedDriver::Before = [&meanwhile](db::Driver& server, const QString& command) {
            db::RowStore none;
            if (command.startsWith(u"RADIOLOGY..spRadio_GetDiscount '"))
                server.Execute(meanwhile, none);
        };
        m_window->Charge(u"CA"_s, u"101"_s);
        QCOMPARE(m_window->Line(1, Price), u"385.00|1|385.00|Y|46|385.00|CA|385|0"_s);
    }

    void Price_oddOneIsNoneOrRefused() {
        const auto charge = [this](double price, const QStringList& item) {
            modGlobals::gSupplyInfo = std::make_shared<OddCatalogue>(price);
            modGlobals::gCodeSearch = std::make_shared<OddFees>(price);
            // Another revenue code has emptied the line before.
            for (const QString& revenueId : {u"MD"_s, item[0]})
                m_window->EnterAt(1, Dept, revenueId);
            EnterText(item[1]);
            PressKey(Qt::Key_Escape);
            return m_window->Cell(1, Amount) + m_window->Text("lblMessage");
        };
        for (const QStringList& item : {QStringList{u"CA"_s, u"101"_s}, {u"CY"_s, u"501"_s}}) {
            QCOMPARE(charge(1e300, item), u"The catalogue's price is more than can be charged."_s);
            for (const double none : {0.0, -385.0, std::numeric_limits<double>::quiet_NaN()})
                QCOMPARE(charge(none, item), u"0.00"_s);
            QCOMPARE(charge(922'337'203'685'477.0, item), u"922337203685477.00"_s);
        }
        m_window->EnterAt(1, Quantity, u"2"_s);
        QCOMPARE(m_window->Text("lblMessage"), u"So many cost more than can be charged."_s);
        PressKey(Qt::Key_Escape);
        m_window->EnterAt(1, Amount, u"922337203685478"_s);
        QCOMPARE(m_window->Text("lblMessage"), u"The largest amount is 922337203685477.00."_s);
        PressKey(Qt::Key_Escape);
    }

    void Fee_onAnotherLineIsRefused() {
        m_window->Charge(u"CY"_s, u"501"_s);
        m_window->Charge(u"CY"_s, u"502"_s);
        const QString before = m_window->Line(2);
        PickListKeys cancelled;
        m_window->EnterAt(2, Code, u"capd"_s);
        QCOMPARE(cancelled.Shown, 1);
        QCOMPARE(m_window->Line(2), before);
        Answer(BoxAnswer::Ok);
        m_window->EnterAt(2, Code, u"501"_s);
        QCOMPARE(Said().Text, u"Exam already selected."_s);
        QCOMPARE(m_window->Line(2).section(u'|', 1), u"CY|||||||Y|||||"_s);
        QCOMPARE(m_window->At(), QPoint(2, Code));
        // The line's own fee, typed anew, is no duplicate; nor is the code under another revenue
        // code.
        EnterText(u"503"_s);
        m_window->EnterAt(2, Code, u"503"_s);
        Do(u"INSERT INTO BILLING..tbOtherRevenue (RevenueID, ItemCode, OtherRevenue, RateA) VALUES "
           "('MD', '501', 'SAME NUMBER', 10)"_s);
        m_window->Charge(u"MD"_s, u"501"_s);
        QCOMPARE(m_window->Cell(3, Description), u"SAME NUMBER"_s);
    }

    void Fee_openPriceIsTyped() {
        m_window->Charge(u"CY"_s, u"510"_s);
        QCOMPARE(m_window->Cell(1, OpenPrice) + m_window->Cell(1, Price), u"Y0.00"_s);
        m_window->EnterAt(1, Amount, u"123.5"_s);
        QCOMPARE(m_window->Totals(), u"123.50|0.00|123.50"_s);
        m_window->EnterAt(1, Quantity, u"3"_s);
        QCOMPARE(m_window->Cell(1, Amount), u"123.50"_s);
        QCOMPARE(m_window->Text("lblMessage"), QString());
    }

    void Amount_isHeldAgainstThePrice_data() {
        Columns<QString, bool, QString>();
        Row("equal", "450", false, "450.00");
        Row("a centavo below", "449.99", true, "450.00");
        Row("a fraction below", "449.999", true, "450.00");
        Row("above", "1000.005", false, "1000.01");
        Row("only a point", ".", true, "450.00");
    }

    void Amount_isHeldAgainstThePrice() {
        auto [typed, refused, amount] = Fetch<QString, bool, QString>();
        m_window->Charge(u"CY"_s, u"501"_s);
        Answer(BoxAnswer::Ok, refused);
        m_window->EnterAt(1, Amount, typed);
        QCOMPARE(Said().Text,
                 refused ? u"You cannot enter amount lesser than the price."_s : QString());
        QCOMPARE(m_window->Cell(1, Amount), amount);
        // Two of them cost what two of them cost, whatever was typed for the one.
        m_window->EnterAt(1, Quantity, u"2"_s);
        QCOMPARE(m_window->Cell(1, Amount), u"900.00"_s);
        const QString told = u"The amount 1000.01 is now price times quantity: 900.00."_s;
        QCOMPARE(m_window->Text("lblMessage"), typed.startsWith(u"1000") ? told : QString());
    }

    void Amount_isNotTypedOnStockLines() {
        m_window->Charge(u"CA"_s, u"101"_s);
        m_window->EnterAt(1, Amount, u"9999"_s);
        QCOMPARE(m_window->Cell(1, Amount), u"385.00"_s);
        // Nor where there is no item yet.
        m_window->Grid.AddLine();
        m_window->EnterAt(2, Amount, u"9999"_s);
        QCOMPARE(m_window->Cell(2, Amount), QString());
    }

    void Quantity_pricesTheLine_data() {
        Columns<QString, QString, QString>();
        const char* told = "Taken: 2. Only digits and one point count.";
        Row("zero counts as one", "0", "1|385.00|308|77", "0 counts as 1.");
        Row("only a point", ".", "1|385.00|308|77", ". counts as 1.");
        Row("a minus is not taken", "-2", "2|770.00|616|154", told);
        Row("letters are not taken", "x", "1|385.00|308|77",
            "x: only digits and one point count here.");
        Row("an exponent is not taken", "1e1", "11|4235.00|3388|847",
            "Taken: 11. Only digits and one point count.");
        Row("half to even, down", "2.5", "2|770.00|616|154", "2.5 counts as 2.");
        Row("half to even, up", "3.5", "4|1540.00|1232|308", "3.5 counts as 4.");
        Row("less than half a unit", "0.4", "1|385.00|308|77", "0.4 counts as 1.");
        Row("most", "32767", "32767|12615295.00|10092236|2523059", "");
        Row("more", "32767.5", "1|385.00|308|77", "The largest quantity is 32767.");
        Row("more than any number", QString(400, u'9'), "1|385.00|308|77",
            "The largest quantity is 32767.");
    }

    void Quantity_pricesTheLine() {
        auto [typed, amounts, told] = Fetch<QString, QString, QString>();
        m_window->Charge(u"CA"_s, u"101"_s, typed);
        QCOMPARE(m_window->Text("lblMessage"), told);
        PressKey(Qt::Key_Escape);
        QStringList cells;
        for (const int col : {Quantity, Amount, NetAmount, Discount})
            cells << m_window->Cell(1, col);
        QCOMPARE(cells.join(u'|'), amounts);
    }

    void Quantity_scalesFromOneUnit() {
        m_window->Charge(u"CA"_s, u"102"_s, u"2"_s);
        m_window->EnterAt(1, Quantity, u"3"_s);
        QCOMPARE(m_window->Totals(), u"1170.75|234.15|936.60"_s);
        // Another item on the line begins with its own values, for one unit and of no type.
        m_window->Grid.SetTextMatrix(1, Type, u"STAT"_s);
        m_window->EnterAt(1, Code, u"105"_s);
        QCOMPARE(m_window->Cell(1, Type) + m_window->Cell(1, Quantity), u"1"_s);
        m_window->EnterAt(1, Quantity, u"10"_s);
        QCOMPARE(m_window->Totals(), u"300.00|60.00|240.00"_s);
    }

    void RemovedLine_takesItsAmountsAlong() {
        m_window->Charge(u"CA"_s, u"101"_s);
        m_window->Charge(u"CA"_s, u"102"_s);
        m_window->Charge(u"CY"_s, u"501"_s);
        m_window->Grid.SetCell(1, Code);
        PressKey(Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(m_window->Totals(), u"840.25|78.05|762.20"_s);
        // The lines behind it keep their own values of one unit.
        m_window->EnterAt(1, Quantity, u"2"_s);
        m_window->EnterAt(2, Quantity, u"2"_s);
        QCOMPARE(m_window->Totals(), u"1680.50|156.10|1524.40"_s);
        PressKey(Qt::Key_Delete, Qt::ControlModifier);
        PressKey(Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(m_window->Totals(), u"0.00|0.00|0.00"_s);
        m_window->Charge(u"CY"_s, u"501"_s);
        QCOMPARE(m_window->Totals(), u"450.00|0.00|450.00"_s);
    }
};

QTEST_MAIN(tst_ChargeLines)
#include "tst_ChargeLines.moc"
