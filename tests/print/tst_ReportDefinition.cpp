#include "Rows.h"
#include "print/ReportDefinition.h"

#include <QtTest>

#include "print/ReportFiles.h"

using namespace Qt::StringLiterals;

class tst_ReportDefinition : public QObject {
    Q_OBJECT
private slots:
    void Read_refusesABrokenFile_data() {
        Columns<QString, QString>();
        const QString query = u"<query>P {{param.A}}</query>"_s;
        const auto row = [&](const char* name, const QString& inside, const QString& fault) {
            QTest::newRow(name) << u"<report>\n<parameters><parameter name=\"A\"/>"
                                   "</parameters>\n<fields><field name=\"Name\"/>"
                                   "</fields>\n%1\n%2</report>"_s.arg(query, inside)
                                << fault;
        };
        QTest::newRow("no XML") << u"Patients: {{Name}}"_s << u"test.rpt, line 1: "_s;
        QTest::newRow("empty") << QString() << u"test.rpt, line "_s;
        QTest::newRow("another root") << u"<html/>"_s << u"line 1: unknown element <html>"_s;
        QTest::newRow("cut off") << u"<report>\n<query>P</query>\n<header><b>x</b>"_s
                                 << u"test.rpt, line 3: "_s;
        QTest::newRow("no query") << u"<report>\n<title>T</title></report>"_s
                                  << u"the report has no query"_s;
        QTest::newRow("paper") << u"<report paper=\"A17\"/>"_s << u"unknown paper \"A17\""_s;
        QTest::newRow("margins eat the page") << u"<report paper=\"A5\" margins=\"70 10 70 10\"/>"_s
                                              << u"line 1: the margins leave no room"_s;
        row("unknown element", u"<heading/>"_s, u"line 5: unknown element <heading>"_s);
        row("unknown HTML", u"<header>\n<tabel/></header>"_s, u"line 6: unknown element <tabel>"_s);
        row("unknown attribute", u"<header hight=\"3\"/>"_s,
            u"line 5: unknown attribute \"hight\" of <header>"_s);
        row("unknown field", u"<body>\n<column>\n\n{{Naem}}</column></body>"_s,
            u"line 8: unknown field \"Naem\""_s);
        row("unknown field in an attribute", u"<footer><p align=\"{{Side}}\">x</p></footer>"_s,
            u"line 5: unknown field \"Side\""_s);
        row("unknown parameter", u"<header>{{param.B}}</header>"_s,
            u"line 5: unknown parameter \"B\""_s);
        row("sum of a text", u"<summary>{{sum.Name}}</summary>"_s,
            u"line 5: \"Name\" has no sum"_s);
        row("group by nothing known", u"<group by=\"Ward\"/>"_s,
            u"line 5: unknown field \"Ward\""_s);
        row("three braces", u"<header>{{{Name}}}</header>"_s,
            u"line 5: placeholder not understood: {{{Name}}}"_s);
        row("unclosed braces", u"<header>a\n{{Name}</header>"_s,
            u"line 6: placeholder not understood"_s);
        row("unclosed section", u"<header>{{#Name}}x</header>"_s, u"line 5: Unclosed section"_s);
        row("totals beyond the body",
            u"<body><column/></body>\n<summary totals=\"yes\"><cell span=\"2\"/></summary>"_s,
            u"line 6: the totals are wider than the body"_s);
        row("text after the end", u"</report><report>"_s, u"test.rpt, line 5: "_s);
    }

    void Read_refusesABrokenFile() {
        auto [xml, fault] = Fetch<QString, QString>();
        ReportFiles files;
        const QString name = files.Write(xml);
        const QString said = FaultOf([&] { print::ReadReportDefinition(name); });
        QVERIFY2(said.startsWith(u"test.rpt, line ") && said.contains(fault), qPrintable(said));
    }

    void Read_namesAMissingFile() {
        QCOMPARE(FaultOf([] { print::ReadReportDefinition(u"/nowhere/Slip.rpt"_s); }),
                 u"File not found: /nowhere/Slip.rpt"_s);
    }

    void Read_takesNamesDefinedBelowTheirUse() {
        ReportFiles files;
        const auto report = print::ReadReportDefinition(files.Write(
            u"<report paper=\"216x140\"><header>{{Name}} {{param.A}}</header><query>P</query>"
            "<fields><field name=\"Name\"/></fields><parameters><parameter "
            "name=\"A\"/></parameters>"
            "</report>"_s));
        QCOMPARE(report.Header.Html.References().size(), size_t(2));
        QCOMPARE(report.Page.fullRect(QPageLayout::Millimeter).size().toSize(), QSize(216, 140));
    }

    void Read_alignsNumbersRightUnlessTold() {
        ReportFiles files;
        const auto report = print::ReadReportDefinition(files.Write(
            u"<report><query>P</query><fields><field name=\"Name\"/><field name=\"Amount\" "
            "format=\"money\"/></fields><body><column>{{Amount}}</column><column>{{Name}}</column>"
            "<column align=\"center\">{{Amount}}</column></body><summary totals=\"yes\">"
            "<cell>{{sum.amount}}</cell></summary></report>"_s));
        QCOMPARE(report.Columns[0].Align, Qt::Alignment(Qt::AlignRight));
        QCOMPARE(report.Columns[1].Align, Qt::Alignment(Qt::AlignLeft));
        QCOMPARE(report.Columns[2].Align, Qt::Alignment(Qt::AlignHCenter));
        QCOMPARE(report.Summary.Cells[0].Align, Qt::Alignment(Qt::AlignRight));
    }
};

QTEST_MAIN(tst_ReportDefinition)
#include "tst_ReportDefinition.moc"
