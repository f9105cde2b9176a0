#include <sys/resource.h>

#include <QProcess>
#include <QtTest>
#include <csignal>

#include "OrdinaryUser.h"
#include "Rows.h"
#include "TestHospital.h"
#include "base/Errors.h"
#include "db/EmbeddedDriver.h"
#include "db/Recordset.h"
#include "deploy/DeployedScripts.h"
#include "deploy/HospitalFile.h"
#include "deploy/Rows.h"

using namespace Qt::StringLiterals;
using deploy::Contents;
using deploy::Script;
using deploy::ScriptSet;

namespace {

QString Deployed() {
    return u"USE CLINICAL_AREA\nGO\nCREATE TABLE tbDeployedScript (\n"
           "    ScriptName varchar(200) NOT NULL PRIMARY KEY,\n"
           "    Checksum varchar(64) NOT NULL,\n    DeployedAt datetime NOT NULL\n)\nGO\n"_s;
}

QString PatientTable(const QString& moreColumns = {}) {
    return u"USE PATIENT_DATA\nGO\nCREATE TABLE tbPatient (\n"
           "    HospNum varchar(10) NOT NULL PRIMARY KEY,\n    LastName varchar(40) NULL%1\n)"
           "\nGO\n"_s.arg(moreColumns);
}

QString Greeting(const QString& answer) {
    return u"USE PATIENT_DATA\nGO\nDROP PROCEDURE IF EXISTS sp_Answer\nGO\n"
           "CREATE PROCEDURE sp_Answer AS\nBEGIN\n    SET NOCOUNT ON;\n    SELECT '%1' AS "
           "Answer;\nEND\nGO\n"_s.arg(answer);
}

/// A unit's first version: one table, one procedure.
std::vector<Script> FirstScripts() {
    return {{u"schema/00_deploy.sql"_s, Deployed()},
            {u"schema/10_patient_data.sql"_s, PatientTable()},
            {u"procedures/PATIENT_DATA/sp_Answer.sql"_s, Greeting(u"first"_s)},
            {u"demo/10_patients.sql"_s,
             u"USE PATIENT_DATA\nGO\nINSERT INTO tbPatient (HospNum, LastName) "
             "VALUES ('1', 'Peña')\nGO\n"_s}};
}

const QString kMigration = u"migrations/0001_birth_date.sql"_s;

/// The second version: one more column, reached by a migration, and a changed procedure.
std::vector<Script> SecondScripts() {
    std::vector<Script> scripts = FirstScripts();
    scripts[1].Text = PatientTable(u",\n    BirthDate datetime NULL"_s);
    scripts[2].Text = Greeting(u"second"_s);
    scripts.push_back({kMigration,
                       u"USE PATIENT_DATA\nGO\nALTER TABLE tbPatient ADD BirthDate datetime NULL\n"
                       "GO\nUPDATE tbPatient SET BirthDate = '2/5/1960'\nGO\n"_s});
    return scripts;
}

QString Ask(const QString& file, const QString& command) {
    db::EmbeddedDriver driver(file);
    driver.SetDefaultDatabase(u"CLINICAL_AREA"_s);
    const deploy::Rows rows = deploy::Rows::Ask(driver, command);
    return rows.Cells().empty() ? QString() : rows.Cells().front().front();
}

const QString kAnswer = u"PATIENT_DATA..sp_Answer"_s;
const QString kCountMigrations =
    u"SELECT COUNT(*) FROM tbDeployedScript WHERE ScriptName = '%1'"_s.arg(kMigration);

/// What an action was refused with; empty where it was not.
template <typename Action>
QString RefusalOf(Action action) {
    try {
        action();
    } catch (const base::DatabaseError& error) {
        return error.Description();
    }
    return {};
}

/// Ends this process in the middle of making a file, as a power cut would.
int MakeAndDie(const QString& file) {
    deploy::MakeHospital(
        file, Contents::Demo,
        [](int done, int) {
            if (done == 2)
                std::_Exit(9);
        },
        ScriptSet(FirstScripts()));
    return 0;
}

}  // namespace

class tst_HospitalFile : public QObject {
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void Make_leavesOneCompleteFile() {
        QList<int> steps;
        int all = 0;
        deploy::MakeHospital(
            File(), Contents::Demo,
            [&](int done, int count) {
                steps << done;
                all = count;
            },
            ScriptSet(FirstScripts()));
        QCOMPARE(steps, QList<int>({0, 1, 2, 3, 4}));
        QCOMPARE(all, 4);
        QCOMPARE(Present(), QStringList{u"hospital"_s});
        QCOMPARE(Ask(File(), u"SELECT LastName FROM PATIENT_DATA..tbPatient"_s), u"Peña"_s);
        QCOMPARE(Ask(File(), kAnswer), u"first"_s);

        const QString empty = m_folder->filePath(u"empty"_s);
        deploy::MakeHospital(empty, Contents::Empty, {}, ScriptSet(FirstScripts()));
        QCOMPARE(Ask(empty, u"SELECT COUNT(*) FROM PATIENT_DATA..tbPatient"_s), u"0"_s);
    }

    void Make_ofTheOwnScriptsNeedsNoUpgrade() {
        deploy::MakeHospital(File(), Contents::Empty);
        QVERIFY(!deploy::UpgradeHospital(File()));
        QVERIFY(!deploy::UpgradeHospital(File(), ScriptSet::Own()));
        QVERIFY(ScriptSet::Own().Procedures().size() > 10);
    }

    void Make_thatFailsLeavesNothing() {
        std::vector<Script> scripts = FirstScripts();
        scripts[2].Text += u"SELEKT 1\nGO\n"_s;
        const QString refusal = RefusalOf([&] { Make(scripts); });
        QVERIFY2(refusal.contains(File()), qPrintable(refusal));
        QVERIFY2(refusal.contains(scripts[2].Name), qPrintable(refusal));
        QCOMPARE(Present(), QStringList());
    }

    void Make_thatIsStoppedByItsCallerLeavesNothing() {
        QVERIFY_EXCEPTION_THROWN(deploy::MakeHospital(
                                     File(), Contents::Demo,
                                     [](int done, int) {
                                         if (done == 3)
                                             throw std::runtime_error("stopped");
                                     },
                                     ScriptSet(FirstScripts())),
                                 std::runtime_error);
        QCOMPARE(Present(), QStringList());
    }

    void Make_thatWasKilledIsMadeGoodByTheNext() {
        const QStringList arguments{u"--make-and-die"_s, File()};
        QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(), arguments), 9);
        QVERIFY(!QFile::exists(File()));
        QVERIFY(!Present().isEmpty());
        Make(FirstScripts());
        QCOMPARE(Present(), QStringList{u"hospital"_s});
        QCOMPARE(Ask(File(), kAnswer), u"first"_s);
    }

    void Make_onAFullDiskLeavesNothing() {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit full = before;
        full.rlim_cur = 40000;
        setrlimit(RLIMIT_FSIZE, &full);
        const QString refusal = RefusalOf([&] { Make(FirstScripts()); });
        setrlimit(RLIMIT_FSIZE, &before);
        QVERIFY2(refusal.contains(File()), qPrintable(refusal));
        QCOMPARE(Present(), QStringList());
    }

    void Make_refusesAnExistingFileAndALockedFolder() {
        QFile present(File());
        QVERIFY(present.open(QIODevice::WriteOnly) && present.write("notes") == 5);
        present.close();
        QVERIFY(RefusalOf([&] { Make(FirstScripts()); }).contains(File()));
        QCOMPARE(QFileInfo(File()).size(), 5);
        // A file where the folder should be: nothing can be made there, whoever asks.
        const QString inside = File() + u"/hospital"_s;
        const QString refusal = RefusalOf(
            [&] { deploy::MakeHospital(inside, Contents::Empty, {}, ScriptSet(FirstScripts())); });
        QVERIFY2(refusal.contains(inside), qPrintable(refusal));
    }

    void Make_byTwoProgramsMakesOneFile() {
        const QStringList arguments{u"--make"_s, File()};
        QProcess first;
        QProcess second;
        first.start(QCoreApplication::applicationFilePath(), arguments);
        second.start(QCoreApplication::applicationFilePath(), arguments);
        QVERIFY(first.waitForFinished() && second.waitForFinished());
        // Whoever comes when the file is complete is told so; whoever comes earlier waits.
        QVERIFY(first.exitCode() == 0 || second.exitCode() == 0);
        QCOMPARE(Present(), QStringList{u"hospital"_s});
        QCOMPARE(Ask(File(), u"SELECT COUNT(*) FROM PATIENT_DATA..tbPatient"_s), u"1"_s);
    }

    void Upgrade_runsWhatTheFileHasNotHad() {
        Make(FirstScripts());
        const ScriptSet second(SecondScripts());
        QVERIFY(deploy::UpgradeHospital(File(), second));
        QCOMPARE(Ask(File(), u"SELECT BirthDate FROM PATIENT_DATA..tbPatient"_s),
                 u"1960-02-05 00:00:00.000"_s);
        QCOMPARE(Ask(File(), kAnswer), u"second"_s);
        QCOMPARE(Ask(File(), kCountMigrations), u"1"_s);
        QVERIFY(!deploy::UpgradeHospital(File(), second));
    }

    void Upgrade_dropsWhatTheVersionNoLongerHas() {
        Make(FirstScripts());
        std::vector<Script> scripts = FirstScripts();
        std::erase_if(
            scripts, [](const Script& script) { return script.Name.startsWith(u"procedures/"_s); });
        QVERIFY(deploy::UpgradeHospital(File(), ScriptSet(scripts)));
        QVERIFY(RefusalOf([&] { Ask(File(), kAnswer); }).contains(u"sp_Answer"_s));
        db::EmbeddedDriver driver(File());
        QVERIFY(RefusalOf([&] {
                    deploy::Deployment(driver, ScriptSet::Own(), Contents::Demo);
                }).contains(u"another hospital"_s));
    }

    // The caller's script comes first by its name, and is checked against what it calls.
    void Upgrade_letsAProcedureTakeMoreArguments() {
        const auto script = [](const char* name, const char* parameters, const char* body) {
            return Script{u"procedures/PATIENT_DATA/%1.sql"_s.arg(QLatin1String(name)),
                          u"USE PATIENT_DATA\nGO\nDROP PROCEDURE IF EXISTS %1\nGO\n"
                          "CREATE PROCEDURE %1 %2 AS\nBEGIN\n    %3;\nEND\nGO\n"_s.arg(
                              QLatin1String(name), QLatin1String(parameters), QLatin1String(body))};
        };
        std::vector<Script> scripts = FirstScripts();
        scripts.push_back(script("sp_Ask", "", "EXEC sp_Echo 'one'"));
        scripts.push_back(script("sp_Echo", "@A varchar(10)", "SELECT @A AS Answer"));
        Make(scripts);
        scripts[scripts.size() - 2] = script("sp_Ask", "", "EXEC sp_Echo 'one', 'two'");
        scripts.back() = script("sp_Echo", "@A varchar(10), @B varchar(10)", "SELECT @B AS Answer");
        QVERIFY(deploy::UpgradeHospital(File(), ScriptSet(scripts)));
        QCOMPARE(Ask(File(), u"PATIENT_DATA..sp_Ask"_s), u"two"_s);
    }

    void Upgrade_marksTheMigrationsOfANewFileAsApplied() {
        Make(SecondScripts());
        QCOMPARE(Ask(File(), kCountMigrations), u"1"_s);
        std::vector<Script> third = SecondScripts();
        third[2].Text = Greeting(u"third"_s);
        QVERIFY(deploy::UpgradeHospital(File(), ScriptSet(third)));
        QCOMPARE(Ask(File(), kAnswer), u"third"_s);
    }

    void Upgrade_thatFailsLeavesTheFileAsItWas() {
        Make(FirstScripts());
        std::vector<Script> scripts = SecondScripts();
        scripts.push_back({u"migrations/0002_bad.sql"_s,
                           u"USE PATIENT_DATA\nGO\nUPDATE tbNowhere SET a = 1\nGO\n"_s});
        const QString refusal =
            RefusalOf([&] { deploy::UpgradeHospital(File(), ScriptSet(scripts)); });
        QVERIFY2(refusal.contains(File()) && refusal.contains(u"0002_bad.sql"_s),
                 qPrintable(refusal));
        QCOMPARE(Ask(File(), kCountMigrations), u"0"_s);
        QCOMPARE(Ask(File(), kAnswer), u"first"_s);
        QVERIFY(deploy::UpgradeHospital(File(), ScriptSet(SecondScripts())));
    }

    void Upgrade_refusesTablesThatLackSomething_data() {
        Columns<QString, QString>();
        QTest::newRow("column") << PatientTable(u",\n    Sex varchar(1) NULL"_s)
                                << u"Table PATIENT_DATA..tbPatient lacks the column Sex."_s;
        QTest::newRow("table") << PatientTable() +
                                      u"CREATE TABLE tbDoctor (\n    Code "
                                      "int NOT NULL PRIMARY KEY\n)\nGO\n"_s
                               << u"Table PATIENT_DATA..tbDoctor is missing."_s;
        QTest::newRow("kind") << PatientTable().replace(u"LastName varchar(40)"_s,
                                                        u"LastName int"_s)
                              << u"Column LastName of table PATIENT_DATA..tbPatient is of another "
                                 "kind."_s;
    }

    void Upgrade_refusesTablesThatLackSomething() {
        auto [needed, refusal] = Fetch<QString, QString>();
        Make(FirstScripts());
        std::vector<Script> scripts = FirstScripts();
        scripts[1].Text = needed;
        const QString text =
            RefusalOf([&] { deploy::UpgradeHospital(File(), ScriptSet(scripts)); });
        QVERIFY2(text.contains(File()) && text.contains(refusal), qPrintable(text));
    }

    void Upgrade_refusesAFileOfANewerVersion() {
        Make(SecondScripts());
        const QString text =
            RefusalOf([&] { deploy::UpgradeHospital(File(), ScriptSet(FirstScripts())); });
        QVERIFY2(text.contains(File()) && text.contains(u"newer version"_s), qPrintable(text));
        QCOMPARE(Ask(File(), kAnswer), u"second"_s);
    }

    void Upgrade_refusesWhatIsNoHospital_data() {
        QTest::addColumn<QByteArray>("contents");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("a letter") << QByteArray("Dear doctor, ").repeated(500);
        QTest::newRow("truncated") << QByteArray();
    }

    void Upgrade_refusesWhatIsNoHospital() {
        QFETCH(QByteArray, contents);
        const ScriptSet scripts(FirstScripts());
        QVERIFY(RefusalOf([&] { deploy::UpgradeHospital(File(), scripts); }).contains(File()));
        if (contents.isNull()) {
            Make(FirstScripts());
            QVERIFY(QFile::resize(File(), QFileInfo(File()).size() / 2));
        } else {
            QFile file(File());
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
        }
        const QString text = RefusalOf([&] { deploy::UpgradeHospital(File(), scripts); });
        QVERIFY2(text.contains(File()), qPrintable(text));
        QCOMPARE(Present(), QStringList{u"hospital"_s});
    }

    void Upgrade_ofAReadOnlyFileNeedsNothingOrSaysSo() {
        if (const auto failure = RunAsOrdinaryUser()) {
            QCOMPARE(*failure, QString());
            return;
        }
        Make(FirstScripts());
        QVERIFY(QFile::setPermissions(File(), QFile::ReadOwner));
        QVERIFY(!QFileInfo(File()).isWritable());
        QVERIFY(!deploy::UpgradeHospital(File(), ScriptSet(FirstScripts())));
        const QString text =
            RefusalOf([&] { deploy::UpgradeHospital(File(), ScriptSet(SecondScripts())); });
        QVERIFY2(text.contains(File()), qPrintable(text));
    }

    void Upgrade_byTwoProgramsRunsOnce() {
        Make(FirstScripts());
        const QStringList arguments{u"--upgrade"_s, File()};
        QProcess first;
        QProcess second;
        first.start(QCoreApplication::applicationFilePath(), arguments);
        second.start(QCoreApplication::applicationFilePath(), arguments);
        QVERIFY(first.waitForFinished() && second.waitForFinished());
        QCOMPARE(first.exitCode(), 0);
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(Ask(File(), kAnswer), u"second"_s);
        QCOMPARE(Ask(File(), kCountMigrations), u"1"_s);
    }

    void Open_bringsAnOldFileUpToDate() {
        std::vector<Script> scripts = ScriptSet::Own().Schema();
        const std::vector<Script>& procedures = ScriptSet::Own().Procedures();
        scripts.insert(scripts.end(), procedures.begin() + 1, procedures.end());
        // Its tables are today's, so what changed them has run; but names still had to be typed
        // with their accents.
        for (const Script& migration : ScriptSet::Own().Migrations())
            if (migration.Name != u"migrations/0100_names.sql"_s)
                scripts.push_back(migration);
        for (Script& script : scripts)
            script.Text.remove(u" COLLATE Latin1_General_CI_AI"_s);
        scripts.push_back({u"demo/10_patients.sql"_s,
                           u"USE PATIENT_DATA\nGO\nINSERT INTO tbMaster (HospNum, "
                           "LastName, FirstName, Sex) VALUES ('1', 'Peña', 'Ana', "
                           "'F'), ('2', 'Pena', 'Zoe', 'F')\nGO\n"_s});
        const QString file = m_folder->filePath(u"a;{strange}=name"_s);
        deploy::MakeHospital(file, Contents::Demo, {}, ScriptSet(scripts));
        const auto connection = deploy::OpenHospital(file);
        const auto found =
            connection->Execute(u"RADIOLOGY..spGlobal_RegularPatients '0','0','PENA'"_s);
        QCOMPARE(found->RecordCount(), 2);
        QCOMPARE(found->Fields(2).Text(), u"Zoe"_s);
        const auto rows = connection->Execute(
            u"SELECT COUNT(*) FROM CLINICAL_AREA..tbDeployedScript WHERE ScriptName = '"_s +
            procedures.front().Name + u'\'');
        QCOMPARE(rows->Fields(0).Text(), u"1"_s);
        QVERIFY(!deploy::UpgradeHospital(file));
    }

    void TestHospital_copiesTheDemoHospital() {
        const TestHospital first(TestHospital::On::File);
        const TestHospital second(TestHospital::On::File);
        const QString remove = u"DELETE FROM PATIENT_DATA..tbUser"_s;
        first.Connect()->Execute(remove);
        const QString count = u"SELECT COUNT(*) FROM PATIENT_DATA..tbUser"_s;
        QCOMPARE(Ask(first.File(), count), u"0"_s);
        QVERIFY(Ask(second.File(), count) != u"0"_s);
    }

    void Own_checksumIsTheOneTakenWhenBuilt() {
        QCOMPARE(ScriptSet::Own().Checksum(), QString::fromLatin1(deploy::kOwnScriptsChecksum));
    }

private:
    QString File() const { return m_folder->filePath(u"hospital"_s); }
    QStringList Present() const {
        return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    void Make(const std::vector<Script>& scripts) {
        deploy::MakeHospital(File(), Contents::Demo, {}, ScriptSet(scripts));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        if (arguments.size() == 3 && arguments[1] == u"--make-and-die")
            return MakeAndDie(arguments[2]);
        if (arguments.size() == 3 && arguments[1] == u"--make") {
            deploy::MakeHospital(arguments[2], Contents::Demo, {}, ScriptSet(FirstScripts()));
            return 0;
        }
        if (arguments.size() == 3 && arguments[1] == u"--upgrade") {
            deploy::UpgradeHospital(arguments[2], ScriptSet(SecondScripts()));
            return 0;
        }
    } catch (const base::DatabaseError& error) {
        qWarning("%s", error.what());
        return 1;
    }
    tst_HospitalFile test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_HospitalFile.moc"
