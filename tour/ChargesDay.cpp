#include "tour/ChargesDay.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include "charges/ChargeRules.h"
#include "toolkit/EntryGrid.h"

using namespace Qt::StringLiterals;
using namespace ChargeColumn;

toolkit::EntryGrid& ChargesDay::Sheet() {
    return *Tour::Find<toolkit::EntryGrid>("grdInput");
}

void ChargesDay::Click(int row, int col) {
    toolkit::EntryGrid& grid = Sheet();
    const QModelIndex cell = grid.model()->index(row - 1, col);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(cell).center());
}

void ChargesDay::ExpectCell(int row, int col, const QString& text) {
    const QString found = Sheet().TextMatrix(row, col);
    Expect(found == text, u"cell %1, %2 is '%3'"_s.arg(row).arg(col).arg(found));
}

void ChargesDay::EnterAt(const QString& step, int row, int col, const QString& text,
                         const QString& gross) {
    Step(step, [=, this] {
        Click(row, col);
        Enter(text);
        const QString shown = Tour::Find<QLineEdit>("txtGross")->text();
        Expect(shown == gross, u"the gross amount is "_s + shown);
    });
}

void ChargesDay::Walk() {
    NameTheDoctor();
    TypeSupplies();
    TypeFees();
    SaveTheSheet();
}

void ChargesDay::NameTheDoctor() {
    Quietly(u"charge sheet asked for"_s, [] { Push("cmdPostCharges"); });
    Step(u"empty charge sheet"_s, [this] { ExpectTitle(u"RequestEntry"_s); });
    Step(u"doctor not on file"_s, [this] {
        Keys(u"0Dr. N. Faraway"_s);
        Expect(Tour::Find<QLineEdit>("txtDoctor")->text() == u"Dr. N. Faraway"_s,
               u"the name was not taken"_s);
    });
    Step(u"doctor by code"_s, [this] {
        auto* code = Tour::Find<QLineEdit>("txtDoctorID");
        code->setFocus();
        code->selectAll();
        Enter(u"103"_s);
        Expect(Tour::Find<QLineEdit>("txtDoctor")->text() == u"DR. Lucía Peña",
               u"another doctor was found"_s);
        Expect(Sheet().hasFocus(), u"the keyboard is not in the sheet"_s);
    });
}

void ChargesDay::TypeSupplies() {
    Quietly(u"revenue code of many meanings"_s, [] { Enter(u"c"_s); });
    Step(u"revenue codes to pick from"_s, [this] { ExpectTitle(u"Revenue Codes"_s); });
    Quietly(u"revenue code picked"_s, [] { Enter(u"capd s"_s); });
    Step(u"supply found by its name"_s, [this] {
        ExpectCell(1, Dept, u"CA"_s);
        Enter(u"drainage"_s);
        ExpectCell(1, Code, u"108"_s);
    });
    EnterAt(u"half a bag counts to the even side"_s, 1, Quantity, u"2.5"_s, u"280.00"_s);
    Quietly(u"whole units stand in the sheet"_s, [this] { ExpectCell(1, Quantity, u"2"_s); });
    EnterAt(u"no quantity counts as one"_s, 1, Quantity, u"0"_s, u"140.00"_s);
    EnterAt(u"another quantity on the line"_s, 1, Quantity, u"3"_s, u"420.00"_s);
}

void ChargesDay::TypeFees() {
    Step(u"fee of the unit"_s, [this] {
        Enter(u"CY"_s);
        Enter(u"501"_s);
        ExpectCell(2, Amount, u"450.00"_s);
    });
    Quietly(u"amount below the price"_s, [] {
        Click(2, Amount);
        Enter(u"449.99"_s);
    });
    ReadBox(u"amount below the price is refused"_s,
            u"You cannot enter amount lesser than the price."_s);
    Quietly(u"same fee again"_s, [this] {
        ExpectCell(2, Amount, u"450.00"_s);
        Enter(u"CY"_s);
        Enter(u"501"_s);
    });
    ReadBox(u"same fee is refused"_s, u"Exam already selected."_s);
    Quietly(u"open-price fee"_s, [this] {
        Enter(u"510"_s);
        ExpectCell(3, OpenPrice, u"Y"_s);
    });
    EnterAt(u"open price is typed"_s, 3, Amount, u"275.5"_s, u"1145.50"_s);
    Quietly(u"doctor's fee"_s, [] {
        Enter(u"MD"_s);
        Enter(u"802"_s);
    });
    Step(u"a whole sheet of charges"_s, [this] {
        Expect(Tour::Find<QLineEdit>("txtGross")->text() == u"1645.50"_s,
               u"the totals do not add up"_s);
    });
}

void ChargesDay::SaveTheSheet() {
    Step(u"Esc leads to saving"_s, [this] {
        Tour::Press(Qt::Key_Escape);
        Expect(Tour::Find<QPushButton>("cmdSave")->hasFocus(), u"the keyboard is not on Save"_s);
    });
    Quietly(u"charges are saved"_s, [] { Tour::Press(Qt::Key_Return); });
    Quietly(u"a sponsor's fund is seen"_s, [] {
        if (Tour::Window()->windowTitle() == u"Viewing"_s)
            Tour::Press(Qt::Key_Escape);
    });
    Quietly(u"charge sheet closed"_s, [this] {
        Expect(Tour::Window()->objectName() != u"frmRequest"_s, u"the charge sheet stayed"_s);
    });
}
