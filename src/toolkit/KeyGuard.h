#pragma once

#include <QObject>
#include <QSet>

class QKeyEvent;
class QWidget;

namespace toolkit {

/// Keeps keys that nobody meant from every window of the program, as long as it lives:
/// - A key that is held down moves and types, but Enter, Esc, function keys and keys with Ctrl or
///   Alt act once until they are let go.
/// - A box that was declared by TakesNoEarlyKeys() gets no key before its first painting.
/// - A letter with Alt that no button takes is not typed.
/// - Enter, which Qt may give to a dialog's default button, presses the button that has the focus.
class KeyGuard final : public QObject {
    Q_OBJECT
public:
    /// Needs the application object. One is enough.
    KeyGuard();

    /// For windows that come unasked and take an answer: what is typed until one sees them was
    /// meant for the window below. Holds for every showing of `box`.
    static void TakesNoEarlyKeys(QWidget& box);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void NoteRelease(const QKeyEvent& key);
    bool IsHeld(const QKeyEvent& key) const;
    bool IsUnmeant(const QWidget& target, const QKeyEvent& key) const;

    QSet<const QObject*> m_unpainted;
    quint32 m_releasedCode = 0;
    quint64 m_releasedAt = 0;
};

}  // namespace toolkit
