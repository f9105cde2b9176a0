#pragma once

#include <memory>

#include "components/Component.h"
#include "db/Connection.h"

namespace components {

/// `DrugRoster.clsListDrugs`: the pick list of medicines and supplies.
class SupplyList : public Component {
public:
    /// False when the catalogue cannot be reached over this connection.
    virtual bool InitConnection(const std::shared_ptr<db::Connection>& connection) = 0;
    virtual void SetListTitle(const QString& title);
    /// True lists medicines, false supplies of a stock location.
    virtual void SetDrugsORCSR(bool drugs);
    /// Shows the list narrowed by the text; the chosen code, empty when nothing was chosen.
    virtual QString ShowList(const QString& text, bool byCode, const QString& location = {});
};

}  // namespace components
