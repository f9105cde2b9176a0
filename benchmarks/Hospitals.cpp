#include "benchmarks/Hospitals.h"

#include <QCoreApplication>
#include <QDate>
#include <QFile>
#include <iostream>

#include "benchmarks/BareSqlite.h"
#include "db/CommandText.h"
#include "deploy/HospitalFile.h"

namespace bench {

namespace {

constexpr int kPatients = 1'000'000;
constexpr int kNamedQuill = 50'000;

QString Beside(const QString& name) {
    return QCoreApplication::applicationDirPath() + u'/' + name;
}

std::string Number(const char* form, int number) {
    char text[32];
    std::snprintf(text, sizeof text, form, number);
    return text;
}

std::string DayBefore(const QDate& today, int days) {
    return today.addDays(-days).toString(QStringLiteral("yyyy-MM-dd 08:00:00.000")).toStdString();
}

void WritePatients(BareSqlite& file) {
    BareStatement patient(file,
                          "INSERT INTO \"PATIENT_DATA..tbMaster\" (HospNum, LastName, FirstName, "
                          "MiddleName, Sex, Address) VALUES (?1, ?2, ?3, 'Middle', 'F', ?4)");
    for (int number = 0; number < kPatients; ++number) {
        patient.Bind(1, Number("%08d", number));
        patient.Bind(2, number < kNamedQuill ? Number("Quill%03d", number % 500)
                                             : Number("Name%04d", number % 4000));
        patient.Bind(3, Number("First%05d", number % 77777));
        patient.Bind(4, Number("%d Harbour Street, Dunmarrow", number % 900));
        patient.Write();
    }
}

// Two stays a patient: Quills come as out-patients only; of the rest one in four was admitted and
// one in four came to the emergency room.
void WriteStays(BareSqlite& file) {
    const QDate today = QDate::currentDate();
    BareStatement visit(
        file,
        "INSERT INTO \"PATIENT_DATA..tbOutPatient\" (IdNum, HospNum, AdmDate, DcrDate, "
        "PatientType, RoomID) VALUES (?1, ?2, ?3, ?4, ?5, 'OPD')");
    BareStatement admission(
        file,
        "INSERT INTO \"PATIENT_DATA..tbPatient\" (IdNum, HospNum, AdmDate, DcrDate, "
        "RoomID) VALUES (?1, ?2, ?3, ?3, '101')");
    BareStatement open(file,
                       "UPDATE \"PATIENT_DATA..tbOutPatient\" SET DcrDate = NULL WHERE IdNum = ?1");
    for (int stay = 0; stay < 2 * kPatients; ++stay) {
        const int patient = stay / 2;
        const int group = patient < kNamedQuill || stay % 2 == 0 ? 2 : (patient / 4000) % 4;
        const std::string day = DayBefore(today, 1 + stay % 700);
        BareStatement& insert = group == 1 ? admission : visit;
        insert.Bind(1, group == 1 ? Number("%08d", stay) : Number("A%08dB", stay));
        insert.Bind(2, Number("%08d", patient));
        insert.Bind(3, day);
        if (group != 1) {
            insert.Bind(4, day);
            insert.Bind(5, group == 0 ? "E" : "O");
        }
        insert.Write();
        if (stay % 8000 == 14) {
            open.Bind(1, Number("A%08dB", stay));
            open.Write();
        }
    }
}

void WriteRegister(BareSqlite& file) {
    BareStatement sheet(
        file,
        "INSERT INTO \"CLINICAL_AREA..tbCAPDPatient\" (HospNum, CAPDNum, RegisteredAt, "
        "RegisteredBy, WithPeritonitis) VALUES (?1, ?2, '2026-01-01 00:00:00.000', 'bench', 'N')");
    for (int number = 0; number < kPatients; number += 250) {
        sheet.Bind(1, Number("%08d", number));
        sheet.Bind(2, Number("%d", number));
        sheet.Write();
    }
}

QString LargePath() {
    return Beside(QStringLiteral("large-hospital.db"));
}

}  // namespace

QString DemoHospital() {
    const QString path = Beside(QStringLiteral("bench-hospital.db"));
    if (!QFile::exists(path))
        deploy::MakeHospital(path, deploy::Contents::Demo);
    deploy::UpgradeHospital(path);
    return path;
}

QString CopyOfDemoHospital(const QString& suffix) {
    const QString path = DemoHospital() + suffix;
    for (const QString& file : {path, path + QStringLiteral("-wal"), path + QStringLiteral("-shm")})
        QFile::remove(file);
    if (!QFile::copy(DemoHospital(), path))
        throw std::runtime_error("the demo hospital could not be copied");
    return path;
}

QString LargeHospital() {
    if (!QFile::exists(LargePath()))
        throw std::runtime_error("the large register is not there: ./bench --large makes it once");
    return LargePath();
}

void MakeLargeHospital() {
    if (QFile::exists(LargePath()))
        return;
    std::cerr << "making the large register (1,000,000 patients)..." << std::endl;
    const QString half = LargePath() + QStringLiteral(".half");
    QFile::remove(half);
    deploy::MakeHospital(half, deploy::Contents::Empty);
    Open(half)->Execute(
        db::Call(QStringLiteral("PATIENT_DATA..sp_Hospital_SetUp"), {QStringLiteral("Bench"),
                                                                     QStringLiteral("Dunmarrow"),
                                                                     QStringLiteral("bench"),
                                                                     QStringLiteral("1"),
                                                                     QStringLiteral("Bench"),
                                                                     {},
                                                                     QStringLiteral("46")}));
    {
        BareSqlite file(half);
        file.Run("PRAGMA cache_size=-500000");
        file.Run("BEGIN");
        WritePatients(file);
        WriteStays(file);
        WriteRegister(file);
        file.Run("COMMIT");
        file.Run("PRAGMA wal_checkpoint(TRUNCATE)");
    }
    if (!QFile::rename(half, LargePath()))
        throw std::runtime_error("the large register could not be put in place");
}

std::shared_ptr<db::Connection> Open(const QString& file) {
    auto connection = db::Connection::Open(QStringLiteral("Driver=Embedded;File=%1").arg(file));
    connection->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    return connection;
}

}  // namespace bench
