#include "charges/clsComputeDiscount.h"

#include <utility>

#include "base/Numbers.h"
#include "db/CommandText.h"
#include "session/modGlobals.h"

namespace {

QString HospNumCommand(const QString& idNum) {
    const QString number = idNum.trimmed();
    const QString table =
        base::IsNumeric(number) ? QStringLiteral("tbPatient") : QStringLiteral("tbOutPatient");
    return QStringLiteral("SELECT Hospnum from Patient_Data..%1 WHERE IdNum = ").arg(table) +
           db::Quoted(number);
}

QString DiscountTypeCommand(const QString& hospNum, const QString& idNum) {
    return db::Call(QStringLiteral("RADIOLOGY..spRadio_GetDiscountType"), {hospNum, idNum});
}

QString ClassificationCommand(const QString& hospNum) {
    return QStringLiteral("SELECT MSSClassification FROM PATIENT_DATA..tbMaster WHERE HospNum = ") +
           db::Quoted(hospNum.trimmed());
}

QString DiscountCommand(const QString& revenueID, const QString& itemCode,
                        const QString& discountType, const QString& classification,
                        short withMarkUp) {
    return db::Call(QStringLiteral("RADIOLOGY..spRadio_GetDiscount"),
                    {revenueID, itemCode, discountType, classification}) +
           QStringLiteral(", '%1'").arg(withMarkUp);
}

const std::pair<QString, QString> kNames[] = {
    {QStringLiteral("SM"), QStringLiteral("Senior Citizen")},
    {QStringLiteral("QF"), QStringLiteral("Med.Social Service Discount")},
    {QStringLiteral("GE"), QStringLiteral("Gov`t Employees Discount")},
    {QStringLiteral("GD"), QStringLiteral("Gov`t Employees Dependent Discount")},
    {QStringLiteral("KE"), QStringLiteral("Velmora Employees Discount")},
    {QStringLiteral("KD"), QStringLiteral("Velmora Employees Dependent Discount")}};

}  // namespace

clsComputeDiscount& clsComputeDiscount::Shared() {
    static clsComputeDiscount shared;
    return shared;
}

void clsComputeDiscount::SetIdNum(const QString& idNum) {
    if (idNum != m_idNum) {
        m_discountType.clear();
        m_classification.clear();
    }
    m_idNum = idNum;
}

double clsComputeDiscount::NetAmount() {
    return AskFor(QStringLiteral("NetAmount"), m_fullPrice);
}

double clsComputeDiscount::DiscountAmount() {
    return AskFor(QStringLiteral("Discount"), 0);
}

double clsComputeDiscount::ItemPrice() {
    return AskFor(QStringLiteral("Price"), 0);
}

double clsComputeDiscount::AskFor(const QString& field, double withoutRow) {
    getDiscountType();
    getMSSClassification();
    Open(DiscountCommand(m_revenueID, m_itemCode, m_discountType, m_classification, m_withMarkUp));
    const double amount = m_recordset.Eof() ? withoutRow : m_recordset.Fields(field).Number();
    m_recordset.Close();
    return amount;
}

void clsComputeDiscount::getDiscountType() {
    Open(DiscountTypeCommand(FindHospNum(m_idNum), m_idNum));
    if (!m_recordset.Eof())
        m_discountType = m_recordset.Fields(QStringLiteral("DiscType")).Text();
    m_recordset.Close();
}

void clsComputeDiscount::getMSSClassification() {
    Open(ClassificationCommand(FindHospNum(m_idNum)));
    if (!m_recordset.Eof())
        m_classification = m_recordset.Fields(QStringLiteral("MSSClassification")).Text();
    m_recordset.Close();
}

QString clsComputeDiscount::DiscountName() {
    getDiscountType();
    for (const auto& [type, name] : kNames) {
        if (type == m_discountType)
            return name;
    }
    return {};
}

QString clsComputeDiscount::FindHospNum(const QString& idNum) {
    Open(HospNumCommand(idNum));
    const QString hospNum =
        m_recordset.Eof() ? QString() : m_recordset.Fields(QStringLiteral("HospNum")).Text();
    m_recordset.Close();
    return hospNum;
}

void clsComputeDiscount::Open(const QString& command) {
    if (m_recordset.State() > 0)
        m_recordset.Close();
    m_recordset.SetCursorLocation(3);
    m_recordset.Open(command, modGlobals::gCurrentUser->SQLConnection(), 2, 1, -1);
}
