#include "components/builtin/clsResults.h"

#include "db/CommandText.h"

namespace components {

namespace {

const QString kXray = QStringLiteral("STATION..Nurse_GetXray");
const QString kUltrasound = QStringLiteral("STATION..Nurse_GetUltra");
const QString kCtScan = QStringLiteral("STATION..Nurse_GetCT");

QString CommandFor(const QString& idNum, const QString& type) {
    if (type == u"1")
        return db::Call(kXray, {idNum});
    if (type == u"2")
        return db::Call(kUltrasound, {idNum});
    if (type == u"3")
        return db::Call(kCtScan, {idNum});
    return {};
}

}  // namespace

std::shared_ptr<db::Recordset> clsResults::GetResults(const db::ConnectionRef& connection,
                                                      const QString& idNum, const QString& type) {
    return m_results.Open(CommandFor(idNum, type), connection);
}

}  // namespace components
