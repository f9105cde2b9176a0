#pragma once

#include <QString>
#include <array>
#include <memory>

namespace db {
class Connection;
class Recordset;
}  // namespace db

/// Finds one registered patient from what a clerk types: at once where the text names exactly one,
/// else from the listing window. Made anew for each look-up; holds the patient last found.
class clsRegularPatientSearch final {
public:
    /// Reads over the session's connection as it is now.
    clsRegularPatientSearch();

    /// Whether a patient was found; the properties then hold that patient, else the one before.
    /// `text` is a hospital number, a complete last name or the beginning of a visit's number; with
    /// `withListing` whatever names nobody or several is picked from "Regular Patients". Throws
    /// base::DatabaseError.
    bool ValidatePatient(const QString& text, bool withListing);

    const QString& HospNum() const { return m_values[0]; }
    const QString& LastName() const { return m_values[1]; }
    const QString& FirstName() const { return m_values[2]; }
    const QString& MiddleName() const { return m_values[3]; }
    /// "1", single, where the registry does not say.
    const QString& CivilStatus() const { return m_values[4]; }
    const QString& Sex() const { return m_values[5]; }
    const QString& BirthDate() const { return m_values[6]; }
    /// Full years today.
    const QString& Age() const { return m_values[7]; }
    const QString& HouseStreet() const { return m_values[8]; }
    const QString& Barangay() const { return m_values[9]; }
    const QString& Town() const { return m_values[10]; }
    const QString& Province() const { return m_values[11]; }

private:
    void Open(db::Recordset& found, const QString& command) const;
    /// Empty where nobody was picked.
    static QString PickFromListing(const QString& text);
    void TakeRow(db::Recordset& found);

    std::shared_ptr<db::Connection> m_connection;
    std::array<QString, 12> m_values;
};
