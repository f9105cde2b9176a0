#include "components/builtin/clsPatientFinder.h"

#include "db/CommandText.h"
#include "db/Recordset.h"

namespace components {

namespace {

const QString kAdmission = QStringLiteral("PATIENT_DATA..sp_Finder_Admission");
const QString kOutPatient = QStringLiteral("PATIENT_DATA..sp_Finder_OutPatient");

StayRecord ReadStay(db::Recordset& row) {
    const auto text = [&row](const char* column) {
        return row.Fields(QLatin1String(column)).Text();
    };
    return {.IDNumber = text("IDNumber"),
            .HospitalNumber = text("HospitalNumber"),
            .AdmissionDate = text("AdmissionDate"),
            .Age = text("Age"),
            .Room = text("Room"),
            .Patient = {.LastName = text("LastName"),
                        .FirstName = text("FirstName"),
                        .MiddleName = text("MiddleName"),
                        .Age = text("PatientAge"),
                        .Sex = text("Sex"),
                        .BirthDate = text("BirthDate"),
                        .BirthPlace = text("BirthPlace"),
                        .CompleteAddress = text("CompleteAddress"),
                        .Nationality = text("Nationality"),
                        .Religion = text("Religion"),
                        .CivilStatus = text("CivilStatus"),
                        .SpouseName = text("SpouseName"),
                        .FatherName = text("FatherName"),
                        .MotherName = text("MotherName")},
            .AttendingDoctor = text("AttendingDoctor"),
            .AdmittingDoctor = text("AdmittingDoctor"),
            .AdmittingDiagnosis = text("AdmittingDiagnosis"),
            .ChiefComplaint = text("ChiefComplaint"),
            .FinalDiagnosis = text("FinalDiagnosis")};
}

}  // namespace

bool clsPatientFinder::InitConnection(const QString& connectionString, QString& serverName) {
    Q_UNUSED(serverName);
    m_connection = db::Connection::Find(connectionString);
    return m_connection != nullptr;
}

bool clsPatientFinder::ValidateAdmission(const QString& admissionNumber) {
    return Load(m_admission, db::Call(kAdmission, {admissionNumber}));
}

bool clsPatientFinder::OpenOutPatient(const QString& visitNumber, const QString& hospNum) {
    return Load(m_outPatient, db::Call(kOutPatient, {visitNumber, hospNum}));
}

// One patient's summary must never show another's data: the record is emptied before the server
// is asked, so that a failure leaves it empty too.
bool clsPatientFinder::Load(StayRecord& stay, const QString& command) {
    stay = {};
    db::Recordset row;
    row.Open(command, m_connection);
    if (row.Eof())
        return false;
    stay = ReadStay(row);
    return true;
}

}  // namespace components
