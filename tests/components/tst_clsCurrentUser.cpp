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

using components::clsCurrentUser;

// The log-in dialog, driven by keys.
class tst_clsCurrentUser final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QFile sources(m_settings.filePath(QStringLiteral("odbc.ini")));
        QVERIFY(sources.open(QIODevice::WriteOnly));
        sources.write("[Ward]\nDriver=SQLite3\nDatabase=" + m_settings.path().toUtf8() +
                      "/ward.db\n[A central server with a name of its own, over 32 signs]\n"
                      "Driver=FreeTDS\nServer=127.0.0.1\nPort=9\n");
        sources.close();
        qputenv("ODBCINI", sources.fileName().toUtf8());
    }
    void init();
    void ShowMain_logsIn();
    void ShowMain_listsTheServersAndTestsThem();
    void ShowMain_saysWhenTheLastServerIsGone();
    void ShowMain_refusesAndAsksAgain();
    void ShowMain_cancelledLeavesNobodyConnected();
    void ShowMain_asksANewHospitalsFirstUser();
    void ShowMain_namesABrokenFile_data();
    void ShowMain_namesABrokenFile();
    void ShowMain_letsAReadOnlyHospitalBeLookedAt();
    void ShowMain_neverReplacesAHospitalThatIsGone();

private:
    using Act = std::function<void(QDialog&)>;
    // Runs each act on the dialog that is on the screen by then.
    static void Play(std::vector<Act> acts);
    static Act Type(const QString& user, const QString& password, int source = 0);

    static Act Leave(QString& said);

    QTemporaryDir m_settings;
    std::unique_ptr<TestHospital> m_demo;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<clsCurrentUser> m_user;
};

void tst_clsCurrentUser::init() {
    QSettings settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("capd"));
    settings.clear();
    m_demo = std::make_unique<TestHospital>(TestHospital::On::File);
    m_dir = std::make_unique<QTemporaryDir>();
    components::HospitalFiles::Place(m_demo->File(), m_dir->filePath(QStringLiteral("own.db")));
    m_user = std::make_unique<clsCurrentUser>();
    m_user->SetPasswordDeptCode(QStringLiteral("46"));
}

void tst_clsCurrentUser::Play(std::vector<Act> acts) {
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

tst_clsCurrentUser::Act tst_clsCurrentUser::Type(const QString& user, const QString& password,
                                                 int source) {
    return [=](QDialog& dialog) {
        dialog.findChild<QComboBox*>(QStringLiteral("cboSource"))->setCurrentIndex(source);
        auto* box = dialog.findChild<QLineEdit*>(QStringLiteral("txtUser"));
        box->clear();
        QTest::keyClicks(box, user);
        QTest::keyClicks(dialog.findChild<QLineEdit*>(QStringLiteral("txtPassword")), password);
        QTest::keyClick(&dialog, Qt::Key_Return);
    };
}

// Reads why the log-in is there again, and gives up.
tst_clsCurrentUser::Act tst_clsCurrentUser::Leave(QString& said) {
    return [&said](QDialog& dialog) {
        said = dialog.findChild<QLabel*>(QStringLiteral("lblRefusal"))->text();
        dialog.reject();
    };
}

void tst_clsCurrentUser::ShowMain_logsIn() {
    Play({Type(clsCurrentUser::kDemoUser, clsCurrentUser::kDemoPassword)});
    m_user->ShowMain();
    QVERIFY(m_user->Connected());
    QVERIFY(m_user->SQLConnection());
    QVERIFY(!m_user->EmployeeCode().isEmpty());
    QCOMPARE(m_user->ServerName(), components::kPracticeData);
}

void tst_clsCurrentUser::ShowMain_listsTheServersAndTestsThem() {
    const QString longName =
        QStringLiteral("A central server with a name of its own, over 32 signs");
    const auto choose = [](QDialog& dialog, const QString& name) {
        auto* sources = dialog.findChild<QComboBox*>(QStringLiteral("cboSource"));
        sources->setCurrentIndex(sources->findText(QStringLiteral("Server: ") + name));
        dialog.findChild<QPushButton*>(QStringLiteral("cmdTest"))->click();
    };
    QStringList said;
    bool refused = true;
    const auto look = [&](QDialog& dialog) {
        auto* refusal = dialog.findChild<QLabel*>(QStringLiteral("lblRefusal"));
        choose(dialog, QStringLiteral("Ward"));
        said << dialog.findChild<QLabel*>(QStringLiteral("lblDemo"))->text() << refusal->text();
        choose(dialog, longName);
        said << dialog.findChild<QLabel*>(QStringLiteral("lblDemo"))->text() << refusal->text();
        QTest::keyClick(dialog.findChild<QLineEdit*>(QStringLiteral("txtPassword")), Qt::Key_X);
        refused = refusal->isVisible();
        dialog.reject();
    };
    Play({look});
    m_user->ShowMain();
    QCOMPARE(said.value(0) + said.value(2), QString());
    QVERIFY2(said.value(1).contains(QStringLiteral("hospital is not there")),
             qPrintable(said.value(1)));
    QVERIFY(!said.value(3).isEmpty());
    QVERIFY(!refused);
}

void tst_clsCurrentUser::ShowMain_saysWhenTheLastServerIsGone() {
    QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("capd"))
        .setValue(QStringLiteral("login/source"), QStringLiteral("Server: Gone"));
    QString said;
    Play({Leave(said)});
    m_user->ShowMain();
    QVERIFY2(said.contains(QStringLiteral("Server: Gone")), qPrintable(said));
}

void tst_clsCurrentUser::ShowMain_refusesAndAsksAgain() {
    QStringList refusals;
    const auto look = [&refusals](QDialog& dialog) {
        refusals << dialog.findChild<QLabel*>(QStringLiteral("lblRefusal"))->text();
        QVERIFY(dialog.findChild<QLineEdit*>(QStringLiteral("txtPassword"))->text().isEmpty());
    };
    const auto lookAndType = [&look](const QString& user, const QString& password) {
        return [=](QDialog& dialog) {
            look(dialog);
            Type(user, password)(dialog);
        };
    };
    Play({Type(clsCurrentUser::kDemoUser, QStringLiteral("wrong")),
          lookAndType(QStringLiteral("nobody'; DROP TABLE x --"), QStringLiteral("wrong")),
          lookAndType(clsCurrentUser::kDemoUser, clsCurrentUser::kDemoPassword)});
    m_user->ShowMain();
    QVERIFY(m_user->Connected());
    QCOMPARE(refusals.size(), 2);
    QVERIFY(!refusals[0].isEmpty());
    QCOMPARE(refusals[0], refusals[1]);
}

void tst_clsCurrentUser::ShowMain_cancelledLeavesNobodyConnected() {
    Play({[](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }});
    m_user->ShowMain();
    QVERIFY(!m_user->Connected());
    QVERIFY(!m_user->SQLConnection());
}

void tst_clsCurrentUser::ShowMain_asksANewHospitalsFirstUser() {
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
            dialog.findChild<QLineEdit*>(QStringLiteral("txtRepeat"))->setText(repeat);
            QTest::keyClick(&dialog, Qt::Key_Return);
        };
    };
    Play({Type(QStringLiteral("x"), QStringLiteral("y"), 1), fill(QStringLiteral("another")),
          fill(QStringLiteral("long enough"))});
    m_user->ShowMain();
    QVERIFY(m_user->Connected());
    QCOMPARE(m_user->employeename(), QStringLiteral("Head Nurse"));
    QCOMPARE(boxes.Leftovers(), QStringList());
}

void tst_clsCurrentUser::ShowMain_namesABrokenFile_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("foreign") << QByteArray(5000, 'x');
}

void tst_clsCurrentUser::ShowMain_namesABrokenFile() {
    QFETCH(QByteArray, content);
    const QString path = m_dir->filePath(QStringLiteral("own.db"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    QString said;
    Play({Type(QStringLiteral("x"), QStringLiteral("y"), 1), Leave(said)});
    m_user->ShowMain();
    QVERIFY(!m_user->Connected());
    QVERIFY2(said.contains(path), qPrintable(said));
}

void tst_clsCurrentUser::ShowMain_letsAReadOnlyHospitalBeLookedAt() {
    if (const auto failure = RunAsOrdinaryUser()) {
        QCOMPARE(*failure, QString());
        return;
    }
    QVERIFY(QFile::setPermissions(m_demo->File(), QFile::ReadOwner));
    Play({Type(clsCurrentUser::kDemoUser, clsCurrentUser::kDemoPassword)});
    m_user->ShowMain();
    QVERIFY(m_user->Connected() && m_user->SQLConnection()->IsReadOnly());
    QVERIFY_THROWS_EXCEPTION(base::DatabaseError,
                             m_user->SQLConnection()->Execute(QStringLiteral(
                                 "CLINICAL_AREA..sp_CAPD_RegisterPatient '200001','','','','','',"
                                 "'','','','','','','','','','','','','','','','','','','','',"
                                 "'4601','','N'")));
}

void tst_clsCurrentUser::ShowMain_neverReplacesAHospitalThatIsGone() {
    const QString path = m_dir->filePath(QStringLiteral("own.db"));
    Play({Type(QStringLiteral("x"), QStringLiteral("y"), 1),
          [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
          [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }});
    m_user->ShowMain();
    QVERIFY(QFile::exists(path));
    QVERIFY(QFile::remove(path));
    QString said;
    Play({Type(QStringLiteral("x"), QStringLiteral("y"), 1), Leave(said)});
    m_user->ShowMain();
    QVERIFY2(said.contains(QStringLiteral("Restore it")), qPrintable(said));
    QVERIFY(!QFile::exists(path));
}

QTEST_MAIN(tst_clsCurrentUser)
#include "tst_clsCurrentUser.moc"
