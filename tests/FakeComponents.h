#pragma once

#include <QStringList>

#include "components/CodeSearch.h"
#include "components/CurrentUser.h"
#include "components/PatientFinder.h"
#include "components/PatientLister.h"
#include "components/Registry.h"
#include "components/SupplyInfo.h"
#include "components/SupplyList.h"

using namespace Qt::StringLiterals;

/// Components that do nothing but remember, in order, what was asked of them.
namespace fakes {

inline QStringList& Log() {
    static QStringList log;
    return log;
}

class User final : public components::CurrentUser {
public:
    void SetPasswordDeptCode(const QString& code) override {
        Log() << u"PasswordDeptCode "_s + code;
    }
    void ShowMain() override { Log() << u"ShowMain"_s; }
    bool Connected() const override { return Admitted; }
    std::shared_ptr<db::Connection> SQLConnection() const override { return Session; }
    QString EmployeeCode() const override { return u"E1"_s; }
    QString employeename() const override { return u"Nurse One"_s; }
    QString ServerName() const override { return u"SERVER"_s; }

    bool Admitted = true;
    std::shared_ptr<db::Connection> Session;
};

class Lister final : public components::PatientLister {
public:
    void Initialize_Classes() override { Log() << u"Lister.Initialize_Classes"_s; }
    void SetInitConnection(const std::shared_ptr<db::Connection>&) override {
        Log() << u"Lister.InitConnection"_s;
    }
    void SetHospital(const QString& name) override { Log() << u"Lister.Hospital "_s + name; }
    void SetRevenueID(const QString& code) override { Log() << u"Lister.RevenueID "_s + code; }
    bool PatientListing(QString& idNumber, int code, bool flag) override {
        Log() << u"PatientListing %1,%2,%3"_s.arg(idNumber).arg(code).arg(flag);
        return Found;
    }
    const components::ListedPatient& Inpatient() const override { return Patient; }
    const components::ListedPatient& Outpatient() const override { return Patient; }

    bool Found = true;
    components::ListedPatient Patient;
};

class Finder final : public components::PatientFinder {
public:
    bool InitConnection(const QString&, QString& serverName) override {
        Log() << u"Finder.InitConnection "_s + serverName;
        return Initialized;
    }
    bool Initialized = true;
};

class Codes final : public components::CodeSearch {
public:
    void SetMTS_Server(const QString& name) override { Log() << u"Codes.MTS_Server "_s + name; }
    void Initialize_Classes() override { Log() << u"Codes.Initialize_Classes"_s; }
    void SetCompanyName(const QString& name) override { Log() << u"Codes.CompanyName "_s + name; }
    void SetSearchMode(bool byCode) override { Log() << u"Codes.SearchMode %1"_s.arg(byCode); }
    void SetConnection(const std::shared_ptr<db::Connection>&) override {
        Log() << u"Codes.Connection"_s;
    }
};

/// What a component broken by its server throws.
inline const base::RuntimeError kBroken(2812, u"Could not find stored procedure."_s);

class Supplies final : public components::SupplyList {
public:
    bool InitConnection(const std::shared_ptr<db::Connection>&) override {
        Log() << u"Supplies.InitConnection"_s;
        if (Broken)
            throw kBroken;
        return Reachable;
    }
    static inline bool Reachable = true;
    static inline bool Broken = false;
};

class SupplyRecord final : public components::SupplyInfo {
public:
    bool InitConnect(const std::shared_ptr<db::Connection>&) override {
        Log() << u"SupplyRecord.InitConnect"_s;
        return Reachable;
    }
    static inline bool Reachable = true;
};

/// Fakes in place of every component that start-up creates; the shared ones are returned.
struct Set {
    std::shared_ptr<User> CurrentUser = std::make_shared<User>();
    std::shared_ptr<Lister> Patients = std::make_shared<Lister>();
    std::shared_ptr<Finder> Stays = std::make_shared<Finder>();

    Set() {
        Log().clear();
        Supplies::Reachable = true;
        Supplies::Broken = false;
        SupplyRecord::Reachable = true;
        components::RegisterBuiltIns();
        Offer(u"Corvane_User.clsCurrentUser"_s, CurrentUser);
        Offer(u"PatientLister.clsRadioSearch"_s, Patients);
        Offer(u"PatientFinder.clsPatientSearch"_s, Stays);
        Offer(u"CodeFinder.clsCodeSearch"_s, std::make_shared<Codes>());
        Offer(u"DrugRoster.clsListDrugs"_s, std::make_shared<Supplies>());
        Offer(u"DrugCatalog.clsDrug"_s, std::make_shared<SupplyRecord>());
    }

    static void Offer(const QString& progId, std::shared_ptr<components::Component> component) {
        components::Register(progId, [progId, component] {
            Log() << u"create "_s + progId;
            return component;
        });
    }
};

}  // namespace fakes
