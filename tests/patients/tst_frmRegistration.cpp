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

// The registration sheet over the demo hospital: 200001 is not on the register, 200005 is.
class tst_frmRegistration final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void Save_ofANewPatientSendsTheSheetAndReopensIt();
    void Enter_goesAlongTheSheetToTheSaveButton();
    void Fields_takeWhatTheirColumnsHold();
    void DoubtfulDate_isNotSavedUnasked();
    void Save_overAnotherNursesAsksFirst();
    void FailedSave_keepsTheSheet();

private:
    std::unique_ptr<frmRegistration> Open(const QString& hospNum);
    template <class Control>
    Control* Find(const char* name) const {
        return m_sheet->findChild<Control*>(QString::fromLatin1(name));
    }
    QString Text(const char* name) const { return Find<QLineEdit>(name)->text(); }

    std::unique_ptr<TestHospital> m_hospital;
    std::unique_ptr<toolkit::BoxScript> m_boxes;
    std::unique_ptr<frmRegistration> m_sheet;
};

void tst_frmRegistration::init() {
    m_hospital = std::make_unique<TestHospital>();
    modGlobals::gCurrentUser = std::make_shared<fakes::User>();
    modGlobals::gConnection = m_hospital->Connect();
    m_boxes = std::make_unique<toolkit::BoxScript>();
}

void tst_frmRegistration::cleanup() {
    m_sheet.reset();
    QCOMPARE(m_boxes->Leftovers(), QStringList());
    m_boxes.reset();
    modGlobals::gConnection.reset();
}

std::unique_ptr<frmRegistration> tst_frmRegistration::Open(const QString& hospNum) {
    auto sheet = std::make_unique<frmRegistration>();
    sheet->SetHospNum(hospNum);
    components::ListedPatient patient;
    patient.HospitalNumber = hospNum;
    patient.LastName = QStringLiteral("O'Hara");
    sheet->ShowPatient(patient, QStringLiteral("A1B"), QString());
    sheet->show();
    return sheet;
}

void tst_frmRegistration::Save_ofANewPatientSendsTheSheetAndReopensIt() {
    m_sheet = Open(QStringLiteral("200001"));
    QCOMPARE(Text("txtDiagnosis"), QString());
    QVERIFY(!Find<toolkit::DateEdit>("dtAcutePDStart")->date().isValid());
    Find<QLineEdit>("txtDiagnosis")->setText(QStringLiteral(" it's ñ "));
    Find<toolkit::DateEdit>("dtShifted")->setText(QStringLiteral("2/9/26"));
    Find<toolkit::MemoEdit>("txtComments")->setPlainText(QStringLiteral("one\ntwo"));
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
        QCOMPARE(log.Sent.filter(QStringLiteral("RegisterPatient")),
                 QStringList{QStringLiteral(
                     "CLINICAL_AREA..sp_CAPD_RegisterPatient '200001','A1B','','CIPD-C','','',"
                     "' it''s ñ ','','','  CIPD-C','  Silastic ','','','','','','2/9/2026','','',"
                     "'','','','','','one\ntwo','','E1',' Inquiry','N'")});
    }
    QCOMPARE(m_boxes->Shown().back().Text, QStringLiteral("Registration Successfully Saved."));
    QCOMPARE(m_sheet->result(), int(QDialog::Accepted));
    QVERIFY2(told.startsWith(u"The registration is saved, CAPD No. "), qPrintable(told));

    m_sheet = Open(QStringLiteral("200001"));
    QCOMPARE(Text("txtDiagnosis"), QStringLiteral(" it's ñ "));
    QCOMPARE(Text("dtShifted"), QStringLiteral("2/9/2026"));
    QCOMPARE(Find<toolkit::MemoEdit>("txtComments")->toPlainText(), QStringLiteral("one\ntwo"));
    QVERIFY(Find<QRadioButton>("optPurpose1")->isChecked());
    QVERIFY(!Find<QRadioButton>("optChronicPD1")->isChecked());

    Find<QRadioButton>("optPurpose1")->setFocus();
    QTest::keyClick(Find<QRadioButton>("optPurpose1"), Qt::Key_Delete);
    m_boxes->Answer(toolkit::BoxAnswer::Ok);
    Find<QPushButton>("cmdSave")->click();
    m_sheet = Open(QStringLiteral("200001"));
    QVERIFY(!Find<QRadioButton>("optPurpose1")->isChecked());
}

void tst_frmRegistration::Enter_goesAlongTheSheetToTheSaveButton() {
    m_sheet = Open(QStringLiteral("200001"));
    QVERIFY(QTest::qWaitForWindowActive(m_sheet.get()));
    QStringList passed;
    for (int press = 0; press < 30 && !Find<QPushButton>("cmdSave")->hasFocus(); ++press) {
        passed << m_sheet->focusWidget()->objectName();
        QTest::keyClick(m_sheet->focusWidget(), Qt::Key_Return);
    }
    const QString chain = passed.join(u' ');
    for (const char* part :
         {"txtDiagnosis dtAcutePDStart",
          "txtWeight txtDiet txtBloodPressure txtFluidRestriction txtBloodType txtHBsAg dtShifted",
          "txtNewdialysis txtReson dtShiftedBack"})
        QVERIFY2(chain.contains(QLatin1String(part)), qPrintable(chain));
    QCOMPARE(passed.back(), QStringLiteral("txtComments"));
    // Esc loses nothing, and Delete takes a choice back.
    QTest::keyClick(m_sheet->focusWidget(), Qt::Key_Escape);
    QVERIFY(m_sheet->isVisible() && Find<QPushButton>("cmdClose")->hasFocus());
    auto* option = Find<QRadioButton>("optCatheter1");
    option->setFocus();
    option->click();
    QTest::keyClick(option, Qt::Key_Delete);
    QVERIFY(!option->isChecked());
}

void tst_frmRegistration::Fields_takeWhatTheirColumnsHold() {
    m_sheet = Open(QStringLiteral("200005"));
    QVERIFY(!Text("txtAddress1").isEmpty());
    QVERIFY(!Text("txtDiagnosis").isEmpty());
    // The list that opened the sheet did not know yet that the patient is registered.
    QVERIFY(!Find<QLabel>("lblCAPDNumCaption")->text().contains(QStringLiteral("NEW")));
    const QString tooLong(3000, u'x');
    for (QLineEdit* box : m_sheet->findChildren<QLineEdit*>())
        if (!box->isReadOnly() && !qobject_cast<toolkit::DateEdit*>(box)) {
            box->clear();
            box->insert(tooLong);
            QVERIFY2(box->text().size() < 1000, qPrintable(box->objectName()));
        }
    auto* comments = Find<toolkit::MemoEdit>("txtComments");
    comments->setPlainText(QStringLiteral("end"));
    comments->insertPlainText(tooLong);
    QCOMPARE(comments->toPlainText().size(), 2000);
    QVERIFY(comments->toPlainText().endsWith(QStringLiteral("end")));
    m_boxes->Answer(toolkit::BoxAnswer::Ok);
    Find<QPushButton>("cmdSave")->click();
    m_sheet = Open(QStringLiteral("200005"));
    QCOMPARE(Find<toolkit::MemoEdit>("txtComments")->toPlainText().size(), 2000);
}

void tst_frmRegistration::DoubtfulDate_isNotSavedUnasked() {
    m_sheet = Open(QStringLiteral("200001"));
    Find<toolkit::DateEdit>("dtRejected")->setText(QStringLiteral("2/30/2026"));
    m_boxes->Answer(toolkit::BoxAnswer::Ok);
    const CommandLog log;
    Find<QPushButton>("cmdSave")->click();
    QCOMPARE(log.Sent, QStringList());
    QVERIFY(m_boxes->Shown().back().Text.contains(QStringLiteral("2/30/2026")));
    // A day to come, and a rejection before the transplant, are asked about.
    const QString doubtful[][2] = {
        {QStringLiteral("11/22/9999"), QStringLiteral("after today")},
        {QStringLiteral("5/3/98"), QStringLiteral("5/3/1998, is before")}};
    Find<toolkit::DateEdit>("dtTransplant")->setText(QStringLiteral("6/1/98"));
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
void tst_frmRegistration::Save_overAnotherNursesAsksFirst() {
    for (const auto& hospNum : {QStringLiteral("200005"), QStringLiteral("200001")}) {
        m_sheet = Open(hospNum);
        Find<QLineEdit>("txtDiet")->setText(QStringLiteral("low salt"));
        QStringList others(29, QString());
        others[0] = hospNum;
        others[26] = QStringLiteral("4602");
        others[28] = QStringLiteral("N");
        modGlobals::gConnection->Execute(
            db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_RegisterPatient"), others));
        m_boxes->Answer(toolkit::BoxAnswer::No);
        const CommandLog log;
        Find<QPushButton>("cmdSave")->click();
        QVERIFY(m_boxes->Shown().back().Text.startsWith(QStringLiteral("Rory O'Hara saved")));
        QVERIFY(m_sheet->isVisible() && Text("txtDiet") == QStringLiteral("low salt"));
        QCOMPARE(log.Sent.filter(QStringLiteral("RegisterPatient")).size(), 0);
        m_boxes->Answer(toolkit::BoxAnswer::Yes);
        m_boxes->Answer(toolkit::BoxAnswer::Ok);
        Find<QPushButton>("cmdSave")->click();
        QCOMPARE(m_sheet->result(), int(QDialog::Accepted));
    }
}

void tst_frmRegistration::FailedSave_keepsTheSheet() {
    m_sheet = Open(QStringLiteral("999999"));
    Find<QLineEdit>("txtDiet")->setText(QStringLiteral("low salt"));
    QVERIFY_EXCEPTION_THROWN(Find<QPushButton>("cmdSave")->click(), base::DatabaseError);
    QVERIFY(m_sheet->isVisible() && Find<QPushButton>("cmdSave")->isEnabled());
    QCOMPARE(Text("txtDiet"), QStringLiteral("low salt"));
}

QTEST_MAIN(tst_frmRegistration)
#include "tst_frmRegistration.moc"
