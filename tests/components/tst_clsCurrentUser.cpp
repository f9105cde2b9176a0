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
#include "db/Recordset.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;
using components::clsCurrentUser;

// The log-in dialog, driven by keys.
class tst_clsCurrentUser final : public QObject {
    Q_OBJECT

    using Act = std::function<void(QDialog&)>;

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

    void ShowMain_admitsNobodyWithoutThePassword() {
        const Act escape = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
        ShowMain({escape});
        QVERIFY(!m_user->Connected() && !m_user->SQLConnection());
        QStringList refusals;
        const auto lookAndType = [&](const QString& user, const QString& password) {
            return [&, user, password](QDialog& dialog) {
                refusals << Refusal(dialog)->text();
                QVERIFY(Box(dialog, "txtPassword")->text().isEmpty());
                Type(user, password)(dialog);
            };
        };
        const QString& demoUser = clsCurrentUser::kDemoUser;
        ShowMain({Type(demoUser, u"wrong"_s),
                  lookAndType(u"nobody'; DROP TABLE x --"_s, u"wrong"_s),
                  lookAndType(demoUser, clsCurrentUser::kDemoPassword)});
        QVERIFY(m_user->Connected() && m_user->SQLConnection());
        QVERIFY(!m_user->EmployeeCode().isEmpty());
        QCOMPARE(m_user->ServerName(), components::kPracticeData);
        QCOMPARE(refusals.size(), 2);
        QVERIFY(!refusals[0].isEmpty());
        QCOMPARE(refusals[0], refusals[1]);
    }

    void ShowMain_listsTheServersAndTestsThem() {
        QStringList hints, said;
        bool refused = true;
        ShowMain({[&](QDialog& dialog) {
            for (const QString& server :
                 {u"Ward"_s, u"A central server with a name of its own, over 32 signs"_s}) {
                Choose(dialog, u"Server: "_s + server);
                dialog.findChild<QPushButton*>(u"cmdTest"_s)->click();
                hints << dialog.findChild<QLabel*>(u"lblDemo"_s)->text();
                said << Refusal(dialog)->text();
            }
            QTest::keyClick(Box(dialog, "txtPassword"), Qt::Key_X);
            refused = Refusal(dialog)->isVisible();
            dialog.reject();
        }});
        QCOMPARE(hints.join(QString()), QString());
        QVERIFY2(said.value(0).contains(u"hospital is not there"_s), qPrintable(said.value(0)));
        QVERIFY(!said.value(1).isEmpty());
        QVERIFY(!refused);
    }

    void ShowMain_saysWhenTheLastServerIsGone() {
        QSettings(QSettings::IniFormat, QSettings::UserScope, u"capd"_s)
            .setValue(u"login/source"_s, u"Server: Gone"_s);
        QString said;
        ShowMain({Leave(said)});
        QVERIFY2(said.contains(u"Server: Gone"_s), qPrintable(said));
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
                    Box(dialog, box)->setText(QLatin1String(text));
                Box(dialog, "txtRepeat")->setText(repeat);
                QTest::keyClick(&dialog, Qt::Key_Return);
            };
        };
        ShowMain({kOwn, fill(u"another"_s), fill(u"long enough"_s)});
        QVERIFY(m_user->Connected());
        QCOMPARE(m_user->employeename() + m_user->EmployeeCode(), u"Head NurseE001"_s);
        QCOMPARE(m_user->SQLConnection()
                     ->Execute(u"SELECT Company FROM PATIENT_DATA..tbHospitalInfo"_s)
                     ->Fields(0)
                     .Text(),
                 u"St. Anne's"_s);
        QCOMPARE(boxes.Leftovers(), QStringList());
    }

    void ShowMain_namesABrokenFile() {
        const QString path = m_dir->filePath(u"own.db"_s);
        for (const QByteArray& content : {QByteArray(), QByteArray(5000, 'x')}) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
            file.close();
            QString said;
            ShowMain({kOwn, Leave(said)});
            QVERIFY(!m_user->Connected());
            QVERIFY2(said.contains(path), qPrintable(said));
        }
    }

    void ShowMain_letsAReadOnlyHospitalBeLookedAt() {
        if (const auto failure = RunAsOrdinaryUser()) {
            QCOMPARE(*failure, QString());
            return;
        }
        QVERIFY(QFile::setPermissions(m_demo->File(), QFile::ReadOwner));
        ShowMain({Type(clsCurrentUser::kDemoUser, clsCurrentUser::kDemoPassword)});
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
        const Act reject = [](QDialog& dialog) { dialog.reject(); };
        ShowMain({kOwn, reject, reject});
        QVERIFY(QFile::exists(path));
        QVERIFY(QFile::remove(path));
        QString said;
        ShowMain({kOwn, Leave(said)});
        QVERIFY2(said.contains(u"Restore it"_s), qPrintable(said));
        QVERIFY(!QFile::exists(path));
    }

private:
    // Runs each act on the dialog that is on the screen by then; one in which an act still runs is
    // busy, with making a hospital.
    static void Play(std::vector<Act> acts) {
        if (acts.empty())
            return;
        QTimer::singleShot(20, [acts] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog || dialog == s_busy || qobject_cast<QProgressDialog*>(dialog))
                return Play(acts);
            Play(std::vector<Act>(acts.begin() + 1, acts.end()));
            const QScopedValueRollback working(s_busy, static_cast<const QWidget*>(dialog));
            acts.front()(*dialog);
        });
    }

    void ShowMain(const std::vector<Act>& acts) {
        Play(acts);
        m_user->ShowMain();
    }

    static QLineEdit* Box(QDialog& dialog, const char* name) {
        return dialog.findChild<QLineEdit*>(QLatin1String(name));
    }
    static QLabel* Refusal(QDialog& dialog) { return dialog.findChild<QLabel*>(u"lblRefusal"_s); }
    static void Choose(QDialog& dialog, const QString& source) {
        dialog.findChild<QComboBox*>(u"cboSource"_s)->setCurrentText(source);
    }

    static Act Type(const QString& user, const QString& password, int source = 0) {
        return [=](QDialog& dialog) {
            dialog.findChild<QComboBox*>(u"cboSource"_s)->setCurrentIndex(source);
            Box(dialog, "txtUser")->clear();
            QTest::keyClicks(Box(dialog, "txtUser"), user);
            QTest::keyClicks(Box(dialog, "txtPassword"), password);
            QTest::keyClick(&dialog, Qt::Key_Return);
        };
    }

    // Reads why the log-in is there again, and gives up.
    static Act Leave(QString& said) {
        return [&said](QDialog& dialog) {
            said = Refusal(dialog)->text();
            dialog.reject();
        };
    }

    /// Somebody at the hospital of this workstation.
    const Act kOwn = Type(u"x"_s, u"y"_s, 1);
    static inline const QWidget* s_busy = nullptr;
    QTemporaryDir m_settings;
    std::unique_ptr<TestHospital> m_demo;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<clsCurrentUser> m_user;
};

QTEST_MAIN(tst_clsCurrentUser)
#include "tst_clsCurrentUser.moc"
