#include "Rows.h"
#include "print/Report.h"

#include <QtTest>

#include "base/Clock.h"
#include "print/ReportFiles.h"

using namespace Qt::StringLiterals;

namespace {

const QString kOneLine =
    u"<report><title>Own title</title><tables><table database=\"X\" name=\"t\"/></tables>"
    "<parameters><parameter name=\"Start\"/><parameter name=\"Name\"/></parameters>"
    "<query>{{database}}..sp_Test {{param.Start}},{{param.Name}}</query>"
    "<fields><field name=\"Day\" format=\"date\"/><field name=\"At\" format=\"moment\"/>"
    "<field name=\"Amount\" format=\"money\"/><field name=\"Age\" format=\"number\"/>"
    "<field name=\"Name\"/></fields><header>{{title}}|{{param.Name}}|{{printed}}</header>"
    "<body><column>{{Day}}|{{At}}|{{Amount}}|{{Age}}|{{Name}}|{{#Name}}named{{/Name}}"
    "{{^Name}}nameless{{/Name}}</column></body></report>"_s;

}  // namespace

class tst_Report : public QObject {
    Q_OBJECT
private slots:
    void init() {
        using embedded::ColumnKind;
        m_files = std::make_unique<ReportFiles>();
        m_files->Columns = {{u"NAME"_s, ColumnKind::Text},
                            {u"Amount"_s, ColumnKind::Double},
                            {u"Age"_s, ColumnKind::Integer},
                            {u"Day"_s, ColumnKind::DateTime},
                            {u"At"_s, ColumnKind::DateTime}};
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

    void ReadRecords_sendsParametersQuoted_data() {
        Columns<QStringList, QString>();
        Row("in order", QStringList{u"3/9/2026"_s, u"Ana"_s}, "HERE..sp_Test '3/9/2026','Ana'");
        Row("an apostrophe", QStringList{{}, u"O'Hara"_s}, "HERE..sp_Test '','O''Hara'");
        Row("what looks like a placeholder",
            QStringList{u"{{param.Name}}"_s, u"x'); DELETE t --"_s},
            "HERE..sp_Test '{{param.Name}}','x''); DELETE t --'");
        Row("none", QStringList(), "HERE..sp_Test '',''");
    }

    void ReadRecords_sendsParametersQuoted() {
        auto [values, command] = Fetch<QStringList, QString>();
        const auto report = Open();
        for (int i = 0; i < values.size(); ++i)
            report->ParameterFields()[size_t(i)].AddCurrentValue(values[i]);
        report->ReadRecords(m_files->Connection());
        QCOMPARE(m_files->Server.Steps.join(u'|'), command);
    }

    void ReadRecords_saysWhyItRefuses() {
        const auto fault = [this](const QString& database) {
            return FaultOf([&] { Open(database)->ReadRecords(m_files->Connection()); });
        };
        QCOMPARE(fault(u"A; DELETE t"_s), u"\"A; DELETE t\" is not the name of a database."_s);
        QVERIFY(m_files->Server.Steps.isEmpty());
        m_files->Columns[2].Name = u"Years"_s;
        QCOMPARE(fault(u"HERE"_s), u"test.rpt, line 1: the query answers no column \"Age\""_s);
        m_files->Server.Answer = [](const QString&, embedded::RowSink&) -> qint64 {
            throw base::DatabaseError(50102, u"no dates"_s);
        };
        QCOMPARE(fault(u"HERE"_s), u"no dates"_s);
        QCOMPARE(FaultOf([this] { Open()->Pages(); }), u"The report has not been read."_s);
        const auto logOn = [this] { Open()->Tables()[0].SetLogOnInfo({}, {}, {}, u"x"_s); };
        QVERIFY(FaultOf(logOn).contains(u"takes no password"));
    }

    void Pages_writeValuesByTheRulesOfTheUnit() {
        QCOMPARE(m_files->PagesOf(kOneLine)->Text(0),
                 u"Own title||3/10/2026 9:30:00 AM\n3/9/2026|3/9/2026 2:05:00 "
                 "PM|1.01|61|O'Hara <b>& Sons</b>|named"_s);
        m_files->Fill = [](int, embedded::RowSink& sink) {
            for (int i = 0; i < 5; ++i)
                sink.Null();
        };
        QVERIFY(m_files->PagesOf(kOneLine)->Text(0).endsWith(u"\n|||||nameless"));
    }

    void Pages_showWhatStoodInTheTablesWhenRead() {
        const auto report = Open();
        report->SetTitle(u"St. Agnes' Hospital"_s);
        report->ReadRecords(m_files->Connection());
        m_files->RowCount = 0;
        report->ParameterFields()[1].AddCurrentValue(u"later"_s);
        QVERIFY(report->Pages()->Text(0).startsWith(u"St. Agnes' Hospital||"));
        QVERIFY(report->Pages()->Text(0).contains(u"O'Hara"));
        QCOMPARE(m_files->Server.Steps.size(), 1);
    }

    void Pages_escapeWhatPatientsAreCalled() {
        const auto pages = m_files->PagesOf(
            u"<report><query>P</query><fields><field name=\"Name\"/></fields>"
            "<header><p>For <i>{{Name}}</i></p></header></report>"_s);
        QCOMPARE(pages->Text(0), u"For O'Hara <b>& Sons</b>"_s);
    }

private:
    std::shared_ptr<print::Report> Open(const QString& database = u"HERE"_s) {
        const auto report = m_files->Open(kOneLine);
        report->Tables()[0].SetLogOnInfo({}, database, {}, {});
        return report;
    }

    std::unique_ptr<ReportFiles> m_files;
};

QTEST_MAIN(tst_Report)
#include "tst_Report.moc"
