#pragma once

#include <QtCore>

#include "TestHospital.h"
#include "base/Clock.h"
#include "components/Registry.h"
#include "db/Driver.h"
#include "db/Recordset.h"
#include "session/Saved.h"
#include "session/modGlobals.h"

using namespace Qt::StringLiterals;

/// A server whose plug can be pulled.
class PluggedDriver final : public db::Driver {
public:
    explicit PluggedDriver(const QString& connectionString)
        : m_engine(db::OpenDriver(connectionString)) {}

    /// So many commands and commits are still answered, then none.
    static void GoesAfter(int answered) { s_left = answered; }
    static void Returns() { s_left = kStays; }
    static bool IsGone() { return s_left != kStays; }
    /// Sees each command before it is run.
    static inline std::function<void(db::Driver&, const QString&)> Before;

    qint64 Execute(const QString& command, embedded::RowSink& sink) override {
        Spend(command);
        if (Before)
            Before(*m_engine, command);
        return m_engine->Execute(command, sink);
    }
    void SetDefaultDatabase(const QString& name) override { m_engine->SetDefaultDatabase(name); }
    void BeginTrans() override { m_engine->BeginTrans(); }
    void CommitTrans() override {
        Spend({});
        m_engine->CommitTrans();
    }
    void RollbackTrans() override { m_engine->RollbackTrans(); }
    std::vector<QString> KeyColumns(const QString& table) override {
        return m_engine->KeyColumns(table);
    }

private:
    static constexpr int kStays = -1;
    static inline int s_left = kStays;

    static void Spend(const QString& command) {
        if (s_left == 0)
            throw base::DatabaseError(10054, u"The server is gone."_s, command);
        if (IsGone())
            --s_left;
    }

    std::unique_ptr<db::Driver> m_engine;
};

/// Who works in the session.
class SessionUser final : public components::CurrentUser {
public:
    std::shared_ptr<db::Connection> Connection;
    QString Code = u"4601"_s;
    QString Name = u"Nurse One"_s;

    void SetPasswordDeptCode(const QString&) override {}
    void ShowMain() override {}
    bool Connected() const override { return Connection != nullptr; }
    std::shared_ptr<db::Connection> SQLConnection() const override { return Connection; }
    QString EmployeeCode() const override { return Code; }
    QString employeename() const override { return Name; }
    QString ServerName() const override { return {}; }
};

/// Sends a statement over the session's connection.
inline void Do(const QString& statement) {
    modGlobals::gConnection->Execute(statement);
}

/// "cell|cell;cell|cell": each row.
inline QString Ask(const QString& query) {
    const auto found = modGlobals::gConnection->Execute(query);
    QStringList rows;
    for (; !found->Eof(); found->MoveNext()) {
        QStringList cells;
        for (int column = 0; column < found->FieldNames().size(); ++column)
            cells << found->Fields(column).Text();
        rows << cells.join(u'|');
    }
    return rows.join(u';');
}

/// Lets the server go before the first command of the action, then before the second and so on,
/// until `state` differs. Returns how many were answered then: a smaller number than that of the
/// action's commands and commits means that half of it was written. -1: it never differed.
inline int LoseServerAtEachCommand(const std::function<QString()>& state,
                                   const std::function<void()>& act) {
    const QString before = state();
    for (int answered = 0; answered < 100; ++answered) {
        PluggedDriver::GoesAfter(answered);
        try {
            act();
        } catch (const base::DatabaseError&) {
        }
        PluggedDriver::Returns();
        if (state() != before)
            return answered;
    }
    return -1;
}

/// The unit's session on a demo hospital of its own, with the program's own components, over a
/// server with a plug. All of it is gone with this object.
class Session final {
public:
    Session() : m_hospital(std::in_place) { Start(m_hospital->ConnectionString()); }
    /// On a hospital that others work on as well.
    explicit Session(const QString& connectionString) { Start(connectionString); }
    ~Session() {
        // A test may have begun the next one already.
        if (modGlobals::gCurrentUser != User)
            return;
        PluggedDriver::Returns();
        PluggedDriver::Before = nullptr;
        Saved::SetHook({});
        base::Clock::Replace({});
        for (const auto& drop : m_drops)
            drop();
        modGlobals::gConnection.reset();
        modGlobals::gCurrentUser.reset();
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const TestHospital& Hospital() const { return *m_hospital; }
    bool IsOnServer() const { return !m_hospital || m_hospital->IsOnServer(); }
    db::Connection& Connection() const { return *User->Connection; }

    const std::shared_ptr<SessionUser> User = std::make_shared<SessionUser>();
    /// What the status bar was told was saved, in order.
    QStringList Told;

private:
    void Start(const QString& connectionString) {
        using namespace modGlobals;
        gConnection = User->Connection = std::make_shared<db::Connection>(
            std::make_unique<PluggedDriver>(connectionString), connectionString);
        gConnection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        gCurrentUser = User;
        Saved::SetHook([this](const QString& sentence) { Told << sentence; });
        ApplyDepartmentCode(u"46"_s);
        gCompany = Ask(u"SELECT Company FROM PATIENT_DATA..tbHospitalInfo"_s);
        gAddress1 = Ask(u"SELECT address1 FROM PATIENT_DATA..tbHospitalInfo"_s);
        components::RegisterBuiltIns();
        Create(gResultViewer, "ResultBrowser.ResultViewer");
        Create(gPatientSearch, "PatientFinder.clsPatientSearch");
        Create(gCodeSearch, "CodeFinder.clsCodeSearch");
        Create(gOutpatientSearch, "PatientLister.clsRadioSearch");
        Create(gWardRequest, "WardActivity.clsRequest");
        Create(gWardResults, "WardActivity.clsResults");
        Create(gConfinement, "WardActivity.clsConfinement");
        Create(gConfinementResults, "WardActivity.clsConfinementResults");
        Create(gSupplyList, "DrugRoster.clsListDrugs");
        Create(gSupplyList2, "DrugRoster.clsListDrugs");
        Create(gSupplyInfo, "DrugCatalog.clsDrug");
        gCodeSearch->Initialize_Classes();
        gCodeSearch->SetSearchMode(true);
        gCodeSearch->SetConnection(gConnection);
        gOutpatientSearch->Initialize_Classes();
        gOutpatientSearch->SetInitConnection(gConnection);
        QString server;
        if (!gPatientSearch->InitConnection(gConnection->ConnectionString(), server) ||
            !gSupplyList->InitConnection(gConnection) ||
            !gSupplyList2->InitConnection(gConnection) || !gSupplyInfo->InitConnect(gConnection))
            throw std::runtime_error("the hospital cannot be reached");
    }

    template <class Component>
    void Create(std::shared_ptr<Component>& global, const char* progId) {
        global = components::CreateObject<Component>(QLatin1String(progId));
        m_drops.push_back([&global] { global.reset(); });
    }

    std::optional<TestHospital> m_hospital;
    std::vector<std::function<void()>> m_drops;
};
