#include "hub/ClinicalSummary.h"

#include "ScreenPatient.h"
#include "WindowTest.h"
#include "hub/ClinicalTab.h"
#include "print/DocumentPages.h"

namespace {

QString Line(const QTextDocument& document, const QString& beginning) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.text().trimmed().startsWith(beginning))
            return block.text();
    }
    return {};
}

}  // namespace

// The summary over the demo hospital, to which one stay is added.
class tst_ClinicalSummary final : public WindowTest {
    Q_OBJECT
private slots:
    void init() {
        SetUp();
        modGlobals::gCompany = u"HARBOUR MEMORIAL HOSPITAL"_s;
        m_patient = ScreenPatient(u"99001"_s, u"HS1"_s);
        for (const char* rows :
             {"PATIENT_DATA..tbMaster (HospNum, LastName, FirstName, Sex) VALUES ('HS1', "
              "'Montgomery-Castellanos', 'Ana', 'F')",
              "PATIENT_DATA..tbPatient (IdNum, HospNum, AdmDate, RoomID) VALUES ('99001', 'HS1', "
              "'2026-01-07 09:30:00', '204')",
              "STATION..tbMedicineGiven (HospNum, IdNum, TransDate, DrugCode, DrugName, Dosage, "
              "Quantity) VALUES ('HS1', '99001', '2026-01-07 10:00:00', '1', 'CALCIUM', '1 TAB', "
              "2), ('HS1', '99001', NULL, '2', 'NEVER GIVEN', NULL, 1)"})
            Do(u"INSERT INTO "_s + QLatin1String(rows));
    }

    void cleanup() {
        m_document.clear();
        m_progress.clear();
        TearDown();
    }

    void FitText_ofAnUnknownModeOrTooWideIsEmpty() {
        QCOMPARE(FitText(u" ab "_s, 7, 2), u"  ab"_s);
        QCOMPARE(FitText(u"abcd"_s, 4, 2), QString());
        QCOMPARE(FitText(u"abcd"_s, 9, 3), QString());
        QCOMPARE(FitText(u"abcd"_s, 4, 1), u"abcd"_s);
    }

    void Summary_ofAnAdmission() {
        Compose(u"99001"_s, u"1/7/2026 9:30:00 AM"_s);
        QCOMPARE(m_document.begin().next().text(),
                 QString(28, u' ') + u"HARBOUR MEMORIAL HOSPITAL"_s);
        QCOMPARE(Line(m_document, u"Clinical Summary"_s).indexOf(u'C'), 62);
        const QString name = Line(m_document, u"Lastname"_s);
        QVERIFY(name.startsWith(u"Lastname   : Montgomery-Cast Age         : "_s));
        QVERIFY(name.endsWith(u" Admission Number : 99001"_s));
        QCOMPARE(Line(m_document, u"Firstname"_s),
                 u"Firstname  : Ana             Sex         : Female     Hospital "
                 "Number  : HS1"_s);
        QVERIFY(Line(m_document, u"Middlename"_s).endsWith(u"Room/Ward Number : 204"_s));
        QCOMPARE(Line(m_document, u"Date Admitted"_s), u"Date Admitted        :     01/07/2026"_s);
        // The rows stand under their headings.
        const QString medicine = Line(m_document, u"1/7/2026"_s);
        QCOMPARE(medicine,
                 u"1/7/2026     CALCIUM                            1 TAB"
                 "                    2    "_s);
        QVERIFY(Line(m_document, u"NEVER"_s).isEmpty());
        QCOMPARE(m_progress, (QList<int>{50, 100}));
        QVERIFY(!m_document.toPlainText().contains(u"Xray"_s));
    }

    void Medicine_losesNoDigit_data() {
        Columns<QString, QString, QString, QString>();
        const QString oneTab(u"D                                  1 TAB                    "_s);
        Row("quantities", "D", "1 TAB", "1000", oneTab + u"1000  "_s);
        Row("half a unit", "D", "1 TAB", "12.5", oneTab + u"12.5  "_s);
        Row("a strength and an hour", "CALCIUM CARBONATE TABLETS COATED 500 mg",
            "1 TAB EVERY MORNING AT 10", "2",
            "CALCIUM CARBONATE TABLETS COATED 500 mg     1 TAB EVERY MORNING AT 10     2    ");
        Row("words alone are cut", "CALCIUM CARBONATE 500 mg TABLETS COATED",
            "1 TAB EVERY MORNING, FASTING", "2",
            "CALCIUM CARBONATE 500 mg TABLE     1 TAB EVERY MORNING,     2    ");
    }

    void Medicine_losesNoDigit() {
        auto [drug, dosage, quantity, line] = Fetch<QString, QString, QString, QString>();
        Do(u"INSERT INTO STATION..tbMedicineGiven (HospNum, IdNum, TransDate, DrugCode, "
           "DrugName, Dosage, Quantity) VALUES ('HS1', '99001', '2026-01-09', '3', "
           "'%1', '%2', %3)"_s.arg(drug, dosage, quantity));
        Compose(u"99001"_s);
        QCOMPARE(Line(m_document, u"1/9/2026"_s).mid(13), line);
    }

    void Summary_ofAVisitAndOfNobody() {
        const QString visit =
            Ask(u"SELECT TOP (1) v.IdNum FROM PATIENT_DATA..tbOutPatient v WHERE EXISTS (SELECT 1 "
                "FROM RADIOLOGY..tbRadResult x WHERE x.IdNum = v.IdNum AND x.Modality = 'C' AND "
                "x.ResultDate IS NOT NULL)"_s);
        m_patient.Hosp =
            Ask(u"SELECT HospNum FROM PATIENT_DATA..tbOutPatient WHERE IdNum = '%1'"_s.arg(visit));
        Compose(visit);
        QVERIFY(Line(m_document, u"Middlename"_s).endsWith(u"Room/Ward Number : ER/OPD"_s));
        QCOMPARE(Line(m_document, u"Admitting Doctor"_s), u"Admitting Doctor     :     "_s);
        QVERIFY(m_document.toPlainText().contains(u"CT-Scan Examinations :\n"_s));
        m_document.clear();
        Compose(u"99999"_s);
        QVERIFY(Line(m_document, u"Clinical Summary"_s).size() > 0);
        QVERIFY(Line(m_document, u"Lastname"_s).isEmpty());
    }

    void Summary_bearsAnyText() {
        QString text = u"a\u0001\u001bb\r\nc\tx O'Hara's \"<b>shadow</b>\""_s.repeated(4000);
        if (ServerHospital::Keeps(u"\u05e9"_s))
            text += u"\u05e9\u05dc\u05d5\u05dd 12 mg"_s;
        Do(u"INSERT INTO RADIOLOGY..tbRadResult (TransNum, HospNum, IdNum, Modality, "
           "ExamName, TransDate, ResultDate, Interpretation) VALUES ('ZZ1', 'HS1', "
           "'99001', 'X', 'CHEST', '2026-01-08', '2026-01-08', '%1')"_s.arg(
               QString(text).replace(u'\'', u"''"_s)));
        Compose(u"99001"_s);
        QString shown = text;
        shown.replace(u"\r\n"_s, u"\n"_s).remove(u'\u0001').remove(u'\u001b');
        QVERIFY(m_document.toPlainText().contains(QString(10, u' ') + shown));
    }

    void Paper_keepsTheColumns() {
        for (int i = 0; i < 200; ++i)
            Do(u"INSERT INTO STATION..tbMedicineGiven (HospNum, IdNum, TransDate, "
               "DrugCode, DrugName, Dosage, Quantity) VALUES ('HS1', '99001', "
               "'2026-01-08', '1', 'DRUG %1', 'DOSAGE', 100)"_s.arg(i));
        Compose(u"99001"_s);
        const auto pages = print::PagesOf(m_document, {u"Velmora"_s, u"Castellanos HS1"_s});
        QVERIFY(pages->Count() > 2);
        QString all;
        for (int page = 0; page < pages->Count(); ++page) {
            QVERIFY(pages->Text(page).contains(u"Castellanos HS1"_s));
            QCOMPARE(pages->Text(page).contains(u"Rx Date"_s),
                     pages->Text(page).contains(u"DRUG "_s));
            all += pages->Text(page) + u'\n';
        }
        for (int i = 0; i < 200; ++i)
            QCOMPARE(all.count(u"DRUG %1 "_s.arg(i)), 1);
        // No line of the summary's tables is wrapped: a row is one text.
        QVERIFY(all.contains(u"Admission Number : 99001"_s));
        for (const print::PlacedText& text : pages->Page(1).Texts)
            QVERIFY(text.Follows != print::Joint::Wrapped);
    }

    void Paper_keepsHeadingsWithTheirText() {
        for (int above = 40; above < 80; ++above) {
            QTextDocument document;
            SummaryText text(document);
            text.AppendRun(u"above\n"_s.repeated(above), 8, u"Arial"_s, 0, false);
            text.SetRole(print::LineRole::Heading);
            text.AppendRun(u"Xray\nCHEST\n"_s, 10, u"Arial"_s, 0, true);
            text.SetRole(print::LineRole::Text);
            text.AppendRun(u"clear"_s, 8, u"Arial"_s, 0, false);
            const auto pages = print::PagesOf(document, {});
            for (int page = 0; page < pages->Count(); ++page)
                QCOMPARE(pages->Text(page).contains(u"Xray"), pages->Text(page).contains(u"clear"));
        }
    }

    void Tab_showsOnePatientAlone() {
        ClinicalTab tab;
        tab.SetPatient(m_patient);
        tab.LoadClinicalTab();
        const auto& stays = Find<toolkit::FlexGrid>(tab);
        const auto& text = Find<QTextEdit>(tab);
        const auto expectNothing = [&] {
            QVERIFY(text.toPlainText().isEmpty());
            QVERIFY(stays.TextMatrix(1, 1).isEmpty());
            for (const char* button : {"cmdClinical0", "cmdPrint"})
                QVERIFY(!Find<QPushButton>(tab, button).isEnabled());
        };
        QCOMPARE(stays.TextMatrix(1, 1), u"99001"_s);
        Click(tab, "cmdClinical0");
        QVERIFY(text.toPlainText().contains(u"Montgomery"_s));
        QVERIFY(Find<QPushButton>(tab, "cmdPrint").isEnabled());
        // A load that fails leaves nothing of the patient before.
        PluggedDriver::GoesAfter(0);
        QVERIFY_EXCEPTION_THROWN(tab.LoadClinicalTab(), base::DatabaseError);
        expectNothing();
        PluggedDriver::Returns();
        m_patient.Hosp = u"nobody"_s;
        m_patient.Id = u"A0B"_s;
        tab.LoadClinicalTab();
        expectNothing();
    }

private:
    void Compose(const QString& number, const QString& admitted = {}) {
        ClinicalSummary(m_document, [this](int percent) {
            m_progress << percent;
        }).Compose({m_patient.Hosp, m_patient.Id, number, admitted, {}});
    }

    QTextDocument m_document;
    QList<int> m_progress;
    ScreenPatient m_patient;
};

QTEST_MAIN(tst_ClinicalSummary)
#include "tst_ClinicalSummary.moc"
