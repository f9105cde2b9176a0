#include <QClipboard>
#include <QHeaderView>
#include <QScrollBar>
#include <QTimer>

#include "WardSession.h"
#include "toolkit/MsgBox.h"
#include "toolkit/Twips.h"

using toolkit::BoxAnswer;
using toolkit::BoxIcon;
using toolkit::BoxScript;

namespace {

const QStringList kLine{QStringLiteral("1001"), QStringLiteral("BID"), QStringLiteral("-"),
                        QStringLiteral("-")};

QStringList Words(const char* text) {
    return QString::fromUtf8(text).split(u' ');
}

/// Closes the next list without a choice.
void CloseNextList() {
    QTimer::singleShot(0, qApp, [] {
        if (auto* list = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            list->reject();
    });
}

}  // namespace

// The keys of the request sheets, over the demo hospital.
class tst_WardSheet final : public QObject {
    Q_OBJECT
private slots:
    void Line_isFilledByKeys_data();
    void Line_isFilledByKeys();
    void Code_isRefused_data();
    void Code_isRefused();
    void Repeat_isTakenAfterYes();
    void Entries_areRefusedInPlace();
    void Cursor_skipsColumns();
    void Code00_skipsNothing();
    void FinishedLine_isOnlyPassedThrough();
    void OpenCell_isStoredFirst();
    void Unlisted_isWhatItsRemarksSay();
    void Box_takesWhatTheColumnTakes_data();
    void Box_takesWhatTheColumnTakes();
    void Box_floatsOverTheCell();
    void Mouse_leavesAndEntersCells();
    void F3_takesTheLineOut();
    void ServerGone_data();
    void ServerGone();

private:
    template <class Form>
    void Fill(const QStringList& keys, const QString& line);
    template <class Form>
    void LoseServer(const QString& message, bool staysOpen);
};

void tst_WardSheet::Line_isFilledByKeys_data() {
    QTest::addColumn<bool>("pharmacy");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QString>("line");
    QTest::newRow("medicine by code")
        << true << Words("1001 bid - food") << " 1|1001|AMLODIPINE 5 MG|BID|2|17|FOOD||8.5";
    QTest::newRow("medicine by name, another price")
        << true << Words("sevel tid 7 o'hara's")
        << " 1|1022|SEVELAMER 800 MG|TID|7|311.5|O'HARA'S||44.5";
    QTest::newRow("medicine, dosage by name")
        << true << Words("1001 three - -") << " 1|1001|AMLODIPINE 5 MG|TID|3|25.5|||8.5";
    QTest::newRow("supply by code")
        << false << Words("201 - 3 -") << " 1|201|STERILE GAUZE 4X4|PRN|3|66||22|";
    QTest::newRow("supply by name, the same price")
        << false << Words("steri now 1/2 -") << " 1|201|STERILE GAUZE 4X4|NOW|1/2|22||22|";
}

template <class Form>
void tst_WardSheet::Fill(const QStringList& keys, const QString& line) {
    WardSession session;
    WardWindow<Form> window(session);
    QCOMPARE(window.At(), QPoint(1, 1));
    QVERIFY(window.Box.hasFocus());
    QCOMPARE(window.Cell(1, 0), QStringLiteral(" 1"));
    window.Enter(keys);
    QCOMPARE(window.Line(1), line);
    QCOMPARE(window.Line(2), QStringLiteral(" 2||||||||"));
    QCOMPARE(window.At(), QPoint(2, 1));
}

void tst_WardSheet::Line_isFilledByKeys() {
    QFETCH(bool, pharmacy);
    QFETCH(QStringList, keys);
    QFETCH(QString, line);
    const BoxScript none;
    if (pharmacy)
        Fill<frmPHEntry>(keys, line);
    else
        Fill<frmCSREntry>(keys, line);
    QCOMPARE(none.Shown().size(), size_t(0));
}

void tst_WardSheet::Code_isRefused_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("icon");
    QTest::addColumn<bool>("keepsCell");
    const QString own = toolkit::kProgramName;
    QTest::newRow("unknown") << "99999"
                             << "Code Not Exists!" << own << int(BoxIcon::None) << true;
    QTest::newRow("larger than any number")
        << "9E999"
        << "Code Not Exists!" << own << int(BoxIcon::None) << true;
    QTest::newRow("a supply") << "201"
                              << "201 STERILE GAUZE 4X4 is not in this list." << own
                              << int(BoxIcon::None) << true;
    QTest::newRow("inactive") << "1024"
                              << "Record is inactive...please reenter..."
                              << "Message" << int(BoxIcon::Exclamation) << true;
    QTest::newRow("on another line")
        << "1001"
        << "Can't Request the Same Medicine!" << own << int(BoxIcon::None) << false;
    QTest::newRow("waiting") << "1002"
                             << "Supply/ Medicine is already requested at "
                             << "Message " << int(BoxIcon::None) << false;
    QTest::newRow("processed today, not again") << "1003"
                                                << "This Request has been PROCCESSED TODAY AT "
                                                << "Message " << int(BoxIcon::Critical) << false;
}

void tst_WardSheet::Code_isRefused() {
    QFETCH(QString, code);
    QFETCH(QString, message);
    WardSession session;
    session.Request("1002", false);
    session.Request("1003", true);
    WardWindow<frmPHEntry> window(session);
    window.Enter(kLine);
    BoxScript boxes;
    boxes.Answer(code == u"1003" ? BoxAnswer::No : BoxAnswer::Ok);
    window.Enter({code});
    QCOMPARE(boxes.Leftovers(), QStringList());
    const toolkit::ShownBox& box = boxes.Shown().front();
    QVERIFY2(box.Text.startsWith(message), qPrintable(box.Text));
    QTEST(box.Title, "title");
    QTEST(int(box.Icon), "icon");
    QCOMPARE(window.At(), QPoint(2, 1));
    QFETCH(bool, keepsCell);
    QCOMPARE(window.Cell(2, 1), keepsCell ? code : QString());
    QCOMPARE(window.Box.text(), keepsCell ? code : QString());
    QCOMPARE(window.Cell(2, 2), QString());
}

void tst_WardSheet::Repeat_isTakenAfterYes() {
    WardSession session;
    session.Request("1003", true);
    WardWindow<frmPHEntry> window(session);
    BoxScript boxes;
    boxes.Answer(BoxAnswer::Yes);
    window.Enter({QStringLiteral("1003")});
    QVERIFY(boxes.Shown().front().Text.endsWith(QStringLiteral("! Do you wish to REPEAT it ?")));
    QCOMPARE(window.Cell(1, 2), QStringLiteral("ATORVASTATIN 20 MG"));
    QCOMPARE(window.At(), QPoint(1, 3));
}

void tst_WardSheet::Entries_areRefusedInPlace() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    BoxScript boxes;
    boxes.Answer(BoxAnswer::Ok);
    window.Enter({QStringLiteral("1001")});
    CloseNextList();
    window.Enter({QStringLiteral("zzz")});
    QCOMPARE(boxes.Shown().back().Text, QStringLiteral("Dosage Code Does not Exist !"));
    QCOMPARE(window.At(), QPoint(1, 3));
    window.Key(Qt::Key_End);
    for (const char* zero : {"0", "-"}) {
        boxes.Answer(BoxAnswer::Ok);
        window.Enter({QString::fromLatin1(zero)});
        QCOMPARE(boxes.Shown().back().Text,
                 QStringLiteral("Quantity should be greater than zero!"));
        QCOMPARE(window.At(), QPoint(1, 4));
        window.Key(Qt::Key_Left);
        QCOMPARE(window.Box.text(), QString());
    }
    // A name that names nobody, and no choice.
    window.Key(Qt::Key_Home);
    window.Key(Qt::Key_Home);
    CloseNextList();
    window.Enter({QStringLiteral("zzz")});
    QCOMPARE(window.Box.text(), QString());
    QCOMPARE(window.Cell(1, 1), QStringLiteral("1001"));
    QCOMPARE(boxes.Leftovers(), QStringList());
}

void tst_WardSheet::Cursor_skipsColumns() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    // Before the first code is entered the description is not skipped.
    window.Key(Qt::Key_End);
    QCOMPARE(window.At(), QPoint(1, 2));
    window.Key(Qt::Key_Home);
    window.Enter(kLine);
    QList<int> columns;
    for (int i = 0; i < 5; ++i) {
        columns << window.Grid.Col();
        window.Key(Qt::Key_End);
    }
    QCOMPARE(columns, QList<int>({1, 3, 4, 6, 6}));
    QVERIFY(window.Prompt().startsWith(QStringLiteral("Type Addition Remarks")));
    window.Key(Qt::Key_Down);
    QCOMPARE(window.At(), QPoint(2, 6));
    window.Key(Qt::Key_Up);
    window.Key(Qt::Key_Up);
    QCOMPARE(window.At(), QPoint(1, 6));
    columns.clear();
    for (int i = 0; i < 5; ++i) {
        window.Key(Qt::Key_Home);
        columns << window.Grid.Col();
    }
    QCOMPARE(columns, QList<int>({4, 3, 1, 1, 1}));
}

void tst_WardSheet::Code00_skipsNothing() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    window.Enter(kLine);
    CloseNextList();
    window.Enter({QStringLiteral("00")});
    QCOMPARE(window.Cell(2, 1), QStringLiteral("00"));
    for (int col = 2; col <= 5; ++col) {
        window.Key(Qt::Key_End);
        QCOMPARE(window.Grid.Col(), col);
    }
    // The line above skips the amount.
    window.Key(Qt::Key_Up);
    QCOMPARE(window.At(), QPoint(1, 4));
}

void tst_WardSheet::FinishedLine_isOnlyPassedThrough() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    const BoxScript none;
    // By name it costs another price than by code, and seven is not what the dosage says.
    window.Enter(Words("sevel tid 7 x"));
    const QString line = window.Line(1);
    window.Key(Qt::Key_Up);
    window.Enter(Words("- - - -"));
    QCOMPARE(window.Line(1), line);
    // Another item is not taken three times a day because the one before was.
    window.Key(Qt::Key_Up);
    window.Enter({QStringLiteral("1002")});
    QCOMPARE(window.Line(1), QStringLiteral(" 1|1002|AMLODIPINE 10 MG|||12.75|||12.75"));
    QCOMPARE(none.Shown().size(), size_t(0));
}

void tst_WardSheet::OpenCell_isStoredFirst() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    window.Enter(Words("1001 bid 10"));
    const auto type = [&](const char* text) {
        QTest::keyClicks(&window.Box, QLatin1String(text));
        window.Press(0);
    };
    window.Key(Qt::Key_Home);
    BoxScript boxes;
    boxes.Answer(BoxAnswer::Ok);
    type("0");
    QCOMPARE(boxes.Shown().front().Text, QStringLiteral("Quantity should be greater than zero!"));
    QCOMPARE(window.At(), QPoint(1, 4));
    QVERIFY(window.Box.hasFocus());
    QCOMPARE(session.Requests(), 0);
    type("4");
    QCOMPARE(session.Connection
                 ->Execute(QStringLiteral("SELECT Quantity FROM STATION..tbNurseLogBook WHERE "
                                          "IdNum = 'A7B'"))
                 ->Fields(0)
                 .Text(),
             QStringLiteral("4"));
}

void tst_WardSheet::Unlisted_isWhatItsRemarksSay() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    for (const char* what : {"eye drops", "ear drops"}) {
        CloseNextList();
        window.Enter({QStringLiteral("00")});
        window.Key(Qt::Key_End);
        window.Key(Qt::Key_End);
        window.Enter(Words("bid 2 -"));
        BoxScript boxes;
        boxes.Answer(BoxAnswer::Ok);
        window.Enter({QStringLiteral("-")});
        QCOMPARE(boxes.Shown().front().Text,
                 QStringLiteral("Item 00 needs remarks: they say what is requested."));
        window.Enter({QLatin1String(what)});
    }
    window.Press(0);
    QCOMPARE(
        session.Connection
            ->Execute(QStringLiteral("SELECT COUNT(*) FROM STATION..tbNurseLogBook WHERE "
                                     "IdNum = 'A7B' AND ItemName IN ('EYE DROPS', 'EAR DROPS')"))
            ->Fields(0)
            .Text(),
        QStringLiteral("2"));
}

void tst_WardSheet::Box_takesWhatTheColumnTakes_data() {
    QTest::addColumn<int>("col");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("kept");
    const QString long1000 = QStringLiteral("ab'\r\n\t\"é").repeated(150);
    const QString shown = QStringLiteral("AB'  \"É");
    QTest::newRow("code") << 1 << long1000 << "AB'";
    QTest::newRow("frequency") << 3 << long1000 << shown;
    QTest::newRow("remarks") << 6 << long1000 << shown.repeated(3) + QStringLiteral("AB'  ");
    QTest::newRow("quantity") << 4 << "1a/23"
                              << "1/";
}

void tst_WardSheet::Box_takesWhatTheColumnTakes() {
    QFETCH(int, col);
    QFETCH(QString, pasted);
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    while (window.Grid.Col() < col)
        window.Key(Qt::Key_End);
    QApplication::clipboard()->setText(pasted);
    window.Box.paste();
    QTEST(window.Box.text(), "kept");
    for (char key = ' '; key <= '~'; ++key) {
        window.Box.clear();
        QTest::keyClick(&window.Box, key);
        const bool numeric = (key >= '0' && key <= '9') || key == '.' || key == '/';
        const QString shown = QString(QLatin1Char(key)).toUpper();
        QCOMPARE(window.Box.text(), col != 4 || numeric ? shown : QString());
    }
}

void tst_WardSheet::Box_floatsOverTheCell() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    const auto isOnCell = [&] {
        const QRect cell = window.Grid.CellRect(window.Grid.Row(), window.Grid.Col());
        const QPoint beside = window.Box.pos() - cell.topLeft();
        const int narrower = cell.width() - window.Box.width();
        return window.Box.isVisible() && qAbs(beside.x()) <= 2 && qAbs(beside.y()) <= 2 &&
               narrower == toolkit::Twips(20, &window.Grid) && window.Box.height() == cell.height();
    };
    QVERIFY(isOnCell());
    window.Enter(kLine);
    QVERIFY(isOnCell());
    window.Grid.setColumnWidth(0, 90);
    QTRY_VERIFY(isOnCell());
    window.Grid.setColumnWidth(1, 140);
    QTRY_VERIFY(isOnCell());
    window.Window.resize(380, 300);
    QTRY_VERIFY(isOnCell());
    for (int line = 3; line < 20; ++line)
        window.Grid.AddItem();
    for (int line = 3; line < 20; ++line)
        window.Key(Qt::Key_Down);
    QVERIFY(window.Grid.verticalScrollBar()->value() > 0);
    QVERIFY(isOnCell());
    window.Grid.verticalScrollBar()->setValue(0);
    QVERIFY(isOnCell());
    window.Grid.horizontalScrollBar()->setValue(40);
    QVERIFY(isOnCell());
}

void tst_WardSheet::Mouse_leavesAndEntersCells() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    window.Enter({QStringLiteral("1001"), QStringLiteral("BID")});
    const auto click = [&](int row, int col) {
        QTest::mouseClick(window.Grid.viewport(), Qt::LeftButton, {},
                          window.Grid.CellRect(row, col).center());
    };
    click(1, 6);
    QCOMPARE(window.At(), QPoint(1, 6));
    QVERIFY(window.Box.hasFocus());
    click(1, 2);
    QVERIFY(window.Box.isHidden());
    QVERIFY(window.Grid.hasFocus());
    QTest::keyClick(&window.Grid, Qt::Key_Return);
    QCOMPARE(window.At(), QPoint(1, 3));
    QVERIFY(window.Box.hasFocus());
    QCOMPARE(window.Box.text(), QStringLiteral("BID"));
}

void tst_WardSheet::F3_takesTheLineOut() {
    WardSession session;
    WardWindow<frmPHEntry> window(session);
    window.Enter(kLine + QStringList{QStringLiteral("1002")} + kLine.mid(1));
    QCOMPARE(window.Grid.Rows(), 4);
    window.Key(Qt::Key_Up);
    window.Key(Qt::Key_F3);
    QCOMPARE(window.Grid.Rows(), 3);
    QCOMPARE(window.At(), QPoint(2, 1));
    QCOMPARE(window.Cell(2, 0), QStringLiteral(" 2"));
    window.Key(Qt::Key_Up);
    window.Key(Qt::Key_F3);
    QCOMPARE(window.Line(1), QStringLiteral(" 1||||||||"));
    QCOMPARE(window.Grid.Rows(), 3);
}

void tst_WardSheet::ServerGone_data() {
    QTest::addColumn<int>("answered");
    for (int answered = 0; answered < 3; ++answered)
        QTest::addRow("after %d commands", answered) << answered;
}

template <class Form>
void tst_WardSheet::LoseServer(const QString& message, bool staysOpen) {
    QFETCH(int, answered);
    WardSession session;
    WardWindow<Form> window(session);
    BoxScript boxes;
    boxes.Answer(BoxAnswer::Ok);
    PluggedDriver::Gone = true;
    PluggedDriver::Left = answered;
    window.Enter({QLatin1String(staysOpen ? "1001" : "201")});
    PluggedDriver::Gone = false;
    QCOMPARE(boxes.Shown().front().Text, message + QStringLiteral("The server is gone."));
    QCOMPARE(boxes.Leftovers(), QStringList());
    QCOMPARE(window.Window.isVisible(), staysOpen);
    QCOMPARE(window.At(), QPoint(1, 1));
    QCOMPARE(session.Reloads, 0);
}

void tst_WardSheet::ServerGone() {
    LoseServer<frmPHEntry>(QStringLiteral("Error While Selecting Medicine  "), true);
    LoseServer<frmCSREntry>(QStringLiteral("Error While Selecting Supply  "), false);
}

QTEST_MAIN(tst_WardSheet)
#include "tst_WardSheet.moc"
