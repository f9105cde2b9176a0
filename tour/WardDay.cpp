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

using namespace Qt::StringLiterals;

namespace {

// A register patient's latest visit with a medicine that waits, and without the items asked for.
const QString kVisit =
    u"SELECT TOP (1) v.IdNum, r.ItemCode FROM CLINICAL_AREA..tbCAPDPatient c "
    "INNER JOIN PATIENT_DATA..tbOutPatient v ON v.IdNum = (SELECT TOP (1) x.IdNum FROM "
    "PATIENT_DATA..tbOutPatient x WHERE x.HospNum = c.HospNum ORDER BY x.AdmDate DESC, "
    "x.IdNum DESC) INNER JOIN STATION..tbNurseLogBook r ON r.IdNum = v.IdNum "
    "WHERE v.BillingDate IS NULL AND r.DeptID = 'PH' AND r.RecordStatus = ' ' AND NOT EXISTS "
    "(SELECT 1 FROM STATION..tbNurseLogBook o WHERE o.IdNum = v.IdNum AND o.ItemCode IN ('1001', "
    "'1019', '1020', '1022', '205', '208')) ORDER BY v.IdNum DESC"_s;
const QString kPending =
    u"SELECT COUNT(*) FROM STATION..tbNurseLogBook WHERE IdNum = '%1' AND RecordStatus = ' '"_s;
// The request made last.
const QString kLast =
    u"SELECT TOP (1) ItemCode, Dosage, Quantity, Amount, DeptID, RecordStatus, RequestedBy, "
    u"Remarks "
    "FROM STATION..tbNurseLogBook WHERE IdNum = '%1' ORDER BY LogID DESC"_s;
// What the pharmacy's own program does.
const QString kProcess =
    u"UPDATE STATION..tbNurseLogBook SET RecordStatus = 'X', ProcessDate = GETDATE(), "
    "ProcessedBy = '2001' WHERE IdNum = '%1' AND ItemCode = '1020'"_s;

QString IdNum() {
    return Tour::Find<QLineEdit>("txtIdNum")->text();
}

}  // namespace

void WardDay::ExpectLine(int row, const QString& line) {
    const auto* grid = Tour::Find<toolkit::FlexGrid>("mshflexEntry");
    QStringList cells;
    for (int col = 1; col <= 6; ++col)
        cells << grid->TextMatrix(row, col);
    const QString found = cells.join(u'|');
    Expect(found == line, u"line %1 is %2"_s.arg(row).arg(found));
}

void WardDay::EnterLine(const QString& step, const QStringList& entries, int row,
                        const QString& line) {
    Step(step, [=, this] {
        for (const QString& entry : entries)
            Enter(entry);
        ExpectLine(row, line);
    });
}

void WardDay::OpenSheet(const QString& step, const char* button) {
    Quietly(step, [button] { Push(button); });
}

void WardDay::Save(const QString& step, int pending, const QString& item, const QString& stored) {
    Quietly(step + u" are saved"_s, [] { Tour::Press(Qt::Key_S, Qt::AltModifier); });
    Step(step + u" in the hub's list"_s, [=, this] {
        const auto* list = Tour::Find<toolkit::FlexGrid>("mshflexProcessed1");
        Expect(list->Rows() - 1 == m_pending + pending,
               u"%1 requests wait"_s.arg(list->Rows() - 1));
        ExpectStored(kLast.arg(IdNum()), stored);
        Expect(list->TextMatrix(1, 1) == item, u"first stands "_s + list->TextMatrix(1, 1));
    });
}

void WardDay::Walk() {
    OpenThePatient();
    RequestMedicines();
    RequestSupplies();
    DeleteLines();
    RepeatARequest();
    Quietly(u"ward's patient left"_s, [] { Tour::Press(Qt::Key_Escape); });
}

void WardDay::OpenThePatient() {
    Quietly(u"patient of the ward found"_s, [] {
        const auto visit = Tour::Ask(kVisit);
        ListPatients("OptPatientType0", false, visit->Fields(0).Text());
        Tour::Press(Qt::Key_Return);
    });
    Quietly(u"requests that wait"_s, [this] {
        m_waiting = Tour::Ask(kVisit)->Fields(1).Text();
        m_pending = Tour::Ask(kPending.arg(IdNum()))->Fields(0).Text().toInt();
        Expect(m_pending > 0, u"no request waits"_s);
    });
}

void WardDay::RequestMedicines() {
    OpenSheet(u"pharmacy asked for"_s, "cmdPharmacy");
    Step(u"empty request to the pharmacy"_s, [this] { ExpectTitle(u"Pharmacy Request Entry"_s); });
    Quietly(u"medicine by the beginning of its name"_s, [] { Enter(u"amlo"_s); });
    Step(u"medicines to pick from"_s, [this] { ExpectTitle(u"List of Medicines"_s); });
    Quietly(u"second medicine is picked"_s, [] {
        Tour::Press(Qt::Key_Down);
        Tour::Press(Qt::Key_Down);
        Tour::Press(Qt::Key_Return);
    });
    EnterLine(u"first medicine is complete"_s, {u"bid"_s, u"3"_s, u"with breakfast"_s}, 1,
              u"1001|AMLODIPINE 5 MG|BID|3|27.75|WITH BREAKFAST"_s);
    Quietly(u"medicine that waits already"_s, [this] { Enter(m_waiting); });
    ReadBox(u"already requested"_s, u"is already requested at"_s);
    Quietly(u"inactive medicine"_s, [] { Enter(u"1024"_s); });
    ReadBox(u"inactive medicine is refused"_s, u"Record is inactive...please reenter..."_s);
    EnterLine(u"second medicine in its place"_s, {u"1020"_s, u"prn"_s, u"6"_s, QString()}, 2,
              u"1020|PARACETAMOL 500 MG|PRN|6|10.5|"_s);
    Save(u"medicines"_s, 2, u"PARACETAMOL 500 MG"_s, u"1020|PRN|6|10.5|PH| |4601|"_s);
}

void WardDay::RequestSupplies() {
    OpenSheet(u"central supply asked for"_s, "cmdCentralSupply");
    EnterLine(u"supply without a frequency"_s, {u"205"_s, QString(), u"10"_s, QString()}, 1,
              u"205|SYRINGE 10 ML|PRN|10|120|"_s);
    Save(u"supplies"_s, 3, u"SYRINGE 10 ML"_s, u"205|PRN|10|120|CS| |4601|"_s);
}

void WardDay::DeleteLines() {
    OpenSheet(u"pharmacy asked for again"_s, "cmdPharmacy");
    Quietly(u"two lines"_s, [this] {
        for (const char* code : {"1019", "1022"})
            for (const QString& entry : {QString::fromLatin1(code), u"od"_s, QString(), QString()})
                Enter(entry);
        ExpectLine(2, u"1022|SEVELAMER 800 MG|OD|1|42|"_s);
    });
    for (const int answer : {Qt::Key_N, Qt::Key_Y}) {
        Quietly(u"deletion asked for"_s, [] {
            if (Tour::Find<toolkit::FlexGrid>("mshflexEntry")->Row() == 3)
                for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Up})
                    Tour::Press(key);
            Tour::Press(Qt::Key_D, Qt::AltModifier);
        });
        ReadBox(answer == Qt::Key_N ? u"deletion is asked"_s : u"deletion is asked again"_s,
                u"Are you sure to delete the request?"_s, answer);
        Step(answer == Qt::Key_N ? u"line is kept"_s : u"line is gone"_s, [this, answer] {
            ExpectLine(1, answer == Qt::Key_N ? u"1019|OMEPRAZOLE 20 MG|OD|1|16.5|"_s
                                              : u"1022|SEVELAMER 800 MG|OD|1|42|"_s);
        });
    }
    Quietly(u"sheet cancelled"_s, [] { Tour::Press(Qt::Key_C, Qt::AltModifier); });
}

void WardDay::RepeatARequest() {
    Quietly(u"pharmacy has processed one"_s, [] { Tour::Ask(kProcess.arg(IdNum())); });
    OpenSheet(u"pharmacy asked for a third time"_s, "cmdPharmacy");
    Quietly(u"medicine processed today"_s, [] { Enter(u"1020"_s); });
    ReadBox(u"processed today"_s, u"Do you wish to REPEAT it ?"_s, Qt::Key_Y);
    EnterLine(u"repeated request"_s, {u"stat"_s, QString(), u"fever"_s}, 1,
              u"1020|PARACETAMOL 500 MG|STAT|1|1.75|FEVER"_s);
    Save(u"repeated requests"_s, 3, u"PARACETAMOL 500 MG"_s, u"1020|STAT|1|1.75|PH| |4601|FEVER"_s);
}
