#pragma once

#include <QPlainTextEdit>

namespace toolkit {

/// A text box of several lines for entry windows: Tab goes on, Shift+Enter begins a line; plain
/// Enter is left to the window. Takes no more characters than it may.
class MemoEdit final : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit MemoEdit(QWidget* parent = nullptr);

    void SetMaxLength(int characters) { m_maxLength = characters; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void CutToLength();

    int m_maxLength = 32767;
    int m_insertedEnd = 0;
};

}  // namespace toolkit
