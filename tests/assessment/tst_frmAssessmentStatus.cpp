#include "Rows.h"
#include "assessment/frmAssessmentStatus.h"

#include <QComboBox>

#include "CommandLog.h"
#include "assessment/CashAssessment.h"
#include "charges/ChargeSession.h"
#include "components/PickListKeys.h"
#include "db/CommandText.h"
#include "print/ReportPages.h"
#include "toolkit/ListView.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;

namespace {

enum Column { Name, Code, Exam, Quantity, RefNum, Amount, Status, RecordStatus, IdNum = 9 };

const QString kPay = u"BILLING..sp_Cashier_Pay 'C90001D','700'"_s;
const QString kRevoke =
    u"UPDATE BILLING..tbCashAssessment SET RecordStatus = 'R' WHERE RefNum = 'C90001D'"_s;

/// The window on screen.
struct StatusWindow {
    frmAssessmentStatus Window;
    toolkit::ListView& List;
    toolkit::RowListModel& Model;

    StatusWindow()
        : List(*Window.findChild<toolkit::ListView*>()),
          Model(*qobject_cast<toolkit::RowListModel*>(List.model())) {
        Window.show();
        if (!QTest::qWaitForWindowActive(&Window))
            qFatal("the window does not come to the front");
    }
    QLineEdit& Box() const { return *Window.findChild<QLineEdit*>(u"txtSearch"_s); }
    QPushButton& Button(const char* name) const {
        return *Window.findChild<QPushButton*>(QLatin1String(name));
    }
    void Search(const QString& text) const {
        Box().clear();
        QTest::keyClicks(&Box(), text);
        QTest::keyClick(&Box(), Qt::Key_Return);
    }
    QStringList Column(int column) const {
        QStringList cells;
        for (int row = 0; row < Model.rowCount(); ++row)
            cells << Model.TextAt(row, column);
        return cells;
    }
    bool IsMarked(int row, toolkit::Image image) const {
        const auto picture = [](const QIcon& icon) { return icon.pixmap(16, 16).toImage(); };
        return picture(Model.index(row, 0).data(Qt::DecorationRole).value<QIcon>()) ==
               picture(toolkit::Images::Icon(image));
    }
};

}  // namespace

class tst_frmAssessmentStatus final : public QObject {
    Q_OBJECT
private slots:
    void init() {
        m_session.reset();
        m_session = std::make_unique<ChargeSession>();
        Assess(u"C90001D"_s, u"CY"_s, u"501"_s, u"2"_s, u"900.00"_s);
        Assess(u"C90001D"_s, u"CA"_s, u"108"_s, {}, u"140"_s);
        Assess(u"C90001D"_s, u"CA"_s, u"109"_s, u"0"_s, u"10.5"_s);
    }

    void List_isFoundByNameAndNumber() {
        const CommandLog log;
        const StatusWindow window;
        QCOMPARE(log.Sent, QStringList(u"CLINICAL_AREA..sp_CAPD_AssessmentStatus ''"_s));
        QCOMPARE(window.Window.findChild<QComboBox*>()->currentText(), u"Last Name"_s);
        QStringList headers;
        for (int column = 0; column < 15; ++column)
            headers << window.Model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        QCOMPARE(headers.join(u'|'),
                 u"Name|Code|Item Description|Quantity|RefNum|Amount|Status|RecordStatus|"
                 "AssessID|Adm.Num.|RevenueId|RequestingDoctor|Age|Sex|PatientClass"_s);
        QVERIFY(window.List.isColumnHidden(15) && window.List.isColumnHidden(16));
        QVERIFY(window.Model.rowCount() > 50);
        window.Search(u"zz'o"_s);
        QCOMPARE(window.Box().text(), u"ZZ'O"_s);
        QCOMPARE(window.Column(Code), QStringList({u"501"_s, u"108"_s, u"109"_s}));
        QCOMPARE(window.Column(Quantity), QStringList({u"2"_s, u"1"_s, u"0"_s}));
        QCOMPARE(window.Column(Status), QStringList(3, u"PENDING"_s));
        QVERIFY(window.IsMarked(0, toolkit::Image::Pending));
        window.Search(u"200021"_s);
        QCOMPARE(window.Column(IdNum), QStringList(3, u"T200021C"_s));
    }

    void Search_withoutResultTakesTheButtonsAway() {
        const StatusWindow window;
        window.Search(u"nobody of that name"_s);
        QCOMPARE(window.Model.rowCount(), 0);
        window.Search(u"zz"_s);
        QCOMPARE(window.Model.rowCount(), 3);
        QVERIFY(!window.Button("btnCancel").isEnabled());
        QVERIFY(!window.Button("btnPrint").isEnabled());
        const StatusWindow again;
        QVERIFY(again.Button("btnCancel").isEnabled());
    }

    void Status_isReadInAllItsSpellings_data() {
        QTest::addColumn<int>("state");
        for (const char* paid : {"1", "OR 700", "PAID"})
            QTest::newRow(paid) << int(AssessmentState::Paid);
        for (const char* revoked : {"R", "C", "REVOKED"})
            QTest::newRow(revoked) << int(AssessmentState::Revoked);
        for (const char* pending : {"PENDING", "N", ""})
            QTest::newRow(pending) << int(AssessmentState::Pending);
    }

    void Status_isReadInAllItsSpellings() {
        QFETCH(int, state);
        QCOMPARE(int(StateOf(QString::fromLatin1(QTest::currentDataTag()))), state);
    }

    void Revoke_ofTheListedStates_data() {
        Columns<QString, QString, QString, QString>();
        QTest::newRow("pending") << QString() << QString() << "Data is Successfully Revoked."
                                 << "RRR";
        QTest::newRow("paid") << kPay << QString() << "Entry is already Paid."
                              << "N700N700N700";
        QTest::newRow("paid since the list was loaded")
            << QString() << kPay << "Entry is already Paid."
            << "N700N700N700";
        QTest::newRow("revoked") << kRevoke << QString() << "Entry is already Revoked."
                                 << "RRR";
        QTest::newRow("revoked since the list was loaded")
            << QString() << kRevoke << "Entry is already Revoked."
            << "RRR";
    }

    void Revoke_ofTheListedStates() {
        auto [before, meanwhile, said, stored] = Fetch<QString, QString, QString, QString>();
        if (!before.isEmpty())
            m_session->Connection->Execute(before);
        const StatusWindow window;
        window.Search(u"zz"_s);
        if (!meanwhile.isEmpty())
            m_session->Connection->Execute(meanwhile);
        QTest::keyClick(&window.Box(), Qt::Key_Down);
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        window.Button("btnCancel").click();
        QCOMPARE(boxes.Leftovers(), QStringList());
        QCOMPARE(boxes.Shown()[0].Text, said);
        QCOMPARE(boxes.Shown()[0].Title, u"Message"_s);
        QCOMPARE(Stored(u"C90001D"_s), stored);
        const bool paid = stored.contains(u"700"_s);
        QVERIFY(window.IsMarked(2, paid ? toolkit::Image::Paid : toolkit::Image::Revoked));
        if (!paid)
            QCOMPARE(window.Column(Status), QStringList(3, u"REVOKED"_s));
        if (!paid)
            QCOMPARE(window.Column(RecordStatus), QStringList(3, u"R"_s));
    }

    void Revoke_byTwoClerksIsToldOnce() {
        const StatusWindow first, second;
        first.Search(u"zz"_s);
        second.Search(u"zz"_s);
        toolkit::BoxScript boxes;
        for (const StatusWindow* window : {&first, &second, &first}) {
            boxes.Answer(toolkit::BoxAnswer::Ok);
            window->List.setCurrentIndex(window->Model.index(1, 0));
            window->Button("btnCancel").click();
        }
        QCOMPARE(boxes.Leftovers(), QStringList());
        QCOMPARE(boxes.Shown()[0].Text, u"Data is Successfully Revoked."_s);
        QCOMPARE(boxes.Shown()[1].Text, u"Entry is already Revoked."_s);
        QCOMPARE(boxes.Shown()[2].Text, u"Entry is already Revoked."_s);
    }

    void Revoke_thatFailsHalfwayChangesNothing() {
        // The rows and the first line's change are answered, the second line's is not.
        PluggedDriver::Gone = true;
        PluggedDriver::Left = 2;
        QVERIFY_EXCEPTION_THROWN(RevokeAssessment(u"C90001D"_s), base::DatabaseError);
        PluggedDriver::Gone = false;
        QCOMPARE(Stored(u"C90001D"_s), u"NNN"_s);
    }

    void Nothing_isDoneWithoutAChosenLine() {
        const StatusWindow window;
        window.List.setCurrentIndex({});
        for (const char* button : {"btnCancel", "btnPrint"}) {
            toolkit::BoxScript boxes;
            boxes.Answer(toolkit::BoxAnswer::Ok);
            const CommandLog log;
            window.Button(button).click();
            QCOMPARE(boxes.Leftovers(), QStringList());
            QCOMPARE(boxes.Shown()[0].Text, u"Please select an assessment."_s);
            QCOMPARE(log.Sent, QStringList());
        }
    }

    void Reprint_sendsTheLinesOfTheSlipInTheirOrder_data() {
        Columns<QString, QString, QString, QString>();
        QTest::newRow("a fee of the unit is chosen") << "%1"
                                                     << "CY" << kPay << "OR 700";
        QTest::newRow("a supply is chosen") << "** %1 **"
                                            << "CA" << kRevoke << "REVOKED";
    }

    void Reprint_sendsTheLinesOfTheSlipInTheirOrder() {
        auto [frame, revenueId, before, state] = Fetch<QString, QString, QString, QString>();
        m_session->Connection->Execute(before);
        Assess(u"C90002D"_s, u"CY"_s, u"501"_s, u"1"_s, u"450"_s);
        const StatusWindow window;
        window.Search(u"zz"_s);
        const QStringList refNums = window.Column(RefNum);
        const int first = int(refNums.indexOf(u"C90001D"_s));
        window.List.setCurrentIndex(window.Model.index(revenueId == u"CY" ? first : first + 1, 0));
        const QStringList exams = window.Column(Exam);
        QString slip;
        PickListKeys viewer([&slip](QDialog& shown) {
            slip = modGlobals::gReport->Pages()->Text(0);
            shown.reject();
        });
        const CommandLog log;
        window.Button("btnPrint").click();
        QCOMPARE(viewer.Shown, 1);
        // The clerk of the assessment, and who prints it now.
        for (const QString& said :
             {state, u"Charged by Amelia Peña (4601)"_s, u"REPRINT by Nurse One (4601)"_s})
            QVERIFY2(slip.contains(said), qPrintable(slip));
        QCOMPARE(log.Sent.mid(0, 3),
                 QStringList({u"CLINICAL_AREA..sp_CAPD_FirstPrint 'C90001D'"_s, u"BeginTrans"_s,
                              u"DELETE CLINICAL_AREA..tbcapdChargeSlip"_s}));
        const QStringList printed = log.Sent.filter(u"CLINICAL_AREA..sp_CAPD_PrintChargeSlip '"_s);
        const QStringList texts{u"'501','%1','2','450','900','%2','4601','0','900'"_s,
                                u"'108','%1','1','140','140','%2','4601','0','140'"_s,
                                u"'109','%1','1','10.5','10.5','%2','4601','0','10.5'"_s};
        QCOMPARE(printed.size(), texts.size());
        for (int line = 0; line < texts.size(); ++line)
            QCOMPARE(printed[line], u"CLINICAL_AREA..sp_CAPD_PrintChargeSlip "_s +
                                        texts[line].arg(frame.arg(exams[first + line]), revenueId));
    }

private:
    void Assess(const QString& refNum, const QString& revenueId, const QString& item,
                const QString& quantity, const QString& amount) const {
        m_session->Connection->Execute(
            db::Call(u"CLINICAL_AREA..sp_CAPD_SaveAssessment"_s,
                     {u"ZZ'O, Ana Luz"_s, revenueId, item, quantity, amount, u"4601"_s, refNum,
                      u"T200021C"_s, u"N"_s, u"101"_s, u"200021"_s, u"DR. X"_s}));
    }

    /// Status and receipt of each line, in their order.
    QString Stored(const QString& refNum) const {
        const auto found = m_session->Connection->Execute(
            u"SELECT RecordStatus, ORNum FROM BILLING..tbCashAssessment WHERE RefNum = "
            "'%1' ORDER BY AssessID"_s.arg(refNum));
        QString stored;
        for (; !found->Eof(); found->MoveNext())
            stored += found->Fields(0).Text() + found->Fields(1).Text();
        return stored;
    }

    std::unique_ptr<ChargeSession> m_session;
};

QTEST_MAIN(tst_frmAssessmentStatus)
#include "tst_frmAssessmentStatus.moc"
