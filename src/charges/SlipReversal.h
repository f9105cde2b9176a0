#pragma once

#include <vector>

#include "charges/ChargeList.h"
#include "charges/ChargeSlip.h"

class clsPDAF;

/// Takes a slip back: its doctors' fees, its supplies into the stock, and what the funds paid of
/// both. The unit's own fees stay. Taking the same slip back again changes nothing.
class SlipReversal final {
public:
    /// Of a visit's slip; payments are cancelled through `fund`, which must live as long.
    SlipReversal(SlipHead head, QString slipNumber, clsPDAF& fund);

    /// Reverses the slip's lines as they are listed, in one transaction. Throws
    /// base::DatabaseError; nothing is written then.
    void Revoke(const std::vector<ListedCharge>& lines);

private:
    void ReverseDoctor(const ListedCharge& line);
    void ReversePackage(std::vector<ListedCharge> lines);
    void CancelPayment(const ListedCharge& line, const QString& costCenter);

    SlipHead m_head;
    QString m_slipNumber;
    clsPDAF& m_fund;
};
