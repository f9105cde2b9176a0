#include "funds/modCDF.h"

#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"

namespace modCDF {

bool CheckCompany(const QString& idNum) {
    db::Recordset found;
    found.SetCursorLocation(3);
    found.Open(db::Call(QStringLiteral("Billing..sp_Pars_CheckCompany"), {idNum}),
               modGlobals::gCurrentUser->SQLConnection(), 2, 1, -1);
    return !found.Eof();
}

}  // namespace modCDF
