#include "reports/frmReportDate2.h"

#include <QtTest>
#include <QtWidgets>

#include "base/Clock.h"
#include "toolkit/DateEdit.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;

class tst_frmReportDate2 : public QObject {
    Q_OBJECT
private slots:
    void init() {
        base::Clock::Replace([] { return QDateTime(QDate(2026, 11, 5), QTime(23, 59)); });
        m_dialog = std::make_unique<frmReportDate2>();
        m_start = m_dialog->findChild<toolkit::DateEdit*>(u"dtStart"_s);
        m_end = m_dialog->findChild<toolkit::DateEdit*>(u"dtEnd"_s);
    }

    void Enter_keepsTypedDatesAcrossACancel() {
        const auto enter = [this] {
            QTest::keyClicks(m_start, u"9/1/2025"_s);
            QTest::keyClick(m_start, Qt::Key_Return);
        };
        QCOMPARE(After(enter), u"9/1/2025 to 11/5/2026"_s);
        const auto leave = [this] {
            QCOMPARE(m_start->text(), u"11/5/2026"_s);
            Click("cmdClose");
        };
        QCOMPARE(After(leave), u"left: 9/1/2025 to 11/5/2026"_s);
    }

    void Enter_refusesDatesInNoOrder() {
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        boxes.Answer(toolkit::BoxAnswer::Ok);
        const auto enter = [this] {
            m_end->setDate(QDate(2026, 11, 4));
            Click("cmdEnter");
            m_start->setText(u"2/30/2026"_s);
            Click("cmdEnter");
            QVERIFY(m_dialog->isVisible() && m_dialog->startdate().isEmpty());
            m_start->setDate(QDate(2026, 11, 4));
            Click("cmdEnter");
        };
        QCOMPARE(After(enter), u"11/4/2026 to 11/4/2026"_s);
        QCOMPARE(boxes.Leftovers(), QStringList());
        QCOMPARE(boxes.Shown()[0].Text, u"The end date is before the start date."_s);
        QCOMPARE(boxes.Shown()[1].Text, u"Please enter a date."_s);
    }

    void Close_countsAsCancelledHoweverItIsClosed() {
        QCOMPARE(After([this] { QTest::keyClick(m_end, Qt::Key_Escape); }), u"left:  to "_s);
        QCOMPARE(After([this] { Click("cmdEnter"); }), u"11/5/2026 to 11/5/2026"_s);
        QCOMPARE(After([this] { m_dialog->close(); }), u"left: 11/5/2026 to 11/5/2026"_s);
    }

private:
    /// What the dialog says once it is shown modal and `act` has closed it.
    QString After(const std::function<void()>& act) {
        QTimer::singleShot(0, m_dialog.get(), [&] {
            act();
            if (m_dialog->isVisible()) {
                QTest::qFail("the dialog was left open", __FILE__, __LINE__);
                m_dialog->reject();
            }
        });
        m_dialog->exec();
        const QString days = u"%1 to %2"_s.arg(m_dialog->startdate(), m_dialog->enddate());
        return m_dialog->CloseForm() ? u"left: "_s + days : days;
    }
    void Click(const char* name) const {
        m_dialog->findChild<QPushButton*>(QLatin1String(name))->click();
    }

    std::unique_ptr<frmReportDate2> m_dialog;
    toolkit::DateEdit* m_start = nullptr;
    toolkit::DateEdit* m_end = nullptr;
};

QTEST_MAIN(tst_frmReportDate2)
#include "tst_frmReportDate2.moc"
