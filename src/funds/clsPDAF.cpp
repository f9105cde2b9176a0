#include "funds/clsPDAF.h"

#include "base/Numbers.h"
#include "db/CommandText.h"
#include "session/modGlobals.h"

namespace {

QString AllocationCommand(const QString& hospNum, const QString& revenueID) {
    return db::Call(QStringLiteral("BILLING..sp_PDAF_GetAllocation"), {hospNum, revenueID});
}

QString RegisteredAccountCommand(const QString& hospNum, const QString& idNum,
                                 const QString& deptID) {
    return db::Call(QStringLiteral("BILLING..sp_PDAF_GetAllocation_RegAccount"),
                    {hospNum, idNum, deptID});
}

QString UpdateRegistrationCommand(const QString& hospNum, const QString& idNum) {
    return db::Call(QStringLiteral("BILLING..SP_PDAF_UpdateOPDRegistration"), {hospNum, idNum});
}

QString BalanceCommand(const QString& hospNum, const QString& deptID) {
    return db::Call(QStringLiteral("BILLING..sp_PDAF_GetBalance"), {hospNum, deptID});
}

QString RemainingBillCommand(const QString& idNum, const QString& deptID) {
    return db::Call(QStringLiteral("BILLING..sp_PDAF_GetRemBill"), {idNum, deptID});
}

/// The commands about one line end with its item, behind a blank.
QString OfItem(const QString& call, const QString& itemID) {
    return call + QStringLiteral(", ") + db::Quoted(itemID);
}

}  // namespace

bool clsPDAF::With_Fund() {
    LoadAllocations();
    return m_hasFund;
}

void clsPDAF::LoadAllocations() {
    m_slots.fill({});
    m_hasFund = false;
    Open(AllocationCommand(m_hospNum, m_revenueID));
    for (int k = 1; !m_recordset->Eof() && k <= kSlots; ++k, m_recordset->MoveNext()) {
        m_hasFund = true;
        m_slots[size_t(k)] = {m_recordset->Fields(QStringLiteral("AccountNum")).Text(),
                              m_recordset->Fields(QStringLiteral("FundBalance")).Number(),
                              m_recordset->Fields(QStringLiteral("CompanyID")).Text(),
                              m_recordset->Fields(QStringLiteral("SeqNum")).Text()};
    }
    Close();
}

bool clsPDAF::CheckRegisteredAccount() {
    Slot& first = m_slots[1];
    Open(RegisteredAccountCommand(m_hospNum, m_idNum, m_deptID));
    if (m_recordset->Eof()) {
        m_excess = m_itemAmount;
        first.FundBalance = 0;
        m_currentSeqNum.clear();
        Close();
        return false;
    }
    const double balance = m_recordset->Fields(QStringLiteral("FundBalance")).Number();
    Close();
    m_currentSeqNum = first.SeqNum;
    if (balance > m_itemAmount)
        return true;
    m_excess = m_itemAmount - balance;
    first.FundBalance = balance;
    return false;
}

void clsPDAF::Save_PDAF() {
    const Slot& first = m_slots[1];
    if (CheckRegisteredAccount()) {
        InsertPDAF(first.AccountNum, first.CompanyID, m_itemAmount);
        return;
    }
    InsertPDAF(first.AccountNum, first.CompanyID, first.FundBalance);
    double remaining = m_excess;
    if (remaining <= 0)
        return;
    for (size_t k = 2; k <= kSlots; ++k) {
        const Slot& slot = m_slots[k];
        if (slot.AccountNum.trimmed().isEmpty())
            break;
        m_currentSeqNum = slot.SeqNum;
        if (remaining <= slot.FundBalance) {
            InsertPDAF(slot.AccountNum, slot.CompanyID, remaining);
            remaining = 0;
        } else {
            InsertPDAF(slot.AccountNum, slot.CompanyID, slot.FundBalance);
            remaining -= slot.FundBalance;
        }
    }
}

void clsPDAF::InsertPDAF(const QString& accountNum, const QString& /*companyID*/, double amount) {
    if (amount <= 0)
        return;
    Execute(OfItem(db::Call(QStringLiteral("BILLING..sp_PARS_SaveCompanyPayment"),
                            {m_idNum, m_hospNum, accountNum, base::PlainText(amount), m_refNum,
                             m_drCr, m_revenueID, m_currentSeqNum, m_userID}),
                   m_itemID));
    Execute(UpdateRegistrationCommand(m_hospNum, m_idNum));
}

void clsPDAF::Show_Balance() {
    Open(BalanceCommand(m_hospNum, m_deptID));
    if (!m_recordset->Eof()) {
        m_fundBalance = m_recordset->Fields(QStringLiteral("FundBalance")).Number();
        m_fundUtilized = m_recordset->Fields(QStringLiteral("UtilizedFund")).Number();
        m_totalFund = m_recordset->Fields(QStringLiteral("AllocatedFund")).Number();
    }
    Close();
}

void clsPDAF::Show_FundBalance() {
    Show_Balance();
    Open(RemainingBillCommand(m_idNum, m_deptID));
    if (!m_recordset->Eof()) {
        m_netBill = m_recordset->Fields(QStringLiteral("Amount")).Number();
        m_hospBill = m_recordset->Fields(QStringLiteral("HospBill")).Number();
    }
    Close();
}

void clsPDAF::With_SavedPayment() {
    Open(OfItem(db::Call(QStringLiteral("BILLING..sp_PDAF_GetSavedPayment"),
                         {m_idNum, m_refNum, m_revenueID}),
                m_itemID),
         false);
    if (!m_recordset->Eof()) {
        m_currentSeqNum = m_recordset->Fields(QStringLiteral("RequestNum")).Text();
        const QString companyID = m_recordset->Fields(QStringLiteral("CompanyID")).Text();
        Execute(OfItem(db::Call(QStringLiteral("BILLING..sp_PARS_CancelCompanyPayment"),
                                {m_idNum, m_hospNum, companyID, base::PlainText(m_itemAmount),
                                 m_refNum, m_drCr, m_revenueID, m_currentSeqNum, m_userID}),
                       m_itemID));
    }
    Close();
}

void clsPDAF::Open(const QString& command, bool clientSide) {
    if (!m_recordset)
        m_recordset = std::make_unique<db::Recordset>();
    if (m_recordset->State() > 0)
        m_recordset->Close();
    if (clientSide)
        m_recordset->SetCursorLocation(3);
    m_recordset->Open(command, modGlobals::gConnection, 2, 1, -1);
}

void clsPDAF::Close() {
    m_recordset->Close();
    m_recordset.reset();
}

void clsPDAF::Execute(const QString& command) {
    int recordsAffected = 0;
    modGlobals::gConnection->Execute(command, &recordsAffected, -1);
}
