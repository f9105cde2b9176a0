#include "charges/clsRevenueCode.h"

#include "db/CommandText.h"
#include "patients/frmSearch.h"
#include "session/modGlobals.h"
#include "toolkit/MsgBox.h"

namespace {

const QString kExact = QStringLiteral("1");
const QString kCount = QStringLiteral("2");

QString SearchCommand(const QString& mode, const QString& code) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_SearchRevenue"), {mode, code});
}

const QString kListTemplate = QStringLiteral("sp_CAPD_SearchRevenue '0','##'");

bool SayUnknown() {
    toolkit::MsgBox(QStringLiteral("Item does not exists."), toolkit::BoxIcon::Exclamation);
    return false;
}

}  // namespace

clsRevenueCode& clsRevenueCode::Shared() {
    static clsRevenueCode shared;
    return shared;
}

bool clsRevenueCode::ValidateRevenue(QString& code) {
    Open(kExact, code);
    if (m_recordset.RecordCount() <= 1)
        return Accept();

    Open(kCount, code);
    const double matches = m_recordset.Fields(QStringLiteral("recCount")).Number();
    m_recordset.Close();
    if (matches <= 1)
        return SayUnknown();

    const QString picked = Pick(code);
    if (picked.isEmpty())
        return false;
    Open(kExact, picked);
    if (!Accept())
        return false;
    code = picked;
    return true;
}

QString clsRevenueCode::Pick(const QString& text) {
    frmSearch& list = frmSearch::Shared();
    list.SetSearchCaption(QStringLiteral("Revenue Codes"));
    list.SetCriteria(text);
    list.SetQuery(kListTemplate);
    list.exec();
    return list.Valid() ? list.ResultCode() : QString();
}

void clsRevenueCode::Open(const QString& mode, const QString& code) {
    if (m_recordset.State() > 0)
        m_recordset.Close();
    m_recordset.SetCursorLocation(3);
    m_recordset.Open(SearchCommand(mode, code), modGlobals::gCurrentUser->SQLConnection(), 2, 1,
                     -1);
}

bool clsRevenueCode::Accept() {
    if (m_recordset.Eof()) {
        m_recordset.Close();
        return SayUnknown();
    }
    const auto text = [this](const QString& name) { return m_recordset.Fields(name).Text(); };
    // Read whole before any of it counts: a failure between leaves the code accepted before.
    Attributes attributes;
    attributes.RevenueID = text(QStringLiteral("RevenueID"));
    attributes.Revenue = text(QStringLiteral("Revenue"));
    attributes.WithItems = text(QStringLiteral("WithItems"));
    attributes.SearchInventory =
        m_recordset.Fields(QStringLiteral("SearchInventory")).Number() != 0;
    attributes.LocationID = text(QStringLiteral("LocationID"));
    attributes.InventoryCode = text(QStringLiteral("InvCode"));
    m_recordset.Close();
    m_accepted = std::move(attributes);
    return true;
}
