#include "charges/frmAssessment.h"

#include "CommandLog.h"
#include "charges/ChargeSession.h"
#include "components/PickListKeys.h"
#include "session/Saved.h"
#include "toolkit/MsgBox.h"

namespace {

const QString kLastName = QStringLiteral("ZZWALK'IN");

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
        QTest::keyClicks(&Box("txtDoctorID"), QStringLiteral("101"));
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
    void init();
    void Patient_isFoundByLastName();
    void Patient_unknownLeavesTheFields();
    void Class_isShownAndDecided_data();
    void Class_isShownAndDecided();
    void Save_writesTheAssessmentAndTouchesNeitherFundsNorStock();
    void Save_isRefused_data();
    void Save_isRefused();
    void Save_thatFailsLeavesNothingAndCanBeRepeated_data();
    void Save_thatFailsLeavesNothingAndCanBeRepeated();
    void SavePrint_printsThePlainSlip();
    void Print_thatFailsClosesTheSavedSheet();

private:
    QString Rows(const QString& statement) const;
    /// Everything that an assessment must never change.
    QString FundsAndStock() const;
    QString Lines() const;

    std::unique_ptr<ChargeSession> m_session;
};

void tst_frmAssessment::init() {
    m_session.reset();
    m_session = std::make_unique<ChargeSession>();
    m_session->Connection->Execute(QStringLiteral(
        "INSERT INTO PATIENT_DATA..tbMaster (HospNum, LastName, FirstName, MiddleName, Sex, "
        "BirthDate, MSSClassification) VALUES ('299901', 'ZZWALK''IN', 'Ana', 'Luz', 'F', "
        "'19800101', NULL), ('299902', 'ZZSERVED', 'Ben', NULL, 'M', NULL, 'C2')"));
}

QString tst_frmAssessment::Rows(const QString& statement) const {
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

QString tst_frmAssessment::FundsAndStock() const {
    QString all;
    for (const char* table : {"tbStockCard", "tbDrugStock", "tbFundAccount", "tbCompanyPayment",
                              "tbVisitAccount", "tbBill"})
        all += Rows(QStringLiteral("SELECT * FROM BILLING..") + QLatin1String(table)) + u'\n';
    return all;
}

QString tst_frmAssessment::Lines() const {
    return Rows(QStringLiteral(
        "SELECT PatientName, RevenueID, ItemCode, Quantity, Amount, RefNum, IdNum, RecordStatus, "
        "DoctorID, RequestDoctor FROM BILLING..tbCashAssessment WHERE HospNum = '299901' ORDER BY "
        "AssessID"));
}

void tst_frmAssessment::Patient_isFoundByLastName() {
    const CashWindow window;
    QVERIFY(!window.Label("lblpatientClass").isVisible());
    QVERIFY(!window.Grid.isEnabled());
    window.FindPatient(kLastName.toLower());
    QCOMPARE(window.Box("txtSname").text(), kLastName);
    QCOMPARE(window.Box("txtFname").text(), QStringLiteral("Ana"));
    QCOMPARE(window.Box("txtMname").text(), QStringLiteral("Luz"));
    QCOMPARE(window.Box("txtHospNum").text(), QStringLiteral("299901"));
    QCOMPARE(window.Box("txtIDNum").text(), QStringLiteral("T299901C"));
    QCOMPARE(window.Box("txtRoomClassID").text(), QStringLiteral("A"));
    QVERIFY(window.Grid.isEnabled());
    QCOMPARE(window.Window.focusWidget()->objectName(), QStringLiteral("txtDoctorID"));
    QVERIFY(!window.Button("cmdSave").isEnabled());
}

void tst_frmAssessment::Patient_unknownLeavesTheFields() {
    const CashWindow window;
    PickListKeys closed;
    window.FindPatient(QStringLiteral("zznobody"));
    QCOMPARE(closed.Shown, 1);
    QCOMPARE(window.Box("txtSname").text(), QStringLiteral("ZZNOBODY"));
    QVERIFY(!window.Grid.isEnabled());
    // The keyboard stays where the next name is typed, not on the way out.
    QCOMPARE(window.Window.focusWidget()->objectName(), QStringLiteral("txtSname"));
    window.FindPatient(kLastName);
    m_session->Connection->Execute(QStringLiteral(
        "UPDATE PATIENT_DATA..tbMaster SET MSSClassification = 'D' WHERE HospNum = '299901'"));
    window.FindPatient(QStringLiteral("zznobody"));
    QCOMPARE(window.Box("txtHospNum").text(), QStringLiteral("299901"));
    QCOMPARE(window.Box("txtSname").text(), kLastName);
    QCOMPARE(window.Label("lblpatientClass").text(), QStringLiteral("Service Patient: Class * D"));
}

void tst_frmAssessment::Class_isShownAndDecided_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("label");
    QTest::newRow("pays") << kLastName << "Pay Patient";
    QTest::newRow("service") << "ZZSERVED"
                             << "Service Patient: Class * C2";
}

void tst_frmAssessment::Class_isShownAndDecided() {
    QFETCH(QString, name);
    QFETCH(QString, label);
    const CashWindow window;
    window.FindPatient(name);
    QVERIFY(window.Label("lblpatientClass").isVisible());
    QCOMPARE(window.Label("lblpatientClass").text(), label);
}

void tst_frmAssessment::Save_writesTheAssessmentAndTouchesNeitherFundsNorStock() {
    const QString before = FundsAndStock();
    const QString slip =
        u'C' + Rows(QStringLiteral("SELECT ChargeSlip FROM CLINICAL_AREA..tbCAPDSlip")) + u'D';
    const CashWindow window;
    window.TypeSheet();
    const QString gross = window.Box("txtGross").text();
    // A name typed afterwards and not searched is nobody's.
    window.Box("txtSname").setText(QStringLiteral("SOMEBODY ELSE"));
    toolkit::BoxScript boxes;
    boxes.Answer(toolkit::BoxAnswer::Ok);
    QString told;
    Saved::SetHook([&told](const QString& sentence) { told = sentence; });
    window.Button("cmdSave").click();
    Saved::SetHook({});
    QCOMPARE(told, QStringLiteral("Slip %1 of T299901C is saved: ZZWALK'IN, Ana Luz").arg(slip));
    QCOMPARE(boxes.Leftovers(), QStringList());
    QCOMPARE(boxes.Shown()[0].Text, QStringLiteral("Record Saved"));
    QVERIFY(!window.Window.isVisible());
    window.Button("cmdSave").click();
    QCOMPARE(FundsAndStock(), before);
    const QString doctor = window.Box("txtDoctor").text();
    QStringList expected;
    for (const char* line : {"CY,501,1,450", "CA,108,3,420", "MD,801,1,800"})
        expected << QStringLiteral("ZZWALK'IN, Ana Luz,%1,%2,T299901C,N,101,%3")
                        .arg(QLatin1String(line), slip, doctor);
    QCOMPARE(Lines(), expected.join(u'|'));
    QCOMPARE(gross, QStringLiteral("1670.00"));
    QCOMPARE(Rows(QStringLiteral("SELECT COUNT(*) FROM BILLING..tbDoctorCharge WHERE RefNum = '%1'")
                      .arg(slip)),
             QStringLiteral("1"));
    QCOMPARE(Rows(QStringLiteral("SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDRequest WHERE RefNum = "
                                 "'%1' AND RevenueID = 'MD'")
                      .arg(slip)),
             QStringLiteral("1"));
}

void tst_frmAssessment::Save_isRefused_data() {
    QTest::addColumn<bool>("withLine");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("said");
    const QString empty = QStringLiteral("There are no entries to be saved.");
    const QString amount = QStringLiteral("Please indicate the amount for the exam '%1'.");
    const QString notSaved = QStringLiteral("Record Not Successfully Saved");
    QTest::newRow("no line") << false << "cmdSave" << QStringList{empty};
    QTest::newRow("no line, to be printed")
        << false << "cmdSavePrint" << QStringList{empty, notSaved};
    QTest::newRow("a line without amount, to be printed")
        << true << "cmdSavePrint" << QStringList{amount, notSaved};
}

void tst_frmAssessment::Save_isRefused() {
    QFETCH(bool, withLine);
    QFETCH(QString, button);
    QFETCH(QStringList, said);
    const CashWindow window;
    window.FindPatient(kLastName);
    // 510 has an open price: without an amount it costs nothing yet.
    window.EnterAt(1, ChargeColumn::Dept, QStringLiteral("CY"));
    window.EnterAt(1, ChargeColumn::Code, QStringLiteral("510"));
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
        QCOMPARE(boxes.Shown()[size_t(box)].Text,
                 QString(said[box]).replace(QStringLiteral("%1"), exam));
    QVERIFY(window.Window.isVisible());
    QCOMPARE(Lines(), QString());
}

void tst_frmAssessment::Save_thatFailsLeavesNothingAndCanBeRepeated_data() {
    QTest::addColumn<int>("answered");
    for (int answered = 0; answered < 6; ++answered)
        QTest::addRow("after %d commands", answered) << answered;
}

void tst_frmAssessment::Save_thatFailsLeavesNothingAndCanBeRepeated() {
    QFETCH(int, answered);
    const QString counter = QStringLiteral("SELECT ChargeSlip FROM CLINICAL_AREA..tbCAPDSlip");
    const QString number = Rows(counter);
    CashWindow window;
    window.TypeSheet();
    PluggedDriver::Left = answered;
    PluggedDriver::Gone = true;
    {
        // What the button would show is the program's: here it reaches the caller.
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        QVERIFY_EXCEPTION_THROWN(QMetaObject::invokeMethod(&window.Button("cmdSavePrint"), "click",
                                                           Qt::DirectConnection),
                                 base::DatabaseError);
        QCOMPARE(boxes.Shown()[0].Text, QStringLiteral("Record Not Successfully Saved"));
    }
    PluggedDriver::Gone = false;
    QCOMPARE(Lines(), QString());
    QCOMPARE(Rows(counter), number);
    QVERIFY(window.Window.isVisible());
    QCOMPARE(window.Grid.TextMatrix(2, ChargeColumn::Code), QStringLiteral("108"));
    toolkit::BoxScript boxes;
    boxes.Answer(toolkit::BoxAnswer::Ok);
    window.Button("cmdSave").click();
    QCOMPARE(Lines().count(u'|'), 2);
}

void tst_frmAssessment::SavePrint_printsThePlainSlip() {
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
    const QStringList printed =
        log.Sent.filter(QStringLiteral("CLINICAL_AREA..sp_CAPD_PrintChargeSlip '"));
    QCOMPARE(printed.size(), 3);
    QVERIFY2(printed[1].endsWith(QStringLiteral("'3','140','420','CA','4601','0','420'")),
             qPrintable(printed[1]));
    QVERIFY(log.Sent.filter(QStringLiteral("spRadio_GenerateChargeSlip")).isEmpty());
    QVERIFY(log.Sent.filter(QStringLiteral("PDAF")).isEmpty());
}

void tst_frmAssessment::Print_thatFailsClosesTheSavedSheet() {
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

QTEST_MAIN(tst_frmAssessment)
#include "tst_frmAssessment.moc"
