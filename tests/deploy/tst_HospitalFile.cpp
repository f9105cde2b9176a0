#include <sys/resource.h>

#include <QProcess>
#include <QtTest>
#include <csignal>

#include "OrdinaryUser.h"
#include "TestHospital.h"
#include "base/Errors.h"
#include "db/EmbeddedDriver.h"
#include "db/Recordset.h"
#include "deploy/DeployedScripts.h"
#include "deploy/HospitalFile.h"
#include "deploy/Rows.h"

using deploy::Contents;
using deploy::Script;
using deploy::ScriptSet;

namespace {

QString Deployed() {
    return QStringLiteral(
        "USE CLINICAL_AREA\nGO\nCREATE TABLE tbDeployedScript (\n"
        "    ScriptName varchar(200) NOT NULL PRIMARY KEY,\n"
        "    Checksum varchar(64) NOT NULL,\n    DeployedAt datetime NOT NULL\n)\nGO\n");
}

QString PatientTable(const QString& moreColumns = {}) {
    return QStringLiteral(
               "USE PATIENT_DATA\nGO\nCREATE TABLE tbPatient (\n"
               "    HospNum varchar(10) NOT NULL PRIMARY KEY,\n    LastName varchar(40) NULL%1\n)"
               "\nGO\n")
        .arg(moreColumns);
}

QString Greeting(const QString& answer) {
    return QStringLiteral(
               "USE PATIENT_DATA\nGO\nDROP PROCEDURE IF EXISTS sp_Answer\nGO\n"
               "CREATE PROCEDURE sp_Answer AS\nBEGIN\n    SET NOCOUNT ON;\n    SELECT '%1' AS "
               "Answer;\nEND\nGO\n")
        .arg(answer);
}

/// A unit's first version: one table, one procedure.
std::vector<Script> FirstScripts() {
    return {{QStringLiteral("schema/00_deploy.sql"), Deployed()},
            {QStringLiteral("schema/10_patient_data.sql"), PatientTable()},
            {QStringLiteral("procedures/PATIENT_DATA/sp_Answer.sql"),
             Greeting(QStringLiteral("first"))},
            {QStringLiteral("demo/10_patients.sql"),
             QStringLiteral("USE PATIENT_DATA\nGO\nINSERT INTO tbPatient (HospNum, LastName) "
                            "VALUES ('1', 'Peña')\nGO\n")}};
}

const QString kMigration = QStringLiteral("migrations/0001_birth_date.sql");

/// The second version: one more column, reached by a migration, and a changed procedure.
std::vector<Script> SecondScripts() {
    std::vector<Script> scripts = FirstScripts();
    scripts[1].Text = PatientTable(QStringLiteral(",\n    BirthDate datetime NULL"));
    scripts[2].Text = Greeting(QStringLiteral("second"));
    scripts.push_back(
        {kMigration,
         QStringLiteral("USE PATIENT_DATA\nGO\nALTER TABLE tbPatient ADD BirthDate datetime NULL\n"
                        "GO\nUPDATE tbPatient SET BirthDate = '2/5/1960'\nGO\n")});
    return scripts;
}

QString Ask(const QString& file, const QString& command) {
    db::EmbeddedDriver driver(file);
    driver.SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    const deploy::Rows rows = deploy::Rows::Ask(driver, command);
    return rows.Cells().empty() ? QString() : rows.Cells().front().front();
}

const QString kAnswer = QStringLiteral("PATIENT_DATA..sp_Answer");
const QString kCountMigrations =
    QStringLiteral("SELECT COUNT(*) FROM tbDeployedScript WHERE ScriptName = '%1'").arg(kMigration);

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
    void init();
    void Make_leavesOneCompleteFile();
    void Make_ofTheOwnScriptsNeedsNoUpgrade();
    void Make_thatFailsLeavesNothing();
    void Make_thatIsStoppedByItsCallerLeavesNothing();
    void Make_thatWasKilledIsMadeGoodByTheNext();
    void Make_onAFullDiskLeavesNothing();
    void Make_refusesAnExistingFileAndALockedFolder();
    void Make_byTwoProgramsMakesOneFile();
    void Upgrade_runsWhatTheFileHasNotHad();
    void Upgrade_dropsWhatTheVersionNoLongerHas();
    void Upgrade_letsAProcedureTakeMoreArguments();
    void Upgrade_marksTheMigrationsOfANewFileAsApplied();
    void Upgrade_thatFailsLeavesTheFileAsItWas();
    void Upgrade_refusesTablesThatLackSomething_data();
    void Upgrade_refusesTablesThatLackSomething();
    void Upgrade_refusesAFileOfANewerVersion();
    void Upgrade_refusesWhatIsNoHospital_data();
    void Upgrade_refusesWhatIsNoHospital();
    void Upgrade_ofAReadOnlyFileNeedsNothingOrSaysSo();
    void Upgrade_byTwoProgramsRunsOnce();
    void Open_bringsAnOldFileUpToDate();
    void TestHospital_copiesTheDemoHospital();
    void Own_checksumIsTheOneTakenWhenBuilt();

private:
    QString File() const { return m_folder->filePath(QStringLiteral("hospital")); }
    QStringList Present() const {
        return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    void Make(const std::vector<Script>& scripts) {
        deploy::MakeHospital(File(), Contents::Demo, {}, ScriptSet(scripts));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_HospitalFile::init() {
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_HospitalFile::Make_leavesOneCompleteFile() {
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
    QCOMPARE(Present(), QStringList{QStringLiteral("hospital")});
    QCOMPARE(Ask(File(), QStringLiteral("SELECT LastName FROM PATIENT_DATA..tbPatient")),
             QStringLiteral("Peña"));
    QCOMPARE(Ask(File(), kAnswer), QStringLiteral("first"));

    const QString empty = m_folder->filePath(QStringLiteral("empty"));
    deploy::MakeHospital(empty, Contents::Empty, {}, ScriptSet(FirstScripts()));
    QCOMPARE(Ask(empty, QStringLiteral("SELECT COUNT(*) FROM PATIENT_DATA..tbPatient")),
             QStringLiteral("0"));
}

void tst_HospitalFile::Make_ofTheOwnScriptsNeedsNoUpgrade() {
    deploy::MakeHospital(File(), Contents::Empty);
    QVERIFY(!deploy::UpgradeHospital(File()));
    QVERIFY(!deploy::UpgradeHospital(File(), ScriptSet::Own()));
    QVERIFY(ScriptSet::Own().Procedures().size() > 10);
}

void tst_HospitalFile::Make_thatFailsLeavesNothing() {
    std::vector<Script> scripts = FirstScripts();
    scripts[2].Text += QStringLiteral("SELEKT 1\nGO\n");
    const QString refusal = RefusalOf([&] { Make(scripts); });
    QVERIFY2(refusal.contains(File()), qPrintable(refusal));
    QVERIFY2(refusal.contains(scripts[2].Name), qPrintable(refusal));
    QCOMPARE(Present(), QStringList());
}

void tst_HospitalFile::Make_thatIsStoppedByItsCallerLeavesNothing() {
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

void tst_HospitalFile::Make_thatWasKilledIsMadeGoodByTheNext() {
    const QStringList arguments{QStringLiteral("--make-and-die"), File()};
    QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(), arguments), 9);
    QVERIFY(!QFile::exists(File()));
    QVERIFY(!Present().isEmpty());
    Make(FirstScripts());
    QCOMPARE(Present(), QStringList{QStringLiteral("hospital")});
    QCOMPARE(Ask(File(), kAnswer), QStringLiteral("first"));
}

void tst_HospitalFile::Make_onAFullDiskLeavesNothing() {
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

void tst_HospitalFile::Make_refusesAnExistingFileAndALockedFolder() {
    QFile present(File());
    QVERIFY(present.open(QIODevice::WriteOnly) && present.write("notes") == 5);
    present.close();
    QVERIFY(RefusalOf([&] { Make(FirstScripts()); }).contains(File()));
    QCOMPARE(QFileInfo(File()).size(), 5);
    // A file where the folder should be: nothing can be made there, whoever asks.
    const QString inside = File() + QStringLiteral("/hospital");
    const QString refusal = RefusalOf(
        [&] { deploy::MakeHospital(inside, Contents::Empty, {}, ScriptSet(FirstScripts())); });
    QVERIFY2(refusal.contains(inside), qPrintable(refusal));
}

void tst_HospitalFile::Make_byTwoProgramsMakesOneFile() {
    const QStringList arguments{QStringLiteral("--make"), File()};
    QProcess first;
    QProcess second;
    first.start(QCoreApplication::applicationFilePath(), arguments);
    second.start(QCoreApplication::applicationFilePath(), arguments);
    QVERIFY(first.waitForFinished() && second.waitForFinished());
    // Whoever comes when the file is complete is told so; whoever comes earlier waits.
    QVERIFY(first.exitCode() == 0 || second.exitCode() == 0);
    QCOMPARE(Present(), QStringList{QStringLiteral("hospital")});
    QCOMPARE(Ask(File(), QStringLiteral("SELECT COUNT(*) FROM PATIENT_DATA..tbPatient")),
             QStringLiteral("1"));
}

void tst_HospitalFile::Upgrade_runsWhatTheFileHasNotHad() {
    Make(FirstScripts());
    const ScriptSet second(SecondScripts());
    QVERIFY(deploy::UpgradeHospital(File(), second));
    QCOMPARE(Ask(File(), QStringLiteral("SELECT BirthDate FROM PATIENT_DATA..tbPatient")),
             QStringLiteral("1960-02-05 00:00:00.000"));
    QCOMPARE(Ask(File(), kAnswer), QStringLiteral("second"));
    QCOMPARE(Ask(File(), kCountMigrations), QStringLiteral("1"));
    QVERIFY(!deploy::UpgradeHospital(File(), second));
}

void tst_HospitalFile::Upgrade_dropsWhatTheVersionNoLongerHas() {
    Make(FirstScripts());
    std::vector<Script> scripts = FirstScripts();
    std::erase_if(scripts, [](const Script& script) {
        return script.Name.startsWith(QStringLiteral("procedures/"));
    });
    QVERIFY(deploy::UpgradeHospital(File(), ScriptSet(scripts)));
    QVERIFY(RefusalOf([&] { Ask(File(), kAnswer); }).contains(QStringLiteral("sp_Answer")));
    db::EmbeddedDriver driver(File());
    QVERIFY(RefusalOf([&] {
                deploy::Deployment(driver, ScriptSet::Own(), Contents::Demo);
            }).contains(QStringLiteral("another hospital")));
}

// The caller's script comes first by its name, and is checked against what it calls.
void tst_HospitalFile::Upgrade_letsAProcedureTakeMoreArguments() {
    const auto script = [](const char* name, const char* parameters, const char* body) {
        return Script{
            QStringLiteral("procedures/PATIENT_DATA/%1.sql").arg(QLatin1String(name)),
            QStringLiteral("USE PATIENT_DATA\nGO\nDROP PROCEDURE IF EXISTS %1\nGO\n"
                           "CREATE PROCEDURE %1 %2 AS\nBEGIN\n    %3;\nEND\nGO\n")
                .arg(QLatin1String(name), QLatin1String(parameters), QLatin1String(body))};
    };
    std::vector<Script> scripts = FirstScripts();
    scripts.push_back(script("sp_Ask", "", "EXEC sp_Echo 'one'"));
    scripts.push_back(script("sp_Echo", "@A varchar(10)", "SELECT @A AS Answer"));
    Make(scripts);
    scripts[scripts.size() - 2] = script("sp_Ask", "", "EXEC sp_Echo 'one', 'two'");
    scripts.back() = script("sp_Echo", "@A varchar(10), @B varchar(10)", "SELECT @B AS Answer");
    QVERIFY(deploy::UpgradeHospital(File(), ScriptSet(scripts)));
    QCOMPARE(Ask(File(), QStringLiteral("PATIENT_DATA..sp_Ask")), QStringLiteral("two"));
}

void tst_HospitalFile::Upgrade_marksTheMigrationsOfANewFileAsApplied() {
    Make(SecondScripts());
    QCOMPARE(Ask(File(), kCountMigrations), QStringLiteral("1"));
    std::vector<Script> third = SecondScripts();
    third[2].Text = Greeting(QStringLiteral("third"));
    QVERIFY(deploy::UpgradeHospital(File(), ScriptSet(third)));
    QCOMPARE(Ask(File(), kAnswer), QStringLiteral("third"));
}

void tst_HospitalFile::Upgrade_thatFailsLeavesTheFileAsItWas() {
    Make(FirstScripts());
    std::vector<Script> scripts = SecondScripts();
    scripts.push_back({QStringLiteral("migrations/0002_bad.sql"),
                       QStringLiteral("USE PATIENT_DATA\nGO\nUPDATE tbNowhere SET a = 1\nGO\n")});
    const QString refusal = RefusalOf([&] { deploy::UpgradeHospital(File(), ScriptSet(scripts)); });
    QVERIFY2(refusal.contains(File()) && refusal.contains(QStringLiteral("0002_bad.sql")),
             qPrintable(refusal));
    QCOMPARE(Ask(File(), kCountMigrations), QStringLiteral("0"));
    QCOMPARE(Ask(File(), kAnswer), QStringLiteral("first"));
    QVERIFY(deploy::UpgradeHospital(File(), ScriptSet(SecondScripts())));
}

void tst_HospitalFile::Upgrade_refusesTablesThatLackSomething_data() {
    QTest::addColumn<QString>("needed");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("column") << PatientTable(QStringLiteral(",\n    Sex varchar(1) NULL"))
                            << QStringLiteral(
                                   "Table PATIENT_DATA..tbPatient lacks the column Sex.");
    QTest::newRow("table") << PatientTable() + QStringLiteral(
                                                   "CREATE TABLE tbDoctor (\n    Code "
                                                   "int NOT NULL PRIMARY KEY\n)\nGO\n")
                           << QStringLiteral("Table PATIENT_DATA..tbDoctor is missing.");
    QTest::newRow("kind") << PatientTable().replace(QStringLiteral("LastName varchar(40)"),
                                                    QStringLiteral("LastName int"))
                          << QStringLiteral(
                                 "Column LastName of table PATIENT_DATA..tbPatient is of another "
                                 "kind.");
}

void tst_HospitalFile::Upgrade_refusesTablesThatLackSomething() {
    QFETCH(QString, needed);
    QFETCH(QString, refusal);
    Make(FirstScripts());
    std::vector<Script> scripts = FirstScripts();
    scripts[1].Text = needed;
    const QString text = RefusalOf([&] { deploy::UpgradeHospital(File(), ScriptSet(scripts)); });
    QVERIFY2(text.contains(File()) && text.contains(refusal), qPrintable(text));
}

void tst_HospitalFile::Upgrade_refusesAFileOfANewerVersion() {
    Make(SecondScripts());
    const QString text =
        RefusalOf([&] { deploy::UpgradeHospital(File(), ScriptSet(FirstScripts())); });
    QVERIFY2(text.contains(File()) && text.contains(QStringLiteral("newer version")),
             qPrintable(text));
    QCOMPARE(Ask(File(), kAnswer), QStringLiteral("second"));
}

void tst_HospitalFile::Upgrade_refusesWhatIsNoHospital_data() {
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("a letter") << QByteArray("Dear doctor, ").repeated(500);
    QTest::newRow("truncated") << QByteArray();
}

void tst_HospitalFile::Upgrade_refusesWhatIsNoHospital() {
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
    QCOMPARE(Present(), QStringList{QStringLiteral("hospital")});
}

void tst_HospitalFile::Upgrade_ofAReadOnlyFileNeedsNothingOrSaysSo() {
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

void tst_HospitalFile::Upgrade_byTwoProgramsRunsOnce() {
    Make(FirstScripts());
    const QStringList arguments{QStringLiteral("--upgrade"), File()};
    QProcess first;
    QProcess second;
    first.start(QCoreApplication::applicationFilePath(), arguments);
    second.start(QCoreApplication::applicationFilePath(), arguments);
    QVERIFY(first.waitForFinished() && second.waitForFinished());
    QCOMPARE(first.exitCode(), 0);
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(Ask(File(), kAnswer), QStringLiteral("second"));
    QCOMPARE(Ask(File(), kCountMigrations), QStringLiteral("1"));
}

void tst_HospitalFile::Open_bringsAnOldFileUpToDate() {
    std::vector<Script> scripts = ScriptSet::Own().Schema();
    const std::vector<Script>& procedures = ScriptSet::Own().Procedures();
    scripts.insert(scripts.end(), procedures.begin() + 1, procedures.end());
    // Its tables are today's, so what changed them has run; but names still had to be typed with
    // their accents.
    for (const Script& migration : ScriptSet::Own().Migrations())
        if (migration.Name != QStringLiteral("migrations/0100_names.sql"))
            scripts.push_back(migration);
    for (Script& script : scripts)
        script.Text.remove(QStringLiteral(" COLLATE Latin1_General_CI_AI"));
    scripts.push_back({QStringLiteral("demo/10_patients.sql"),
                       QStringLiteral("USE PATIENT_DATA\nGO\nINSERT INTO tbMaster (HospNum, "
                                      "LastName, FirstName, Sex) VALUES ('1', 'Peña', 'Ana', "
                                      "'F'), ('2', 'Pena', 'Zoe', 'F')\nGO\n")});
    const QString file = m_folder->filePath(QStringLiteral("a;{strange}=name"));
    deploy::MakeHospital(file, Contents::Demo, {}, ScriptSet(scripts));
    const auto connection = deploy::OpenHospital(file);
    const auto found =
        connection->Execute(QStringLiteral("RADIOLOGY..spGlobal_RegularPatients '0','0','PENA'"));
    QCOMPARE(found->RecordCount(), 2);
    QCOMPARE(found->Fields(2).Text(), QStringLiteral("Zoe"));
    const auto rows = connection->Execute(
        QStringLiteral(
            "SELECT COUNT(*) FROM CLINICAL_AREA..tbDeployedScript WHERE ScriptName = '") +
        procedures.front().Name + u'\'');
    QCOMPARE(rows->Fields(0).Text(), QStringLiteral("1"));
    QVERIFY(!deploy::UpgradeHospital(file));
}

void tst_HospitalFile::TestHospital_copiesTheDemoHospital() {
    const TestHospital first(TestHospital::On::File);
    const TestHospital second(TestHospital::On::File);
    const QString remove = QStringLiteral("DELETE FROM PATIENT_DATA..tbUser");
    first.Connect()->Execute(remove);
    const QString count = QStringLiteral("SELECT COUNT(*) FROM PATIENT_DATA..tbUser");
    QCOMPARE(Ask(first.File(), count), QStringLiteral("0"));
    QVERIFY(Ask(second.File(), count) != QStringLiteral("0"));
}

void tst_HospitalFile::Own_checksumIsTheOneTakenWhenBuilt() {
    QCOMPARE(ScriptSet::Own().Checksum(), QString::fromLatin1(deploy::kOwnScriptsChecksum));
}

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
