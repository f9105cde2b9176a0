#pragma once

#include "components/SupplyInfo.h"
#include "components/SupplyList.h"

namespace components {

/// The catalogue's pick list over the session's connection. Codes are numbers: a text of digits is
/// a code, any other the beginning of a name, whatever the caller says it is.
class clsListDrugs final : public SupplyList {
public:
    bool InitConnection(const std::shared_ptr<db::Connection>& connection) override;
    void SetListTitle(const QString& title) override { m_title = title; }
    void SetDrugsORCSR(bool drugs) override { m_drugs = drugs; }
    QString ShowList(const QString& text, bool wholeLocation,
                     const QString& location = {}) override;

private:
    std::shared_ptr<db::Connection> m_connection;
    QString m_title;
    bool m_drugs = false;
};

/// One catalogue record and the stock card, over the session's connection.
class clsDrug final : public SupplyInfo {
public:
    bool InitConnect(const std::shared_ptr<db::Connection>& connection) override;
    bool SearchDrug(const QString& code, const QString& location = {}) override;
    const DrugRecord& Drug() const override { return m_drug; }
    void AppendStockCard(const StockCardEntry& entry) override;

private:
    std::shared_ptr<db::Connection> m_connection;
    DrugRecord m_drug;
};

}  // namespace components
