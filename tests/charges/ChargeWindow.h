#pragma once

#include "ScreenPatient.h"
#include "WindowTest.h"
#include "base/Numbers.h"
#include "charges/ChargeRules.h"
#include "charges/frmRequest.h"
#include "toolkit/EntryGrid.h"

/// A visit with this discount type; of a patient with this social service class, or none.
inline QString VisitOf(const QString& discountType, const QString& classification = {}) {
    return Ask(
        u"SELECT TOP (1) v.IdNum FROM PATIENT_DATA..tbOutPatient v INNER JOIN "
        "PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum WHERE v.DiscType = '%1' AND "
        "ISNULL(m.MSSClassification, '') = '%2' ORDER BY v.IdNum"_s.arg(discountType,
                                                                        classification));
}

/// The charge window on screen, with the keyboard in the sheet.
struct ChargeWindow {
    ScreenPatient Patient;
    frmRequest Window;
    toolkit::EntryGrid& Grid;

    explicit ChargeWindow(const QString& idNum, const QString& hospNum = u"200021"_s)
        : Patient(idNum, hospNum), Window(Patient), Grid(Find<toolkit::EntryGrid>(Window)) {
        BringUp(Window);
        Grid.setFocus();
    }

    QLineEdit& Box(const char* name) const { return Find<QLineEdit>(Window, name); }
    QString Text(const char* name) const { return TextOf(Window, name); }
    QString Cell(int row, int col) const { return Grid.TextMatrix(row, col); }
    QString Line(int row, int from = 0) const { return LineOf(Grid, row, from); }
    QPoint At() const { return CellOf(Grid); }
    QString Focus() const {
        return Window.focusWidget() ? Window.focusWidget()->objectName() : QString();
    }
    void Press(const char* button) { Click(Window, button); }

    void EnterAt(int row, int col, const QString& text) {
        Grid.setFocus();
        Grid.SetCell(row, col);
        EnterText(text);
    }
    /// One whole line in the last row: revenue code, item and, where given, the quantity.
    void Charge(const QString& revenueId, const QString& item, const QString& quantity = {}) {
        if (!Cell(Grid.Rows() - 1, ChargeColumn::Code).isEmpty())
            Grid.AddLine();
        const int row = Grid.Rows() - 1;
        EnterAt(row, ChargeColumn::Dept, revenueId);
        EnterAt(row, ChargeColumn::Code, item);
        if (!quantity.isEmpty())
            EnterAt(row, ChargeColumn::Quantity, quantity);
    }
    /// Gross, discount and net amount.
    QString Totals() const {
        return Text("txtGross") + u'|' + Text("txtDiscount") + u'|' + Text("txtNetAmount");
    }

    /// Empty when every line's net amount is its amount less its discount and the totals are the
    /// columns' sums; else what is wrong.
    QString Fault() const {
        using namespace ChargeColumn;
        double sums[3] = {};
        for (int row = 1; row < Grid.Rows(); ++row) {
            const double amount = base::Val(Cell(row, Amount));
            const double discount = base::Val(Cell(row, Discount));
            const double netAmount = base::Val(Cell(row, NetAmount));
            if (qAbs(amount - discount - netAmount) > 0.001)
                return u"line %1: %2"_s.arg(row).arg(Line(row));
            if (Cell(row, Code).isEmpty() && amount != 0)
                return u"line %1 has an amount and no item"_s.arg(row);
            sums[0] += amount;
            sums[1] += discount;
            sums[2] += netAmount;
        }
        QStringList totals;
        for (const double sum : sums)
            totals << base::MoneyText(sum);
        const QString sum = totals.join(u'|');
        return sum == Totals() ? QString() : u"totals %1, not %2"_s.arg(Totals(), sum);
    }
};

/// Of the charge window: its lines' sums are checked at the end.
class ChargeTest : public WindowTest {
protected:
    void CloseAll() {
        PluggedDriver::Returns();
        const QString fault =
            m_window && !QTest::currentTestFailed() ? m_window->Fault() : QString();
        m_window.reset();
        TearDown();
        QCOMPARE(fault, QString());
    }
    ChargeWindow& Open(const QString& discountType = u"SM"_s, const QString& classification = {}) {
        m_window = std::make_unique<ChargeWindow>(VisitOf(discountType, classification));
        return *m_window;
    }

    std::unique_ptr<ChargeWindow> m_window;
};
