#pragma once

#include <QString>
#include <array>
#include <memory>

#include "db/Recordset.h"

/// The sponsors' funds of a patient: splits a charge line over the patient's fund accounts, cancels
/// what was paid of a line, reads the figures of the fund windows. Set the input properties, then
/// read With_Fund() and call Save_PDAF(), or call With_SavedPayment(), or Show_FundBalance(). A
/// property that is not set again keeps its value. Works over gConnection; every member that asks
/// or writes throws base::DatabaseError. Amounts are hospital money.
class clsPDAF final {
public:
    clsPDAF() = default;
    clsPDAF(const clsPDAF&) = delete;
    clsPDAF& operator=(const clsPDAF&) = delete;

    void SetHospNum(const QString& hospNum) { m_hospNum = hospNum; }
    void SetIdNum(const QString& idNum) { m_idNum = idNum; }
    /// The cost centre whose fund is used: "CY" for fees and supplies, "MD" for doctors' fees.
    void SetDeptID(const QString& deptID) { m_deptID = deptID; }
    /// The charge slip's number.
    void SetRefNum(const QString& refNum) { m_refNum = refNum; }
    /// Debit or credit, passed through to the payment.
    void SetDrCr(const QString& drCr) { m_drCr = drCr; }
    void SetItemID(const QString& itemID) { m_itemID = itemID; }
    /// The line's amount; negative where a payment is cancelled.
    void SetItemAmount(double amount) { m_itemAmount = amount; }
    /// Kept for the caller; nothing here reads it.
    void SetAccountNum(const QString& accountNum) { m_accountNum = accountNum; }
    /// The revenue code under which the fund is looked up and the payment booked.
    void SetRevenueID(const QString& revenueID) { m_revenueID = revenueID; }
    /// The employee code of who posts.
    void SetUserID(const QString& userID) { m_userID = userID; }

    /// Loads the patient's accounts for the revenue code, at most fifty, in the order in which they
    /// pay; true when there is one.
    bool With_Fund();
    /// Splits ItemAmount over the accounts of the last With_Fund() and writes a payment for each
    /// share above zero. The visit's registered account pays first; what no account covers stays
    /// the patient's. Shares written before a failure are undone with the caller's transaction.
    void Save_PDAF();
    /// Writes one share and updates the visit's registration; nothing for an amount of 0 or less.
    /// The payment goes by the account alone.
    void InsertPDAF(const QString& accountNum, const QString& companyID, double amount);
    /// Fills the first three of the figures below.
    void Show_Balance();
    /// Fills the figures below; those that the server has no row for stay as they were.
    void Show_FundBalance();
    double OutputFundBalance() const { return m_fundBalance; }
    double OutputFundUtilized() const { return m_fundUtilized; }
    double OutputTotalFund() const { return m_totalFund; }
    double OutputNetBill() const { return m_netBill; }
    double OutputHospBill() const { return m_hospBill; }
    /// Cancels what the funds paid of the line ItemID of the slip RefNum, by the first of its
    /// payments; the server undoes all of them. Nothing where none stands.
    void With_SavedPayment();

private:
    static constexpr int kSlots = 50;
    struct Slot {
        QString AccountNum;  ///< empty: unused
        double FundBalance = 0;
        QString CompanyID;
        QString SeqNum;
    };

    void LoadAllocations();
    /// True when the first account alone covers the line.
    bool CheckRegisteredAccount();
    void Open(const QString& command, bool clientSide = true);
    void Close();
    static void Execute(const QString& command);

    QString m_hospNum;
    QString m_idNum;
    QString m_deptID;
    QString m_refNum;
    QString m_drCr;
    QString m_itemID;
    double m_itemAmount = 0;
    QString m_accountNum;
    QString m_revenueID;
    QString m_userID;

    /// Slot k is the k-th account; slot 0 is not used.
    std::array<Slot, kSlots + 1> m_slots;
    bool m_hasFund = false;
    double m_excess = 0;
    QString m_currentSeqNum;
    double m_fundBalance = 0;
    double m_fundUtilized = 0;
    double m_totalFund = 0;
    double m_netBill = 0;
    double m_hospBill = 0;
    std::unique_ptr<db::Recordset> m_recordset;
};
