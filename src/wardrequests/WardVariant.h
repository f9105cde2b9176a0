#pragma once

#include <QString>
#include <memory>

#include "components/SupplyInfo.h"
#include "components/SupplyList.h"

/// The columns of a sheet of ward requests.
namespace WardColumn {
enum Column {
    Number,
    Code,
    Description,
    Frequency,
    Quantity,
    Amount,
    Remarks,
    SupplyPrice,
    MedicinePrice,
    Count
};
}  // namespace WardColumn

/// In what the two request windows differ; everything else is the same in both.
struct WardVariant {
    QString WindowName;
    QString Caption;
    QString Department;  ///< as the log book and the checks name it
    QString Location;    ///< the stock location searched, empty for all of them
    QString ListTitle;
    bool ListsMedicines;
    std::shared_ptr<components::SupplyList>& List;
    QString DuplicateMessage;
    bool LooksUpFrequency;   ///< in the list of dosages; else it is stored as typed
    QString UsualFrequency;  ///< stored where nothing was typed and nothing is looked up
    WardColumn::Column PriceColumn;
    double components::DrugRecord::*TypedPrice;   ///< of an item whose code was typed
    double components::DrugRecord::*PickedPrice;  ///< of one chosen from the list
    QString ErrorMessage;                         ///< of what nobody expects from a key
    bool ClosesOnError;
};

const WardVariant& PharmacyRequests();
const WardVariant& SupplyRequests();
