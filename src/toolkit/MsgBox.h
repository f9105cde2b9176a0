#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// The program's one door to the user for a short word or a question.
namespace toolkit {

enum class BoxIcon { None, Information, Exclamation, Critical, Question };
enum class BoxButtons { Ok, YesNo };
enum class BoxAnswer { Ok, Yes, No };

/// The title of boxes that name none: the program's name.
inline const QString kProgramName = QStringLiteral("CAPD");

/// Shows a box over the active window and waits for the answer. Enter and closing it answer Ok or
/// No: what is asked here leads to another patient, a repetition or a deletion.
BoxAnswer MsgBox(const QString& text, BoxIcon icon = BoxIcon::None,
                 const QString& title = kProgramName, BoxButtons buttons = BoxButtons::Ok);

/// What a box said, for tests.
struct ShownBox {
    QString Text;
    QString Title;
    BoxIcon Icon;
    BoxButtons Buttons;
};

/// While one lives, boxes are not shown: they are answered from a queue and recorded. A box with
/// no answer waiting is answered Ok or No and counts as unasked; Leftovers() names every fault:
/// boxes unasked and answers not used.
class BoxScript final {
public:
    BoxScript();
    ~BoxScript();
    BoxScript(const BoxScript&) = delete;
    BoxScript& operator=(const BoxScript&) = delete;

    void Answer(BoxAnswer answer);
    /// The boxes shown so far, in order.
    const std::vector<ShownBox>& Shown() const { return m_shown; }
    /// Empty when every box was expected and every answer used.
    QStringList Leftovers() const;

private:
    friend BoxAnswer MsgBox(const QString&, BoxIcon, const QString&, BoxButtons);
    BoxAnswer Take(ShownBox box);
    std::vector<ShownBox> m_shown;
    std::vector<BoxAnswer> m_answers;
    QStringList m_unasked;
    BoxScript* m_previous;
};

}  // namespace toolkit
