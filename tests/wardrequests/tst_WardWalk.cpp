#include <QDialog>
#include <QRandomGenerator>
#include <QTimer>

#include "WardSession.h"
#include "wardrequests/WardVariant.h"

using namespace Qt::StringLiterals;

namespace {

const QStringList kTexts{u"1001"_s,  u"1002"_s, u"1024"_s, u"201"_s,  u"205"_s, u"212"_s,
                         u"sevel"_s, u"zz"_s,   u"00"_s,   u"bid"_s,  u"od"_s,  u"o'"_s,
                         u"2"_s,     u"1/2"_s,  u"0"_s,    u"9e999"_s};
const QList<Qt::Key> kKeys{Qt::Key_Return, Qt::Key_Return, Qt::Key_Return,    Qt::Key_Enter,
                           Qt::Key_Home,   Qt::Key_End,    Qt::Key_End,       Qt::Key_Up,
                           Qt::Key_Down,   Qt::Key_Left,   Qt::Key_Right,     Qt::Key_F3,
                           Qt::Key_Escape, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_PageUp};

/// Picks from every other list that is shown, and says yes to every other box; cancels the rest.
class Answers final {
public:
    explicit Answers(QRandomGenerator& random) {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [&] {
            auto* list = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!list)
                return;
            ++Shown;
            try {
                if (random.bounded(2) == 0 && list->focusWidget())
                    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return})
                        QTest::keyClick(list->focusWidget(), key);
            } catch (const base::RuntimeError&) {
            }
            if (list->isVisible())
                list->reject();
        });
        m_timer.start(0);
    }
    int Shown = 0;

private:
    QTimer m_timer;
};

/// What a nurse would type there.
QString Fitting(int col, int number) {
    if (col == WardColumn::Code)
        return QString::number((number % 2 ? 1003 : 201) + number);
    return col == WardColumn::Frequency ? u"tid"_s : QString::number(number);
}

/// Where the cursor must not be; empty when it may be there.
template <class Form>
QString Fault(const WardWindow<Form>& window) {
    const int row = window.Grid.Row(), col = window.Grid.Col();
    const bool freeLine = window.Cell(row, WardColumn::Code) == u"00";
    const bool skipped = col < 1 || col > 6 || (col == WardColumn::Amount && !freeLine);
    if (row < 1 || skipped)
        return u"the cursor is at %1, %2"_s.arg(row).arg(col);
    if (window.Box.isHidden())
        return u"there is no entry box"_s;
    for (int line = 1; line < window.Grid.Rows(); ++line)
        if (!window.Cell(line, 0).endsWith(QString::number(line)))
            return u"line %1 has the number %2"_s.arg(line).arg(window.Cell(line, 0));
    return {};
}

}  // namespace

// Keys at random in both request windows, with a server that comes and goes.

class tst_WardWalk final : public QObject {
    Q_OBJECT
private slots:
    void RandomKeys_keepToTheirColumns() {
        const int count = qEnvironmentVariableIsSet("CAPD_STRESS") ? 100'000 : 4'000;
        Walk<frmPHEntry>(count);
        if (!QTest::currentTestFailed())
            Walk<frmCSREntry>(count);
    }

private:
    template <class Form>
    void Walk(int count) {
        WardSession session;
        auto window = std::make_unique<WardWindow<Form>>(session);
        QRandomGenerator random(20'261'122);
        const auto below = [&](qsizetype bound) { return int(random.bounded(int(bound))); };
        Answers answers(random);
        int lines = 0, closed = 0;
        for (int i = 0; i < count; ++i) {
            if (below(3) == 0)
                QTest::keyClicks(&window->Box, kTexts[below(kTexts.size())]);
            else if (below(2) == 0)
                window->Enter({Fitting(window->Grid.Col(), below(9))});
            else if (below(200) == 0)
                window->Press(2);
            else
                window->Key(kKeys[below(kKeys.size())]);
            PluggedDriver::Gone = below(300) == 0;
            if (!window->Window.isVisible()) {
                ++closed;
                window = std::make_unique<WardWindow<Form>>(session);
            }
            const QString fault = Fault(*window);
            QVERIFY2(fault.isEmpty(), qPrintable(u"key %1: %2"_s.arg(i).arg(fault)));
            lines = qMax(lines, window->Grid.Rows() - 1);
        }
        const QString went =
            u"%1 boxes and lists, %2 lines at most, closed %3 times"_s.arg(answers.Shown)
                .arg(lines)
                .arg(closed);
        QVERIFY2(answers.Shown > 0 && lines > 2, qPrintable(went));
    }
};

QTEST_MAIN(tst_WardWalk)
#include "tst_WardWalk.moc"
