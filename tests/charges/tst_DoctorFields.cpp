#include "ChargeWindow.h"

// The requesting doctor above the charge sheet.
class tst_DoctorFields final : public ChargeTest {
    Q_OBJECT
private slots:
    void init() {
        SetUp();
        Open();
        m_code = &m_window->Box("txtDoctorID");
        m_code->setFocus();
    }
    void cleanup() { CloseAll(); }

    void Doctor_isLookedUpByCode() {
        EnterText(u"101"_s);
        QCOMPARE(Shown(), u"101|DR. Clara Abernathy|grdInput"_s);
        QVERIFY(m_window->Window.isVisible());
        // Another code typed and not looked up yet has no name; the first one has its own again.
        m_code->setFocus();
        m_code->end(false);
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
        ClickDoctor();
        QCOMPARE(keys.Shown, 1);
        QCOMPARE(Shown(), u"104|DR. Simon Fairweather|grdInput"_s);
    }

    void Doctor_cancelledIsTold() {
        PickListKeys cancelled;
        Answer(BoxAnswer::Ok, 2);
        EnterText(u"1'"_s);
        QCOMPARE(Said().Text, u"You must fill in the Requesting Doctor First!"_s);
        QCOMPARE(Shown(), u"1'||txtDoctorID"_s);
        m_window->Press("cmdDoctor");
        QCOMPARE(cancelled.Shown, 2);
    }

    void Doctor_notOnFileIsTyped() {
        const QPushButton& search = Find<QPushButton>(m_window->Window, "cmdDoctor");
        const QLineEdit& name = m_window->Box("txtDoctor");
        QVERIFY(name.isReadOnly());
        TypeText(u"0"_s);
        QVERIFY(!search.isEnabled());
        TypeText(u"Dr. O'Neil"_s);
        QCOMPARE(Shown(), u"0|Dr. O'Neil|txtDoctor"_s);
        m_code->setFocus();
        PressKey(Qt::Key_Return);
        QCOMPARE(m_window->Focus(), u"txtDoctor"_s);
        m_code->setFocus();
        m_code->selectAll();
        TypeText(u"1"_s);
        QVERIFY(name.isReadOnly());
        QVERIFY(search.isEnabled());
        QCOMPARE(name.text(), QString());
        // Left by Tab, the code is looked up as by Enter; what is not found keeps the keyboard.
        TypeText(u"01"_s);
        PressKey(Qt::Key_Tab);
        QCOMPARE(Shown(), u"101|DR. Clara Abernathy|grdInput"_s);
        m_code->setText(u"9999"_s);
        m_code->setFocus();
        PickListKeys cancelled;
        Answer(BoxAnswer::Ok);
        PressKey(Qt::Key_Tab);
        QCOMPARE(cancelled.Shown, 1);
        QCOMPARE(Shown(), u"9999||txtDoctorID"_s);
    }

    void Doctor_endsTheSheetsEditing() {
        m_window->Grid.setFocus();
        TypeText(u"CA"_s);
        m_window->Box("txtDoctor").setText(u"Quill"_s);
        ClickDoctor();
        QCOMPARE(m_window->Text("txtDoctor"), u"DR. Beatrice Quill"_s);
        QVERIFY(!m_window->Grid.InEditMode());
        QCOMPARE(m_window->Cell(1, ChargeColumn::Dept), u"CA"_s);
        QCOMPARE(m_window->At(), QPoint(1, ChargeColumn::Code));
    }

private:
    /// Code, name, and who has the keyboard.
    QString Shown() const {
        return m_code->text() + u'|' + m_window->Text("txtDoctor") + u'|' + m_window->Focus();
    }
    void ClickDoctor() {
        QTest::mouseClick(&Find<QPushButton>(m_window->Window, "cmdDoctor"), Qt::LeftButton);
    }

    QLineEdit* m_code = nullptr;
};

QTEST_MAIN(tst_DoctorFields)
#include "tst_DoctorFields.moc"
