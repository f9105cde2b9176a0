#pragma once

#include "charges/ChargeSlip.h"

class clsPDAF;

/// A slip charged to a patient's account: fees are billed, supplies leave the stock, and the
/// sponsors' funds pay what they cover. Lines of a revenue code that is neither a fee nor kept in
/// stock are not saved, and nothing of a sponsored visit whose funds another station has used up
/// meanwhile.
class RequestSlip final : public ChargeSlip {
public:
    /// Pays through `fund`, which must live as long.
    RequestSlip(SlipHead head, clsPDAF& fund) : ChargeSlip(std::move(head)), m_fund(fund) {}

protected:
    bool Begin() override;
    void WriteLine(const SlipLine& line) override;

private:
    bool IsFundUsedUp() const;
    void AddBill(const SlipLine& line);
    void IssueStock(const SlipLine& line);
    void KeepRaisedPrice(const SlipLine& line);
    void PayFromFund(const SlipLine& line, const QString& costCenter, double itemAmount);

    clsPDAF& m_fund;
    bool m_isSponsored = false;
};
