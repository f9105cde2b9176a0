#include "benchmarks/Session.h"

#include "app/modMain.h"
#include "components/CurrentUser.h"
#include "components/Registry.h"
#include "deploy/HospitalFile.h"

namespace bench {

namespace {

class NobodyAsked final : public components::CurrentUser {
public:
    explicit NobodyAsked(const QString& file) : m_connection(deploy::OpenHospital(file)) {}
    void SetPasswordDeptCode(const QString&) override {}
    void ShowMain() override {}
    bool Connected() const override { return true; }
    std::shared_ptr<db::Connection> SQLConnection() const override { return m_connection; }
    QString EmployeeCode() const override { return QStringLiteral("BENCH"); }
    QString employeename() const override { return QStringLiteral("Bench"); }
    QString ServerName() const override { return QStringLiteral("(embedded)"); }

private:
    std::shared_ptr<db::Connection> m_connection;
};

}  // namespace

std::unique_ptr<mdiCAPD> StartSession(const QString& file) {
    components::RegisterBuiltIns();
    components::Register(QStringLiteral("Corvane_User.clsCurrentUser"),
                         [file] { return std::make_shared<NobodyAsked>(file); });
    return modMain::Main();
}

}  // namespace bench
