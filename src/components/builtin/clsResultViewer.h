#pragma once

#include "components/ResultViewer.h"

namespace components {

/// Shows what one laboratory request found in a window of its own: each value beside its normal
/// range, abnormal ones marked, to be printed or saved as PDF. Keeps what it was given until it
/// is given anew.
class clsResultViewer final : public ResultViewer {
public:
    void SetSQLConnection(const std::shared_ptr<db::Connection>& connection) override {
        m_connection = connection;
    }
    void SetHospitalNumber(const QString& text) override { m_hospitalNumber = text; }
    void SetIDNumber(const QString& text) override { m_idNumber = text; }
    void SetRoomNumber(const QString& text) override { m_roomNumber = text; }
    void SetPatientName(const QString& text) override { m_patientName = text; }
    void SetAge(const QString& text) override { m_age = text; }
    void SetSex(const QString& text) override { m_sex = text; }
    void SetStatus(const QString& text) override { m_status = text; }
    void SetUserID(const QString& text) override { m_userId = text; }
    void SetCSnumber(const QString& text) override { m_csNumber = text; }
    void SetRequestNum(const QString& text) override { m_requestNum = text; }
    /// Without effect: a result is seen before it is printed, and no paper comes unasked.
    void SetAutoprint(bool) override {}
    /// Reads the request and returns when the window is closed. Throws base::DatabaseError,
    /// base::RuntimeError 53 without the report file; no window is then shown.
    void Show_Results() override;

private:
    std::shared_ptr<db::Connection> m_connection;
    QString m_hospitalNumber;
    QString m_idNumber;
    QString m_roomNumber;
    QString m_patientName;
    QString m_age;
    QString m_sex;
    QString m_status;
    QString m_userId;
    QString m_csNumber;
    QString m_requestNum;
};

}  // namespace components
