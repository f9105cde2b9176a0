#include "CommandLog.h"
#include "Rows.h"
#include "SlipCase.h"
#include "base/Clock.h"
#include "toolkit/FlexGrid.h"

using namespace Qt::StringLiterals;
using namespace ChargeColumn;
using toolkit::BoxAnswer;
using toolkit::BoxIcon;

// A sheet becomes a slip: what is written, in which order, what the funds pay, and what a failure
// at any place leaves: nothing.
class tst_ChargeSlips final : public ChargeTest {
    Q_OBJECT
private slots:
    void init() {
        SetUp();
        m_case = std::make_unique<SlipCase>(m_session->Connection);
        QVERIFY(!m_case->IdNum.isEmpty());
    }

    void cleanup() {
        PluggedDriver::Before = nullptr;
        TearDown();
    }

    void Load_tellsOfAnEmptyFund() {
        m_case->Sponsor({0});
        m_boxes->Answer(BoxAnswer::Ok);
        OpenSheet();
        ExpectBox(
            "Cannot post charges, CDF Balance is 0.00 or Cost Center is not applicable for the "
            "Fund.Contact Credit and Collection for Information",
            BoxIcon::Exclamation);
        m_window->Charge(u"CA"_s, u"101"_s);
        QVERIFY(!m_window->Find<QPushButton>("cmdSave").isVisible());
        QVERIFY(!m_window->Find<QPushButton>("cmdSavePrint").isVisible());
        m_window->Key(Qt::Key_Escape);
        QCOMPARE(m_window->Focus(), u"cmdClose"_s);
    }

    void Save_writesTheLinesInOrder() {
        m_case->Sponsor({300, 200, 1000});
        OpenSheet();
        TypeThreeKinds();
        ClosedWindows closed;
        CommandLog log;
        Press("cmdSave");
        QStringList heads;
        for (const QString& command : log.Sent)
            heads << command.section(QRegularExpression(u"[ ']"_s), 0, 0).section(u'.', -1);
        const QString fund = u"sp_PDAF_GetAllocation sp_PDAF_GetAllocation_RegAccount "_s;
        const QString share = u"sp_PARS_SaveCompanyPayment SP_PDAF_UpdateOPDRegistration "_s;
        const QString request = u"sp_CAPD_SaveRequest "_s;
        QCOMPARE(heads.join(u' '),
                 u"BeginTrans SELECT BeginTrans UPDATE CommitTrans sp_Pars_CheckCompany "
                 "sp_PDAF_GetBalance sp_StockCard_Append "_s +
                     fund + share + share + share + request + u"sp_capd_addbill "_s + fund + share +
                     request + u"sp_CAPD_DoctorCharge "_s + fund + share + request +
                     u"CommitTrans sp_Pars_CheckCompany sp_PDAF_GetBalance "
                     "sp_PDAF_GetRemBill"_s);
        const QString slip = LastSlip();
        const QString visit = m_case->IdNum, patient = m_case->HospNum;
        const auto sent = [&](const QString& text) { return log.Sent.contains(text); };
        QVERIFY(sent(u"SELECT ChargeSlip FROM CLINICAL_AREA..tbCAPDSlip"_s));
        QVERIFY(
            sent(u"CLINICAL_AREA..sp_capd_addbill '%1','%2','501','450.00','4601',"
                 "'%3','CY'"_s.arg(slip, visit, patient)));
        QVERIFY(
            sent(u"CLINICAL_AREA..sp_CAPD_DoctorCharge '%1','%2','802','500.00',"
                 "'4601','%3'"_s.arg(slip, visit, patient)));
        QVERIFY(sent(
            u"CLINICAL_AREA..sp_CAPD_SaveRequest '%3','%2','C7','102','2',"
            "'780.50','OPD','%1','CA','4601','0','Dr. N. O''Faraway'"_s.arg(slip, visit, patient)));
        const QString card = *std::find_if(
            log.Sent.begin(), log.Sent.end(),
            [](const QString& text) { return text.startsWith(u"BILLING..sp_StockCard_Append"); });
        QCOMPARE(card.section(u',', 4),
                 u"'%1','2','0','624.4','4601','PRN','','46','','OPD','0','CA','CA','*',"
                 "NULL,NULL,NULL,'O',NULL,'1',NULL,NULL,NULL,NULL,NULL,NULL,'156.1'"_s.arg(slip));
        QCOMPARE(closed.Titles, QStringList(u"Viewing"_s));
        QVERIFY(!m_window->Window.isVisible());
    }

    void Save_splitsOverTheFunds() {
        m_case->Sponsor({300, 200, 1000});
        OpenSheet();
        TypeThreeKinds();
        const QString stock =
            u"SELECT OnHand FROM BILLING..tbDrugStock WHERE DrugCode = '102' AND LocationID = '46'"_s;
        const double before = m_case->Ask(stock).toDouble();
        const ClosedWindows closed;
        Press("cmdSave");
        // 1574.40 in all: the funds give their 1500.00, 74.40 of the doctor's fee stay the
        // patient's.
        QCOMPARE(m_case->FundBalances(), u"0|0|0"_s);
        QString paid;
        const auto rows = m_session->Connection->Execute(
            u"SELECT ItemID, AccountNum, Amount, RevenueID FROM "
            "BILLING..tbCompanyPayment WHERE RefNum = '%1' ORDER BY RequestNum"_s.arg(LastSlip()));
        for (; !rows->Eof(); rows->MoveNext())
            paid += u"%1:%2=%3 %4;"_s.arg(rows->Fields(0).Text(), rows->Fields(1).Text(),
                                          rows->Fields(2).Text(), rows->Fields(3).Text());
        QCOMPARE(paid,
                 u"102:T-1=300 CY;102:T-2=200 CY;102:T-3=124.4 CY;"
                 "501:T-3=450 CY;802:T-3=425.6 MD;"_s);
        QCOMPARE(m_case->Ask(stock).toDouble(), before - 2);
    }

    void Save_withoutSponsorAsksNoFund() {
        OpenSheet();
        QVERIFY(!m_window->Find<QPushButton>("cmdCDF").isVisible());
        TypeThreeKinds();
        const CommandLog log;
        Press("cmdSave");
        QVERIFY(log.Sent.filter(u"PDAF"_s).isEmpty());
        QCOMPARE(m_case->Ask(u"SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDRequest WHERE "
                             "RefNum = '%1'"_s.arg(LastSlip())),
                 u"3"_s);
    }

    void Save_refuses_data() {
        Columns<QString, QString, QString>();
        QTest::newRow("nothing typed") << ""
                                       << "There are no entries to be saved."
                                       << "CAPD";
        QTest::newRow("an amount of 0") << "510"
                                        << "Please indicate the amount for the exam '%1'."
                                        << "Outpatient Charges";
    }

    void Save_refuses() {
        auto [openPriceFee, text, title] = Fetch<QString, QString, QString>();
        OpenSheet();
        const QString before = m_case->State();
        if (!openPriceFee.isEmpty()) {
            m_window->Charge(u"CA"_s, u"101"_s);
            m_window->Charge(u"CY"_s, openPriceFee);
            text = text.arg(m_window->Cell(2, Description).trimmed());
        } else {
            m_window->Find<QPushButton>("cmdSave").setEnabled(true);
        }
        m_boxes->Answer(BoxAnswer::Ok);
        const CommandLog log;
        Press("cmdSave");
        QCOMPARE(log.Sent, QStringList());
        QCOMPARE(m_boxes->Shown().back().Text, text);
        QCOMPARE(m_boxes->Shown().back().Title, title);
        QVERIFY(m_window->Window.isVisible());
        if (!openPriceFee.isEmpty())
            QCOMPARE(m_window->At(), QPoint(2, Amount));
        QCOMPARE(m_case->State(), before);
    }

    void Save_waitsForWhatAnOpenCellTold() {
        OpenSheet();
        const QString before = m_case->State();
        m_window->Charge(u"CY"_s, u"501"_s);
        const auto saveOver = [&](int col, const char* typed) {
            m_window->Grid.SetCell(1, col);
            for (; *typed; ++typed)
                QTest::keyClick(ChargeWindow::Focused(), *typed);
            Press("cmdSave");
        };
        saveOver(Quantity, "1,5");
        QCOMPARE(m_window->Label("lblMessage"),
                 u"Taken: 15. Only digits and one point count. Not saved yet: save once "
                 "more."_s);
        m_boxes->Answer(BoxAnswer::Ok);
        saveOver(Amount, "5");
        QCOMPARE(m_window->At(), QPoint(1, Amount));
        QCOMPARE(m_case->State(), before);
        // Alt and the button's letter leave no box: the code is looked up all the same.
        m_window->Find<QLineEdit>("txtDoctorID").setText(u"106"_s);
        Press("cmdSave");
        QVERIFY(!m_window->Window.isVisible());
        QVERIFY(m_case
                    ->Ask(u"SELECT DoctorName FROM CLINICAL_AREA..tbCAPDRequest WHERE "
                          "RefNum = '%1'"_s.arg(LastSlip()))
                    .startsWith(u"DR. "));
    }

    void Save_pressedAgainSavesOnce() {
        OpenSheet();
        TypeThreeKinds();
        const QString first = LastSlip();
        // Again in the middle of saving, and once more when the slip stands.
        bool again = false;
        PluggedDriver::Before = [&](db::Driver&, const QString& command) {
            if (!std::exchange(again, true) && command.contains(u"sp_CAPD_SaveRequest"))
                Press("cmdSavePrint");
        };
        Press("cmdSave");
        Press("cmdSave");
        Press("cmdSavePrint");
        QCOMPARE(LastSlip(), u"C%1D"_s.arg(first.mid(1, first.size() - 2).toInt() + 1));
        QVERIFY(m_boxes->Shown().empty());
    }

    void Save_lostRaceTakesTheNextNumber() {
        OpenSheet();
        TypeThreeKinds();
        const int number = LastSlip().mid(1).chopped(1).toInt();
        int races = 100;
        PluggedDriver::Before = [&races](db::Driver& server, const QString& command) {
            if (races <= 0 || !command.startsWith(u"UPDATE ") || !command.contains(u"tbCAPDSlip"))
                return;
            --races;
            db::RowStore none;
            server.Execute(u"UPDATE CLINICAL_AREA..tbCAPDSlip SET ChargeSlip = ChargeSlip + 1"_s,
                           none);
        };
        const QString before = m_case->State();
        QVERIFY_EXCEPTION_THROWN(Press("cmdSave"), base::DatabaseError);
        QCOMPARE(races, 90);
        QCOMPARE(m_case->State(), before);
        races = 9;
        Press("cmdSave");
        QCOMPARE(LastSlip(), u"C%1D"_s.arg(number + 10));
    }

    void Refused_atAnyCommandLeavesNothing_data() {
        QTest::addColumn<QString>("button");
        QTest::newRow("save") << "cmdSave";
        QTest::newRow("revoke") << "cmdRevoke";
    }

    void Refused_atAnyCommandLeavesNothing() {
        QFETCH(QString, button);
        m_case->Sponsor({300, 200, 5000});
        OpenSheet();
        TypeThreeKinds();
        const ClosedWindows closed;
        if (button == u"cmdRevoke") {
            Press("cmdSave");
            OpenSheet();
            ChooseFirstSlip(*m_window);
        }
        const QString before = m_case->State();
        const QStringList line = m_window->Line(1);
        const QString listed = Cell(1, 2);
        int refused = 0;
        while (m_case->State() == before && refused < 100) {
            PluggedDriver::Gone = true;
            PluggedDriver::Left = refused++;
            QVERIFY_EXCEPTION_THROWN(Press(button.toLatin1().constData()), base::DatabaseError);
            PluggedDriver::Gone = false;
            if (m_case->State() != before)
                break;
            QVERIFY(m_window->Window.isVisible());
            QCOMPARE(m_window->Line(1), line);
            QCOMPARE(Cell(1, 2), listed);
        }
        // The last one was refused behind the commit.
        QVERIFY(refused > 8 && refused < 100);
        QCOMPARE(m_window->Window.isVisible(), button == u"cmdRevoke");
    }

    void Failure_behindTheCommitClosesTheWindow() {
        OpenSheet();
        TypeThreeKinds();
        m_boxes->Answer(BoxAnswer::Ok);
        PluggedDriver::Before = [](db::Driver&, const QString& command) {
            if (command.startsWith(u"CLINICAL_AREA..sp_CAPD_PrintChargeSlip"))
                throw base::DatabaseError(701, u"No room."_s + base::kNothingSaved, command);
        };
        QString told;
        try {
            m_window->Find<QPushButton>("cmdSavePrint").click();
        } catch (const base::DatabaseError& error) {
            told = error.Description();
        }
        PluggedDriver::Before = nullptr;
        QCOMPARE(told, u"Slip %1 is saved. Printing failed: No room."_s.arg(LastSlip()));
        QVERIFY(!m_window->Window.isVisible());
        QCOMPARE(m_case->Ask(u"SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDRequest WHERE "
                             "RefNum = '%1'"_s.arg(LastSlip())),
                 u"3"_s);
    }

    void Print_andReprintSayTheSame() {
        m_case->Sponsor({300, 200, 1000});
        m_case->Do(
            u"UPDATE PATIENT_DATA..tbUser SET EmployeeName = 'Nurse One' WHERE "
            "EmployeeCode = '4601'"_s);
        OpenSheet();
        TypeThreeKinds();
        m_window->EnterAt(2, Amount, u"460"_s);
        // The catalogue changes while the sheet is open.
        m_case->Do(u"UPDATE BILLING..tbDrug SET SellingPriceOut = 9"_s);
        m_case->Do(u"UPDATE BILLING..tbOtherRevenue SET RateA = 9"_s);
        m_boxes->Answer(BoxAnswer::Ok);
        ClosedWindows closed;
        Press("cmdSavePrint");
        ExpectBox("Record successfully Saved!", BoxIcon::None);
        QCOMPARE(closed.Titles, QStringList({u"Viewing"_s, u"CAPD ChargeSlip"_s}));
        const QString first = closed.Slip;
        for (const QString& said :
             {u"CAPD CC No.: "_s + LastSlip(), u"O'HARA, Ana Luz"_s, u"Dr. N. O'Faraway"_s,
              u"Pay Patient"_s, u"780.50"_s, u"624.40"_s, u"84.40"_s, u"450.00"_s, u"460.00"_s})
            QVERIFY2(first.contains(said), qPrintable(first));
        // The staging belongs to the slip just printed.
        QCOMPARE(m_case->Ask(u"SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDChargeSlip"_s), u"3"_s);

        // The funds are used up: another slip cannot be saved, this one can be printed again, by
        // another clerk on another day.
        m_boxes->Answer(BoxAnswer::Ok);
        modGlobals::gCurrentUser =
            std::make_shared<SessionUser>(m_session->Connection, u"4602"_s, u"Nurse Two"_s);
        base::Clock::Replace([] { return QDateTime(QDate(2031, 3, 5), QTime(14, 7)); });
        OpenSheet();
        ChooseFirstSlip(*m_window);
        closed.Slip.clear();
        const CommandLog log;
        Press("cmdRePrint");
        QCOMPARE(log.Sent.filter(u"DELETE"_s),
                 QStringList(u"DELETE clinical_area..tbCAPDChargeSlip"_s));
        QCOMPARE(log.Sent.filter(u"PrintChargeSlip"_s).first(),
                 u"CLINICAL_AREA..sp_CAPD_PrintChargeSlip '102','DIALYSIS SOLUTION 2.3% "
                 "2 L','2','390.25','780.5','CA','4601','156.1','624.4'"_s);
        base::Clock::Replace({});
        const QString foot = u"REPRINT by Nurse Two (4602), 3/5/2031 2:07:00 PM\n"_s;
        QVERIFY2(closed.Slip.contains(foot), qPrintable(closed.Slip));
        QCOMPARE(closed.Slip.remove(foot), first);
        QVERIFY(m_window->Window.isVisible());
    }

    void Revoke_takesBackOnce() {
        m_case->Sponsor({300, 200, 5000});
        const QString stock = u"SELECT SUM(OnHand) FROM BILLING..tbDrugStock"_s;
        const QString onHand = m_case->Ask(stock);
        const QString fees = u"SELECT SUM(Amount) FROM BILLING..tbDoctorCharge"_s;
        const QString charged = m_case->Ask(fees);
        const ClosedWindows closed;
        OpenSheet();
        TypeThreeKinds();
        // The same supply twice on a slip comes back twice.
        m_window->Charge(u"CA"_s, u"102"_s, u"3"_s);
        Press("cmdSave");
        OpenSheet();
        ChooseFirstSlip(*m_window);
        const CommandLog log;
        Press("cmdRevoke");
        QVERIFY(log.Sent.contains(
            u"CLINICAL_AREA..sp_CAPD_DoctorCharge '%1','%2','802','-500','4601','%3'"_s.arg(
                LastSlip(), m_case->IdNum, m_case->HospNum)));
        QCOMPARE(log.Sent.filter(u"sp_CAPD_GetPackage"_s).size(), 1);
        QCOMPARE(log.Sent.filter(u"sp_StockCard_Append"_s).size(), 2);
        QCOMPARE(m_case->Ask(stock), onHand);
        QCOMPARE(m_case->Ask(fees), charged);
        // The unit's own fee stays listed, billed and paid.
        QCOMPARE(m_case->FundBalances(), u"300|200|4550"_s);
        QCOMPARE(Cell(1, 2), u"501"_s);
        QCOMPARE(Cell(2, 2), QString());
        const QString once = m_case->State();
        Press("cmdRevoke");
        QCOMPARE(m_case->State(), once);
    }

    // Another station's list and fund gate are older than what stands.
    void OlderSheet_isHeldAgainstWhatStands() {
        m_case->Sponsor({1500});
        ClosedWindows closed;
        OpenSheet();
        TypeThreeKinds();
        ChargeWindow other(m_case->IdNum, m_case->HospNum);
        other.Charge(u"CY"_s, u"502"_s);
        Press("cmdSave");
        const QString slip = LastSlip();
        const QString saved = m_case->State();
        m_boxes->Answer(BoxAnswer::Ok);
        other.Find<QPushButton>("cmdSave").click();
        QVERIFY(
            m_boxes->Shown().back().Text.startsWith(u"Cannot post charges, CDF Balance is 0.00"));
        QCOMPARE(m_case->State(), saved);
        QVERIFY(!other.Find<QPushButton>("cmdSavePrint").isVisible());

        m_boxes->Answer(BoxAnswer::Ok);
        OpenSheet();
        ChooseFirstSlip(*m_window);
        ChooseFirstSlip(other);
        other.Find<QPushButton>("cmdRevoke").click();
        QCOMPARE(other.Label("lblMessage"),
                 u"Slip %1: 1124.40 (1 supply, 1 doctor's fee) taken back, 450.00 (1 fee "
                 "of the unit) stays charged."_s.arg(slip));
        QVERIFY(other.Find<QPushButton>("cmdSave").isVisible());
        const QString once = m_case->State();
        // What no longer stands is not printed any more either, and the rest as revoked.
        const CommandLog log;
        Press("cmdRePrint");
        QCOMPARE(log.Sent.filter(u"PrintChargeSlip"_s).size(), 1);
        QVERIFY(closed.Slip.contains(u"REVOKED"_s));
        Press("cmdRevoke");
        QCOMPARE(m_case->State(), once);
    }

    // Neither a list that has the keyboard nor a slip that has gone chooses another one.
    void NoSlip_isChosenButByHand() {
        OpenSheet();
        m_window->Charge(u"CA"_s, u"101"_s);
        Press("cmdSave");
        OpenSheet();
        Press("cmdList");
        for (const bool isGone : {false, true}) {
            const QString before = m_case->State();
            m_boxes->Answer(BoxAnswer::Ok);
            Press("cmdRevoke");
            ExpectBox("There are no Charges to be revoked.", BoxIcon::Information, "Message");
            Press("cmdRePrint");
            QCOMPARE(m_window->Label("lblMessage"), u"Choose a slip in the list first."_s);
            QCOMPARE(m_case->State(), before);
            if (isGone)
                break;
            ChooseFirstSlip(*m_window);
            Press("cmdRevoke");
            QCOMPARE(Cell(1, 2), QString());
            m_window->Find<toolkit::FlexGrid>("grdCharges").setFocus();
        }
    }

private:
    void OpenSheet() { m_window = std::make_unique<ChargeWindow>(m_case->IdNum, m_case->HospNum); }
    void Press(const char* button) { m_window->Find<QPushButton>(button).click(); }
    void ChooseFirstSlip(const ChargeWindow& window) const {
        window.Find<QPushButton>("cmdList").click();
        QTest::keyClick(&window.Find<toolkit::FlexGrid>("grdCharges"), Qt::Key_Down);
    }
    // Net 624.40 of supplies, 450.00 of the unit, 500.00 of a doctor.
    void TypeThreeKinds() {
        m_window->Find<QLineEdit>("txtDoctorID").setText(u"0"_s);
        m_window->Find<QLineEdit>("txtDoctor").setText(u"Dr. N. O'Faraway"_s);
        m_window->Grid.setFocus();
        m_window->Charge(u"CA"_s, u"102"_s, u"2"_s);
        m_window->Charge(u"CY"_s, u"501"_s);
        m_window->Charge(u"MD"_s, u"802"_s);
    }

    QString Cell(int row, int column) const {
        return m_window->Find<toolkit::FlexGrid>("grdCharges").TextMatrix(row, column);
    }
    QString LastSlip() const {
        return u"C%1D"_s.arg(
            m_case->Ask(u"SELECT ChargeSlip - 1 FROM CLINICAL_AREA..tbCAPDSlip"_s));
    }

    std::unique_ptr<SlipCase> m_case;
};

QTEST_MAIN(tst_ChargeSlips)
#include "tst_ChargeSlips.moc"
