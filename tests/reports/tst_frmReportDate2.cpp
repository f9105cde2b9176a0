#include "reports/frmReportDate2.h"

#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QtTest>
#include "toolkit/DateEdit.h"

#include "base/Clock.h"
#include "toolkit/MsgBox.h"

class tst_frmReportDate2 : public QObject {
    Q_OBJECT
private slots:
    void init();
    void Show_centresAndStartsToday();
    void Enter_keepsTypedDatesAcrossACancel();
    void Enter_refusesAnEndBeforeTheStart();
    void Close_countsAsCancelledHoweverItIsClosed();

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

void tst_frmReportDate2::init() {
    base::Clock::Replace([] { return QDateTime(QDate(2026, 11, 5), QTime(23, 59)); });
    m_dialog = std::make_unique<frmReportDate2>();
}

void tst_frmReportDate2::Show_centresAndStartsToday() {
    Run([this] {
        QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Report Date Entry"));
        QCOMPARE(Picker("dtStart")->text(), QStringLiteral("11/5/2026"));
        QCOMPARE(Picker("dtEnd")->text(), QStringLiteral("11/5/2026"));
        const QPoint middle = m_dialog->screen()->availableGeometry().center();
        QVERIFY((m_dialog->geometry().center() - middle).manhattanLength() <= 10);
        Button("cmdEnter")->click();
    });
    QCOMPARE(m_dialog->startdate(), QStringLiteral("11/5/2026"));
    QCOMPARE(m_dialog->enddate(), QStringLiteral("11/5/2026"));
    QVERIFY(!m_dialog->CloseForm());
}

void tst_frmReportDate2::Enter_keepsTypedDatesAcrossACancel() {
    Run([this] {
        toolkit::DateEdit* start = Picker("dtStart");
        QTest::keyClicks(start, QStringLiteral("9/1/2025"));
        QTest::keyClick(start, Qt::Key_Return);
    });
    QCOMPARE(m_dialog->startdate(), QStringLiteral("9/1/2025"));
    QCOMPARE(m_dialog->enddate(), QStringLiteral("11/5/2026"));
    Run([this] {
        QCOMPARE(Picker("dtStart")->text(), QStringLiteral("11/5/2026"));
        Button("cmdClose")->click();
    });
    QVERIFY(m_dialog->CloseForm());
    QCOMPARE(m_dialog->startdate(), QStringLiteral("9/1/2025"));
}

void tst_frmReportDate2::Enter_refusesAnEndBeforeTheStart() {
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
    QCOMPARE(boxes.Shown()[0].Text, QStringLiteral("The end date is before the start date."));
    QCOMPARE(m_dialog->startdate(), QStringLiteral("11/4/2026"));
}

void tst_frmReportDate2::Close_countsAsCancelledHoweverItIsClosed() {
    Run([this] { QTest::keyClick(Picker("dtEnd"), Qt::Key_Escape); });
    QVERIFY(m_dialog->CloseForm());
    Run([this] { Button("cmdEnter")->click(); });
    QVERIFY(!m_dialog->CloseForm());
    Run([this] { m_dialog->close(); });
    QVERIFY(m_dialog->CloseForm());
}

QTEST_MAIN(tst_frmReportDate2)
#include "tst_frmReportDate2.moc"
