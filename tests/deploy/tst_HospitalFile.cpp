#include <sys/resource.h>

#include <QProcess>
#include <QtTest>
#include <csignal>

#include "OrdinaryUser.h"
#include "Rows.h"
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

void Make(const QString& file, const std::vector<Script>& scripts,
          const deploy::Progress& progress = {}) {
    deploy::MakeHospital(file, Contents::Demo, progress, ScriptSet(scripts));
}

/// This program's other lives; a power cut ends the second.
const QMap<QString, std::function<void(const QString& file)>> kWorks{
    {u"--make"_s, [](const QString& file) { Make(file, FirstScripts()); }},
    {u"--make-and-die"_s,
     [](const QString& file) {
         Make(file, FirstScripts(), [](int done, int) {
             if (done == 2)
                 std::_Exit(9);
         });
     }},
    {u"--upgrade"_s,
     [](const QString& file) { deploy::UpgradeHospital(file, ScriptSet(SecondScripts())); }}};

}  // namespace

class tst_HospitalFile : public QObject {
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void Make_leavesOneCompleteFile() {
        QStringList steps;
        Make(File(), FirstScripts(),
             [&](int done, int all) { steps << u"%1/%2"_s.arg(done).arg(all); });
        QCOMPARE(steps.join(u' '), u"0/4 1/4 2/4 3/4 4/4"_s);
        QCOMPARE(Present(), QStringList{u"hospital"_s});
        // Patients and password hashes are nobody else's to read.
        QVERIFY(!(QFile::permissions(File()) & (QFile::ReadGroup | QFile::ReadOther)));
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
        QCOMPARE(ScriptSet::Own().Checksum(), QString::fromLatin1(deploy::kOwnScriptsChecksum));
    }

    void Make_thatFailsLeavesNothing() {
        std::vector<Script> scripts = FirstScripts();
        scripts[2].Text += u"SELEKT 1\nGO\n"_s;
        const QString refusal = RefusalOf([&] { Make(File(), scripts); });
        QVERIFY2(refusal.contains(File()), qPrintable(refusal));
        QVERIFY2(refusal.contains(scripts[2].Name), qPrintable(refusal));
        QCOMPARE(Present(), QStringList());
    }

    void Make_thatIsStoppedByItsCallerLeavesNothing() {
        const auto stop = [](int done, int) {
            if (done == 3)
                throw std::runtime_error("stopped");
        };
        QVERIFY_EXCEPTION_THROWN(Make(File(), FirstScripts(), stop), std::runtime_error);
        QCOMPARE(Present(), QStringList());
    }

    void Make_thatWasKilledIsMadeGoodByTheNext() {
        QCOMPARE(RunTogether({u"--make-and-die"_s}), QList<int>{9});
        QVERIFY(!QFile::exists(File()));
        QVERIFY(!Present().isEmpty());
        Make(File(), FirstScripts());
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
        const QString refusal = RefusalOf([&] { Make(File(), FirstScripts()); });
        setrlimit(RLIMIT_FSIZE, &before);
        QVERIFY2(refusal.contains(File()), qPrintable(refusal));
        QCOMPARE(Present(), QStringList());
    }

    void Make_refusesAnExistingFileAndALockedFolder() {
        QFile present(File());
        QVERIFY(present.open(QIODevice::WriteOnly) && present.write("notes") == 5);
        present.close();
        QVERIFY(RefusalOf([&] { Make(File(), FirstScripts()); }).contains(File()));
        QCOMPARE(QFileInfo(File()).size(), 5);
        // A file where the folder should be: nothing can be made there, whoever asks.
        const QString inside = File() + u"/hospital"_s;
        const QString refusal = RefusalOf([&] { Make(inside, FirstScripts()); });
        QVERIFY2(refusal.contains(inside), qPrintable(refusal));
    }

    void Make_byTwoProgramsMakesOneFile() {
        // Whoever comes when the file is complete is told so; whoever comes earlier waits.
        QVERIFY(RunTogether({u"--make"_s, u"--make"_s}).contains(0));
        QCOMPARE(Present(), QStringList{u"hospital"_s});
        QCOMPARE(Ask(File(), u"SELECT COUNT(*) FROM PATIENT_DATA..tbPatient"_s), u"1"_s);
    }

    void Upgrade_runsWhatTheFileHasNotHad() {
        Make(File(), FirstScripts());
        QVERIFY(Upgrade(SecondScripts()));
        QCOMPARE(Ask(File(), u"SELECT BirthDate FROM PATIENT_DATA..tbPatient"_s),
                 u"1960-02-05 00:00:00.000"_s);
        QCOMPARE(Ask(File(), kAnswer), u"second"_s);
        QCOMPARE(Ask(File(), kCountMigrations), u"1"_s);
        QVERIFY(!Upgrade(SecondScripts()));
    }

    void Upgrade_dropsWhatTheVersionNoLongerHas() {
        Make(File(), FirstScripts());
        std::vector<Script> scripts = FirstScripts();
        std::erase_if(
            scripts, [](const Script& script) { return script.Name.startsWith(u"procedures/"_s); });
        QVERIFY(Upgrade(scripts));
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
        Make(File(), scripts);
        scripts[scripts.size() - 2] = script("sp_Ask", "", "EXEC sp_Echo 'one', 'two'");
        scripts.back() = script("sp_Echo", "@A varchar(10), @B varchar(10)", "SELECT @B AS Answer");
        QVERIFY(Upgrade(scripts));
        QCOMPARE(Ask(File(), u"PATIENT_DATA..sp_Ask"_s), u"two"_s);
    }

    void Upgrade_marksTheMigrationsOfANewFileAsApplied() {
        Make(File(), SecondScripts());
        QCOMPARE(Ask(File(), kCountMigrations), u"1"_s);
        std::vector<Script> third = SecondScripts();
        third[2].Text = Greeting(u"third"_s);
        QVERIFY(Upgrade(third));
        QCOMPARE(Ask(File(), kAnswer), u"third"_s);
    }

    void Upgrade_thatIsRefusedLeavesTheFileAsItWas_data() {
        Columns<std::vector<Script>, std::vector<Script>, QString>();
        const auto row = [](const char* name, const std::vector<Script>& made,
                            const std::vector<Script>& wanted, const QString& refusal) {
            QTest::newRow(name) << made << wanted << refusal;
        };
        const auto needing = [](const QString& table) {
            std::vector<Script> scripts = FirstScripts();
            scripts[1].Text = table;
            return scripts;
        };
        std::vector<Script> bad = SecondScripts();
        bad.push_back({u"migrations/0002_bad.sql"_s,
                       u"USE PATIENT_DATA\nGO\nUPDATE tbNowhere SET a = 1\nGO\n"_s});
        const std::vector<Script> first = FirstScripts();
        row("a script fails", first, bad, u"0002_bad.sql"_s);
        row("newer version", SecondScripts(), first, u"newer version"_s);
        row("column", first, needing(PatientTable(u",\n    Sex varchar(1) NULL"_s)),
            u"Table PATIENT_DATA..tbPatient lacks the column Sex."_s);
        row("table", first,
            needing(PatientTable() +
                    u"CREATE TABLE tbDoctor (\n    Code int NOT NULL PRIMARY KEY\n)\nGO\n"_s),
            u"Table PATIENT_DATA..tbDoctor is missing."_s);
        row("kind", first,
            needing(PatientTable().replace(u"LastName varchar(40)"_s, u"LastName int"_s)),
            u"Column LastName of table PATIENT_DATA..tbPatient is of another kind."_s);
    }

    void Upgrade_thatIsRefusedLeavesTheFileAsItWas() {
        auto [made, wanted, refusal] = Fetch<std::vector<Script>, std::vector<Script>, QString>();
        Make(File(), made);
        const auto state = [this] { return Ask(File(), kAnswer) + Ask(File(), kCountMigrations); };
        const QString before = state();
        const QString text = RefusalOf([&] { Upgrade(wanted); });
        QVERIFY2(text.contains(File()) && text.contains(refusal), qPrintable(text));
        QCOMPARE(state(), before);
        QCOMPARE(Upgrade(SecondScripts()), made.size() < SecondScripts().size());
    }

    void Upgrade_ofAReadOnlyFileNeedsNothingOrSaysSo() {
        if (const auto failure = RunAsOrdinaryUser()) {
            QCOMPARE(*failure, QString());
            return;
        }
        Make(File(), FirstScripts());
        QVERIFY(QFile::setPermissions(File(), QFile::ReadOwner));
        QVERIFY(!QFileInfo(File()).isWritable());
        QVERIFY(!Upgrade(FirstScripts()));
        const QString text = RefusalOf([&] { Upgrade(SecondScripts()); });
        QVERIFY2(text.contains(File()), qPrintable(text));
    }

    void Upgrade_byTwoProgramsRunsOnce() {
        Make(File(), FirstScripts());
        QCOMPARE(RunTogether({u"--upgrade"_s, u"--upgrade"_s}), (QList<int>{0, 0}));
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

private:
    QString File() const { return m_folder->filePath(u"hospital"_s); }
    QStringList Present() const {
        return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    bool Upgrade(const std::vector<Script>& scripts) const {
        return deploy::UpgradeHospital(File(), ScriptSet(scripts));
    }
    /// The exit codes of this program's other lives, all of them at once on the file.
    QList<int> RunTogether(const QStringList& works) const {
        std::vector<std::unique_ptr<QProcess>> processes;
        for (const QString& work : works) {
            processes.push_back(std::make_unique<QProcess>());
            processes.back()->start(QCoreApplication::applicationFilePath(), {work, File()});
        }
        QList<int> codes;
        for (const auto& process : processes)
            codes << (process->waitForFinished() ? process->exitCode() : -1);
        return codes;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        if (arguments.size() == 3 && kWorks.contains(arguments[1])) {
            kWorks[arguments[1]](arguments[2]);
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
