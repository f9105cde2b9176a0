#include "charges/frmAssessment.h"

#include "ShownWindows.h"
#include "WindowTest.h"
#include "charges/ChargeRules.h"
#include "toolkit/EntryGrid.h"

using namespace ChargeColumn;

namespace {

const QString kLastName = u"ZZWALK'IN"_s;

}  // namespace

// The cash assessment of a walk-in patient.
class tst_frmAssessment final : public WindowTest {
    Q_OBJECT
private slots:
    void init() {
        SetUp();
        Do(u"INSERT INTO PATIENT_DATA..tbMaster (HospNum, LastName, FirstName, MiddleName, Sex, "
           "BirthDate, MSSClassification) VALUES ('299901', 'ZZWALK''IN', 'Ana', 'Luz', 'F', "
           "'19800101', NULL)"_s);
        m_window = std::make_unique<frmAssessment>();
        BringUp(*m_window);
    }
    void cleanup() {
        m_window.reset();
        TearDown();
    }

    void Patient_isFoundByLastName() {
        QVERIFY(!Find<QLabel>(*m_window, "lblpatientClass").isVisible());
        QVERIFY(!Grid().isEnabled());
        FindPatient(u"zzwalk'in"_s);
        QStringList texts;
        for (const char* box : {"txtSname", "txtFname", "txtMname", "txtHospNum", "txtIDNum",
                                "txtRoomClassID", "lblpatientClass"})
            texts << TextOf(*m_window, box);
        QCOMPARE(texts.join(u'|'), u"ZZWALK'IN|Ana|Luz|299901|T299901C|A|Pay Patient"_s);
        QVERIFY(Find<QLabel>(*m_window, "lblpatientClass").isVisible());
        QVERIFY(Grid().isEnabled());
        QCOMPARE(m_window->focusWidget()->objectName(), u"txtDoctorID"_s);
        QVERIFY(!Find<QPushButton>(*m_window, "cmdSave").isEnabled());
    }

    void Patient_unknownLeavesTheFields() {
        PickListKeys closed;
        FindPatient(u"zznobody"_s);
        QCOMPARE(closed.Shown, 1);
        QCOMPARE(TextOf(*m_window, "txtSname"), u"ZZNOBODY"_s);
        QCOMPARE(TextOf(*m_window, "lblMessage"), u"Nobody was chosen."_s);
        QVERIFY(!Grid().isEnabled());
        // The keyboard stays where the next name is typed, not on the way out.
        QCOMPARE(m_window->focusWidget()->objectName(), u"txtSname"_s);
        FindPatient(kLastName);
        Do(u"UPDATE PATIENT_DATA..tbMaster SET MSSClassification = 'D' WHERE HospNum = '299901'"_s);
        FindPatient(u"zznobody"_s);
        QCOMPARE(TextOf(*m_window, "txtHospNum"), u"299901"_s);
        QCOMPARE(TextOf(*m_window, "txtSname"), kLastName);
        QCOMPARE(TextOf(*m_window, "lblMessage"),
                 u"Nobody was chosen. The sheet is still for ZZWALK'IN, Ana Luz."_s);
        QCOMPARE(TextOf(*m_window, "lblpatientClass"), u"Service Patient: Class * D"_s);
    }

    void Save_isOfThePatientFound() {
        TypeSheet();
        // A name typed afterwards and not searched is nobody's.
        Find<QLineEdit>(*m_window, "txtSname").setText(u"SOMEBODY ELSE"_s);
        const ShownWindows viewer;
        Answer(BoxAnswer::Ok);
        Click(*m_window, "cmdSavePrint");
        QVERIFY(m_session->Told.value(0).endsWith(u"D of T299901C is saved: ZZWALK'IN, Ana Luz"));
        QCOMPARE(Said().Text, u"Record Saved"_s);
        QVERIFY(!m_window->isVisible());
        for (const QString& said : {u"ZZWALK'IN, Ana Luz"_s, u"OPD-CASH"_s, u"1670.00"_s})
            QVERIFY2(viewer.Pages.contains(said), qPrintable(viewer.Pages));
        Click(*m_window, "cmdSave");
        QCOMPARE(Ask(u"SELECT PatientName, RevenueID, ItemCode, Quantity, Amount FROM "
                     "BILLING..tbCashAssessment WHERE IdNum = 'T299901C' ORDER BY AssessID"_s),
                 u"ZZWALK'IN, Ana Luz|CY|501|1|450;ZZWALK'IN, Ana Luz|CA|108|3|420;"
                 "ZZWALK'IN, Ana Luz|MD|801|1|800"_s);
    }

    void Save_isRefused_data() {
        Columns<bool, QString, QStringList>();
        const QString empty = u"There are no entries to be saved."_s;
        const QString amount = u"Please indicate the amount for the exam '%1'."_s;
        const QString notSaved = u"Record Not Successfully Saved"_s;
        Row("no line", false, "cmdSave", QStringList{empty});
        Row("no line, to be printed", false, "cmdSavePrint", QStringList{empty, notSaved});
        Row("a line without amount", true, "cmdSavePrint", QStringList{amount, notSaved});
    }

    void Save_isRefused() {
        auto [withLine, button, said] = Fetch<bool, QString, QStringList>();
        FindPatient(kLastName);
        // 510 has an open price: without an amount it costs nothing yet.
        EnterAt(1, Dept, u"CY"_s);
        EnterAt(1, Code, u"510"_s);
        const QString exam = Grid().TextMatrix(1, Description);
        if (!withLine) {
            Grid().SetCell(1, Code);
            Grid().RemoveLine();
        }
        Answer(BoxAnswer::Ok, int(said.size()));
        Click(*m_window, qPrintable(button));
        QStringList shown;
        for (const toolkit::ShownBox& box : m_boxes->Shown())
            shown << box.Text;
        QCOMPARE(shown, said.replaceInStrings(u"%1"_s, exam));
        QVERIFY(m_window->isVisible());
        QCOMPARE(Lines(), 0);
    }

    void Save_thatFailsLeavesNothingAndCanBeRepeated() {
        TypeSheet();
        const QString counter = Ask(kCounter);
        const auto state = [&] {
            return u"%1|%2|%3|%4"_s.arg(Ask(kCounter), Grid().TextMatrix(2, Code))
                .arg(Lines())
                .arg(m_window->isVisible());
        };
        QCOMPARE(state(), counter + u"|108|0|1"_s);
        const int refused = LoseServerAtEachCommand(state, [&] {
            Answer(BoxAnswer::Ok);
            Click(*m_window, "cmdSavePrint");
        });
        // The printing's first command is refused last: the slip's six commands and both commits,
        // the counter's and its own, are answered.
        QCOMPARE(refused, 8);
        QCOMPARE(m_boxes->Shown()[7].Text, u"Record Not Successfully Saved"_s);
        QCOMPARE(Said().Text, u"Record Saved"_s);
        QCOMPARE(state(), u"%1|108|3|0"_s.arg(counter.toInt() + 1));
    }

private:
    static inline const QString kCounter = u"SELECT ChargeSlip FROM CLINICAL_AREA..tbCAPDSlip"_s;

    toolkit::EntryGrid& Grid() const { return Find<toolkit::EntryGrid>(*m_window); }
    void FindPatient(const QString& name) const {
        auto& box = Find<QLineEdit>(*m_window, "txtSname");
        box.setFocus();
        box.selectAll();
        EnterText(name);
    }
    void EnterAt(int row, int col, const QString& text) const {
        Grid().setFocus();
        Grid().SetCell(row, col);
        EnterText(text);
    }
    /// A fee, three supplies and a doctor's fee for the walk-in, asked for by doctor 101.
    void TypeSheet() const {
        FindPatient(kLastName);
        Find<QLineEdit>(*m_window, "txtDoctorID").setFocus();
        EnterText(u"101"_s);
        const QStringList items{u"CY 501"_s, u"CA 108"_s, u"MD 801"_s};
        for (int row = 1; row <= items.size(); ++row) {
            if (row == Grid().Rows())
                Grid().AddLine();
            EnterAt(row, Dept, items[row - 1].section(u' ', 0, 0));
            EnterAt(row, Code, items[row - 1].section(u' ', 1));
        }
        EnterAt(2, Quantity, u"3"_s);
    }

    static int Lines() {
        return Ask(u"SELECT COUNT(*) FROM BILLING..tbCashAssessment WHERE HospNum = '299901'"_s)
            .toInt();
    }
    std::unique_ptr<frmAssessment> m_window;
};

QTEST_MAIN(tst_frmAssessment)
#include "tst_frmAssessment.moc"
