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

namespace {

enum Column { Name, Code, Exam, Quantity, RefNum, Amount, Status, RecordStatus, IdNum = 9 };

const QString kPay = QStringLiteral("BILLING..sp_Cashier_Pay 'C90001D','700'");
const QString kRevoke = QStringLiteral(
    "UPDATE BILLING..tbCashAssessment SET RecordStatus = 'R' WHERE RefNum = 'C90001D'");

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
    QLineEdit& Box() const { return *Window.findChild<QLineEdit*>(QStringLiteral("txtSearch")); }
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
    void init();
    void List_isFoundByNameAndNumber();
    void Search_withoutResultTakesTheButtonsAway();
    void Status_isReadInAllItsSpellings_data();
    void Status_isReadInAllItsSpellings();
    void Revoke_ofTheListedStates_data();
    void Revoke_ofTheListedStates();
    void Revoke_byTwoClerksIsToldOnce();
    void Revoke_thatFailsHalfwayChangesNothing();
    void Nothing_isDoneWithoutAChosenLine();
    void Reprint_sendsTheLinesOfTheSlipInTheirOrder_data();
    void Reprint_sendsTheLinesOfTheSlipInTheirOrder();

private:
    void Assess(const QString& refNum, const QString& revenueId, const QString& item,
                const QString& quantity, const QString& amount) const;
    QString Stored(const QString& refNum) const;

    std::unique_ptr<ChargeSession> m_session;
};

void tst_frmAssessmentStatus::init() {
    m_session.reset();
    m_session = std::make_unique<ChargeSession>();
    Assess(QStringLiteral("C90001D"), QStringLiteral("CY"), QStringLiteral("501"),
           QStringLiteral("2"), QStringLiteral("900.00"));
    Assess(QStringLiteral("C90001D"), QStringLiteral("CA"), QStringLiteral("108"), {},
           QStringLiteral("140"));
    Assess(QStringLiteral("C90001D"), QStringLiteral("CA"), QStringLiteral("109"),
           QStringLiteral("0"), QStringLiteral("10.5"));
}

void tst_frmAssessmentStatus::Assess(const QString& refNum, const QString& revenueId,
                                     const QString& item, const QString& quantity,
                                     const QString& amount) const {
    m_session->Connection->Execute(
        db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_SaveAssessment"),
                 {QStringLiteral("ZZ'O, Ana Luz"), revenueId, item, quantity, amount,
                  QStringLiteral("4601"), refNum, QStringLiteral("T200021C"), QStringLiteral("N"),
                  QStringLiteral("101"), QStringLiteral("200021"), QStringLiteral("DR. X")}));
}

/// Status and receipt of each line, in their order.
QString tst_frmAssessmentStatus::Stored(const QString& refNum) const {
    const auto found = m_session->Connection->Execute(
        QStringLiteral("SELECT RecordStatus, ORNum FROM BILLING..tbCashAssessment WHERE RefNum = "
                       "'%1' ORDER BY AssessID")
            .arg(refNum));
    QString stored;
    for (; !found->Eof(); found->MoveNext())
        stored += found->Fields(0).Text() + found->Fields(1).Text();
    return stored;
}

void tst_frmAssessmentStatus::List_isFoundByNameAndNumber() {
    const CommandLog log;
    const StatusWindow window;
    QCOMPARE(log.Sent, QStringList(QStringLiteral("CLINICAL_AREA..sp_CAPD_AssessmentStatus ''")));
    QCOMPARE(window.Window.findChild<QComboBox*>()->currentText(), QStringLiteral("Last Name"));
    QStringList headers;
    for (int column = 0; column < 15; ++column)
        headers << window.Model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    QCOMPARE(headers.join(u'|'),
             QStringLiteral("Name|Code|Item Description|Quantity|RefNum|Amount|Status|RecordStatus|"
                            "AssessID|Adm.Num.|RevenueId|RequestingDoctor|Age|Sex|PatientClass"));
    QVERIFY(window.List.isColumnHidden(15) && window.List.isColumnHidden(16));
    QVERIFY(window.Model.rowCount() > 50);
    window.Search(QStringLiteral("zz'o"));
    QCOMPARE(window.Box().text(), QStringLiteral("ZZ'O"));
    QCOMPARE(window.Column(Code),
             QStringList({QStringLiteral("501"), QStringLiteral("108"), QStringLiteral("109")}));
    QCOMPARE(window.Column(Quantity),
             QStringList({QStringLiteral("2"), QStringLiteral("1"), QStringLiteral("0")}));
    QCOMPARE(window.Column(Status), QStringList(3, QStringLiteral("PENDING")));
    QVERIFY(window.IsMarked(0, toolkit::Image::Pending));
    window.Search(QStringLiteral("200021"));
    QCOMPARE(window.Column(IdNum), QStringList(3, QStringLiteral("T200021C")));
}

void tst_frmAssessmentStatus::Search_withoutResultTakesTheButtonsAway() {
    const StatusWindow window;
    window.Search(QStringLiteral("nobody of that name"));
    QCOMPARE(window.Model.rowCount(), 0);
    window.Search(QStringLiteral("zz"));
    QCOMPARE(window.Model.rowCount(), 3);
    QVERIFY(!window.Button("btnCancel").isEnabled());
    QVERIFY(!window.Button("btnPrint").isEnabled());
    const StatusWindow again;
    QVERIFY(again.Button("btnCancel").isEnabled());
}

void tst_frmAssessmentStatus::Status_isReadInAllItsSpellings_data() {
    QTest::addColumn<int>("state");
    for (const char* paid : {"1", "OR 700", "PAID"})
        QTest::newRow(paid) << int(AssessmentState::Paid);
    for (const char* revoked : {"R", "C", "REVOKED"})
        QTest::newRow(revoked) << int(AssessmentState::Revoked);
    for (const char* pending : {"PENDING", "N", ""})
        QTest::newRow(pending) << int(AssessmentState::Pending);
}

void tst_frmAssessmentStatus::Status_isReadInAllItsSpellings() {
    QFETCH(int, state);
    QCOMPARE(int(StateOf(QString::fromLatin1(QTest::currentDataTag()))), state);
}

void tst_frmAssessmentStatus::Revoke_ofTheListedStates_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("meanwhile");
    QTest::addColumn<QString>("said");
    QTest::addColumn<QString>("stored");
    QTest::newRow("pending") << QString() << QString() << "Data is Successfully Revoked."
                             << "RRR";
    QTest::newRow("paid") << kPay << QString() << "Entry is already Paid."
                          << "N700N700N700";
    QTest::newRow("paid since the list was loaded") << QString() << kPay << "Entry is already Paid."
                                                    << "N700N700N700";
    QTest::newRow("revoked") << kRevoke << QString() << "Entry is already Revoked."
                             << "RRR";
    QTest::newRow("revoked since the list was loaded")
        << QString() << kRevoke << "Entry is already Revoked."
        << "RRR";
}

void tst_frmAssessmentStatus::Revoke_ofTheListedStates() {
    QFETCH(QString, before);
    QFETCH(QString, meanwhile);
    QFETCH(QString, said);
    QFETCH(QString, stored);
    if (!before.isEmpty())
        m_session->Connection->Execute(before);
    const StatusWindow window;
    window.Search(QStringLiteral("zz"));
    if (!meanwhile.isEmpty())
        m_session->Connection->Execute(meanwhile);
    QTest::keyClick(&window.Box(), Qt::Key_Down);
    toolkit::BoxScript boxes;
    boxes.Answer(toolkit::BoxAnswer::Ok);
    window.Button("btnCancel").click();
    QCOMPARE(boxes.Leftovers(), QStringList());
    QCOMPARE(boxes.Shown()[0].Text, said);
    QCOMPARE(boxes.Shown()[0].Title, QStringLiteral("Message"));
    QCOMPARE(Stored(QStringLiteral("C90001D")), stored);
    const bool paid = stored.contains(QStringLiteral("700"));
    QVERIFY(window.IsMarked(2, paid ? toolkit::Image::Paid : toolkit::Image::Revoked));
    if (!paid)
        QCOMPARE(window.Column(Status), QStringList(3, QStringLiteral("REVOKED")));
    if (!paid)
        QCOMPARE(window.Column(RecordStatus), QStringList(3, QStringLiteral("R")));
}

void tst_frmAssessmentStatus::Revoke_byTwoClerksIsToldOnce() {
    const StatusWindow first, second;
    first.Search(QStringLiteral("zz"));
    second.Search(QStringLiteral("zz"));
    toolkit::BoxScript boxes;
    for (const StatusWindow* window : {&first, &second, &first}) {
        boxes.Answer(toolkit::BoxAnswer::Ok);
        window->List.setCurrentIndex(window->Model.index(1, 0));
        window->Button("btnCancel").click();
    }
    QCOMPARE(boxes.Leftovers(), QStringList());
    QCOMPARE(boxes.Shown()[0].Text, QStringLiteral("Data is Successfully Revoked."));
    QCOMPARE(boxes.Shown()[1].Text, QStringLiteral("Entry is already Revoked."));
    QCOMPARE(boxes.Shown()[2].Text, QStringLiteral("Entry is already Revoked."));
}

void tst_frmAssessmentStatus::Revoke_thatFailsHalfwayChangesNothing() {
    // The rows and the first line's change are answered, the second line's is not.
    PluggedDriver::Gone = true;
    PluggedDriver::Left = 2;
    QVERIFY_EXCEPTION_THROWN(RevokeAssessment(QStringLiteral("C90001D")), base::DatabaseError);
    PluggedDriver::Gone = false;
    QCOMPARE(Stored(QStringLiteral("C90001D")), QStringLiteral("NNN"));
}

void tst_frmAssessmentStatus::Nothing_isDoneWithoutAChosenLine() {
    const StatusWindow window;
    window.List.setCurrentIndex({});
    for (const char* button : {"btnCancel", "btnPrint"}) {
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        const CommandLog log;
        window.Button(button).click();
        QCOMPARE(boxes.Leftovers(), QStringList());
        QCOMPARE(boxes.Shown()[0].Text, QStringLiteral("Please select an assessment."));
        QCOMPARE(log.Sent, QStringList());
    }
}

void tst_frmAssessmentStatus::Reprint_sendsTheLinesOfTheSlipInTheirOrder_data() {
    QTest::addColumn<QString>("frame");
    QTest::addColumn<QString>("revenueId");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("state");
    QTest::newRow("a fee of the unit is chosen") << "%1"
                                                 << "CY" << kPay << "OR 700";
    QTest::newRow("a supply is chosen") << "** %1 **"
                                        << "CA" << kRevoke << "REVOKED";
}

void tst_frmAssessmentStatus::Reprint_sendsTheLinesOfTheSlipInTheirOrder() {
    QFETCH(QString, frame);
    QFETCH(QString, revenueId);
    QFETCH(QString, before);
    QFETCH(QString, state);
    m_session->Connection->Execute(before);
    Assess(QStringLiteral("C90002D"), QStringLiteral("CY"), QStringLiteral("501"),
           QStringLiteral("1"), QStringLiteral("450"));
    const StatusWindow window;
    window.Search(QStringLiteral("zz"));
    const QStringList refNums = window.Column(RefNum);
    const int first = int(refNums.indexOf(QStringLiteral("C90001D")));
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
    for (const QString& said : {state, QStringLiteral("Charged by Amelia Peña (4601)"),
                                QStringLiteral("REPRINT by Nurse One (4601)")})
        QVERIFY2(slip.contains(said), qPrintable(slip));
    QCOMPARE(log.Sent.mid(0, 3),
             QStringList({QStringLiteral("CLINICAL_AREA..sp_CAPD_FirstPrint 'C90001D'"),
                          QStringLiteral("BeginTrans"),
                          QStringLiteral("DELETE CLINICAL_AREA..tbcapdChargeSlip")}));
    const QStringList printed =
        log.Sent.filter(QStringLiteral("CLINICAL_AREA..sp_CAPD_PrintChargeSlip '"));
    const QStringList texts{QStringLiteral("'501','%1','2','450','900','%2','4601','0','900'"),
                            QStringLiteral("'108','%1','1','140','140','%2','4601','0','140'"),
                            QStringLiteral("'109','%1','1','10.5','10.5','%2','4601','0','10.5'")};
    QCOMPARE(printed.size(), texts.size());
    for (int line = 0; line < texts.size(); ++line)
        QCOMPARE(printed[line], QStringLiteral("CLINICAL_AREA..sp_CAPD_PrintChargeSlip ") +
                                    texts[line].arg(frame.arg(exams[first + line]), revenueId));
}

QTEST_MAIN(tst_frmAssessmentStatus)
#include "tst_frmAssessmentStatus.moc"
