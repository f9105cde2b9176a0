#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include "CommandLog.h"
#include "FakeComponents.h"
#include "Rows.h"
#include "TestHospital.h"
#include "components/builtin/clsResults.h"
#include "db/Recordset.h"
#include "hub/ResultTabs.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/Theme.h"

using namespace Qt::StringLiterals;
using toolkit::FlexGrid;

namespace {

const QString kIdNum = u"A'1B"_s;

class Patient final : public PatientOnScreen {
public:
    QString HospNum() const override { return u" H1 "_s; }
    QString IdNum() const override { return Id; }
    QString CAPDNum() const override { return {}; }
    QString LastName() const override { return u"O'HARA"_s; }
    QString FirstName() const override { return u"Ana"_s; }
    QString MiddleName() const override { return u"Luz"_s; }
    QString Age() const override { return u"52"_s; }
    QString Sex() const override { return u"F"_s; }
    QString Company() const override { return {}; }
    void Get_CanPenProc() override {}

    QString Id = kIdNum;
};

/// Remembers, in order, what it was given.
class Viewer final : public components::ResultViewer {
public:
    void SetSQLConnection(const std::shared_ptr<db::Connection>& connection) override {
        Given << (connection ? u"connection"_s : QString());
    }
    void SetHospitalNumber(const QString& text) override { Given << text; }
    void SetIDNumber(const QString& text) override { Given << text; }
    void SetRoomNumber(const QString& text) override { Given << text; }
    void SetPatientName(const QString& text) override { Given << text; }
    void SetAge(const QString& text) override { Given << text; }
    void SetSex(const QString& text) override { Given << text; }
    void SetStatus(const QString& text) override { Given << u"status "_s + text; }
    void SetUserID(const QString& text) override { Given << text; }
    void SetCSnumber(const QString& text) override { Given << text; }
    void SetRequestNum(const QString& text) override { Given << text; }
    void SetAutoprint(bool autoprint) override { Given << QString::number(autoprint); }
    void Show_Results() override { Given << u"shown"_s; }
    QStringList Given;
};

}  // namespace

// The result tabs over the demo hospital, with a patient of their own in it.
class tst_ResultTabs final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { toolkit::ApplyTheme(*qApp); }
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_connection = m_hospital->Connect();
        m_connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        for (
            const char* rows :
            {"INSERT INTO RADIOLOGY..tbRadResult (TransNum, Modality, HospNum, IdNum, ExamName, "
             "TransDate, ResultDate, DoctorID, Interpretation) VALUES ('X1', 'X', 'H1', 'A''1B', "
             "'CHEST', '6/1/2026', '6/2/2026', '108', 'Clear.'), ('U1', 'U', 'H1', 'A''1B', "
             "'KIDNEYS', '6/1/2026', NULL, NULL, 'Small.'), ('C1', 'C', 'H1', 'A''1B', 'HEAD', "
             "'6/1/2026', NULL, '108', NULL), ('X0', 'X', 'H1', 'A''1B', 'KUB', '5/1/2026', NULL, "
             "NULL, 'Old.')",
             "INSERT INTO STATION..tbHeartResult (RequestNum, HospNum, IdNum, ExamName, TransDate, "
             "ResultDate, Diagnosis, Exercise, Interpretation) VALUES ('E1', 'H1', 'A''1B', 'ECG', "
             "'6/1/2026', '6/2/2026', 'ESRD', 'Tired.', 'Sinus.'), ('E2', 'H1', 'A''1B', 'ECG', "
             "'5/1/2026', NULL, '', '', 'Draft.')",
             "INSERT INTO STATION..tbPTResult (RequestNum, RefNum, HospNum, IdNum, ExamCode, "
             "ExamName, TransDate, Diagnosis, Result) VALUES ('P1', 'R1', 'H1', 'A''1B', '681', "
             "'WALK', '6/1/2026', 'Weak', 'Better')",
             "INSERT INTO PATIENT_DATA..tbLabResult (RequestNum, LabExamID, HospNum, IdNum, "
             "RefNum, "
             "RequestDate) VALUES ('L1', '1', 'H1', 'A''1B', 'S1', '6/1/2026'), ('L2', '2', 'H1', "
             "'A''1B', 'S2', '5/1/2026')"})
            Run(QString::fromLatin1(rows));
        const auto user = std::make_shared<fakes::User>();
        user->Session = m_connection;
        modGlobals::gCurrentUser = user;
        modGlobals::gWardResults = std::make_shared<components::clsResults>();
        modGlobals::gResultViewer = m_viewer = std::make_shared<Viewer>();
        m_tabs = std::make_unique<ResultTabs>();
        m_tabs->resize(1200, 500);
        m_tabs->show();
        QVERIFY(QTest::qWaitForWindowActive(m_tabs.get()));
    }

    void cleanup() {
        m_tabs.reset();
        modGlobals::gWardResults.reset();
        modGlobals::gResultViewer.reset();
        modGlobals::gCurrentUser.reset();
    }

    void Lists_areReadOncePerChoice() {
        Take(kIdNum);
        const QStringList once{u"STATION..Nurse_GetXray 'A''1B'"_s,
                               u"STATION..Nurse_GetUltra 'A''1B'"_s,
                               u"Nurse_GetHrt 'A''1B'"_s,
                               u"PATIENT_DATA..sp_AOPD_ViewLabExams 'H1','A''1B'"_s,
                               u"STATION..Nurse_GetCT 'A''1B'"_s,
                               u"Nurse_GetPT 'A''1B'"_s};
        CommandLog log;
        const auto walk = [this] {
            m_tabs->setCurrentIndex(0);
            m_tabs->LoadShown();
            for (int tab = 1; tab <= ResultTabs::Nuclear; ++tab)
                m_tabs->setCurrentIndex(tab);
        };
        walk();
        walk();
        QCOMPARE(log.Sent, once);
        Take(kIdNum);
        walk();
        QCOMPARE(log.Sent, once + once);
        Find<QPushButton>(u"cmdPTRefresh"_s).click();
        QCOMPARE(log.Sent.mid(12), once.mid(5));
        QVERIFY(!Find<QPushButton>(u"cmdNuclearPrint"_s).isEnabled());
    }

    void Lists_showTheirColumns_data() {
        Columns<int, QString, QString>();
        QTest::newRow("x-ray") << 0 << "Xray"
                               << "X1|CHEST|6/1/2026|6/2/2026|Penrose|Hugh||Clear.";
        QTest::newRow("heart") << 2 << "Heart"
                               << "E1|ECG|6/1/2026|6/2/2026|||||";
        QTest::newRow("laboratory") << 3 << "Lab"
                                    << "A'1B|L1||1|COMPLETE BLOOD COUNT|Hematology|S1";
        QTest::newRow("CT") << 4 << "CT"
                            << "C1|HEAD|6/1/2026||Penrose|Hugh|Alban|";
        QTest::newRow("rehabilitation") << 5 << "PT"
                                        << "R1|P1|WALK||Better|681";
    }

    void Lists_showTheirColumns() {
        auto [tab, name, row] = Fetch<int, QString, QString>();
        Take(kIdNum);
        m_tabs->setCurrentIndex(tab);
        m_tabs->LoadShown();
        FlexGrid& grid = Grid(name);
        QStringList texts;
        for (int col = 1; col < grid.Cols(); ++col)
            texts << grid.TextMatrix(1, col);
        QCOMPARE(texts.join(u'|'), row);
    }

    void Row_isReadByKeyAndClick_data() {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("Enter, Down") << true;
        QTest::newRow("click") << false;
    }

    void Row_isReadByKeyAndClick() {
        QFETCH(bool, byKey);
        Take(kIdNum);
        m_tabs->LoadShown();
        const auto choose = [&](FlexGrid& grid, int row) {
            if (byKey)
                QTest::keyClick(&grid, row == 1 ? Qt::Key_Return : Qt::Key_Down);
            else
                QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                                  grid.visualRect(grid.model()->index(row - 1, 1)).center());
        };
        QCOMPARE(Box("txtXrayInterp"), u"Clear."_s);
        choose(Grid(u"Xray"_s), 1);
        QCOMPARE(Label("lblXrayTransNum") + Label("lblXrayTransDate") + Label("lblXrayResultDate"),
                 u"X16/1/20266/2/2026"_s);
        // The x-ray list never fills the middle name: a blank ends the text.
        QCOMPARE(Label("lblXrayReader"), u"Penrose , Hugh "_s);
        QCOMPARE(Box("txtXrayInterp"), u"Clear."_s);
        QCOMPARE(Label("lblXrayFilms"), QString());
        choose(Grid(u"Xray"_s), 2);
        QCOMPARE(Box("txtXrayInterp"), u"Old."_s);
        m_tabs->setCurrentIndex(ResultTabs::HeartStation);
        QCOMPARE(Box("txtHeartDiagnosis") + Box("txtHeartExercise") + Box("txtHeartInterpretation"),
                 u"ESRDTired.Sinus."_s);
        QVERIFY(Find<QPushButton>(u"cmdHeartPrint"_s).isEnabled());
        choose(Grid(u"Heart"_s), 2);
        QCOMPARE(Label("lblHeartResultDate"), u"NOT RELEASED"_s);
        QCOMPARE(Grid(u"Heart"_s).model()->index(1, 4).data().toString(), u"NOT RELEASED"_s);
        QVERIFY(!Find<QPushButton>(u"cmdHeartPrint"_s).isEnabled());
        m_tabs->setCurrentIndex(ResultTabs::Rehabilitation);
        choose(Grid(u"PT"_s), 1);
        QCOMPARE(Box("txtPT"), u"DIAGNOSIS\nWeak\n\nRESULT\nBetter"_s);
        // Nothing of it is left for the next patient, on no tab.
        Take(u"none"_s);
        for (const auto* box : m_tabs->findChildren<QPlainTextEdit*>())
            QCOMPARE(box->toPlainText(), QString());
        for (auto* grid : m_tabs->findChildren<FlexGrid*>())
            QCOMPARE(grid->TextMatrix(1, 1), QString());
        QCOMPARE(Label("lblXrayTransNum") + Label("lblHeartTransNum"), QString());
    }

    void EmptyLists_showNothing() {
        Take(u"none"_s);
        m_tabs->LoadShown();
        for (int tab = 0; tab <= ResultTabs::Nuclear; ++tab) {
            m_tabs->setCurrentIndex(tab);
            auto& grid = *m_tabs->currentWidget()->findChild<FlexGrid*>();
            QCOMPARE(grid.Rows(), 2);
            QTest::keyClick(&grid, Qt::Key_Return);
        }
        QCOMPARE(Label("lblXrayReader") + Label("lblUltraReader"), QString());
        QVERIFY(!Find<QPushButton>(u"cmdLabView"_s).isEnabled());
        QCOMPARE(m_viewer->Given, QStringList());
    }

    void FailedList_showsNoOldLineAndIsReadAgain() {
        Take(kIdNum);
        m_tabs->setCurrentIndex(ResultTabs::Rehabilitation);
        m_connection->SetDefaultDatabase(u"BILLING"_s);
        QVERIFY_EXCEPTION_THROWN(m_tabs->Load(ResultTabs::Rehabilitation), base::DatabaseError);
        QCOMPARE(Grid(u"PT"_s).TextMatrix(1, 1), QString());
        QVERIFY(Label("lblPTState").contains(u"could not be read"_s));
        Take(kIdNum);
        QVERIFY_EXCEPTION_THROWN(m_tabs->LoadShown(), base::DatabaseError);
        m_connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        m_tabs->LoadShown();
        QCOMPARE(Grid(u"PT"_s).TextMatrix(1, 1), u"R1"_s);
    }

    void Viewer_isFedTheCurrentRow() {
        Take(kIdNum);
        m_tabs->setCurrentIndex(ResultTabs::Laboratory);
        FlexGrid& grid = Grid(u"Lab"_s);
        QTest::keyClick(&grid, Qt::Key_Down);
        QTest::keyClick(&grid, Qt::Key_Return);
        QCOMPARE(m_viewer->Given, QStringList({u"connection"_s, u"H1"_s, kIdNum, u"OPD"_s,
                                               u"O'HARA, Ana Luz"_s, u"52"_s, u"F"_s, u"status "_s,
                                               u"E1"_s, u"S2"_s, u"L2"_s, u"1"_s, u"shown"_s}));
        m_viewer->Given.clear();
        Run(u"DELETE PATIENT_DATA..tbLabResult WHERE IdNum = 'A''1B'"_s);
        Find<QPushButton>(u"cmdLabView"_s).click();
        QCOMPARE(m_viewer->Given, QStringList());
    }

    void BadTexts_doNoHarm_data() {
        Columns<QString, QString>();
        const QString word(100'000, u'x');
        QTest::newRow("100,000 characters without a blank") << word << word;
        QTest::newRow("control characters") << u"a\x01\x1b[0m\tb\r\nc\rd"_s << u"a  [0m b\nc\nd"_s;
        QTest::newRow("right to left") << u"\u0627\u0644\u0635\u062f\u0631 clear"_s
                                       << u"\u0627\u0644\u0635\u062f\u0631 clear"_s;
        QTest::newRow("markup") << u"<b>big</b>"_s << u"<b>big</b>"_s;
    }

    void BadTexts_doNoHarm() {
        auto [text, read] = Fetch<QString, QString>();
        if (!ServerHospital::Keeps(text))
            QSKIP("the server's code page may lack these letters");
        Run(u"UPDATE RADIOLOGY..tbRadResult SET ExamName = 'a' + LEFT('%1', 90), "
            "Interpretation = '%1' WHERE TransNum = 'X1'"_s.arg(text));
        Take(kIdNum);
        QElapsedTimer taken;
        taken.start();
        m_tabs->LoadShown();
        QTest::keyClick(&Grid(u"Xray"_s), Qt::Key_Return);
        QCoreApplication::processEvents();
        QVERIFY2(taken.elapsed() < 2000, qPrintable(QString::number(taken.elapsed())));
        QCOMPARE(Box("txtXrayInterp"), read);
        QCOMPARE(m_tabs->width(), 1200);
        // A list's cell shows one line of it.
        const QString cell = Grid(u"Xray"_s).model()->index(0, 8).data().toString();
        QVERIFY(cell.size() <= 400 && !cell.contains(u'\n'));
    }

private:
    void Run(const QString& statement) { m_connection->Execute(statement); }
    // As the hub does when a patient is opened.
    void Take(const QString& idNum) {
        m_patient.Id = idNum;
        modGlobals::RaiseTabFlags();
        m_tabs->TakePatient(m_patient, u" OPD "_s);
    }

    template <class Control>
    Control& Find(const QString& name) {
        return *m_tabs->findChild<Control*>(name);
    }
    FlexGrid& Grid(const QString& name) { return Find<FlexGrid>(u"mshflex"_s + name); }
    QString Label(const char* name) { return Find<QLabel>(QLatin1String(name)).text(); }
    QString Box(const char* name) {
        return Find<QPlainTextEdit>(QLatin1String(name)).toPlainText();
    }

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    std::shared_ptr<Viewer> m_viewer;
    std::unique_ptr<ResultTabs> m_tabs;
    Patient m_patient;
};

QTEST_MAIN(tst_ResultTabs)
#include "tst_ResultTabs.moc"
