#include "Rows.h"
#include "charges/frmRequest.h"

#include <QClipboard>
#include <QGroupBox>

#include "ChargeTest.h"
#include "toolkit/Twips.h"

using namespace Qt::StringLiterals;
using namespace ChargeColumn;
using toolkit::BoxAnswer;

// The charge window itself: what it shows, and what it survives.
class tst_frmRequest final : public ChargeTest {
    Q_OBJECT
private slots:
    void init() { SetUp(); }
    void cleanup() { TearDown(); }

    void Load_showsThePatientAndItsClass_data() {
        Columns<QString, QString, QString, QString>();
        QTest::newRow("pay") << "SM"
                             << ""
                             << "Pay Patient"
                             << "Senior Citizen";
        QTest::newRow("service") << "QF"
                                 << "C2"
                                 << "Class: C2 Service Patient"
                                 << "Med.Social Service Discount Class: C2";
    }

    void Load_showsThePatientAndItsClass() {
        auto [type, classification, classLabel, discountLabel] =
            Fetch<QString, QString, QString, QString>();
        const ChargeWindow& window = Open(type, classification);
        QCOMPARE(window.Window.windowTitle(), u"RequestEntry"_s);
        QCOMPARE(window.Find<QGroupBox>("fraPostCharges").title(), u"Post Charges"_s);
        QCOMPARE(window.Label("lblHint"), u"Revenue Codes :     CA - CAPD Supplies"_s);
        QCOMPARE(window.Label("lblCompany"), u"A-17 <b>Kidney & Sons"_s);
        QCOMPARE(window.Label("lblPatient"), u"O'HARA, Ana Luz"_s);
        QCOMPARE(window.Label("lblPatientClass"), classLabel);
        QCOMPARE(window.Label("lblDiscount"), discountLabel);
        QCOMPARE(window.Totals(), QStringList(3, u"0.00"_s));
        QVERIFY(!window.Find<QPushButton>("cmdSave").isEnabled());
        QVERIFY(!window.Find<QPushButton>("cmdSavePrint").isEnabled());
    }

    void Load_thatFailsShowsNothing() {
        ScreenPatient patient(m_session->Visit(u"SM"_s));
        frmRequest window(patient);
        PluggedDriver::Gone = true;
        QVERIFY_EXCEPTION_THROWN(window.exec(), base::DatabaseError);
        QVERIFY(!window.isVisible());
    }

    void Sheet_isLaidOut() {
        const ChargeWindow& window = Open();
        QCOMPARE(window.Line(0).join(u','),
                 u",Dept.,Code,Examimantion Description,Type,Price,Quantity,Amount,"
                 "WithItems,LocationID,,InventoryCode,NetAmount,Discount"_s);
        QCOMPARE(window.Grid.Rows(), 2);
        QCOMPARE(window.At(), QPoint(1, Dept));
        const int widths[] = {100, 1000, 1000, 4000, 1500, 1000, 1000, 1000, 0, 0, 0, 0, 0, 0};
        for (int col = 0; col < ChargeColumn::Count; ++col)
            QVERIFY(col == 3
                        ? window.Grid.columnWidth(col) >= toolkit::Twips(widths[col], &window.Grid)
                        : window.Grid.columnWidth(col) ==
                              toolkit::Twips(widths[col], &window.Grid));
    }

    void Cells_takeAnyText_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("quotes") << "'; DELETE tbCAPDSlip --\"";
        QTest::newRow("a thousand letters") << QString(1000, u'Z');
        QTest::newRow("a table") << "101\t2\r\n102\t3\r\n";
        QTest::newRow("patterns") << "%_[!'";
        QTest::newRow("accents") << u"Peña ₱"_s;
    }

    void Cells_takeAnyText() {
        QFETCH(QString, text);
        if (!ServerHospital::Keeps(text))
            QSKIP("the server's code page may lack these letters");
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"101"_s, u"2"_s);
        window.Charge(u"CY"_s, u"501"_s);
        PickListKeys cancelled;
        const int unfound = 2;
        for (int box = 0; box < unfound; ++box)
            m_boxes->Answer(BoxAnswer::Ok);
        for (const QPoint& cell :
             {QPoint(1, Dept), QPoint(2, Dept), QPoint(1, Code), QPoint(2, Code)}) {
            const QStringList before = window.Line(cell.x());
            window.Grid.setFocus();
            window.Grid.SetCell(cell.x(), cell.y());
            QGuiApplication::clipboard()->setText(text);
            window.Key(Qt::Key_Insert, Qt::ShiftModifier);
            window.Key(Qt::Key_Return);
            QCOMPARE(window.Line(cell.x()), before);
            window.Key(Qt::Key_Escape);
        }
        QVERIFY(window.Find<QLabel>("lblMessage").text().isEmpty());
    }

    void ServerGone_leavesTheSheet_data() {
        Columns<int, QString, int>();
        QTest::newRow("revenue code") << int(Dept) << "CY" << 0;
        QTest::newRow("item") << int(Code) << "105" << 0;
        QTest::newRow("before its discount") << int(Code) << "105" << 2;
        QTest::newRow("between net amount and discount") << int(Code) << "105" << 7;
        QTest::newRow("before the last answer") << int(Code) << "105" << 11;
    }

    void ServerGone_leavesTheSheet() {
        auto [column, text, answered] = Fetch<int, QString, int>();
        ChargeWindow& window = Open();
        window.Charge(u"CA"_s, u"101"_s, u"2"_s);
        const QStringList before = window.Line(1);
        window.Grid.SetCell(1, column);
        PluggedDriver::Gone = true;
        PluggedDriver::Left = answered;
        QVERIFY_EXCEPTION_THROWN(window.Enter(text), base::DatabaseError);
        QCOMPARE(window.Line(1), before);
        QCOMPARE(window.Fault(), QString());
        QCOMPARE(window.Grid.EditText(), text);
        // It is back: the same Enter goes through.
        PluggedDriver::Gone = false;
        window.Key(Qt::Key_Return);
        QCOMPARE(window.Cell(1, column), text);
        QVERIFY(window.Line(1) != before);
    }

    void ServerGone_isToldOfAFee() {
        ChargeWindow& window = Open();
        window.Charge(u"CY"_s, u"501"_s);
        const QStringList before = window.Line(1);
        PluggedDriver::Gone = true;
        window.EnterAt(1, Code, u"502"_s);
        QCOMPARE(window.Label("lblMessage"), u"10054  The server is gone."_s);
        QCOMPARE(window.Line(1), before);
        PluggedDriver::Gone = false;
        window.Key(Qt::Key_Return);
        QCOMPARE(window.Cell(1, Code), u"502"_s);
        QCOMPARE(window.Label("lblMessage"), QString());
    }

    void Closing_looksNothingUp() {
        ChargeWindow& window = Open();
        window.Type(u"ZZ"_s);
        QTest::mouseClick(&window.Find<QPushButton>("cmdClose"), Qt::LeftButton);
        QVERIFY(!window.Window.isVisible());
        QVERIFY(m_boxes->Shown().empty());
    }
};

QTEST_MAIN(tst_frmRequest)
#include "tst_frmRequest.moc"
