#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>

#include "FakeComponents.h"
#include "TestHospital.h"
#include "components/builtin/clsConfinements.h"
#include "components/builtin/clsPatientFinder.h"
#include "db/Recordset.h"
#include "hub/ClinicalSummary.h"
#include "hub/ClinicalTab.h"
#include "patients/PatientOnScreen.h"
#include "print/DocumentPages.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"

namespace {

class Patient final : public PatientOnScreen {
public:
    QString Hosp, Id;
    QString HospNum() const override { return Hosp; }
    QString IdNum() const override { return Id; }
    QString CAPDNum() const override { return {}; }
    QString LastName() const override { return {}; }
    QString FirstName() const override { return {}; }
    QString MiddleName() const override { return {}; }
    QString Age() const override { return {}; }
    QString Sex() const override { return {}; }
    QString Company() const override { return {}; }
    void Get_CanPenProc() override {}
};

class FailingFinder final : public components::PatientFinder {
public:
    bool InitConnection(const QString&, QString&) override { return true; }
    bool ValidateAdmission(const QString&) override {
        throw base::DatabaseError(11, QStringLiteral("The server is gone."));
    }
};

QString Line(const QTextDocument& document, const QString& beginning) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.text().trimmed().startsWith(beginning))
            return block.text();
    }
    return {};
}

}  // namespace

// The summary over the demo hospital, to which one stay is added.
class tst_ClinicalSummary final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void FitText_fills_cuts_andCentres_data();
    void FitText_fills_cuts_andCentres();
    void Run_goesBehindOrInFrontOfTheSelection();
    void Summary_ofAnAdmission();
    void Medicine_losesNoDigit_data();
    void Medicine_losesNoDigit();
    void Summary_ofAVisit();
    void Summary_ofAnUnknownStayHasNoPatient();
    void Summary_bearsAnyText_data();
    void Summary_bearsAnyText();
    void Paper_keepsTheColumns();
    void Paper_keepsHeadingsWithTheirText();
    void Tab_showsOnePatientAlone();
    void Tab_withoutStaysOffersNoSummary();

private:
    void Run(const QString& command) { m_connection->Execute(command); }
    QString One(const QString& query) { return m_connection->Execute(query)->Fields(0).Text(); }
    void Compose(const QString& number, const QString& admitted = {});

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    QTextDocument m_document;
    QList<int> m_progress;
    Patient m_patient;
};

void tst_ClinicalSummary::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_connection = m_hospital->Connect();
    const auto user = std::make_shared<fakes::User>();
    user->Session = m_connection;
    modGlobals::gCurrentUser = user;
    modGlobals::gCompany = QStringLiteral("HARBOUR MEMORIAL HOSPITAL");
    modGlobals::gAddress1 = QStringLiteral("Dunmarrow");
    const auto finder = std::make_shared<components::clsPatientFinder>();
    QString server;
    QVERIFY(finder->InitConnection(m_connection->ConnectionString(), server));
    modGlobals::gPatientSearch = finder;
    modGlobals::gConfinement = std::make_shared<components::clsConfinement>();
    modGlobals::gConfinementResults = std::make_shared<components::clsConfinementResults>();
    m_patient.Hosp = QStringLiteral("HS1");
    m_patient.Id = QStringLiteral("99001");
    Run(
        QStringLiteral("INSERT INTO PATIENT_DATA..tbMaster (HospNum, LastName, FirstName, Sex) "
                       "VALUES ('HS1', 'Montgomery-Castellanos', 'Ana', 'F')"));
    Run(
        QStringLiteral("INSERT INTO PATIENT_DATA..tbPatient (IdNum, HospNum, AdmDate, RoomID) "
                       "VALUES ('99001', 'HS1', '2026-01-07 09:30:00', '204')"));
    Run(QStringLiteral(
        "INSERT INTO STATION..tbMedicineGiven (HospNum, IdNum, TransDate, DrugCode, DrugName, "
        "Dosage, Quantity) VALUES ('HS1', '99001', '2026-01-07 10:00:00', '1', 'CALCIUM', '1 TAB', "
        "2), ('HS1', '99001', NULL, '2', 'NEVER GIVEN', NULL, 1)"));
}

void tst_ClinicalSummary::cleanup() {
    m_document.clear();
    m_progress.clear();
    modGlobals::gConfinementResults.reset();
    modGlobals::gConfinement.reset();
    modGlobals::gPatientSearch.reset();
    modGlobals::gCurrentUser.reset();
}

void tst_ClinicalSummary::Compose(const QString& number, const QString& admitted) {
    ClinicalSummary(m_document, [this](int percent) {
        m_progress << percent;
    }).Compose({m_patient.Hosp, m_patient.Id, number, admitted, {}});
}

void tst_ClinicalSummary::FitText_fills_cuts_andCentres_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("fitted");
    QTest::newRow("filled") << " ab " << 4 << 1 << "ab  ";
    QTest::newRow("cut") << "abcdef" << 4 << 1 << "abcd";
    QTest::newRow("exact") << "abcd" << 4 << 1 << "abcd";
    QTest::newRow("centred") << "abc" << 8 << 2 << "  abc";
    QTest::newRow("too wide to centre") << "abcd" << 4 << 2 << "";
    QTest::newRow("another mode") << "abcd" << 9 << 3 << "";
}

void tst_ClinicalSummary::FitText_fills_cuts_andCentres() {
    QFETCH(QString, text);
    QFETCH(int, width);
    QFETCH(int, mode);
    QTEST(FitText(text, width, mode), "fitted");
}

void tst_ClinicalSummary::Run_goesBehindOrInFrontOfTheSelection() {
    SummaryText text(m_document);
    text.AppendRun(QStringLiteral("b"), 10, QStringLiteral("Arial"), 255, true);
    text.AppendRun(QStringLiteral("c\r\nd"), 8, QStringLiteral("Courier New"), 0, false);
    QCOMPARE(m_document.toPlainText(), QStringLiteral("bc\nd"));
    QTextCursor first(&m_document);
    first.setPosition(1);
    QCOMPARE(first.charFormat().foreground().color(), QColor(Qt::red));
    QCOMPARE(first.charFormat().fontWeight(), int(QFont::Bold));
    QCOMPARE(first.charFormat().fontFamilies().toStringList(),
             QStringList{QStringLiteral("Arial")});
}

void tst_ClinicalSummary::Summary_ofAnAdmission() {
    Compose(QStringLiteral("99001"), QStringLiteral("1/7/2026 9:30:00 AM"));
    QCOMPARE(m_document.begin().next().text(),
             QString(28, u' ') + QStringLiteral("HARBOUR MEMORIAL HOSPITAL"));
    QCOMPARE(Line(m_document, QStringLiteral("Clinical Summary")).indexOf(u'C'), 62);
    const QString name = Line(m_document, QStringLiteral("Lastname"));
    QVERIFY(name.startsWith(QStringLiteral("Lastname   : Montgomery-Cast Age         : ")));
    QVERIFY(name.endsWith(QStringLiteral(" Admission Number : 99001")));
    QCOMPARE(Line(m_document, QStringLiteral("Firstname")),
             QStringLiteral("Firstname  : Ana             Sex         : Female     Hospital "
                            "Number  : HS1"));
    QVERIFY(Line(m_document, QStringLiteral("Middlename"))
                .endsWith(QStringLiteral("Room/Ward Number : 204")));
    QCOMPARE(Line(m_document, QStringLiteral("Date Admitted")),
             QStringLiteral("Date Admitted        :     01/07/2026"));
    // The rows stand under their headings.
    const QString medicine = Line(m_document, QStringLiteral("1/7/2026"));
    QCOMPARE(medicine, QStringLiteral("1/7/2026     CALCIUM                            1 TAB"
                                      "                    2    "));
    QVERIFY(Line(m_document, QStringLiteral("NEVER")).isEmpty());
    QCOMPARE(m_progress, (QList<int>{50, 100}));
    QVERIFY(!m_document.toPlainText().contains(QStringLiteral("Xray")));
}

void tst_ClinicalSummary::Medicine_losesNoDigit_data() {
    QTest::addColumn<QString>("drug");
    QTest::addColumn<QString>("dosage");
    QTest::addColumn<QString>("quantity");
    QTest::addColumn<QString>("line");
    QTest::newRow("quantities")
        << "D"
        << "1 TAB"
        << "1000"
        << "D                                  1 TAB                    1000  ";
    QTest::newRow("half a unit")
        << "D"
        << "1 TAB"
        << "12.5"
        << "D                                  1 TAB                    12.5  ";
    QTest::newRow("a strength and an hour")
        << "CALCIUM CARBONATE TABLETS COATED 500 mg"
        << "1 TAB EVERY MORNING AT 10"
        << "2"
        << "CALCIUM CARBONATE TABLETS COATED 500 mg     1 TAB EVERY MORNING AT 10     2    ";
    QTest::newRow("words alone are cut")
        << "CALCIUM CARBONATE 500 mg TABLETS COATED"
        << "1 TAB EVERY MORNING, FASTING"
        << "2"
        << "CALCIUM CARBONATE 500 mg TABLE     1 TAB EVERY MORNING,     2    ";
}

void tst_ClinicalSummary::Medicine_losesNoDigit() {
    QFETCH(QString, drug);
    QFETCH(QString, dosage);
    QFETCH(QString, quantity);
    Run(QStringLiteral("INSERT INTO STATION..tbMedicineGiven (HospNum, IdNum, TransDate, DrugCode, "
                       "DrugName, Dosage, Quantity) VALUES ('HS1', '99001', '2026-01-09', '3', "
                       "'%1', '%2', %3)")
            .arg(drug, dosage, quantity));
    Compose(QStringLiteral("99001"));
    QTEST(Line(m_document, QStringLiteral("1/9/2026")).mid(13), "line");
}

void tst_ClinicalSummary::Summary_ofAVisit() {
    const QString visit =
        One(QStringLiteral("SELECT TOP (1) v.IdNum FROM PATIENT_DATA..tbOutPatient v WHERE EXISTS "
                           "(SELECT 1 FROM RADIOLOGY..tbRadResult x WHERE x.IdNum = v.IdNum AND "
                           "x.Modality = 'C' AND x.ResultDate IS NOT NULL)"));
    m_patient.Hosp =
        One(QStringLiteral("SELECT HospNum FROM PATIENT_DATA..tbOutPatient WHERE IdNum = '%1'")
                .arg(visit));
    Compose(visit);
    QVERIFY(Line(m_document, QStringLiteral("Middlename"))
                .endsWith(QStringLiteral("Room/Ward Number : ER/OPD")));
    QCOMPARE(Line(m_document, QStringLiteral("Admitting Doctor")),
             QStringLiteral("Admitting Doctor     :     "));
    QVERIFY(m_document.toPlainText().contains(QStringLiteral("CT-Scan Examinations :\n")));
}

void tst_ClinicalSummary::Summary_ofAnUnknownStayHasNoPatient() {
    Compose(QStringLiteral("99999"));
    // Title, then the four lines between the sections and the last, empty one.
    QCOMPARE(m_document.blockCount(), 5 + 3 + 1);
    QVERIFY(Line(m_document, QStringLiteral("Lastname")).isEmpty());
}

void tst_ClinicalSummary::Summary_bearsAnyText_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("100,000 characters") << QString(100'000, u'x');
    QTest::newRow("control characters") << QStringLiteral("a\u0001\u001bb\r\nc\tx");
    QTest::newRow("right to left") << QStringLiteral("\u05e9\u05dc\u05d5\u05dd 12 mg");
    QTest::newRow("quotes") << QStringLiteral("O'Hara's \"<b>shadow</b>\"");
}

void tst_ClinicalSummary::Summary_bearsAnyText() {
    QFETCH(QString, text);
    if (!ServerHospital::Keeps(text))
        QSKIP("the server's code page may lack these letters");
    Run(QStringLiteral("INSERT INTO RADIOLOGY..tbRadResult (TransNum, HospNum, IdNum, Modality, "
                       "ExamName, TransDate, ResultDate, Interpretation) VALUES ('ZZ1', 'HS1', "
                       "'99001', 'X', 'CHEST', '2026-01-08', '2026-01-08', '%1')")
            .arg(QString(text).replace(u'\'', QStringLiteral("''"))));
    Compose(QStringLiteral("99001"));
    QString shown = text;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).remove(u'\u0001').remove(u'\u001b');
    QVERIFY(m_document.toPlainText().contains(QString(10, u' ') + shown));
}

void tst_ClinicalSummary::Paper_keepsTheColumns() {
    for (int i = 0; i < 200; ++i)
        Run(QStringLiteral("INSERT INTO STATION..tbMedicineGiven (HospNum, IdNum, TransDate, "
                           "DrugCode, DrugName, Dosage, Quantity) VALUES ('HS1', '99001', "
                           "'2026-01-08', '1', 'DRUG %1', 'DOSAGE', 100)")
                .arg(i));
    Compose(QStringLiteral("99001"));
    const auto pages =
        print::PagesOf(m_document, {QStringLiteral("Velmora"), QStringLiteral("Castellanos HS1")});
    QVERIFY(pages->Count() > 2);
    QString all;
    for (int page = 0; page < pages->Count(); ++page) {
        QVERIFY(pages->Text(page).contains(QStringLiteral("Castellanos HS1")));
        QCOMPARE(pages->Text(page).contains(QStringLiteral("Rx Date")),
                 pages->Text(page).contains(QStringLiteral("DRUG ")));
        all += pages->Text(page) + u'\n';
    }
    for (int i = 0; i < 200; ++i)
        QCOMPARE(all.count(QStringLiteral("DRUG %1 ").arg(i)), 1);
    // No line of the summary's tables is wrapped: a row is one text.
    QVERIFY(all.contains(QStringLiteral("Admission Number : 99001")));
    for (const print::PlacedText& text : pages->Page(1).Texts)
        QVERIFY(text.Follows != print::Joint::Wrapped);
}

void tst_ClinicalSummary::Paper_keepsHeadingsWithTheirText() {
    for (int above = 40; above < 80; ++above) {
        QTextDocument document;
        SummaryText text(document);
        text.AppendRun(QStringLiteral("above\n").repeated(above), 8, QStringLiteral("Arial"), 0,
                       false);
        text.SetRole(print::LineRole::Heading);
        text.AppendRun(QStringLiteral("Xray\nCHEST\n"), 10, QStringLiteral("Arial"), 0, true);
        text.SetRole(print::LineRole::Text);
        text.AppendRun(QStringLiteral("clear"), 8, QStringLiteral("Arial"), 0, false);
        const auto pages = print::PagesOf(document, {});
        for (int page = 0; page < pages->Count(); ++page)
            QCOMPARE(pages->Text(page).contains(u"Xray"), pages->Text(page).contains(u"clear"));
    }
}

void tst_ClinicalSummary::Tab_showsOnePatientAlone() {
    ClinicalTab tab;
    tab.SetPatient(m_patient);
    tab.LoadClinicalTab();
    auto* stays = tab.findChild<toolkit::FlexGrid*>();
    QCOMPARE(stays->TextMatrix(1, 1), QStringLiteral("99001"));
    auto* view = tab.findChild<QPushButton*>(QStringLiteral("cmdClinical0"));
    view->click();
    auto* text = tab.findChild<QTextEdit*>();
    QVERIFY(text->toPlainText().contains(QStringLiteral("Montgomery")));
    QVERIFY(tab.findChild<QPushButton*>(QStringLiteral("cmdPrint"))->isEnabled());
    // A load that fails leaves nothing of the patient before.
    modGlobals::gPatientSearch = std::make_shared<FailingFinder>();
    QVERIFY_EXCEPTION_THROWN(tab.LoadClinicalTab(), base::DatabaseError);
    QVERIFY(text->toPlainText().isEmpty());
    QVERIFY(stays->TextMatrix(1, 1).isEmpty());
    QVERIFY(!view->isEnabled());
    QVERIFY(!tab.findChild<QPushButton*>(QStringLiteral("cmdPrint"))->isEnabled());
}

void tst_ClinicalSummary::Tab_withoutStaysOffersNoSummary() {
    m_patient.Hosp = QStringLiteral("nobody");
    m_patient.Id = QStringLiteral("A0B");
    ClinicalTab tab;
    tab.SetPatient(m_patient);
    tab.LoadClinicalTab();
    QVERIFY(!tab.findChild<QPushButton*>(QStringLiteral("cmdClinical0"))->isEnabled());
    QVERIFY(tab.findChild<QTextEdit*>()->toPlainText().isEmpty());
}

QTEST_MAIN(tst_ClinicalSummary)
#include "tst_ClinicalSummary.moc"
