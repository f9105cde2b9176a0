#pragma once

#include <memory>

#include "components/Component.h"
#include "db/Connection.h"

namespace components {

/// The patient and stay that the listing found last; all text, null as empty.
struct ListedPatient {
    QString IDNumber;
    QString HospitalNumber;
    QString LastName;
    QString FirstName;
    QString MiddleName;
    QString Age;
    QString Sex;
    QString AccountNum;
    QString Company;
    QString BillingDate;  ///< empty while the account is open; out-patients only
    QString roomid;       ///< in-patients only
    QString RoomClassID;  ///< in-patients only
};

/// `PatientLister.clsRadioSearch`: one patient by the number of a stay or visit.
class PatientLister : public Component {
public:
    static constexpr int kOutpatients = 204;
    static constexpr int kInpatients = 205;

    virtual void Initialize_Classes() = 0;
    virtual void SetInitConnection(const std::shared_ptr<db::Connection>& connection) = 0;
    virtual void SetHospital(const QString& name) = 0;
    virtual void SetRevenueID(const QString& revenueId) = 0;
    /// Looks a number up among in-patients (205, fills Inpatient) or out-patients (204, fills
    /// Outpatient). An empty number shows the pick list and receives the picked number. False when
    /// the number is unknown or nothing was picked; the records are then as they were.
    virtual bool PatientListing(QString& idNumber, int listingCode, bool flag) = 0;
    virtual const ListedPatient& Inpatient() const = 0;
    virtual const ListedPatient& Outpatient() const = 0;
};

}  // namespace components
