#include "assessment/frmAssessmentStatus.h"

#include "ShownWindows.h"
#include "WindowTest.h"
#include "assessment/CashAssessment.h"
#include "db/CommandText.h"
#include "toolkit/ListView.h"

using toolkit::Image;

namespace {

enum Column { Name, Code, Exam, Quantity, RefNum, Amount, Status, RecordStatus, IdNum = 9 };

const QString kNothing = u"SELECT 1"_s;
const QString kPay = u"BILLING..sp_Cashier_Pay 'C90001D','700'"_s;
const QString kRevoke =
    u"UPDATE BILLING..tbCashAssessment SET RecordStatus = 'R' WHERE RefNum = 'C90001D'"_s;

/// The window on screen.
struct StatusWindow {
    frmAssessmentStatus Window;
    toolkit::ListView& List;
    toolkit::RowListModel& Model;

    StatusWindow()
        : List(Find<toolkit::ListView>(Window)),
          Model(*qobject_cast<toolkit::RowListModel*>(List.model())) {
        BringUp(Window);
    }
    QLineEdit& Box() const { return Find<QLineEdit>(Window, "txtSearch"); }
    void Search(const QString& text) const {
        Box().setFocus();
        Box().clear();
        EnterText(text);
    }
    void Choose(int row) const { List.setCurrentIndex(Model.index(row, 0)); }
    /// The column's cells, divided by blanks.
    QString Cells(int column) const {
        QStringList cells;
        for (int row = 0; row < Model.rowCount(); ++row)
            cells << Model.TextAt(row, column);
        return cells.join(u' ');
    }
    bool IsMarked(int row, Image image) const {
        const auto picture = [](const QIcon& icon) { return icon.pixmap(16, 16).toImage(); };
        return picture(Model.index(row, 0).data(Qt::DecorationRole).value<QIcon>()) ==
               picture(toolkit::Images::Icon(image));
    }
};

}  // namespace

class tst_frmAssessmentStatus final : public WindowTest {
    Q_OBJECT
private slots:
    void init() {
        SetUp();
        Assess(u"C90001D"_s, u"CY"_s, u"501"_s, u"2"_s, u"900.00"_s);
        Assess(u"C90001D"_s, u"CA"_s, u"108"_s, {}, u"140"_s);
        Assess(u"C90001D"_s, u"CA"_s, u"109"_s, u"0"_s, u"10.5"_s);
    }
    void cleanup() { TearDown(); }

    void List_isFoundByNameAndNumber() {
        const StatusWindow window;
        QVERIFY(window.List.isColumnHidden(15) && window.List.isColumnHidden(16));
        QVERIFY(window.Model.rowCount() > 50);
        window.Search(u"zz'o"_s);
        QCOMPARE(window.Box().text(), u"ZZ'O"_s);
        QCOMPARE(window.Cells(Code), u"501 108 109"_s);
        QCOMPARE(window.Cells(Quantity), u"2 1 0"_s);
        QCOMPARE(window.Cells(Status), u"PENDING PENDING PENDING"_s);
        QVERIFY(window.IsMarked(0, Image::Pending));
        window.Search(u"200021"_s);
        QCOMPARE(window.Cells(IdNum), u"T200021C T200021C T200021C"_s);
        // Without a result the buttons go, until the window is opened again.
        window.Search(u"nobody of that name"_s);
        QCOMPARE(window.Model.rowCount(), 0);
        window.Search(u"zz"_s);
        QCOMPARE(window.Model.rowCount(), 3);
        for (const char* button : {"btnCancel", "btnPrint"}) {
            QVERIFY(!Find<QPushButton>(window.Window, button).isEnabled());
            QVERIFY(Find<QPushButton>(StatusWindow().Window, button).isEnabled());
        }
    }

    void Status_isReadInAllItsSpellings() {
        for (const char* paid : {"1", "OR 700", "PAID"})
            QCOMPARE(int(StateOf(QLatin1String(paid))), int(AssessmentState::Paid));
        for (const char* revoked : {"R", "C", "REVOKED"})
            QCOMPARE(int(StateOf(QLatin1String(revoked))), int(AssessmentState::Revoked));
        for (const char* pending : {"PENDING", "N", ""})
            QCOMPARE(int(StateOf(QLatin1String(pending))), int(AssessmentState::Pending));
    }

    void Revoke_ofTheListedStates_data() {
        Columns<QString, QString, QString, QString>();
        const QString paid = u"Entry is already Paid."_s, paidRows = u"N|700;N|700;N|700"_s;
        const QString revoked = u"Entry is already Revoked."_s, revokedRows = u"R|;R|;R|"_s;
        Row("pending", kNothing, kNothing, "Data is Successfully Revoked.", revokedRows);
        Row("paid", kPay, kNothing, paid, paidRows);
        Row("paid since the list was loaded", kNothing, kPay, paid, paidRows);
        Row("revoked", kRevoke, kNothing, revoked, revokedRows);
        Row("revoked since the list was loaded", kNothing, kRevoke, revoked, revokedRows);
    }

    void Revoke_ofTheListedStates() {
        auto [before, meanwhile, said, stored] = Fetch<QString, QString, QString, QString>();
        Do(before);
        const StatusWindow window;
        window.Search(u"zz"_s);
        Do(meanwhile);
        PressKey(Qt::Key_Down);
        Answer(BoxAnswer::Ok, 2);
        Click(window.Window, "btnCancel");
        QCOMPARE(Said().Text, said);
        QCOMPARE(Stored(), stored);
        const bool paid = stored.contains(u"700"_s);
        QVERIFY(window.IsMarked(2, paid ? Image::Paid : Image::Revoked));
        QVERIFY(paid || window.Cells(Status) == u"REVOKED REVOKED REVOKED");
        QCOMPARE(window.Cells(RecordStatus), paid ? u"N N N"_s : u"R R R"_s);
        // Pressed once more, it is told again.
        Click(window.Window, "btnCancel");
        QCOMPARE(Said().Text, paid ? said : u"Entry is already Revoked."_s);
    }

    void Revoke_thatFailsHalfwayChangesNothing() {
        const auto revoke = [] { RevokeAssessment(u"C90001D"_s); };
        // The rows, three lines with a commit each, and the commit of all.
        QCOMPARE(LoseServerAtEachCommand(Stored, revoke), 8);
        QCOMPARE(Stored(), u"R|;R|;R|"_s);
    }

    // The cashier takes the money between the look at the lines and their change.
    void Revoke_givesWayToAReceipt() {
        bool paid = false;
        PluggedDriver::Before = [&paid](db::Driver& server, const QString& command) {
            db::RowStore none;
            if (command.startsWith(u"UPDATE") && !std::exchange(paid, true))
                server.Execute(kPay, none);
        };
        QVERIFY_EXCEPTION_THROWN(RevokeAssessment(u"C90001D"_s), base::DatabaseError);
        QVERIFY(paid);
    }

    void Nothing_isDoneWithoutAChosenLine() {
        const StatusWindow window;
        window.List.setCurrentIndex({});
        Answer(BoxAnswer::Ok, 2);
        for (const char* button : {"btnCancel", "btnPrint"}) {
            const CommandLog log;
            Click(window.Window, button);
            QCOMPARE(Said().Text, u"Please select an assessment."_s);
            QCOMPARE(log.Sent, QStringList());
        }
    }

    // Of a slip of which a supply is chosen.
    void Reprint_showsTheSlipAndWhoPrintsIt() {
        Do(kRevoke);
        Assess(u"C90002D"_s, u"CY"_s, u"501"_s, u"1"_s, u"450"_s);
        const StatusWindow window;
        window.Search(u"zz"_s);
        const int first = int(window.Cells(RefNum).split(u' ').indexOf(u"C90001D"_s));
        window.Choose(first + 1);
        const ShownWindows viewer;
        const CommandLog log;
        Click(window.Window, "btnPrint");
        // The clerk of the assessment, and who prints it now.
        for (const QString& said :
             {u"REVOKED"_s, u"Charged by Amelia Peña (4601)"_s, u"REPRINT by Nurse One (4601)"_s})
            QVERIFY2(viewer.Pages.contains(said), qPrintable(viewer.Pages));
        const QStringList texts{u"'501','** %1 **','2','450','900','CA','4601','0','900'"_s,
                                u"'108','** %1 **','1','140','140','CA','4601','0','140'"_s,
                                u"'109','** %1 **','1','10.5','10.5','CA','4601','0','10.5'"_s};
        QStringList expected;
        for (int line = 0; line < texts.size(); ++line)
            expected << u"CLINICAL_AREA..sp_CAPD_PrintChargeSlip "_s +
                            texts[line].arg(window.Model.TextAt(first + line, Exam));
        QCOMPARE(log.Sent.filter(u"CLINICAL_AREA..sp_CAPD_PrintChargeSlip '"_s), expected);
    }

private:
    static void Assess(const QString& refNum, const QString& revenueId, const QString& item,
                       const QString& quantity, const QString& amount) {
        Do(db::Call(u"CLINICAL_AREA..sp_CAPD_SaveAssessment"_s,
                    {u"ZZ'O, Ana Luz"_s, revenueId, item, quantity, amount, u"4601"_s, refNum,
                     u"T200021C"_s, u"N"_s, u"101"_s, u"200021"_s, u"DR. X"_s}));
    }

    /// Status and receipt of each line, in their order.
    static QString Stored() {
        return Ask(
            u"SELECT RecordStatus, ORNum FROM BILLING..tbCashAssessment WHERE RefNum = "
            "'C90001D' ORDER BY AssessID"_s);
    }
};

QTEST_MAIN(tst_frmAssessmentStatus)
#include "tst_frmAssessmentStatus.moc"
