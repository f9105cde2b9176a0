#include "charges/ChargeSlip.h"

#include "base/Errors.h"
#include "base/Numbers.h"
#include "charges/ChargeRules.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"
#include "toolkit/EntryGrid.h"
#include "toolkit/MsgBox.h"

using modGlobals::gConnection;
using modGlobals::gCurrentUser;
using toolkit::BoxIcon;

namespace {

const QString kCounter = QStringLiteral("SELECT ChargeSlip FROM CLINICAL_AREA..tbCAPDSlip");
constexpr int kMostRaces = 10;

QString DoctorChargeCommand(const QString& slipNumber, const SlipHead& head,
                            const QString& itemCode, const QString& amount) {
    return db::Call(
        QStringLiteral("CLINICAL_AREA..sp_CAPD_DoctorCharge"),
        {slipNumber, head.IdNum, itemCode, amount, gCurrentUser->EmployeeCode(), head.HospNum});
}

QString SaveRequestCommand(const QString& slipNumber, const SlipHead& head, const SlipLine& line) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_SaveRequest"),
                    {head.HospNum, head.IdNum, head.CAPDNum, line.ItemCode, line.Quantity,
                     line.Amount, QStringLiteral("OPD"), slipNumber, line.RevenueID,
                     gCurrentUser->EmployeeCode(), head.DoctorID, head.Doctor});
}

bool IsRaceLost(const base::DatabaseError& error) {
    return error.Number() == db::kRowChanged;
}

}  // namespace

std::vector<SlipLine> SlipLines(const toolkit::EntryGrid& grid) {
    using namespace ChargeColumn;
    std::vector<SlipLine> lines;
    for (int row = 1; row < grid.Rows(); ++row) {
        const auto text = [&](int col) { return grid.TextMatrix(row, col); };
        if (text(Code).isEmpty())
            continue;
        lines.push_back({text(Dept), text(Code), text(Description), text(Price), text(Quantity),
                         text(Amount), text(LocationID), text(InventoryCode),
                         base::Val(text(NetAmount)), base::Val(text(Discount))});
    }
    return lines;
}

std::optional<std::vector<SlipLine>> LinesToSave(toolkit::EntryGrid& grid) {
    using namespace ChargeColumn;
    std::vector<SlipLine> lines = SlipLines(grid);
    if (lines.empty()) {
        toolkit::MsgBox(QStringLiteral("There are no entries to be saved."), BoxIcon::Exclamation);
        return {};
    }
    for (int row = 1; row < grid.Rows(); ++row) {
        if (grid.TextMatrix(row, Code).isEmpty() || base::Val(grid.TextMatrix(row, Amount)) != 0)
            continue;
        // Of an open price no quantity makes an amount.
        const bool isOpen = grid.TextMatrix(row, OpenPrice) == u"Y";
        toolkit::MsgBox(QStringLiteral("Please indicate the %1 for the exam '%2'.")
                            .arg(isOpen ? QStringLiteral("amount") : QStringLiteral("quantity"),
                                 grid.TextMatrix(row, Description).trimmed()),
                        BoxIcon::Information, QStringLiteral("Outpatient Charges"));
        grid.SetCell(row, isOpen ? Amount : Quantity);
        grid.setFocus(Qt::OtherFocusReason);
        return {};
    }
    return lines;
}

QString TakeSlipNumber() {
    for (int race = 1;; ++race) {
        db::Recordset counter;
        counter.Open(kCounter, gConnection, 2, 3, -1);
        const double next = counter.Fields(QStringLiteral("ChargeSlip")).Number();
        counter.Fields(QStringLiteral("ChargeSlip")).SetValue(qint64(next) + 1);
        try {
            counter.Update();
            return u'C' + base::PlainText(next).trimmed() + u'D';
        } catch (const base::DatabaseError& error) {
            // The other station's slip has that number: the next one is ours.
            if (!IsRaceLost(error) || race == kMostRaces)
                throw;
        }
    }
}

void ChargeDoctor(const QString& slipNumber, const SlipHead& head, const QString& itemCode,
                  const QString& amount) {
    gConnection->Execute(DoctorChargeCommand(slipNumber, head, itemCode, amount));
}

QString ChargeSlip::Save(const std::vector<SlipLine>& lines) {
    db::Transaction transaction(*gConnection);
    m_slipNumber = TakeSlipNumber();
    if (!Begin())
        return {};
    for (const SlipLine& line : lines)
        WriteLine(line);
    transaction.Commit();
    return m_slipNumber;
}

void ChargeSlip::ChargeDoctor(const SlipLine& line) {
    ::ChargeDoctor(m_slipNumber, m_head, line.ItemCode, line.Amount);
}

void ChargeSlip::SaveRequest(const SlipLine& line) {
    gConnection->Execute(SaveRequestCommand(m_slipNumber, m_head, line));
}
