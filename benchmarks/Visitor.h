#pragma once

#include "patients/PatientOnScreen.h"

namespace bench {

/// The patient whose hub is open in a measured window: two numbers and a name, nothing else.
class Visitor final : public PatientOnScreen {
public:
    Visitor(QString hospNum, QString idNum)
        : m_hospNum(std::move(hospNum)), m_idNum(std::move(idNum)) {}
    QString HospNum() const override { return m_hospNum; }
    QString IdNum() const override { return m_idNum; }
    QString CAPDNum() const override { return {}; }
    QString LastName() const override { return QStringLiteral("Visitor"); }
    QString FirstName() const override { return {}; }
    QString MiddleName() const override { return {}; }
    QString Age() const override { return {}; }
    QString Sex() const override { return {}; }
    QString Company() const override { return {}; }
    void Get_CanPenProc() override {}

private:
    QString m_hospNum;
    QString m_idNum;
};

}  // namespace bench
