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

using namespace Qt::StringLiterals;

namespace {

enum Column { Name, Item = 2, RefNum = 4, Status = 6 };

}  // namespace

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
    Expect(CellOfChosen(Status).startsWith(status), u"no line of the list is "_s + status);
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
    Quietly(u"assessment entry asked for"_s, [] { Tour::Press(Qt::Key_A, Qt::ControlModifier); });
    Step(u"empty cash assessment"_s, [this] { ExpectTitle(u"CAPD: Assessment Entry"_s); });
    Quietly(u"walk-in's last name"_s, [] { Enter(u"de"_s); });
    Step(u"registered patients to pick from"_s, [this] {
        ExpectTitle(u"Regular Patients"_s);
        Tour::Press(Qt::Key_Down);
        Tour::Press(Qt::Key_Down);
        const auto& grid = *Tour::Find<toolkit::FlexGrid>("grdTable");
        m_walkIn = grid.TextMatrix(grid.Row(), 1);
    });
    Quietly(u"walk-in picked"_s, [] { Tour::Press(Qt::Key_Return); });
    Step(u"walk-in found"_s, [this] {
        Expect(!m_walkIn.isEmpty() &&
                   Tour::Find<QLineEdit>("txtIDNum")->text() == u'T' + m_walkIn + u'C',
               u"another patient was taken"_s);
    });
}

void CashDay::TypeCharges() {
    Quietly(u"walk-in's doctor"_s, [this] {
        Enter(u"103"_s);
        Expect(Tour::Find<toolkit::EntryGrid>("grdInput")->hasFocus(),
               u"the keyboard is not in the sheet"_s);
    });
    Quietly(u"walk-in's fee"_s, [] {
        Enter(u"CY"_s);
        Enter(u"501"_s);
        for (int cell = 0; cell < 3; ++cell)
            Tour::Press(Qt::Key_Return);
    });
    Quietly(u"walk-in's supplies"_s, [] {
        Enter(u"CA"_s);
        Enter(u"108"_s);
        Tour::Press(Qt::Key_Return);
        Enter(u"3"_s);
    });
    Quietly(u"walk-in's doctor's fee"_s, [] {
        Enter(u"MD"_s);
        Enter(u"802"_s);
    });
    Step(u"whole cash assessment"_s, [this] {
        const QString gross = Tour::Find<QLineEdit>("txtGross")->text();
        Expect(gross == u"1370.00", u"the gross amount is "_s + gross);
    });
}

void CashDay::PrintSlip() {
    Quietly(u"cash slip asked for"_s, [] { Tour::Press(Qt::Key_P, Qt::AltModifier); });
    ReadBox(u"cash assessment saved"_s, u"Record Saved"_s);
    Quietly(u"walk-in's rows"_s, [this] {
        ExpectStored(
            u"SELECT RevenueID, ItemCode, Quantity, Amount, RecordStatus, DoctorID "
            "FROM BILLING..tbCashAssessment WHERE IdNum = 'T%1C' ORDER BY AssessID"_s.arg(m_walkIn),
            u"CY|501|1|450|N|103;CA|108|3|420|N|103;MD|802|1|500|N|103"_s);
    });
    SavePdf(u"cashier's slip"_s, u"CAPD ChargeSlip"_s, u"cash-slip.pdf"_s);
}

void CashDay::SeeOnePaid() {
    Quietly(u"assessment status asked for"_s, [] { Tour::Press(Qt::Key_S, Qt::ControlModifier); });
    Step(u"assessments and their states"_s, [this] {
        ExpectTitle(u"Assessment Status"_s);
        Expect(Cell(0, Status) == u"PENDING", u"the new one is not first"_s);
    });
    Step(u"assessment found by its number"_s, [this] {
        SearchFor(m_walkIn);
        Expect(List().model()->rowCount() == 3, u"not its three lines"_s);
        m_slip = Cell(0, RefNum);
    });
    Quietly(u"cashier is paid"_s, [this] {
        // At the cashier's own desk.
        Tour::Ask(u"BILLING..sp_Cashier_Pay '%1','712345'"_s.arg(m_slip));
    });
    Quietly(u"paid one to be revoked"_s, [] {
        Tour::Press(Qt::Key_Down);
        Tour::Press(Qt::Key_V, Qt::AltModifier);
    });
    ReadBox(u"paid assessment stays"_s, u"Entry is already Paid."_s);
    Step(u"assessment is seen paid"_s, [this] {
        SearchFor(m_walkIn);
        Expect(Cell(2, Status) == u"OR 712345", u"it is not paid"_s);
    });
}

void CashDay::RevokeAnother() {
    Quietly(u"one that waits"_s, [this] {
        SearchFor({});
        GoDownTo(u"PENDING"_s);
        Tour::Press(Qt::Key_V, Qt::AltModifier);
    });
    ReadBox(u"assessment revoked"_s, u"Data is Successfully Revoked."_s);
    Step(u"all its lines are revoked"_s, [this] {
        ExpectStored(
            u"SELECT DISTINCT RecordStatus FROM BILLING..tbCashAssessment WHERE RefNum = "
            "'%1'"_s.arg(m_slip),
            u"R"_s);
        for (int row = 0; row < List().model()->rowCount(); ++row)
            Expect(Cell(row, RefNum) != m_slip || Cell(row, Status) == u"REVOKED",
                   u"a line still stands"_s);
    });
    Quietly(u"revoked once more"_s, [] { Tour::Press(Qt::Key_V, Qt::AltModifier); });
    ReadBox(u"revoked only once"_s, u"Entry is already Revoked."_s);
}

void CashDay::ReprintAThird() {
    Quietly(u"slip to be printed anew"_s, [this] {
        GoDownTo(u"OR 7000"_s);
        Tour::Press(Qt::Key_R, Qt::AltModifier);
    });
    SavePdf(u"slip printed anew"_s, u"CAPD ChargeSlip"_s, u"cash-slip-again.pdf"_s);
    Step(u"no assessment of that name"_s, [this] {
        SearchFor(u"zzz"_s);
        Expect(List().model()->rowCount() == 0, u"somebody was found"_s);
    });
    Quietly(u"assessment status closed"_s, [] { Tour::Press(Qt::Key_C, Qt::AltModifier); });
}
