#include "toolkit/MsgBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include "toolkit/KeyGuard.h"

namespace toolkit {

namespace {

BoxScript* g_script = nullptr;

// A box must stay on the screen whatever text an error carries with it.
constexpr int kLongestText = 1000;

QMessageBox::Icon StandardIcon(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::None:
            return QMessageBox::NoIcon;
        case BoxIcon::Information:
            return QMessageBox::Information;
        case BoxIcon::Exclamation:
            return QMessageBox::Warning;
        case BoxIcon::Critical:
            return QMessageBox::Critical;
        case BoxIcon::Question:
            return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

QWidget* WindowBelow() {
    if (QWidget* dialog = QApplication::activeModalWidget())
        return dialog;
    return QApplication::activeWindow();
}

BoxAnswer WithoutAnswer(BoxButtons buttons) {
    return buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
}

bool Offers(BoxButtons buttons, BoxAnswer answer) {
    return (buttons == BoxButtons::Ok) == (answer == BoxAnswer::Ok);
}

QString Name(BoxAnswer answer) {
    switch (answer) {
        case BoxAnswer::Ok:
            return QStringLiteral("Ok");
        case BoxAnswer::Yes:
            return QStringLiteral("Yes");
        case BoxAnswer::No:
            return QStringLiteral("No");
    }
    return {};
}

BoxAnswer Show(const ShownBox& shown) {
    QMessageBox box(WindowBelow());
    KeyGuard::TakesNoEarlyKeys(box);
    box.setObjectName(QStringLiteral("MsgBox"));
    box.setWindowTitle(shown.Title);
    box.setTextFormat(Qt::PlainText);
    box.setIcon(StandardIcon(shown.Icon));
    if (shown.Text.size() > kLongestText) {
        box.setText(shown.Text.left(kLongestText) + u'…');
        box.setDetailedText(shown.Text);
    } else {
        box.setText(shown.Text);
    }
    if (shown.Buttons == BoxButtons::Ok) {
        box.addButton(QMessageBox::Ok)->setText(QStringLiteral("&OK"));
        box.exec();
        return BoxAnswer::Ok;
    }
    box.addButton(QMessageBox::Yes)->setText(QStringLiteral("&Yes"));
    QPushButton* no = box.addButton(QMessageBox::No);
    no->setText(QStringLiteral("&No"));
    box.setDefaultButton(no);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes ? BoxAnswer::Yes : BoxAnswer::No;
}

}  // namespace

BoxAnswer MsgBox(const QString& text, BoxIcon icon, const QString& title, BoxButtons buttons) {
    ShownBox box{text, title, icon, buttons};
    return g_script ? g_script->Take(std::move(box)) : Show(box);
}

BoxScript::BoxScript() : m_previous(g_script) {
    g_script = this;
}

BoxScript::~BoxScript() {
    g_script = m_previous;
    for (const QString& fault : Leftovers())
        qWarning("%s", qUtf8Printable(fault));
}

void BoxScript::Answer(BoxAnswer answer) {
    m_answers.push_back(answer);
}

QStringList BoxScript::Leftovers() const {
    QStringList faults = m_unasked;
    for (const BoxAnswer answer : m_answers)
        faults.append(QStringLiteral("answer not used: %1").arg(Name(answer)));
    return faults;
}

BoxAnswer BoxScript::Take(ShownBox box) {
    const BoxButtons buttons = box.Buttons;
    const QString text = box.Text;
    m_shown.push_back(std::move(box));
    if (m_answers.empty()) {
        m_unasked.append(QStringLiteral("unasked box: %1").arg(text));
        return WithoutAnswer(buttons);
    }
    const BoxAnswer answer = m_answers.front();
    m_answers.erase(m_answers.begin());
    if (!Offers(buttons, answer)) {
        m_unasked.append(QStringLiteral("box without a %1 button: %2").arg(Name(answer), text));
        return WithoutAnswer(buttons);
    }
    return answer;
}

}  // namespace toolkit
