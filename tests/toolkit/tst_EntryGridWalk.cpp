#include "EntrySheet.h"
#include "RandomWalk.h"

namespace {

/// Presses keys and clicks at random in a sheet whose handler answers at random, and keeps a copy
/// of what every cell held when it was last accepted.
class RandomTypist final {
public:
    RandomTypist() {
        m_sheet.OnCommit = [this](int row, int col) { Answer(row, col); };
        QObject::connect(&m_sheet.Grid, &toolkit::EntryGrid::LineRemoved, &m_sheet.Window,
                         [this](int row) {
                             if (m_sheet.Grid.Rows() < int(m_kept.size()))
                                 m_kept.erase(m_kept.begin() + row);
                             else
                                 m_kept[row] = {};
                         });
        TakeCopy();
    }

    int CommitCount() const { return int(m_sheet.Commits.size()); }

    void PressOne() {
        m_kept.resize(m_sheet.Grid.Rows());
        if (!QApplication::focusWidget() || !m_sheet.Grid.isAncestorOf(QApplication::focusWidget()))
            m_sheet.Grid.setFocus();
        if (QWidget* popUp = m_sheet.PopUp())
            QTest::keyClick(popUp, Walk.OneOf(kListKeys));
        else if (Walk.Chance(20))
            m_sheet.Click(1 + Walk.Below(m_sheet.Grid.Rows() - 1), 1 + Walk.Below(kAmount));
        else if (Walk.Chance(2))
            QTest::keyClick(QApplication::focusWidget(), char('0' + Walk.Below(75)));
        else
            Walk.Press(QApplication::focusWidget());
        if (Walk.Chance(40))
            m_sheet.Close.setFocus();
        if (m_sheet.Grid.Rows() > 30)
            StartAgain();
    }

    /// The cursor is on a cell, and no cell holds what was not committed.
    QString Fault() const {
        const toolkit::EntryGrid& grid = m_sheet.Grid;
        if (!m_fault.isEmpty())
            return m_fault;
        if (grid.Row() < 1 || grid.Row() >= grid.Rows() || grid.Col() < 1 ||
            grid.Col() >= grid.Cols())
            return u"cursor at (%1, %2)"_s.arg(grid.Row()).arg(grid.Col());
        for (int row = 1; row < grid.Rows(); ++row) {
            for (int col = 0; col < grid.Cols(); ++col) {
                if (grid.TextMatrix(row, col) != Kept(row, col))
                    return u"cell (%1, %2) changed without a commit"_s.arg(row).arg(col);
            }
        }
        return {};
    }

    RandomWalk Walk;

private:
    inline static const QList<Qt::Key> kListKeys{Qt::Key_Up, Qt::Key_Down, Qt::Key_Return,
                                                 Qt::Key_Escape, Qt::Key_Tab};

    /// The window's side of a commit: accepts, refuses, moves, keeps, clears or fills other cells.
    void Answer(int row, int col) {
        toolkit::EntryGrid& grid = m_sheet.Grid;
        if (grid.TextMatrix(row, col) == Kept(row, col))
            m_fault = u"an unchanged cell was committed"_s;
        switch (Walk.Below(8)) {
            case 0:
                return grid.RefuseCommit();
            case 1:
                grid.SetCol(Walk.Below(9));
                break;
            case 2:
                grid.SetCol(col);
                break;
            case 3:
                grid.SetTextMatrix(row, col, {});
                grid.RefuseCommit();
                break;
            case 4:
                grid.SetTextMatrix(row, kDescription, QString::number(Walk.Below(100)));
                m_sheet.Close.setFocus();
                m_sheet.Grid.setFocus();
                break;
            default:
                break;
        }
        TakeCopy();
    }

    QString Kept(int row, int col) const {
        return row < int(m_kept.size()) ? m_kept[row].value(col) : QString();
    }

    void TakeCopy() {
        m_kept.resize(m_sheet.Grid.Rows());
        for (int row = 1; row < m_sheet.Grid.Rows(); ++row) {
            for (int col = 0; col < m_sheet.Grid.Cols(); ++col)
                m_kept[row][col] = m_sheet.Grid.TextMatrix(row, col);
        }
    }

    void StartAgain() {
        m_sheet.LayOut();
        m_kept.clear();
        TakeCopy();
    }

    Sheet m_sheet;
    std::vector<QMap<int, QString>> m_kept;
    QString m_fault;
};

}  // namespace

class tst_EntryGridWalk final : public QObject {
    Q_OBJECT
private slots:
    void RandomKeys_commitEachChangeOnce() {
        RandomTypist typist;
        typist.Walk.Run(
            20'000, [&] { typist.PressOne(); }, [&] { return typist.Fault(); });
        // The walk went somewhere.
        QVERIFY(typist.CommitCount() > 200);
    }
};

QTEST_MAIN(tst_EntryGridWalk)
#include "tst_EntryGridWalk.moc"
