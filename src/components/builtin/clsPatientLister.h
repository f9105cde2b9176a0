#pragma once

#include "components/PatientLister.h"

namespace components {

/// The patient listing over the session's connection, with its own pick list.
class clsPatientLister final : public PatientLister {
public:
    void Initialize_Classes() override;
    void SetInitConnection(const std::shared_ptr<db::Connection>& connection) override;
    void SetHospital(const QString& name) override;
    void SetRevenueID(const QString& revenueId) override;
    bool PatientListing(QString& idNumber, int listingCode, bool flag) override;
    const ListedPatient& Inpatient() const override { return m_inpatient; }
    const ListedPatient& Outpatient() const override { return m_outpatient; }

private:
    QString PickNumber(int listingCode) const;

    std::shared_ptr<db::Connection> m_connection;
    QString m_hospital;
    ListedPatient m_inpatient;
    ListedPatient m_outpatient;
};

}  // namespace components
