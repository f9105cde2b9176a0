#include "charges/frmRequest.h"

#include "ChargeWindow.h"
#include "charges/clsComputeDiscount.h"

using namespace ChargeColumn;

// The charge window itself: what it shows of the patient, what the patient is granted, and what the
// window survives.
class tst_frmRequest final : public ChargeTest {
    Q_OBJECT
private slots:
    void init() {
        SetUp();
        Open();
    }
    void cleanup() { CloseAll(); }

    void Patient_isShownWithItsClassAndGranted_data() {
        Columns<QString, QString, QString, QString, bool>();
        const auto row = [](const char* type, const char* grade, const char* labels,
                            const char* amounts, bool serviceRoom = false) {
            QTest::addRow("%s %s%s", type, grade, serviceRoom ? " in a service room" : "")
                << type << grade << labels << amounts << serviceRoom;
        };
        row("", "", "Pay Patient|", "385|0");
        row("XX", "", "Pay Patient|", "385|0");
        row("SM", "", "Pay Patient|Senior Citizen", "308|77");
        row("GE", "", "Pay Patient|Gov`t Employees Discount", "346.5|38.5");
        row("GD", "", "Pay Patient|Gov`t Employees Dependent Discount", "365.75|19.25");
        row("KE", "", "Pay Patient|Velmora Employees Discount", "327.25|57.75");
        row("KD", "", "Pay Patient|Velmora Employees Dependent Discount", "346.5|38.5");
        row("QF", "C2", "Class: C2 Service Patient|Med.Social Service Discount Class: C2",
            "192.5|192.5");
        row("SM", "C2", "Class: C2 Service Patient|Senior Citizen Class: C2", "308|77");
        row("QF", "D", "Class: D Service Patient|Med.Social Service Discount Class: D", "0|385");
        row("SM", "", " Service Patient|Senior Citizen ", "308|77", true);
        row("", "", " Service Patient| ", "385|0", true);
    }

    void Patient_isShownWithItsClassAndGranted() {
        auto [type, grade, labels, amounts, serviceRoom] =
            Fetch<QString, QString, QString, QString, bool>();
        const QString table = serviceRoom ? u"tbPatient"_s : u"tbOutPatient"_s;
        const QString stay =
            Ask(u"SELECT TOP (1) IdNum, HospNum FROM PATIENT_DATA..%1 WHERE %2"_s.arg(
                table, serviceRoom ? u"RoomClassID = 'S'"_s : u"IdNum LIKE 'A%'"_s));
        const QString idNum = stay.section(u'|', 0, 0), hospNum = stay.section(u'|', 1);
        const auto grant = [&](const QString& discountType, const QString& classification) {
            Do(u"UPDATE PATIENT_DATA..%1 SET DiscType = NULLIF('%2', '') WHERE IdNum = '%3'"_s.arg(
                table, discountType, idNum));
            Do(u"UPDATE PATIENT_DATA..tbMaster SET MSSClassification = NULLIF('%1', '') WHERE "
               "HospNum = '%2'"_s.arg(classification, hospNum));
        };
        grant(type, grade);
        m_window = std::make_unique<ChargeWindow>(idNum);
        QCOMPARE(m_window->Text("lblPatient"), u"O'HARA, Ana Luz"_s);
        QCOMPARE(m_window->Text("lblCompany"), u"A-17 <b>Kidney & Sons"_s);
        QCOMPARE(m_window->Text("lblPatientClass") + u'|' + m_window->Text("lblDiscount"), labels);
        QVERIFY(!Find<QPushButton>(m_window->Window, "cmdSave").isEnabled());
        QVERIFY(!Find<QPushButton>(m_window->Window, "cmdSavePrint").isEnabled());
        m_window->Charge(u"CA"_s, u"101"_s);
        QCOMPARE(m_window->Line(1, NetAmount), amounts);
        // What was granted a minute ago counts.
        grant(u"QF"_s, u"D"_s);
        m_window->Charge(u"CA"_s, u"101"_s);
        QCOMPARE(m_window->Line(2, NetAmount), u"0|385"_s);
    }

    void Discount_isAskedForOneUnit() {
        clsComputeDiscount discount;
        discount.SetIdNum(VisitOf(u"QF"_s, u"C2"_s));
        discount.SetRevenueID(u"C'A"_s);
        discount.SetItemCode(u"101"_s);
        discount.SetWithMarkUp(-15);
        discount.SetFullPrice(12.5);
        const CommandLog log;
        // What the server has no price for costs what the line says.
        QCOMPARE(discount.NetAmount(), 12.5);
        QCOMPARE(log.Sent.last(),
                 u"RADIOLOGY..spRadio_GetDiscount 'C''A','101','QF','C2', '-15'"_s);
        QCOMPARE(discount.DiscountAmount() + discount.ItemPrice(), 0.0);
        discount.SetRevenueID(u"CA"_s);
        QCOMPARE(discount.ItemPrice(), 385.0);
        discount.SetIdNum(u"A99999999B"_s);
        QCOMPARE(discount.DiscountType() + discount.MSSClassification(), QString());
    }

    // Nor what the patient before was granted.
    void Visit_unknownGetsNoDiscount() {
        m_window->Charge(u"CA"_s, u"101"_s);
        QCOMPARE(m_window->Line(1, NetAmount), u"308|77"_s);
        for (const QString& idNum : {u"99999999"_s, u"A99999999B"_s, u"A'1B"_s}) {
            m_window = std::make_unique<ChargeWindow>(idNum);
            QCOMPARE(m_window->Text("lblPatientClass") + m_window->Text("lblDiscount"), QString());
            m_window->Charge(u"CA"_s, u"101"_s);
            QCOMPARE(m_window->Line(1, NetAmount), u"385|0"_s);
        }
    }

    void Load_thatFailsShowsNothing() {
        frmRequest window(m_window->Patient);
        PluggedDriver::GoesAfter(0);
        QVERIFY_EXCEPTION_THROWN(window.exec(), base::DatabaseError);
        QVERIFY(!window.isVisible());
    }

    void Cells_takeAnyText() {
        const QString text = u"'; DELETE tbCAPDSlip --\"\t%_[!'\r\n102\tñ"_s + QString(1000, u'Z');
        ChargeWindow& window = *m_window;
        window.Charge(u"CA"_s, u"101"_s, u"2"_s);
        window.Charge(u"CY"_s, u"501"_s);
        PickListKeys cancelled;
        // For each revenue code that is not found.
        Answer(BoxAnswer::Ok, 2);
        for (const QPoint cell :
             {QPoint(1, Dept), QPoint(2, Dept), QPoint(1, Code), QPoint(2, Code)}) {
            const QString before = window.Line(cell.x());
            window.Grid.setFocus();
            window.Grid.SetCell(cell.x(), cell.y());
            QGuiApplication::clipboard()->setText(text);
            PressKey(Qt::Key_Insert, Qt::ShiftModifier);
            PressKey(Qt::Key_Return);
            QCOMPARE(window.Line(cell.x()), before);
            PressKey(Qt::Key_Escape);
        }
        QCOMPARE(window.Text("lblMessage"), QString());
    }

    void ServerGone_leavesTheSheet_data() {
        Columns<int, QString, int>();
        Row("revenue code", int(Dept), "CY", 0);
        Row("item", int(Code), "105", 0);
        Row("before its discount", int(Code), "105", 2);
        Row("between net amount and discount", int(Code), "105", 7);
        Row("before the last answer", int(Code), "105", 11);
    }

    void ServerGone_leavesTheSheet() {
        auto [column, text, answered] = Fetch<int, QString, int>();
        ChargeWindow& window = *m_window;
        window.Charge(u"CA"_s, u"101"_s, u"2"_s);
        const QString before = window.Line(1);
        window.Grid.SetCell(1, column);
        PluggedDriver::GoesAfter(answered);
        QVERIFY_EXCEPTION_THROWN(EnterText(text), base::DatabaseError);
        QCOMPARE(window.Line(1), before);
        QCOMPARE(window.Fault(), QString());
        QCOMPARE(window.Grid.EditText(), text);
        // It is back: the same Enter goes through.
        PluggedDriver::Returns();
        PressKey(Qt::Key_Return);
        QCOMPARE(window.Cell(1, column), text);
        QVERIFY(window.Line(1) != before);
    }

    void ServerGone_isToldOfAFee() {
        ChargeWindow& window = *m_window;
        window.Charge(u"CY"_s, u"501"_s);
        const QString before = window.Line(1);
        PluggedDriver::GoesAfter(0);
        window.EnterAt(1, Code, u"502"_s);
        QCOMPARE(window.Text("lblMessage"), u"10054  The server is gone."_s);
        QCOMPARE(window.Line(1), before);
        PluggedDriver::Returns();
        PressKey(Qt::Key_Return);
        QCOMPARE(window.Cell(1, Code), u"502"_s);
        QCOMPARE(window.Text("lblMessage"), QString());
    }

    void Doctor_isLookedUpByCode() {
        DoctorCode().setFocus();
        EnterText(u"101"_s);
        QCOMPARE(Doctor(), u"101|DR. Clara Abernathy|grdInput"_s);
        // Another code typed and not looked up yet has no name; the first one has its own again.
        DoctorCode().setFocus();
        DoctorCode().end(false);
        TypeText(u"4"_s);
        QCOMPARE(m_window->Text("txtDoctor"), QString());
        PressKey(Qt::Key_Backspace);
        QCOMPARE(m_window->Text("txtDoctor"), u"DR. Clara Abernathy"_s);
    }

    void Doctor_isPickedByTheButton() {
        PickListKeys keys([](QDialog& list) {
            QTest::keyClicks(PickListKeys::Box(list), u"fair"_s);
            QTest::keyClick(PickListKeys::Box(list), Qt::Key_Return);
        });
        auto& search = Find<QPushButton>(m_window->Window, "cmdDoctor");
        DoctorCode().setFocus();
        QTest::mouseClick(&search, Qt::LeftButton);
        QCOMPARE(keys.Shown, 1);
        QCOMPARE(Doctor(), u"104|DR. Simon Fairweather|grdInput"_s);
        // A name of one doctor alone asks nothing; what is being typed in the sheet stands there.
        TypeText(u"CA"_s);
        m_window->Box("txtDoctor").setText(u"Quill"_s);
        QTest::mouseClick(&search, Qt::LeftButton);
        QCOMPARE(m_window->Text("txtDoctor"), u"DR. Beatrice Quill"_s);
        QVERIFY(!m_window->Grid.InEditMode());
        QCOMPARE(m_window->Cell(1, Dept), u"CA"_s);
        QCOMPARE(m_window->At(), QPoint(1, Code));
    }

    void Doctor_notOnFileIsTyped() {
        const QPushButton& search = Find<QPushButton>(m_window->Window, "cmdDoctor");
        const QLineEdit& name = m_window->Box("txtDoctor");
        DoctorCode().setFocus();
        QVERIFY(name.isReadOnly());
        TypeText(u"0"_s);
        QVERIFY(!search.isEnabled());
        TypeText(u"Dr. O'Neil"_s);
        QCOMPARE(Doctor(), u"0|Dr. O'Neil|txtDoctor"_s);
        DoctorCode().setFocus();
        PressKey(Qt::Key_Return);
        QCOMPARE(m_window->Focus(), u"txtDoctor"_s);
        DoctorCode().setFocus();
        DoctorCode().selectAll();
        TypeText(u"1"_s);
        QVERIFY(name.isReadOnly());
        QVERIFY(search.isEnabled());
        QCOMPARE(name.text(), QString());
        // Left by Tab, the code is looked up as by Enter; what is not found keeps the keyboard.
        TypeText(u"01"_s);
        PressKey(Qt::Key_Tab);
        QCOMPARE(Doctor(), u"101|DR. Clara Abernathy|grdInput"_s);
        DoctorCode().setText(u"1'"_s);
        DoctorCode().setFocus();
        PickListKeys cancelled;
        Answer(BoxAnswer::Ok, 2);
        PressKey(Qt::Key_Tab);
        QCOMPARE(Said().Text, u"You must fill in the Requesting Doctor First!"_s);
        QCOMPARE(Doctor(), u"1'||txtDoctorID"_s);
        m_window->Press("cmdDoctor");
        QCOMPARE(cancelled.Shown, 2);
    }

    void Closing_looksNothingUp() {
        TypeText(u"ZZ"_s);
        QTest::mouseClick(&Find<QPushButton>(m_window->Window, "cmdClose"), Qt::LeftButton);
        QVERIFY(!m_window->Window.isVisible());
    }

private:
    QLineEdit& DoctorCode() const { return m_window->Box("txtDoctorID"); }
    /// Code, name, and who has the keyboard.
    QString Doctor() const {
        return DoctorCode().text() + u'|' + m_window->Text("txtDoctor") + u'|' + m_window->Focus();
    }
};

QTEST_MAIN(tst_frmRequest)
#include "tst_frmRequest.moc"
