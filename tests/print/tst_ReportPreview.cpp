#include "Rows.h"
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

using namespace Qt::StringLiterals;

class tst_ReportPreview : public QObject {
    Q_OBJECT
private slots:
    void init() {
        m_files = std::make_unique<ReportFiles>();
        m_files->Columns = {{u"Line"_s, embedded::ColumnKind::Integer}};
        m_files->RowCount = 300;
        m_files->Fill = [](int row, embedded::RowSink& sink) { sink.Integer(row); };
        m_pages = m_files->PagesOf(
            u"<report><query>P</query><fields><field name=\"Line\"/></fields>"
            "<body><column heading=\"Patient\">patient {{Line}}.</column></body></report>"_s);
        m_preview = std::make_unique<print::ReportPreview>();
        m_preview->resize(900, 700);
        m_preview->SetReport(m_pages, u"CAPD Visits: 3/9/2026"_s);
        m_preview->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_preview.get()));
        m_view = Child<print::PageView>("pagView");
        m_view->setFocus();
    }

    void cleanup() {
        m_preview.reset();
        print::Printers::Replace({});
    }

    void Keys_movePagesAndZoom() {
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
        QVERIFY2(presses > 1 && presses < 4,
                 "a page taller than the window is not skipped half read");
        QTest::keyClick(m_view, Qt::Key_PageUp);
        QCOMPARE(m_view->CurrentPage(), 0);
        Child<QToolButton>("cmdNext")->click();
        QCOMPARE(Child<QLabel>("lblPage")->text(), u"Page 2 of %1"_s.arg(m_pages->Count()));
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

    void FitWidth_followsTheWindow() {
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

    void Find_goesRoundAndScrolls() {
        QTest::keyClick(m_view, Qt::Key_F, Qt::ControlModifier);
        auto* box = Child<QLineEdit>("txtFind");
        QTRY_VERIFY(box->hasFocus());
        QTest::keyClicks(box, u"PATIENT 299"_s);
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(Found(), u"1 of 1"_s);
        QCOMPARE(m_view->CurrentPage(), m_pages->Count() - 1);
        box->setText(u"patient 10"_s);  // 10 and 100 to 109
        m_view->GoToPage(0);
        QTest::keyClick(box, Qt::Key_F3);
        QCOMPARE(Found(), u"1 of 11"_s);
        QTest::keyClick(box, Qt::Key_F3);
        QCOMPARE(Found(), u"2 of 11"_s);
        QVERIFY(m_view->CurrentPage() > 0);
        QTest::keyClick(box, Qt::Key_F3, Qt::ShiftModifier);
        QTest::keyClick(box, Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(Found(), u"11 of 11"_s);
        QTest::keyClick(box, Qt::Key_F3);
        QCOMPARE(Found(), u"1 of 11"_s);
        // The pages are turned from the box, too, and Esc ends the search before the window.
        m_view->GoToPage(1);
        const int top = m_view->verticalScrollBar()->value();
        QTest::keyClick(box, Qt::Key_PageUp);
        QVERIFY(m_view->verticalScrollBar()->value() < top);
        QTest::keyClick(box, Qt::Key_Escape);
        QVERIFY(m_view->hasFocus() && box->text().isEmpty());
        // A new search starts where the reader is, not at the top.
        m_view->GoToPage(m_pages->Count() - 1);
        box->setText(u"patient"_s);
        QTest::keyClick(box, Qt::Key_Return);
        QVERIFY(!Found().startsWith(u"1 "));
        QCOMPARE(m_view->CurrentPage(), m_pages->Count() - 1);
    }

    void Find_saysWhenNothingIsThere() {
        auto* box = Child<QLineEdit>("txtFind");
        box->setText(u"nobody"_s);
        m_preview->FindNext();
        m_preview->FindPrevious();
        QCOMPARE(Found(), u"Not found"_s);
        box->clear();
        QCOMPARE(Found(), QString());
        m_preview->FindNext();
        QCOMPARE(Found(), u"Not found"_s);
    }

    void Painting_showsTextAndMarks() {
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
        Child<QLineEdit>("txtFind")->setText(u"patient 5."_s);
        m_preview->FindNext();
        QVERIFY(pixels(marked) > 50);
    }

    void SaveAsPdf_writesWhatIsShown() {
        toolkit::FileNameScript names;
        toolkit::BoxScript boxes;
        const QString name = m_files->Folder() + u"/list"_s;
        names.Answer(name);
        QTest::keyClick(m_view, Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(names.Asked(), QStringList(u"CAPD Visits- 3-9-2026.pdf"_s));
        QFile file(name + u".pdf"_s);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray saved = file.readAll();
        QVERIFY(saved.contains("/Count " + QByteArray::number(m_pages->Count())));
        names.Answer(QString());
        m_preview->SaveAsPdf();
        QCOMPARE(names.Leftovers() + boxes.Leftovers(), QStringList());
    }

    void SaveAsPdf_tellsAFailureAndLeavesNoHalfFile_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("no such folder") << u"nowhere/list.pdf"_s;
        QTest::newRow("a folder of that name") << u"folder.pdf"_s;
    }

    void SaveAsPdf_tellsAFailureAndLeavesNoHalfFile() {
        QFETCH(QString, name);
        const QDir folder(m_files->Folder());
        QVERIFY(folder.mkdir(u"folder.pdf"_s));
        const QStringList before = folder.entryList();
        toolkit::FileNameScript names;
        toolkit::BoxScript boxes;
        names.Answer(folder.filePath(name));
        boxes.Answer(toolkit::BoxAnswer::Ok);
        m_preview->SaveAsPdf();
        QCOMPARE(names.Leftovers() + boxes.Leftovers(), QStringList());
        QVERIFY(boxes.Shown()[0].Text.startsWith(
            u"The report could not be saved as %1."_s.arg(folder.filePath(name))));
        QCOMPARE(folder.entryList(), before);
    }

    void Print_saysWhenThereIsNoPrinter_data() {
        Columns<int, QString>();
        QTest::newRow("none") << 0 << u"No printer is set up. Save as PDF instead."_s;
        QTest::newRow("a service that hangs")
            << 6 << u"The printers of this workstation do not answer. Save as PDF instead."_s;
    }

    void Print_saysWhenThereIsNoPrinter() {
        auto [hangs, said] = Fetch<int, QString>();
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

    void PrintPages_printsTheChosenPagesOnly() {
        const QString name = m_files->Folder() + u"/printed.pdf"_s;
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
        broken->setOutputFileName(u"/nowhere/printed.pdf"_s);
        print::Printers::Start(m_pages, std::move(broken), 0, 0,
                               [&fault](const QString& what) { fault = what; });
        QTRY_VERIFY(fault.contains(u"cannot be started"));
    }

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

QTEST_MAIN(tst_ReportPreview)
#include "tst_ReportPreview.moc"
