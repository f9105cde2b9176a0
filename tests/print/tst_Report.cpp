#include "print/Report.h"

#include <QtTest>

#include "base/Clock.h"
#include "print/ReportFiles.h"

namespace {

const QString kOneLine = QStringLiteral(
    "<report><title>Own title</title><tables><table database=\"X\" name=\"t\"/></tables>"
    "<parameters><parameter name=\"Start\"/><parameter name=\"Name\"/></parameters>"
    "<query>{{database}}..sp_Test {{param.Start}},{{param.Name}}</query>"
    "<fields><field name=\"Day\" format=\"date\"/><field name=\"At\" format=\"moment\"/>"
    "<field name=\"Amount\" format=\"money\"/><field name=\"Age\" format=\"number\"/>"
    "<field name=\"Name\"/></fields><header>{{title}}|{{param.Name}}|{{printed}}</header>"
    "<body><column>{{Day}}|{{At}}|{{Amount}}|{{Age}}|{{Name}}|{{#Name}}named{{/Name}}"
    "{{^Name}}nameless{{/Name}}</column></body></report>");

}  // namespace

class tst_Report : public QObject {
    Q_OBJECT
private slots:
    void init();
    void ReadRecords_sendsParametersQuoted_data();
    void ReadRecords_sendsParametersQuoted();
    void ReadRecords_refusesADatabaseThatIsNoName();
    void ReadRecords_namesAColumnThatTheQueryLacks();
    void ReadRecords_passesTheServersRefusalOn();
    void SetLogOnInfo_takesNoPassword();
    void Pages_writeValuesByTheRulesOfTheUnit();
    void Pages_showWhatStoodInTheTablesWhenRead();
    void Pages_escapeWhatPatientsAreCalled();

private:
    std::unique_ptr<ReportFiles> m_files;
};

void tst_Report::init() {
    using embedded::ColumnKind;
    m_files = std::make_unique<ReportFiles>();
    m_files->Columns = {{QStringLiteral("NAME"), ColumnKind::Text},
                        {QStringLiteral("Amount"), ColumnKind::Double},
                        {QStringLiteral("Age"), ColumnKind::Integer},
                        {QStringLiteral("Day"), ColumnKind::DateTime},
                        {QStringLiteral("At"), ColumnKind::DateTime}};
    m_files->RowCount = 1;
    m_files->Fill = [](int, embedded::RowSink& sink) {
        sink.Text("O'Hara <b>& Sons</b>");
        sink.Double(1.005);
        sink.Integer(61);
        sink.DateTime("2026-03-09 14:05:00.000");
        sink.DateTime("2026-03-09 14:05:00.000");
    };
    base::Clock::Replace([] { return QDateTime(QDate(2026, 3, 10), QTime(9, 30)); });
}

void tst_Report::ReadRecords_sendsParametersQuoted_data() {
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QString>("command");
    const auto row = [](const char* name, const QStringList& values, const QString& command) {
        QTest::newRow(name) << values << command;
    };
    row("in order", {QStringLiteral("3/9/2026"), QStringLiteral("Ana")},
        QStringLiteral("CLINICAL_AREA..sp_Test '3/9/2026','Ana'"));
    row("an apostrophe", {QString(), QStringLiteral("O'Hara")},
        QStringLiteral("CLINICAL_AREA..sp_Test '','O''Hara'"));
    row("what looks like a placeholder",
        {QStringLiteral("{{param.Name}}"), QStringLiteral("x'); DELETE t --")},
        QStringLiteral("CLINICAL_AREA..sp_Test '{{param.Name}}','x''); DELETE t --'"));
    row("none", {}, QStringLiteral("CLINICAL_AREA..sp_Test '',''"));
}

void tst_Report::ReadRecords_sendsParametersQuoted() {
    QFETCH(QStringList, values);
    const auto report = m_files->Open(kOneLine);
    report->Tables()[0].SetLogOnInfo({}, QStringLiteral("CLINICAL_AREA"), {}, {});
    for (int i = 0; i < values.size(); ++i)
        report->ParameterFields()[size_t(i)].AddCurrentValue(values[i]);
    report->ReadRecords(m_files->Connection());
    QTEST(m_files->Server.Steps.join(u'|'), "command");
}

void tst_Report::ReadRecords_refusesADatabaseThatIsNoName() {
    const auto report = m_files->Open(kOneLine);
    report->Tables()[0].SetLogOnInfo({}, QStringLiteral("A; DELETE t"), {}, {});
    QCOMPARE(FaultOf([&] { report->ReadRecords(m_files->Connection()); }),
             QStringLiteral("\"A; DELETE t\" is not the name of a database."));
    QVERIFY(m_files->Server.Steps.isEmpty());
}

void tst_Report::ReadRecords_namesAColumnThatTheQueryLacks() {
    m_files->Columns[2].Name = QStringLiteral("Years");
    const auto report = m_files->Open(kOneLine);
    QCOMPARE(FaultOf([&] { report->ReadRecords(m_files->Connection()); }),
             QStringLiteral("test.rpt, line 1: the query answers no column \"Age\""));
}

void tst_Report::ReadRecords_passesTheServersRefusalOn() {
    m_files->Server.Answer = [](const QString&, embedded::RowSink&) -> qint64 {
        throw base::DatabaseError(50102, QStringLiteral("no dates"));
    };
    const auto report = m_files->Open(kOneLine);
    QCOMPARE(FaultOf([&] { report->ReadRecords(m_files->Connection()); }),
             QStringLiteral("no dates"));
    QCOMPARE(FaultOf([&] { report->Pages(); }), QStringLiteral("The report has not been read."));
}

void tst_Report::SetLogOnInfo_takesNoPassword() {
    const auto report = m_files->Open(kOneLine);
    QVERIFY(FaultOf([&] {
                report->Tables()[0].SetLogOnInfo({}, {}, QStringLiteral("sa"), QStringLiteral("x"));
            }).contains(u"takes no password"));
}

void tst_Report::Pages_writeValuesByTheRulesOfTheUnit() {
    const auto filled = m_files->PagesOf(kOneLine);
    QVERIFY2(filled->Text(0).contains(u"3/9/2026|3/9/2026 2:05:00 PM|1.01|61|O'Hara"),
             qPrintable(filled->Text(0)));
    QVERIFY(filled->Text(0).startsWith(u"Own title||3/10/2026 9:30:00 AM"));
    QVERIFY(filled->Text(0).endsWith(u"|named"));
    m_files->Fill = [](int, embedded::RowSink& sink) {
        for (int i = 0; i < 5; ++i)
            sink.Null();
    };
    QVERIFY(
        m_files->PagesOf(kOneLine)->Text(0).contains(u"||||"
                                                     "|nameless"));
}

void tst_Report::Pages_showWhatStoodInTheTablesWhenRead() {
    const auto report = m_files->Open(kOneLine);
    report->SetTitle(QStringLiteral("St. Agnes' Hospital"));
    report->ReadRecords(m_files->Connection());
    m_files->RowCount = 0;
    report->ParameterFields()[1].AddCurrentValue(QStringLiteral("later"));
    QVERIFY(report->Pages()->Text(0).startsWith(u"St. Agnes' Hospital||"));
    QVERIFY(report->Pages()->Text(0).contains(u"O'Hara"));
    QCOMPARE(m_files->Server.Steps.size(), 1);
}

void tst_Report::Pages_escapeWhatPatientsAreCalled() {
    const QString name = QStringLiteral("O'Hara <b>& Sons</b>");
    const auto plain = m_files->PagesOf(kOneLine);
    QVERIFY2(plain->Text(0).contains(name), qPrintable(plain->Text(0)));
    const auto html = m_files->PagesOf(
        QStringLiteral("<report><query>P</query><fields><field name=\"Name\"/></fields>"
                       "<header><p>For <i>{{Name}}</i></p></header></report>"));
    QCOMPARE(html->Text(0), QStringLiteral("For ") + name);
}

QTEST_MAIN(tst_Report)
#include "tst_Report.moc"
