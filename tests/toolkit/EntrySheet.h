#pragma once

#include <QtTest>
#include <QtWidgets>

#include "toolkit/EntryGrid.h"

using namespace Qt::StringLiterals;

/// An entry grid in a window of its own, as the tests use it.

enum SheetColumn { kMark, kDept, kCode, kDescription, kType, kQuantity, kAmount, kHidden };

/// The grid between its Save and Close buttons, with one empty line and the cursor in it.
struct Sheet {
    QDialog Window;
    toolkit::EntryGrid Grid;
    QPushButton Save{u"Save"_s};
    QPushButton Close{u"Close"_s};
    QList<QPoint> Commits;
    std::function<void(int row, int col)> OnCommit;

    Sheet() {
        auto* layout = new QVBoxLayout(&Window);
        layout->addWidget(&Grid);
        layout->addWidget(&Save);
        layout->addWidget(&Close);
        LayOut();
        QObject::connect(&Grid, &toolkit::EntryGrid::CellCommitted, &Window,
                         [this](int row, int col) {
                             Commits.append(QPoint(row, col));
                             if (OnCommit)
                                 OnCommit(row, col);
                         });
        Window.resize(760, 320);
        Window.show();
        Grid.setFocus();
        if (!QTest::qWaitForWindowActive(&Window))
            qFatal("the window does not come to the front");
    }

    void LayOut() {
        Grid.SetSaveButton(&Save);
        Grid.SetCloseButton(&Close);
        Grid.SetFixedCols(1);
        Grid.SetFixedRows(1);
        Grid.SetCols(8);
        Grid.SetRows(2);
        Grid.Reinitialise();
        Grid.SetColWidths({100, 1000, 1000, 4000, 1500, 1000, 1000, 0});
        Grid.SetHeader(kDept, u"Dept."_s);
        Grid.SetColKind(kDept, toolkit::EntryKind::LookUp);
        Grid.SetColKind(kCode, toolkit::EntryKind::LookUp);
        Grid.SetColKind(kType, toolkit::EntryKind::PickList, u"\r\nSTAT\r\nROUTINE"_s);
        Grid.SetNumeric(kQuantity);
        Grid.SetNumeric(kAmount);
        Grid.SetProtected(kDescription);
        Grid.SetProtected(kHidden);
        Grid.SetKeyCol(kCode);
    }

    /// Whatever has dropped down.
    QWidget* PopUp() const { return QApplication::activePopupWidget(); }
    /// Keys by their names, other words letter by letter, to whoever has the keyboard:
    /// "101 Return", "Ctrl+Del". "@6" clicks on column 6 of the first line, "@Save", "@Close" and
    /// "@Grid" give the keyboard away and back, "@end" ends the typing as the program does.
    void Press(const QString& keys) {
        const auto target = [this] { return PopUp() ? PopUp() : QApplication::focusWidget(); };
        for (const QString& word : keys.split(u' ')) {
            const QKeyCombination key = QKeySequence(word)[0];
            if (word.startsWith(u'@'))
                Act(word.mid(1));
            else if (key.key() != Qt::Key_unknown)
                QTest::keyClick(target(), key.key(), key.keyboardModifiers());
            else
                for (const QChar letter : word)
                    QTest::keyClick(target(), letter.toLatin1());
        }
    }
    void Press(int col, const QString& keys) {
        Grid.SetCol(col);
        Press(keys);
    }
    void Act(const QString& what) {
        if (what == u"Save")
            Save.setFocus();
        else if (what == u"Close")
            Close.setFocus();
        else if (what == u"Grid")
            Grid.setFocus();
        else if (what != u"end")
            Click(1, what.toInt());
        try {
            if (what == u"end")
                Grid.EndEditMode();
        } catch (const std::runtime_error&) {
            // What a handler throws.
        }
    }
    void Click(int row, int col) {
        const QModelIndex index = Grid.model()->index(row - Grid.FixedRows(), col);
        QTest::mouseClick(Grid.viewport(), Qt::LeftButton, {}, Grid.visualRect(index).center());
    }

    /// From kDept to kAmount, the cells divided by bars.
    void Write(int row, const QString& line) {
        const QStringList cells = line.split(u'|');
        for (int cell = 0; cell < cells.size(); ++cell)
            Grid.SetTextMatrix(row, kDept + cell, cells[cell]);
    }
    QString Line(int row = 1) const {
        QStringList cells;
        for (int col = kDept; col <= kAmount; ++col)
            cells << Grid.TextMatrix(row, col);
        return cells.join(u'|');
    }
    /// The cursor's row and column, of how many rows, what is being typed, and the button that has
    /// the keyboard: "1,2/2 typing 101", "1,2/2 Save".
    QString State() const {
        QString state = u"%1,%2/%3"_s.arg(Grid.Row()).arg(Grid.Col()).arg(Grid.Rows());
        if (Grid.InEditMode())
            state += u" typing "_s + Grid.EditText();
        const auto* button = qobject_cast<QPushButton*>(QApplication::focusWidget());
        return button ? state + u' ' + button->text() : state;
    }
};
