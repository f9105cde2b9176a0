#include "charges/CashSlip.h"

#include "db/CommandText.h"
#include "session/modGlobals.h"

namespace {

const QString kDoctorsFees = QStringLiteral("MD");
const QString kNotPaid = QStringLiteral("N");

}  // namespace

void CashSlip::WriteLine(const SlipLine& line) {
    if (line.RevenueID.isEmpty())
        return;
    if (line.RevenueID == kDoctorsFees) {
        ChargeDoctor(line);
        SaveRequest(line);
        return;
    }
    modGlobals::gConnection->Execute(
        db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_SaveAssessment"),
                 {m_patientName, line.RevenueID, line.ItemCode, line.Quantity, line.Amount,
                  modGlobals::gCurrentUser->EmployeeCode(), SlipNumber(), Head().IdNum, kNotPaid,
                  Head().DoctorID, Head().HospNum, Head().Doctor}));
}
