#include "print/ReportDefinition.h"

#include "Rows.h"
#include "print/ReportFiles.h"

using namespace Qt::StringLiterals;

class tst_ReportDefinition : public QObject {
    Q_OBJECT
private slots:
    void Read_refusesABrokenFile_data() {
        Columns<QString, QString>();
        Row("no XML", "Patients: {{Name}}", "line 1: ");
        Row("empty", "", "line ");
        Row("cut off", "<report>\n<query>P</query>\n<header><b>x</b>", "line 3: ");
        const auto whole = [](const char* file, const char* fault) { Row(fault, file, fault); };
        whole("<html/>", "line 1: unknown element <html>");
        whole("<report>\n<title>T</title></report>", "line 2: the report has no query");
        whole("<report paper=\"A17\"/>", "line 1: unknown paper \"A17\"");
        whole("<report paper=\"9xA\"/>", "line 1: \"A\" is not a size");
        whole("<report orientation=\"up\"/>", "line 1: unknown orientation \"up\"");
        whole("<report margins=\"9 9 9\"/>", "line 1: margins are left, top, right and bottom");
        whole("<report paper=\"A5\" margins=\"70 10 70 10\"/>",
              "line 1: the margins leave no room");
        whole("<report><query>{{param.A}}</query></report>",
              "line 1: unknown parameter \"param.A\"");
        whole("<report><query>{{#database}}x{{/database}}</query></report>",
              "line 1: a query has no conditional parts");
        // Line 5 on, behind a parameter A and a field Name.
        const auto part = [](const QString& inside, const char* fault) {
            Row(fault,
                u"<report>\n<parameters><parameter name=\"A\"/></parameters>\n<fields><field "
                "name=\"Name\"/></fields>\n<query>P {{param.A}}</query>\n%1</report>"_s.arg(inside),
                fault);
        };
        part(u"<heading/>"_s, "line 5: unknown element <heading>");
        part(u"<header>\n<tabel/></header>"_s, "line 6: unknown element <tabel>");
        part(u"<header hight=\"3\"/>"_s, "line 5: unknown attribute \"hight\" of <header>");
        part(u"<body>\n<column>\n\n{{Naem}}</column></body>"_s, "line 8: unknown field \"Naem\"");
        part(u"<footer><p align=\"{{Side}}\">x</p></footer>"_s, "line 5: unknown field \"Side\"");
        part(u"<body><column align=\"up\"/></body>"_s, "line 5: unknown alignment \"up\"");
        part(u"<fields><field name=\"B\" format=\"x\"/></fields>"_s,
             "line 5: unknown format \"x\"");
        part(u"<header>{{param.B}}</header>"_s, "line 5: unknown parameter \"B\"");
        part(u"<summary>{{sum.Name}}</summary>"_s, "line 5: \"Name\" has no sum");
        part(u"<group by=\"Ward\"/>"_s, "line 5: unknown field \"Ward\"");
        part(u"<group/>"_s, "line 5: <group> has no by");
        part(u"<header>{{{Name}}}</header>"_s, "line 5: placeholder not understood: {{{Name}}}");
        part(u"<header>a\n{{Name}</header>"_s, "line 6: placeholder not understood");
        part(u"<header>{{#Name}}x</header>"_s, "line 5: Unclosed section");
        part(u"<body><column/></body>\n<summary totals=\"yes\"><cell span=\"2\"/></summary>"_s,
             "line 6: the totals are wider than the body");
        part(u"</report><report>"_s, "line 5: ");
    }

    void Read_refusesABrokenFile() {
        auto [xml, fault] = Fetch<QString, QString>();
        ReportFiles files;
        const QString name = files.Write(xml);
        const QString said = FaultOf([&] { print::ReadReportDefinition(name); });
        QVERIFY2(said.startsWith(u"test.rpt, "_s + fault), qPrintable(said));
    }

    void Read_namesAMissingFile() {
        QCOMPARE(FaultOf([] { print::ReadReportDefinition(u"/nowhere/Slip.rpt"_s); }),
                 u"File not found: /nowhere/Slip.rpt"_s);
    }

    void Read_takesNamesDefinedBelowTheirUseAndAlignsNumbersRight() {
        ReportFiles files;
        const auto report = print::ReadReportDefinition(files.Write(
            u"<report paper=\"216x140\"><header>{{Name}} {{param.A}}</header><query>P</query>"
            "<body><column>{{Amount}}</column><column>{{Name}}</column>"
            "<column align=\"center\">{{Amount}}</column></body>"
            "<summary totals=\"yes\"><cell>{{sum.amount}}</cell></summary>"
            "<fields><field name=\"Name\"/><field name=\"Amount\" format=\"money\"/></fields>"
            "<parameters><parameter name=\"A\"/></parameters></report>"_s));
        QCOMPARE(report.Header.Html.References().size(), size_t(2));
        QCOMPARE(report.Page.fullRect(QPageLayout::Millimeter).size().toSize(), QSize(216, 140));
        QCOMPARE(report.Columns[0].Align, Qt::Alignment(Qt::AlignRight));
        QCOMPARE(report.Columns[1].Align, Qt::Alignment(Qt::AlignLeft));
        QCOMPARE(report.Columns[2].Align, Qt::Alignment(Qt::AlignHCenter));
        QCOMPARE(report.Summary.Cells[0].Align, Qt::Alignment(Qt::AlignRight));
    }
};

QTEST_MAIN(tst_ReportDefinition)
#include "tst_ReportDefinition.moc"
