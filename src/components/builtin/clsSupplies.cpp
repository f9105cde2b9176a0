#include "components/builtin/clsSupplies.h"

#include <QStringList>

#include "components/builtin/frmPickList.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

namespace components {

namespace {

const QString kCatalogueCheck = QStringLiteral("STATION..sp_Catalogue_Check");
const QString kFind = QStringLiteral("BILLING..sp_Drug_Find");
const QString kSearch = QStringLiteral("BILLING..sp_Drug_Search");
const QString kAppend = QStringLiteral("BILLING..sp_StockCard_Append");

bool CanReadCatalogue(const std::shared_ptr<db::Connection>& connection) {
    return connection && !connection->Execute(kCatalogueCheck)->Eof();
}

const QString kMedicines = QStringLiteral("M");
const QString kSupplies = QStringLiteral("S");
const QString kEverything;

PickListSetup CatalogueList(const QString& title, const QString& kind, const QString& location) {
    return {.Title = title,
            .Heading = {},
            .Columns =
                {{QStringLiteral("Code"), 1100, QStringLiteral("DrugCode")},
                 {QStringLiteral("Description"), 4400, QStringLiteral("DrugName")},
                 {QStringLiteral("Unit"), 900, QStringLiteral("Unit")},
                 {QStringLiteral("Price In"), 1200, QStringLiteral("SellingPriceIn"), {}, true},
                 {QStringLiteral("Price Out"), 1200, QStringLiteral("SellingPriceOut"), {}, true},
                 {QStringLiteral("On Hand"), 1200, QStringLiteral("OnHand")},
                 {QStringLiteral("Status"), 1000, QStringLiteral("Status")}},
            .CodeField = QStringLiteral("DrugCode"),
            .Command =
                [kind, location](const QString& text) {
                    return db::Call(kSearch, {text, kind, location});
                },
            .Looks = {{QStringLiteral("OnHand"), PickListLook::Stock},
                      {QStringLiteral("Status"), PickListLook::Inactive}}};
}

}  // namespace

bool clsListDrugs::InitConnection(const std::shared_ptr<db::Connection>& connection) {
    m_connection = connection;
    return CanReadCatalogue(connection);
}

QString clsListDrugs::ShowList(const QString& text, bool wholeLocation, const QString& location) {
    const bool isWholeLocation = wholeLocation && !location.trimmed().isEmpty();
    const QString kind = m_drugs ? kMedicines : isWholeLocation ? kEverything : kSupplies;
    const PickListSetup list = CatalogueList(m_title, kind, location.trimmed());
    const QString wanted = text.trimmed();
    if (wanted.isEmpty())
        return frmPickList(list, m_connection).Pick({});
    const auto found = db::ConnectionRef(m_connection).Get().Execute(list.Command(wanted));
    if (found->RecordCount() == 1)
        return found->Fields(list.CodeField).Text();
    return frmPickList(list, m_connection).Pick(wanted, found->Rows());
}

bool clsDrug::InitConnect(const std::shared_ptr<db::Connection>& connection) {
    m_connection = connection;
    return CanReadCatalogue(connection);
}

// The record of another item must not price a line: it is empty unless this item is found.
bool clsDrug::SearchDrug(const QString& code, const QString& location) {
    m_drug = {};
    db::Recordset row;
    row.Open(db::Call(kFind, {code, location}), m_connection);
    if (row.Eof())
        return false;
    m_drug = {.DrugCode = row.Fields(QStringLiteral("DrugCode")).Text(),
              .DrugName = row.Fields(QStringLiteral("DrugName")).Text(),
              .Status = row.Fields(QStringLiteral("Status")).Number() != 0,
              .IsMedicine = row.Fields(QStringLiteral("Kind")).Text() == kMedicines,
              .SellingPriceIn = row.Fields(QStringLiteral("SellingPriceIn")).Number(),
              .SellingPriceOut = row.Fields(QStringLiteral("SellingPriceOut")).Number(),
              .OnHand = row.Fields(QStringLiteral("OnHand")).Number()};
    return true;
}

void clsDrug::AppendStockCard(const StockCardEntry& entry) {
    QStringList arguments;
    for (const db::Value& value : entry)
        arguments << (value.IsNull() ? QStringLiteral("NULL") : db::Quoted(value.Text()));
    db::ConnectionRef(m_connection)
        .Get()
        .Execute(kAppend + QLatin1Char(' ') + arguments.join(QLatin1Char(',')));
}

}  // namespace components
