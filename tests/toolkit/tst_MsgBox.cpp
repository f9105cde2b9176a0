#include "toolkit/MsgBox.h"

#include <QtTest>

#include "Rows.h"
#include "toolkit/KeyGuard.h"

using namespace Qt::StringLiterals;
using namespace toolkit;

namespace {

/// The answer of a box in which `act` is done once it is on the screen.
BoxAnswer Ask(BoxButtons buttons, const std::function<void(QMessageBox*)>& act,
              const QString& text = u"Repeat?"_s) {
    QTimer::singleShot(0, qApp, [act] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(QTest::qWaitForWindowExposed(box));
        act(box);
        if (box->isVisible())
            box->reject();
    });
    return MsgBox(text, BoxIcon::Critical, u"Message"_s, buttons);
}

/// A letter presses its button visibly, which takes a moment.
bool IsClosed(QMessageBox* box, int within = 5000) {
    return QTest::qWaitFor([box] { return !box->isVisible(); }, within);
}

}  // namespace

class tst_MsgBox final : public QObject {
    Q_OBJECT
private slots:
    void Script_reportsWhatWasNotExpected() {
        const QStringList faults{u"unasked box: Delete?"_s, u"box without a Yes button: Done."_s,
                                 u"answer not used: No"_s};
        for (const QString& fault : faults)
            QTest::ignoreMessage(QtWarningMsg, qPrintable(fault));
        BoxScript script;
        {
            BoxScript inner;
            inner.Answer(BoxAnswer::Yes);
            QCOMPARE(MsgBox(u"Save?"_s, BoxIcon::Question, kProgramName, BoxButtons::YesNo),
                     BoxAnswer::Yes);
            QCOMPARE(inner.Leftovers(), QStringList());
        }
        QCOMPARE(MsgBox(u"Delete?"_s, BoxIcon::Question, kProgramName, BoxButtons::YesNo),
                 BoxAnswer::No);
        script.Answer(BoxAnswer::Yes);
        QCOMPARE(MsgBox(u"Done."_s), BoxAnswer::Ok);
        script.Answer(BoxAnswer::No);
        QCOMPARE(script.Leftovers(), faults);
        QCOMPARE(script.Shown().size(), 2u);
        QCOMPARE(script.Shown()[1].Title, kProgramName);
    }

    void Box_isAnsweredByKey_data() {
        Columns<BoxButtons, Qt::Key, BoxAnswer>();
        Row("Y", BoxButtons::YesNo, Qt::Key_Y, BoxAnswer::Yes);
        Row("N", BoxButtons::YesNo, Qt::Key_N, BoxAnswer::No);
        Row("Enter", BoxButtons::YesNo, Qt::Key_Return, BoxAnswer::No);
        Row("Escape", BoxButtons::YesNo, Qt::Key_Escape, BoxAnswer::No);
        Row("Ok by Enter", BoxButtons::Ok, Qt::Key_Return, BoxAnswer::Ok);
        Row("Ok by Escape", BoxButtons::Ok, Qt::Key_Escape, BoxAnswer::Ok);
    }

    void Box_isAnsweredByKey() {
        const auto [buttons, key, answer] = Fetch<BoxButtons, Qt::Key, BoxAnswer>();
        bool closed = false;
        const auto press = [&closed, key = key](QMessageBox* box) {
            QTest::keyClick(box, key);
            closed = IsClosed(box);
        };
        QCOMPARE(Ask(buttons, press), answer);
        QVERIFY(closed);
    }

    void Box_isNotAnsweredByAHeldKey() {
        const KeyGuard guard;
        const auto hold = [](QMessageBox* box) {
            const std::tuple<Qt::Key, Qt::KeyboardModifiers, QString> keys[] = {
                {Qt::Key_Return, {}, u"\r"_s},
                {Qt::Key_Escape, {}, {}},
                {Qt::Key_Y, {}, u"y"_s},
                {Qt::Key_Y, Qt::AltModifier, u"y"_s},
                {Qt::Key_Space, {}, u" "_s}};
            for (const auto& [key, modifiers, text] : keys)
                for (const bool pressed : {true, true, false})
                    QTest::simulateEvent(box->focusWidget(), pressed, key, modifiers, text, true);
            // Some window systems repeat a key by letting it go and pressing it in the same moment.
            for (quint64 at = 1000; at < 1100; at += 33)
                for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
                    QKeyEvent event(type, Qt::Key_Return, Qt::NoModifier, 36, 0, 0, u"\r"_s);
                    event.setTimestamp(at);
                    QApplication::sendEvent(box->focusWidget(), &event);
                }
            QVERIFY(!IsClosed(box, 200));
            QTest::keyClick(box->focusWidget(), Qt::Key_Y, Qt::AltModifier);
            QVERIFY(IsClosed(box));
        };
        QCOMPARE(Ask(BoxButtons::YesNo, hold), BoxAnswer::Yes);
    }

    void Box_dropsWhatWasTypedBeforeItWasSeen() {
        class EarlyHand final : public QObject {
            bool eventFilter(QObject* watched, QEvent* event) override {
                if (event->type() == QEvent::Show && watched->inherits("QMessageBox"))
                    for (const Qt::Key key : {Qt::Key_Y, Qt::Key_Return})
                        QTest::keyClick(static_cast<QWidget*>(watched)->focusWidget(), key);
                return false;
            }
        } hand;
        qApp->installEventFilter(&hand);
        const KeyGuard guard;
        bool seen = false;
        const auto look = [&](QMessageBox* box) { seen = !IsClosed(box, 200); };
        QCOMPARE(Ask(BoxButtons::YesNo, look), BoxAnswer::No);
        QVERIFY(seen);
    }

    void Enter_pressesTheFocusedButton() {
        const KeyGuard guard;
        QDialog dialog;
        QPushButton cancel(&dialog), select(&dialog);
        select.setDefault(true);
        cancel.setAutoDefault(false);
        QSignalSpy cancelled(&cancel, &QPushButton::clicked);
        QSignalSpy selected(&select, &QPushButton::clicked);
        dialog.show();
        QTest::keyClick(&cancel, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(cancelled.size(), 1);
        QCOMPARE(selected.size(), 0);
    }

    void Box_showsItsTextAsItIs() {
        const QString text = u"<b>O'Hara</b> & sons"_s;
        QWidget below;
        below.show();
        QVERIFY(QTest::qWaitForWindowActive(&below));
        const auto look = [&](QMessageBox* box) {
            QCOMPARE(box->text(), text);
            QCOMPARE(box->textFormat(), Qt::PlainText);
            QCOMPARE(box->windowTitle(), u"Message"_s);
            QCOMPARE(box->icon(), QMessageBox::Critical);
            QCOMPARE(box->parentWidget(), &below);
        };
        Ask(BoxButtons::Ok, look, text);
    }

    void Box_keepsAVeryLongTextOnTheScreen() {
        const auto look = [](QMessageBox* box) {
            QVERIFY(box->screen()->size().expandedTo(box->size()) == box->screen()->size());
            QCOMPARE(box->detailedText().size(), 10000);
        };
        Ask(BoxButtons::Ok, look, QString(10000, u'W'));
    }
};

QTEST_MAIN(tst_MsgBox)
#include "tst_MsgBox.moc"
