#pragma once

#include "components/PatientFinder.h"

namespace components {

/// Admissions and visits over the open session that a connection string names.
class clsPatientFinder final : public PatientFinder {
public:
    bool InitConnection(const QString& connectionString, QString& serverName) override;
    bool ValidateAdmission(const QString& admissionNumber) override;
    const StayRecord& Admission() const override { return m_admission; }
    bool OpenOutPatient(const QString& visitNumber, const QString& hospNum) override;
    const StayRecord& OutPatient() const override { return m_outPatient; }

private:
    bool Load(StayRecord& stay, const QString& command);

    std::shared_ptr<db::Connection> m_connection;
    StayRecord m_admission;
    StayRecord m_outPatient;
};

}  // namespace components
