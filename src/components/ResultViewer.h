#pragma once

#include <memory>

#include "components/Component.h"
#include "db/Connection.h"

namespace components {

/// `ResultBrowser.ResultViewer`: shows one laboratory result.
class ResultViewer : public Component {
public:
    virtual void SetSQLConnection(const std::shared_ptr<db::Connection>& connection);
    virtual void SetHospitalNumber(const QString& text);
    virtual void SetIDNumber(const QString& text);
    virtual void SetRoomNumber(const QString& text);
    virtual void SetPatientName(const QString& text);
    virtual void SetAge(const QString& text);
    virtual void SetSex(const QString& text);
    virtual void SetStatus(const QString& text);
    virtual void SetUserID(const QString& text);
    virtual void SetCSnumber(const QString& text);
    virtual void SetRequestNum(const QString& text);
    virtual void SetAutoprint(bool autoprint);
    virtual void Show_Results();
};

}  // namespace components
