#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "CommandLog.h"
#include "FakeComponents.h"
#include "TestHospital.h"
#include "db/CommandText.h"
#include "patients/frmRegistration.h"
#include "session/Saved.h"
#include "session/modGlobals.h"
#include "toolkit/DateEdit.h"
#include "toolkit/MemoEdit.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;

// The registration sheet over the demo hospital: 200001 is not on the register, 200005 is.
class tst_frmRegistration final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        modGlobals::gCurrentUser = std::make_shared<fakes::User>();
        modGlobals::gConnection = m_hospital->Connect();
        m_boxes = std::make_unique<toolkit::BoxScript>();
    }

    void cleanup() {
        m_sheet.reset();
        QCOMPARE(m_boxes->Leftovers(), QStringList());
        m_boxes.reset();
        modGlobals::gConnection.reset();
    }

    void Save_ofANewPatientSendsTheSheetAndReopensIt() {
        m_sheet = Open(u"200001"_s);
        QCOMPARE(Text("txtDiagnosis"), QString());
        QVERIFY(!Find<toolkit::DateEdit>("dtAcutePDStart")->date().isValid());
        Find<QLineEdit>("txtDiagnosis")->setText(u" it's ñ "_s);
        Find<toolkit::DateEdit>("dtShifted")->setText(u"2/9/26"_s);
        Find<toolkit::MemoEdit>("txtComments")->setPlainText(u"one\ntwo"_s);
        Find<QRadioButton>("optChronicPD1")->setChecked(true);
        Find<QRadioButton>("optCatheter0")->setChecked(true);
        Find<QRadioButton>("optPurpose1")->setChecked(true);
        m_boxes->Answer(toolkit::BoxAnswer::Ok);
        QString told;
        {
            const CommandLog log;
            Saved::SetHook([&told](const QString& sentence) { told = sentence; });
            Find<QPushButton>("cmdSave")->click();
            Saved::SetHook({});
            Find<QPushButton>("cmdSave")->click();
            QCOMPARE(
                log.Sent.filter(u"RegisterPatient"_s),
                QStringList{
                    u"CLINICAL_AREA..sp_CAPD_RegisterPatient '200001','A1B','','CIPD-C','','',"
                    "' it''s ñ ','','','  CIPD-C','  Silastic ','','','','','','2/9/2026','','',"
                    "'','','','','','one\ntwo','','E1',' Inquiry','N'"_s});
        }
        QCOMPARE(m_boxes->Shown().back().Text, u"Registration Successfully Saved."_s);
        QCOMPARE(m_sheet->result(), int(QDialog::Accepted));
        QVERIFY2(told.startsWith(u"The registration is saved, CAPD No. "), qPrintable(told));

        m_sheet = Open(u"200001"_s);
        QCOMPARE(Text("txtDiagnosis"), u" it's ñ "_s);
        QCOMPARE(Text("dtShifted"), u"2/9/2026"_s);
        QCOMPARE(Find<toolkit::MemoEdit>("txtComments")->toPlainText(), u"one\ntwo"_s);
        QVERIFY(Find<QRadioButton>("optPurpose1")->isChecked());
        QVERIFY(!Find<QRadioButton>("optChronicPD1")->isChecked());

        Find<QRadioButton>("optPurpose1")->setFocus();
        QTest::keyClick(Find<QRadioButton>("optPurpose1"), Qt::Key_Delete);
        m_boxes->Answer(toolkit::BoxAnswer::Ok);
        Find<QPushButton>("cmdSave")->click();
        m_sheet = Open(u"200001"_s);
        QVERIFY(!Find<QRadioButton>("optPurpose1")->isChecked());
    }

    void Enter_goesAlongTheSheetToTheSaveButton() {
        m_sheet = Open(u"200001"_s);
        QVERIFY(QTest::qWaitForWindowActive(m_sheet.get()));
        QStringList passed;
        for (int press = 0; press < 30 && !Find<QPushButton>("cmdSave")->hasFocus(); ++press) {
            passed << m_sheet->focusWidget()->objectName();
            QTest::keyClick(m_sheet->focusWidget(), Qt::Key_Return);
        }
        const QString chain = passed.join(u' ');
        for (const char* part : {"txtDiagnosis dtAcutePDStart",
                                 "txtWeight txtDiet txtBloodPressure txtFluidRestriction "
                                 "txtBloodType txtHBsAg dtShifted",
                                 "txtNewdialysis txtReson dtShiftedBack"})
            QVERIFY2(chain.contains(QLatin1String(part)), qPrintable(chain));
        QCOMPARE(passed.back(), u"txtComments"_s);
        // Esc loses nothing, and Delete takes a choice back.
        QTest::keyClick(m_sheet->focusWidget(), Qt::Key_Escape);
        QVERIFY(m_sheet->isVisible() && Find<QPushButton>("cmdClose")->hasFocus());
        auto* option = Find<QRadioButton>("optCatheter1");
        option->setFocus();
        option->click();
        QTest::keyClick(option, Qt::Key_Delete);
        QVERIFY(!option->isChecked());
    }

    void Fields_takeWhatTheirColumnsHold() {
        m_sheet = Open(u"200005"_s);
        QVERIFY(!Text("txtAddress1").isEmpty());
        QVERIFY(!Text("txtDiagnosis").isEmpty());
        // The list that opened the sheet did not know yet that the patient is registered.
        QVERIFY(!Find<QLabel>("lblCAPDNumCaption")->text().contains(u"NEW"_s));
        const QString tooLong(3000, u'x');
        for (QLineEdit* box : m_sheet->findChildren<QLineEdit*>())
            if (!box->isReadOnly() && !qobject_cast<toolkit::DateEdit*>(box)) {
                box->clear();
                box->insert(tooLong);
                QVERIFY2(box->text().size() < 1000, qPrintable(box->objectName()));
            }
        auto* comments = Find<toolkit::MemoEdit>("txtComments");
        comments->setPlainText(u"end"_s);
        comments->insertPlainText(tooLong);
        QCOMPARE(comments->toPlainText().size(), 2000);
        QVERIFY(comments->toPlainText().endsWith(u"end"_s));
        m_boxes->Answer(toolkit::BoxAnswer::Ok);
        Find<QPushButton>("cmdSave")->click();
        m_sheet = Open(u"200005"_s);
        QCOMPARE(Find<toolkit::MemoEdit>("txtComments")->toPlainText().size(), 2000);
    }

    void DoubtfulDate_isNotSavedUnasked() {
        m_sheet = Open(u"200001"_s);
        Find<toolkit::DateEdit>("dtRejected")->setText(u"2/30/2026"_s);
        m_boxes->Answer(toolkit::BoxAnswer::Ok);
        const CommandLog log;
        Find<QPushButton>("cmdSave")->click();
        QCOMPARE(log.Sent, QStringList());
        QVERIFY(m_boxes->Shown().back().Text.contains(u"2/30/2026"_s));
        // A day to come, and a rejection before the transplant, are asked about.
        const QString doubtful[][2] = {{u"11/22/9999"_s, u"after today"_s},
                                       {u"5/3/98"_s, u"5/3/1998, is before"_s}};
        Find<toolkit::DateEdit>("dtTransplant")->setText(u"6/1/98"_s);
        for (const auto& [typed, doubt] : doubtful) {
            Find<toolkit::DateEdit>("dtRejected")->setText(typed);
            m_boxes->Answer(toolkit::BoxAnswer::No);
            Find<QPushButton>("cmdSave")->click();
            QCOMPARE(log.Sent, QStringList());
            QVERIFY2(m_boxes->Shown().back().Text.contains(doubt),
                     qPrintable(m_boxes->Shown().back().Text));
        }
    }

    // Of a patient on the register, and of one who is new to both nurses.
    void Save_overAnotherNursesAsksFirst() {
        for (const auto& hospNum : {u"200005"_s, u"200001"_s}) {
            m_sheet = Open(hospNum);
            Find<QLineEdit>("txtDiet")->setText(u"low salt"_s);
            QStringList others(29, QString());
            others[0] = hospNum;
            others[26] = u"4602"_s;
            others[28] = u"N"_s;
            modGlobals::gConnection->Execute(
                db::Call(u"CLINICAL_AREA..sp_CAPD_RegisterPatient"_s, others));
            m_boxes->Answer(toolkit::BoxAnswer::No);
            const CommandLog log;
            Find<QPushButton>("cmdSave")->click();
            QVERIFY(m_boxes->Shown().back().Text.startsWith(u"Rory O'Hara saved"_s));
            QVERIFY(m_sheet->isVisible() && Text("txtDiet") == u"low salt"_s);
            QCOMPARE(log.Sent.filter(u"RegisterPatient"_s).size(), 0);
            m_boxes->Answer(toolkit::BoxAnswer::Yes);
            m_boxes->Answer(toolkit::BoxAnswer::Ok);
            Find<QPushButton>("cmdSave")->click();
            QCOMPARE(m_sheet->result(), int(QDialog::Accepted));
        }
    }

    void FailedSave_keepsTheSheet() {
        m_sheet = Open(u"999999"_s);
        Find<QLineEdit>("txtDiet")->setText(u"low salt"_s);
        QVERIFY_EXCEPTION_THROWN(Find<QPushButton>("cmdSave")->click(), base::DatabaseError);
        QVERIFY(m_sheet->isVisible() && Find<QPushButton>("cmdSave")->isEnabled());
        QCOMPARE(Text("txtDiet"), u"low salt"_s);
    }

private:
    std::unique_ptr<frmRegistration> Open(const QString& hospNum) {
        auto sheet = std::make_unique<frmRegistration>();
        sheet->SetHospNum(hospNum);
        components::ListedPatient patient;
        patient.HospitalNumber = hospNum;
        patient.LastName = u"O'Hara"_s;
        sheet->ShowPatient(patient, u"A1B"_s, QString());
        sheet->show();
        return sheet;
    }

    template <class Control>
    Control* Find(const char* name) const {
        return m_sheet->findChild<Control*>(QString::fromLatin1(name));
    }
    QString Text(const char* name) const { return Find<QLineEdit>(name)->text(); }

    std::unique_ptr<TestHospital> m_hospital;
    std::unique_ptr<toolkit::BoxScript> m_boxes;
    std::unique_ptr<frmRegistration> m_sheet;
};

QTEST_MAIN(tst_frmRegistration)
#include "tst_frmRegistration.moc"
