#include "app/modMain.h"

#include "WindowTest.h"
#include "app/mdiCAPD.h"

// Start-up over the demo hospital, behind a log-in that has just ended.
class tst_modMain final : public WindowTest {
    Q_OBJECT

private slots:
    void init() {
        SetUp();
        components::Register(u"Corvane_User.clsCurrentUser"_s, [this] { return m_session->User; });
    }
    void cleanup() { TearDown(); }

    void Main_endsSilentlyWithoutALogInOrThePatientSearch() {
        Do(u"UPDATE PATIENT_DATA..tbHospitalInfo SET MtsServerName = 'ELSEWHERE'"_s);
        components::Register(u"PatientFinder.clsPatientSearch"_s,
                             [] { return std::make_shared<NoFinder>(); });
        const CommandLog log;
        QVERIFY(!modMain::Main());
        m_session->User->Connection.reset();
        QVERIFY(!modMain::Main());
        QCOMPARE(log.Sent, QStringList(u"Select * from PATIENT_DATA..tbHospitalInfo"_s));
        QCOMPARE(NoFinder::Server, u"ELSEWHERE"_s);
    }

    void Main_namesAMissingComponent() {
        components::Register(u"WardActivity.clsConfinement"_s,
                             [] { return std::make_shared<NoFinder>(); });
        try {
            modMain::Main();
            QFAIL("a component of another kind was taken");
        } catch (const base::RuntimeError& error) {
            QCOMPARE(error.Number(), 429);
            QVERIFY(error.Description().contains(u"WardActivity.clsConfinement"_s));
        }
    }

    void Main_readsTheFirstOfSeveralHospitalRows() {
        Do(u"DELETE PATIENT_DATA..tbHospitalInfo"_s);
        QVERIFY_THROWS_EXCEPTION(base::DatabaseError, modMain::Main());
        for (const char* number : {"1", "2"})
            Do(u"INSERT INTO PATIENT_DATA..tbHospitalInfo (HospitalID, Company, address1, "
               "MtsServerName) VALUES (%1, 'Hospital %1', 'Somewhere', 'MTS')"_s.arg(
                   QLatin1String(number)));
        QVERIFY(modMain::Main());
        QCOMPARE(modGlobals::gCompany + modGlobals::gRevenueID, u"Hospital 1CY"_s);
    }

    void Frame_unloadsWithoutTheCatalogue() {
        const auto expectRefusal = [this](const QString& message) {
            Answer(BoxAnswer::Ok);
            const auto frame = modMain::Main();
            QVERIFY(frame && !frame->isVisible());
            QCOMPARE(Said().Text, message);
            QCOMPARE(Said().Icon, BoxIcon::Critical);
        };
        components::Register(u"DrugCatalog.clsDrug"_s, [] { return std::make_shared<NoDrug>(); });
        expectRefusal(u"Cannot load supplies information."_s);
        components::Register(u"DrugRoster.clsListDrugs"_s,
                             [] { return std::make_shared<NoList>(); });
        expectRefusal(u"Cannot load supplies list."_s);
        components::RegisterBuiltIns();
        components::Register(u"Corvane_User.clsCurrentUser"_s, [this] { return m_session->User; });
        PluggedDriver::Before = [](db::Driver&, const QString& command) {
            if (command.contains(u"sp_Catalogue_Check"_s))
                throw base::DatabaseError(2812, u"Could not find stored procedure."_s, command);
        };
        QVERIFY_THROWS_EXCEPTION(base::RuntimeError, modMain::Main());
    }

private:
    struct NoList final : components::SupplyList {
        bool InitConnection(const std::shared_ptr<db::Connection>&) override { return false; }
    };
    struct NoDrug final : components::SupplyInfo {
        bool InitConnect(const std::shared_ptr<db::Connection>&) override { return false; }
    };
    class NoFinder final : public components::PatientFinder {
    public:
        static inline QString Server;
        bool InitConnection(const QString&, QString& server) override {
            Server = server;
            return false;
        }
    };
};

QTEST_MAIN(tst_modMain)
#include "tst_modMain.moc"
