#include "ChargeSession.h"
#include "components/PickListKeys.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;
using namespace ChargeColumn;
using toolkit::BoxAnswer;
using toolkit::BoxScript;

// The requesting doctor above the charge sheet.
class tst_DoctorFields final : public QObject {
    Q_OBJECT
private slots:
    void init() {
        m_session = std::make_unique<ChargeSession>();
        m_boxes = std::make_unique<BoxScript>();
        m_window = std::make_unique<ChargeWindow>(m_session->Visit(u"SM"_s));
    }

    void cleanup() {
        m_window.reset();
        const QStringList leftovers = m_boxes->Leftovers();
        m_boxes.reset();
        QCOMPARE(leftovers, QStringList());
    }

    void Doctor_isLookedUpByCode() {
        ChargeWindow& window = *m_window;
        window.Find<QLineEdit>("txtDoctorID").setFocus();
        window.Enter(u"101"_s);
        QCOMPARE(window.Box("txtDoctor"), u"DR. Clara Abernathy"_s);
        QCOMPARE(window.Box("txtDoctorID"), u"101"_s);
        QCOMPARE(window.Focus(), u"grdInput"_s);
        QVERIFY(window.Window.isVisible());
        // Another code typed and not looked up yet has no name; the first one has its own again.
        window.Find<QLineEdit>("txtDoctorID").setFocus();
        window.Find<QLineEdit>("txtDoctorID").end(false);
        window.Type(u"4"_s);
        QCOMPARE(window.Box("txtDoctor"), QString());
        window.Key(Qt::Key_Backspace);
        QCOMPARE(window.Box("txtDoctor"), u"DR. Clara Abernathy"_s);
    }

    void Doctor_isPickedByTheButton() {
        ChargeWindow& window = *m_window;
        window.Find<QLineEdit>("txtDoctorID").setFocus();
        PickListKeys keys([](QDialog& list) {
            QTest::keyClicks(PickListKeys::Box(list), u"fair"_s);
            QTest::keyClick(PickListKeys::Box(list), Qt::Key_Return);
        });
        QTest::mouseClick(&window.Find<QPushButton>("cmdDoctor"), Qt::LeftButton);
        QCOMPARE(keys.Shown, 1);
        QCOMPARE(window.Box("txtDoctor"), u"DR. Simon Fairweather"_s);
        QCOMPARE(window.Box("txtDoctorID"), u"104"_s);
        QCOMPARE(window.Focus(), u"grdInput"_s);
    }

    void Doctor_cancelledIsTold() {
        ChargeWindow& window = *m_window;
        auto& code = window.Find<QLineEdit>("txtDoctorID");
        code.setFocus();
        PickListKeys cancelled;
        m_boxes->Answer(BoxAnswer::Ok);
        window.Enter(u"1'"_s);
        const toolkit::ShownBox& box = m_boxes->Shown().back();
        QCOMPARE(box.Text, u"You must fill in the Requesting Doctor First!"_s);
        QCOMPARE(box.Title, u"DoctorId"_s);
        QVERIFY(box.Icon == toolkit::BoxIcon::Critical);
        QCOMPARE(code.text(), u"1'"_s);
        QCOMPARE(window.Box("txtDoctor"), QString());
        QCOMPARE(window.Focus(), u"txtDoctorID"_s);
        m_boxes->Answer(BoxAnswer::Ok);
        window.Find<QPushButton>("cmdDoctor").click();
        QCOMPARE(cancelled.Shown, 2);
    }

    void Doctor_notOnFileIsTyped() {
        ChargeWindow& window = *m_window;
        auto& code = window.Find<QLineEdit>("txtDoctorID");
        auto& name = window.Find<QLineEdit>("txtDoctor");
        QVERIFY(name.isReadOnly());
        code.setFocus();
        window.Type(u"0"_s);
        QCOMPARE(window.Focus(), u"txtDoctor"_s);
        QVERIFY(!window.Find<QPushButton>("cmdDoctor").isEnabled());
        window.Type(u"Dr. O'Neil"_s);
        QCOMPARE(name.text(), u"Dr. O'Neil"_s);
        code.setFocus();
        window.Key(Qt::Key_Return);
        QCOMPARE(window.Focus(), u"txtDoctor"_s);
        code.setFocus();
        code.selectAll();
        window.Type(u"1"_s);
        QVERIFY(name.isReadOnly());
        QVERIFY(window.Find<QPushButton>("cmdDoctor").isEnabled());
        QCOMPARE(name.text(), QString());
        // Left by Tab, the code is looked up as by Enter; what is not found keeps the keyboard.
        window.Type(u"01"_s);
        window.Key(Qt::Key_Tab);
        QCOMPARE(name.text(), u"DR. Clara Abernathy"_s);
        QCOMPARE(window.Focus(), u"grdInput"_s);
        code.setText(u"9999"_s);
        code.setFocus();
        PickListKeys cancelled;
        m_boxes->Answer(BoxAnswer::Ok);
        window.Key(Qt::Key_Tab);
        QCOMPARE(cancelled.Shown, 1);
        QCOMPARE(window.Focus(), u"txtDoctorID"_s);
        QCOMPARE(name.text(), QString());
    }

    void Doctor_endsTheSheetsEditing() {
        ChargeWindow& window = *m_window;
        window.Type(u"CA"_s);
        window.Find<QLineEdit>("txtDoctor").setText(u"Quill"_s);
        QTest::mouseClick(&window.Find<QPushButton>("cmdDoctor"), Qt::LeftButton);
        QCOMPARE(window.Box("txtDoctor"), u"DR. Beatrice Quill"_s);
        QVERIFY(!window.Grid.InEditMode());
        QCOMPARE(window.Cell(1, Dept), u"CA"_s);
        QCOMPARE(window.At(), QPoint(1, Code));
    }

private:
    std::unique_ptr<ChargeSession> m_session;
    std::unique_ptr<ChargeWindow> m_window;
    std::unique_ptr<BoxScript> m_boxes;
};

QTEST_MAIN(tst_DoctorFields)
#include "tst_DoctorFields.moc"
