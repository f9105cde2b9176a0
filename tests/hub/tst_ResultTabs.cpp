#include "hub/ResultTabs.h"

#include "ScreenPatient.h"
#include "WindowTest.h"
#include "toolkit/Theme.h"

using toolkit::FlexGrid;

namespace {

const QString kIdNum = u"A'1B"_s;

}  // namespace

// The result tabs over the demo hospital, with a patient of their own in it.
class tst_ResultTabs final : public WindowTest {
    Q_OBJECT
private slots:
    void initTestCase() { toolkit::ApplyTheme(*qApp); }
    void init() {
        SetUp();
        for (const char* rows :
             {"RADIOLOGY..tbRadResult (TransNum, Modality, HospNum, IdNum, ExamName, TransDate, "
              "ResultDate, DoctorID, Interpretation) VALUES ('X1', 'X', 'H1', 'A''1B', 'CHEST', "
              "'6/1/2026', '6/2/2026', '108', 'Clear.'), ('U1', 'U', 'H1', 'A''1B', 'KIDNEYS', "
              "'6/1/2026', NULL, NULL, 'Small.'), ('C1', 'C', 'H1', 'A''1B', 'HEAD', '6/1/2026', "
              "NULL, '108', NULL), ('X0', 'X', 'H1', 'A''1B', 'KUB', '5/1/2026', NULL, NULL, "
              "'Old.')",
              "STATION..tbHeartResult (RequestNum, HospNum, IdNum, ExamName, TransDate, "
              "ResultDate, "
              "Diagnosis, Exercise, Interpretation) VALUES ('E1', 'H1', 'A''1B', 'ECG', "
              "'6/1/2026', '6/2/2026', 'ESRD', 'Tired.', 'Sinus.'), ('E2', 'H1', 'A''1B', 'ECG', "
              "'5/1/2026', NULL, '', '', 'Draft.')",
              "STATION..tbPTResult (RequestNum, RefNum, HospNum, IdNum, ExamCode, ExamName, "
              "TransDate, Diagnosis, Result) VALUES ('P1', 'R1', 'H1', 'A''1B', '681', 'WALK', "
              "'6/1/2026', 'Weak', 'Better')",
              "PATIENT_DATA..tbLabResult (RequestNum, LabExamID, HospNum, IdNum, RefNum, "
              "RequestDate) VALUES ('L1', '1', 'H1', 'A''1B', 'S1', '6/1/2026'), ('L2', '2', 'H1', "
              "'A''1B', 'S2', '5/1/2026')"})
            Do(u"INSERT INTO "_s + QLatin1String(rows));
        m_tabs = std::make_unique<ResultTabs>();
        m_tabs->resize(1200, 500);
        BringUp(*m_tabs);
    }

    void cleanup() {
        m_tabs.reset();
        TearDown();
    }

    void Lists_areReadOncePerChoice() {
        const CommandLog log;
        const auto walk = [this] {
            m_tabs->setCurrentIndex(0);
            m_tabs->LoadShown();
            for (int tab = 1; tab <= ResultTabs::Nuclear; ++tab)
                m_tabs->setCurrentIndex(tab);
        };
        Take(kIdNum);
        walk();
        walk();
        QCOMPARE(log.Sent.size(), 6);
        Take(kIdNum);
        walk();
        QCOMPARE(log.Sent.size(), 12);
        Click(*m_tabs, "cmdPTRefresh");
        QCOMPARE(log.Sent.mid(12), QStringList(u"Nurse_GetPT 'A''1B'"_s));
        QVERIFY(!Find<QPushButton>(*m_tabs, "cmdNuclearPrint").isEnabled());
    }

    void Lists_showTheirColumns() {
        Take(kIdNum);
        m_tabs->LoadShown();
        for (const auto& [tab, name, row] :
             {std::tuple(0, "Xray", "X1|CHEST|6/1/2026|6/2/2026|Penrose|Hugh||Clear."),
              {2, "Heart", "E1|ECG|6/1/2026|6/2/2026|||||"},
              {3, "Lab", "A'1B|L1||1|COMPLETE BLOOD COUNT|Hematology|S1"},
              {4, "CT", "C1|HEAD|6/1/2026||Penrose|Hugh|Alban|"},
              {5, "PT", "R1|P1|WALK||Better|681"}}) {
            m_tabs->setCurrentIndex(tab);
            QCOMPARE(LineOf(Grid(name), 1, 1), QLatin1String(row));
        }
    }

    void Row_isReadByKeyAndClick() {
        Take(kIdNum);
        m_tabs->LoadShown();
        QTest::keyClick(&Grid("Xray"), Qt::Key_Return);
        // The x-ray list never fills the middle name: a blank ends the text.
        QCOMPARE(Labels({"lblXrayTransNum", "lblXrayTransDate", "lblXrayResultDate",
                         "lblXrayReader", "lblXrayFilms"}),
                 u"X1|6/1/2026|6/2/2026|Penrose , Hugh |"_s);
        QCOMPARE(Box("txtXrayInterp"), u"Clear."_s);
        QTest::keyClick(&Grid("Xray"), Qt::Key_Down);
        QCOMPARE(Box("txtXrayInterp"), u"Old."_s);
        m_tabs->setCurrentIndex(ResultTabs::HeartStation);
        QCOMPARE(Box("txtHeartDiagnosis") + Box("txtHeartExercise") + Box("txtHeartInterpretation"),
                 u"ESRDTired.Sinus."_s);
        QVERIFY(Find<QPushButton>(*m_tabs, "cmdHeartPrint").isEnabled());
        const QRect second = Grid("Heart").visualRect(Grid("Heart").model()->index(1, 1));
        QTest::mouseClick(Grid("Heart").viewport(), Qt::LeftButton, {}, second.center());
        QCOMPARE(Labels({"lblHeartResultDate"}), u"NOT RELEASED"_s);
        QCOMPARE(Grid("Heart").model()->index(1, 4).data().toString(), u"NOT RELEASED"_s);
        QVERIFY(!Find<QPushButton>(*m_tabs, "cmdHeartPrint").isEnabled());
        m_tabs->setCurrentIndex(ResultTabs::Rehabilitation);
        QTest::keyClick(&Grid("PT"), Qt::Key_Return);
        QCOMPARE(Box("txtPT"), u"DIAGNOSIS\nWeak\n\nRESULT\nBetter"_s);
        // Nothing of it is left for the next patient, on no tab, and nothing can be opened.
        Take(u"none"_s);
        m_tabs->setCurrentIndex(0);
        m_tabs->LoadShown();
        for (int tab = 0; tab <= ResultTabs::Nuclear; ++tab) {
            m_tabs->setCurrentIndex(tab);
            QTest::keyClick(m_tabs->currentWidget()->findChild<FlexGrid*>(), Qt::Key_Return);
        }
        for (const auto* box : m_tabs->findChildren<QPlainTextEdit*>())
            QCOMPARE(box->toPlainText(), QString());
        for (auto* grid : m_tabs->findChildren<FlexGrid*>())
            QCOMPARE(grid->TextMatrix(1, 1), QString());
        QCOMPARE(Labels({"lblXrayTransNum", "lblHeartTransNum", "lblXrayReader"}), u"||"_s);
        QVERIFY(!Find<QPushButton>(*m_tabs, "cmdLabView").isEnabled());
    }

    void FailedList_showsNoOldLineAndIsReadAgain() {
        Take(kIdNum);
        m_tabs->setCurrentIndex(ResultTabs::Rehabilitation);
        m_session->Connection().SetDefaultDatabase(u"BILLING"_s);
        QVERIFY_EXCEPTION_THROWN(m_tabs->Load(ResultTabs::Rehabilitation), base::DatabaseError);
        QCOMPARE(Grid("PT").TextMatrix(1, 1), QString());
        QVERIFY(Labels({"lblPTState"}).contains(u"could not be read"_s));
        Take(kIdNum);
        QVERIFY_EXCEPTION_THROWN(m_tabs->LoadShown(), base::DatabaseError);
        m_session->Connection().SetDefaultDatabase(u"CLINICAL_AREA"_s);
        m_tabs->LoadShown();
        QCOMPARE(Grid("PT").TextMatrix(1, 1), u"R1"_s);
    }

    void Viewer_showsTheCurrentRow() {
        Take(kIdNum);
        m_tabs->setCurrentIndex(ResultTabs::Laboratory);
        QString title;
        PickListKeys keys([&title](QDialog& viewer) { title = viewer.windowTitle(); });
        const CommandLog log;
        QTest::keyClick(&Grid("Lab"), Qt::Key_Down);
        QTest::keyClick(&Grid("Lab"), Qt::Key_Return);
        QCOMPARE(title, u"Laboratory Result - O'HARA, Ana Luz"_s);
        QCOMPARE(log.Sent.last(), u"PATIENT_DATA..sp_Lab_Result 'H1','A''1B','L2','S2'"_s);
        // One that has been withdrawn meanwhile is not shown.
        Do(u"DELETE PATIENT_DATA..tbLabResult WHERE IdNum = 'A''1B'"_s);
        Click(*m_tabs, "cmdLabView");
        QCOMPARE(keys.Shown, 1);
    }

    void BadTexts_doNoHarm_data() {
        Columns<QString, QString>();
        const QString word(100'000, u'x');
        Row("100,000 characters without a blank", word, word);
        Row("control characters and markup", u"a\x01\x1b[0m\tb\r\nc\rd <b>big</b>"_s,
            u"a  [0m b\nc\nd <b>big</b>"_s);
    }

    void BadTexts_doNoHarm() {
        auto [text, read] = Fetch<QString, QString>();
        Do(u"UPDATE RADIOLOGY..tbRadResult SET ExamName = 'a' + LEFT('%1', 90), Interpretation = "
           "'%1' WHERE TransNum = 'X1'"_s.arg(text));
        Take(kIdNum);
        m_tabs->LoadShown();
        QTest::keyClick(&Grid("Xray"), Qt::Key_Return);
        QCoreApplication::processEvents();
        QCOMPARE(Box("txtXrayInterp"), read);
        QCOMPARE(m_tabs->width(), 1200);
        // A list's cell shows one line of it.
        const QString cell = Grid("Xray").model()->index(0, 8).data().toString();
        QVERIFY(cell.size() <= 400 && !cell.contains(u'\n'));
    }

private:
    // As the hub does when a patient is opened.
    void Take(const QString& idNum) {
        m_patient.Id = idNum;
        modGlobals::RaiseTabFlags();
        m_tabs->TakePatient(m_patient, u" OPD "_s);
    }
    FlexGrid& Grid(const char* name) {
        return Find<FlexGrid>(*m_tabs, qPrintable(u"mshflex"_s + QLatin1String(name)));
    }
    QString Labels(std::initializer_list<const char*> names) {
        QStringList texts;
        for (const char* name : names)
            texts << Find<QLabel>(*m_tabs, name).text();
        return texts.join(u'|');
    }
    QString Box(const char* name) { return Find<QPlainTextEdit>(*m_tabs, name).toPlainText(); }

    std::unique_ptr<ResultTabs> m_tabs;
    ScreenPatient m_patient{kIdNum, u" H1 "_s};
};

QTEST_MAIN(tst_ResultTabs)
#include "tst_ResultTabs.moc"
