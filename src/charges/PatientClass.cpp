#include "charges/PatientClass.h"

#include "charges/clsComputeDiscount.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"

namespace {

QString ClassOf(const QString& idNum) {
    db::Recordset found;
    found.SetCursorLocation(3);
    found.Open(db::Call(QStringLiteral("RADIOLOGY..spRadio_CheckPatientClass"), {idNum}),
               modGlobals::gCurrentUser->SQLConnection(), 2, 1, -1);
    return found.Eof() ? QString() : found.Fields(QStringLiteral("PatientClass")).Text();
}

}  // namespace

PatientClass PatientClassLabels(clsComputeDiscount& discount, const QString& idNum) {
    const QString patientClass = ClassOf(idNum);
    if (patientClass == u"P")
        return {QStringLiteral("Pay"), QStringLiteral("Pay Patient"), discount.DiscountName()};
    if (patientClass != u"S")
        return {};
    discount.getMSSClassification();
    const QString& classification = discount.MSSClassification();
    const QString classText =
        classification.isEmpty() ? QString() : QStringLiteral("Class: ") + classification;
    return {QStringLiteral("Service"), classText + QStringLiteral(" Service Patient"),
            discount.DiscountName() + u' ' + classText};
}
