#pragma once

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include "toolkit/EntryGrid.h"
#include "toolkit/Theme.h"

using namespace Qt::StringLiterals;

/// An entry grid in a window of its own, as the tests use it.

enum SheetColumn { kMark, kDept, kCode, kDescription, kType, kQuantity, kAmount, kHidden };

/// The grid between its Save and Close buttons, with one empty line and the cursor in it.
struct Sheet {
    QDialog Window;
    toolkit::EntryGrid Grid;
    QPushButton Save{u"&Save"_s};
    QPushButton Close{u"&Close"_s};
    QList<QPoint> Commits;
    std::function<void(int row, int col)> OnCommit;

    Sheet() {
        auto* layout = new QVBoxLayout(&Window);
        for (QWidget* widget : {static_cast<QWidget*>(&Grid), static_cast<QWidget*>(&Save),
                                static_cast<QWidget*>(&Close)})
            layout->addWidget(widget);
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
        Grid.SetLookupKey(112);
        Grid.SetLeaveKey(27);
        Grid.SetFixedCols(1);
        Grid.SetFixedRows(0);
        Grid.SetCols(8);
        Grid.SetRows(1);
        Grid.Reinitialise();
        Grid.SetFixedRows(1);
        Grid.SetRows(2);
        Grid.Reinitialise();
        Grid.SetColWidths({100, 1000, 1000, 4000, 1500, 1000, 1000, 0});
        const char* headers[] = {"", "Dept.", "Code", "Description", "Type", "Quantity", "Amount"};
        for (int col = 1; col <= kAmount; ++col)
            Grid.SetHeader(col, QString::fromLatin1(headers[col]));
        Grid.SetColKind(kDept, toolkit::EntryKind::LookUp);
        Grid.SetColKind(kCode, toolkit::EntryKind::LookUp);
        Grid.SetColKind(kType, toolkit::EntryKind::PickList, u"\r\nSTAT\r\nROUTINE"_s);
        Grid.SetNumeric(kQuantity);
        Grid.SetNumeric(kAmount);
        Grid.SetProtected(kDescription);
        Grid.SetProtected(kHidden);
        Grid.SetKeyCol(kCode);
    }

    /// Row and column of the cursor.
    QPoint At() const { return {Grid.Row(), Grid.Col()}; }
    /// Whatever has dropped down.
    QWidget* PopUp() const { return QApplication::activePopupWidget(); }
    /// To whoever has the keyboard.
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void Type(const char* text) {
        for (; *text; ++text)
            QTest::keyClick(QApplication::focusWidget(), *text);
    }
    void Click(int row, int col) {
        const QModelIndex index = Grid.model()->index(row - Grid.FixedRows(), col);
        QTest::mouseClick(Grid.viewport(), Qt::LeftButton, {}, Grid.visualRect(index).center());
    }
};
