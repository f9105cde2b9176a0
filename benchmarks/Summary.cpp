#include <QCoreApplication>
#include <QTextDocument>
#include <QTextEdit>

#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "hub/ClinicalSummary.h"

namespace bench {

namespace {

constexpr int kExaminations = 500;
constexpr double kLimitMilliseconds = 1000;

QString StayNumber(int medicines) {
    return QStringLiteral("9%1").arg(medicines, 6, 10, QLatin1Char('0'));
}

void WriteStay(const BareSqlite& file, int medicines) {
    const std::string number = StayNumber(medicines).toStdString();
    BareStatement stay(file,
                       "INSERT INTO \"PATIENT_DATA..tbPatient\" (IdNum, HospNum, AdmDate, RoomID) "
                       "SELECT ?1, MIN(HospNum), '2026-01-01 08:00:00.000', '204' FROM "
                       "\"PATIENT_DATA..tbMaster\"");
    stay.Bind(1, number);
    stay.Write();
    BareStatement medicine(
        file,
        "INSERT INTO \"STATION..tbMedicineGiven\" (HospNum, IdNum, TransDate, DrugCode, DrugName, "
        "Dosage, Quantity) VALUES ('1', ?1, '2026-01-02 08:00:00.000', '1', ?2, '1 TAB 3X A DAY', "
        "3)");
    for (int i = 0; i < medicines; ++i) {
        medicine.Bind(1, number);
        medicine.Bind(2, "MEDICINE NO. " + std::to_string(i));
        medicine.Write();
    }
    BareStatement result(
        file,
        "INSERT INTO \"RADIOLOGY..tbRadResult\" (TransNum, HospNum, IdNum, Modality, ExamName, "
        "TransDate, ResultDate, Interpretation) VALUES (?2, '1', ?1, ?3, 'CHEST PA', "
        "'2026-01-02 08:00:00.000', '2026-01-02 09:00:00.000', ?4)");
    static const char* const kModalities[] = {"X", "U", "C"};
    for (int i = 0; i < kExaminations; ++i) {
        result.Bind(1, number);
        result.Bind(2, "B" + number + "-" + std::to_string(i));
        result.Bind(3, kModalities[i % 3]);
        result.Bind(4, "The lungs are clear. The heart is not enlarged. No effusion is seen. " +
                           std::to_string(i));
        result.Write();
    }
}

}  // namespace

// From "View" to the summary on screen; 500 examinations in each stay.
void Summary() {
    const QString path = CopyOfDemoHospital(QStringLiteral("-summary"));
    const int sizes[] = {500, 2000, 8000};
    {
        BareSqlite file(path);
        file.Run("BEGIN");
        for (const int medicines : sizes)
            WriteStay(file, medicines);
        file.Run("COMMIT");
    }
    const auto frame = StartSession(path);
    QTextEdit box(frame.get());
    box.resize(700, 500);
    box.setUndoRedoEnabled(false);
    box.show();
    for (const int medicines : sizes) {
        const SummaryStay stay{{}, StayNumber(medicines), StayNumber(medicines), {}, {}};
        const auto compose = [&] {
            ClinicalSummary(*box.document(), [](int) {
                QCoreApplication::processEvents();
            }).Compose(stay);
            box.repaint();
            if (box.document()->blockCount() < medicines + 3 * kExaminations)
                throw std::runtime_error("the summary lacks lines");
        };
        Print(AlternateTimed(
            QStringLiteral("summary-%1").arg(medicines), QStringLiteral("ms"), 5,
            [&] { return Milliseconds(compose); }, [] { return kLimitMilliseconds; }));
    }
}

}  // namespace bench
