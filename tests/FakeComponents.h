#pragma once

#include <QStringList>

#include "components/CodeSearch.h"
#include "components/CurrentUser.h"
#include "components/PatientFinder.h"
#include "components/PatientLister.h"
#include "components/Registry.h"
#include "components/SupplyInfo.h"
#include "components/SupplyList.h"

/// Components that do nothing but remember, in order, what was asked of them.
namespace fakes {

inline QStringList& Log() {
    static QStringList log;
    return log;
}

class User final : public components::CurrentUser {
public:
    void SetPasswordDeptCode(const QString& code) override {
        Log() << QStringLiteral("PasswordDeptCode ") + code;
    }
    void ShowMain() override { Log() << QStringLiteral("ShowMain"); }
    bool Connected() const override { return Admitted; }
    std::shared_ptr<db::Connection> SQLConnection() const override { return Session; }
    QString EmployeeCode() const override { return QStringLiteral("E1"); }
    QString employeename() const override { return QStringLiteral("Nurse One"); }
    QString ServerName() const override { return QStringLiteral("SERVER"); }

    bool Admitted = true;
    std::shared_ptr<db::Connection> Session;
};

class Lister final : public components::PatientLister {
public:
    void Initialize_Classes() override { Log() << QStringLiteral("Lister.Initialize_Classes"); }
    void SetInitConnection(const std::shared_ptr<db::Connection>&) override {
        Log() << QStringLiteral("Lister.InitConnection");
    }
    void SetHospital(const QString& name) override {
        Log() << QStringLiteral("Lister.Hospital ") + name;
    }
    void SetRevenueID(const QString& code) override {
        Log() << QStringLiteral("Lister.RevenueID ") + code;
    }
    bool PatientListing(QString& idNumber, int code, bool flag) override {
        Log() << QStringLiteral("PatientListing %1,%2,%3").arg(idNumber).arg(code).arg(flag);
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
        Log() << QStringLiteral("Finder.InitConnection ") + serverName;
        return Initialized;
    }
    bool Initialized = true;
};

class Codes final : public components::CodeSearch {
public:
    void SetMTS_Server(const QString& name) override {
        Log() << QStringLiteral("Codes.MTS_Server ") + name;
    }
    void Initialize_Classes() override { Log() << QStringLiteral("Codes.Initialize_Classes"); }
    void SetCompanyName(const QString& name) override {
        Log() << QStringLiteral("Codes.CompanyName ") + name;
    }
    void SetSearchMode(bool byCode) override {
        Log() << QStringLiteral("Codes.SearchMode %1").arg(byCode);
    }
    void SetConnection(const std::shared_ptr<db::Connection>&) override {
        Log() << QStringLiteral("Codes.Connection");
    }
};

/// What a component broken by its server throws.
inline const base::RuntimeError kBroken(2812, QStringLiteral("Could not find stored procedure."));

class Supplies final : public components::SupplyList {
public:
    bool InitConnection(const std::shared_ptr<db::Connection>&) override {
        Log() << QStringLiteral("Supplies.InitConnection");
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
        Log() << QStringLiteral("SupplyRecord.InitConnect");
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
        Offer(QStringLiteral("Corvane_User.clsCurrentUser"), CurrentUser);
        Offer(QStringLiteral("PatientLister.clsRadioSearch"), Patients);
        Offer(QStringLiteral("PatientFinder.clsPatientSearch"), Stays);
        Offer(QStringLiteral("CodeFinder.clsCodeSearch"), std::make_shared<Codes>());
        Offer(QStringLiteral("DrugRoster.clsListDrugs"), std::make_shared<Supplies>());
        Offer(QStringLiteral("DrugCatalog.clsDrug"), std::make_shared<SupplyRecord>());
    }

    static void Offer(const QString& progId, std::shared_ptr<components::Component> component) {
        components::Register(progId, [progId, component] {
            Log() << QStringLiteral("create ") + progId;
            return component;
        });
    }
};

}  // namespace fakes
