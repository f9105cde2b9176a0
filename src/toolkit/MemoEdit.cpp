#include "toolkit/MemoEdit.h"

#include <QTextCursor>
#include <QTextDocument>

#include "toolkit/Keys.h"

namespace toolkit {

MemoEdit::MemoEdit(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    connect(document(), &QTextDocument::contentsChange, this,
            [this](int position, int, int added) { m_insertedEnd = position + added; });
    connect(this, &QPlainTextEdit::textChanged, this, &MemoEdit::CutToLength);
}

void MemoEdit::keyPressEvent(QKeyEvent* event) {
    if (IsEnter(*event) && !event->modifiers().testFlag(Qt::ShiftModifier))
        event->ignore();
    else
        QPlainTextEdit::keyPressEvent(event);
}

// What does not fit goes from the end of what was just typed or pasted, never from older text.
void MemoEdit::CutToLength() {
    const int surplus = int(toPlainText().size()) - m_maxLength;
    if (surplus <= 0)
        return;
    QTextCursor cut(document());
    const int end = qMin(m_insertedEnd, int(toPlainText().size()));
    cut.setPosition(end);
    cut.setPosition(qMax(0, end - surplus), QTextCursor::KeepAnchor);
    cut.removeSelectedText();
}

}  // namespace toolkit
