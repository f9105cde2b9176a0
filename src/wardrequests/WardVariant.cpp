#include "wardrequests/WardVariant.h"

#include "session/modGlobals.h"

using components::DrugRecord;

const WardVariant& PharmacyRequests() {
    static const WardVariant variant{
        .WindowName = QStringLiteral("frmPHEntry"),
        .Caption = QStringLiteral("Pharmacy Request Entry"),
        .Department = QStringLiteral("PH"),
        .Location = {},
        .ListTitle = QStringLiteral("List of Medicines"),
        .ListsMedicines = true,
        .List = modGlobals::gSupplyList2,
        .DuplicateMessage = QStringLiteral("Can't Request the Same Medicine!"),
        .LooksUpFrequency = true,
        .UsualFrequency = {},
        .PriceColumn = WardColumn::MedicinePrice,
        .TypedPrice = &DrugRecord::SellingPriceIn,
        .PickedPrice = &DrugRecord::SellingPriceOut,
        .ErrorMessage = QStringLiteral("Error While Selecting Medicine  "),
        .ClosesOnError = false};
    return variant;
}

const WardVariant& SupplyRequests() {
    static const WardVariant variant{
        .WindowName = QStringLiteral("frmCSREntry"),
        .Caption = QStringLiteral("Central Supply Request Entry"),
        .Department = QStringLiteral("CS"),
        .Location = QStringLiteral("21"),
        .ListTitle = QStringLiteral("List of Supplies"),
        .ListsMedicines = false,
        .List = modGlobals::gSupplyList,
        .DuplicateMessage = QStringLiteral("Can't Request the Same Supply!"),
        .LooksUpFrequency = false,
        .UsualFrequency = QStringLiteral("PRN"),
        .PriceColumn = WardColumn::SupplyPrice,
        .TypedPrice = &DrugRecord::SellingPriceIn,
        .PickedPrice = &DrugRecord::SellingPriceIn,
        .ErrorMessage = QStringLiteral("Error While Selecting Supply  "),
        .ClosesOnError = true};
    return variant;
}
