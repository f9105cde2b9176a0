#pragma once

#include <memory>

#include "components/Component.h"
#include "db/Connection.h"

namespace components {

/// First and middle name end with one blank, an absent one is empty: joined as they stand they give
/// the complete name. Who sets blanks of his own trims them.
struct DoctorRecord {
    QString FirstName;
    QString MiddleName;
    QString LastName;
    QString ResultCode;
};

struct OtherRevenueRecord {
    QString ResultCode;
    QString OtherRevenue;
    double RateA = 0;
};

struct DosageRecord {
    QString ResultCode;
    QString Frequency;
};

/// `CodeFinder.clsCodeSearch`: code lists of doctors, other revenue items and dosages.
class CodeSearch : public Component {
public:
    static constexpr int kDoctors = 1;
    static constexpr int kDosages = 16;
    static constexpr int kOtherRevenue = 21;

    virtual void SetMTS_Server(const QString& name) = 0;
    virtual void Initialize_Classes() = 0;
    virtual void SetCompanyName(const QString& name) = 0;
    virtual void SetSearchMode(bool byCode) = 0;
    virtual void SetConnection(const std::shared_ptr<db::Connection>& connection) = 0;
    /// The revenue code whose items list 21 offers.
    virtual void SetOtherSectionID(const QString& revenueId);
    /// True when the text names exactly one row or the user picked one; the list's record then
    /// holds it, and the text its code. False leaves text and records as they were. Throws
    /// base::RuntimeError 5 for a list that does not exist.
    virtual bool SearchListing(QString& text, int listing);
    /// Whether the user closed the last list without choosing.
    virtual bool Cancelled() const;
    virtual const DoctorRecord& Doctor() const;
    virtual const OtherRevenueRecord& OtherRevenue() const;
    virtual const DosageRecord& Dosage() const;
};

}  // namespace components
