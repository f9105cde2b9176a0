#include "reports/frmReportDate2.h"

#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QtTest>
#include "toolkit/DateEdit.h"

#include "base/Clock.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;

class tst_frmReportDate2 : public QObject {
    Q_OBJECT
private slots:
    void init() {
        base::Clock::Replace([] { return QDateTime(QDate(2026, 11, 5), QTime(23, 59)); });
        m_dialog = std::make_unique<frmReportDate2>();
    }

    void Show_centresAndStartsToday() {
        Run([this] {
            QCOMPARE(m_dialog->windowTitle(), u"Report Date Entry"_s);
            QCOMPARE(Picker("dtStart")->text(), u"11/5/2026"_s);
            QCOMPARE(Picker("dtEnd")->text(), u"11/5/2026"_s);
            const QPoint middle = m_dialog->screen()->availableGeometry().center();
            QVERIFY((m_dialog->geometry().center() - middle).manhattanLength() <= 10);
            Button("cmdEnter")->click();
        });
        QCOMPARE(m_dialog->startdate(), u"11/5/2026"_s);
        QCOMPARE(m_dialog->enddate(), u"11/5/2026"_s);
        QVERIFY(!m_dialog->CloseForm());
    }

    void Enter_keepsTypedDatesAcrossACancel() {
        Run([this] {
            toolkit::DateEdit* start = Picker("dtStart");
            QTest::keyClicks(start, u"9/1/2025"_s);
            QTest::keyClick(start, Qt::Key_Return);
        });
        QCOMPARE(m_dialog->startdate(), u"9/1/2025"_s);
        QCOMPARE(m_dialog->enddate(), u"11/5/2026"_s);
        Run([this] {
            QCOMPARE(Picker("dtStart")->text(), u"11/5/2026"_s);
            Button("cmdClose")->click();
        });
        QVERIFY(m_dialog->CloseForm());
        QCOMPARE(m_dialog->startdate(), u"9/1/2025"_s);
    }

    void Enter_refusesAnEndBeforeTheStart() {
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        Run([this] {
            Picker("dtEnd")->setDate(QDate(2026, 11, 4));
            Button("cmdEnter")->click();
            QVERIFY(m_dialog->isVisible());
            QCOMPARE(m_dialog->startdate(), QString());
            Picker("dtStart")->setDate(QDate(2026, 11, 4));
            Button("cmdEnter")->click();
        });
        QCOMPARE(boxes.Leftovers(), QStringList());
        QCOMPARE(boxes.Shown()[0].Text, u"The end date is before the start date."_s);
        QCOMPARE(m_dialog->startdate(), u"11/4/2026"_s);
    }

    void Close_countsAsCancelledHoweverItIsClosed() {
        Run([this] { QTest::keyClick(Picker("dtEnd"), Qt::Key_Escape); });
        QVERIFY(m_dialog->CloseForm());
        Run([this] { Button("cmdEnter")->click(); });
        QVERIFY(!m_dialog->CloseForm());
        Run([this] { m_dialog->close(); });
        QVERIFY(m_dialog->CloseForm());
    }

private:
    /// Shows the dialog modal and hands it over once it is on the screen.
    void Run(const std::function<void()>& act) {
        QTimer::singleShot(0, m_dialog.get(), [&] {
            act();
            if (m_dialog->isVisible()) {
                QTest::qFail("the dialog was left open", __FILE__, __LINE__);
                m_dialog->reject();
            }
        });
        m_dialog->exec();
    }
    toolkit::DateEdit* Picker(const char* name) const {
        return m_dialog->findChild<toolkit::DateEdit*>(QString::fromLatin1(name));
    }
    QPushButton* Button(const char* name) const {
        return m_dialog->findChild<QPushButton*>(QString::fromLatin1(name));
    }

    std::unique_ptr<frmReportDate2> m_dialog;
};

QTEST_MAIN(tst_frmReportDate2)
#include "tst_frmReportDate2.moc"
