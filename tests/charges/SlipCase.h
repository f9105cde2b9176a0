#pragma once

#include "Session.h"

/// A patient of the demo hospital with an open visit and, so far, neither slip nor sponsor.
class SlipCase final {
public:
    SlipCase() {
        const QString visit = Ask(
            u"SELECT TOP (1) v.IdNum, v.HospNum FROM PATIENT_DATA..tbOutPatient v WHERE "
            "v.BillingDate IS NULL AND v.DiscType = 'SM' AND NOT EXISTS (SELECT 1 FROM "
            "BILLING..tbFundAccount f WHERE f.HospNum = v.HospNum) AND NOT EXISTS (SELECT 1 FROM "
            "CLINICAL_AREA..tbCAPDRequest r WHERE r.IdNum = v.IdNum) ORDER BY v.IdNum"_s);
        IdNum = visit.section(u'|', 0, 0);
        HospNum = visit.section(u'|', 1);
        Do(u"DELETE BILLING..tbVisitAccount WHERE IdNum = '%1'"_s.arg(IdNum));
    }

    /// Charges the visit to companies whose accounts hold so much, in this order.
    void Sponsor(const QList<double>& balances) const {
        for (int k = 1; k <= balances.size(); ++k) {
            const QString account = u"T-%1"_s.arg(k);
            Do(u"INSERT INTO BILLING..tbFundAccount (AccountNum, HospNum, CompanyID, SeqNum, "
               "AllocatedFund, FundBalance) VALUES ('%1', '%2', 'VEL', %3, %4, %4)"_s
                   .arg(account, HospNum)
                   .arg(k)
                   .arg(balances[k - 1]));
            Do(u"INSERT INTO BILLING..tbFundCostCenter (AccountNum, RevenueID) VALUES "
               "('%1', 'CY'), ('%1', 'MD')"_s.arg(account));
        }
        Do(u"INSERT INTO BILLING..tbVisitAccount (IdNum, HospNum, CompanyID, FundAccountNum) "
           "VALUES ('%1', '%2', 'VEL', 'T-1')"_s.arg(IdNum, HospNum));
    }

    QString FundBalances() const {
        return Ask(
            u"SELECT FundBalance FROM BILLING..tbFundAccount WHERE HospNum = '%1' "
            "ORDER BY SeqNum"_s.arg(HospNum));
    }

    /// Everything that a slip writes, of all patients: equal before and after means untouched.
    static QString State() {
        return Ask(
            u"SELECT (SELECT ChargeSlip FROM CLINICAL_AREA..tbCAPDSlip), "
            "(SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDRequest), "
            "(SELECT SUM(Amount) FROM BILLING..tbBill), "
            "(SELECT COUNT(*) FROM BILLING..tbDoctorCharge), "
            "(SELECT SUM(Amount) FROM BILLING..tbDoctorCharge), "
            "(SELECT COUNT(*) FROM BILLING..tbStockCard), "
            "(SELECT SUM(OnHand) FROM BILLING..tbDrugStock), "
            "(SELECT COUNT(*) FROM BILLING..tbCompanyPayment), "
            "(SELECT COUNT(CancelledAt) FROM BILLING..tbCompanyPayment), "
            "(SELECT SUM(FundBalance) FROM BILLING..tbFundAccount), "
            "(SELECT SUM(PaidAmount) FROM BILLING..tbVisitAccount), "
            "(SELECT COUNT(*) FROM BILLING..tbCashAssessment), "
            "(SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDChargeSlip)"_s);
    }

    QString IdNum;
    QString HospNum;
};
