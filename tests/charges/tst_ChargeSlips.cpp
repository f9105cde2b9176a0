#include "ChargeWindow.h"
#include "ShownWindows.h"
#include "SlipCase.h"

using namespace ChargeColumn;

// A sheet becomes a slip: what is written, in which order, what the funds pay, and what a failure
// at any place leaves: nothing.
class tst_ChargeSlips final : public ChargeTest {
    Q_OBJECT
private slots:
    void init() {
        SetUp();
        m_case = std::make_unique<SlipCase>();
        QVERIFY(!m_case->IdNum.isEmpty());
    }
    void cleanup() { CloseAll(); }

    void Save_letsTheFundsPayLineByLine() {
        m_case->Sponsor({300, 200, 1000});
        OpenSheet();
        TypeThreeKinds();
        const ShownWindows shown;
        m_window->Press("cmdSave");
        QCOMPARE(shown.Titles, QStringList(u"Viewing"_s));
        QVERIFY(!m_window->Window.isVisible());
        // 1574.40 in all: the funds give their 1500.00, 74.40 of the doctor's fee stay the
        // patient's.
        QCOMPARE(m_case->FundBalances(), u"0;0;0"_s);
        QCOMPARE(
            Ask(u"SELECT ItemID, AccountNum, Amount, RevenueID FROM BILLING..tbCompanyPayment "
                "WHERE RefNum = '%1' ORDER BY RequestNum"_s.arg(LastSlip())),
            u"102|T-1|300|CY;102|T-2|200|CY;102|T-3|124.4|CY;501|T-3|450|CY;802|T-3|425.6|MD"_s);
    }

    void Save_refuses_data() {
        Columns<QString, QString, QString, int>();
        Row("nothing typed", "", "", "There are no entries to be saved.", int(Dept));
        Row("an amount of 0", "CY", "510", "Please indicate the amount for the exam '%1'.",
            int(Amount));
        Row("a price of 0", "CA", "102", "Please indicate the quantity for the exam '%1'.",
            int(Quantity));
    }

    void Save_refuses() {
        auto [revenueId, item, text, col] = Fetch<QString, QString, QString, int>();
        Do(u"UPDATE BILLING..tbDrug SET SellingPriceOut = 0 WHERE DrugCode = '102'"_s);
        OpenSheet();
        if (!item.isEmpty()) {
            m_window->Charge(u"CA"_s, u"101"_s);
            m_window->Charge(revenueId, item);
        }
        const int row = m_window->Grid.Rows() - 1;
        Button("cmdSave").setEnabled(true);
        Answer(BoxAnswer::Ok);
        const CommandLog log;
        m_window->Press("cmdSave");
        QCOMPARE(log.Sent, QStringList());
        QCOMPARE(Said().Text,
                 item.isEmpty() ? text : text.arg(m_window->Cell(row, Description).trimmed()));
        QVERIFY(m_window->Window.isVisible());
        QCOMPARE(m_window->At(), QPoint(row, col));
    }

    void Save_waitsForWhatAnOpenCellTold() {
        OpenSheet();
        const QString before = SlipCase::State();
        m_window->Charge(u"CY"_s, u"501"_s);
        const auto saveOver = [&](int col, const QString& typed) {
            m_window->Grid.SetCell(1, col);
            TypeText(typed);
            m_window->Press("cmdSave");
        };
        saveOver(Quantity, u"1,5"_s);
        QCOMPARE(m_window->Text("lblMessage"),
                 u"Taken: 15. Only digits and one point count. Not saved yet: save once "
                 "more."_s);
        Answer(BoxAnswer::Ok);
        saveOver(Amount, u"5"_s);
        QCOMPARE(m_window->At(), QPoint(1, Amount));
        QCOMPARE(SlipCase::State(), before);
        // Alt and the button's letter leave no box: the code is looked up all the same.
        m_window->Box("txtDoctorID").setText(u"106"_s);
        m_window->Press("cmdSave");
        QVERIFY(!m_window->Window.isVisible());
        QVERIFY(OfLastSlip(u"DoctorName"_s).startsWith(u"DR. "));
    }

    void Save_pressedAgainSavesOnce() {
        OpenSheet();
        TypeThreeKinds();
        const int number = NextNumber();
        // Again in the middle of saving, and once more when the slip stands.
        bool again = false;
        PluggedDriver::Before = [&](db::Driver&, const QString& command) {
            if (!std::exchange(again, true) && command.contains(u"sp_CAPD_SaveRequest"))
                m_window->Press("cmdSavePrint");
        };
        m_window->Press("cmdSave");
        m_window->Press("cmdSave");
        m_window->Press("cmdSavePrint");
        QCOMPARE(NextNumber(), number + 1);
    }

    void Save_lostRaceTakesTheNextNumber() {
        OpenSheet();
        TypeThreeKinds();
        const int number = NextNumber();
        int races = 100;
        PluggedDriver::Before = [&races](db::Driver& server, const QString& command) {
            if (races <= 0 || !command.startsWith(u"UPDATE ") || !command.contains(u"tbCAPDSlip"))
                return;
            --races;
            db::RowStore none;
            server.Execute(u"UPDATE CLINICAL_AREA..tbCAPDSlip SET ChargeSlip = ChargeSlip + 1"_s,
                           none);
        };
        const QString before = SlipCase::State();
        QVERIFY_EXCEPTION_THROWN(m_window->Press("cmdSave"), base::DatabaseError);
        QCOMPARE(races, 90);
        QCOMPARE(SlipCase::State(), before);
        races = 9;
        m_window->Press("cmdSave");
        QCOMPARE(NextNumber(), number + 10);
    }

    void Refused_atAnyCommandLeavesNothing_data() {
        Columns<QString, QString, int>();
        Row("save", "cmdSave", "0;0;3925.6", 28);
        Row("revoke", "cmdRevoke", "300;200;4550", 9);
    }

    void Refused_atAnyCommandLeavesNothing() {
        auto [button, balances, commands] = Fetch<QString, QString, int>();
        m_case->Sponsor({300, 200, 5000});
        OpenSheet();
        TypeThreeKinds();
        const ShownWindows shown;
        if (button == u"cmdRevoke") {
            m_window->Press("cmdSave");
            OpenSheet();
            ChooseFirstSlip(*m_window);
        }
        bool isUnharmed = true;
        const QString line = m_window->Line(1), listed = Cell(1, 2);
        const int refused = LoseServerAtEachCommand(SlipCase::State, [&] {
            isUnharmed = isUnharmed && m_window->Window.isVisible() && m_window->Line(1) == line &&
                         Cell(1, 2) == listed;
            m_window->Press(qPrintable(button));
        });
        QVERIFY(isUnharmed);
        // All of them up to the commit, and the one behind it.
        QCOMPARE(refused, commands);
        QCOMPARE(m_window->Window.isVisible(), button == u"cmdRevoke");
        QCOMPARE(m_case->FundBalances(), balances);
    }

    void Failure_behindTheCommitClosesTheWindow() {
        OpenSheet();
        TypeThreeKinds();
        Answer(BoxAnswer::Ok);
        PluggedDriver::Before = [](db::Driver&, const QString& command) {
            if (command.startsWith(u"CLINICAL_AREA..sp_CAPD_PrintChargeSlip"))
                throw base::DatabaseError(701, u"No room."_s + base::kNothingSaved, command);
        };
        QString told;
        try {
            m_window->Press("cmdSavePrint");
        } catch (const base::DatabaseError& error) {
            told = error.Description();
        }
        QCOMPARE(told, u"Slip %1 is saved. Printing failed: No room."_s.arg(LastSlip()));
        QVERIFY(!m_window->Window.isVisible());
        QCOMPARE(LinesOfLastSlip(), 3);
    }

    void Print_andReprintSayTheSame() {
        m_case->Sponsor({300, 200, 1000});
        Do(u"UPDATE PATIENT_DATA..tbUser SET EmployeeName = 'Nurse One' WHERE "
           "EmployeeCode = '4601'"_s);
        OpenSheet();
        TypeThreeKinds();
        m_window->EnterAt(2, Amount, u"460"_s);
        // The catalogue changes while the sheet is open.
        Do(u"UPDATE BILLING..tbDrug SET SellingPriceOut = 9"_s);
        Do(u"UPDATE BILLING..tbOtherRevenue SET RateA = 9"_s);
        Answer(BoxAnswer::Ok, 2);
        ShownWindows shown;
        m_window->Press("cmdSavePrint");
        QCOMPARE(Said().Text, u"Record successfully Saved!"_s);
        QCOMPARE(shown.Titles, QStringList({u"Viewing"_s, u"CAPD ChargeSlip"_s}));
        const QString first = shown.Pages;
        for (const QString& said :
             {u"CAPD CC No.: "_s + LastSlip(), u"O'HARA, Ana Luz"_s, u"Dr. N. O'Faraway"_s,
              u"Pay Patient"_s, u"780.50"_s, u"624.40"_s, u"84.40"_s, u"450.00"_s, u"460.00"_s})
            QVERIFY2(first.contains(said), qPrintable(first));
        // The staging belongs to the slip just printed.
        QCOMPARE(Ask(u"SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDChargeSlip"_s), u"3"_s);

        // The funds are used up: another slip cannot be saved, this one can be printed again, by
        // another clerk on another day.
        m_session->User->Code = u"4602"_s;
        m_session->User->Name = u"Nurse Two"_s;
        base::Clock::Replace([] { return QDateTime(QDate(2031, 3, 5), QTime(14, 7)); });
        OpenSheet();
        ChooseFirstSlip(*m_window);
        m_window->Press("cmdRePrint");
        const QString foot = u"REPRINT by Nurse Two (4602), 3/5/2031 2:07:00 PM\n"_s;
        QVERIFY2(shown.Pages.contains(foot), qPrintable(shown.Pages));
        QCOMPARE(shown.Pages.remove(foot), first);
        QVERIFY(m_window->Window.isVisible());
    }

    void Revoke_takesBackOnce() {
        m_case->Sponsor({300, 200, 5000});
        const QString standing =
            u"SELECT (SELECT SUM(OnHand) FROM BILLING..tbDrugStock), (SELECT SUM(Amount) FROM "
            "BILLING..tbDoctorCharge)"_s;
        const QString before = Ask(standing);
        const ShownWindows shown;
        OpenSheet();
        TypeThreeKinds();
        // The same supply twice on a slip comes back twice.
        m_window->Charge(u"CA"_s, u"102"_s, u"3"_s);
        m_window->Press("cmdSave");
        OpenSheet();
        ChooseFirstSlip(*m_window);
        m_window->Press("cmdRevoke");
        QCOMPARE(Ask(standing), before);
        // The unit's own fee stays listed, billed and paid.
        QCOMPARE(m_case->FundBalances(), u"300;200;4550"_s);
        QCOMPARE(Cell(1, 2), u"501"_s);
        QCOMPARE(Cell(2, 2), QString());
        const QString once = SlipCase::State();
        m_window->Press("cmdRevoke");
        QCOMPARE(SlipCase::State(), once);
    }

    // Another station's list and fund gate are older than what stands.
    void OlderSheet_isHeldAgainstWhatStands() {
        m_case->Sponsor({1500});
        ShownWindows shown;
        OpenSheet();
        TypeThreeKinds();
        ChargeWindow other(m_case->IdNum, m_case->HospNum);
        other.Charge(u"CY"_s, u"502"_s);
        m_window->Press("cmdSave");
        const QString slip = LastSlip();
        const QString saved = SlipCase::State();
        Answer(BoxAnswer::Ok, 2);
        other.Press("cmdSave");
        QCOMPARE(Said().Text,
                 u"Cannot post charges, CDF Balance is 0.00 or Cost Center is not applicable for "
                 "the Fund.Contact Credit and Collection for Information"_s);
        QCOMPARE(SlipCase::State(), saved);
        QVERIFY(!Find<QPushButton>(other.Window, "cmdSavePrint").isVisible());
        QTest::keyClick(&other.Grid, Qt::Key_Escape);
        QCOMPARE(other.Focus(), u"cmdClose"_s);

        OpenSheet();
        ChooseFirstSlip(*m_window);
        ChooseFirstSlip(other);
        other.Press("cmdRevoke");
        QCOMPARE(other.Text("lblMessage"),
                 u"Slip %1: 1124.40 (1 supply, 1 doctor's fee) taken back, 450.00 (1 fee "
                 "of the unit) stays charged."_s.arg(slip));
        QVERIFY(Find<QPushButton>(other.Window, "cmdSave").isVisible());
        const QString once = SlipCase::State();
        // What no longer stands is not printed any more either, and the rest as revoked.
        const CommandLog log;
        m_window->Press("cmdRePrint");
        QCOMPARE(log.Sent.filter(u"PrintChargeSlip"_s).size(), 1);
        QVERIFY(shown.Pages.contains(u"REVOKED"_s));
        m_window->Press("cmdRevoke");
        QCOMPARE(SlipCase::State(), once);
    }

    // Neither a list that has the keyboard nor a slip that has gone chooses another one.
    void NoSlip_isChosenButByHand() {
        OpenSheet();
        m_window->Charge(u"CA"_s, u"101"_s);
        m_window->Press("cmdSave");
        OpenSheet();
        m_window->Press("cmdList");
        const auto nothingIsDone = [this] {
            const QString before = SlipCase::State();
            Answer(BoxAnswer::Ok);
            m_window->Press("cmdRevoke");
            QCOMPARE(Said().Text, u"There are no Charges to be revoked."_s);
            m_window->Press("cmdRePrint");
            QCOMPARE(m_window->Text("lblMessage"), u"Choose a slip in the list first."_s);
            QCOMPARE(SlipCase::State(), before);
        };
        nothingIsDone();
        ChooseFirstSlip(*m_window);
        m_window->Press("cmdRevoke");
        QCOMPARE(Cell(1, 2), QString());
        Charges(*m_window).setFocus();
        nothingIsDone();
    }

private:
    void OpenSheet() { m_window = std::make_unique<ChargeWindow>(m_case->IdNum, m_case->HospNum); }
    QPushButton& Button(const char* name) { return Find<QPushButton>(m_window->Window, name); }
    static toolkit::FlexGrid& Charges(const ChargeWindow& window) {
        return Find<toolkit::FlexGrid>(window.Window, "grdCharges");
    }
    static void ChooseFirstSlip(ChargeWindow& window) {
        window.Press("cmdList");
        QTest::keyClick(&Charges(window), Qt::Key_Down);
    }
    QString Cell(int row, int column) const { return Charges(*m_window).TextMatrix(row, column); }
    // Net 624.40 of supplies, 450.00 of the unit, 500.00 of a doctor.
    void TypeThreeKinds() {
        m_window->Box("txtDoctorID").setText(u"0"_s);
        m_window->Box("txtDoctor").setText(u"Dr. N. O'Faraway"_s);
        m_window->Charge(u"CA"_s, u"102"_s, u"2"_s);
        m_window->Charge(u"CY"_s, u"501"_s);
        m_window->Charge(u"MD"_s, u"802"_s);
    }

    static int NextNumber() {
        return Ask(u"SELECT ChargeSlip FROM CLINICAL_AREA..tbCAPDSlip"_s).toInt();
    }
    static QString LastSlip() { return u"C%1D"_s.arg(NextNumber() - 1); }
    static QString OfLastSlip(const QString& what) {
        return Ask(u"SELECT %1 FROM CLINICAL_AREA..tbCAPDRequest WHERE RefNum = '%2'"_s.arg(
            what, LastSlip()));
    }
    static int LinesOfLastSlip() { return OfLastSlip(u"COUNT(*)"_s).toInt(); }

    std::unique_ptr<SlipCase> m_case;
};

QTEST_MAIN(tst_ChargeSlips)
#include "tst_ChargeSlips.moc"
