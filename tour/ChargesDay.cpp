#include "tour/ChargesDay.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include "charges/ChargeRules.h"
#include "toolkit/EntryGrid.h"

using namespace ChargeColumn;

void ChargesDay::Keys(const QString& text) {
    for (const QChar letter : text)
        QTest::keyClick(Tour::Window()->windowHandle(), letter.toLatin1());
}

void ChargesDay::Enter(const QString& text) {
    Keys(text);
    Tour::Press(Qt::Key_Return);
}

toolkit::EntryGrid& ChargesDay::Sheet() {
    return *Tour::Find<toolkit::EntryGrid>("grdInput");
}

void ChargesDay::Click(int row, int col) {
    toolkit::EntryGrid& grid = Sheet();
    const QModelIndex cell = grid.model()->index(row - 1, col);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(cell).center());
}

void ChargesDay::Expect(int row, int col, const QString& text) {
    const QString found = Sheet().TextMatrix(row, col);
    m_tour.Expect(found == text,
                  QStringLiteral("cell %1, %2 is '%3'").arg(row).arg(col).arg(found));
}

void ChargesDay::EnterAt(const QString& step, int row, int col, const QString& text,
                         const QString& gross) {
    m_tour.Step(step, [=, this] {
        Click(row, col);
        Enter(text);
        const QString shown = Tour::Find<QLineEdit>("txtGross")->text();
        m_tour.Expect(shown == gross, QStringLiteral("the gross amount is ") + shown);
    });
}

void ChargesDay::ReadBox(const QString& step, const QString& said) {
    m_tour.Step(step, [=, this] {
        bool found = false;
        for (const QLabel* label : Tour::Window()->findChildren<QLabel*>())
            found = found || label->text().contains(said);
        m_tour.Expect(found, QStringLiteral("no message"));
    });
    m_tour.Quietly(step + QStringLiteral(" is read"), [] { Tour::Press(Qt::Key_Return); });
}

void ChargesDay::Walk() {
    NameTheDoctor();
    TypeSupplies();
    TypeFees();
    SaveTheSheet();
}

void ChargesDay::NameTheDoctor() {
    m_tour.Quietly(QStringLiteral("charge sheet asked for"), [] {
        Tour::Find<QPushButton>("cmdPostCharges")->setFocus();
        Tour::Press(Qt::Key_Return);
    });
    m_tour.Step(QStringLiteral("empty charge sheet"), [this] {
        m_tour.Expect(Tour::Window()->windowTitle() == QStringLiteral("RequestEntry"),
                      QStringLiteral("the charge sheet did not open"));
    });
    m_tour.Step(QStringLiteral("doctor not on file"), [this] {
        Keys(QStringLiteral("0Dr. N. Faraway"));
        m_tour.Expect(
            Tour::Find<QLineEdit>("txtDoctor")->text() == QStringLiteral("Dr. N. Faraway"),
            QStringLiteral("the name was not taken"));
    });
    m_tour.Step(QStringLiteral("doctor by code"), [this] {
        auto* code = Tour::Find<QLineEdit>("txtDoctorID");
        code->setFocus();
        code->selectAll();
        Enter(QStringLiteral("103"));
        m_tour.Expect(Tour::Find<QLineEdit>("txtDoctor")->text() == u"DR. Lucía Peña",
                      QStringLiteral("another doctor was found"));
        m_tour.Expect(Sheet().hasFocus(), QStringLiteral("the keyboard is not in the sheet"));
    });
}

void ChargesDay::TypeSupplies() {
    m_tour.Quietly(QStringLiteral("revenue code of many meanings"),
                   [] { Enter(QStringLiteral("c")); });
    m_tour.Step(QStringLiteral("revenue codes to pick from"), [this] {
        m_tour.Expect(Tour::Window()->windowTitle() == QStringLiteral("Revenue Codes"),
                      QStringLiteral("there is no list"));
    });
    m_tour.Quietly(QStringLiteral("revenue code picked"), [] { Enter(QStringLiteral("capd s")); });
    m_tour.Step(QStringLiteral("supply found by its name"), [this] {
        Expect(1, Dept, QStringLiteral("CA"));
        Enter(QStringLiteral("drainage"));
        Expect(1, Code, QStringLiteral("108"));
    });
    EnterAt(QStringLiteral("half a bag counts to the even side"), 1, Quantity,
            QStringLiteral("2.5"), QStringLiteral("280.00"));
    m_tour.Quietly(QStringLiteral("whole units stand in the sheet"),
                   [this] { Expect(1, Quantity, QStringLiteral("2")); });
    EnterAt(QStringLiteral("no quantity counts as one"), 1, Quantity, QStringLiteral("0"),
            QStringLiteral("140.00"));
    EnterAt(QStringLiteral("another quantity on the line"), 1, Quantity, QStringLiteral("3"),
            QStringLiteral("420.00"));
}

void ChargesDay::TypeFees() {
    m_tour.Step(QStringLiteral("fee of the unit"), [this] {
        Enter(QStringLiteral("CY"));
        Enter(QStringLiteral("501"));
        Expect(2, Amount, QStringLiteral("450.00"));
    });
    m_tour.Quietly(QStringLiteral("amount below the price"), [] {
        Click(2, Amount);
        Enter(QStringLiteral("449.99"));
    });
    ReadBox(QStringLiteral("amount below the price is refused"),
            QStringLiteral("You cannot enter amount lesser than the price."));
    m_tour.Quietly(QStringLiteral("same fee again"), [this] {
        Expect(2, Amount, QStringLiteral("450.00"));
        Enter(QStringLiteral("CY"));
        Enter(QStringLiteral("501"));
    });
    ReadBox(QStringLiteral("same fee is refused"), QStringLiteral("Exam already selected."));
    m_tour.Quietly(QStringLiteral("open-price fee"), [this] {
        Enter(QStringLiteral("510"));
        Expect(3, OpenPrice, QStringLiteral("Y"));
    });
    EnterAt(QStringLiteral("open price is typed"), 3, Amount, QStringLiteral("275.5"),
            QStringLiteral("1145.50"));
    m_tour.Quietly(QStringLiteral("doctor's fee"), [] {
        Enter(QStringLiteral("MD"));
        Enter(QStringLiteral("802"));
    });
    m_tour.Step(QStringLiteral("a whole sheet of charges"), [this] {
        m_tour.Expect(Tour::Find<QLineEdit>("txtGross")->text() == QStringLiteral("1645.50"),
                      QStringLiteral("the totals do not add up"));
    });
}

void ChargesDay::SaveTheSheet() {
    m_tour.Step(QStringLiteral("Esc leads to saving"), [this] {
        Tour::Press(Qt::Key_Escape);
        m_tour.Expect(Tour::Find<QPushButton>("cmdSave")->hasFocus(),
                      QStringLiteral("the keyboard is not on Save"));
    });
    m_tour.Quietly(QStringLiteral("charges are saved"), [] { Tour::Press(Qt::Key_Return); });
    m_tour.Quietly(QStringLiteral("a sponsor's fund is seen"), [] {
        if (Tour::Window()->windowTitle() == QStringLiteral("Viewing"))
            Tour::Press(Qt::Key_Escape);
    });
    m_tour.Quietly(QStringLiteral("charge sheet closed"), [this] {
        m_tour.Expect(Tour::Window()->objectName() != QStringLiteral("frmRequest"),
                      QStringLiteral("the charge sheet stayed"));
    });
}
