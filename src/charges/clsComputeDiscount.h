#pragma once

#include <QString>

#include "db/Recordset.h"

/// What a patient is granted on one unit of an item: gathers the visit's discount type and the
/// patient's social service classification and asks the server, which holds the rates. Nothing is
/// remembered between two questions, so that a classification given a minute ago counts. Every
/// member that asks throws base::DatabaseError.
class clsComputeDiscount final {
public:
    clsComputeDiscount() = default;
    clsComputeDiscount(const clsComputeDiscount&) = delete;
    clsComputeDiscount& operator=(const clsComputeDiscount&) = delete;

    /// The program's one instance, made at first use.
    static clsComputeDiscount& Shared();

    /// The admission or visit to be charged. Another one than before forgets the discount type and
    /// the classification of the patient before.
    void SetIdNum(const QString& idNum);
    /// Of the charge line: its revenue code, item and mark-up (the charge sheets send 0).
    void SetRevenueID(const QString& revenueID) { m_revenueID = revenueID; }
    void SetItemCode(const QString& itemCode) { m_itemCode = itemCode; }
    void SetWithMarkUp(short withMarkUp) { m_withMarkUp = withMarkUp; }
    /// The price that the line carries; set with the item. It is the net amount of an item for
    /// which the server has no price.
    void SetFullPrice(double price) { m_fullPrice = price; }

    /// As last asked for; empty when there is none, for an unknown visit too.
    const QString& DiscountType() const { return m_discountType; }
    const QString& MSSClassification() const { return m_classification; }

    /// Hospital money for one unit, asked of the server with five commands at every call. For an
    /// item without a price: the full price, no discount and the price 0.
    double NetAmount();
    double DiscountAmount();
    double ItemPrice();

    void getDiscountType();
    void getMSSClassification();
    /// The shown name of the visit's discount type, asked anew; empty for none.
    QString DiscountName();

private:
    QString FindHospNum(const QString& idNum);
    void Open(const QString& command);
    double AskFor(const QString& field, double withoutRow);

    db::Recordset m_recordset;
    QString m_idNum;
    QString m_revenueID;
    QString m_itemCode;
    short m_withMarkUp = 0;
    double m_fullPrice = 0;
    QString m_discountType;
    QString m_classification;
};
