#include "WardWindow.h"

namespace {

const QString kSaveError = u"Error While Saving Pharmacy Requests  "_s;

}  // namespace

// The buttons of the request sheets: saving, cancelling, deleting.
class tst_WardSaving final : public WardTest {
    Q_OBJECT
private slots:
    void init() { Open(); }
    void cleanup() { Close(); }

    void Save_writesEachLineInOneTransaction() {
        EnterLines(1);
        m_window->Enter(u"sevel od - o'hara's"_s);
        m_window->Enter(u"1003"_s);
        base::Clock::Replace([] { return QDateTime({2026, 1, 31}, {0, 5, 9}); });
        const CommandLog log;
        m_window->Press(kSave);
        QCOMPARE(log.Sent.filter(u"'01/31/2026 12:05:09 AM','PH'"_s).size(), 2);
        QCOMPARE(log.Sent.filter(u"'O''HARA''S'"_s).size(), 1);
        QCOMPARE(m_session->Told.value(0),
                 u"2 requests are saved, 1 line was left out: O'HARA, Ana Luz"_s);
        QVERIFY(!m_window->Window.isVisible());
        // Pressed once more, nothing happens.
        m_window->Press(kSave);
        QCOMPARE(m_patient.Reloads, 1);
        QCOMPARE(Requests(), 2);
    }

    void Save_ofSuppliesForAnInPatient() {
        m_patient.Id = u"2026001"_s;
        Supplies window(m_patient);
        window.Enter(u"201 - 3 -"_s);
        base::Clock::Replace([] { return QDateTime({2026, 1, 31}, {12, 5, 9}); });
        const CommandLog log;
        window.Press(kSave);
        QVERIFY(log.Sent.value(1).contains(u"'2026001','I','201'"_s));
        QVERIFY(log.Sent.value(1).contains(u"'01/31/2026 12:05:09 PM','CS'"_s));
    }

    void Save_failsWhole() {
        EnterLines(5);
        for (int answered = 0; answered < 6; ++answered) {
            Answer(BoxAnswer::Ok);
            PluggedDriver::GoesAfter(answered);
            m_window->Press(kSave);
            PluggedDriver::Returns();
            QCOMPARE(Said().Text, kSaveError + u"The server is gone."_s);
            QVERIFY(m_window->Window.isVisible());
            QCOMPARE(m_window->Cell(5, 6), u"NO 5"_s);
            QCOMPARE(Requests(), 0);
        }
        QCOMPARE(m_patient.Reloads, 0);
        // With the server back, the same lines are saved.
        m_window->Press(kSave);
        QCOMPARE(Requests(), 5);
    }

    void Save_asksTheServerAgain() {
        EnterLines(2);
        // A colleague was faster.
        Request("1002", false);
        Answer(BoxAnswer::Ok);
        m_window->Press(kSave);
        QCOMPARE(Said().Text, kSaveError + u"AMLODIPINE 10 MG (1002) is already requested."_s);
        QCOMPARE(Requests(), 1);
        // A code that does not exist, for which the rest was typed all the same.
        m_window->Key(Qt::Key_Up);
        m_window->Key(Qt::Key_F3);
        Answer(BoxAnswer::Ok, 2);
        m_window->Enter(u"9999"_s);
        m_window->Key(Qt::Key_End);
        m_window->Enter(u"BID -"_s);
        m_window->Press(kSave);
        QCOMPARE(Said().Text,
                 kSaveError + u"The code 9999 is not of an item that can be requested."_s);
        QVERIFY(m_window->Window.isVisible());
        QCOMPARE(Requests(), 1);
    }

    void Reload_failsAfterTheCommit() {
        m_patient.ReloadFails = true;
        EnterLines(1);
        QVERIFY_EXCEPTION_THROWN(m_window->Press(kSave), base::DatabaseError);
        QVERIFY(!m_window->Window.isVisible());
        QCOMPARE(Requests(), 1);
    }

    void Cancel_writesNothing() {
        EnterLines(1);
        // Esc alone does not throw the lines away.
        m_window->Key(Qt::Key_Escape);
        QVERIFY(m_window->Window.isVisible());
        const CommandLog log;
        m_window->Press(kCancel);
        QVERIFY(!m_window->Window.isVisible());
        QCOMPARE(log.Sent, QStringList());
        QCOMPARE(m_patient.Reloads, 1);
    }

    void Delete_asks() {
        EnterLines(3);
        Answer(BoxAnswer::Ok);
        m_window->Press(kDelete);
        QCOMPARE(Said().Text, u"Row cannot be deleted because there are no entries yet."_s);
        m_window->Key(Qt::Key_Up);
        m_window->Key(Qt::Key_Up);
        for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
            Answer(answer);
            m_window->Press(kDelete);
            QCOMPARE(Said().Text, u"Are you sure to delete the request?"_s);
            QCOMPARE(m_window->Grid.Rows(), answer == BoxAnswer::No ? 5 : 4);
        }
        QCOMPARE(m_window->Line(2), u"2|1003|ATORVASTATIN 20 MG|BID|2|36|NO 3||18"_s);
        QCOMPARE(m_window->Box.text(), u"1003"_s);
        QVERIFY(m_window->Box.hasFocus());
        QCOMPARE(m_patient.Reloads, 3);
        // The next line goes on counting.
        m_window->Key(Qt::Key_Down);
        m_window->Enter(u"1004 BID"_s);
        QCOMPARE(m_window->Cell(4, 0), u" 4"_s);
    }

    void Delete_ofTheOnlyLineEmptiesIt() {
        m_window->Enter(u"1001"_s);
        Answer(BoxAnswer::Yes);
        m_window->Press(kDelete);
        QCOMPARE(m_window->Line(1), u"1||||||||"_s);
        QCOMPARE(m_window->Box.text(), QString());
    }

private:
    /// Lines of two medicines for each whole one; the remarks of each are its number.
    void EnterLines(int lines) {
        for (int line = 1; line <= lines; ++line)
            m_window->Enter(u"%1 BID - no_%2"_s.arg(1000 + line).arg(line));
    }
};

QTEST_MAIN(tst_WardSaving)
#include "tst_WardSaving.moc"
