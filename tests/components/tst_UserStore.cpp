#include <QTest>

#include "Rows.h"
#include "TestHospital.h"
#include "components/builtin/Passwords.h"
#include "components/builtin/UserStore.h"
#include "components/builtin/clsCurrentUser.h"
#include "db/Recordset.h"

using namespace Qt::StringLiterals;
using components::clsCurrentUser;
using components::UserStore;

// Who gets in, who does not, and what is left behind of either.

namespace {

const QString kWrong = u"wrong"_s;
const QString kUser = clsCurrentUser::kDemoUser;
const QString kPassword = clsCurrentUser::kDemoPassword;

}  // namespace

class tst_UserStore final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_connection = m_hospital->Connect();
    }

    void LogIn_refusesAllAlike_data() {
        Columns<QString, QString>();
        QTest::newRow("wrong password") << kUser << kWrong;
        QTest::newRow("empty password") << kUser << QString();
        QTest::newRow("unknown user") << u"nobody"_s << kPassword;
        QTest::newRow("empty user") << QString() << kPassword;
        QTest::newRow("another department's user") << u"labuser"_s << kPassword;
        QTest::newRow("quotes") << u"' OR '1'='1"_s << u"' OR '1'='1"_s;
        QTest::newRow("long") << QString(10000, u'x') << QString(10000, u'y');
        QTest::newRow("emoji") << u"\U0001F600"_s << u"\U0001F600"_s;
    }

    void LogIn_refusesAllAlike() {
        auto [user, password] = Fetch<QString, QString>();
        if (!ServerHospital::Keeps(user))
            QSKIP("the server's code page may lack these letters");
        QVERIFY(!LogIn(user, password));
        QVERIFY(LogIn(kUser, kPassword));
    }

    void LogIn_isLockedAfterFiveRefusals() {
        for (const int refusals : {4, 5}) {
            for (int refusal = 0; refusal < refusals; ++refusal)
                QVERIFY(!LogIn(kUser, kWrong));
            QCOMPARE(LogIn(kUser, kPassword), refusals < 5);
        }
        QCOMPARE(Text(u"SELECT COUNT(*) FROM PATIENT_DATA..tbLoginLog WHERE Outcome = 'LOCKED'"_s),
                 u"1"_s);
    }

    void Passwords_areSaltedAndNeverEmpty() {
        using namespace components::Passwords;
        QVERIFY(Hash(kPassword) != Hash(kPassword));
        QVERIFY(Matches(kPassword, Hash(kPassword)));
        QVERIFY(!Matches(QString(), QString()));
        QVERIFY(!Matches(kPassword, u"plain"_s));
    }

private:
    bool LogIn(const QString& user, const QString& password) {
        return UserStore(*m_connection).LogIn(user, password, u"46"_s).has_value();
    }

    QString Text(const QString& command) {
        return m_connection->Execute(command)->Fields(0).Text();
    }

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
};

QTEST_MAIN(tst_UserStore)
#include "tst_UserStore.moc"
