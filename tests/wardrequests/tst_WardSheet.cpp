#include <QClipboard>
#include <QHeaderView>
#include <QScrollBar>
#include <QTimer>

#include "Rows.h"
#include "WardSession.h"
#include "toolkit/MsgBox.h"
#include "toolkit/Twips.h"

using namespace Qt::StringLiterals;
using toolkit::BoxAnswer;
using toolkit::BoxIcon;
using toolkit::BoxScript;

namespace {

const QStringList kLine{u"1001"_s, u"BID"_s, u"-"_s, u"-"_s};

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
    void Line_isFilledByKeys_data() {
        Columns<bool, QStringList, QString>();
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

    void Line_isFilledByKeys() {
        auto [pharmacy, keys, line] = Fetch<bool, QStringList, QString>();
        const BoxScript none;
        if (pharmacy)
            Fill<frmPHEntry>(keys, line);
        else
            Fill<frmCSREntry>(keys, line);
        QCOMPARE(none.Shown().size(), size_t(0));
    }

    void Code_isRefused_data() {
        Columns<QString, QString, QString, int, bool>();
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
        QTest::newRow("processed today, not again")
            << "1003"
            << "This Request has been PROCCESSED TODAY AT "
            << "Message " << int(BoxIcon::Critical) << false;
    }

    void Code_isRefused() {
        auto [code, message, title, icon, keepsCell] =
            Fetch<QString, QString, QString, int, bool>();
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
        QCOMPARE(box.Title, title);
        QCOMPARE(int(box.Icon), icon);
        QCOMPARE(window.At(), QPoint(2, 1));
        QCOMPARE(window.Cell(2, 1), keepsCell ? code : QString());
        QCOMPARE(window.Box.text(), keepsCell ? code : QString());
        QCOMPARE(window.Cell(2, 2), QString());
    }

    void Repeat_isTakenAfterYes() {
        WardSession session;
        session.Request("1003", true);
        WardWindow<frmPHEntry> window(session);
        BoxScript boxes;
        boxes.Answer(BoxAnswer::Yes);
        window.Enter({u"1003"_s});
        QVERIFY(boxes.Shown().front().Text.endsWith(u"! Do you wish to REPEAT it ?"_s));
        QCOMPARE(window.Cell(1, 2), u"ATORVASTATIN 20 MG"_s);
        QCOMPARE(window.At(), QPoint(1, 3));
    }

    void Entries_areRefusedInPlace() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        BoxScript boxes;
        boxes.Answer(BoxAnswer::Ok);
        window.Enter({u"1001"_s});
        CloseNextList();
        window.Enter({u"zzz"_s});
        QCOMPARE(boxes.Shown().back().Text, u"Dosage Code Does not Exist !"_s);
        QCOMPARE(window.At(), QPoint(1, 3));
        window.Key(Qt::Key_End);
        for (const char* zero : {"0", "-"}) {
            boxes.Answer(BoxAnswer::Ok);
            window.Enter({QString::fromLatin1(zero)});
            QCOMPARE(boxes.Shown().back().Text, u"Quantity should be greater than zero!"_s);
            QCOMPARE(window.At(), QPoint(1, 4));
            window.Key(Qt::Key_Left);
            QCOMPARE(window.Box.text(), QString());
        }
        // A name that names nobody, and no choice.
        window.Key(Qt::Key_Home);
        window.Key(Qt::Key_Home);
        CloseNextList();
        window.Enter({u"zzz"_s});
        QCOMPARE(window.Box.text(), QString());
        QCOMPARE(window.Cell(1, 1), u"1001"_s);
        QCOMPARE(boxes.Leftovers(), QStringList());
    }

    void Cursor_skipsColumns() {
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
        QVERIFY(window.Prompt().startsWith(u"Type Addition Remarks"_s));
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

    void Code00_skipsNothing() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        window.Enter(kLine);
        CloseNextList();
        window.Enter({u"00"_s});
        QCOMPARE(window.Cell(2, 1), u"00"_s);
        for (int col = 2; col <= 5; ++col) {
            window.Key(Qt::Key_End);
            QCOMPARE(window.Grid.Col(), col);
        }
        // The line above skips the amount.
        window.Key(Qt::Key_Up);
        QCOMPARE(window.At(), QPoint(1, 4));
    }

    void FinishedLine_isOnlyPassedThrough() {
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
        window.Enter({u"1002"_s});
        QCOMPARE(window.Line(1), u" 1|1002|AMLODIPINE 10 MG|||12.75|||12.75"_s);
        QCOMPARE(none.Shown().size(), size_t(0));
    }

    void OpenCell_isStoredFirst() {
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
        QCOMPARE(boxes.Shown().front().Text, u"Quantity should be greater than zero!"_s);
        QCOMPARE(window.At(), QPoint(1, 4));
        QVERIFY(window.Box.hasFocus());
        QCOMPARE(session.Requests(), 0);
        type("4");
        QCOMPARE(session.Connection
                     ->Execute(u"SELECT Quantity FROM STATION..tbNurseLogBook WHERE "
                               "IdNum = 'A7B'"_s)
                     ->Fields(0)
                     .Text(),
                 u"4"_s);
    }

    void Unlisted_isWhatItsRemarksSay() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        for (const char* what : {"eye drops", "ear drops"}) {
            CloseNextList();
            window.Enter({u"00"_s});
            window.Key(Qt::Key_End);
            window.Key(Qt::Key_End);
            window.Enter(Words("bid 2 -"));
            BoxScript boxes;
            boxes.Answer(BoxAnswer::Ok);
            window.Enter({u"-"_s});
            QCOMPARE(boxes.Shown().front().Text,
                     u"Item 00 needs remarks: they say what is requested."_s);
            window.Enter({QLatin1String(what)});
        }
        window.Press(0);
        QCOMPARE(session.Connection
                     ->Execute(u"SELECT COUNT(*) FROM STATION..tbNurseLogBook WHERE "
                               "IdNum = 'A7B' AND ItemName IN ('EYE DROPS', 'EAR DROPS')"_s)
                     ->Fields(0)
                     .Text(),
                 u"2"_s);
    }

    void Box_takesWhatTheColumnTakes_data() {
        Columns<int, QString, QString>();
        const QString long1000 = u"ab'\r\n\t\"é"_s.repeated(150);
        const QString shown = u"AB'  \"É"_s;
        QTest::newRow("code") << 1 << long1000 << "AB'";
        QTest::newRow("frequency") << 3 << long1000 << shown;
        QTest::newRow("remarks") << 6 << long1000 << shown.repeated(3) + u"AB'  "_s;
        QTest::newRow("quantity") << 4 << "1a/23"
                                  << "1/";
    }

    void Box_takesWhatTheColumnTakes() {
        auto [col, pasted, kept] = Fetch<int, QString, QString>();
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        while (window.Grid.Col() < col)
            window.Key(Qt::Key_End);
        QApplication::clipboard()->setText(pasted);
        window.Box.paste();
        QCOMPARE(window.Box.text(), kept);
        for (char key = ' '; key <= '~'; ++key) {
            window.Box.clear();
            QTest::keyClick(&window.Box, key);
            const bool numeric = (key >= '0' && key <= '9') || key == '.' || key == '/';
            const QString shown = QString(QLatin1Char(key)).toUpper();
            QCOMPARE(window.Box.text(), col != 4 || numeric ? shown : QString());
        }
    }

    void Box_floatsOverTheCell() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        const auto isOnCell = [&] {
            const QRect cell = window.Grid.CellRect(window.Grid.Row(), window.Grid.Col());
            const QPoint beside = window.Box.pos() - cell.topLeft();
            const int narrower = cell.width() - window.Box.width();
            return window.Box.isVisible() && qAbs(beside.x()) <= 2 && qAbs(beside.y()) <= 2 &&
                   narrower == toolkit::Twips(20, &window.Grid) &&
                   window.Box.height() == cell.height();
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

    void Mouse_leavesAndEntersCells() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        window.Enter({u"1001"_s, u"BID"_s});
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
        QCOMPARE(window.Box.text(), u"BID"_s);
    }

    void F3_takesTheLineOut() {
        WardSession session;
        WardWindow<frmPHEntry> window(session);
        window.Enter(kLine + QStringList{u"1002"_s} + kLine.mid(1));
        QCOMPARE(window.Grid.Rows(), 4);
        window.Key(Qt::Key_Up);
        window.Key(Qt::Key_F3);
        QCOMPARE(window.Grid.Rows(), 3);
        QCOMPARE(window.At(), QPoint(2, 1));
        QCOMPARE(window.Cell(2, 0), u" 2"_s);
        window.Key(Qt::Key_Up);
        window.Key(Qt::Key_F3);
        QCOMPARE(window.Line(1), u" 1||||||||"_s);
        QCOMPARE(window.Grid.Rows(), 3);
    }

    void ServerGone_data() {
        QTest::addColumn<int>("answered");
        for (int answered = 0; answered < 3; ++answered)
            QTest::addRow("after %d commands", answered) << answered;
    }

    void ServerGone() {
        LoseServer<frmPHEntry>(u"Error While Selecting Medicine  "_s, true);
        LoseServer<frmCSREntry>(u"Error While Selecting Supply  "_s, false);
    }

private:
    template <class Form>
    void Fill(const QStringList& keys, const QString& line) {
        WardSession session;
        WardWindow<Form> window(session);
        QCOMPARE(window.At(), QPoint(1, 1));
        QVERIFY(window.Box.hasFocus());
        QCOMPARE(window.Cell(1, 0), u" 1"_s);
        window.Enter(keys);
        QCOMPARE(window.Line(1), line);
        QCOMPARE(window.Line(2), u" 2||||||||"_s);
        QCOMPARE(window.At(), QPoint(2, 1));
    }

    template <class Form>
    void LoseServer(const QString& message, bool staysOpen) {
        QFETCH(int, answered);
        WardSession session;
        WardWindow<Form> window(session);
        BoxScript boxes;
        boxes.Answer(BoxAnswer::Ok);
        PluggedDriver::Gone = true;
        PluggedDriver::Left = answered;
        window.Enter({QLatin1String(staysOpen ? "1001" : "201")});
        PluggedDriver::Gone = false;
        QCOMPARE(boxes.Shown().front().Text, message + u"The server is gone."_s);
        QCOMPARE(boxes.Leftovers(), QStringList());
        QCOMPARE(window.Window.isVisible(), staysOpen);
        QCOMPARE(window.At(), QPoint(1, 1));
        QCOMPARE(session.Reloads, 0);
    }
};

QTEST_MAIN(tst_WardSheet)
#include "tst_WardSheet.moc"
