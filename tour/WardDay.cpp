#include "tour/WardDay.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include "db/Recordset.h"
#include "patients/frmPatientList.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"

namespace {

// A register patient's latest visit with a medicine that waits, and without the items asked for.
const QString kVisit = QStringLiteral(
    "SELECT TOP (1) v.IdNum, r.ItemCode FROM CLINICAL_AREA..tbCAPDPatient c "
    "INNER JOIN PATIENT_DATA..tbOutPatient v ON v.IdNum = (SELECT TOP (1) x.IdNum FROM "
    "PATIENT_DATA..tbOutPatient x WHERE x.HospNum = c.HospNum ORDER BY x.AdmDate DESC, "
    "x.IdNum DESC) INNER JOIN STATION..tbNurseLogBook r ON r.IdNum = v.IdNum "
    "WHERE v.BillingDate IS NULL AND r.DeptID = 'PH' AND r.RecordStatus = ' ' AND NOT EXISTS "
    "(SELECT 1 FROM STATION..tbNurseLogBook o WHERE o.IdNum = v.IdNum AND o.ItemCode IN ('1001', "
    "'1019', '1020', '1022', '205', '208')) ORDER BY v.IdNum DESC");
const QString kPending = QStringLiteral(
    "SELECT COUNT(*) FROM STATION..tbNurseLogBook WHERE IdNum = '%1' AND RecordStatus = ' '");
// What the pharmacy's own program does.
const QString kProcess = QStringLiteral(
    "UPDATE STATION..tbNurseLogBook SET RecordStatus = 'X', ProcessDate = GETDATE(), "
    "ProcessedBy = '2001' WHERE IdNum = '%1' AND ItemCode = '1020'");

QString IdNum() {
    return Tour::Find<QLineEdit>("txtIdNum")->text();
}

}  // namespace

void WardDay::Keys(const QString& text) {
    for (const QChar letter : text)
        QTest::keyClick(Tour::Window()->windowHandle(), letter.toLatin1());
}

void WardDay::Enter(const QString& text) {
    Keys(text);
    Tour::Press(Qt::Key_Return);
}

void WardDay::ExpectLine(int row, const QString& line) {
    const auto* grid = Tour::Find<toolkit::FlexGrid>("mshflexEntry");
    QStringList cells;
    for (int col = 1; col <= 6; ++col)
        cells << grid->TextMatrix(row, col);
    const QString found = cells.join(u'|');
    m_tour.Expect(found == line, QStringLiteral("line %1 is %2").arg(row).arg(found));
}

void WardDay::EnterLine(const QString& step, const QStringList& entries, int row,
                        const QString& line) {
    m_tour.Step(step, [=, this] {
        for (const QString& entry : entries)
            Enter(entry);
        ExpectLine(row, line);
    });
}

void WardDay::ReadBox(const QString& step, const QString& said, int answer) {
    m_tour.Step(step, [=, this] {
        bool found = false;
        for (const QLabel* label : Tour::Window()->findChildren<QLabel*>())
            found = found || label->text().contains(said);
        m_tour.Expect(found, QStringLiteral("no message"));
    });
    m_tour.Quietly(step + QStringLiteral(" is answered"), [answer] {
        Tour::Press(answer, answer == Qt::Key_Return ? Qt::NoModifier : Qt::AltModifier);
    });
}

void WardDay::OpenSheet(const QString& step, const char* button) {
    m_tour.Quietly(step, [button] {
        Tour::Find<QPushButton>(button)->setFocus();
        Tour::Press(Qt::Key_Return);
    });
}

void WardDay::Save(const QString& step, int pending, const QString& item) {
    m_tour.Quietly(step + QStringLiteral(" are saved"),
                   [] { Tour::Press(Qt::Key_S, Qt::AltModifier); });
    m_tour.Step(step + QStringLiteral(" in the hub's list"), [=, this] {
        const auto* list = Tour::Find<toolkit::FlexGrid>("mshflexProcessed1");
        m_tour.Expect(list->Rows() - 1 == m_pending + pending,
                      QStringLiteral("%1 requests wait").arg(list->Rows() - 1));
        m_tour.Expect(list->TextMatrix(1, 1) == item,
                      QStringLiteral("first stands ") + list->TextMatrix(1, 1));
    });
}

void WardDay::Walk() {
    OpenThePatient();
    RequestMedicines();
    RequestSupplies();
    DeleteLines();
    RepeatARequest();
    m_tour.Quietly(QStringLiteral("ward's patient left"), [] { Tour::Press(Qt::Key_Escape); });
}

void WardDay::OpenThePatient() {
    m_tour.Quietly(QStringLiteral("patient of the ward found"), [] {
        const auto visit = Tour::Ask(kVisit);
        auto* type = Tour::Find<QAbstractButton>("OptPatientType0");
        type->setFocus();
        Tour::Press(Qt::Key_Space);
        auto* current = Tour::Find<QAbstractButton>("chkCurrent");
        current->setFocus();
        if (current->isChecked())
            Tour::Press(Qt::Key_Space);
        for (const char* other : {"txtHospNum", "txtLastName", "txtIdNum"})
            Tour::Find<QLineEdit>(other)->clear();
        Tour::Type(Tour::Find<QLineEdit>("txtIdNum"), visit->Fields(0).Text());
        Tour::Press(Qt::Key_Return);
        Tour::Press(Qt::Key_Return);
    });
    m_tour.Quietly(QStringLiteral("requests that wait"), [this] {
        m_waiting = Tour::Ask(kVisit)->Fields(1).Text();
        m_pending = Tour::Ask(kPending.arg(IdNum()))->Fields(0).Text().toInt();
        m_tour.Expect(m_pending > 0, QStringLiteral("no request waits"));
    });
}

void WardDay::RequestMedicines() {
    OpenSheet(QStringLiteral("pharmacy asked for"), "cmdPharmacy");
    m_tour.Step(QStringLiteral("empty request to the pharmacy"), [this] {
        m_tour.Expect(Tour::Window()->windowTitle() == QStringLiteral("Pharmacy Request Entry"),
                      QStringLiteral("the sheet did not open"));
    });
    m_tour.Quietly(QStringLiteral("medicine by the beginning of its name"),
                   [] { Enter(QStringLiteral("amlo")); });
    m_tour.Step(QStringLiteral("medicines to pick from"), [this] {
        m_tour.Expect(Tour::Window()->windowTitle() == QStringLiteral("List of Medicines"),
                      QStringLiteral("there is no list"));
    });
    m_tour.Quietly(QStringLiteral("second medicine is picked"), [] {
        Tour::Press(Qt::Key_Down);
        Tour::Press(Qt::Key_Down);
        Tour::Press(Qt::Key_Return);
    });
    EnterLine(QStringLiteral("first medicine is complete"),
              {QStringLiteral("bid"), QStringLiteral("3"), QStringLiteral("with breakfast")}, 1,
              QStringLiteral("1001|AMLODIPINE 5 MG|BID|3|27.75|WITH BREAKFAST"));
    m_tour.Quietly(QStringLiteral("medicine that waits already"), [this] { Enter(m_waiting); });
    ReadBox(QStringLiteral("already requested"), QStringLiteral("is already requested at"),
            Qt::Key_Return);
    m_tour.Quietly(QStringLiteral("inactive medicine"), [] { Enter(QStringLiteral("1024")); });
    ReadBox(QStringLiteral("inactive medicine is refused"),
            QStringLiteral("Record is inactive...please reenter..."), Qt::Key_Return);
    EnterLine(QStringLiteral("second medicine in its place"),
              {QStringLiteral("1020"), QStringLiteral("prn"), QStringLiteral("6"), QString()}, 2,
              QStringLiteral("1020|PARACETAMOL 500 MG|PRN|6|10.5|"));
    Save(QStringLiteral("medicines"), 2, QStringLiteral("PARACETAMOL 500 MG"));
}

void WardDay::RequestSupplies() {
    OpenSheet(QStringLiteral("central supply asked for"), "cmdCentralSupply");
    EnterLine(QStringLiteral("supply without a frequency"),
              {QStringLiteral("205"), QString(), QStringLiteral("10"), QString()}, 1,
              QStringLiteral("205|SYRINGE 10 ML|PRN|10|120|"));
    Save(QStringLiteral("supplies"), 3, QStringLiteral("SYRINGE 10 ML"));
}

void WardDay::DeleteLines() {
    OpenSheet(QStringLiteral("pharmacy asked for again"), "cmdPharmacy");
    m_tour.Quietly(QStringLiteral("two lines"), [this] {
        for (const char* code : {"1019", "1022"})
            for (const QString& entry :
                 {QString::fromLatin1(code), QStringLiteral("od"), QString(), QString()})
                Enter(entry);
        ExpectLine(2, QStringLiteral("1022|SEVELAMER 800 MG|OD|1|42|"));
    });
    for (const int answer : {Qt::Key_N, Qt::Key_Y}) {
        m_tour.Quietly(QStringLiteral("deletion asked for"), [] {
            if (Tour::Find<toolkit::FlexGrid>("mshflexEntry")->Row() == 3)
                for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Up})
                    Tour::Press(key);
            Tour::Press(Qt::Key_D, Qt::AltModifier);
        });
        ReadBox(answer == Qt::Key_N ? QStringLiteral("deletion is asked")
                                    : QStringLiteral("deletion is asked again"),
                QStringLiteral("Are you sure to delete the request?"), answer);
        m_tour.Step(
            answer == Qt::Key_N ? QStringLiteral("line is kept") : QStringLiteral("line is gone"),
            [this, answer] {
                ExpectLine(1, answer == Qt::Key_N
                                  ? QStringLiteral("1019|OMEPRAZOLE 20 MG|OD|1|16.5|")
                                  : QStringLiteral("1022|SEVELAMER 800 MG|OD|1|42|"));
            });
    }
    m_tour.Quietly(QStringLiteral("sheet cancelled"),
                   [] { Tour::Press(Qt::Key_C, Qt::AltModifier); });
}

void WardDay::RepeatARequest() {
    m_tour.Quietly(QStringLiteral("pharmacy has processed one"),
                   [] { Tour::Ask(kProcess.arg(IdNum())); });
    OpenSheet(QStringLiteral("pharmacy asked for a third time"), "cmdPharmacy");
    m_tour.Quietly(QStringLiteral("medicine processed today"),
                   [] { Enter(QStringLiteral("1020")); });
    ReadBox(QStringLiteral("processed today"), QStringLiteral("Do you wish to REPEAT it ?"),
            Qt::Key_Y);
    EnterLine(QStringLiteral("repeated request"),
              {QStringLiteral("stat"), QString(), QStringLiteral("fever")}, 1,
              QStringLiteral("1020|PARACETAMOL 500 MG|STAT|1|1.75|FEVER"));
    Save(QStringLiteral("repeated requests"), 3, QStringLiteral("PARACETAMOL 500 MG"));
}
