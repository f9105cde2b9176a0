#include <QRegularExpression>

#include "CommandLog.h"
#include "WardSession.h"
#include "base/Clock.h"
#include "session/Saved.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;
using toolkit::BoxAnswer;
using toolkit::BoxIcon;
using toolkit::BoxScript;

namespace {

enum Button { Save, Cancel, Delete };

const QString kSaveError = u"Error While Saving Pharmacy Requests  "_s;

/// Lines of two medicines for each whole one; the remarks of each are its number.
void EnterLines(WardWindow<frmPHEntry>& window, int lines) {
    for (int line = 1; line <= lines; ++line)
        window.Enter({QString::number(1000 + line), u"BID"_s, u"-"_s, u"no %1"_s.arg(line)});
}

}  // namespace

// The buttons of the request sheets: saving, cancelling, deleting.
class tst_WardSaving final : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { base::Clock::Replace({}); }
    void Save_writesEachLineInOneTransaction() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        EnterLines(window, 1);
        window.Enter({u"sevel"_s, u"od"_s, u"-"_s, u"o'hara's"_s});
        base::Clock::Replace([] { return QDateTime({2026, 1, 31}, {0, 5, 9}); });
        CommandLog log;
        window.Press(Save);
        const QString head = u"STATION..Nurse_AppendNurseLogBook '7','A7B','O',"_s;
        const QString middle = u" ','01/31/2026 12:05:09 AM','PH','',' ','4601',"_s;
        const QStringList expected{
            u"BeginTrans"_s,
            head + u"'1001','17','2','BID','"_s + middle +
                u"'NO 1','AMLODIPINE 5 MG','CAPD','Y','8.5','0','0','0',0"_s,
            head + u"'1022','44.5','1','OD','"_s + middle +
                u"'O''HARA''S','SEVELAMER 800 MG','CAPD','Y','44.5','0','0','0',0"_s,
            u"CommitTrans"_s};
        QCOMPARE(log.Sent, expected);
        QVERIFY(!window.Window.isVisible());
        QCOMPARE(session.Reloads, 1);
        QCOMPARE(session.Requests(), 2);
    }

    void Save_ofSuppliesForAnInPatient() {
        WardSession session;
        session.Visit = u"2026001"_s;
        WardWindow<frmCSREntry> window(session);
        window.Enter({u"201"_s, u"-"_s, u"3"_s, u"-"_s});
        CommandLog log;
        window.Press(Save);
        static const QRegularExpression command(
            u"'7','2026001','I','201','66','3','PRN',' ','../../.... ..:..:.. [AP]M','CS','',' "
            u"','4601',"
            "'','STERILE GAUZE 4X4','CAPD','Y','22','0','0','0',0$"_s);
        QVERIFY2(log.Sent.value(1).contains(command), qPrintable(log.Sent.join(u'\n')));
    }

    void Save_skipsIncompleteLines() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        window.Enter({u"1001"_s});
        QString told;
        Saved::SetHook([&told](const QString& sentence) { told = sentence; });
        CommandLog log;
        window.Press(Save);
        Saved::SetHook({});
        QCOMPARE(log.Sent, QStringList({u"BeginTrans"_s, u"CommitTrans"_s}));
        QCOMPARE(told, u"0 requests are saved, 1 line was left out: O'HARA, Ana"_s);
        QVERIFY(!window.Window.isVisible());
    }

    void Save_failsWhole() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        EnterLines(window, 5);
        BoxScript boxes;
        boxes.Answer(BoxAnswer::Ok);
        PluggedDriver::Gone = true;
        PluggedDriver::Left = 2;
        window.Press(Save);
        PluggedDriver::Gone = false;
        QCOMPARE(boxes.Shown().front().Text, kSaveError + u"The server is gone."_s);
        QVERIFY(window.Window.isVisible());
        QCOMPARE(window.Cell(5, 6), u"NO 5"_s);
        QCOMPARE(session.Requests(), 0);
        QCOMPARE(session.Reloads, 0);
        // With the server back, the same lines are saved.
        window.Press(Save);
        QCOMPARE(session.Requests(), 5);
    }

    void Save_asksTheServerAgain() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        EnterLines(window, 2);
        BoxScript boxes;
        const auto save = [&] {
            boxes.Answer(BoxAnswer::Ok);
            window.Press(Save);
            return boxes.Shown().back().Text;
        };
        // A colleague was faster.
        session.Request("1002", false);
        QCOMPARE(save(), kSaveError + u"AMLODIPINE 10 MG (1002) is already requested."_s);
        QCOMPARE(session.Requests(), 1);
        // A code that does not exist, for which the rest was typed all the same.
        window.Key(Qt::Key_Up);
        window.Key(Qt::Key_F3);
        boxes.Answer(BoxAnswer::Ok);
        window.Enter({u"9999"_s});
        window.Key(Qt::Key_End);
        window.Enter({u"BID"_s, u"-"_s});
        QCOMPARE(save(), kSaveError + u"The code 9999 is not of an item that can be requested."_s);
        QVERIFY(window.Window.isVisible());
        QCOMPARE(session.Requests(), 1);
    }

    void Save_pressedTwiceSavesOnce() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        EnterLines(window, 1);
        window.Press(Save);
        window.Press(Save);
        QCOMPARE(session.Requests(), 1);
        QCOMPARE(session.Reloads, 1);
    }

    void Reload_failsAfterTheCommit() {
        WardSession session;
        session.ReloadFails = true;
        WardWindow<frmPHEntry> window(session);
        EnterLines(window, 1);
        const BoxScript none;
        QVERIFY_EXCEPTION_THROWN(window.Press(Save), base::DatabaseError);
        QVERIFY(!window.Window.isVisible());
        QCOMPARE(session.Requests(), 1);
        QCOMPARE(none.Shown().size(), size_t(0));
    }

    void Cancel_writesNothing() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        EnterLines(window, 1);
        // Esc alone does not throw the lines away.
        window.Key(Qt::Key_Escape);
        QVERIFY(window.Window.isVisible());
        CommandLog log;
        window.Press(Cancel);
        QVERIFY(!window.Window.isVisible());
        QCOMPARE(log.Sent, QStringList());
        QCOMPARE(session.Reloads, 1);
    }

    void Delete_asks() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        EnterLines(window, 3);
        BoxScript boxes;
        boxes.Answer(BoxAnswer::Ok);
        window.Press(Delete);
        QCOMPARE(boxes.Shown().back().Text,
                 u"Row cannot be deleted because there are no entries yet."_s);
        QCOMPARE(boxes.Shown().back().Icon, BoxIcon::Information);
        window.Key(Qt::Key_Up);
        window.Key(Qt::Key_Up);
        for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
            boxes.Answer(answer);
            window.Press(Delete);
            QCOMPARE(boxes.Shown().back().Text, u"Are you sure to delete the request?"_s);
            QCOMPARE(boxes.Shown().back().Title, u"MESSAGE"_s);
            QCOMPARE(window.Grid.Rows(), answer == BoxAnswer::No ? 5 : 4);
        }
        QCOMPARE(window.Cell(2, 0), u"2"_s);
        QCOMPARE(window.Cell(2, 1), u"1003"_s);
        QCOMPARE(window.Box.text(), u"1003"_s);
        QVERIFY(window.Box.hasFocus());
        QCOMPARE(session.Reloads, 3);
        // The next line goes on counting.
        window.Key(Qt::Key_Down);
        window.Enter({u"1004"_s, u"BID"_s});
        QCOMPARE(window.Cell(4, 0), u" 4"_s);
    }

    void Delete_ofTheOnlyLineEmptiesIt() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        window.Enter({u"1001"_s});
        BoxScript boxes;
        boxes.Answer(BoxAnswer::Yes);
        window.Press(Delete);
        QCOMPARE(window.Line(1), u"1||||||||"_s);
        QCOMPARE(window.Box.text(), QString());
    }
};

QTEST_MAIN(tst_WardSaving)
#include "tst_WardSaving.moc"
