#include "WardWindow.h"
#include "toolkit/Twips.h"

namespace {

const QString kLine = u"1001 BID - -"_s;

}  // namespace

// The keys of the request sheets, over the demo hospital.
class tst_WardSheet final : public WardTest {
    Q_OBJECT
private slots:
    void init() { Open(); }
    void cleanup() { Close(); }

    void Line_isFilledByKeys_data() {
        Columns<bool, QString, QString>();
        Row("medicine by name, another price", true, "sevel tid 7 o'hara's",
            " 1|1022|SEVELAMER 800 MG|TID|7|311.5|O'HARA'S||44.5");
        Row("medicine, dosage by name", true, "1001 three - -",
            " 1|1001|AMLODIPINE 5 MG|TID|3|25.5|||8.5");
        Row("supply by name, the same price", false, "steri now 1/2 -",
            " 1|201|STERILE GAUZE 4X4|NOW|1/2|22||22|");
    }

    void Line_isFilledByKeys() {
        auto [pharmacy, keys, line] = Fetch<bool, QString, QString>();
        const auto fill = [&](auto& window) {
            QCOMPARE(window.At(), QPoint(1, 1));
            QVERIFY(window.Box.hasFocus());
            QCOMPARE(window.Cell(1, 0), u" 1"_s);
            window.Enter(keys);
            QCOMPARE(window.Line(1), line);
            QCOMPARE(window.Line(2), u" 2||||||||"_s);
            QCOMPARE(window.At(), QPoint(2, 1));
        };
        if (pharmacy)
            return fill(*m_window);
        Supplies supplies(m_patient);
        fill(supplies);
    }

    void Code_isRefused_data() {
        Columns<QString, QString, bool>();
        Row("unknown", "99999", "Code Not Exists!", true);
        Row("larger than any number", "9E999", "Code Not Exists!", true);
        Row("a supply", "201", "201 STERILE GAUZE 4X4 is not in this list.", true);
        Row("inactive", "1024", "Record is inactive...please reenter...", true);
        Row("on another line", "1001", "Can't Request the Same Medicine!", false);
        Row("waiting", "1002", "Supply/ Medicine is already requested at ", false);
        Row("processed today, not again", "1003", "This Request has been PROCCESSED TODAY AT ",
            false);
    }

    void Code_isRefused() {
        auto [code, message, keepsCell] = Fetch<QString, QString, bool>();
        Request("1002", false);
        Request("1003", true);
        m_window->Enter(kLine);
        Answer(code == u"1003" ? BoxAnswer::No : BoxAnswer::Ok);
        m_window->Enter(code);
        QVERIFY2(Said().Text.startsWith(message), qPrintable(Said().Text));
        QCOMPARE(m_window->At(), QPoint(2, 1));
        const QString kept = keepsCell ? code : QString();
        QCOMPARE(m_window->Line(2), u" 2|%1|||||||"_s.arg(kept));
        QCOMPARE(m_window->Box.text(), kept);
    }

    void Repeat_isTakenAfterYes() {
        Request("1003", true);
        Answer(BoxAnswer::Yes);
        m_window->Enter(u"1003"_s);
        QVERIFY(Said().Text.endsWith(u"! Do you wish to REPEAT it ?"_s));
        QCOMPARE(m_window->Cell(1, 2), u"ATORVASTATIN 20 MG"_s);
        QCOMPARE(m_window->At(), QPoint(1, 3));
    }

    void Entries_areRefusedInPlace() {
        const PickListKeys closed;
        m_window->Enter(u"1001"_s);
        Answer(BoxAnswer::Ok);
        m_window->Enter(u"zzz"_s);
        QCOMPARE(Said().Text, u"Dosage Code Does not Exist !"_s);
        QCOMPARE(m_window->At(), QPoint(1, 3));
        m_window->Key(Qt::Key_End);
        for (const QString& none : {u"0"_s, u"-"_s}) {
            Answer(BoxAnswer::Ok);
            m_window->Enter(none);
            QCOMPARE(Said().Text, u"Quantity should be greater than zero!"_s);
            QCOMPARE(m_window->At(), QPoint(1, 4));
            m_window->Key(Qt::Key_Left);
            QCOMPARE(m_window->Box.text(), QString());
        }
        // A name that names nobody, and no choice.
        m_window->Key(Qt::Key_Home);
        m_window->Key(Qt::Key_Home);
        m_window->Enter(u"zzz"_s);
        QCOMPARE(m_window->Box.text(), QString());
        QCOMPARE(m_window->Cell(1, 1), u"1001"_s);
        QCOMPARE(closed.Shown, 2);
    }

    void Cursor_skipsColumns() {
        const auto columns = [this](Qt::Key key) {
            QStringList passed;
            for (int i = 0; i < 5; ++i) {
                m_window->Key(key);
                passed << QString::number(m_window->Grid.Col());
            }
            return passed.join(u' ');
        };
        // Before the first code is entered the description is not skipped.
        m_window->Key(Qt::Key_End);
        QCOMPARE(m_window->At(), QPoint(1, 2));
        m_window->Key(Qt::Key_Home);
        m_window->Enter(kLine);
        QCOMPARE(columns(Qt::Key_End), u"3 4 6 6 6"_s);
        QVERIFY(TextOf(m_window->Window, "lblMessage").startsWith(u"Type Addition Remarks"_s));
        m_window->Key(Qt::Key_Down);
        QCOMPARE(m_window->At(), QPoint(2, 6));
        m_window->Key(Qt::Key_Up);
        m_window->Key(Qt::Key_Up);
        QCOMPARE(m_window->At(), QPoint(1, 6));
        QCOMPARE(columns(Qt::Key_Home), u"4 3 1 1 1"_s);
    }

    void Code00_skipsNothing() {
        const PickListKeys closed;
        m_window->Enter(kLine);
        m_window->Enter(u"00"_s);
        QCOMPARE(m_window->Cell(2, 1), u"00"_s);
        for (int col = 2; col <= 5; ++col) {
            m_window->Key(Qt::Key_End);
            QCOMPARE(m_window->Grid.Col(), col);
        }
        // The line above skips the amount.
        m_window->Key(Qt::Key_Up);
        QCOMPARE(m_window->At(), QPoint(1, 4));
        QCOMPARE(closed.Shown, 1);
    }

    void Code00_isWhatItsRemarksSay() {
        const PickListKeys closed;
        const auto enterAllButRemarks = [this] {
            m_window->Enter(u"00"_s);
            m_window->Key(Qt::Key_End);
            m_window->Key(Qt::Key_End);
            m_window->Enter(u"bid 2 -"_s);
        };
        for (const QString& what : {u"eye_drops"_s, u"ear_drops"_s}) {
            enterAllButRemarks();
            Answer(BoxAnswer::Ok);
            m_window->Enter(u"-"_s);
            QCOMPARE(Said().Text, u"Item 00 needs remarks: they say what is requested."_s);
            m_window->Enter(what);
        }
        enterAllButRemarks();
        m_window->Key(Qt::Key_Home);
        m_window->Press(kSave);
        QVERIFY(m_session->Told.value(0).startsWith(u"2 requests are saved, 1 line was left out"));
        QCOMPARE(Ask(u"SELECT ItemName FROM STATION..tbNurseLogBook WHERE IdNum = 'A7B' "
                     "ORDER BY LogID"_s),
                 u"EYE DROPS;EAR DROPS"_s);
    }

    void FinishedLine_isOnlyPassedThrough() {
        // By name it costs another price than by code, and seven is not what the dosage says.
        m_window->Enter(u"sevel tid 7 x"_s);
        const QString line = m_window->Line(1);
        m_window->Key(Qt::Key_Up);
        m_window->Enter(u"- - - -"_s);
        QCOMPARE(m_window->Line(1), line);
        // Another item is not taken three times a day because the one before was.
        m_window->Key(Qt::Key_Up);
        m_window->Enter(u"1002"_s);
        QCOMPARE(m_window->Line(1), u" 1|1002|AMLODIPINE 10 MG|||12.75|||12.75"_s);
    }

    void OpenCell_isStoredFirst() {
        m_window->Enter(u"1001 bid 10"_s);
        const auto saveOver = [&](const QString& text) {
            QTest::keyClicks(&m_window->Box, text);
            m_window->Press(kSave);
        };
        m_window->Key(Qt::Key_Home);
        Answer(BoxAnswer::Ok);
        saveOver(u"0"_s);
        QCOMPARE(Said().Text, u"Quantity should be greater than zero!"_s);
        QCOMPARE(m_window->At(), QPoint(1, 4));
        QVERIFY(m_window->Box.hasFocus());
        QCOMPARE(Requests(), 0);
        saveOver(u"4"_s);
        QCOMPARE(Ask(u"SELECT Quantity, Amount FROM STATION..tbNurseLogBook WHERE IdNum = 'A7B'"_s),
                 u"4|34"_s);
    }

    void Box_takesWhatTheColumnTakes_data() {
        Columns<int, QString, QString>();
        const QString long1000 = u"ab'\r\n\t\"é"_s.repeated(150);
        const QString shown = u"AB'  \"É"_s;
        Row("code", 1, long1000, "AB'");
        Row("frequency", 3, long1000, shown);
        Row("remarks", 6, long1000, shown.repeated(3) + u"AB'  "_s);
        Row("quantity", 4, "1a/23", "1/");
    }

    void Box_takesWhatTheColumnTakes() {
        auto [col, pasted, kept] = Fetch<int, QString, QString>();
        while (m_window->Grid.Col() < col)
            m_window->Key(Qt::Key_End);
        QApplication::clipboard()->setText(pasted);
        m_window->Box.paste();
        QCOMPARE(m_window->Box.text(), kept);
        for (char key = ' '; key <= '~'; ++key) {
            m_window->Box.clear();
            QTest::keyClick(&m_window->Box, key);
            const bool numeric = (key >= '0' && key <= '9') || key == '.' || key == '/';
            const QString shown = QString(QLatin1Char(key)).toUpper();
            QCOMPARE(m_window->Box.text(), col != 4 || numeric ? shown : QString());
        }
    }

    void Box_floatsOverTheCell() {
        auto& [window, grid, box] = *m_window;
        const auto isOnCell = [&grid = grid, &box = box] {
            const QRect cell = grid.CellRect(grid.Row(), grid.Col());
            const QPoint beside = box.pos() - cell.topLeft();
            return box.isVisible() && qAbs(beside.x()) <= 2 && qAbs(beside.y()) <= 2 &&
                   cell.width() - box.width() == toolkit::Twips(20, &grid) &&
                   box.height() == cell.height();
        };
        QVERIFY(isOnCell());
        m_window->Enter(kLine);
        QVERIFY(isOnCell());
        grid.setColumnWidth(0, 90);
        QTRY_VERIFY(isOnCell());
        grid.setColumnWidth(1, 140);
        QTRY_VERIFY(isOnCell());
        window.resize(380, 300);
        QTRY_VERIFY(isOnCell());
        for (int line = 3; line < 20; ++line) {
            grid.AddItem();
            m_window->Key(Qt::Key_Down);
        }
        QVERIFY(grid.verticalScrollBar()->value() > 0);
        QVERIFY(isOnCell());
        grid.verticalScrollBar()->setValue(0);
        QVERIFY(isOnCell());
        grid.horizontalScrollBar()->setValue(40);
        QVERIFY(isOnCell());
    }

    void Mouse_leavesAndEntersCells() {
        m_window->Enter(u"1001 BID"_s);
        const auto click = [&](int row, int col) {
            QTest::mouseClick(m_window->Grid.viewport(), Qt::LeftButton, {},
                              m_window->Grid.CellRect(row, col).center());
        };
        click(1, 6);
        QCOMPARE(m_window->At(), QPoint(1, 6));
        QVERIFY(m_window->Box.hasFocus());
        click(1, 2);
        QVERIFY(m_window->Box.isHidden());
        QVERIFY(m_window->Grid.hasFocus());
        QTest::keyClick(&m_window->Grid, Qt::Key_Return);
        QCOMPARE(m_window->At(), QPoint(1, 3));
        QVERIFY(m_window->Box.hasFocus());
        QCOMPARE(m_window->Box.text(), u"BID"_s);
    }

    void F3_takesTheLineOut() {
        m_window->Enter(kLine + u" 1002 BID - -"_s);
        QCOMPARE(m_window->Grid.Rows(), 4);
        m_window->Key(Qt::Key_Up);
        m_window->Key(Qt::Key_F3);
        QCOMPARE(m_window->Grid.Rows(), 3);
        QCOMPARE(m_window->At(), QPoint(2, 1));
        QCOMPARE(m_window->Line(2), u" 2||||||||"_s);
        m_window->Key(Qt::Key_Up);
        m_window->Key(Qt::Key_F3);
        QCOMPARE(m_window->Line(1), u" 1||||||||"_s);
        QCOMPARE(m_window->Grid.Rows(), 3);
    }

    // What the pharmacy's window survives closes the supplies' one.
    void ServerGone_isToldAtAnyCommand() {
        const auto lose = [&](auto& window, int answered, const QString& code,
                              const QString& message, bool staysOpen) {
            Answer(BoxAnswer::Ok);
            PluggedDriver::GoesAfter(answered);
            window.Box.clear();
            window.Enter(code);
            PluggedDriver::Returns();
            QCOMPARE(Said().Text, message + u"The server is gone."_s);
            QCOMPARE(window.Window.isVisible(), staysOpen);
            QCOMPARE(window.At(), QPoint(1, 1));
        };
        for (int answered = 0; answered < 3; ++answered) {
            lose(*m_window, answered, u"1001"_s, u"Error While Selecting Medicine  "_s, true);
            Supplies supplies(m_patient);
            lose(supplies, answered, u"201"_s, u"Error While Selecting Supply  "_s, false);
        }
        QCOMPARE(m_patient.Reloads, 0);
    }
};

QTEST_MAIN(tst_WardSheet)
#include "tst_WardSheet.moc"
