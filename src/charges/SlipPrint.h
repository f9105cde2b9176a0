#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "charges/ChargeSlip.h"

/// One printed line of a slip.
struct PrintLine {
    QString ItemCode;
    QString Description;
    double Quantity = 1;
    double Price = 0;
    double Amount = 0;
    QString RevenueID;
    QString EmployeeCode;  ///< who charged it
    double Discount = 0;
    double NetAmount = 0;
};

/// The saved lines as the slip prints them: an empty quantity is 1, charged by the current user.
/// A sheet without discounts prints its amounts as net amounts.
std::vector<PrintLine> PrintLines(const std::vector<SlipLine>& lines, bool withDiscount);

/// What the first print of a slip said of its making, and what has become of the slip since.
struct FirstPrint {
    QString Doctor;  ///< who asked
    QString Clerk;
    QString EmployeeCode;
    QString Date;  ///< "M/d/yyyy"
    QString
        State;  ///< "PARTLY REVOKED", of an assessment "REVOKED" or "OR" and the receipt; or empty
};

/// Of a saved slip, a patient's or a walk-in's. Throws base::DatabaseError.
FirstPrint FirstPrintOf(const QString& slipNumber);

/// What a slip says around its lines.
struct SlipTexts {
    QString SlipNumber;
    QString PatientName;  ///< see SlipPatientName()
    QString Company;
    QString IdNum;
    QString HospNum;
    QString Doctor;
    QString Age;
    QString Sex;
    QString PatientClass;
    /// How the staging is emptied.
    QString Clear = QStringLiteral("DELETE CLINICAL_AREA..tbCAPDChargeSlip");
    /// Of a slip that is printed again: who charged it and when, instead of the user and today.
    std::optional<FirstPrint> Reprint;
};

/// "LAST, First Middle".
QString SlipPatientName(const QString& last, const QString& first, const QString& middle);

/// Prints one slip: its lines are staged and its report is read in one transaction, so that two
/// stations that print at once never show each other's lines.
class SlipPrint final {
public:
    /// ByCompany: what the funds paid stands on the slip.
    enum class Layout { Plain, ByCompany };

    /// Opens the slip's report into gReport: what is shown later is what stands now. Throws
    /// base::DatabaseError, and base::RuntimeError for a missing report file.
    static void Open(Layout layout, const SlipTexts& texts, const std::vector<PrintLine>& lines);
    /// Shows the slip last opened, until it is closed.
    static void Show();
};
