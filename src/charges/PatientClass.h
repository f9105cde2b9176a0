#pragma once

#include <QString>

class clsComputeDiscount;

/// How the charge sheet names the patient's class and discount.
struct PatientClass {
    QString ClassWord;      ///< "Pay" or "Service"; empty for a visit of no class
    QString ClassLabel;     ///< "Pay Patient", "Class: C2 Service Patient", or empty
    QString DiscountLabel;  ///< the discount's name, for a service patient with the class behind it
};

/// Asks the server for the class of the visit that `discount` was set to before; `idNum` is the
/// same number. All three are empty when the visit has no class. Throws base::DatabaseError.
PatientClass PatientClassLabels(clsComputeDiscount& discount, const QString& idNum);
