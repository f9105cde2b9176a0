#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "OrdinaryUser.h"
#include "TestHospital.h"
#include "base/Errors.h"
#include "components/builtin/HospitalFiles.h"
#include "components/builtin/clsCurrentUser.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;
using components::clsCurrentUser;

// The log-in dialog, driven by keys.
class tst_clsCurrentUser final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QFile sources(m_settings.filePath(u"odbc.ini"_s));
        QVERIFY(sources.open(QIODevice::WriteOnly));
        sources.write("[Ward]\nDriver=SQLite3\nDatabase=" + m_settings.path().toUtf8() +
                      "/ward.db\n[A central server with a name of its own, over 32 signs]\n"
                      "Driver=FreeTDS\nServer=127.0.0.1\nPort=9\n");
        sources.close();
        qputenv("ODBCINI", sources.fileName().toUtf8());
    }
    void init() {
        QSettings settings(QSettings::IniFormat, QSettings::UserScope, u"capd"_s);
        settings.clear();
        m_demo = std::make_unique<TestHospital>(TestHospital::On::File);
        m_dir = std::make_unique<QTemporaryDir>();
        components::HospitalFiles::Place(m_demo->File(), m_dir->filePath(u"own.db"_s));
        m_user = std::make_unique<clsCurrentUser>();
        m_user->SetPasswordDeptCode(u"46"_s);
    }

    void ShowMain_logsIn() {
        Play({Type(clsCurrentUser::kDemoUser, clsCurrentUser::kDemoPassword)});
        m_user->ShowMain();
        QVERIFY(m_user->Connected());
        QVERIFY(m_user->SQLConnection());
        QVERIFY(!m_user->EmployeeCode().isEmpty());
        QCOMPARE(m_user->ServerName(), components::kPracticeData);
    }

    void ShowMain_listsTheServersAndTestsThem() {
        const QString longName = u"A central server with a name of its own, over 32 signs"_s;
        const auto choose = [](QDialog& dialog, const QString& name) {
            auto* sources = dialog.findChild<QComboBox*>(u"cboSource"_s);
            sources->setCurrentIndex(sources->findText(u"Server: "_s + name));
            dialog.findChild<QPushButton*>(u"cmdTest"_s)->click();
        };
        QStringList said;
        bool refused = true;
        const auto look = [&](QDialog& dialog) {
            auto* refusal = dialog.findChild<QLabel*>(u"lblRefusal"_s);
            choose(dialog, u"Ward"_s);
            said << dialog.findChild<QLabel*>(u"lblDemo"_s)->text() << refusal->text();
            choose(dialog, longName);
            said << dialog.findChild<QLabel*>(u"lblDemo"_s)->text() << refusal->text();
            QTest::keyClick(dialog.findChild<QLineEdit*>(u"txtPassword"_s), Qt::Key_X);
            refused = refusal->isVisible();
            dialog.reject();
        };
        Play({look});
        m_user->ShowMain();
        QCOMPARE(said.value(0) + said.value(2), QString());
        QVERIFY2(said.value(1).contains(u"hospital is not there"_s), qPrintable(said.value(1)));
        QVERIFY(!said.value(3).isEmpty());
        QVERIFY(!refused);
    }

    void ShowMain_saysWhenTheLastServerIsGone() {
        QSettings(QSettings::IniFormat, QSettings::UserScope, u"capd"_s)
            .setValue(u"login/source"_s, u"Server: Gone"_s);
        QString said;
        Play({Leave(said)});
        m_user->ShowMain();
        QVERIFY2(said.contains(u"Server: Gone"_s), qPrintable(said));
    }

    void ShowMain_refusesAndAsksAgain() {
        QStringList refusals;
        const auto look = [&refusals](QDialog& dialog) {
            refusals << dialog.findChild<QLabel*>(u"lblRefusal"_s)->text();
            QVERIFY(dialog.findChild<QLineEdit*>(u"txtPassword"_s)->text().isEmpty());
        };
        const auto lookAndType = [&look](const QString& user, const QString& password) {
            return [=](QDialog& dialog) {
                look(dialog);
                Type(user, password)(dialog);
            };
        };
        Play({Type(clsCurrentUser::kDemoUser, u"wrong"_s),
              lookAndType(u"nobody'; DROP TABLE x --"_s, u"wrong"_s),
              lookAndType(clsCurrentUser::kDemoUser, clsCurrentUser::kDemoPassword)});
        m_user->ShowMain();
        QVERIFY(m_user->Connected());
        QCOMPARE(refusals.size(), 2);
        QVERIFY(!refusals[0].isEmpty());
        QCOMPARE(refusals[0], refusals[1]);
    }

    void ShowMain_cancelledLeavesNobodyConnected() {
        Play({[](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }});
        m_user->ShowMain();
        QVERIFY(!m_user->Connected());
        QVERIFY(!m_user->SQLConnection());
    }

    void ShowMain_asksANewHospitalsFirstUser() {
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        const auto fill = [](const QString& repeat) {
            return [repeat](QDialog& dialog) {
                for (const auto& [box, text] : {std::pair("txtHospital", "St. Anne's"),
                                                {"txtUser", "head.nurse"},
                                                {"txtName", "Head Nurse"},
                                                {"txtEmployeeCode", "E001"},
                                                {"txtPassword", "long enough"}})
                    dialog.findChild<QLineEdit*>(QLatin1String(box))->setText(QLatin1String(text));
                dialog.findChild<QLineEdit*>(u"txtRepeat"_s)->setText(repeat);
                QTest::keyClick(&dialog, Qt::Key_Return);
            };
        };
        Play({Type(u"x"_s, u"y"_s, 1), fill(u"another"_s), fill(u"long enough"_s)});
        m_user->ShowMain();
        QVERIFY(m_user->Connected());
        QCOMPARE(m_user->employeename(), u"Head Nurse"_s);
        QCOMPARE(boxes.Leftovers(), QStringList());
    }

    void ShowMain_namesABrokenFile_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("foreign") << QByteArray(5000, 'x');
    }

    void ShowMain_namesABrokenFile() {
        QFETCH(QByteArray, content);
        const QString path = m_dir->filePath(u"own.db"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        QString said;
        Play({Type(u"x"_s, u"y"_s, 1), Leave(said)});
        m_user->ShowMain();
        QVERIFY(!m_user->Connected());
        QVERIFY2(said.contains(path), qPrintable(said));
    }

    void ShowMain_letsAReadOnlyHospitalBeLookedAt() {
        if (const auto failure = RunAsOrdinaryUser()) {
            QCOMPARE(*failure, QString());
            return;
        }
        QVERIFY(QFile::setPermissions(m_demo->File(), QFile::ReadOwner));
        Play({Type(clsCurrentUser::kDemoUser, clsCurrentUser::kDemoPassword)});
        m_user->ShowMain();
        QVERIFY(m_user->Connected() && m_user->SQLConnection()->IsReadOnly());
        QVERIFY_THROWS_EXCEPTION(
            base::DatabaseError,
            m_user->SQLConnection()->Execute(
                u"CLINICAL_AREA..sp_CAPD_RegisterPatient '200001','','','','','',"
                "'','','','','','','','','','','','','','','','','','','','',"
                "'4601','','N'"_s));
    }

    void ShowMain_neverReplacesAHospitalThatIsGone() {
        const QString path = m_dir->filePath(u"own.db"_s);
        Play({Type(u"x"_s, u"y"_s, 1),
              [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
              [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }});
        m_user->ShowMain();
        QVERIFY(QFile::exists(path));
        QVERIFY(QFile::remove(path));
        QString said;
        Play({Type(u"x"_s, u"y"_s, 1), Leave(said)});
        m_user->ShowMain();
        QVERIFY2(said.contains(u"Restore it"_s), qPrintable(said));
        QVERIFY(!QFile::exists(path));
    }

private:
    using Act = std::function<void(QDialog&)>;
    // Runs each act on the dialog that is on the screen by then.
    static void Play(std::vector<Act> acts) {
        if (acts.empty())
            return;
        QTimer::singleShot(20, [acts] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (qobject_cast<QProgressDialog*>(dialog))
                dialog = nullptr;
            Play(dialog ? std::vector<Act>(acts.begin() + 1, acts.end()) : acts);
            if (dialog)
                acts.front()(*dialog);
        });
    }

    static Act Type(const QString& user, const QString& password, int source = 0) {
        return [=](QDialog& dialog) {
            dialog.findChild<QComboBox*>(u"cboSource"_s)->setCurrentIndex(source);
            auto* box = dialog.findChild<QLineEdit*>(u"txtUser"_s);
            box->clear();
            QTest::keyClicks(box, user);
            QTest::keyClicks(dialog.findChild<QLineEdit*>(u"txtPassword"_s), password);
            QTest::keyClick(&dialog, Qt::Key_Return);
        };
    }

    // Reads why the log-in is there again, and gives up.
    static Act Leave(QString& said) {
        return [&said](QDialog& dialog) {
            said = dialog.findChild<QLabel*>(u"lblRefusal"_s)->text();
            dialog.reject();
        };
    }

    QTemporaryDir m_settings;
    std::unique_ptr<TestHospital> m_demo;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<clsCurrentUser> m_user;
};

QTEST_MAIN(tst_clsCurrentUser)
#include "tst_clsCurrentUser.moc"
