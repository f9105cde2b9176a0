#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QPainter>
#include <QProcess>
#include <QTest>
#include <iostream>

#include "app/mdiCAPD.h"
#include "benchmarks/BareSqlite.h"
#include "benchmarks/Hospitals.h"
#include "benchmarks/Measure.h"
#include "benchmarks/Session.h"
#include "toolkit/ListView.h"

namespace bench {

namespace {

constexpr int kRows = 100'000;

// The out-patient visits of everybody named Quill, as the clerk asks for them.
void SearchQuills(mdiCAPD& frame) {
    auto* box = frame.findChild<QLineEdit*>(QStringLiteral("txtLastName"));
    QTest::keyClick(box, Qt::Key_Return);
    auto* list = frame.findChild<toolkit::ListView*>(QStringLiteral("lvwSearchPatient"));
    list->viewport()->repaint();
    if (list->model()->rowCount() != kRows)
        throw std::runtime_error("the large register has not 100,000 visits of Quills");
}

std::unique_ptr<mdiCAPD> OpenFrame() {
    auto frame = StartSession(LargeHospital());
    frame->findChild<QAbstractButton*>(QStringLiteral("chkCurrent"))->setChecked(false);
    frame->findChild<QLineEdit*>(QStringLiteral("txtLastName"))->setText(QStringLiteral("Quill"));
    return frame;
}

// Peak memory of a child process, in MB, as the system counts it.
double PeakMegabytes(const QString& child) {
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("--child"), child, QString()});
    if (!process.waitForFinished(120'000) || process.exitCode() != 0)
        throw std::runtime_error("a child of the bench failed: " +
                                 process.readAllStandardError().toStdString());
    return process.readAllStandardOutput().trimmed().toDouble();
}

}  // namespace

void ListLarge() {
    const QString file = LargeHospital();
    const auto frame = OpenFrame();
    const BareSqlite bare(file);
    BareStatement statement(bare,
                            "SELECT v.IdNum, v.HospNum, v.AdmDate, m.LastName, m.FirstName, "
                            "m.MiddleName, c.CAPDNum, v.RoomID, "
                            "m.Address FROM \"PATIENT_DATA..tbMaster\" m JOIN "
                            "\"PATIENT_DATA..tbOutPatient\" v ON v.HospNum = "
                            "m.HospNum LEFT JOIN \"CLINICAL_AREA..tbCAPDPatient\" c ON c.HospNum = "
                            "v.HospNum WHERE m.LastName >= "
                            "'Quill' AND m.LastName < 'Quill\uFFFD' AND v.PatientType = 'O' ORDER "
                            "BY +v.AdmDate DESC, v.IdNum DESC");
    Print(Alternate(
        QStringLiteral("list-100k"), 7, [&frame] { SearchQuills(*frame); },
        [&statement] {
            if (statement.ReadAll() != kRows)
                throw std::runtime_error("the yardstick read another list");
        }));
}

void ListLargeMemory() {
    LargeHospital();
    Print(AlternateTimed(
        QStringLiteral("list-100k-memory"), QStringLiteral("MB"), 3,
        [] { return PeakMegabytes(QStringLiteral("list-100k")); },
        [] { return PeakMegabytes(QStringLiteral("empty-memory")); }));
}

void ListLargeInChild() {
    const auto frame = OpenFrame();
    SearchQuills(*frame);
}

}  // namespace bench
