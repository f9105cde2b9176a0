#pragma once

#include "base/Errors.h"
#include "patients/PatientOnScreen.h"

using namespace Qt::StringLiterals;

/// The patient whose hub a test has open.
class ScreenPatient final : public PatientOnScreen {
public:
    explicit ScreenPatient(QString idNum = u"A7B"_s, QString hospNum = u"200021"_s)
        : Id(std::move(idNum)), Hosp(std::move(hospNum)) {}

    QString Id;
    QString Hosp;
    int Reloads = 0;
    bool ReloadFails = false;

    QString HospNum() const override { return Hosp; }
    QString IdNum() const override { return Id; }
    QString CAPDNum() const override { return u"C7"_s; }
    QString LastName() const override { return u"O'HARA"_s; }
    QString FirstName() const override { return u"Ana"_s; }
    QString MiddleName() const override { return u"Luz"_s; }
    QString Age() const override { return u"61"_s; }
    QString Sex() const override { return u"F"_s; }
    QString Company() const override { return u"A-17 <b>Kidney & Sons"_s; }
    void Get_CanPenProc() override {
        ++Reloads;
        if (ReloadFails)
            throw base::DatabaseError(10054, u"The server is gone."_s);
    }
};
