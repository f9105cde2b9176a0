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
    /// True lists medicines, false supplies.
    virtual void SetDrugsORCSR(bool drugs);
    /// The code of the one item that the text names; any other text shows the list narrowed by it
    /// and gives the chosen code, empty when nothing was chosen. With `wholeLocation` the list of
    /// supplies offers all that the stock location keeps: a charge may be for a medicine, too.
    virtual QString ShowList(const QString& text, bool wholeLocation, const QString& location = {});
};

}  // namespace components
