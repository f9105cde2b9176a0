#include "EntrySheet.h"
#include "Rows.h"
#include "base/Errors.h"
#include "toolkit/Twips.h"

using namespace toolkit;

namespace {

const QString kLine = u"CY|100|TUBE|STAT|-8|5"_s;

}  // namespace

class tst_EntryGrid final : public QObject {
    Q_OBJECT
private slots:
    void Keys_fillALine_data() {
        Columns<QString, int, QString, QString, int, QString>();
        const auto row = [](const char* keys, int col, const char* state, const char* line,
                            int commits, const char* handler = "takes") {
            QTest::addRow("%s in column %d, handler %s", keys, col, handler)
                << QString::fromLatin1(keys) << col << QString::fromLatin1(state)
                << QString::fromLatin1(line) << commits << QString::fromLatin1(handler);
        };
        const char* same = "CY|100|TUBE|STAT|-8|5";
        row("101", kCode, "1,2/2 typing 101", same, 0);
        row("101 Return", kCode, "1,4/2", "CY|101|TUBE|STAT|-8|5", 1);
        row("101 Tab", kCode, "1,4/2", "CY|101|TUBE|STAT|-8|5", 1);
        row("101 Right", kCode, "1,3/2", "CY|101|TUBE|STAT|-8|5", 1);
        row("101 Left", kCode, "1,1/2", "CY|101|TUBE|STAT|-8|5", 1);
        row("101 Backtab", kCode, "1,1/2", "CY|101|TUBE|STAT|-8|5", 1);
        row("101 Ctrl+End Ctrl+Home Return", kCode, "1,4/2", "CY|101|TUBE|STAT|-8|5", 1);
        row("101 Up", kCode, "1,2/2", "CY|101|TUBE|STAT|-8|5", 1);
        row("101 Down", kCode, "2,1/3", "CY|101|TUBE|STAT|-8|5", 1);
        row("Return", kCode, "1,4/2", same, 0);
        row("100 Return", kCode, "1,4/2", same, 0);
        row("Enter Enter Enter", kDept, "1,5/2", same, 0);
        row("Shift+Enter", kType, "1,2/2", same, 0);
        row("Return", kAmount, "2,1/3", same, 0);
        row("Return Up Down Down", kAmount, "2,1/3", same, 0);
        row("7 Tab", kAmount, "1,6/2 Save", "CY|100|TUBE|STAT|-8|7", 1);
        row("F2 Left 9 Return", kCode, "1,4/2", "CY|1090|TUBE|STAT|-8|5", 1);
        row("Backspace Return", kCode, "1,4/2", "CY||TUBE|STAT|-8|5", 1);
        row("Del Return", kCode, "1,4/2", "CY||TUBE|STAT|-8|5", 1);
        row("101 Esc", kCode, "1,2/2", same, 0);
        row("101 Esc Esc", kCode, "1,2/2 Save", same, 0);
        // Looking at what the program wrote does not change it, even where the cell would not take
        // it.
        row("F2 Return", kQuantity, "1,6/2", same, 0);
        row("x", kQuantity, "1,5/2", same, 0);
        row("-1,250.50.7pcs Return", kQuantity, "1,6/2", "CY|100|TUBE|STAT|1250.507|5", 1);
        row("x Del Shift+Ins", kDescription, "1,3/2", same, 0);
        row("r Return", kType, "1,5/2", "CY|100|TUBE|ROUTINE|-8|5", 1);
        row("F4 Down Tab", kType, "1,5/2", "CY|100|TUBE|ROUTINE|-8|5", 1);
        row("Alt+Down Up Esc", kType, "1,4/2", same, 0);
        row("Del", kType, "1,4/2", "CY|100|TUBE||-8|5", 1);
        row("x", kType, "1,4/2", same, 0);
        row("12 Return", kType, "1,6/2", "CY|100|TUBE|STAT|12|5", 1);
        row("half Ctrl+Del", kCode, "1,2/2", "|||||", 0);
        // However a cell is left, it commits once.
        row("101 @5", kCode, "1,5/2", "CY|101|TUBE|STAT|-8|5", 1);
        row("101 @Close", kCode, "1,2/2 Close", "CY|101|TUBE|STAT|-8|5", 1);
        row("101 @end", kCode, "1,2/2", "CY|101|TUBE|STAT|-8|5", 1);
        // The clerk's own click says where to go on, but not where the handler keeps the cell.
        row("101 Down", kCode, "1,5/2", "CY|101|TUBE|STAT|-8|5", 1, "moves");
        row("101 @1", kCode, "1,1/2", "CY|101|TUBE|STAT|-8|5", 1, "moves");
        row("CA Return", kDept, "1,1/2", "CA|100|TUBE|STAT|-8|5", 1, "keeps");
        row("CA @6", kDept, "1,1/2", "CA|100|TUBE|STAT|-8|5", 1, "keeps");
        row("CA @6 @6", kDept, "1,6/2", "CA|100|TUBE|STAT|-8|5", 1, "keeps");
        row("ZZ Return", kDept, "1,1/2 typing ZZ", same, 1, "refuses");
        row("ZZ Return @6 @end", kDept, "1,1/2 typing ZZ", same, 3, "refuses");
        row("ZZ Return Esc", kDept, "1,1/2", same, 1, "refuses");
        // What was refused is selected: typing on replaces it.
        row("ZZ Return CA Return", kDept, "1,2/2", "CA|100|TUBE|STAT|-8|5", 2, "refuses");
        row("r Return", kType, "1,4/2", same, 1, "refuses");
        // A refusal by the keyboard's going is told once.
        row("ZZ @Close", kDept, "1,1/2 typing ZZ Close", same, 1, "refuses");
        row("ZZ @Close @Grid @Save", kDept, "1,1/2 typing ZZ Save", same, 1, "refuses");
        row("ZZ @Close @end", kDept, "1,1/2 typing ZZ Close", same, 2, "refuses");
        row("CA Return", kDept, "1,1/2", "|100|TUBE|STAT|-8|5", 1, "clears");
        row("CA @end", kDept, "1,1/2 typing CA", same, 1, "throws");
        row("CA @end @end", kDept, "1,1/2 typing CA", same, 2, "throws");
    }

    void Keys_fillALine() {
        const auto [keys, col, state, line, commits, handler] =
            Fetch<QString, int, QString, QString, int, QString>();
        Sheet sheet;
        EntryGrid& grid = sheet.Grid;
        sheet.OnCommit = [&grid, handler = handler](int row, int col) {
            if (handler == u"moves")
                grid.SetCol(kQuantity);
            if (handler == u"keeps")
                grid.SetCol(col);
            if (handler == u"clears")
                grid.SetTextMatrix(row, col, {});
            if (handler == u"clears" ||
                (handler == u"refuses" && grid.TextMatrix(row, col) != u"CA"))
                grid.RefuseCommit();
            if (handler == u"throws")
                throw std::runtime_error("the server is gone");
        };
        sheet.Write(1, kLine);
        sheet.Press(col, keys);
        QVERIFY(!sheet.PopUp());
        QCOMPARE(sheet.State(), state);
        QCOMPARE(sheet.Line(), line);
        QCOMPARE(sheet.Commits.size(), commits);
    }

    void Line_isBegunOnlyBehindOneThatCounts() {
        Sheet sheet;
        sheet.Press(kAmount, u"Return"_s);
        QCOMPARE(sheet.State(), u"1,6/2"_s);
        sheet.Press(u"Down"_s);
        QCOMPARE(sheet.State(), u"1,6/2"_s);
        sheet.Press(kCode, u"101 Down"_s);
        QCOMPARE(sheet.State(), u"2,1/3"_s);
        QVERIFY(!sheet.Grid.AddLine());
    }

    void Line_isRemovedOrEmptied() {
        Sheet sheet;
        QSignalSpy removed(&sheet.Grid, &EntryGrid::LineRemoved);
        sheet.Grid.SetRows(4);
        for (int row = 1; row < 4; ++row)
            sheet.Write(row, u"CY|10%1|TUBE|STAT|1|5"_s.arg(row));
        sheet.Grid.SetCell(2, kDept);
        sheet.Press(u"Ctrl+Del"_s);
        QCOMPARE(sheet.State(), u"2,1/3"_s);
        QCOMPARE(sheet.Line(2), u"CY|103|TUBE|STAT|1|5"_s);
        sheet.Press(u"Ctrl+Del"_s);
        QCOMPARE(sheet.State(), u"1,1/2"_s);
        sheet.Press(u"Ctrl+Del"_s);
        QCOMPARE(sheet.Line(), u"|||||"_s);
        QCOMPARE(removed.size(), 3);
        QCOMPARE(sheet.Commits.size(), 0);
    }

    void Program_readsAndWritesCells() {
        Sheet sheet;
        sheet.Grid.SetRows(5);
        const char* amounts[] = {"10.25", "", "x", "2 pcs"};
        for (int row = 1; row < 5; ++row)
            sheet.Grid.SetTextMatrix(row, kAmount, QString::fromLatin1(amounts[row - 1]));
        QCOMPARE(sheet.Grid.Sum(kAmount, 1, 4), 12.25);
        QCOMPARE(sheet.Grid.Sum(kAmount, 2, 1), 0.0);
        QCOMPARE(sheet.Grid.TextMatrix(5, 1), QString());
        QVERIFY_EXCEPTION_THROWN(sheet.Grid.SetTextMatrix(5, 1, {}), base::RuntimeError);
        sheet.Press(kDept, u"CA"_s);
        sheet.Grid.SetCell(40, 40);
        QCOMPARE(sheet.State(), u"4,7/5"_s);
        QCOMPARE(sheet.Commits, QList<QPoint>{QPoint(1, kDept)});
        QCOMPARE(sheet.Grid.model()->headerData(1, Qt::Horizontal).toString(), u"Dept."_s);
        sheet.Press(u"Home x"_s);
        sheet.Grid.Reinitialise();
        QCOMPARE(sheet.State(), u"1,1/5"_s);
        QCOMPARE(sheet.Grid.TextMatrix(0, 1), QString());
        QCOMPARE(sheet.Commits.size(), 1);
    }

    void Widths_hideAndMeasure() {
        Sheet sheet;
        QCOMPARE(sheet.Grid.columnWidth(kCode), Twips(1000, &sheet.Grid));
        QVERIFY(sheet.Grid.isColumnHidden(kHidden));
        // An amount is never cut off.
        sheet.Grid.SetTextMatrix(1, kAmount, u"922337203685477.00"_s);
        QVERIFY(sheet.Grid.columnWidth(kAmount) >=
                sheet.Grid.fontMetrics().horizontalAdvance(sheet.Grid.TextMatrix(1, kAmount)));
    }

    void Escape_goesToCloseWhereSaveIsClosed() {
        Sheet sheet;
        sheet.Save.setEnabled(false);
        sheet.Press(u"Esc"_s);
        QCOMPARE(sheet.State(), u"1,1/2 Close"_s);
        QVERIFY(sheet.Window.isVisible());
    }

    void Handler_withADialogCommitsOnce() {
        Sheet sheet;
        sheet.OnCommit = [&](int row, int) {
            QDialog box(&sheet.Window);
            QLineEdit search(&box);
            QTimer::singleShot(0, &box, [&] {
                search.setFocus();
                sheet.Grid.SetTextMatrix(row, kDescription, u"TUBE"_s);
                QTest::keyClick(&sheet.Grid, Qt::Key_X);
                box.accept();
            });
            box.exec();
        };
        sheet.Press(u"CA Return"_s);
        QCOMPARE(sheet.Commits.size(), 1);
        sheet.Window.activateWindow();
        QTRY_VERIFY(sheet.Grid.hasFocus());
        sheet.Press(u"101"_s);
        sheet.Close.setFocus();
        QCOMPARE(sheet.Commits.size(), 2);
        QCOMPARE(sheet.Line(), u"CA|101|TUBE|||"_s);
    }

    void Handler_mayDestroyTheGrid() {
        QWidget window;
        QPointer<EntryGrid> grid(new EntryGrid(&window));
        grid->SetRows(2);
        grid->SetCols(2);
        window.show();
        grid->setFocus();
        connect(grid, &EntryGrid::CellCommitted, &window, [&] { delete grid; });
        QTest::keyClick(grid, Qt::Key_X);
        QVERIFY(grid->InEditMode());
        grid->EndEditMode();
        QVERIFY(!grid);
    }

    void Paste_takesWhatTheColumnTakes_data() {
        Columns<int, QString, QString>();
        const auto row = [](const char* name, int col, const char* pasted, const char* kept) {
            QTest::newRow(name) << col << QString::fromUtf8(pasted) << QString::fromUtf8(kept);
        };
        row("lines", kCode, "a\r\nb\tc\n", "a b c");
        row("table", kCode, "Niño\t1\r\nPérez\t2\r\n", "Niño 1 Pérez 2");
        row("signs and groups", kQuantity, "-1,250.50.7 pcs", "1250.507");
        row("no number", kQuantity, "none", "-8");
        row("pick", kType, "ROUTINE\n", "ROUTINE");
        row("no pick", kType, "LATER", "STAT");
    }

    void Paste_takesWhatTheColumnTakes() {
        auto [col, pasted, kept] = Fetch<int, QString, QString>();
        Sheet sheet;
        sheet.Write(1, kLine);
        QApplication::clipboard()->setText(pasted);
        sheet.Press(col, u"Shift+Ins"_s);
        QVERIFY(sheet.Grid.EndEditMode());
        QCOMPARE(sheet.Grid.TextMatrix(1, col), kept);
    }

    void Copy_andCutFillTheClipboard() {
        Sheet sheet;
        sheet.Write(1, kLine);
        sheet.Press(kDescription, u"Ctrl+X"_s);
        QCOMPARE(QApplication::clipboard()->text(), u"TUBE"_s);
        sheet.Press(kCode, u"Ctrl+Ins"_s);
        QCOMPARE(QApplication::clipboard()->text(), u"100"_s);
        sheet.Press(u"Ctrl+X Return"_s);
        QCOMPARE(sheet.Line(), u"CY||TUBE|STAT|-8|5"_s);
    }

    void Mouse_opensTheListAndTheCell() {
        Sheet sheet;
        sheet.Click(1, kType);
        auto* button = sheet.Grid.findChild<QToolButton*>(u"cmdList"_s);
        QTest::mouseClick(button, Qt::LeftButton);
        auto* list = qobject_cast<QListWidget*>(sheet.PopUp());
        QCOMPARE(list->count(), 3);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->item(1)).center());
        QCOMPARE(sheet.Line(), u"|||STAT||"_s);
        QCOMPARE(sheet.Commits.size(), 1);
        sheet.Click(1, kAmount);
        QVERIFY(!button->isVisible());
        sheet.Grid.SetTextMatrix(1, kAmount, u"5"_s);
        const QRect cell = sheet.Grid.visualRect(sheet.Grid.currentIndex());
        QTest::mouseDClick(sheet.Grid.viewport(), Qt::LeftButton, {}, cell.center());
        QCOMPARE(sheet.State(), u"1,6/2 typing 5"_s);
    }

    void Lookup_handsOverTheChoice() {
        Sheet sheet;
        QStringList asked;
        connect(&sheet.Grid, &EntryGrid::LookupRequested, &sheet.Window, [&](int row, int col) {
            asked << u"%1,%2,%3"_s.arg(row).arg(col).arg(sheet.Grid.EditText());
            // The list comes and goes; for the code nothing is chosen.
            sheet.Close.setFocus();
            sheet.Grid.setFocus();
            if (col == kDept)
                sheet.Grid.CommitText(u"CA"_s);
        });
        sheet.Press(u"c F1"_s);
        QCOMPARE(sheet.State(), u"1,2/2"_s);
        sheet.Press(u"10 F1 5 Return"_s);
        QCOMPARE(sheet.Line(), u"CA|105||||"_s);
        QCOMPARE(sheet.Commits, (QList<QPoint>{QPoint(1, kDept), QPoint(1, kCode)}));
        sheet.Press(kQuantity, u"F1"_s);
        QCOMPARE(asked, (QStringList{u"1,1,c"_s, u"1,2,10"_s}));
    }

    void Protected_byTheRowItself() {
        Sheet sheet;
        sheet.Grid.SetProtectedWhen(
            kAmount, [&](int row) { return sheet.Grid.TextMatrix(row, kCode).isEmpty(); });
        sheet.Press(kAmount, u"5"_s);
        QCOMPARE(sheet.State(), u"1,6/2"_s);
        sheet.Write(1, u"CY|101"_s);
        sheet.Press(u"6"_s);
        QCOMPARE(sheet.State(), u"1,6/2 typing 6"_s);
    }

    void ContextMenu_reachesEverything() {
        Sheet sheet;
        QSignalSpy lookup(&sheet.Grid, &EntryGrid::LookupRequested);
        const auto choose = [&](int entry) {
            QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
            QApplication::sendEvent(sheet.Grid.viewport(), &event);
            auto* menu = qobject_cast<QMenu*>(sheet.PopUp());
            QList<QAction*> actions = menu->actions();
            actions.removeIf([](const QAction* action) { return action->isSeparator(); });
            QVERIFY(actions[entry]->isEnabled());
            actions[entry]->trigger();
            menu->close();
        };
        enum { List, Copy, PasteHere, Add, Remove };
        sheet.Grid.SetCol(kCode);
        choose(List);
        QCOMPARE(lookup.size(), 1);
        sheet.Press(u"101"_s);
        choose(Copy);
        QCOMPARE(sheet.State(), u"1,2/2 typing 101"_s);
        QVERIFY(sheet.Grid.EndEditMode());
        choose(Add);
        choose(PasteHere);
        QCOMPARE(sheet.State(), u"2,1/3 typing 101"_s);
        choose(Remove);
        QCOMPARE(sheet.State(), u"1,1/2"_s);
    }
};

QTEST_MAIN(tst_EntryGrid)
#include "tst_EntryGrid.moc"
