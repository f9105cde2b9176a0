#include "components/builtin/clsRequest.h"

#include "db/CommandText.h"

namespace components {

namespace {

const QString kCheckRequest = QStringLiteral("Nurse_CheckRequest");
const QString kCheckStatus = QStringLiteral("Nurse_CheckStatus");
const QString kVitalSigns = QStringLiteral("Nurse_VitalSigns");

QString CommandFor(const QString& idNum, const QString& type) {
    if (type == u"1")
        return db::Call(kCheckRequest, {idNum, QStringLiteral("X")});
    // A request that no one has processed carries a blank, which is not the empty text.
    if (type == u"2")
        return db::Call(kCheckRequest, {idNum, QStringLiteral(" ")});
    if (type == u"3")
        return db::Call(kCheckStatus, {idNum, QStringLiteral("W")});
    if (type == u"4")
        return db::Call(kVitalSigns, {idNum});
    return {};
}

}  // namespace

std::shared_ptr<db::Recordset> clsRequest::GetRequests(const db::ConnectionRef& connection,
                                                       const QString& idNum, const QString& type) {
    return m_requests.Open(CommandFor(idNum, type), connection);
}

}  // namespace components
