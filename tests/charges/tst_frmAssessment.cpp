#include "Rows.h"
#include "charges/frmAssessment.h"

#include "CommandLog.h"
#include "charges/ChargeSession.h"
#include "components/PickListKeys.h"
#include "session/Saved.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;

namespace {

const QString kLastName = u"ZZWALK'IN"_s;

/// The cash assessment on screen.
struct CashWindow {
    frmAssessment Window;
    toolkit::EntryGrid& Grid;

    CashWindow() : Grid(*Window.findChild<toolkit::EntryGrid*>()) {
        Window.show();
        if (!QTest::qWaitForWindowActive(&Window))
            qFatal("the window does not come to the front");
    }
    QLineEdit& Box(const char* name) const {
        return *Window.findChild<QLineEdit*>(QLatin1String(name));
    }
    QLabel& Label(const char* name) const {
        return *Window.findChild<QLabel*>(QLatin1String(name));
    }
    QPushButton& Button(const char* name) const {
        return *Window.findChild<QPushButton*>(QLatin1String(name));
    }
    void FindPatient(const QString& name) const {
        Box("txtSname").setFocus();
        Box("txtSname").selectAll();
        QTest::keyClicks(&Box("txtSname"), name);
        QTest::keyClick(&Box("txtSname"), Qt::Key_Return);
    }
    void EnterAt(int row, int col, const QString& text) const {
        Grid.setFocus();
        Grid.SetCell(row, col);
        ChargeWindow::Enter(text);
    }
    /// A fee, two supplies and a doctor's fee for the walk-in, asked for by doctor 101.
    void TypeSheet() const {
        FindPatient(kLastName);
        QTest::keyClicks(&Box("txtDoctorID"), u"101"_s);
        QTest::keyClick(&Box("txtDoctorID"), Qt::Key_Return);
        const char* const lines[][3] = {{"CY", "501", ""}, {"CA", "108", "3"}, {"MD", "801", ""}};
        for (const auto& line : lines) {
            if (!Grid.TextMatrix(Grid.Rows() - 1, ChargeColumn::Code).isEmpty())
                Grid.AddLine();
            const int row = Grid.Rows() - 1;
            EnterAt(row, ChargeColumn::Dept, QLatin1String(line[0]));
            EnterAt(row, ChargeColumn::Code, QLatin1String(line[1]));
            if (*line[2])
                EnterAt(row, ChargeColumn::Quantity, QLatin1String(line[2]));
        }
    }
};

}  // namespace

class tst_frmAssessment final : public QObject {
    Q_OBJECT
private slots:
    void init() {
        m_session.reset();
        m_session = std::make_unique<ChargeSession>();
        m_session->Connection->Execute(
            u"INSERT INTO PATIENT_DATA..tbMaster (HospNum, LastName, FirstName, MiddleName, Sex, "
            "BirthDate, MSSClassification) VALUES ('299901', 'ZZWALK''IN', 'Ana', 'Luz', 'F', "
            "'19800101', NULL), ('299902', 'ZZSERVED', 'Ben', NULL, 'M', NULL, 'C2')"_s);
    }

    void Patient_isFoundByLastName() {
        const CashWindow window;
        QVERIFY(!window.Label("lblpatientClass").isVisible());
        QVERIFY(!window.Grid.isEnabled());
        window.FindPatient(kLastName.toLower());
        QCOMPARE(window.Box("txtSname").text(), kLastName);
        QCOMPARE(window.Box("txtFname").text(), u"Ana"_s);
        QCOMPARE(window.Box("txtMname").text(), u"Luz"_s);
        QCOMPARE(window.Box("txtHospNum").text(), u"299901"_s);
        QCOMPARE(window.Box("txtIDNum").text(), u"T299901C"_s);
        QCOMPARE(window.Box("txtRoomClassID").text(), u"A"_s);
        QVERIFY(window.Grid.isEnabled());
        QCOMPARE(window.Window.focusWidget()->objectName(), u"txtDoctorID"_s);
        QVERIFY(!window.Button("cmdSave").isEnabled());
    }

    void Patient_unknownLeavesTheFields() {
        const CashWindow window;
        PickListKeys closed;
        window.FindPatient(u"zznobody"_s);
        QCOMPARE(closed.Shown, 1);
        QCOMPARE(window.Box("txtSname").text(), u"ZZNOBODY"_s);
        QVERIFY(!window.Grid.isEnabled());
        // The keyboard stays where the next name is typed, not on the way out.
        QCOMPARE(window.Window.focusWidget()->objectName(), u"txtSname"_s);
        window.FindPatient(kLastName);
        m_session->Connection->Execute(
            u"UPDATE PATIENT_DATA..tbMaster SET MSSClassification = 'D' WHERE HospNum = '299901'"_s);
        window.FindPatient(u"zznobody"_s);
        QCOMPARE(window.Box("txtHospNum").text(), u"299901"_s);
        QCOMPARE(window.Box("txtSname").text(), kLastName);
        QCOMPARE(window.Label("lblpatientClass").text(), u"Service Patient: Class * D"_s);
    }

    void Class_isShownAndDecided_data() {
        Columns<QString, QString>();
        QTest::newRow("pays") << kLastName << "Pay Patient";
        QTest::newRow("service") << "ZZSERVED"
                                 << "Service Patient: Class * C2";
    }

    void Class_isShownAndDecided() {
        auto [name, label] = Fetch<QString, QString>();
        const CashWindow window;
        window.FindPatient(name);
        QVERIFY(window.Label("lblpatientClass").isVisible());
        QCOMPARE(window.Label("lblpatientClass").text(), label);
    }

    void Save_writesTheAssessmentAndTouchesNeitherFundsNorStock() {
        const QString before = FundsAndStock();
        const QString slip =
            u'C' + Rows(u"SELECT ChargeSlip FROM CLINICAL_AREA..tbCAPDSlip"_s) + u'D';
        const CashWindow window;
        window.TypeSheet();
        const QString gross = window.Box("txtGross").text();
        // A name typed afterwards and not searched is nobody's.
        window.Box("txtSname").setText(u"SOMEBODY ELSE"_s);
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        QString told;
        Saved::SetHook([&told](const QString& sentence) { told = sentence; });
        window.Button("cmdSave").click();
        Saved::SetHook({});
        QCOMPARE(told, u"Slip %1 of T299901C is saved: ZZWALK'IN, Ana Luz"_s.arg(slip));
        QCOMPARE(boxes.Leftovers(), QStringList());
        QCOMPARE(boxes.Shown()[0].Text, u"Record Saved"_s);
        QVERIFY(!window.Window.isVisible());
        window.Button("cmdSave").click();
        QCOMPARE(FundsAndStock(), before);
        const QString doctor = window.Box("txtDoctor").text();
        QStringList expected;
        for (const char* line : {"CY,501,1,450", "CA,108,3,420", "MD,801,1,800"})
            expected << u"ZZWALK'IN, Ana Luz,%1,%2,T299901C,N,101,%3"_s.arg(QLatin1String(line),
                                                                            slip, doctor);
        QCOMPARE(Lines(), expected.join(u'|'));
        QCOMPARE(gross, u"1670.00"_s);
        QCOMPARE(
            Rows(u"SELECT COUNT(*) FROM BILLING..tbDoctorCharge WHERE RefNum = '%1'"_s.arg(slip)),
            u"1"_s);
        QCOMPARE(Rows(u"SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDRequest WHERE RefNum = "
                      "'%1' AND RevenueID = 'MD'"_s.arg(slip)),
                 u"1"_s);
    }

    void Save_isRefused_data() {
        Columns<bool, QString, QStringList>();
        const QString empty = u"There are no entries to be saved."_s;
        const QString amount = u"Please indicate the amount for the exam '%1'."_s;
        const QString notSaved = u"Record Not Successfully Saved"_s;
        QTest::newRow("no line") << false << "cmdSave" << QStringList{empty};
        QTest::newRow("no line, to be printed")
            << false << "cmdSavePrint" << QStringList{empty, notSaved};
        QTest::newRow("a line without amount, to be printed")
            << true << "cmdSavePrint" << QStringList{amount, notSaved};
    }

    void Save_isRefused() {
        auto [withLine, button, said] = Fetch<bool, QString, QStringList>();
        const CashWindow window;
        window.FindPatient(kLastName);
        // 510 has an open price: without an amount it costs nothing yet.
        window.EnterAt(1, ChargeColumn::Dept, u"CY"_s);
        window.EnterAt(1, ChargeColumn::Code, u"510"_s);
        const QString exam = window.Grid.TextMatrix(1, ChargeColumn::Description);
        if (!withLine) {
            window.Grid.SetCell(1, ChargeColumn::Code);
            window.Grid.RemoveLine();
        }
        toolkit::BoxScript boxes;
        for (int box = 0; box < said.size(); ++box)
            boxes.Answer(toolkit::BoxAnswer::Ok);
        window.Button(qPrintable(button)).click();
        QCOMPARE(boxes.Leftovers(), QStringList());
        for (int box = 0; box < said.size(); ++box)
            QCOMPARE(boxes.Shown()[size_t(box)].Text, QString(said[box]).replace(u"%1"_s, exam));
        QVERIFY(window.Window.isVisible());
        QCOMPARE(Lines(), QString());
    }

    void Save_thatFailsLeavesNothingAndCanBeRepeated_data() {
        QTest::addColumn<int>("answered");
        for (int answered = 0; answered < 6; ++answered)
            QTest::addRow("after %d commands", answered) << answered;
    }

    void Save_thatFailsLeavesNothingAndCanBeRepeated() {
        QFETCH(int, answered);
        const QString counter = u"SELECT ChargeSlip FROM CLINICAL_AREA..tbCAPDSlip"_s;
        const QString number = Rows(counter);
        CashWindow window;
        window.TypeSheet();
        PluggedDriver::Left = answered;
        PluggedDriver::Gone = true;
        {
            // What the button would show is the program's: here it reaches the caller.
            toolkit::BoxScript boxes;
            boxes.Answer(toolkit::BoxAnswer::Ok);
            QVERIFY_EXCEPTION_THROWN(QMetaObject::invokeMethod(&window.Button("cmdSavePrint"),
                                                               "click", Qt::DirectConnection),
                                     base::DatabaseError);
            QCOMPARE(boxes.Shown()[0].Text, u"Record Not Successfully Saved"_s);
        }
        PluggedDriver::Gone = false;
        QCOMPARE(Lines(), QString());
        QCOMPARE(Rows(counter), number);
        QVERIFY(window.Window.isVisible());
        QCOMPARE(window.Grid.TextMatrix(2, ChargeColumn::Code), u"108"_s);
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        window.Button("cmdSave").click();
        QCOMPARE(Lines().count(u'|'), 2);
    }

    void SavePrint_printsThePlainSlip() {
        const CashWindow window;
        window.TypeSheet();
        const CommandLog log;
        PickListKeys viewer;
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        window.Button("cmdSavePrint").click();
        QCOMPARE(boxes.Leftovers(), QStringList());
        QCOMPARE(viewer.Shown, 1);
        QVERIFY(!window.Window.isVisible());
        const QStringList printed = log.Sent.filter(u"CLINICAL_AREA..sp_CAPD_PrintChargeSlip '"_s);
        QCOMPARE(printed.size(), 3);
        QVERIFY2(printed[1].endsWith(u"'3','140','420','CA','4601','0','420'"_s),
                 qPrintable(printed[1]));
        QVERIFY(log.Sent.filter(u"spRadio_GenerateChargeSlip"_s).isEmpty());
        QVERIFY(log.Sent.filter(u"PDAF"_s).isEmpty());
    }

    void Print_thatFailsClosesTheSavedSheet() {
        const CashWindow window;
        window.TypeSheet();
        // The slip's six commands and both commits, the counter's and its own, are answered; the
        // printing's first command is not.
        PluggedDriver::Left = 8;
        PluggedDriver::Gone = true;
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        QVERIFY_EXCEPTION_THROWN(window.Button("cmdSavePrint").click(), base::DatabaseError);
        PluggedDriver::Gone = false;
        QCOMPARE(boxes.Leftovers(), QStringList());
        QVERIFY(!window.Window.isVisible());
        QCOMPARE(Lines().count(u'|'), 2);
    }

private:
    QString Rows(const QString& statement) const {
        const auto found = m_session->Connection->Execute(statement);
        QStringList rows;
        for (; !found->Eof(); found->MoveNext()) {
            QStringList cells;
            for (int column = 0; column < found->FieldNames().size(); ++column)
                cells << found->Fields(column).Text();
            rows << cells.join(u',');
        }
        return rows.join(u'|');
    }

    /// Everything that an assessment must never change.
    QString FundsAndStock() const {
        QString all;
        for (const char* table : {"tbStockCard", "tbDrugStock", "tbFundAccount", "tbCompanyPayment",
                                  "tbVisitAccount", "tbBill"})
            all += Rows(u"SELECT * FROM BILLING.."_s + QLatin1String(table)) + u'\n';
        return all;
    }

    QString Lines() const {
        return Rows(
            u"SELECT PatientName, RevenueID, ItemCode, Quantity, Amount, RefNum, IdNum, "
            u"RecordStatus, "
            "DoctorID, RequestDoctor FROM BILLING..tbCashAssessment WHERE HospNum = '299901' ORDER "
            "BY "
            "AssessID"_s);
    }

    std::unique_ptr<ChargeSession> m_session;
};

QTEST_MAIN(tst_frmAssessment)
#include "tst_frmAssessment.moc"
