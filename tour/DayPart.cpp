#include "tour/DayPart.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QWindow>

#include "db/Recordset.h"
#include "toolkit/FileNames.h"

using namespace Qt::StringLiterals;

void DayPart::Expect(bool holds, const QString& what) {
    if (!holds)
        throw std::runtime_error(what.toStdString());
}

void DayPart::ExpectTitle(const QString& title) {
    const QString shown = Tour::Window()->windowTitle();
    Expect(shown.startsWith(title), u"not '%1' is in front, but '%2'"_s.arg(title, shown));
}

void DayPart::ExpectStored(const QString& query, const QString& rows) {
    const auto found = Tour::Ask(query);
    QStringList all;
    for (; !found->Eof(); found->MoveNext()) {
        QStringList cells;
        for (int column = 0; column < found->FieldNames().size(); ++column)
            cells << found->Fields(column).Text();
        all << cells.join(u'|');
    }
    Expect(all.join(u';') == rows, u"stored is '%1', not '%2'"_s.arg(all.join(u';'), rows));
}

void DayPart::Keys(const QString& text) {
    for (const QChar letter : text)
        QTest::keyClick(Tour::Window()->windowHandle(), letter.toLatin1());
}

void DayPart::Enter(const QString& text) {
    Keys(text);
    Tour::Press(Qt::Key_Return);
}

void DayPart::Push(const char* button) {
    Tour::Find<QAbstractButton>(button)->setFocus();
    Tour::Press(Qt::Key_Return);
}

void DayPart::ListPatients(const char* type, bool current, const QString& idNum) {
    const auto press = [](const char* name) {
        Tour::Find<QAbstractButton>(name)->setFocus();
        Tour::Press(Qt::Key_Space);
    };
    if (Tour::Find<QAbstractButton>("chkCurrent")->isChecked() != current)
        press("chkCurrent");
    press(type);
    for (const char* box : {"txtHospNum", "txtLastName", "txtIdNum"})
        Tour::Find<QLineEdit>(box)->clear();
    Tour::Type(Tour::Find<QLineEdit>("txtIdNum"), idNum);
    Tour::Press(Qt::Key_Return);
}

void DayPart::ReadBox(const QString& step, const QString& said, int answer) {
    Step(step, [said] {
        QStringList shown;
        for (const QLabel* label : Tour::Window()->findChildren<QLabel*>())
            shown << label->text();
        Expect(shown.join(u'|').contains(said), u"not told: %1"_s.arg(said));
    });
    Quietly(step + u": answered"_s, [answer] {
        Tour::Press(answer, answer == Qt::Key_Return ? Qt::NoModifier : Qt::AltModifier);
    });
}

void DayPart::SavePdf(const QString& step, const QString& title, const QString& file) {
    Step(step, [title] { ExpectTitle(title); });
    Quietly(step + u": saved as PDF"_s, [this, file] {
        TypeFileName(file, [] { Tour::Press(Qt::Key_S, Qt::ControlModifier); });
        Expect(QFileInfo(m_tour.File(file)).size() > 1000, u"no PDF was written"_s);
    });
    Quietly(step + u": closed"_s, [] { Tour::Press(Qt::Key_Escape); });
}

void DayPart::TypeFileName(const QString& file, const std::function<void()>& save) const {
    toolkit::FileNameScript names;
    names.Answer(m_tour.File(file));
    save();
    Expect(names.Leftovers().isEmpty(), u"no file name was asked for"_s);
}
