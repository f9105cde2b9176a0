#include "components/builtin/clsSupplies.h"

#include "db/Recordset.h"

namespace components {

namespace {

const QString kCatalogueCheck = QStringLiteral("STATION..sp_Catalogue_Check");

bool CanReadCatalogue(const std::shared_ptr<db::Connection>& connection) {
    return connection && !connection->Execute(kCatalogueCheck)->Eof();
}

}  // namespace

bool clsListDrugs::InitConnection(const std::shared_ptr<db::Connection>& connection) {
    m_connection = connection;
    return CanReadCatalogue(connection);
}

bool clsDrug::InitConnect(const std::shared_ptr<db::Connection>& connection) {
    m_connection = connection;
    return CanReadCatalogue(connection);
}

}  // namespace components
