#include "charges/ChargeRules.h"

namespace {

// The headers that both sheets share; the column behind "LocationID" has none.
QStringList SharedHeaders() {
    return {QString(),
            QStringLiteral("Dept."),
            QStringLiteral("Code"),
            QStringLiteral("Examimantion Description"),
            QStringLiteral("Type"),
            QStringLiteral("Price"),
            QStringLiteral("Quantity"),
            QStringLiteral("Amount"),
            QStringLiteral("WithItems"),
            QStringLiteral("LocationID"),
            QString(),
            QStringLiteral("InventoryCode")};
}

}  // namespace

const ChargeRules& RequestRules() {
    static const ChargeRules rules{
        SharedHeaders() << QStringLiteral("NetAmount") << QStringLiteral("Discount"), true};
    return rules;
}

const ChargeRules& AssessmentRules() {
    static const ChargeRules rules{SharedHeaders(), false};
    return rules;
}
