#include "ChargeSession.h"
#include "components/PickListKeys.h"
#include "toolkit/MsgBox.h"

using namespace ChargeColumn;
using toolkit::BoxAnswer;
using toolkit::BoxScript;

// The requesting doctor above the charge sheet.
class tst_DoctorFields final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void Doctor_isLookedUpByCode();
    void Doctor_isPickedByTheButton();
    void Doctor_cancelledIsTold();
    void Doctor_notOnFileIsTyped();
    void Doctor_endsTheSheetsEditing();

private:
    std::unique_ptr<ChargeSession> m_session;
    std::unique_ptr<ChargeWindow> m_window;
    std::unique_ptr<BoxScript> m_boxes;
};

void tst_DoctorFields::init() {
    m_session = std::make_unique<ChargeSession>();
    m_boxes = std::make_unique<BoxScript>();
    m_window = std::make_unique<ChargeWindow>(m_session->Visit(QStringLiteral("SM")));
}

void tst_DoctorFields::cleanup() {
    m_window.reset();
    const QStringList leftovers = m_boxes->Leftovers();
    m_boxes.reset();
    QCOMPARE(leftovers, QStringList());
}

void tst_DoctorFields::Doctor_isLookedUpByCode() {
    ChargeWindow& window = *m_window;
    window.Find<QLineEdit>("txtDoctorID").setFocus();
    window.Enter(QStringLiteral("101"));
    QCOMPARE(window.Box("txtDoctor"), QStringLiteral("DR. Clara Abernathy"));
    QCOMPARE(window.Box("txtDoctorID"), QStringLiteral("101"));
    QCOMPARE(window.Focus(), QStringLiteral("grdInput"));
    QVERIFY(window.Window.isVisible());
    // Another code typed and not looked up yet has no name; the first one has its own again.
    window.Find<QLineEdit>("txtDoctorID").setFocus();
    window.Find<QLineEdit>("txtDoctorID").end(false);
    window.Type(QStringLiteral("4"));
    QCOMPARE(window.Box("txtDoctor"), QString());
    window.Key(Qt::Key_Backspace);
    QCOMPARE(window.Box("txtDoctor"), QStringLiteral("DR. Clara Abernathy"));
}

void tst_DoctorFields::Doctor_isPickedByTheButton() {
    ChargeWindow& window = *m_window;
    window.Find<QLineEdit>("txtDoctorID").setFocus();
    PickListKeys keys([](QDialog& list) {
        QTest::keyClicks(PickListKeys::Box(list), QStringLiteral("fair"));
        QTest::keyClick(PickListKeys::Box(list), Qt::Key_Return);
    });
    QTest::mouseClick(&window.Find<QPushButton>("cmdDoctor"), Qt::LeftButton);
    QCOMPARE(keys.Shown, 1);
    QCOMPARE(window.Box("txtDoctor"), QStringLiteral("DR. Simon Fairweather"));
    QCOMPARE(window.Box("txtDoctorID"), QStringLiteral("104"));
    QCOMPARE(window.Focus(), QStringLiteral("grdInput"));
}

void tst_DoctorFields::Doctor_cancelledIsTold() {
    ChargeWindow& window = *m_window;
    auto& code = window.Find<QLineEdit>("txtDoctorID");
    code.setFocus();
    PickListKeys cancelled;
    m_boxes->Answer(BoxAnswer::Ok);
    window.Enter(QStringLiteral("1'"));
    const toolkit::ShownBox& box = m_boxes->Shown().back();
    QCOMPARE(box.Text, QStringLiteral("You must fill in the Requesting Doctor First!"));
    QCOMPARE(box.Title, QStringLiteral("DoctorId"));
    QVERIFY(box.Icon == toolkit::BoxIcon::Critical);
    QCOMPARE(code.text(), QStringLiteral("1'"));
    QCOMPARE(window.Box("txtDoctor"), QString());
    QCOMPARE(window.Focus(), QStringLiteral("txtDoctorID"));
    m_boxes->Answer(BoxAnswer::Ok);
    window.Find<QPushButton>("cmdDoctor").click();
    QCOMPARE(cancelled.Shown, 2);
}

void tst_DoctorFields::Doctor_notOnFileIsTyped() {
    ChargeWindow& window = *m_window;
    auto& code = window.Find<QLineEdit>("txtDoctorID");
    auto& name = window.Find<QLineEdit>("txtDoctor");
    QVERIFY(name.isReadOnly());
    code.setFocus();
    window.Type(QStringLiteral("0"));
    QCOMPARE(window.Focus(), QStringLiteral("txtDoctor"));
    QVERIFY(!window.Find<QPushButton>("cmdDoctor").isEnabled());
    window.Type(QStringLiteral("Dr. O'Neil"));
    QCOMPARE(name.text(), QStringLiteral("Dr. O'Neil"));
    code.setFocus();
    window.Key(Qt::Key_Return);
    QCOMPARE(window.Focus(), QStringLiteral("txtDoctor"));
    code.setFocus();
    code.selectAll();
    window.Type(QStringLiteral("1"));
    QVERIFY(name.isReadOnly());
    QVERIFY(window.Find<QPushButton>("cmdDoctor").isEnabled());
    QCOMPARE(name.text(), QString());
    // Left by Tab, the code is looked up as by Enter; what is not found keeps the keyboard.
    window.Type(QStringLiteral("01"));
    window.Key(Qt::Key_Tab);
    QCOMPARE(name.text(), QStringLiteral("DR. Clara Abernathy"));
    QCOMPARE(window.Focus(), QStringLiteral("grdInput"));
    code.setText(QStringLiteral("9999"));
    code.setFocus();
    PickListKeys cancelled;
    m_boxes->Answer(BoxAnswer::Ok);
    window.Key(Qt::Key_Tab);
    QCOMPARE(cancelled.Shown, 1);
    QCOMPARE(window.Focus(), QStringLiteral("txtDoctorID"));
    QCOMPARE(name.text(), QString());
}

void tst_DoctorFields::Doctor_endsTheSheetsEditing() {
    ChargeWindow& window = *m_window;
    window.Type(QStringLiteral("CA"));
    window.Find<QLineEdit>("txtDoctor").setText(QStringLiteral("Quill"));
    QTest::mouseClick(&window.Find<QPushButton>("cmdDoctor"), Qt::LeftButton);
    QCOMPARE(window.Box("txtDoctor"), QStringLiteral("DR. Beatrice Quill"));
    QVERIFY(!window.Grid.InEditMode());
    QCOMPARE(window.Cell(1, Dept), QStringLiteral("CA"));
    QCOMPARE(window.At(), QPoint(1, Code));
}

QTEST_MAIN(tst_DoctorFields)
#include "tst_DoctorFields.moc"
