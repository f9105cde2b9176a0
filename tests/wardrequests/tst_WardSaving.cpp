#include <QRegularExpression>

#include "CommandLog.h"
#include "WardSession.h"
#include "base/Clock.h"
#include "session/Saved.h"
#include "toolkit/MsgBox.h"

using toolkit::BoxAnswer;
using toolkit::BoxIcon;
using toolkit::BoxScript;

namespace {

enum Button { Save, Cancel, Delete };

const QString kSaveError = QStringLiteral("Error While Saving Pharmacy Requests  ");

/// Lines of two medicines for each whole one; the remarks of each are its number.
void EnterLines(WardWindow<frmPHEntry>& window, int lines) {
    for (int line = 1; line <= lines; ++line)
        window.Enter({QString::number(1000 + line), QStringLiteral("BID"), QStringLiteral("-"),
                      QStringLiteral("no %1").arg(line)});
}

}  // namespace

// The buttons of the request sheets: saving, cancelling, deleting.
class tst_WardSaving final : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { base::Clock::Replace({}); }
    void Save_writesEachLineInOneTransaction();
    void Save_ofSuppliesForAnInPatient();
    void Save_skipsIncompleteLines();
    void Save_failsWhole();
    void Save_asksTheServerAgain();
    void Save_pressedTwiceSavesOnce();
    void Reload_failsAfterTheCommit();
    void Cancel_writesNothing();
    void Delete_asks();
    void Delete_ofTheOnlyLineEmptiesIt();
};

void tst_WardSaving::Save_writesEachLineInOneTransaction() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    EnterLines(window, 1);
    window.Enter({QStringLiteral("sevel"), QStringLiteral("od"), QStringLiteral("-"),
                  QStringLiteral("o'hara's")});
    base::Clock::Replace([] { return QDateTime({2026, 1, 31}, {0, 5, 9}); });
    CommandLog log;
    window.Press(Save);
    const QString head = QStringLiteral("STATION..Nurse_AppendNurseLogBook '7','A7B','O',");
    const QString middle = QStringLiteral(" ','01/31/2026 12:05:09 AM','PH','',' ','4601',");
    const QStringList expected{
        QStringLiteral("BeginTrans"),
        head + QStringLiteral("'1001','17','2','BID','") + middle +
            QStringLiteral("'NO 1','AMLODIPINE 5 MG','CAPD','Y','8.5','0','0','0',0"),
        head + QStringLiteral("'1022','44.5','1','OD','") + middle +
            QStringLiteral("'O''HARA''S','SEVELAMER 800 MG','CAPD','Y','44.5','0','0','0',0"),
        QStringLiteral("CommitTrans")};
    QCOMPARE(log.Sent, expected);
    QVERIFY(!window.Window.isVisible());
    QCOMPARE(session.Reloads, 1);
    QCOMPARE(session.Requests(), 2);
}

void tst_WardSaving::Save_ofSuppliesForAnInPatient() {
    WardSession session;
    session.Visit = QStringLiteral("2026001");
    WardWindow<frmCSREntry> window(session);
    window.Enter(
        {QStringLiteral("201"), QStringLiteral("-"), QStringLiteral("3"), QStringLiteral("-")});
    CommandLog log;
    window.Press(Save);
    static const QRegularExpression command(QStringLiteral(
        "'7','2026001','I','201','66','3','PRN',' ','../../.... ..:..:.. [AP]M','CS','',' ','4601',"
        "'','STERILE GAUZE 4X4','CAPD','Y','22','0','0','0',0$"));
    QVERIFY2(log.Sent.value(1).contains(command), qPrintable(log.Sent.join(u'\n')));
}

void tst_WardSaving::Save_skipsIncompleteLines() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    window.Enter({QStringLiteral("1001")});
    QString told;
    Saved::SetHook([&told](const QString& sentence) { told = sentence; });
    CommandLog log;
    window.Press(Save);
    Saved::SetHook({});
    QCOMPARE(log.Sent, QStringList({QStringLiteral("BeginTrans"), QStringLiteral("CommitTrans")}));
    QCOMPARE(told, QStringLiteral("0 requests are saved, 1 line was left out: O'HARA, Ana"));
    QVERIFY(!window.Window.isVisible());
}

void tst_WardSaving::Save_failsWhole() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    EnterLines(window, 5);
    BoxScript boxes;
    boxes.Answer(BoxAnswer::Ok);
    PluggedDriver::Gone = true;
    PluggedDriver::Left = 2;
    window.Press(Save);
    PluggedDriver::Gone = false;
    QCOMPARE(boxes.Shown().front().Text, kSaveError + QStringLiteral("The server is gone."));
    QVERIFY(window.Window.isVisible());
    QCOMPARE(window.Cell(5, 6), QStringLiteral("NO 5"));
    QCOMPARE(session.Requests(), 0);
    QCOMPARE(session.Reloads, 0);
    // With the server back, the same lines are saved.
    window.Press(Save);
    QCOMPARE(session.Requests(), 5);
}

void tst_WardSaving::Save_asksTheServerAgain() {
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
    QCOMPARE(save(), kSaveError + QStringLiteral("AMLODIPINE 10 MG (1002) is already requested."));
    QCOMPARE(session.Requests(), 1);
    // A code that does not exist, for which the rest was typed all the same.
    window.Key(Qt::Key_Up);
    window.Key(Qt::Key_F3);
    boxes.Answer(BoxAnswer::Ok);
    window.Enter({QStringLiteral("9999")});
    window.Key(Qt::Key_End);
    window.Enter({QStringLiteral("BID"), QStringLiteral("-")});
    QCOMPARE(save(),
             kSaveError + QStringLiteral("The code 9999 is not of an item that can be requested."));
    QVERIFY(window.Window.isVisible());
    QCOMPARE(session.Requests(), 1);
}

void tst_WardSaving::Save_pressedTwiceSavesOnce() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    EnterLines(window, 1);
    window.Press(Save);
    window.Press(Save);
    QCOMPARE(session.Requests(), 1);
    QCOMPARE(session.Reloads, 1);
}

void tst_WardSaving::Reload_failsAfterTheCommit() {
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

void tst_WardSaving::Cancel_writesNothing() {
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

void tst_WardSaving::Delete_asks() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    EnterLines(window, 3);
    BoxScript boxes;
    boxes.Answer(BoxAnswer::Ok);
    window.Press(Delete);
    QCOMPARE(boxes.Shown().back().Text,
             QStringLiteral("Row cannot be deleted because there are no entries yet."));
    QCOMPARE(boxes.Shown().back().Icon, BoxIcon::Information);
    window.Key(Qt::Key_Up);
    window.Key(Qt::Key_Up);
    for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
        boxes.Answer(answer);
        window.Press(Delete);
        QCOMPARE(boxes.Shown().back().Text, QStringLiteral("Are you sure to delete the request?"));
        QCOMPARE(boxes.Shown().back().Title, QStringLiteral("MESSAGE"));
        QCOMPARE(window.Grid.Rows(), answer == BoxAnswer::No ? 5 : 4);
    }
    QCOMPARE(window.Cell(2, 0), QStringLiteral("2"));
    QCOMPARE(window.Cell(2, 1), QStringLiteral("1003"));
    QCOMPARE(window.Box.text(), QStringLiteral("1003"));
    QVERIFY(window.Box.hasFocus());
    QCOMPARE(session.Reloads, 3);
    // The next line goes on counting.
    window.Key(Qt::Key_Down);
    window.Enter({QStringLiteral("1004"), QStringLiteral("BID")});
    QCOMPARE(window.Cell(4, 0), QStringLiteral(" 4"));
}

void tst_WardSaving::Delete_ofTheOnlyLineEmptiesIt() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    window.Enter({QStringLiteral("1001")});
    BoxScript boxes;
    boxes.Answer(BoxAnswer::Yes);
    window.Press(Delete);
    QCOMPARE(window.Line(1), QStringLiteral("1||||||||"));
    QCOMPARE(window.Box.text(), QString());
}

QTEST_MAIN(tst_WardSaving)
#include "tst_WardSaving.moc"
