#pragma once

#include "charges/ChargeSlip.h"

/// The slip of a walk-in who pays cash: its lines wait for the cashier and touch neither a fund
/// nor the stock. A doctor's fee is charged and requested as on any slip.
class CashSlip final : public ChargeSlip {
public:
    CashSlip(SlipHead head, QString patientName)
        : ChargeSlip(std::move(head)), m_patientName(std::move(patientName)) {}

protected:
    void WriteLine(const SlipLine& line) override;

private:
    QString m_patientName;
};
