#pragma once

#include "components/SupplyInfo.h"
#include "components/SupplyList.h"

namespace components {

/// The catalogue's pick list over the session's connection.
class clsListDrugs final : public SupplyList {
public:
    bool InitConnection(const std::shared_ptr<db::Connection>& connection) override;

private:
    std::shared_ptr<db::Connection> m_connection;
};

/// One catalogue record and the stock card, over the session's connection.
class clsDrug final : public SupplyInfo {
public:
    bool InitConnect(const std::shared_ptr<db::Connection>& connection) override;

private:
    std::shared_ptr<db::Connection> m_connection;
};

}  // namespace components
