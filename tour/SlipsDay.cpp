#include "tour/SlipsDay.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>

#include "base/Numbers.h"
#include "db/Recordset.h"
#include "print/ReportPages.h"
#include "session/modGlobals.h"
#include "toolkit/EntryGrid.h"
#include "toolkit/FileNames.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/ListView.h"
#include "tour/ChargesDay.h"

using namespace Qt::StringLiterals;

namespace {

const QString kNotSponsored =
    u"NOT EXISTS (SELECT 1 FROM BILLING..tbVisitAccount a WHERE a.IdNum = v.IdNum)"_s;
const QString kPays = kNotSponsored +
                      u" AND ISNULL(v.DiscType, '') = '%1' AND "
                      "ISNULL(m.MSSClassification, '') = ''"_s;
const QString kIsService =
    kNotSponsored + u" AND v.DiscType = 'QF' AND m.MSSClassification <> ''"_s;
const QString kFunds =
    u"EXISTS (SELECT 1 FROM BILLING..tbVisitAccount a WHERE a.IdNum = v.IdNum) AND %1 = (SELECT "
    "COUNT(*) FROM BILLING..tbFundAccount f INNER JOIN BILLING..tbFundCostCenter c ON "
    "c.AccountNum = f.AccountNum AND c.RevenueID = 'CY' WHERE f.HospNum = v.HospNum AND "
    "f.FundBalance > 0)"_s;

QString Ask(const QString& statement) {
    const auto rows = Tour::Ask(statement);
    if (rows->Eof())
        throw std::runtime_error("there is no such patient");
    return rows->Fields(0).Text();
}

QString VisitWhere(const QString& condition) {
    return Ask(
        u"SELECT TOP (1) v.IdNum FROM CLINICAL_AREA..tbCAPDPatient p INNER "
        "JOIN PATIENT_DATA..tbMaster m ON m.HospNum = p.HospNum INNER JOIN "
        "PATIENT_DATA..tbOutPatient v ON v.IdNum = (SELECT TOP (1) x.IdNum "
        "FROM PATIENT_DATA..tbOutPatient x WHERE x.HospNum = p.HospNum ORDER "
        "BY x.AdmDate DESC, x.IdNum DESC) WHERE v.BillingDate IS NULL AND %1 "
        "ORDER BY v.IdNum"_s.arg(condition));
}

// Of the slip saved last.
const QString kLines =
    u"SELECT RevenueID, ItemCode, Quantity, Amount FROM "
    "CLINICAL_AREA..tbCAPDRequest WHERE RefNum = (SELECT TOP (1) RefNum FROM "
    "CLINICAL_AREA..tbCAPDRequest ORDER BY RequestID DESC) ORDER BY RequestID"_s;
const QString kTotals =
    u"SELECT (SELECT SUM(Amount) FROM BILLING..tbBill b WHERE b.RefNum = "
    "r.RefNum), (SELECT SUM(NetAmount) FROM BILLING..tbStockCard s WHERE s.RefNum = r.RefNum), "
    "(SELECT SUM(Quantity) FROM BILLING..tbStockCard s WHERE s.RefNum = r.RefNum), "
    "(SELECT SUM(Amount) FROM BILLING..tbDoctorCharge d WHERE d.RefNum = r.RefNum), "
    "(SELECT COUNT(*) FROM BILLING..tbCompanyPayment p WHERE p.RefNum = r.RefNum) FROM "
    "CLINICAL_AREA..tbCAPDRequest r WHERE r.RequestID = (SELECT MAX(RequestID) FROM "
    "CLINICAL_AREA..tbCAPDRequest)"_s;

QString TextOfSlip() {
    QString text;
    if (!modGlobals::gReport)
        return text;
    const auto pages = modGlobals::gReport->Pages();
    for (int page = 0; page < pages->Count(); ++page)
        text += pages->Text(page);
    return text;
}

}  // namespace

void SlipsDay::Walk() {
    ChargePayPatient();
    ChargeServicePatient();
    ChargeSponsoredPatient();
    MeetEmptyFund();
    RevokeDoctorsFee();
}

void SlipsDay::OpenSheetOf(const QString& who, const QString& condition) {
    Quietly(who + u" is looked for"_s,
            [condition] { ListPatients("OptPatientType0", false, VisitWhere(condition)); });
    Quietly(who + u" is opened"_s, [] {
        Tour::Find<toolkit::ListView>("lvwSearchPatient")->setFocus();
        Tour::Press(Qt::Key_Return);
    });
    Quietly(who + u" is charged"_s, [] { Push("cmdPostCharges"); });
}

void SlipsDay::NameDoctor() {
    Enter(u"103"_s);
}

// Enter walks from the item over type and quantity to the next line.
void SlipsDay::TypeSupply(const QString& item, const QString& quantity) {
    Enter(u"CA"_s);
    Enter(item);
    Tour::Press(Qt::Key_Return);
    Enter(quantity);
}

void SlipsDay::TypeFee(const QString& revenueCode, const QString& item, const QString& amount) {
    Enter(revenueCode);
    Enter(item);
    Tour::Press(Qt::Key_Return);
    Tour::Press(Qt::Key_Return);
    Enter(amount);
}

void SlipsDay::SaveAndPrint(const QString& who, bool sponsored) {
    Quietly(who + u"'s slip is saved"_s, [] { Tour::Press(Qt::Key_P, Qt::AltModifier); });
    if (sponsored) {
        Step(who + u"'s fund after the slip"_s, [this] { ExpectTitle(u"Viewing"_s); });
        Quietly(u"the fund is read"_s, [] { Tour::Press(Qt::Key_Escape); });
    }
    Step(who + u"'s slip is told saved"_s, [this] {
        Expect(Tour::Window()->objectName() != u"frmRequest"_s, u"there is no message"_s);
    });
    Quietly(u"the message is read"_s, [] { Tour::Press(Qt::Key_Return); });
}

void SlipsDay::ReadSlip(const QString& name, const QString& file) {
    Quietly(name + u" is read"_s, [this] { m_slip = TextOfSlip(); });
    SavePdf(name, u"CAPD ChargeSlip"_s, file);
}

void SlipsDay::ExpectSlip(const QString& lines, const QString& totals) {
    Quietly(u"the slip's rows"_s, [=] {
        ExpectStored(kLines, lines);
        ExpectStored(kTotals, totals);
    });
}

void SlipsDay::LeaveHub() {
    Quietly(u"hub left"_s, [this] {
        Expect(Tour::Window()->objectName() != u"frmRequest"_s, u"the charge sheet stayed"_s);
        Tour::Press(Qt::Key_Escape);
    });
}

void SlipsDay::ChargePayPatient() {
    OpenSheetOf(u"pay patient"_s, kPays.arg(QString()));
    Step(u"pay patient's charges"_s, [this] {
        NameDoctor();
        TypeSupply(u"108"_s, u"2"_s);
        TypeFee(u"CY"_s, u"501"_s);
        Expect(Tour::Find<QLineEdit>("txtNetAmount")->text() == u"730.00"_s,
               u"the charges do not add up"_s);
    });
    SaveAndPrint(u"pay patient"_s, false);
    ReadSlip(u"pay patient's slip"_s, u"slip-pay.pdf"_s);
    ExpectSlip(u"CA|108|2|280;CY|501|1|450"_s, u"450|280|2||0"_s);
    LeaveHub();
}

void SlipsDay::ChargeServicePatient() {
    OpenSheetOf(u"service patient"_s, kIsService);
    Step(u"service patient's charges"_s, [this] {
        NameDoctor();
        TypeSupply(u"102"_s, u"3"_s);
        TypeFee(u"CY"_s, u"501"_s);
        Expect(base::Val(Tour::Find<QLineEdit>("txtDiscount")->text()) > 0,
               u"there is no discount"_s);
    });
    SaveAndPrint(u"service patient"_s, false);
    ReadSlip(u"service patient's slip"_s, u"slip-service.pdf"_s);
    ExpectSlip(u"CA|102|3|1170.75;CY|501|1|450"_s, u"450|0|3||0"_s);
    LeaveHub();
}

void SlipsDay::ChargeSponsoredPatient() {
    OpenSheetOf(u"sponsored patient"_s, kFunds.arg(3));
    Step(u"sponsored patient's charges"_s, [this] {
        NameDoctor();
        // A fee that takes all three accounts and 125.50 more.
        const QString all =
            Ask(u"SELECT SUM(f.FundBalance) FROM BILLING..tbFundAccount f INNER JOIN "
                "PATIENT_DATA..tbOutPatient v ON v.HospNum = f.HospNum WHERE "
                "v.IdNum = '%1'"_s.arg(Tour::Find<QLabel>("lblIdNum")->text()));
        TypeFee(u"CY"_s, u"510"_s, base::MoneyText(base::Val(all) + 125.5));
        TypeSupply(u"101"_s, u"1"_s);
    });
    SaveAndPrint(u"sponsored patient"_s, true);
    ReadSlip(u"sponsored patient's slip"_s, u"slip-sponsored.pdf"_s);
    Quietly(u"three funds pay"_s, [this] {
        Expect(m_slip.contains(u"510.50"_s) &&
                   m_slip.count(QRegularExpression(u"F1\\d+-[123]"_s)) == 3,
               u"the slip does not name the three funds"_s);
    });
    ExpectSlip(u"CY|510|1|21875.5;CA|101|1|385"_s, u"21875.5|385|1||3"_s);
    LeaveHub();
}

void SlipsDay::MeetEmptyFund() {
    OpenSheetOf(u"patient without funds"_s, kFunds.arg(0));
    ReadBox(u"fund of 0 is told"_s, u"CDF Balance is 0.00"_s);
    Step(u"sheet that cannot be saved"_s, [this] {
        Expect(!Tour::Find<QAbstractButton>("cmdSavePrint")->isVisible(), u"it can be saved"_s);
    });
    Quietly(u"sheet closed"_s, [] { Tour::Press(Qt::Key_C, Qt::AltModifier); });
    LeaveHub();
}

void SlipsDay::ExpectOneLine() {
    const auto* list = Tour::Find<toolkit::FlexGrid>("grdCharges");
    Expect(list->TextMatrix(1, 2) == u"501"_s && list->TextMatrix(1, 6) != list->TextMatrix(2, 6),
           u"the list shows something else"_s);
}

void SlipsDay::RevokeDoctorsFee() {
    OpenSheetOf(u"senior patient"_s, kPays.arg(u"SM"_s));
    Step(u"doctor's fee, fee and supply"_s, [this] {
        NameDoctor();
        TypeFee(u"MD"_s, u"802"_s);
        TypeFee(u"CY"_s, u"501"_s);
        TypeSupply(u"102"_s, u"2"_s);
    });
    SaveAndPrint(u"senior patient"_s, false);
    ReadSlip(u"doctor's fee on a slip"_s, u"slip-doctor.pdf"_s);
    ExpectSlip(u"MD|802|1|500;CY|501|1|450;CA|102|2|780.5"_s, u"450|624.4|2|500|0"_s);
    Quietly(u"sheet opened again"_s, [] { Push("cmdPostCharges"); });
    Step(u"list of charges"_s, [] { Tour::Press(Qt::Key_L, Qt::AltModifier); });
    Quietly(u"the list has the keys"_s, [this] {
        Expect(Tour::Find<toolkit::FlexGrid>("grdCharges")->hasFocus(),
               u"the list has not the keys"_s);
        Tour::Press(Qt::Key_Down);
    });
    Quietly(u"slip asked for again"_s, [this] {
        m_slip.swap(m_firstSlip);
        Tour::Press(Qt::Key_R, Qt::AltModifier);
    });
    ReadSlip(u"slip printed again"_s, u"slip-again.pdf"_s);
    Step(u"slip revoked"_s, [this] {
        const QString again = m_slip.left(m_slip.indexOf(u"REPRINT by ")).trimmed();
        Expect(m_slip != m_firstSlip && again == m_firstSlip.trimmed(),
               u"the slip says something else"_s);
        Tour::Press(Qt::Key_V, Qt::AltModifier);
    });
    // The unit's own fee stays, alone: revoking again finds nothing more.
    Step(u"slip revoked again"_s, [this] {
        ExpectOneLine();
        Tour::Press(Qt::Key_V, Qt::AltModifier);
    });
    Quietly(u"nothing more is taken back"_s, [this] {
        ExpectOneLine();
        Expect(Tour::Find<QLabel>("lblMessage")->text().contains(u"450.00"),
               u"the fee that stays is not told"_s);
    });
    ExpectSlip(u"MD|802|1|500;CY|501|1|450;CA|102|2|780.5"_s, u"450|0|0|0|0"_s);
    Quietly(u"list closed"_s, [] {
        Tour::Find<toolkit::FlexGrid>("grdCharges")->setFocus();
        Tour::Press(Qt::Key_Escape);
    });
    Quietly(u"sheet closed"_s, [] { Tour::Press(Qt::Key_C, Qt::AltModifier); });
    LeaveHub();
}
