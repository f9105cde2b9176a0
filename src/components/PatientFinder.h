#pragma once

#include <memory>

#include "components/Component.h"
#include "db/Connection.h"

namespace components {

/// A person, as the clinical summary reads one; all text, null as empty.
struct PersonRecord {
    QString LastName, FirstName, MiddleName;
    QString Age, Sex, BirthDate, BirthPlace;
    QString CompleteAddress, Nationality, Religion, CivilStatus;
    QString SpouseName, FatherName, MotherName;
};

/// One admission or out-patient visit; what only admissions have is empty for a visit.
struct StayRecord {
    QString IDNumber, HospitalNumber, AdmissionDate, Age, Room;
    PersonRecord Patient;
    QString AttendingDoctor;  ///< complete name; of a visit, its first doctor
    QString AdmittingDoctor;
    QString AdmittingDiagnosis, ChiefComplaint, FinalDiagnosis;
};

/// `PatientFinder.clsPatientSearch`: admissions and out-patient visits with their histories.
class PatientFinder : public Component {
public:
    /// The connection string names an open session; false when there is none.
    virtual bool InitConnection(const QString& connectionString, QString& serverName) = 0;
    /// True when the stay was loaded into Admission(); false leaves an empty record.
    virtual bool ValidateAdmission(const QString& admissionNumber);
    virtual const StayRecord& Admission() const;
    /// True when the visit was loaded into OutPatient(); false leaves an empty record.
    virtual bool OpenOutPatient(const QString& visitNumber, const QString& hospNum);
    virtual const StayRecord& OutPatient() const;
};

}  // namespace components
