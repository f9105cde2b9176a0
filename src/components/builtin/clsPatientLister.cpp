#include "components/builtin/clsPatientLister.h"

#include "components/builtin/frmPickList.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

namespace components {

namespace {

const QString kFindOutpatient = QStringLiteral("PATIENT_DATA..sp_Listing_Outpatient");
const QString kFindInpatient = QStringLiteral("PATIENT_DATA..sp_Listing_Inpatient");
const QString kSearch = QStringLiteral("PATIENT_DATA..sp_Listing_Search");

ListedPatient ReadPatient(db::Recordset& row) {
    const auto text = [&row](const char* column) {
        return row.Fields(QLatin1String(column)).Text();
    };
    return {.IDNumber = text("IDNumber"),
            .HospitalNumber = text("HospitalNumber"),
            .LastName = text("LastName"),
            .FirstName = text("FirstName"),
            .MiddleName = text("MiddleName"),
            .Age = text("Age"),
            .Sex = text("Sex"),
            .AccountNum = text("AccountNum"),
            .Company = text("Company"),
            .BillingDate = text("BillingDate"),
            .roomid = text("roomid"),
            .RoomClassID = text("RoomClassID")};
}

}  // namespace

void clsPatientLister::Initialize_Classes() {
    m_inpatient = {};
    m_outpatient = {};
}

void clsPatientLister::SetInitConnection(const std::shared_ptr<db::Connection>& connection) {
    m_connection = connection;
}

void clsPatientLister::SetHospital(const QString& name) {
    m_hospital = name;
}

// The listing offers every patient of the hospital, whichever unit asks.
void clsPatientLister::SetRevenueID(const QString& revenueId) {
    Q_UNUSED(revenueId);
}

bool clsPatientLister::PatientListing(QString& idNumber, int listingCode, bool flag) {
    Q_UNUSED(flag);
    QString wanted = idNumber.trimmed();
    if (wanted.isEmpty())
        wanted = PickNumber(listingCode);
    if (wanted.isEmpty())
        return false;
    const bool inpatients = listingCode == kInpatients;
    db::Recordset found;
    found.Open(db::Call(inpatients ? kFindInpatient : kFindOutpatient, {wanted}), m_connection);
    if (found.Eof())
        return false;
    (inpatients ? m_inpatient : m_outpatient) = ReadPatient(found);
    idNumber = wanted;
    return true;
}

QString clsPatientLister::PickNumber(int listingCode) const {
    frmPickList list(
        {.Title = listingCode == kInpatients ? QStringLiteral("In-Patients")
                                             : QStringLiteral("Out-Patients"),
         .Heading = m_hospital,
         .Columns = {{QStringLiteral("Adm. No."), 1300, QStringLiteral("IDNumber")},
                     {QStringLiteral("Hosp.No."), 1300, QStringLiteral("HospitalNumber")},
                     {QStringLiteral("Last Name"), 2200, QStringLiteral("LastName")},
                     {QStringLiteral("First Name"), 2000, QStringLiteral("FirstName")},
                     {QStringLiteral("Middle Name"), 1800, QStringLiteral("MiddleName")},
                     {QStringLiteral("Adm.Date"), 2300, QStringLiteral("AdmDate")}},
         .CodeField = QStringLiteral("IDNumber"),
         .Command =
             [listingCode](const QString& text) {
                 return db::Call(kSearch, {QString::number(listingCode), text});
             }},
        m_connection);
    return list.Pick({});
}

}  // namespace components
