#pragma once

#include "tour/DayPart.h"

/// The part of the day in which charge slips are saved, printed, printed again and revoked; begins
/// and ends with the main window and its patient list.
class SlipsDay final : public DayPart {
public:
    using DayPart::DayPart;
    void Walk();

private:
    void ChargePayPatient();
    void ChargeServicePatient();
    void ChargeSponsoredPatient();
    void MeetEmptyFund();
    void RevokeDoctorsFee();

    /// Finds the first visit of which the condition (on visit v and patient m) holds, and opens its
    /// hub and sheet.
    void OpenSheetOf(const QString& who, const QString& condition);
    void NameDoctor();
    static void TypeSupply(const QString& item, const QString& quantity);
    static void TypeFee(const QString& revenueCode, const QString& item,
                        const QString& amount = {});
    void SaveAndPrint(const QString& who, bool sponsored);
    /// The slip on screen is pictured, saved as PDF and closed.
    void ReadSlip(const QString& name, const QString& file);
    /// The hospital holds these lines (revenue code, item, quantity, amount) of the last slip, and
    /// of them in all: bills, supplies, their quantity, doctors' fees, shares of sponsors.
    void ExpectSlip(const QString& lines, const QString& totals);
    void ExpectOneLine();
    void LeaveHub();

    QString m_slip;       ///< what the slip last read says
    QString m_firstSlip;  ///< what its first print said
};
