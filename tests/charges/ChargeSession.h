#pragma once

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "PluggedSession.h"
#include "TestHospital.h"
#include "base/Numbers.h"
#include "charges/ChargeRules.h"
#include "charges/frmRequest.h"
#include "components/builtin/clsCodeSearch.h"
#include "components/builtin/clsSupplies.h"
#include "db/Recordset.h"
#include "patients/PatientOnScreen.h"
#include "session/modGlobals.h"
#include "toolkit/EntryGrid.h"

using namespace Qt::StringLiterals;

/// A session on a demo hospital of its own, with the program's own components.
class ChargeSession final {
public:
    ChargeSession() : m_hospital(std::make_unique<TestHospital>()) {
        Start(m_hospital->ConnectionString());
    }
    /// On a hospital that others work on as well.
    explicit ChargeSession(const QString& connectionString) { Start(connectionString); }

    const TestHospital& Hospital() const { return *m_hospital; }

    /// A visit with this discount type; of a patient with this social service class, or none.
    QString Visit(const QString& discountType, const QString& classification = {}) const {
        const auto found = Connection->Execute(
            u"SELECT TOP (1) v.IdNum FROM PATIENT_DATA..tbOutPatient v INNER JOIN "
            "PATIENT_DATA..tbMaster m ON m.HospNum = v.HospNum WHERE v.DiscType = "
            "'%1' AND ISNULL(m.MSSClassification, '') = '%2' ORDER BY v.IdNum"_s.arg(
                discountType, classification));
        return found->Fields(0).Text();
    }

    std::shared_ptr<db::Connection> Connection;

private:
    void Start(const QString& connectionString) {
        using namespace modGlobals;
        PluggedDriver::Gone = false;
        Connection =
            std::make_shared<db::Connection>(std::make_unique<PluggedDriver>(connectionString));
        Connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        gCurrentUser = std::make_shared<SessionUser>(Connection);
        gConnection = Connection;
        ApplyDepartmentCode(u"46"_s);
        auto codes = std::make_shared<components::clsCodeSearch>();
        codes->Initialize_Classes();
        codes->SetSearchMode(true);
        codes->SetConnection(Connection);
        gCodeSearch = codes;
        gSupplyList = std::make_shared<components::clsListDrugs>();
        gSupplyInfo = std::make_shared<components::clsDrug>();
        if (!gSupplyList->InitConnection(Connection) || !gSupplyInfo->InitConnect(Connection))
            throw std::runtime_error("the catalogue cannot be reached");
    }

    std::unique_ptr<TestHospital> m_hospital;
};

class ScreenPatient final : public PatientOnScreen {
public:
    explicit ScreenPatient(QString idNum, QString hospNum = u"200021"_s)
        : m_idNum(std::move(idNum)), m_hospNum(std::move(hospNum)) {}
    QString HospNum() const override { return m_hospNum; }
    QString IdNum() const override { return m_idNum; }
    QString CAPDNum() const override { return u"C7"_s; }
    QString LastName() const override { return u"O'HARA"_s; }
    QString FirstName() const override { return u"Ana"_s; }
    QString MiddleName() const override { return u"Luz"_s; }
    QString Age() const override { return u"61"_s; }
    QString Sex() const override { return u"F"_s; }
    QString Company() const override { return u"A-17 <b>Kidney & Sons"_s; }
    void Get_CanPenProc() override {}

private:
    QString m_idNum;
    QString m_hospNum;
};

/// The charge window on screen, with the keyboard in the sheet.
struct ChargeWindow {
    ScreenPatient Patient;
    frmRequest Window;
    toolkit::EntryGrid& Grid;

    explicit ChargeWindow(const QString& idNum, const QString& hospNum = u"200021"_s)
        : Patient(idNum, hospNum), Window(Patient), Grid(*Window.findChild<toolkit::EntryGrid*>()) {
        Window.show();
        if (!QTest::qWaitForWindowActive(&Window))
            qFatal("the window does not come to the front");
        Grid.setFocus();
    }

    template <class Control>
    Control& Find(const char* name) const {
        auto* found = Window.findChild<Control*>(QLatin1String(name));
        if (!found)
            qFatal("there is no %s", name);
        return *found;
    }
    QString Box(const char* name) const { return Find<QLineEdit>(name).text(); }
    QString Label(const char* name) const { return Find<QLabel>(name).text(); }
    QString Cell(int row, int col) const { return Grid.TextMatrix(row, col); }
    QPoint At() const { return {Grid.Row(), Grid.Col()}; }
    QString Focus() const {
        return Window.focusWidget() ? Window.focusWidget()->objectName() : QString();
    }

    /// Who has the keyboard. A list that was just closed gives it back to nobody where there is no
    /// window manager.
    static QWidget* Focused() {
        const auto isSomebody = [] {
            const QWidget* focused = QApplication::focusWidget();
            return focused && focused->isVisible();
        };
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (!isSomebody() && !QApplication::activeModalWidget() && window->isVisible())
                window->activateWindow();
        }
        if (!QTest::qWaitFor(isSomebody))
            qFatal("nobody has the keyboard");
        return QApplication::focusWidget();
    }
    static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(Focused(), key, modifiers);
    }
    /// Each key to whoever has the keyboard then: the first one opens the cell's editor.
    static void Type(const QString& text) {
        for (const QChar letter : text)
            QTest::keyClick(Focused(), letter.toLatin1());
    }
    /// Types into the current cell and confirms it.
    static void Enter(const QString& text) {
        Type(text);
        Key(Qt::Key_Return);
    }
    void EnterAt(int row, int col, const QString& text) {
        Grid.setFocus();
        Grid.SetCell(row, col);
        Enter(text);
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
    QStringList Totals() const {
        return {Box("txtGross"), Box("txtDiscount"), Box("txtNetAmount")};
    }
    QStringList Line(int row) const {
        QStringList cells;
        for (int col = 0; col < Grid.Cols(); ++col)
            cells << Cell(row, col);
        return cells;
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
                return u"line %1: %2"_s.arg(row).arg(Line(row).join(u'|'));
            if (Cell(row, Code).isEmpty() && amount != 0)
                return u"line %1 has an amount and no item"_s.arg(row);
            sums[0] += amount;
            sums[1] += discount;
            sums[2] += netAmount;
        }
        QStringList totals;
        for (const double sum : sums)
            totals << base::MoneyText(sum);
        return totals == Totals()
                   ? QString()
                   : u"totals %1, not %2"_s.arg(Totals().join(u'|'), totals.join(u'|'));
    }
};
