#include "tour/CashDay.h"

#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QWindow>

#include "charges/ChargeRules.h"
#include "session/modGlobals.h"
#include "toolkit/EntryGrid.h"
#include "toolkit/FileNames.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/ListView.h"

namespace {

enum Column { Name, Item = 2, RefNum = 4, Status = 6 };

}  // namespace

void CashDay::Keys(const QString& text) {
    for (const QChar letter : text)
        QTest::keyClick(Tour::Window()->windowHandle(), letter.toLatin1());
}

void CashDay::Enter(const QString& text) {
    Keys(text);
    Tour::Press(Qt::Key_Return);
}

void CashDay::ReadBox(const QString& step, const QString& said) {
    m_tour.Step(step, [=, this] {
        bool found = false;
        for (const QLabel* label : Tour::Window()->findChildren<QLabel*>())
            found = found || label->text().contains(said);
        m_tour.Expect(found, QStringLiteral("no message"));
    });
    m_tour.Quietly(step + QStringLiteral(" is read"), [] { Tour::Press(Qt::Key_Return); });
}

void CashDay::SaveSlip(const QString& step, const QString& file) {
    m_tour.Step(step, [this] {
        m_tour.Expect(Tour::Window()->windowTitle() == u"CAPD ChargeSlip",
                      QStringLiteral("the viewer is not there"));
    });
    m_tour.Quietly(step + QStringLiteral(" saved"), [this, file] {
        toolkit::FileNameScript names;
        names.Answer(m_tour.File(file));
        Tour::Press(Qt::Key_S, Qt::ControlModifier);
        m_tour.Expect(names.Leftovers().isEmpty() && QFileInfo(m_tour.File(file)).size() > 1000,
                      QStringLiteral("no PDF was written"));
    });
    m_tour.Quietly(step + QStringLiteral(" closed"), [] { Tour::Press(Qt::Key_Escape); });
}

toolkit::ListView& CashDay::List() {
    return *Tour::Find<toolkit::ListView>("lvwListAssessment");
}

QString CashDay::Cell(int row, int column) {
    return List().model()->index(row, column).data().toString();
}

QString CashDay::CellOfChosen(int column) {
    return Cell(List().currentIndex().row(), column);
}

void CashDay::SearchFor(const QString& text) {
    auto* box = Tour::Find<QLineEdit>("txtSearch");
    box->setFocus();
    box->selectAll();
    Tour::Press(Qt::Key_Delete);
    Enter(text);
}

void CashDay::GoDownTo(const QString& status) {
    Tour::Find<QLineEdit>("txtSearch")->setFocus();
    Tour::Press(Qt::Key_Down);
    Tour::Press(Qt::Key_Home);
    const int rows = List().model()->rowCount();
    for (int row = 0; row < rows && !CellOfChosen(Status).startsWith(status); ++row)
        Tour::Press(Qt::Key_Down);
    m_tour.Expect(CellOfChosen(Status).startsWith(status),
                  QStringLiteral("no line of the list is ") + status);
    m_slip = CellOfChosen(RefNum);
}

void CashDay::Walk() {
    FindWalkIn();
    TypeCharges();
    PrintSlip();
    SeeOnePaid();
    RevokeAnother();
    ReprintAThird();
}

void CashDay::FindWalkIn() {
    m_tour.Quietly(QStringLiteral("assessment entry asked for"),
                   [] { Tour::Press(Qt::Key_A, Qt::ControlModifier); });
    m_tour.Step(QStringLiteral("empty cash assessment"), [this] {
        m_tour.Expect(Tour::Window()->windowTitle() == u"CAPD: Assessment Entry",
                      QStringLiteral("the assessment did not open"));
    });
    m_tour.Quietly(QStringLiteral("walk-in's last name"), [] { Enter(QStringLiteral("de")); });
    m_tour.Step(QStringLiteral("registered patients to pick from"), [this] {
        m_tour.Expect(Tour::Window()->windowTitle() == u"Regular Patients",
                      QStringLiteral("there is no listing"));
        Tour::Press(Qt::Key_Down);
        Tour::Press(Qt::Key_Down);
        const auto& grid = *Tour::Find<toolkit::FlexGrid>("grdTable");
        m_walkIn = grid.TextMatrix(grid.Row(), 1);
    });
    m_tour.Quietly(QStringLiteral("walk-in picked"), [] { Tour::Press(Qt::Key_Return); });
    m_tour.Step(QStringLiteral("walk-in found"), [this] {
        m_tour.Expect(!m_walkIn.isEmpty() &&
                          Tour::Find<QLineEdit>("txtIDNum")->text() == u'T' + m_walkIn + u'C',
                      QStringLiteral("another patient was taken"));
    });
}

void CashDay::TypeCharges() {
    m_tour.Quietly(QStringLiteral("walk-in's doctor"), [this] {
        Enter(QStringLiteral("103"));
        m_tour.Expect(Tour::Find<toolkit::EntryGrid>("grdInput")->hasFocus(),
                      QStringLiteral("the keyboard is not in the sheet"));
    });
    m_tour.Quietly(QStringLiteral("walk-in's fee"), [] {
        Enter(QStringLiteral("CY"));
        Enter(QStringLiteral("501"));
        for (int cell = 0; cell < 3; ++cell)
            Tour::Press(Qt::Key_Return);
    });
    m_tour.Quietly(QStringLiteral("walk-in's supplies"), [] {
        Enter(QStringLiteral("CA"));
        Enter(QStringLiteral("108"));
        Tour::Press(Qt::Key_Return);
        Enter(QStringLiteral("3"));
    });
    m_tour.Quietly(QStringLiteral("walk-in's doctor's fee"), [] {
        Enter(QStringLiteral("MD"));
        Enter(QStringLiteral("802"));
    });
    m_tour.Step(QStringLiteral("whole cash assessment"), [this] {
        const QString gross = Tour::Find<QLineEdit>("txtGross")->text();
        m_tour.Expect(gross == u"1370.00", QStringLiteral("the gross amount is ") + gross);
    });
}

void CashDay::PrintSlip() {
    m_tour.Quietly(QStringLiteral("cash slip asked for"),
                   [] { Tour::Press(Qt::Key_P, Qt::AltModifier); });
    ReadBox(QStringLiteral("cash assessment saved"), QStringLiteral("Record Saved"));
    SaveSlip(QStringLiteral("cashier's slip"), QStringLiteral("cash-slip.pdf"));
}

void CashDay::SeeOnePaid() {
    m_tour.Quietly(QStringLiteral("assessment status asked for"),
                   [] { Tour::Press(Qt::Key_S, Qt::ControlModifier); });
    m_tour.Step(QStringLiteral("assessments and their states"), [this] {
        m_tour.Expect(Tour::Window()->windowTitle() == u"Assessment Status",
                      QStringLiteral("the status did not open"));
        m_tour.Expect(Cell(0, Status) == u"PENDING", QStringLiteral("the new one is not first"));
    });
    m_tour.Step(QStringLiteral("assessment found by its number"), [this] {
        SearchFor(m_walkIn);
        m_tour.Expect(List().model()->rowCount() == 3, QStringLiteral("not its three lines"));
        m_slip = Cell(0, RefNum);
    });
    m_tour.Quietly(QStringLiteral("cashier is paid"), [this] {
        // At the cashier's own desk.
        Tour::Ask(QStringLiteral("BILLING..sp_Cashier_Pay '%1','712345'").arg(m_slip));
    });
    m_tour.Quietly(QStringLiteral("paid one to be revoked"), [] {
        Tour::Press(Qt::Key_Down);
        Tour::Press(Qt::Key_V, Qt::AltModifier);
    });
    ReadBox(QStringLiteral("paid assessment stays"), QStringLiteral("Entry is already Paid."));
    m_tour.Step(QStringLiteral("assessment is seen paid"), [this] {
        SearchFor(m_walkIn);
        m_tour.Expect(Cell(2, Status) == u"OR 712345", QStringLiteral("it is not paid"));
    });
}

void CashDay::RevokeAnother() {
    m_tour.Quietly(QStringLiteral("one that waits"), [this] {
        SearchFor({});
        GoDownTo(QStringLiteral("PENDING"));
        Tour::Press(Qt::Key_V, Qt::AltModifier);
    });
    ReadBox(QStringLiteral("assessment revoked"), QStringLiteral("Data is Successfully Revoked."));
    m_tour.Step(QStringLiteral("all its lines are revoked"), [this] {
        for (int row = 0; row < List().model()->rowCount(); ++row)
            m_tour.Expect(Cell(row, RefNum) != m_slip || Cell(row, Status) == u"REVOKED",
                          QStringLiteral("a line still stands"));
    });
    m_tour.Quietly(QStringLiteral("revoked once more"),
                   [] { Tour::Press(Qt::Key_V, Qt::AltModifier); });
    ReadBox(QStringLiteral("revoked only once"), QStringLiteral("Entry is already Revoked."));
}

void CashDay::ReprintAThird() {
    m_tour.Quietly(QStringLiteral("slip to be printed anew"), [this] {
        GoDownTo(QStringLiteral("OR 7000"));
        Tour::Press(Qt::Key_R, Qt::AltModifier);
    });
    SaveSlip(QStringLiteral("slip printed anew"), QStringLiteral("cash-slip-again.pdf"));
    m_tour.Step(QStringLiteral("no assessment of that name"), [this] {
        SearchFor(QStringLiteral("zzz"));
        m_tour.Expect(List().model()->rowCount() == 0, QStringLiteral("somebody was found"));
    });
    m_tour.Quietly(QStringLiteral("assessment status closed"),
                   [] { Tour::Press(Qt::Key_C, Qt::AltModifier); });
}
