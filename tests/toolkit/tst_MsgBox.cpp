#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "Rows.h"
#include "toolkit/KeyGuard.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;
using namespace toolkit;

namespace {

/// Presses a key in the box that is about to be shown, and looks at it first.
template <class Look>
void InNextBox(Look look) {
    QTimer::singleShot(0, qApp, [look] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        look(box);
        if (box->isVisible())
            box->reject();
    });
}

}  // namespace

class tst_MsgBox final : public QObject {
    Q_OBJECT
private slots:
    void Script_recordsAndAnswersInOrder() {
        BoxScript script;
        script.Answer(BoxAnswer::Yes);
        script.Answer(BoxAnswer::Ok);
        const QString message = u"Message"_s;
        QCOMPARE(MsgBox(u"Save?"_s, BoxIcon::Question, message, BoxButtons::YesNo), BoxAnswer::Yes);
        QCOMPARE(MsgBox(u"Saved."_s), BoxAnswer::Ok);
        QCOMPARE(script.Leftovers(), QStringList());
        QCOMPARE(script.Shown().size(), 2u);
        QCOMPARE(script.Shown()[0].Title, message);
        QCOMPARE(script.Shown()[0].Icon, BoxIcon::Question);
        QCOMPARE(script.Shown()[1].Text, u"Saved."_s);
        QCOMPARE(script.Shown()[1].Title, kProgramName);
    }

    void Script_reportsWhatWasNotExpected() {
        for (const char* warning :
             {"unasked box: Delete?", "box without a Yes button: Done.", "answer not used: No"})
            QTest::ignoreMessage(QtWarningMsg, warning);
        BoxScript script;
        const auto answer =
            MsgBox(u"Delete?"_s, BoxIcon::Question, kProgramName, BoxButtons::YesNo);
        QCOMPARE(answer, BoxAnswer::No);
        script.Answer(BoxAnswer::Yes);
        QCOMPARE(MsgBox(u"Done."_s), BoxAnswer::Ok);
        script.Answer(BoxAnswer::No);
        QCOMPARE(script.Leftovers().size(), 3);
        QVERIFY(script.Leftovers()[0].contains(u"Delete?"_s));
        QVERIFY(script.Leftovers()[1].contains(u"Done."_s));
        QVERIFY(script.Leftovers()[2].contains(u"No"_s));
    }

    void Script_innerOneLeavesTheOuterAlone() {
        BoxScript outer;
        outer.Answer(BoxAnswer::Ok);
        {
            BoxScript inner;
            inner.Answer(BoxAnswer::Ok);
            MsgBox(u"inner"_s);
            QCOMPARE(inner.Leftovers(), QStringList());
        }
        MsgBox(u"outer"_s);
        QCOMPARE(outer.Leftovers(), QStringList());
        QCOMPARE(outer.Shown().size(), 1u);
    }

    void Box_isAnsweredByKey_data() {
        Columns<BoxButtons, Qt::Key, BoxAnswer>();
        QTest::newRow("Y") << BoxButtons::YesNo << Qt::Key_Y << BoxAnswer::Yes;
        QTest::newRow("N") << BoxButtons::YesNo << Qt::Key_N << BoxAnswer::No;
        QTest::newRow("Enter") << BoxButtons::YesNo << Qt::Key_Return << BoxAnswer::No;
        QTest::newRow("Escape") << BoxButtons::YesNo << Qt::Key_Escape << BoxAnswer::No;
        QTest::newRow("Ok by Enter") << BoxButtons::Ok << Qt::Key_Return << BoxAnswer::Ok;
        QTest::newRow("Ok by Escape") << BoxButtons::Ok << Qt::Key_Escape << BoxAnswer::Ok;
    }

    void Box_isAnsweredByKey() {
        auto [buttons, key, answer] = Fetch<BoxButtons, Qt::Key, BoxAnswer>();
        bool closed = false;
        InNextBox([&](QMessageBox* box) {
            QTest::keyClick(box, key);
            // A letter presses its button visibly, which takes a moment.
            closed = QTest::qWaitFor([box] { return !box->isVisible(); });
        });
        QCOMPARE(MsgBox(u"Go on?"_s, BoxIcon::Question, kProgramName, buttons), answer);
        QVERIFY(closed);
    }

    void Box_isNotAnsweredByAHeldKey() {
        const KeyGuard guard;
        struct Key {
            int Code;
            Qt::KeyboardModifiers Modifiers;
            QString Text;
        };
        InNextBox([](QMessageBox* box) {
            QVERIFY(QTest::qWaitForWindowExposed(box));
            for (const Key& key :
                 {Key{Qt::Key_Return, {}, u"\r"_s}, Key{Qt::Key_Escape, {}, {}},
                  Key{Qt::Key_Y, {}, u"y"_s}, Key{Qt::Key_Y, Qt::AltModifier, u"y"_s},
                  Key{Qt::Key_Space, {}, u" "_s}})
                for (const bool pressed : {true, true, false})
                    QTest::simulateEvent(box->focusWidget(), pressed, key.Code, key.Modifiers,
                                         key.Text, true, -1);
            // Some window systems repeat a key by letting it go and pressing it in the same moment.
            for (quint64 at = 1000; at < 1100; at += 33)
                for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
                    QKeyEvent event(type, Qt::Key_Return, Qt::NoModifier, 36, 0, 0, u"\r"_s);
                    event.setTimestamp(at);
                    QApplication::sendEvent(box->focusWidget(), &event);
                }
            QVERIFY(!QTest::qWaitFor([box] { return !box->isVisible(); }, 200));
            QTest::keyClick(box->focusWidget(), Qt::Key_Y, Qt::AltModifier);
            QTRY_VERIFY(!box->isVisible());
        });
        QCOMPARE(MsgBox(u"Repeat?"_s, BoxIcon::Question, kProgramName, BoxButtons::YesNo),
                 BoxAnswer::Yes);
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
        InNextBox([](QMessageBox* box) { QVERIFY(QTest::qWaitForWindowExposed(box)); });
        QCOMPARE(MsgBox(u"Repeat?"_s, BoxIcon::Question, kProgramName, BoxButtons::YesNo),
                 BoxAnswer::No);
    }

    void Enter_pressesTheFocusedButton() {
        const KeyGuard guard;
        QDialog dialog;
        QPushButton cancel(&dialog), select(&dialog);
        select.setDefault(true);
        cancel.setAutoDefault(false);
        int cancelled = 0, selected = 0;
        connect(&cancel, &QPushButton::clicked, &dialog, [&] { ++cancelled; });
        connect(&select, &QPushButton::clicked, &dialog, [&] { ++selected; });
        dialog.show();
        QTest::keyClick(&cancel, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(cancelled, 1);
        QCOMPARE(selected, 0);
    }

    void Box_showsItsTextAsItIs() {
        const QString text = u"<b>O'Hara</b> & sons"_s;
        QWidget below;
        below.show();
        QVERIFY(QTest::qWaitForWindowActive(&below));
        InNextBox([&](QMessageBox* box) {
            QCOMPARE(box->text(), text);
            QCOMPARE(box->textFormat(), Qt::PlainText);
            QCOMPARE(box->windowTitle(), u"Message"_s);
            QCOMPARE(box->icon(), QMessageBox::Critical);
            QCOMPARE(box->parentWidget(), &below);
        });
        MsgBox(text, BoxIcon::Critical, u"Message"_s);
    }

    void Box_keepsAVeryLongTextOnTheScreen() {
        InNextBox([](QMessageBox* box) {
            QVERIFY(box->height() <= box->screen()->size().height());
            QVERIFY(box->width() <= box->screen()->size().width());
            QCOMPARE(box->detailedText().size(), 10000);
        });
        MsgBox(QString(10000, u'W'));
    }
};

QTEST_MAIN(tst_MsgBox)
#include "tst_MsgBox.moc"
