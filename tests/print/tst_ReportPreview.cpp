#include "print/ReportPreview.h"

#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QToolButton>
#include <QtTest>

#include "print/PageView.h"
#include "print/Printers.h"
#include "print/ReportFiles.h"
#include "print/ReportOutput.h"
#include "toolkit/FileNames.h"
#include "toolkit/MsgBox.h"

class tst_ReportPreview : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void Keys_movePagesAndZoom();
    void FitWidth_followsTheWindow();
    void Find_goesRoundAndScrolls();
    void Find_saysWhenNothingIsThere();
    void Painting_showsTextAndMarks();
    void SaveAsPdf_writesWhatIsShown();
    void SaveAsPdf_tellsAFailureAndLeavesNoHalfFile_data();
    void SaveAsPdf_tellsAFailureAndLeavesNoHalfFile();
    void Print_saysWhenThereIsNoPrinter_data();
    void Print_saysWhenThereIsNoPrinter();
    void PrintPages_printsTheChosenPagesOnly();

private:
    template <typename Widget>
    Widget* Child(const char* name) const {
        return m_preview->findChild<Widget*>(QString::fromLatin1(name));
    }
    QString Found() const { return Child<QLabel>("lblFound")->text(); }

    std::shared_ptr<const print::ReportPages> m_pages;
    std::unique_ptr<ReportFiles> m_files;
    std::unique_ptr<print::ReportPreview> m_preview;
    print::PageView* m_view = nullptr;
};

void tst_ReportPreview::init() {
    m_files = std::make_unique<ReportFiles>();
    m_files->Columns = {{QStringLiteral("Line"), embedded::ColumnKind::Integer}};
    m_files->RowCount = 300;
    m_files->Fill = [](int row, embedded::RowSink& sink) { sink.Integer(row); };
    m_pages = m_files->PagesOf(QStringLiteral(
        "<report><query>P</query><fields><field name=\"Line\"/></fields>"
        "<body><column heading=\"Patient\">patient {{Line}}.</column></body></report>"));
    m_preview = std::make_unique<print::ReportPreview>();
    m_preview->resize(900, 700);
    m_preview->SetReport(m_pages, QStringLiteral("CAPD Visits: 3/9/2026"));
    m_preview->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_preview.get()));
    m_view = Child<print::PageView>("pagView");
    m_view->setFocus();
}

void tst_ReportPreview::cleanup() {
    m_preview.reset();
    print::Printers::Replace({});
}

void tst_ReportPreview::Keys_movePagesAndZoom() {
    QVERIFY(m_pages->Count() > 3);
    QCOMPARE(m_view->CurrentPage(), 0);
    QTest::keyClick(m_view, Qt::Key_End);
    QCOMPARE(m_view->CurrentPage(), m_pages->Count() - 1);
    QVERIFY(!Child<QToolButton>("cmdNext")->isEnabled());
    QTest::keyClick(m_view, Qt::Key_Home);
    QCOMPARE(m_view->CurrentPage(), 0);
    int presses = 0;
    for (; m_view->CurrentPage() == 0 && presses < 5; ++presses)
        QTest::keyClick(m_view, Qt::Key_PageDown);
    QVERIFY2(presses > 1 && presses < 4, "a page taller than the window is not skipped half read");
    QTest::keyClick(m_view, Qt::Key_PageUp);
    QCOMPARE(m_view->CurrentPage(), 0);
    Child<QToolButton>("cmdNext")->click();
    QCOMPARE(Child<QLabel>("lblPage")->text(),
             QStringLiteral("Page 2 of %1").arg(m_pages->Count()));
    const double before = m_view->Zoom();
    QTest::keyClick(m_view, Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(m_view->Zoom(), before * 1.25);
    QCOMPARE(m_view->CurrentPage(), 1);
    QTest::keyClick(m_view, Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(m_view->Zoom(), before);
    for (int i = 0; i < 30; ++i)
        QTest::keyClick(m_view, Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(m_view->Zoom(), 0.25);
}

void tst_ReportPreview::FitWidth_followsTheWindow() {
    const double narrow = m_view->Zoom();
    m_preview->resize(1400, 700);
    QTRY_VERIFY(m_view->Zoom() > narrow * 1.3);
    m_view->SetZoom(1);
    m_preview->resize(900, 700);
    QTest::qWait(0);
    QCOMPARE(m_view->Zoom(), 1.0);
    Child<QToolButton>("cmdFitWidth")->click();
    QCOMPARE(m_view->Zoom(), narrow);
}

void tst_ReportPreview::Find_goesRoundAndScrolls() {
    QTest::keyClick(m_view, Qt::Key_F, Qt::ControlModifier);
    auto* box = Child<QLineEdit>("txtFind");
    QTRY_VERIFY(box->hasFocus());
    QTest::keyClicks(box, QStringLiteral("PATIENT 299"));
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(Found(), QStringLiteral("1 of 1"));
    QCOMPARE(m_view->CurrentPage(), m_pages->Count() - 1);
    box->setText(QStringLiteral("patient 10"));  // 10 and 100 to 109
    m_view->GoToPage(0);
    QTest::keyClick(box, Qt::Key_F3);
    QCOMPARE(Found(), QStringLiteral("1 of 11"));
    QTest::keyClick(box, Qt::Key_F3);
    QCOMPARE(Found(), QStringLiteral("2 of 11"));
    QVERIFY(m_view->CurrentPage() > 0);
    QTest::keyClick(box, Qt::Key_F3, Qt::ShiftModifier);
    QTest::keyClick(box, Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(Found(), QStringLiteral("11 of 11"));
    QTest::keyClick(box, Qt::Key_F3);
    QCOMPARE(Found(), QStringLiteral("1 of 11"));
    // The pages are turned from the box, too, and Esc ends the search before the window.
    m_view->GoToPage(1);
    const int top = m_view->verticalScrollBar()->value();
    QTest::keyClick(box, Qt::Key_PageUp);
    QVERIFY(m_view->verticalScrollBar()->value() < top);
    QTest::keyClick(box, Qt::Key_Escape);
    QVERIFY(m_view->hasFocus() && box->text().isEmpty());
    // A new search starts where the reader is, not at the top.
    m_view->GoToPage(m_pages->Count() - 1);
    box->setText(QStringLiteral("patient"));
    QTest::keyClick(box, Qt::Key_Return);
    QVERIFY(!Found().startsWith(u"1 "));
    QCOMPARE(m_view->CurrentPage(), m_pages->Count() - 1);
}

void tst_ReportPreview::Find_saysWhenNothingIsThere() {
    auto* box = Child<QLineEdit>("txtFind");
    box->setText(QStringLiteral("nobody"));
    m_preview->FindNext();
    m_preview->FindPrevious();
    QCOMPARE(Found(), QStringLiteral("Not found"));
    box->clear();
    QCOMPARE(Found(), QString());
    m_preview->FindNext();
    QCOMPARE(Found(), QStringLiteral("Not found"));
}

void tst_ReportPreview::Painting_showsTextAndMarks() {
    const auto pixels = [this](QRgb wanted) {
        const QImage image = m_view->viewport()->grab().toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += image.pixel(x, y) == wanted;
        }
        return count;
    };
    const QRgb marked = qRgb(255, 190, 70);
    QVERIFY(pixels(qRgb(255, 255, 255)) > 100000);
    QVERIFY(pixels(qRgb(0, 0, 0)) > 100);
    QCOMPARE(pixels(marked), 0);
    Child<QLineEdit>("txtFind")->setText(QStringLiteral("patient 5."));
    m_preview->FindNext();
    QVERIFY(pixels(marked) > 50);
}

void tst_ReportPreview::SaveAsPdf_writesWhatIsShown() {
    toolkit::FileNameScript names;
    toolkit::BoxScript boxes;
    const QString name = m_files->Folder() + QStringLiteral("/list");
    names.Answer(name);
    QTest::keyClick(m_view, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(names.Asked(), QStringList(QStringLiteral("CAPD Visits- 3-9-2026.pdf")));
    QFile file(name + QStringLiteral(".pdf"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray saved = file.readAll();
    QVERIFY(saved.contains("/Count " + QByteArray::number(m_pages->Count())));
    names.Answer(QString());
    m_preview->SaveAsPdf();
    QCOMPARE(names.Leftovers() + boxes.Leftovers(), QStringList());
}

void tst_ReportPreview::SaveAsPdf_tellsAFailureAndLeavesNoHalfFile_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("no such folder") << QStringLiteral("nowhere/list.pdf");
    QTest::newRow("a folder of that name") << QStringLiteral("folder.pdf");
}

void tst_ReportPreview::SaveAsPdf_tellsAFailureAndLeavesNoHalfFile() {
    QFETCH(QString, name);
    const QDir folder(m_files->Folder());
    QVERIFY(folder.mkdir(QStringLiteral("folder.pdf")));
    const QStringList before = folder.entryList();
    toolkit::FileNameScript names;
    toolkit::BoxScript boxes;
    names.Answer(folder.filePath(name));
    boxes.Answer(toolkit::BoxAnswer::Ok);
    m_preview->SaveAsPdf();
    QCOMPARE(names.Leftovers() + boxes.Leftovers(), QStringList());
    QVERIFY(boxes.Shown()[0].Text.startsWith(
        QStringLiteral("The report could not be saved as %1.").arg(folder.filePath(name))));
    QCOMPARE(folder.entryList(), before);
}

void tst_ReportPreview::Print_saysWhenThereIsNoPrinter_data() {
    QTest::addColumn<int>("hangs");
    QTest::addColumn<QString>("said");
    QTest::newRow("none") << 0 << QStringLiteral("No printer is set up. Save as PDF instead.");
    QTest::newRow("a service that hangs")
        << 6
        << QStringLiteral("The printers of this workstation do not answer. Save as PDF instead.");
}

void tst_ReportPreview::Print_saysWhenThereIsNoPrinter() {
    QFETCH(int, hangs);
    QFETCH(QString, said);
    print::Printers::Replace([hangs] {
        QThread::sleep(static_cast<unsigned long>(hangs));
        return QStringList();
    });
    toolkit::BoxScript boxes;
    boxes.Answer(toolkit::BoxAnswer::Ok);
    QTest::keyClick(m_view, Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(boxes.Leftovers(), QStringList());
    QCOMPARE(boxes.Shown()[0].Text, said);
}

void tst_ReportPreview::PrintPages_printsTheChosenPagesOnly() {
    const QString name = m_files->Folder() + QStringLiteral("/printed.pdf");
    auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFileName(name);
    printer->setPageSize(QPageSize(QPageSize::A5));
    QString fault;
    print::Printers::Start(m_pages, std::move(printer), 1, 2,
                           [&fault](const QString& what) { fault = what; });
    QByteArray printed;
    QTRY_VERIFY([&] {
        QFile file(name);
        printed = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        return printed.trimmed().endsWith("%%EOF");
    }());
    QVERIFY(printed.contains("/Count 2"));
    QCOMPARE(fault, QString());
    auto broken = std::make_shared<QPrinter>(QPrinter::HighResolution);
    broken->setOutputFileName(QStringLiteral("/nowhere/printed.pdf"));
    print::Printers::Start(m_pages, std::move(broken), 0, 0,
                           [&fault](const QString& what) { fault = what; });
    QTRY_VERIFY(fault.contains(u"cannot be started"));
}

QTEST_MAIN(tst_ReportPreview)
#include "tst_ReportPreview.moc"
