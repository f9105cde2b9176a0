#include "print/ReportDefinition.h"

#include <QtTest>

#include "print/ReportFiles.h"

class tst_ReportDefinition : public QObject {
    Q_OBJECT
private slots:
    void Read_refusesABrokenFile_data();
    void Read_refusesABrokenFile();
    void Read_namesAMissingFile();
    void Read_takesNamesDefinedBelowTheirUse();
    void Read_alignsNumbersRightUnlessTold();
};

void tst_ReportDefinition::Read_refusesABrokenFile_data() {
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("fault");
    const QString query = QStringLiteral("<query>P {{param.A}}</query>");
    const auto row = [&](const char* name, const QString& inside, const QString& fault) {
        QTest::newRow(name) << QStringLiteral(
                                   "<report>\n<parameters><parameter name=\"A\"/>"
                                   "</parameters>\n<fields><field name=\"Name\"/>"
                                   "</fields>\n%1\n%2</report>")
                                   .arg(query, inside)
                            << fault;
    };
    QTest::newRow("no XML") << QStringLiteral("Patients: {{Name}}")
                            << QStringLiteral("test.rpt, line 1: ");
    QTest::newRow("empty") << QString() << QStringLiteral("test.rpt, line ");
    QTest::newRow("another root") << QStringLiteral("<html/>")
                                  << QStringLiteral("line 1: unknown element <html>");
    QTest::newRow("cut off") << QStringLiteral("<report>\n<query>P</query>\n<header><b>x</b>")
                             << QStringLiteral("test.rpt, line 3: ");
    QTest::newRow("no query") << QStringLiteral("<report>\n<title>T</title></report>")
                              << QStringLiteral("the report has no query");
    QTest::newRow("paper") << QStringLiteral("<report paper=\"A17\"/>")
                           << QStringLiteral("unknown paper \"A17\"");
    QTest::newRow("margins eat the page")
        << QStringLiteral("<report paper=\"A5\" margins=\"70 10 70 10\"/>")
        << QStringLiteral("line 1: the margins leave no room");
    row("unknown element", QStringLiteral("<heading/>"),
        QStringLiteral("line 5: unknown element <heading>"));
    row("unknown HTML", QStringLiteral("<header>\n<tabel/></header>"),
        QStringLiteral("line 6: unknown element <tabel>"));
    row("unknown attribute", QStringLiteral("<header hight=\"3\"/>"),
        QStringLiteral("line 5: unknown attribute \"hight\" of <header>"));
    row("unknown field", QStringLiteral("<body>\n<column>\n\n{{Naem}}</column></body>"),
        QStringLiteral("line 8: unknown field \"Naem\""));
    row("unknown field in an attribute",
        QStringLiteral("<footer><p align=\"{{Side}}\">x</p></footer>"),
        QStringLiteral("line 5: unknown field \"Side\""));
    row("unknown parameter", QStringLiteral("<header>{{param.B}}</header>"),
        QStringLiteral("line 5: unknown parameter \"B\""));
    row("sum of a text", QStringLiteral("<summary>{{sum.Name}}</summary>"),
        QStringLiteral("line 5: \"Name\" has no sum"));
    row("group by nothing known", QStringLiteral("<group by=\"Ward\"/>"),
        QStringLiteral("line 5: unknown field \"Ward\""));
    row("three braces", QStringLiteral("<header>{{{Name}}}</header>"),
        QStringLiteral("line 5: placeholder not understood: {{{Name}}}"));
    row("unclosed braces", QStringLiteral("<header>a\n{{Name}</header>"),
        QStringLiteral("line 6: placeholder not understood"));
    row("unclosed section", QStringLiteral("<header>{{#Name}}x</header>"),
        QStringLiteral("line 5: Unclosed section"));
    row("totals beyond the body",
        QStringLiteral(
            "<body><column/></body>\n<summary totals=\"yes\"><cell span=\"2\"/></summary>"),
        QStringLiteral("line 6: the totals are wider than the body"));
    row("text after the end", QStringLiteral("</report><report>"),
        QStringLiteral("test.rpt, line 5: "));
}

void tst_ReportDefinition::Read_refusesABrokenFile() {
    QFETCH(QString, xml);
    QFETCH(QString, fault);
    ReportFiles files;
    const QString name = files.Write(xml);
    const QString said = FaultOf([&] { print::ReadReportDefinition(name); });
    QVERIFY2(said.startsWith(u"test.rpt, line ") && said.contains(fault), qPrintable(said));
}

void tst_ReportDefinition::Read_namesAMissingFile() {
    QCOMPARE(FaultOf([] { print::ReadReportDefinition(QStringLiteral("/nowhere/Slip.rpt")); }),
             QStringLiteral("File not found: /nowhere/Slip.rpt"));
}

void tst_ReportDefinition::Read_takesNamesDefinedBelowTheirUse() {
    ReportFiles files;
    const auto report = print::ReadReportDefinition(files.Write(QStringLiteral(
        "<report paper=\"216x140\"><header>{{Name}} {{param.A}}</header><query>P</query>"
        "<fields><field name=\"Name\"/></fields><parameters><parameter name=\"A\"/></parameters>"
        "</report>")));
    QCOMPARE(report.Header.Html.References().size(), size_t(2));
    QCOMPARE(report.Page.fullRect(QPageLayout::Millimeter).size().toSize(), QSize(216, 140));
}

void tst_ReportDefinition::Read_alignsNumbersRightUnlessTold() {
    ReportFiles files;
    const auto report = print::ReadReportDefinition(files.Write(QStringLiteral(
        "<report><query>P</query><fields><field name=\"Name\"/><field name=\"Amount\" "
        "format=\"money\"/></fields><body><column>{{Amount}}</column><column>{{Name}}</column>"
        "<column align=\"center\">{{Amount}}</column></body><summary totals=\"yes\">"
        "<cell>{{sum.amount}}</cell></summary></report>")));
    QCOMPARE(report.Columns[0].Align, Qt::Alignment(Qt::AlignRight));
    QCOMPARE(report.Columns[1].Align, Qt::Alignment(Qt::AlignLeft));
    QCOMPARE(report.Columns[2].Align, Qt::Alignment(Qt::AlignHCenter));
    QCOMPARE(report.Summary.Cells[0].Align, Qt::Alignment(Qt::AlignRight));
}

QTEST_MAIN(tst_ReportDefinition)
#include "tst_ReportDefinition.moc"
