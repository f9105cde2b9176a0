#include "components/builtin/clsConfinements.h"

#include "db/CommandText.h"
#include "db/Recordset.h"

namespace components {

namespace {

const QString kPeriod = QStringLiteral("PATIENT_DATA..sp_Confinement_Period");
const QString kResults = QStringLiteral("PATIENT_DATA..sp_Confinement_Results");

}  // namespace

std::shared_ptr<db::Recordset> clsConfinement::GetConfinementPeriod(
    const db::ConnectionRef& connection, const QString& hospNum, const QString& admissionDate) {
    Q_UNUSED(admissionDate);
    return connection.Get().Execute(db::Call(kPeriod, {hospNum}));
}

std::shared_ptr<db::Recordset> clsConfinementResults::GetConfinementResults(
    const db::ConnectionRef& connection, const QString& idNum, const QString& type) {
    return connection.Get().Execute(db::Call(kResults, {idNum, type}));
}

}  // namespace components
