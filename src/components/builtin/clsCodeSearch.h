#pragma once

#include "components/CodeSearch.h"

namespace components {

struct CodeList;

/// The code lists over the session's connection. A text names a row by its exact code (where
/// searching by code is on), else when it alone begins with the text, by code or by name; any other
/// text shows the pick list.
class clsCodeSearch final : public CodeSearch {
public:
    void SetMTS_Server(const QString& name) override;
    void Initialize_Classes() override;
    void SetCompanyName(const QString& name) override { m_companyName = name; }
    void SetSearchMode(bool byCode) override { m_byCode = byCode; }
    void SetConnection(const std::shared_ptr<db::Connection>& connection) override {
        m_connection = connection;
    }
    void SetOtherSectionID(const QString& revenueId) override { m_otherSectionId = revenueId; }
    bool SearchListing(QString& text, int listing) override;
    bool Cancelled() const override { return m_cancelled; }
    const DoctorRecord& Doctor() const override { return m_doctor; }
    const OtherRevenueRecord& OtherRevenue() const override { return m_otherRevenue; }
    const DosageRecord& Dosage() const override { return m_dosage; }

private:
    QString Command(const CodeList& list, const QString& procedure, const QString& text) const;
    std::shared_ptr<db::Recordset> Open(const QString& command) const;
    std::shared_ptr<db::Recordset> Named(const CodeList& list, const QString& text) const;
    QString Pick(const CodeList& list, const QString& text,
                 std::shared_ptr<const db::RowStore> found) const;
    void Keep(int listing, db::Recordset& row);

    QString m_companyName;
    bool m_byCode = false;
    std::shared_ptr<db::Connection> m_connection;
    QString m_otherSectionId;
    bool m_cancelled = false;
    DoctorRecord m_doctor;
    OtherRevenueRecord m_otherRevenue;
    DosageRecord m_dosage;
};

}  // namespace components
