#include "visits/frmCAPDVisit.h"

#include <QtCharts/QCategoryAxis>

#include "WindowTest.h"
#include "db/CommandText.h"
#include "toolkit/Twips.h"
#include "visits/VisitChart.h"
#include "visits/frmPastVisit.h"

namespace {

const QString kSaved = u"Registration Successfully Saved."_s;
const QString kRefused = u"Patient's visit for this day is already registered."_s;

}  // namespace

// The visit window over the demo hospital; 200005 is on the register under 1001.
class tst_frmCAPDVisit final : public WindowTest {
    Q_OBJECT

private slots:
    void init() {
        SetUp();
        // A server keeps its own time, and there the patient has already come today.
        Do(u"DELETE CLINICAL_AREA..tbCAPDLogBook WHERE HospNum = '200005' AND VisitDay >= "
           "CONVERT(varchar(10), GETDATE(), 101)"_s);
        base::Clock::Replace([] { return QDateTime(QDate(2031, 3, 4), QTime(23, 59, 50)); });
        m_window = Open();
    }

    void cleanup() {
        m_window.reset();
        TearDown();
    }

    void Save_onceADayAlsoAcrossMidnight() {
        const int before = Visits();
        Answer(BoxAnswer::No);
        Click(*m_window, "cmdSave");
        QVERIFY(Said().Text.contains(u"no readings"_s));
        QCOMPARE(Visits(), before);
        Find<QLineEdit>(*m_window, "txtWeight").setText(u"55.5"_s);
        Find<QRadioButton>(*m_window, "optCatheter2").setChecked(true);
        Answer(BoxAnswer::Ok);
        const CommandLog log;
        Click(*m_window, "cmdSave");
        Click(*m_window, "cmdSave");
        QCOMPARE(log.Sent.size(), 2);
        QVERIFY(log.Sent.last().contains(u",'  Tenchkoff','55.5',"_s));
        QCOMPARE(Visits(), before + 1);

        m_window = Open();
        Find<QRadioButton>(*m_window, "optPurpose2").setChecked(true);
        Answer(BoxAnswer::Ok);
        Click(*m_window, "cmdSave");
        QCOMPARE(Said().Text, kRefused);
        QVERIFY(m_window->isVisible());
        if (m_session->IsOnServer())
            QSKIP("a server's clock cannot be set");
        // Midnight passes while the window is open: another day, another visit, with its purpose.
        base::Clock::Replace([] { return QDateTime(QDate(2031, 3, 5), QTime(0, 0)); });
        Answer(BoxAnswer::Ok);
        Click(*m_window, "cmdSave");
        QCOMPARE(Said().Text, kSaved);
        QVERIFY(
            log.Sent.contains(u"CLINICAL_AREA..sp_CAPD_RegisterPatient "
                              u"'200005','A1B','1001','','','','','','','','','',"
                              "'','','','','','','','','','','','','','','4601','Treatment'"_s));
        QCOMPARE(Visits(), before + 2);
    }

    void ServerGone_atAnyCommandLogsTheVisitOnce() {
        const int before = Visits();
        Find<QLineEdit>(*m_window, "txtWeight").setText(u"55.5"_s);
        Answer(BoxAnswer::Ok);
        const int refused = LoseServerAtEachCommand([] { return QString::number(Visits()); },
                                                    [this] { Click(*m_window, "cmdSave"); });
        // The look at the day, then the save.
        QCOMPARE(refused, 2);
        QCOMPARE(Said().Text, kSaved);
        QCOMPARE(Visits(), before + 1);
    }

    void Save_afterAnotherNurseKeepsWhatWasTyped() {
        const int before = Visits();
        // The check sees the visit's number only; the day is the patient's.
        Log(u"A2B"_s);
        Find<QLineEdit>(*m_window, "txtDiet").setText(u"it's typed"_s);
        Answer(BoxAnswer::Ok);
        Click(*m_window, "cmdSave");
        QCOMPARE(Said().Text, kRefused);
        QCOMPARE(Said().Title, u"Message"_s);
        QVERIFY(m_window->isVisible() && Find<QPushButton>(*m_window, "cmdSave").isEnabled());
        QCOMPARE(Find<QLineEdit>(*m_window, "txtDiet").text(), u"it's typed"_s);
        QCOMPARE(Visits(), before + 1);
    }

    void View_listsTheVisitsAndMarksTheChosenOne() {
        Log(u"A9B"_s);
        Click(*m_window, "cmdView");
        const auto* grid = &Find<toolkit::FlexGrid>(*m_window, "grdTable");
        const auto* chart = &Find<VisitChart>(*m_window, "chtVisits");
        QVERIFY(m_window->height() >= toolkit::Twips(8820, m_window.get()));
        QCOMPARE(grid->Rows() - 1, Visits());
        QCOMPARE(grid->TextMatrix(1, 1), u"A9B"_s);
        if (!m_session->IsOnServer())
            QCOMPARE(grid->TextMatrix(1, 2), u"3/4/2031 11:59:50 PM"_s);
        QCOMPARE(chart->Marked(), 0);
        QTRY_VERIFY2(chart->chart()->plotArea().height() >= 200,
                     qPrintable(QString::number(chart->chart()->plotArea().height())));
        const QRect pressure = grid->CellRect(1, 6);
        QVERIFY(grid->viewport()->rect().contains(pressure));
        QTest::keyClick(&Find<toolkit::FlexGrid>(*m_window, "grdTable"), Qt::Key_Down);
        QCOMPARE(chart->Marked(), 1);
        Do(u"UPDATE CLINICAL_AREA..tbCAPDLogBook SET Remarks = 'one <b>\ntwo' WHERE "
           "HospNum = '200005'"_s);
        Click(*m_window, "cmdView");
        QString read;
        QTimer::singleShot(0, [&read] {
            auto* visit = qobject_cast<frmPastVisit*>(QApplication::activeModalWidget());
            read = visit->findChild<QTextEdit*>()->toPlainText();
            QTest::keyClick(visit->focusWidget(), Qt::Key_Return);
        });
        QTest::keyClick(&Find<toolkit::FlexGrid>(*m_window, "grdTable"), Qt::Key_Return);
        QVERIFY2(read.contains(u"A9B"_s) && read.contains(u"one <b>"_s) && read.contains(u"two"_s),
                 qPrintable(read));
    }

    // The last twelve months stand first; a visit before them brings its own. Each visit has one
    // date.
    void Chart_showsTwelveMonths() {
        auto* chart = &Find<VisitChart>(*m_window, "chtVisits");
        auto* days = qobject_cast<QCategoryAxis*>(chart->chart()->axes(Qt::Horizontal).front());
        const QDateTime last(QDate(2026, 11, 23), QTime(8, 0));
        chart->SetVisits({{last, 50, {}}});
        QCOMPARE(days->categoriesLabels(), QStringList{u"11/23/2026"_s});
        chart->SetVisits(
            {{last, 50, {}}, {last.addMonths(-11), 51, {}}, {last.addYears(-2), 52, {}}});
        const auto shows = [days](const QDateTime& moment) {
            const double place = double(moment.toMSecsSinceEpoch());
            return days->min() < place && place < days->max();
        };
        QVERIFY(shows(last) && shows(last.addMonths(-11)) && !shows(last.addYears(-2)));
        chart->Mark(2);
        QVERIFY(!shows(last) && shows(last.addYears(-2)));
        QCOMPARE(days->categoriesLabels(), QStringList{u"11/23/2024"_s});
    }

    void View_withoutVisitsLeavesTheGridCleared() {
        m_window->SetHospNum(u"200001"_s);
        Click(*m_window, "cmdView");
        QCOMPARE(Find<toolkit::FlexGrid>(*m_window, "grdTable").TextMatrix(1, 1), QString());
        QCOMPARE(Find<VisitChart>(*m_window, "chtVisits").Marked(), -1);
    }

    void Readings_leaveGaps_data() {
        Columns<QString, QString, QList<double>>();
        const auto row = Row<const char*, const char*, QList<double>>;  // -1 for none
        row("plain", "55.5", "130/80", {55.5, 130, 80});
        row("with units", "62,5 kg", "BP 90 / 60 mmHg", {62.5, 90, 60});
        row("upper alone", "0", "120", {-1, 120, -1});
        row("lower missing", "0.0", "120/", {-1, 120, -1});
        row("the least", "0.1", "40/10", {0.1, 40, 10});
        row("the most", "500", "300/299", {500, 300, 299});
        row("beyond", "500.1", "301/80", {-1, -1, -1});
        row("too low", "", "39/10", {-1, -1, -1});
        row("lower too low", "", "120/9", {-1, -1, -1});
        row("both alike", "", "80/80", {-1, -1, -1});
        row("the least alone", "", "40", {-1, 40, -1});
        row("alone, too low", "", "39", {-1, -1, -1});
        row("alone, beyond", "", "301", {-1, -1, -1});
        row("empty", "", "", {-1, -1, -1});
        row("words", "not taken", "unable 2 x", {-1, -1, -1});
        row("a date is no pressure", "-", "11/22/2026", {-1, -1, -1});
        row("a date and no weight", "12/05/24", "12/05/24", {-1, -1, -1});
        row("three numbers", "55-57", "120/80/60", {-1, -1, -1});
        row("a digit too many", "55", "1300/80", {55, -1, -1});
        row("decimals", "55.5.5", "120.55/80", {-1, -1, -1});
        row("a date before it", "60", "11/22/2026 130/80", {60, 130, 80});
    }

    void Readings_leaveGaps() {
        auto [weight, pressure, expected] = Fetch<QString, QString, QList<double>>();
        const visits::BloodPressure read = visits::ReadBloodPressure(pressure);
        const QList<double> all{visits::ReadWeight(weight).value_or(-1), read.Systolic.value_or(-1),
                                read.Diastolic.value_or(-1)};
        QCOMPARE(all, expected);
        const QDateTime day(QDate(2026, 1, 1), QTime(8, 0));
        const std::vector<visits::Visit> three{{day, 50, {}},
                                               {day.addDays(1), visits::ReadWeight(weight), {}},
                                               {day.addDays(2), 52, {}}};
        const auto runs = visits::Runs(three, [](const visits::Visit& v) { return v.Weight; });
        QCOMPARE(runs.size(), visits::ReadWeight(weight) ? size_t(1) : size_t(2));
    }

private:
    std::unique_ptr<frmCAPDVisit> Open() const {
        auto window = std::make_unique<frmCAPDVisit>();
        window->SetCAPDNum(u"1001"_s);
        window->SetHospNum(u"200005"_s);
        window->SetIdNum(u"A1B"_s);
        window->show();
        return window;
    }

    // As another workstation does it.
    void Log(const QString& idNum) const {
        QStringList arguments(27, QString());
        arguments[0] = u"200005"_s;
        arguments[1] = idNum;
        Do(db::Call(u"CLINICAL_AREA..sp_CAPD_RegisterPatient"_s, arguments));
    }

    static int Visits() {
        return Ask(u"SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDLogBook WHERE HospNum = '200005'"_s)
            .toInt();
    }

    std::unique_ptr<frmCAPDVisit> m_window;
};

QTEST_MAIN(tst_frmCAPDVisit)
#include "tst_frmCAPDVisit.moc"
