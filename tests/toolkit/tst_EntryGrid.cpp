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
#include "base/Errors.h"
#include "toolkit/CellText.h"
#include "toolkit/Twips.h"

using namespace toolkit;

class tst_EntryGrid final : public QObject {
    Q_OBJECT
private slots:
    void Setup_givesOneEmptyLine();
    void Cells_outsideAreRefused();
    void Sum_addsLeadingNumbers();
    void Widths_hideAndMeasure();
    void Cell_commitsOnceHoweverItIsLeft_data();
    void Cell_commitsOnceHoweverItIsLeft();
    void Enter_onAnUnchangedCellOnlyMovesOn();
    void Enter_skipsProtectedAndHiddenColumns();
    void Enter_addsALineOnlyWhenTheLastOneCounts();
    void Down_addsALineOnlyWhenTheLastOneCounts();
    void Tab_leavesTheGridBehindTheLastCell();
    void Escape_takesBackThenLeaves();
    void Handler_movesTheCursor();
    void Handler_keepsTheCellOnAClickElsewhere();
    void Refused_textIsTypedOnButNotKept();
    void Refused_byFocusIsToldOnce();
    void Handler_thatThrowsRefuses();
    void Handler_withADialogCommitsOnce();
    void Handler_mayClearTheCellAndStay();
    void Handler_mayDestroyTheGrid();
    void Line_isRemovedOrEmptied();
    void Text_takesWhatTheColumnTakes_data();
    void Text_takesWhatTheColumnTakes();
    void Keys_editInPlace();
    void Clipboard_copiesAndCuts();
    void PickList_opensByKeyAndPicks();
    void PickList_isReachedByMouse();
    void Lookup_handsOverTheChoice();
    void Lookup_cancelledKeepsWhatIsTyped();
    void Protected_byTheRowItself();
    void ContextMenu_reachesEverything();
};

void tst_EntryGrid::Setup_givesOneEmptyLine() {
    Sheet sheet;
    QCOMPARE(sheet.Grid.Rows(), 2);
    QCOMPARE(sheet.Grid.Cols(), 8);
    QCOMPARE(sheet.Grid.FixedCols(), 1);
    QCOMPARE(sheet.At(), QPoint(1, 1));
    QCOMPARE(sheet.Grid.TextMatrix(0, 1), QStringLiteral("Dept."));
    QCOMPARE(sheet.Grid.model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Dept."));
    sheet.Type("CA");
    sheet.Grid.Reinitialise();
    QVERIFY(!sheet.Grid.InEditMode());
    QCOMPARE(sheet.Grid.TextMatrix(0, 1), QString());
    QCOMPARE(sheet.Commits.size(), 0);
}

void tst_EntryGrid::Cells_outsideAreRefused() {
    Sheet sheet;
    QCOMPARE(sheet.Grid.TextMatrix(2, 1), QString());
    QVERIFY_EXCEPTION_THROWN(sheet.Grid.SetTextMatrix(2, 1, {}), base::RuntimeError);
    sheet.Grid.SetCell(40, 40);
    QCOMPARE(sheet.At(), QPoint(1, 7));
}

void tst_EntryGrid::Sum_addsLeadingNumbers() {
    Sheet sheet;
    sheet.Grid.SetRows(5);
    const char* amounts[] = {"10.25", "", "x", "2 pcs"};
    for (int row = 1; row < 5; ++row)
        sheet.Grid.SetTextMatrix(row, kAmount, QString::fromLatin1(amounts[row - 1]));
    QCOMPARE(sheet.Grid.Sum(kAmount, 1, sheet.Grid.Rows() - 1), 12.25);
    QCOMPARE(sheet.Grid.Sum(kAmount, 2, 1), 0.0);
}

void tst_EntryGrid::Widths_hideAndMeasure() {
    Sheet sheet;
    QCOMPARE(sheet.Grid.columnWidth(kCode), Twips(1000, &sheet.Grid));
    QVERIFY(sheet.Grid.isColumnHidden(kHidden));
    // An amount is never cut off.
    sheet.Grid.SetNumeric(kCode);
    sheet.Grid.SetTextMatrix(1, kCode, QStringLiteral("922337203685477.00"));
    QVERIFY(sheet.Grid.columnWidth(kCode) >=
            sheet.Grid.fontMetrics().horizontalAdvance(sheet.Grid.TextMatrix(1, kCode)));
}

void tst_EntryGrid::Cell_commitsOnceHoweverItIsLeft_data() {
    QTest::addColumn<QString>("way");
    QTest::addColumn<QPoint>("cursor");
    for (const char* way : {"Enter", "Tab", "Right"})
        QTest::newRow(way) << QString::fromLatin1(way) << QPoint(1, kType);
    QTest::newRow("Backtab") << QStringLiteral("Backtab") << QPoint(1, kDept);
    QTest::newRow("Left") << QStringLiteral("Left") << QPoint(1, kDept);
    QTest::newRow("Down") << QStringLiteral("Down") << QPoint(2, kDept);
    QTest::newRow("Up") << QStringLiteral("Up") << QPoint(1, kCode);
    QTest::newRow("mouse") << QStringLiteral("mouse") << QPoint(1, kQuantity);
    QTest::newRow("focus") << QStringLiteral("focus") << QPoint(1, kCode);
    QTest::newRow("code") << QStringLiteral("code") << QPoint(1, kAmount);
    QTest::newRow("end") << QStringLiteral("end") << QPoint(1, kCode);
}

void tst_EntryGrid::Cell_commitsOnceHoweverItIsLeft() {
    QFETCH(QString, way);
    QFETCH(QPoint, cursor);
    Sheet sheet;
    sheet.Grid.SetProtected(3);
    sheet.Grid.SetCol(kCode);
    sheet.Type("101");
    QVERIFY(sheet.Grid.InEditMode());
    QCOMPARE(sheet.Grid.EditText(), QStringLiteral("101"));
    QCOMPARE(sheet.Commits.size(), 0);
    const QMap<QString, Qt::Key> keys{
        {QStringLiteral("Enter"), Qt::Key_Return},    {QStringLiteral("Tab"), Qt::Key_Tab},
        {QStringLiteral("Backtab"), Qt::Key_Backtab}, {QStringLiteral("Left"), Qt::Key_Left},
        {QStringLiteral("Right"), Qt::Key_Right},     {QStringLiteral("Up"), Qt::Key_Up},
        {QStringLiteral("Down"), Qt::Key_Down}};
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
    QCOMPARE(sheet.Grid.TextMatrix(1, kCode), QStringLiteral("101"));
    if (way == u"Right")
        cursor = QPoint(1, kDescription);
    QCOMPARE(sheet.At(), cursor);
}

void tst_EntryGrid::Enter_onAnUnchangedCellOnlyMovesOn() {
    Sheet sheet;
    sheet.Grid.SetTextMatrix(1, kDept, QStringLiteral("CA"));
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.At(), QPoint(1, kCode));
    sheet.Grid.SetCol(kDept);
    sheet.Type("CA");
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.At(), QPoint(1, kCode));
    QCOMPARE(sheet.Commits.size(), 0);
}

void tst_EntryGrid::Enter_skipsProtectedAndHiddenColumns() {
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
    QApplication::clipboard()->setText(QStringLiteral("pasted"));
    sheet.Key(Qt::Key_V, Qt::ControlModifier);
    QVERIFY(!sheet.Grid.InEditMode());
    QCOMPARE(sheet.Grid.TextMatrix(1, kDescription), QString());
}

void tst_EntryGrid::Enter_addsALineOnlyWhenTheLastOneCounts() {
    Sheet sheet;
    sheet.Grid.SetCol(kAmount);
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.Grid.Rows(), 2);
    QCOMPARE(sheet.At(), QPoint(1, kAmount));
    sheet.Grid.SetTextMatrix(1, kCode, QStringLiteral("101"));
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.Grid.Rows(), 3);
    QCOMPARE(sheet.At(), QPoint(2, kDept));
    // Enter at the end of a line before the last goes to the line that is there.
    sheet.Grid.SetCell(1, kAmount);
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.Grid.Rows(), 3);
    QCOMPARE(sheet.At(), QPoint(2, kDept));
}

void tst_EntryGrid::Down_addsALineOnlyWhenTheLastOneCounts() {
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

void tst_EntryGrid::Tab_leavesTheGridBehindTheLastCell() {
    Sheet sheet;
    sheet.Grid.SetCol(kAmount);
    sheet.Type("5");
    sheet.Key(Qt::Key_Tab);
    QVERIFY(sheet.Save.hasFocus());
    QCOMPARE(sheet.Commits.size(), 1);
    QCOMPARE(sheet.Grid.Rows(), 2);
}

void tst_EntryGrid::Escape_takesBackThenLeaves() {
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

void tst_EntryGrid::Handler_movesTheCursor() {
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

void tst_EntryGrid::Handler_keepsTheCellOnAClickElsewhere() {
    Sheet sheet;
    sheet.OnCommit = [&](int, int col) { sheet.Grid.SetCol(col); };
    sheet.Type("CA");
    sheet.Click(1, kAmount);
    QCOMPARE(sheet.At(), QPoint(1, kDept));
    sheet.Click(1, kAmount);
    QCOMPARE(sheet.At(), QPoint(1, kAmount));
    QCOMPARE(sheet.Commits.size(), 1);
}

void tst_EntryGrid::Refused_textIsTypedOnButNotKept() {
    Sheet sheet;
    sheet.Grid.SetTextMatrix(1, kDept, QStringLiteral("CY"));
    sheet.OnCommit = [&](int, int) {
        if (sheet.Grid.TextMatrix(1, kDept) != u"CA")
            sheet.Grid.RefuseCommit();
    };
    sheet.Type("ZZ");
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.At(), QPoint(1, kDept));
    QVERIFY(sheet.Grid.InEditMode());
    QCOMPARE(sheet.Grid.EditText(), QStringLiteral("ZZ"));
    QCOMPARE(sheet.Grid.TextMatrix(1, kDept), QStringLiteral("CY"));
    sheet.Click(1, kAmount);
    QCOMPARE(sheet.At(), QPoint(1, kDept));
    QVERIFY(!sheet.Grid.EndEditMode());
    QCOMPARE(sheet.Commits.size(), 3);
    // What was refused is selected: typing on replaces it.
    sheet.Type("CA");
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.Grid.TextMatrix(1, kDept), QStringLiteral("CA"));
    QCOMPARE(sheet.At(), QPoint(1, kCode));
    sheet.Grid.SetCol(kDept);
    sheet.Type("Q");
    sheet.Key(Qt::Key_Return);
    sheet.Key(Qt::Key_Escape);
    QCOMPARE(sheet.Grid.TextMatrix(1, kDept), QStringLiteral("CA"));
    QVERIFY(!sheet.Grid.InEditMode());
}

void tst_EntryGrid::Refused_byFocusIsToldOnce() {
    Sheet sheet;
    sheet.OnCommit = [&](int, int) { sheet.Grid.RefuseCommit(); };
    sheet.Type("ZZ");
    sheet.Close.setFocus();
    QVERIFY(sheet.Close.hasFocus());
    QCOMPARE(sheet.Commits.size(), 1);
    sheet.Grid.setFocus();
    QCOMPARE(sheet.Grid.EditText(), QStringLiteral("ZZ"));
    sheet.Save.setFocus();
    QCOMPARE(sheet.Commits.size(), 1);
    QVERIFY(!sheet.Grid.EndEditMode());
    QCOMPARE(sheet.Commits.size(), 2);
    QVERIFY(sheet.Save.hasFocus());
}

void tst_EntryGrid::Handler_thatThrowsRefuses() {
    Sheet sheet;
    sheet.OnCommit = [](int, int) { throw std::runtime_error("server gone"); };
    sheet.Type("CA");
    QVERIFY_EXCEPTION_THROWN(sheet.Grid.EndEditMode(), std::runtime_error);
    QVERIFY(sheet.Grid.InEditMode());
    QCOMPARE(sheet.Grid.EditText(), QStringLiteral("CA"));
    sheet.OnCommit = nullptr;
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.Grid.TextMatrix(1, kDept), QStringLiteral("CA"));
    QCOMPARE(sheet.Commits.size(), 2);
}

void tst_EntryGrid::Handler_withADialogCommitsOnce() {
    Sheet sheet;
    sheet.OnCommit = [&](int row, int) {
        QDialog box(&sheet.Window);
        QLineEdit search(&box);
        QTimer::singleShot(0, &box, [&] {
            search.setFocus();
            sheet.Grid.SetTextMatrix(row, kDescription, QStringLiteral("TUBE"));
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
    QCOMPARE(sheet.Grid.TextMatrix(1, kCode), QStringLiteral("101"));
    QCOMPARE(sheet.Grid.TextMatrix(1, kDescription), QStringLiteral("TUBE"));
}

void tst_EntryGrid::Handler_mayClearTheCellAndStay() {
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

void tst_EntryGrid::Handler_mayDestroyTheGrid() {
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

void tst_EntryGrid::Line_isRemovedOrEmptied() {
    Sheet sheet;
    QSignalSpy removed(&sheet.Grid, &EntryGrid::LineRemoved);
    sheet.Grid.SetRows(4);
    for (int row = 1; row < 4; ++row)
        sheet.Grid.SetTextMatrix(row, kCode, QString::number(row));
    sheet.Grid.SetCell(2, kDept);
    sheet.Type("half typed");
    sheet.Key(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(sheet.Grid.Rows(), 3);
    QCOMPARE(sheet.Grid.TextMatrix(2, kCode), QStringLiteral("3"));
    QCOMPARE(sheet.At(), QPoint(2, kDept));
    sheet.Key(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(sheet.At(), QPoint(1, kDept));
    sheet.Key(Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(sheet.Grid.Rows(), 2);
    QCOMPARE(sheet.Grid.TextMatrix(1, kCode), QString());
    QCOMPARE(sheet.Commits.size(), 0);
    QCOMPARE(removed.size(), 3);
}

void tst_EntryGrid::Text_takesWhatTheColumnTakes_data() {
    QTest::addColumn<int>("col");
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("kept");
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

void tst_EntryGrid::Text_takesWhatTheColumnTakes() {
    QFETCH(int, col);
    QFETCH(QString, pasted);
    QFETCH(QString, kept);
    Sheet sheet;
    sheet.Grid.SetTextMatrix(1, kQuantity, QStringLiteral("8"));
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

void tst_EntryGrid::Keys_editInPlace() {
    Sheet sheet;
    sheet.Grid.SetTextMatrix(1, kCode, QStringLiteral("101"));
    sheet.Grid.SetCol(kCode);
    sheet.Key(Qt::Key_F2);
    sheet.Key(Qt::Key_Left);
    sheet.Type("9");
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.Grid.TextMatrix(1, kCode), QStringLiteral("1091"));
    sheet.Grid.SetCol(kCode);
    sheet.Key(Qt::Key_Backspace);
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.Grid.TextMatrix(1, kCode), QString());
    QCOMPARE(sheet.Commits.size(), 2);
    // Looking at what the program wrote does not change it, even where the cell would not take it.
    sheet.Grid.SetTextMatrix(1, kQuantity, QStringLiteral("-2"));
    sheet.Grid.SetCol(kQuantity);
    sheet.Key(Qt::Key_F2);
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.Grid.TextMatrix(1, kQuantity), QStringLiteral("-2"));
    sheet.Grid.SetCol(kQuantity);
    sheet.Type("x");
    QVERIFY(!sheet.Grid.InEditMode());
    QCOMPARE(sheet.Commits.size(), 2);
}

void tst_EntryGrid::Clipboard_copiesAndCuts() {
    Sheet sheet;
    sheet.Grid.SetTextMatrix(1, kDescription, QStringLiteral("TUBE"));
    sheet.Grid.SetTextMatrix(1, kCode, QStringLiteral("101"));
    sheet.Grid.SetCol(kDescription);
    sheet.Key(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("TUBE"));
    QCOMPARE(sheet.Grid.TextMatrix(1, kDescription), QStringLiteral("TUBE"));
    sheet.Grid.SetCol(kCode);
    sheet.Key(Qt::Key_Insert, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("101"));
    sheet.Key(Qt::Key_X, Qt::ControlModifier);
    sheet.Key(Qt::Key_Return);
    QCOMPARE(sheet.Grid.TextMatrix(1, kCode), QString());
}

void tst_EntryGrid::PickList_opensByKeyAndPicks() {
    Sheet sheet;
    sheet.Grid.SetCol(kType);
    sheet.Type("r");
    QVERIFY(sheet.PopUp());
    QTest::keyClick(sheet.PopUp(), Qt::Key_Return);
    QCOMPARE(sheet.Grid.TextMatrix(1, kType), QStringLiteral("ROUTINE"));
    QCOMPARE(sheet.At(), QPoint(1, kQuantity));
    const std::pair<Qt::Key, Qt::KeyboardModifiers> opening[] = {{Qt::Key_F4, Qt::NoModifier},
                                                                 {Qt::Key_Down, Qt::AltModifier}};
    for (const auto& [key, modifiers] : opening) {
        sheet.Grid.SetCol(kType);
        sheet.Key(key, modifiers);
        QVERIFY(sheet.PopUp());
        QTest::keyClick(sheet.PopUp(), Qt::Key_Up);
        QTest::keyClick(sheet.PopUp(), Qt::Key_Escape);
        QVERIFY(!sheet.PopUp());
    }
    QCOMPARE(sheet.Grid.TextMatrix(1, kType), QStringLiteral("ROUTINE"));
    sheet.Key(Qt::Key_Delete);
    QCOMPARE(sheet.Grid.TextMatrix(1, kType), QString());
    QCOMPARE(sheet.Commits.size(), 2);
    sheet.Type("x");
    QVERIFY(!sheet.PopUp());
}

void tst_EntryGrid::PickList_isReachedByMouse() {
    Sheet sheet;
    sheet.Click(1, kType);
    auto* button = sheet.Grid.findChild<QToolButton*>(QStringLiteral("cmdList"));
    QVERIFY(button->isVisible());
    QTest::mouseClick(button, Qt::LeftButton);
    auto* list = qobject_cast<QListWidget*>(sheet.PopUp());
    QVERIFY(list);
    QCOMPARE(list->count(), 3);
    QCOMPARE(list->item(0)->text(), QString());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(1)).center());
    QCOMPARE(sheet.Grid.TextMatrix(1, kType), QStringLiteral("STAT"));
    QCOMPARE(sheet.Commits.size(), 1);
    sheet.Click(1, kDescription);
    QVERIFY(!button->isVisible());
}

void tst_EntryGrid::Lookup_handsOverTheChoice() {
    Sheet sheet;
    QString asked;
    connect(&sheet.Grid, &EntryGrid::LookupRequested, &sheet.Window, [&](int row, int col) {
        asked = QStringLiteral("%1,%2,%3").arg(row).arg(col).arg(sheet.Grid.EditText());
        sheet.Grid.CommitText(QStringLiteral("105"));
    });
    sheet.Grid.SetCol(kCode);
    sheet.Type("10");
    sheet.Key(Qt::Key_F1);
    QCOMPARE(asked, QStringLiteral("1,2,10"));
    QCOMPARE(sheet.Grid.TextMatrix(1, kCode), QStringLiteral("105"));
    QCOMPARE(sheet.Commits, QList<QPoint>{QPoint(1, kCode)});
    QCOMPARE(sheet.At(), QPoint(1, kType));
    asked.clear();
    sheet.Grid.SetCol(kQuantity);
    sheet.Key(Qt::Key_F1);
    QCOMPARE(asked, QString());
}

void tst_EntryGrid::Lookup_cancelledKeepsWhatIsTyped() {
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
    QCOMPARE(sheet.Grid.TextMatrix(1, kDept), QStringLiteral("CA"));
    QCOMPARE(sheet.Commits.size(), 1);
}

void tst_EntryGrid::Protected_byTheRowItself() {
    Sheet sheet;
    sheet.Grid.SetProtectedWhen(
        kAmount, [&](int row) { return !sheet.Grid.TextMatrix(row, kHidden).isEmpty(); });
    sheet.Grid.SetCol(kAmount);
    sheet.Type("5");
    QVERIFY(sheet.Grid.InEditMode());
    QVERIFY(sheet.Grid.EndEditMode());
    sheet.Grid.SetTextMatrix(1, kHidden, QStringLiteral("46"));
    sheet.Type("6");
    QVERIFY(!sheet.Grid.InEditMode());
    QCOMPARE(sheet.Grid.TextMatrix(1, kAmount), QStringLiteral("5"));
}

void tst_EntryGrid::ContextMenu_reachesEverything() {
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
    QCOMPARE(sheet.Grid.TextMatrix(2, kDept), QStringLiteral("101"));
    choose(Remove);
    QCOMPARE(sheet.Grid.Rows(), 2);
}

QTEST_MAIN(tst_EntryGrid)
#include "tst_EntryGrid.moc"
