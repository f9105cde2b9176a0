#include <QTest>

#include "TestHospital.h"
#include "base/Clock.h"
#include "components/builtin/Passwords.h"
#include "components/builtin/UserStore.h"
#include "components/builtin/clsCurrentUser.h"
#include "db/Recordset.h"
#include "deploy/HospitalFile.h"

using components::clsCurrentUser;
using components::User;
using components::UserStore;

// Who gets in, who does not, and what is left behind of either.
class tst_UserStore final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { base::Clock::Replace({}); }
    void LogIn_admitsTheRightPassword();
    void LogIn_refusesAllAlike_data();
    void LogIn_refusesAllAlike();
    void LogIn_locksAfterFiveRefusals();
    void LogIn_forgetsRefusalsAfterASuccess();
    void LogIn_recordsEveryAttempt();
    void SetUpHospital_happensOnce();
    void Passwords_areSaltedAndNeverEmpty();

private:
    bool LogIn(const QString& user, const QString& password) {
        return UserStore(*m_connection).LogIn(user, password, QStringLiteral("46")).has_value();
    }

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
};

namespace {

const QString kWrong = QStringLiteral("wrong");
const QString kUser = clsCurrentUser::kDemoUser;
const QString kPassword = clsCurrentUser::kDemoPassword;

}  // namespace

void tst_UserStore::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_connection = m_hospital->Connect();
}

void tst_UserStore::LogIn_admitsTheRightPassword() {
    const auto user = UserStore(*m_connection).LogIn(kUser, kPassword, QStringLiteral("46"));
    QVERIFY(user);
    QCOMPARE(user->DeptCode, QStringLiteral("46"));
    QVERIFY(!user->EmployeeCode.isEmpty());
    QVERIFY(!user->EmployeeName.isEmpty());
}

void tst_UserStore::LogIn_refusesAllAlike_data() {
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::newRow("wrong password") << kUser << kWrong;
    QTest::newRow("empty password") << kUser << QString();
    QTest::newRow("unknown user") << QStringLiteral("nobody") << kPassword;
    QTest::newRow("empty user") << QString() << kPassword;
    QTest::newRow("another department's user") << QStringLiteral("labuser") << kPassword;
    QTest::newRow("quotes") << QStringLiteral("' OR '1'='1") << QStringLiteral("' OR '1'='1");
    QTest::newRow("long") << QString(10000, u'x') << QString(10000, u'y');
    QTest::newRow("emoji") << QStringLiteral("\U0001F600") << QStringLiteral("\U0001F600");
}

void tst_UserStore::LogIn_refusesAllAlike() {
    QFETCH(QString, user);
    QFETCH(QString, password);
    if (!ServerHospital::Keeps(user))
        QSKIP("the server's code page may lack these letters");
    QVERIFY(!LogIn(user, password));
    QVERIFY(LogIn(kUser, kPassword));
}

void tst_UserStore::LogIn_locksAfterFiveRefusals() {
    if (m_hospital->IsOnServer())
        QSKIP("a server's clock cannot be set");
    const QDateTime start = base::Clock::Now();
    QDateTime now = start;
    base::Clock::Replace([&now] { return now; });
    for (int refusal = 0; refusal < 4; ++refusal)
        QVERIFY(!LogIn(kUser, kWrong));
    QVERIFY(LogIn(kUser, kPassword));
    for (int refusal = 0; refusal < 5; ++refusal)
        QVERIFY(!LogIn(kUser, kWrong));
    QVERIFY(!LogIn(kUser, kPassword));
    now = start.addSecs(5 * 60 - 2);
    QVERIFY(!LogIn(kUser, kPassword));
    now = start.addSecs(11 * 60);
    QVERIFY(LogIn(kUser, kPassword));
}

void tst_UserStore::LogIn_forgetsRefusalsAfterASuccess() {
    for (int round = 0; round < 3; ++round) {
        for (int refusal = 0; refusal < 4; ++refusal)
            QVERIFY(!LogIn(kUser, kWrong));
        QVERIFY(LogIn(kUser, kPassword));
    }
}

void tst_UserStore::LogIn_recordsEveryAttempt() {
    const auto count = [this] {
        return m_connection
            ->Execute(QStringLiteral("SELECT COUNT(*) FROM PATIENT_DATA..tbLoginLog"))
            ->Fields(0)
            .Number();
    };
    const double before = count();
    LogIn(kUser, kPassword);
    LogIn(kUser, kWrong);
    LogIn(QStringLiteral("nobody"), kWrong);
    QCOMPARE(count(), before + 3);
}

void tst_UserStore::SetUpHospital_happensOnce() {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("new.db"));
    deploy::MakeHospital(file, deploy::Contents::Empty);
    m_connection = deploy::OpenHospital(file);
    UserStore users(*m_connection);
    QVERIFY(users.IsEmpty());
    const User user{QStringLiteral("new.nurse"), QStringLiteral("E77"),
                    QStringLiteral("Zoë O'Hara"), QStringLiteral("46")};
    const QString password = QStringLiteral("a long secret");
    users.SetUpHospital(QStringLiteral("St. Anne's"), QStringLiteral("Harbour Road"), user,
                        password);
    QVERIFY(!users.IsEmpty());
    QVERIFY(LogIn(user.UserName, password));
    QCOMPARE(
        m_connection->Execute(QStringLiteral("SELECT Company FROM PATIENT_DATA..tbHospitalInfo"))
            ->Fields(0)
            .Text(),
        QStringLiteral("St. Anne's"));
    QVERIFY_THROWS_EXCEPTION(
        base::DatabaseError,
        users.SetUpHospital(QStringLiteral("Another"), {}, user, QStringLiteral("another secret")));
    QVERIFY(LogIn(user.UserName, password));
}

void tst_UserStore::Passwords_areSaltedAndNeverEmpty() {
    using namespace components::Passwords;
    QVERIFY(Hash(kPassword) != Hash(kPassword));
    QVERIFY(Matches(kPassword, Hash(kPassword)));
    QVERIFY(!Matches(QString(), QString()));
    QVERIFY(!Matches(kPassword, QStringLiteral("plain")));
}

QTEST_MAIN(tst_UserStore)
#include "tst_UserStore.moc"
