#include "patients/clsRegularPatientSearch.h"

#include "db/CommandText.h"
#include "db/Recordset.h"
#include "patients/frmPatientListing.h"
#include "session/modGlobals.h"

namespace {

const QString kDirect = QStringLiteral("RADIOLOGY..spGlobal_RegularPatients '','1', ");
const QString kListing = QStringLiteral("RADIOLOGY..spGlobal_RegularPatients '#1','#2','#3'");
const QString kPicked = QStringLiteral("RADIOLOGY..spGlobal_RegularPatients '0','1', ");

constexpr std::array kColumns = {"HospNum",     "LastName", "FirstName", "MiddleName",
                                 "CivilStatus", "Sex",      "BirthDate", "Age",
                                 "HouseStreet", "Barangay", "Town",      "Province"};
constexpr int kCivilStatus = 4;
const QString kHospNum = QStringLiteral("HospNum");
const QString kSingle = QStringLiteral("1");

}  // namespace

clsRegularPatientSearch::clsRegularPatientSearch()
    : m_connection(modGlobals::gCurrentUser->SQLConnection()) {}

bool clsRegularPatientSearch::ValidatePatient(const QString& text, bool withListing) {
    db::Recordset found;
    Open(found, kDirect + db::Quoted(text));
    QString picked;
    if (found.RecordCount() != 1) {
        if (withListing)
            picked = PickFromListing(text);
        if (picked.isEmpty())
            return false;
        found.Close();
        Open(found, kPicked + db::Quoted(picked));
    }
    // A patient picked a moment ago may have been taken off the registry since; what then answers
    // to the number is the visit of somebody else.
    if (found.Eof() || (!picked.isEmpty() && found.Fields(kHospNum).Text() != picked))
        return false;
    TakeRow(found);
    return true;
}

void clsRegularPatientSearch::Open(db::Recordset& found, const QString& command) const {
    found.SetCursorLocation(3);
    found.Open(command, m_connection, 2, 3, -1);
}

QString clsRegularPatientSearch::PickFromListing(const QString& text) {
    frmPatientListing listing;
    listing.SetListCaption(QStringLiteral("Regular Patients"));
    listing.SetCurrentCaption({});
    listing.SetPatientRecord(text);
    listing.SetPatientQuery(kListing);
    listing.SetEnableAddPatient(false);
    listing.exec();
    return listing.Valid() ? listing.ResultCode() : QString();
}

void clsRegularPatientSearch::TakeRow(db::Recordset& found) {
    for (size_t column = 0; column < kColumns.size(); ++column)
        m_values[column] = found.Fields(QLatin1String(kColumns[column])).Text();
    if (m_values[kCivilStatus].isEmpty())
        m_values[kCivilStatus] = kSingle;
}
