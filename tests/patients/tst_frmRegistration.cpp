#include "patients/frmRegistration.h"

#include <span>

#include "WindowTest.h"
#include "db/CommandText.h"
#include "toolkit/DateEdit.h"
#include "toolkit/MemoEdit.h"

namespace {

// Each field of the sheet with a text that no other has.
const std::pair<const char*, QString> kSheet[] = {
    {"txtNextKin", u"José d'Or"_s},       {"txtStatus", u"Active"_s},
    {"txtDiagnosis", u" it's ñ "_s},      {"dtAcutePDStart", u"1/31/2021"_s},
    {"dtChronicPDStart", u"2/28/2022"_s}, {"txtWeight", u"58.5"_s},
    {"txtDiet", u"low salt"_s},           {"txtBloodPressure", u"140/90"_s},
    {"txtFluidRestriction", u"1 l"_s},    {"txtBloodType", u"O+"_s},
    {"txtHBsAg", u"non-reactive"_s},      {"dtShifted", u"3/1/2023"_s},
    {"txtNewdialysis", u"HD"_s},          {"txtReson", u"leak"_s},
    {"dtShiftedBack", u"4/2/2023"_s},     {"dtTransplant", u"5/3/2024"_s},
    {"dtRejected", u"6/4/2025"_s},        {"txtComments", u"one\ntwo"_s}};

}  // namespace

// The registration sheet over the demo hospital: 200001 is not on the register, 200005 is.
class tst_frmRegistration final : public WindowTest {
    Q_OBJECT

private slots:
    void init() { SetUp(); }
    void cleanup() {
        m_sheet.reset();
        TearDown();
    }

    void Save_ofANewPatientSendsEachFieldAndReadsItBack() {
        m_sheet = Open(u"200001"_s);
        for (const auto& [field, text] : kSheet) {
            QCOMPARE(TextIn(field), QString());
            if (auto* memo = m_sheet->findChild<toolkit::MemoEdit*>(QLatin1String(field)))
                memo->setPlainText(text);
            else
                Find<QLineEdit>(*m_sheet, field).setText(text);
        }
        // Enter goes along the fields in their order.
        Find<QLineEdit>(*m_sheet, "txtWeight").setFocus();
        for (const auto& [field, text] : std::span(kSheet).subspan(5)) {
            QCOMPARE(m_sheet->focusWidget()->objectName(), QLatin1String(field));
            QTest::keyClick(m_sheet->focusWidget(), Qt::Key_Return);
        }
        QCOMPARE(m_sheet->focusWidget()->objectName(), u"cmdSave"_s);
        for (const char* option :
             {"optWithPeritonitis1", "optChronicPD1", "optCatheter0", "optPurpose1"})
            Find<QRadioButton>(*m_sheet, option).setChecked(true);
        Answer(BoxAnswer::Ok);
        {
            const CommandLog log;
            Click(*m_sheet, "cmdSave");
            Click(*m_sheet, "cmdSave");
            QCOMPARE(
                log.Sent.filter(u"RegisterPatient"_s).join(u'|'),
                u"CLINICAL_AREA..sp_CAPD_RegisterPatient '200001','A1B','','CIPD-C','','José "
                "d''Or',' it''s ñ ','1/31/2021','2/28/2022','  CIPD-C','  Silastic ','58.5','',"
                "'low salt','140/90','1 l','3/1/2023','O+','non-reactive','HD','leak',"
                "'4/2/2023','5/3/2024','6/4/2025','one\ntwo','Active','4601',' Inquiry','Y'"_s);
        }
        QCOMPARE(Said().Text, u"Registration Successfully Saved."_s);
        QCOMPARE(m_sheet->result(), int(QDialog::Accepted));
        QVERIFY2(m_session->Told.join(u'|').startsWith(u"The registration is saved, CAPD No. "_s),
                 qPrintable(m_session->Told.join(u'|')));

        m_sheet = Open(u"200001"_s);
        for (const auto& [field, text] : kSheet)
            QCOMPARE(TextIn(field), text);
        for (const char* option : {"optWithPeritonitis1", "optPurpose1"})
            QVERIFY2(Find<QRadioButton>(*m_sheet, option).isChecked(), option);
        QVERIFY(!Find<QRadioButton>(*m_sheet, "optChronicPD1").isChecked());
        auto& purpose = Find<QRadioButton>(*m_sheet, "optPurpose1");
        purpose.setFocus();
        QTest::keyClick(&purpose, Qt::Key_Delete);
        Answer(BoxAnswer::Ok);
        Click(*m_sheet, "cmdSave");
        m_sheet = Open(u"200001"_s);
        QVERIFY(!Find<QRadioButton>(*m_sheet, "optPurpose1").isChecked());
    }

    void Fields_takeWhatTheirColumnsHold() {
        m_sheet = Open(u"200005"_s);
        QVERIFY(!TextIn("txtAddress1").isEmpty());
        QVERIFY(!TextIn("txtDiagnosis").isEmpty());
        // The list that opened the sheet did not know yet that the patient is registered.
        QVERIFY(!Find<QLabel>(*m_sheet, "lblCAPDNumCaption").text().contains(u"NEW"_s));
        const QString tooLong(3000, u'x');
        for (QLineEdit* box : m_sheet->findChildren<QLineEdit*>())
            if (!box->isReadOnly() && !qobject_cast<toolkit::DateEdit*>(box)) {
                box->clear();
                box->insert(tooLong);
                QVERIFY2(box->text().size() < 1000, qPrintable(box->objectName()));
            }
        auto* comments = &Find<toolkit::MemoEdit>(*m_sheet, "txtComments");
        comments->setPlainText(u"end"_s);
        comments->insertPlainText(tooLong);
        QCOMPARE(comments->toPlainText().size(), 2000);
        QVERIFY(comments->toPlainText().endsWith(u"end"_s));
        Answer(BoxAnswer::Ok);
        Click(*m_sheet, "cmdSave");
        m_sheet = Open(u"200005"_s);
        QCOMPARE(Find<toolkit::MemoEdit>(*m_sheet, "txtComments").toPlainText().size(), 2000);
    }

    void DoubtfulDate_isNotSavedUnasked() {
        m_sheet = Open(u"200001"_s);
        Find<toolkit::DateEdit>(*m_sheet, "dtRejected").setText(u"2/30/2026"_s);
        Answer(BoxAnswer::Ok);
        const CommandLog log;
        Click(*m_sheet, "cmdSave");
        QCOMPARE(log.Sent, QStringList());
        QVERIFY(Said().Text.contains(u"2/30/2026"_s));
        // A day to come, and a rejection before the transplant, are asked about.
        const QString doubtful[][2] = {{u"11/22/9999"_s, u"after today"_s},
                                       {u"5/3/98"_s, u"5/3/1998, is before"_s}};
        Find<toolkit::DateEdit>(*m_sheet, "dtTransplant").setText(u"6/1/98"_s);
        for (const auto& [typed, doubt] : doubtful) {
            Find<toolkit::DateEdit>(*m_sheet, "dtRejected").setText(typed);
            Answer(BoxAnswer::No);
            Click(*m_sheet, "cmdSave");
            QCOMPARE(log.Sent, QStringList());
            QVERIFY2(Said().Text.contains(doubt), qPrintable(Said().Text));
        }
    }

    // Of a patient on the register, and of one who is new to both nurses.
    void Save_overAnotherNursesAsksFirst() {
        for (const auto& hospNum : {u"200005"_s, u"200001"_s}) {
            m_sheet = Open(hospNum);
            Find<QLineEdit>(*m_sheet, "txtDiet").setText(u"low salt"_s);
            QStringList others(29, QString());
            others[0] = hospNum;
            others[26] = u"4602"_s;
            others[28] = u"N"_s;
            Do(db::Call(u"CLINICAL_AREA..sp_CAPD_RegisterPatient"_s, others));
            Answer(BoxAnswer::No);
            const CommandLog log;
            Click(*m_sheet, "cmdSave");
            QVERIFY(Said().Text.startsWith(u"Rory O'Hara saved"_s));
            QVERIFY(m_sheet->isVisible() && TextIn("txtDiet") == u"low salt"_s);
            QCOMPARE(log.Sent.filter(u"RegisterPatient"_s).size(), 0);
            Answer(BoxAnswer::Yes);
            Answer(BoxAnswer::Ok);
            Click(*m_sheet, "cmdSave");
            QCOMPARE(m_sheet->result(), int(QDialog::Accepted));
        }
    }

    void ServerGone_atAnyCommandSavesAllOrNothing() {
        m_sheet = Open(u"200001"_s);
        Find<QLineEdit>(*m_sheet, "txtDiet").setText(u"low salt"_s);
        Answer(BoxAnswer::Ok);
        const int refused = LoseServerAtEachCommand(
            [] { return Ask(u"SELECT * FROM CLINICAL_AREA..tbCAPDPatient ORDER BY HospNum"_s); },
            [this] { Click(*m_sheet, "cmdSave"); });
        // The change's time, the save and the commit.
        QCOMPARE(refused, 3);
        QCOMPARE(m_sheet->result(), int(QDialog::Accepted));
        QCOMPARE(Ask(u"SELECT Diet FROM CLINICAL_AREA..tbCAPDPatient WHERE HospNum = '200001'"_s),
                 u"low salt"_s);
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

    QString TextIn(const char* field) const {
        const QVariant memo = Find<QWidget>(*m_sheet, field).property("plainText");
        return memo.isValid() ? memo.toString() : TextOf(*m_sheet, field);
    }

    std::unique_ptr<frmRegistration> m_sheet;
};

QTEST_MAIN(tst_frmRegistration)
#include "tst_frmRegistration.moc"
