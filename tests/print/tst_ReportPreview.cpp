#include "print/ReportPreview.h"

#include <QPrinter>
#include <QtWidgets>

#include "Rows.h"
#include "print/PageView.h"
#include "print/Printers.h"
#include "print/ReportFiles.h"
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
        Press(Qt::Key_End);
        QCOMPARE(m_view->CurrentPage(), m_pages->Count() - 1);
        QVERIFY(!Child<QToolButton>("cmdNext")->isEnabled());
        Press(Qt::Key_Home);
        QCOMPARE(m_view->CurrentPage(), 0);
        int presses = 0;
        for (; m_view->CurrentPage() == 0 && presses < 5; ++presses)
            Press(Qt::Key_PageDown);
        QVERIFY2(presses > 1 && presses < 4,
                 "a page taller than the window is not skipped half read");
        Press(Qt::Key_PageUp);
        QCOMPARE(m_view->CurrentPage(), 0);
        Child<QToolButton>("cmdNext")->click();
        QCOMPARE(TextOf("lblPage"), u"Page 2 of %1"_s.arg(m_pages->Count()));
        const double before = m_view->Zoom();
        Press(Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(m_view->Zoom(), before * 1.25);
        QCOMPARE(m_view->CurrentPage(), 1);
        Press(Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(m_view->Zoom(), before);
        for (int i = 0; i < 30; ++i)
            Press(Qt::Key_Minus, Qt::ControlModifier);
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
        Press(Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(m_view->Zoom(), narrow);
    }

    void Find_goesRoundAndScrolls() {
        Press(Qt::Key_F, Qt::ControlModifier);
        auto* box = Child<QLineEdit>("txtFind");
        QTRY_VERIFY(box->hasFocus());
        QTest::keyClicks(box, u"PATIENT 299"_s);
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(TextOf("lblFound"), u"1 of 1"_s);
        QCOMPARE(m_view->CurrentPage(), m_pages->Count() - 1);
        box->setText(u"patient 10"_s);  // 10 and 100 to 109
        m_view->GoToPage(0);
        const auto isFound = [&](int hit, Qt::KeyboardModifiers modifiers = {}) {
            QTest::keyClick(box, Qt::Key_F3, modifiers);
            return TextOf("lblFound") == u"%1 of 11"_s.arg(hit);
        };
        QVERIFY(isFound(1) && isFound(2));
        QVERIFY(m_view->CurrentPage() > 0);
        QVERIFY(isFound(1, Qt::ShiftModifier) && isFound(11, Qt::ShiftModifier) && isFound(1));
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
        QVERIFY(!TextOf("lblFound").startsWith(u"1 "));
        QCOMPARE(m_view->CurrentPage(), m_pages->Count() - 1);
        for (const QString& nobody : {u"nobody"_s, QString()}) {
            box->setText(nobody);
            QCOMPARE(TextOf("lblFound"), QString());
            m_preview->FindNext();
            m_preview->FindPrevious();
            QCOMPARE(TextOf("lblFound"), u"Not found"_s);
        }
    }

    void Painting_showsTextAndMarks() {
        const auto pixels = [this](const QColor& colour) {
            const QImage image = m_view->viewport()->grab().toImage();
            int count = 0;
            for (int place = 0; place < image.width() * image.height(); ++place)
                count += image.pixelColor(place % image.width(), place / image.width()) == colour;
            return count;
        };
        const QColor marked(255, 190, 70);
        QVERIFY(pixels(Qt::white) > 100000);
        QVERIFY(pixels(Qt::black) > 100);
        QCOMPARE(pixels(marked), 0);
        Child<QLineEdit>("txtFind")->setText(u"patient 5."_s);
        m_preview->FindNext();
        QVERIFY(pixels(marked) > 50);
    }

    void SaveAsPdf_writesWhatIsShown() {
        toolkit::FileNameScript names;
        names.Answer(m_files->Folder() + u"/list"_s);
        names.Answer({});
        Press(Qt::Key_S, Qt::ControlModifier);
        m_preview->SaveAsPdf();
        QCOMPARE(names.Asked(), QStringList(2, u"CAPD Visits- 3-9-2026.pdf"_s));
        const QByteArray pdf = Saved(u"list.pdf"_s);
        QVERIFY(pdf.startsWith("%PDF-") && pdf.trimmed().endsWith("%%EOF"));
        QVERIFY(pdf.contains("/Count " + QByteArray::number(m_pages->Count())));
        for (int page = 0; page < m_pages->Count(); ++page)
            QCOMPARE(WordsOn(u"list.pdf"_s, page), Words(m_pages->Text(page)));
    }

    void SaveAsPdf_tellsAFailureAndLeavesNoHalfFile() {
        const QDir folder(m_files->Folder());
        QVERIFY(folder.mkdir(u"folder.pdf"_s));
        const QStringList before = folder.entryList();
        for (const QString& file : {u"nowhere/list.pdf"_s, u"folder.pdf"_s}) {
            toolkit::FileNameScript names;
            names.Answer(folder.filePath(file));
            QVERIFY(Told([this] { m_preview->SaveAsPdf(); })
                        .startsWith(
                            u"The report could not be saved as %1."_s.arg(folder.filePath(file))));
            QCOMPARE(folder.entryList(), before);
        }
    }

    void Print_saysWhenThereIsNoPrinter_data() {
        Columns<int, QString>();
        Row("none", 0, "No printer is set up. Save as PDF instead.");
        Row("a service that hangs", 6,
            "The printers of this workstation do not answer. Save as PDF instead.");
    }

    void Print_saysWhenThereIsNoPrinter() {
        auto [hangs, said] = Fetch<int, QString>();
        print::Printers::Replace([hangs = hangs] {
            QThread::sleep(static_cast<unsigned long>(hangs));
            return QStringList();
        });
        QCOMPARE(Told([this] { Press(Qt::Key_P, Qt::ControlModifier); }), said);
    }

    void PrintPages_printsTheChosenPagesOnly() {
        QString fault;
        const auto print = [&](const QString& file, int first, int last) {
            auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
            printer->setOutputFileName(file);
            print::Printers::Start(m_pages, std::move(printer), first, last,
                                   [&fault](const QString& what) { fault = what; });
        };
        print(m_files->Folder() + u"/printed.pdf"_s, 1, 2);
        QTRY_VERIFY(Saved(u"printed.pdf"_s).trimmed().endsWith("%%EOF"));
        QVERIFY(Saved(u"printed.pdf"_s).contains("/Count 2"));
        for (const int page : {1, 2})
            QCOMPARE(WordsOn(u"printed.pdf"_s, page - 1), Words(m_pages->Text(page)));
        QCOMPARE(fault, QString());
        print(u"/nowhere/printed.pdf"_s, 0, 0);
        QTRY_VERIFY(fault.contains(u"cannot be started"));
    }

private:
    template <typename Widget>
    Widget* Child(const char* name) const {
        return m_preview->findChild<Widget*>(QLatin1String(name));
    }
    QString TextOf(const char* name) const { return Child<QLabel>(name)->text(); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(m_view, key, modifiers);
    }
    /// What the one box said that `act` brings.
    static QString Told(const std::function<void()>& act) {
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        act();
        return boxes.Leftovers().isEmpty() ? boxes.Shown()[0].Text : u"no box, or another"_s;
    }
    QByteArray Saved(const QString& name) const {
        QFile file(m_files->Folder() + u'/' + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QStringList Words(const QString& text) {
        QStringList words = text.simplified().split(u' ');
        words.sort();
        return words;
    }
    /// As a reader of the PDF finds them.
    QStringList WordsOn(const QString& name, int page) const {
        QProcess reader;
        reader.start(u"pdftotext"_s, {m_files->Folder() + u'/' + name, u"-"_s});
        reader.waitForFinished();
        return Words(QString::fromUtf8(reader.readAll()).section(u'\f', page, page));
    }

    std::shared_ptr<const print::ReportPages> m_pages;
    std::unique_ptr<ReportFiles> m_files;
    std::unique_ptr<print::ReportPreview> m_preview;
    print::PageView* m_view = nullptr;
};

QTEST_MAIN(tst_ReportPreview)
#include "tst_ReportPreview.moc"
