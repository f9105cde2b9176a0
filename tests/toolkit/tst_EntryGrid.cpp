#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <stdexcept>

#include "EntrySheet.h"
#include "Rows.h"
#include "base/Errors.h"
#include "toolkit/CellText.h"
#include "toolkit/Twips.h"

using namespace Qt::StringLiterals;
using namespace toolkit;

class tst_EntryGrid final : public QObject {
    Q_OBJECT
private slots:
    void Setup_givesOneEmptyLine() {
        Sheet sheet;
        QCOMPARE(sheet.Grid.Rows(), 2);
        QCOMPARE(sheet.Grid.Cols(), 8);
        QCOMPARE(sheet.Grid.FixedCols(), 1);
        QCOMPARE(sheet.At(), QPoint(1, 1));
        QCOMPARE(sheet.Grid.TextMatrix(0, 1), u"Dept."_s);
        QCOMPARE(sheet.Grid.model()->headerData(1, Qt::Horizontal).toString(), u"Dept."_s);
        sheet.Type("CA");
        sheet.Grid.Reinitialise();
        QVERIFY(!sheet.Grid.InEditMode());
        QCOMPARE(sheet.Grid.TextMatrix(0, 1), QString());
        QCOMPARE(sheet.Commits.size(), 0);
    }

    void Cells_outsideAreRefused() {
        Sheet sheet;
        QCOMPARE(sheet.Grid.TextMatrix(2, 1), QString());
        QVERIFY_EXCEPTION_THROWN(sheet.Grid.SetTextMatrix(2, 1, {}), base::RuntimeError);
        sheet.Grid.SetCell(40, 40);
        QCOMPARE(sheet.At(), QPoint(1, 7));
    }

    void Sum_addsLeadingNumbers() {
        Sheet sheet;
        sheet.Grid.SetRows(5);
        const char* amounts[] = {"10.25", "", "x", "2 pcs"};
        for (int row = 1; row < 5; ++row)
            sheet.Grid.SetTextMatrix(row, kAmount, QString::fromLatin1(amounts[row - 1]));
        QCOMPARE(sheet.Grid.Sum(kAmount, 1, sheet.Grid.Rows() - 1), 12.25);
        QCOMPARE(sheet.Grid.Sum(kAmount, 2, 1), 0.0);
    }

    void Widths_hideAndMeasure() {
        Sheet sheet;
        QCOMPARE(sheet.Grid.columnWidth(kCode), Twips(1000, &sheet.Grid));
        QVERIFY(sheet.Grid.isColumnHidden(kHidden));
        // An amount is never cut off.
        sheet.Grid.SetNumeric(kCode);
        sheet.Grid.SetTextMatrix(1, kCode, u"922337203685477.00"_s);
        QVERIFY(sheet.Grid.columnWidth(kCode) >=
                sheet.Grid.fontMetrics().horizontalAdvance(sheet.Grid.TextMatrix(1, kCode)));
    }

    void Cell_commitsOnceHoweverItIsLeft_data() {
        Columns<QString, QPoint>();
        for (const char* way : {"Enter", "Tab", "Right"})
            QTest::newRow(way) << QString::fromLatin1(way) << QPoint(1, kType);
        QTest::newRow("Backtab") << u"Backtab"_s << QPoint(1, kDept);
        QTest::newRow("Left") << u"Left"_s << QPoint(1, kDept);
        QTest::newRow("Down") << u"Down"_s << QPoint(2, kDept);
        QTest::newRow("Up") << u"Up"_s << QPoint(1, kCode);
        QTest::newRow("mouse") << u"mouse"_s << QPoint(1, kQuantity);
        QTest::newRow("focus") << u"focus"_s << QPoint(1, kCode);
        QTest::newRow("code") << u"code"_s << QPoint(1, kAmount);
        QTest::newRow("end") << u"end"_s << QPoint(1, kCode);
    }

    void Cell_commitsOnceHoweverItIsLeft() {
        auto [way, cursor] = Fetch<QString, QPoint>();
        Sheet sheet;
        sheet.Grid.SetProtected(3);
        sheet.Grid.SetCol(kCode);
        sheet.Type("101");
        QVERIFY(sheet.Grid.InEditMode());
        QCOMPARE(sheet.Grid.EditText(), u"101"_s);
        QCOMPARE(sheet.Commits.size(), 0);
        const QMap<QString, Qt::Key> keys{
            {u"Enter"_s, Qt::Key_Return},    {u"Tab"_s, Qt::Key_Tab},
            {u"Backtab"_s, Qt::Key_Backtab}, {u"Left"_s, Qt::Key_Left},
            {u"Right"_s, Qt::Key_Right},     {u"Up"_s, Qt::Key_Up},
            {u"Down"_s, Qt::Key_Down}};
        if (keys.contains(way)) {
            sheet.Key(keys[way]);
        } else if (way == u"mouse") {
            sheet.Click(1, kQuantity);
        } else if (way == u"focus") {
            sheet.Close.setFocus();
            QVERIFY(sheet.Close.hasFocus());
        } else if (way == u"code") {
            sheet.Grid.SetCol(kAmount);
        } else {
            QVERIFY(sheet.Grid.EndEditMode());
        }
        QVERIFY(!sheet.Grid.InEditMode());
        QCOMPARE(sheet.Commits, QList<QPoint>{QPoint(1, kCode)});
        QCOMPARE(sheet.Grid.TextMatrix(1, kCode), u"101"_s);
        if (way == u"Right")
            cursor = QPoint(1, kDescription);
        QCOMPARE(sheet.At(), cursor);
    }

    void Enter_onAnUnchangedCellOnlyMovesOn() {
        Sheet sheet;
        sheet.Grid.SetTextMatrix(1, kDept, u"CA"_s);
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.At(), QPoint(1, kCode));
        sheet.Grid.SetCol(kDept);
        sheet.Type("CA");
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.At(), QPoint(1, kCode));
        QCOMPARE(sheet.Commits.size(), 0);
    }

    void Enter_skipsProtectedAndHiddenColumns() {
        Sheet sheet;
        QList<int> reached;
        for (int i = 0; i < 4; ++i) {
            sheet.Key(Qt::Key_Enter);
            reached.append(sheet.Grid.Col());
        }
        QCOMPARE(reached, (QList<int>{kCode, kType, kQuantity, kAmount}));
        sheet.Key(Qt::Key_Enter, Qt::ShiftModifier);
        QCOMPARE(sheet.Grid.Col(), int(kQuantity));
        sheet.Grid.SetCol(kCode);
        sheet.Key(Qt::Key_Right);
        QCOMPARE(sheet.Grid.Col(), int(kDescription));
        sheet.Type("x");
        sheet.Key(Qt::Key_Delete);
        QApplication::clipboard()->setText(u"pasted"_s);
        sheet.Key(Qt::Key_V, Qt::ControlModifier);
        QVERIFY(!sheet.Grid.InEditMode());
        QCOMPARE(sheet.Grid.TextMatrix(1, kDescription), QString());
    }

    void Enter_addsALineOnlyWhenTheLastOneCounts() {
        Sheet sheet;
        sheet.Grid.SetCol(kAmount);
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.Grid.Rows(), 2);
        QCOMPARE(sheet.At(), QPoint(1, kAmount));
        sheet.Grid.SetTextMatrix(1, kCode, u"101"_s);
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.Grid.Rows(), 3);
        QCOMPARE(sheet.At(), QPoint(2, kDept));
        // Enter at the end of a line before the last goes to the line that is there.
        sheet.Grid.SetCell(1, kAmount);
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.Grid.Rows(), 3);
        QCOMPARE(sheet.At(), QPoint(2, kDept));
    }

    void Down_addsALineOnlyWhenTheLastOneCounts() {
        Sheet sheet;
        sheet.Key(Qt::Key_Down);
        QCOMPARE(sheet.Grid.Rows(), 2);
        sheet.Grid.SetCol(kCode);
        sheet.Type("101");
        sheet.Key(Qt::Key_Down);
        QCOMPARE(sheet.Grid.Rows(), 3);
        QCOMPARE(sheet.At(), QPoint(2, kDept));
        sheet.Key(Qt::Key_Up);
        QCOMPARE(sheet.At(), QPoint(1, kDept));
        sheet.Key(Qt::Key_Down);
        QCOMPARE(sheet.Grid.Rows(), 3);
    }

    void Tab_leavesTheGridBehindTheLastCell() {
        Sheet sheet;
        sheet.Grid.SetCol(kAmount);
        sheet.Type("5");
        sheet.Key(Qt::Key_Tab);
        QVERIFY(sheet.Save.hasFocus());
        QCOMPARE(sheet.Commits.size(), 1);
        QCOMPARE(sheet.Grid.Rows(), 2);
    }

    void Escape_takesBackThenLeaves() {
        Sheet sheet;
        QSignalSpy rejected(&sheet.Window, &QDialog::rejected);
        sheet.Type("CA");
        sheet.Key(Qt::Key_Escape);
        QVERIFY(sheet.Grid.hasFocus());
        QVERIFY(!sheet.Grid.InEditMode());
        QCOMPARE(sheet.Grid.TextMatrix(1, kDept), QString());
        sheet.Key(Qt::Key_Escape);
        QVERIFY(sheet.Save.hasFocus());
        sheet.Save.setEnabled(false);
        sheet.Grid.setFocus();
        sheet.Key(Qt::Key_Escape);
        QVERIFY(sheet.Close.hasFocus());
        QCOMPARE(sheet.Commits.size(), 0);
        QCOMPARE(rejected.size(), 0);
    }

    void Handler_movesTheCursor() {
        Sheet sheet;
        sheet.OnCommit = [&](int, int col) { sheet.Grid.SetCol(col == kDept ? kDept : kQuantity); };
        sheet.Type("CA");
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.At(), QPoint(1, kDept));
        sheet.Key(Qt::Key_Return);
        sheet.Type("101");
        sheet.Key(Qt::Key_Down);
        QCOMPARE(sheet.At(), QPoint(1, kQuantity));
        // The clerk's own click says where to go on.
        sheet.Grid.SetCol(kCode);
        sheet.Type("102");
        sheet.Click(1, kDept);
        QCOMPARE(sheet.At(), QPoint(1, kDept));
        QCOMPARE(sheet.Commits.size(), 3);
    }

    void Handler_keepsTheCellOnAClickElsewhere() {
        Sheet sheet;
        sheet.OnCommit = [&](int, int col) { sheet.Grid.SetCol(col); };
        sheet.Type("CA");
        sheet.Click(1, kAmount);
        QCOMPARE(sheet.At(), QPoint(1, kDept));
        sheet.Click(1, kAmount);
        QCOMPARE(sheet.At(), QPoint(1, kAmount));
        QCOMPARE(sheet.Commits.size(), 1);
    }

    void Refused_textIsTypedOnButNotKept() {
        Sheet sheet;
        sheet.Grid.SetTextMatrix(1, kDept, u"CY"_s);
        sheet.OnCommit = [&](int, int) {
            if (sheet.Grid.TextMatrix(1, kDept) != u"CA")
                sheet.Grid.RefuseCommit();
        };
        sheet.Type("ZZ");
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.At(), QPoint(1, kDept));
        QVERIFY(sheet.Grid.InEditMode());
        QCOMPARE(sheet.Grid.EditText(), u"ZZ"_s);
        QCOMPARE(sheet.Grid.TextMatrix(1, kDept), u"CY"_s);
        sheet.Click(1, kAmount);
        QCOMPARE(sheet.At(), QPoint(1, kDept));
        QVERIFY(!sheet.Grid.EndEditMode());
        QCOMPARE(sheet.Commits.size(), 3);
        // What was refused is selected: typing on replaces it.
        sheet.Type("CA");
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.Grid.TextMatrix(1, kDept), u"CA"_s);
        QCOMPARE(sheet.At(), QPoint(1, kCode));
        sheet.Grid.SetCol(kDept);
        sheet.Type("Q");
        sheet.Key(Qt::Key_Return);
        sheet.Key(Qt::Key_Escape);
        QCOMPARE(sheet.Grid.TextMatrix(1, kDept), u"CA"_s);
        QVERIFY(!sheet.Grid.InEditMode());
    }

    void Refused_byFocusIsToldOnce() {
        Sheet sheet;
        sheet.OnCommit = [&](int, int) { sheet.Grid.RefuseCommit(); };
        sheet.Type("ZZ");
        sheet.Close.setFocus();
        QVERIFY(sheet.Close.hasFocus());
        QCOMPARE(sheet.Commits.size(), 1);
        sheet.Grid.setFocus();
        QCOMPARE(sheet.Grid.EditText(), u"ZZ"_s);
        sheet.Save.setFocus();
        QCOMPARE(sheet.Commits.size(), 1);
        QVERIFY(!sheet.Grid.EndEditMode());
        QCOMPARE(sheet.Commits.size(), 2);
        QVERIFY(sheet.Save.hasFocus());
    }

    void Handler_thatThrowsRefuses() {
        Sheet sheet;
        sheet.OnCommit = [](int, int) { throw std::runtime_error("server gone"); };
        sheet.Type("CA");
        QVERIFY_EXCEPTION_THROWN(sheet.Grid.EndEditMode(), std::runtime_error);
        QVERIFY(sheet.Grid.InEditMode());
        QCOMPARE(sheet.Grid.EditText(), u"CA"_s);
        sheet.OnCommit = nullptr;
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.Grid.TextMatrix(1, kDept), u"CA"_s);
        QCOMPARE(sheet.Commits.size(), 2);
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
        sheet.Type("CA");
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.Commits.size(), 1);
        QCOMPARE(sheet.At(), QPoint(1, kCode));
        sheet.Window.activateWindow();
        QTRY_VERIFY(sheet.Grid.hasFocus());
        sheet.Type("101");
        sheet.Close.setFocus();
        QCOMPARE(sheet.Commits.size(), 2);
        QCOMPARE(sheet.Grid.TextMatrix(1, kCode), u"101"_s);
        QCOMPARE(sheet.Grid.TextMatrix(1, kDescription), u"TUBE"_s);
    }

    void Handler_mayClearTheCellAndStay() {
        Sheet sheet;
        sheet.OnCommit = [&](int row, int col) {
            sheet.Grid.SetTextMatrix(row, col, {});
            sheet.Grid.RefuseCommit();
        };
        sheet.Type("CA");
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.At(), QPoint(1, kDept));
        QVERIFY(!sheet.Grid.InEditMode());
        QCOMPARE(sheet.Grid.TextMatrix(1, kDept), QString());
        QCOMPARE(sheet.Commits.size(), 1);
    }

    void Handler_mayDestroyTheGrid() {
        QWidget window;
        auto* grid = new EntryGrid(&window);
        grid->SetRows(2);
        grid->SetCols(2);
        grid->SetFixedRows(1);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        grid->setFocus();
        const QPointer<EntryGrid> gone(grid);
        connect(grid, &EntryGrid::CellCommitted, &window, [grid] { delete grid; });
        QTest::keyClick(grid, Qt::Key_X);
        QVERIFY(gone->InEditMode());
        gone->EndEditMode();
        QVERIFY(!gone);
    }

    void Line_isRemovedOrEmptied() {
        Sheet sheet;
        QSignalSpy removed(&sheet.Grid, &EntryGrid::LineRemoved);
        sheet.Grid.SetRows(4);
        for (int row = 1; row < 4; ++row)
            sheet.Grid.SetTextMatrix(row, kCode, QString::number(row));
        sheet.Grid.SetCell(2, kDept);
        sheet.Type("half typed");
        sheet.Key(Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(sheet.Grid.Rows(), 3);
        QCOMPARE(sheet.Grid.TextMatrix(2, kCode), u"3"_s);
        QCOMPARE(sheet.At(), QPoint(2, kDept));
        sheet.Key(Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(sheet.At(), QPoint(1, kDept));
        sheet.Key(Qt::Key_Delete, Qt::ControlModifier);
        QCOMPARE(sheet.Grid.Rows(), 2);
        QCOMPARE(sheet.Grid.TextMatrix(1, kCode), QString());
        QCOMPARE(sheet.Commits.size(), 0);
        QCOMPARE(removed.size(), 3);
    }

    void Text_takesWhatTheColumnTakes_data() {
        Columns<int, QString, QString>();
        const auto row = [](const char* name, int col, const char* pasted, const char* kept) {
            QTest::newRow(name) << col << QString::fromUtf8(pasted) << QString::fromUtf8(kept);
        };
        row("lines", kCode, "a\r\nb\tc\n", "a b c");
        row("table", kCode, "Niño\t1\r\nPérez\t2\r\n", "Niño 1 Pérez 2");
        row("number", kQuantity, "12.5", "12.5");
        row("signs and groups", kQuantity, "-1,250.50.7 pcs", "1250.507");
        row("no number", kQuantity, "none", "8");
        row("pick", kType, "STAT", "STAT");
        row("no pick", kType, "LATER", "");
        QTest::newRow("long") << int(kCode) << QString(1000, u'x') << QString(1000, u'x');
    }

    void Text_takesWhatTheColumnTakes() {
        auto [col, pasted, kept] = Fetch<int, QString, QString>();
        Sheet sheet;
        sheet.Grid.SetTextMatrix(1, kQuantity, u"8"_s);
        sheet.Grid.SetCol(col);
        QApplication::clipboard()->setText(pasted);
        sheet.Key(Qt::Key_Insert, Qt::ShiftModifier);
        QVERIFY(sheet.Grid.EndEditMode());
        QCOMPARE(sheet.Grid.TextMatrix(1, col), kept);
        // Typed letter by letter a number's cell takes the same.
        if (col == kQuantity && kept != u"8") {
            sheet.Type(pasted.toLatin1());
            sheet.Key(Qt::Key_Return);
            QCOMPARE(sheet.Grid.TextMatrix(1, col), kept);
        }
    }

    void Keys_editInPlace() {
        Sheet sheet;
        sheet.Grid.SetTextMatrix(1, kCode, u"101"_s);
        sheet.Grid.SetCol(kCode);
        sheet.Key(Qt::Key_F2);
        sheet.Key(Qt::Key_Left);
        sheet.Type("9");
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.Grid.TextMatrix(1, kCode), u"1091"_s);
        sheet.Grid.SetCol(kCode);
        sheet.Key(Qt::Key_Backspace);
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.Grid.TextMatrix(1, kCode), QString());
        QCOMPARE(sheet.Commits.size(), 2);
        // Looking at what the program wrote does not change it, even where the cell would not take
        // it.
        sheet.Grid.SetTextMatrix(1, kQuantity, u"-2"_s);
        sheet.Grid.SetCol(kQuantity);
        sheet.Key(Qt::Key_F2);
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.Grid.TextMatrix(1, kQuantity), u"-2"_s);
        sheet.Grid.SetCol(kQuantity);
        sheet.Type("x");
        QVERIFY(!sheet.Grid.InEditMode());
        QCOMPARE(sheet.Commits.size(), 2);
    }

    void Clipboard_copiesAndCuts() {
        Sheet sheet;
        sheet.Grid.SetTextMatrix(1, kDescription, u"TUBE"_s);
        sheet.Grid.SetTextMatrix(1, kCode, u"101"_s);
        sheet.Grid.SetCol(kDescription);
        sheet.Key(Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"TUBE"_s);
        QCOMPARE(sheet.Grid.TextMatrix(1, kDescription), u"TUBE"_s);
        sheet.Grid.SetCol(kCode);
        sheet.Key(Qt::Key_Insert, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"101"_s);
        sheet.Key(Qt::Key_X, Qt::ControlModifier);
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.Grid.TextMatrix(1, kCode), QString());
    }

    void PickList_opensByKeyAndPicks() {
        Sheet sheet;
        sheet.Grid.SetCol(kType);
        sheet.Type("r");
        QVERIFY(sheet.PopUp());
        QTest::keyClick(sheet.PopUp(), Qt::Key_Return);
        QCOMPARE(sheet.Grid.TextMatrix(1, kType), u"ROUTINE"_s);
        QCOMPARE(sheet.At(), QPoint(1, kQuantity));
        const std::pair<Qt::Key, Qt::KeyboardModifiers> opening[] = {
            {Qt::Key_F4, Qt::NoModifier}, {Qt::Key_Down, Qt::AltModifier}};
        for (const auto& [key, modifiers] : opening) {
            sheet.Grid.SetCol(kType);
            sheet.Key(key, modifiers);
            QVERIFY(sheet.PopUp());
            QTest::keyClick(sheet.PopUp(), Qt::Key_Up);
            QTest::keyClick(sheet.PopUp(), Qt::Key_Escape);
            QVERIFY(!sheet.PopUp());
        }
        QCOMPARE(sheet.Grid.TextMatrix(1, kType), u"ROUTINE"_s);
        sheet.Key(Qt::Key_Delete);
        QCOMPARE(sheet.Grid.TextMatrix(1, kType), QString());
        QCOMPARE(sheet.Commits.size(), 2);
        sheet.Type("x");
        QVERIFY(!sheet.PopUp());
    }

    void PickList_isReachedByMouse() {
        Sheet sheet;
        sheet.Click(1, kType);
        auto* button = sheet.Grid.findChild<QToolButton*>(u"cmdList"_s);
        QVERIFY(button->isVisible());
        QTest::mouseClick(button, Qt::LeftButton);
        auto* list = qobject_cast<QListWidget*>(sheet.PopUp());
        QVERIFY(list);
        QCOMPARE(list->count(), 3);
        QCOMPARE(list->item(0)->text(), QString());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(list->item(1)).center());
        QCOMPARE(sheet.Grid.TextMatrix(1, kType), u"STAT"_s);
        QCOMPARE(sheet.Commits.size(), 1);
        sheet.Click(1, kDescription);
        QVERIFY(!button->isVisible());
    }

    void Lookup_handsOverTheChoice() {
        Sheet sheet;
        QString asked;
        connect(&sheet.Grid, &EntryGrid::LookupRequested, &sheet.Window, [&](int row, int col) {
            asked = u"%1,%2,%3"_s.arg(row).arg(col).arg(sheet.Grid.EditText());
            sheet.Grid.CommitText(u"105"_s);
        });
        sheet.Grid.SetCol(kCode);
        sheet.Type("10");
        sheet.Key(Qt::Key_F1);
        QCOMPARE(asked, u"1,2,10"_s);
        QCOMPARE(sheet.Grid.TextMatrix(1, kCode), u"105"_s);
        QCOMPARE(sheet.Commits, QList<QPoint>{QPoint(1, kCode)});
        QCOMPARE(sheet.At(), QPoint(1, kType));
        asked.clear();
        sheet.Grid.SetCol(kQuantity);
        sheet.Key(Qt::Key_F1);
        QCOMPARE(asked, QString());
    }

    void Lookup_cancelledKeepsWhatIsTyped() {
        Sheet sheet;
        connect(&sheet.Grid, &EntryGrid::LookupRequested, &sheet.Window, [&] {
            sheet.Close.setFocus();
            sheet.Grid.setFocus();
        });
        sheet.Type("C");
        sheet.Key(Qt::Key_F1);
        QVERIFY(sheet.Grid.InEditMode());
        QCOMPARE(sheet.Commits.size(), 0);
        sheet.Type("A");
        sheet.Key(Qt::Key_Return);
        QCOMPARE(sheet.Grid.TextMatrix(1, kDept), u"CA"_s);
        QCOMPARE(sheet.Commits.size(), 1);
    }

    void Protected_byTheRowItself() {
        Sheet sheet;
        sheet.Grid.SetProtectedWhen(
            kAmount, [&](int row) { return !sheet.Grid.TextMatrix(row, kHidden).isEmpty(); });
        sheet.Grid.SetCol(kAmount);
        sheet.Type("5");
        QVERIFY(sheet.Grid.InEditMode());
        QVERIFY(sheet.Grid.EndEditMode());
        sheet.Grid.SetTextMatrix(1, kHidden, u"46"_s);
        sheet.Type("6");
        QVERIFY(!sheet.Grid.InEditMode());
        QCOMPARE(sheet.Grid.TextMatrix(1, kAmount), u"5"_s);
    }

    void ContextMenu_reachesEverything() {
        Sheet sheet;
        QSignalSpy lookup(&sheet.Grid, &EntryGrid::LookupRequested);
        const auto choose = [&](int entry) {
            const QPoint place(5, 5);
            QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                    sheet.Grid.viewport()->mapToGlobal(place));
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
        sheet.Type("101");
        choose(Copy);
        QVERIFY(sheet.Grid.InEditMode());
        QVERIFY(sheet.Grid.EndEditMode());
        choose(Add);
        QCOMPARE(sheet.Grid.Rows(), 3);
        choose(PasteHere);
        QVERIFY(sheet.Grid.EndEditMode());
        QCOMPARE(sheet.Grid.TextMatrix(2, kDept), u"101"_s);
        choose(Remove);
        QCOMPARE(sheet.Grid.Rows(), 2);
    }
};

QTEST_MAIN(tst_EntryGrid)
#include "tst_EntryGrid.moc"
