#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include "CommandLog.h"
#include "FakeComponents.h"
#include "TestHospital.h"
#include "components/builtin/clsResults.h"
#include "db/Recordset.h"
#include "hub/ResultTabs.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/Theme.h"

using toolkit::FlexGrid;

namespace {

const QString kIdNum = QStringLiteral("A'1B");

class Patient final : public PatientOnScreen {
public:
    QString HospNum() const override { return QStringLiteral(" H1 "); }
    QString IdNum() const override { return Id; }
    QString CAPDNum() const override { return {}; }
    QString LastName() const override { return QStringLiteral("O'HARA"); }
    QString FirstName() const override { return QStringLiteral("Ana"); }
    QString MiddleName() const override { return QStringLiteral("Luz"); }
    QString Age() const override { return QStringLiteral("52"); }
    QString Sex() const override { return QStringLiteral("F"); }
    QString Company() const override { return {}; }
    void Get_CanPenProc() override {}

    QString Id = kIdNum;
};

/// Remembers, in order, what it was given.
class Viewer final : public components::ResultViewer {
public:
    void SetSQLConnection(const std::shared_ptr<db::Connection>& connection) override {
        Given << (connection ? QStringLiteral("connection") : QString());
    }
    void SetHospitalNumber(const QString& text) override { Given << text; }
    void SetIDNumber(const QString& text) override { Given << text; }
    void SetRoomNumber(const QString& text) override { Given << text; }
    void SetPatientName(const QString& text) override { Given << text; }
    void SetAge(const QString& text) override { Given << text; }
    void SetSex(const QString& text) override { Given << text; }
    void SetStatus(const QString& text) override { Given << QStringLiteral("status ") + text; }
    void SetUserID(const QString& text) override { Given << text; }
    void SetCSnumber(const QString& text) override { Given << text; }
    void SetRequestNum(const QString& text) override { Given << text; }
    void SetAutoprint(bool autoprint) override { Given << QString::number(autoprint); }
    void Show_Results() override { Given << QStringLiteral("shown"); }
    QStringList Given;
};

}  // namespace

// The result tabs over the demo hospital, with a patient of their own in it.
class tst_ResultTabs final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { toolkit::ApplyTheme(*qApp); }
    void init();
    void cleanup();
    void Lists_areReadOncePerChoice();
    void Lists_showTheirColumns_data();
    void Lists_showTheirColumns();
    void Row_isReadByKeyAndClick_data();
    void Row_isReadByKeyAndClick();
    void EmptyLists_showNothing();
    void FailedList_showsNoOldLineAndIsReadAgain();
    void Viewer_isFedTheCurrentRow();
    void BadTexts_doNoHarm_data();
    void BadTexts_doNoHarm();

private:
    void Run(const QString& statement) { m_connection->Execute(statement); }
    void Take(const QString& idNum);
    template <class Control>
    Control& Find(const QString& name) {
        return *m_tabs->findChild<Control*>(name);
    }
    FlexGrid& Grid(const QString& name) { return Find<FlexGrid>(QStringLiteral("mshflex") + name); }
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

void tst_ResultTabs::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_connection = m_hospital->Connect();
    m_connection->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    for (const char* rows :
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
          "INSERT INTO PATIENT_DATA..tbLabResult (RequestNum, LabExamID, HospNum, IdNum, RefNum, "
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

void tst_ResultTabs::cleanup() {
    m_tabs.reset();
    modGlobals::gWardResults.reset();
    modGlobals::gResultViewer.reset();
    modGlobals::gCurrentUser.reset();
}

// As the hub does when a patient is opened.
void tst_ResultTabs::Take(const QString& idNum) {
    m_patient.Id = idNum;
    modGlobals::RaiseTabFlags();
    m_tabs->TakePatient(m_patient, QStringLiteral(" OPD "));
}

void tst_ResultTabs::Lists_areReadOncePerChoice() {
    Take(kIdNum);
    const QStringList once{QStringLiteral("STATION..Nurse_GetXray 'A''1B'"),
                           QStringLiteral("STATION..Nurse_GetUltra 'A''1B'"),
                           QStringLiteral("Nurse_GetHrt 'A''1B'"),
                           QStringLiteral("PATIENT_DATA..sp_AOPD_ViewLabExams 'H1','A''1B'"),
                           QStringLiteral("STATION..Nurse_GetCT 'A''1B'"),
                           QStringLiteral("Nurse_GetPT 'A''1B'")};
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
    Find<QPushButton>(QStringLiteral("cmdPTRefresh")).click();
    QCOMPARE(log.Sent.mid(12), once.mid(5));
    QVERIFY(!Find<QPushButton>(QStringLiteral("cmdNuclearPrint")).isEnabled());
}

void tst_ResultTabs::Lists_showTheirColumns_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("row");
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

void tst_ResultTabs::Lists_showTheirColumns() {
    QFETCH(int, tab);
    QFETCH(QString, name);
    Take(kIdNum);
    m_tabs->setCurrentIndex(tab);
    m_tabs->LoadShown();
    FlexGrid& grid = Grid(name);
    QStringList texts;
    for (int col = 1; col < grid.Cols(); ++col)
        texts << grid.TextMatrix(1, col);
    QTEST(texts.join(u'|'), "row");
}

void tst_ResultTabs::Row_isReadByKeyAndClick_data() {
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Enter, Down") << true;
    QTest::newRow("click") << false;
}

void tst_ResultTabs::Row_isReadByKeyAndClick() {
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
    QCOMPARE(Box("txtXrayInterp"), QStringLiteral("Clear."));
    choose(Grid(QStringLiteral("Xray")), 1);
    QCOMPARE(Label("lblXrayTransNum") + Label("lblXrayTransDate") + Label("lblXrayResultDate"),
             QStringLiteral("X16/1/20266/2/2026"));
    // The x-ray list never fills the middle name: a blank ends the text.
    QCOMPARE(Label("lblXrayReader"), QStringLiteral("Penrose , Hugh "));
    QCOMPARE(Box("txtXrayInterp"), QStringLiteral("Clear."));
    QCOMPARE(Label("lblXrayFilms"), QString());
    choose(Grid(QStringLiteral("Xray")), 2);
    QCOMPARE(Box("txtXrayInterp"), QStringLiteral("Old."));
    m_tabs->setCurrentIndex(ResultTabs::HeartStation);
    QCOMPARE(Box("txtHeartDiagnosis") + Box("txtHeartExercise") + Box("txtHeartInterpretation"),
             QStringLiteral("ESRDTired.Sinus."));
    QVERIFY(Find<QPushButton>(QStringLiteral("cmdHeartPrint")).isEnabled());
    choose(Grid(QStringLiteral("Heart")), 2);
    QCOMPARE(Label("lblHeartResultDate"), QStringLiteral("NOT RELEASED"));
    QCOMPARE(Grid(QStringLiteral("Heart")).model()->index(1, 4).data().toString(),
             QStringLiteral("NOT RELEASED"));
    QVERIFY(!Find<QPushButton>(QStringLiteral("cmdHeartPrint")).isEnabled());
    m_tabs->setCurrentIndex(ResultTabs::Rehabilitation);
    choose(Grid(QStringLiteral("PT")), 1);
    QCOMPARE(Box("txtPT"), QStringLiteral("DIAGNOSIS\nWeak\n\nRESULT\nBetter"));
    // Nothing of it is left for the next patient, on no tab.
    Take(QStringLiteral("none"));
    for (const auto* box : m_tabs->findChildren<QPlainTextEdit*>())
        QCOMPARE(box->toPlainText(), QString());
    for (auto* grid : m_tabs->findChildren<FlexGrid*>())
        QCOMPARE(grid->TextMatrix(1, 1), QString());
    QCOMPARE(Label("lblXrayTransNum") + Label("lblHeartTransNum"), QString());
}

void tst_ResultTabs::EmptyLists_showNothing() {
    Take(QStringLiteral("none"));
    m_tabs->LoadShown();
    for (int tab = 0; tab <= ResultTabs::Nuclear; ++tab) {
        m_tabs->setCurrentIndex(tab);
        auto& grid = *m_tabs->currentWidget()->findChild<FlexGrid*>();
        QCOMPARE(grid.Rows(), 2);
        QTest::keyClick(&grid, Qt::Key_Return);
    }
    QCOMPARE(Label("lblXrayReader") + Label("lblUltraReader"), QString());
    QVERIFY(!Find<QPushButton>(QStringLiteral("cmdLabView")).isEnabled());
    QCOMPARE(m_viewer->Given, QStringList());
}

void tst_ResultTabs::FailedList_showsNoOldLineAndIsReadAgain() {
    Take(kIdNum);
    m_tabs->setCurrentIndex(ResultTabs::Rehabilitation);
    m_connection->SetDefaultDatabase(QStringLiteral("BILLING"));
    QVERIFY_EXCEPTION_THROWN(m_tabs->Load(ResultTabs::Rehabilitation), base::DatabaseError);
    QCOMPARE(Grid(QStringLiteral("PT")).TextMatrix(1, 1), QString());
    QVERIFY(Label("lblPTState").contains(QStringLiteral("could not be read")));
    Take(kIdNum);
    QVERIFY_EXCEPTION_THROWN(m_tabs->LoadShown(), base::DatabaseError);
    m_connection->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    m_tabs->LoadShown();
    QCOMPARE(Grid(QStringLiteral("PT")).TextMatrix(1, 1), QStringLiteral("R1"));
}

void tst_ResultTabs::Viewer_isFedTheCurrentRow() {
    Take(kIdNum);
    m_tabs->setCurrentIndex(ResultTabs::Laboratory);
    FlexGrid& grid = Grid(QStringLiteral("Lab"));
    QTest::keyClick(&grid, Qt::Key_Down);
    QTest::keyClick(&grid, Qt::Key_Return);
    QCOMPARE(m_viewer->Given,
             QStringList({QStringLiteral("connection"), QStringLiteral("H1"), kIdNum,
                          QStringLiteral("OPD"), QStringLiteral("O'HARA, Ana Luz"),
                          QStringLiteral("52"), QStringLiteral("F"), QStringLiteral("status "),
                          QStringLiteral("E1"), QStringLiteral("S2"), QStringLiteral("L2"),
                          QStringLiteral("1"), QStringLiteral("shown")}));
    m_viewer->Given.clear();
    Run(QStringLiteral("DELETE PATIENT_DATA..tbLabResult WHERE IdNum = 'A''1B'"));
    Find<QPushButton>(QStringLiteral("cmdLabView")).click();
    QCOMPARE(m_viewer->Given, QStringList());
}

void tst_ResultTabs::BadTexts_doNoHarm_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("read");
    const QString word(100'000, u'x');
    QTest::newRow("100,000 characters without a blank") << word << word;
    QTest::newRow("control characters")
        << QStringLiteral("a\x01\x1b[0m\tb\r\nc\rd") << QStringLiteral("a  [0m b\nc\nd");
    QTest::newRow("right to left") << QStringLiteral("\u0627\u0644\u0635\u062f\u0631 clear")
                                   << QStringLiteral("\u0627\u0644\u0635\u062f\u0631 clear");
    QTest::newRow("markup") << QStringLiteral("<b>big</b>") << QStringLiteral("<b>big</b>");
}

void tst_ResultTabs::BadTexts_doNoHarm() {
    QFETCH(QString, text);
    if (!ServerHospital::Keeps(text))
        QSKIP("the server's code page may lack these letters");
    Run(QStringLiteral("UPDATE RADIOLOGY..tbRadResult SET ExamName = 'a' + LEFT('%1', 90), "
                       "Interpretation = '%1' WHERE TransNum = 'X1'")
            .arg(text));
    Take(kIdNum);
    QElapsedTimer taken;
    taken.start();
    m_tabs->LoadShown();
    QTest::keyClick(&Grid(QStringLiteral("Xray")), Qt::Key_Return);
    QCoreApplication::processEvents();
    QVERIFY2(taken.elapsed() < 2000, qPrintable(QString::number(taken.elapsed())));
    QTEST(Box("txtXrayInterp"), "read");
    QCOMPARE(m_tabs->width(), 1200);
    // A list's cell shows one line of it.
    const QString cell = Grid(QStringLiteral("Xray")).model()->index(0, 8).data().toString();
    QVERIFY(cell.size() <= 400 && !cell.contains(u'\n'));
}

QTEST_MAIN(tst_ResultTabs)
#include "tst_ResultTabs.moc"
