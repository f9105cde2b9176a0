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

namespace {

const QString kNotSponsored =
    QStringLiteral("NOT EXISTS (SELECT 1 FROM BILLING..tbVisitAccount a WHERE a.IdNum = v.IdNum)");
const QString kPays = kNotSponsored + QStringLiteral(
                                          " AND ISNULL(v.DiscType, '') = '%1' AND "
                                          "ISNULL(m.MSSClassification, '') = ''");
const QString kIsService =
    kNotSponsored + QStringLiteral(" AND v.DiscType = 'QF' AND m.MSSClassification <> ''");
const QString kFunds = QStringLiteral(
    "EXISTS (SELECT 1 FROM BILLING..tbVisitAccount a WHERE a.IdNum = v.IdNum) AND %1 = (SELECT "
    "COUNT(*) FROM BILLING..tbFundAccount f INNER JOIN BILLING..tbFundCostCenter c ON "
    "c.AccountNum = f.AccountNum AND c.RevenueID = 'CY' WHERE f.HospNum = v.HospNum AND "
    "f.FundBalance > 0)");

QString Ask(const QString& statement) {
    const auto rows = Tour::Ask(statement);
    if (rows->Eof())
        throw std::runtime_error("there is no such patient");
    return rows->Fields(0).Text();
}

QString VisitWhere(const QString& condition) {
    return Ask(QStringLiteral("SELECT TOP (1) v.IdNum FROM CLINICAL_AREA..tbCAPDPatient p INNER "
                              "JOIN PATIENT_DATA..tbMaster m ON m.HospNum = p.HospNum INNER JOIN "
                              "PATIENT_DATA..tbOutPatient v ON v.IdNum = (SELECT TOP (1) x.IdNum "
                              "FROM PATIENT_DATA..tbOutPatient x WHERE x.HospNum = p.HospNum ORDER "
                              "BY x.AdmDate DESC, x.IdNum DESC) WHERE v.BillingDate IS NULL AND %1 "
                              "ORDER BY v.IdNum")
                   .arg(condition));
}

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
    m_tour.Quietly(who + QStringLiteral(" is looked for"), [condition] {
        auto* option = Tour::Find<QAbstractButton>("OptPatientType0");
        option->setFocus();
        Tour::Press(Qt::Key_Space);
        if (auto* current = Tour::Find<QAbstractButton>("chkCurrent"); current->isChecked()) {
            current->setFocus();
            Tour::Press(Qt::Key_Space);
        }
        for (const char* other : {"txtHospNum", "txtLastName"})
            Tour::Find<QLineEdit>(other)->clear();
        auto* box = Tour::Find<QLineEdit>("txtIdNum");
        box->clear();
        Tour::Type(box, VisitWhere(condition));
        Tour::Press(Qt::Key_Return);
    });
    m_tour.Quietly(who + QStringLiteral(" is opened"), [] {
        Tour::Find<toolkit::ListView>("lvwSearchPatient")->setFocus();
        Tour::Press(Qt::Key_Return);
    });
    m_tour.Quietly(who + QStringLiteral(" is charged"), [] {
        Tour::Find<QAbstractButton>("cmdPostCharges")->setFocus();
        Tour::Press(Qt::Key_Return);
    });
}

void SlipsDay::NameDoctor() {
    ChargesDay::Enter(QStringLiteral("103"));
}

// Enter walks from the item over type and quantity to the next line.
void SlipsDay::TypeSupply(const QString& item, const QString& quantity) {
    ChargesDay::Enter(QStringLiteral("CA"));
    ChargesDay::Enter(item);
    Tour::Press(Qt::Key_Return);
    ChargesDay::Enter(quantity);
}

void SlipsDay::TypeFee(const QString& revenueCode, const QString& item, const QString& amount) {
    ChargesDay::Enter(revenueCode);
    ChargesDay::Enter(item);
    Tour::Press(Qt::Key_Return);
    Tour::Press(Qt::Key_Return);
    ChargesDay::Enter(amount);
}

void SlipsDay::SaveAndPrint(const QString& who, bool sponsored) {
    m_tour.Quietly(who + QStringLiteral("'s slip is saved"),
                   [] { Tour::Press(Qt::Key_P, Qt::AltModifier); });
    if (sponsored) {
        m_tour.Step(who + QStringLiteral("'s fund after the slip"), [this] {
            m_tour.Expect(Tour::Window()->windowTitle() == QStringLiteral("Viewing"),
                          QStringLiteral("the fund is not shown"));
        });
        m_tour.Quietly(QStringLiteral("the fund is read"), [] { Tour::Press(Qt::Key_Escape); });
    }
    m_tour.Step(who + QStringLiteral("'s slip is told saved"), [this] {
        m_tour.Expect(Tour::Window()->objectName() != QStringLiteral("frmRequest"),
                      QStringLiteral("there is no message"));
    });
    m_tour.Quietly(QStringLiteral("the message is read"), [] { Tour::Press(Qt::Key_Return); });
}

void SlipsDay::ReadSlip(const QString& name, const QString& file) {
    m_tour.Step(name, [this] {
        m_tour.Expect(Tour::Window()->windowTitle() == QStringLiteral("CAPD ChargeSlip"),
                      QStringLiteral("the slip is not shown"));
    });
    m_tour.Quietly(name + QStringLiteral(" saved as PDF"), [this, file] {
        m_slip = TextOfSlip();
        toolkit::FileNameScript names;
        names.Answer(m_tour.File(file));
        Tour::Press(Qt::Key_S, Qt::ControlModifier);
        m_tour.Expect(names.Leftovers().isEmpty() && QFileInfo(m_tour.File(file)).size() > 1000,
                      QStringLiteral("no PDF was written"));
    });
    m_tour.Quietly(name + QStringLiteral(" closed"), [] { Tour::Press(Qt::Key_Escape); });
}

void SlipsDay::LeaveHub() {
    m_tour.Quietly(QStringLiteral("hub left"), [this] {
        m_tour.Expect(Tour::Window()->objectName() != QStringLiteral("frmRequest"),
                      QStringLiteral("the charge sheet stayed"));
        Tour::Press(Qt::Key_Escape);
    });
}

void SlipsDay::ChargePayPatient() {
    OpenSheetOf(QStringLiteral("pay patient"), kPays.arg(QString()));
    m_tour.Step(QStringLiteral("pay patient's charges"), [this] {
        NameDoctor();
        TypeSupply(QStringLiteral("108"), QStringLiteral("2"));
        TypeFee(QStringLiteral("CY"), QStringLiteral("501"));
        m_tour.Expect(Tour::Find<QLineEdit>("txtNetAmount")->text() == QStringLiteral("730.00"),
                      QStringLiteral("the charges do not add up"));
    });
    SaveAndPrint(QStringLiteral("pay patient"), false);
    ReadSlip(QStringLiteral("pay patient's slip"), QStringLiteral("slip-pay.pdf"));
    LeaveHub();
}

void SlipsDay::ChargeServicePatient() {
    OpenSheetOf(QStringLiteral("service patient"), kIsService);
    m_tour.Step(QStringLiteral("service patient's charges"), [this] {
        NameDoctor();
        TypeSupply(QStringLiteral("102"), QStringLiteral("3"));
        TypeFee(QStringLiteral("CY"), QStringLiteral("501"));
        m_tour.Expect(base::Val(Tour::Find<QLineEdit>("txtDiscount")->text()) > 0,
                      QStringLiteral("there is no discount"));
    });
    SaveAndPrint(QStringLiteral("service patient"), false);
    ReadSlip(QStringLiteral("service patient's slip"), QStringLiteral("slip-service.pdf"));
    LeaveHub();
}

void SlipsDay::ChargeSponsoredPatient() {
    OpenSheetOf(QStringLiteral("sponsored patient"), kFunds.arg(3));
    m_tour.Step(QStringLiteral("sponsored patient's charges"), [this] {
        NameDoctor();
        // A fee that takes all three accounts and 125.50 more.
        const QString all =
            Ask(QStringLiteral("SELECT SUM(f.FundBalance) FROM BILLING..tbFundAccount f INNER JOIN "
                               "PATIENT_DATA..tbOutPatient v ON v.HospNum = f.HospNum WHERE "
                               "v.IdNum = '%1'")
                    .arg(Tour::Find<QLabel>("lblIdNum")->text()));
        TypeFee(QStringLiteral("CY"), QStringLiteral("510"),
                base::MoneyText(base::Val(all) + 125.5));
        TypeSupply(QStringLiteral("101"), QStringLiteral("1"));
    });
    SaveAndPrint(QStringLiteral("sponsored patient"), true);
    ReadSlip(QStringLiteral("sponsored patient's slip"), QStringLiteral("slip-sponsored.pdf"));
    m_tour.Quietly(QStringLiteral("three funds pay"), [this] {
        m_tour.Expect(m_slip.contains(QStringLiteral("510.50")) &&
                          m_slip.count(QRegularExpression(QStringLiteral("F1\\d+-[123]"))) == 3,
                      QStringLiteral("the slip does not name the three funds"));
    });
    LeaveHub();
}

void SlipsDay::MeetEmptyFund() {
    OpenSheetOf(QStringLiteral("patient without funds"), kFunds.arg(0));
    m_tour.Step(QStringLiteral("fund of 0 is told"), [this] {
        bool found = false;
        for (const QLabel* label : Tour::Window()->findChildren<QLabel*>())
            found = found || label->text().contains(QStringLiteral("CDF Balance is 0.00"));
        m_tour.Expect(found, QStringLiteral("no message"));
    });
    m_tour.Quietly(QStringLiteral("fund of 0 is read"), [] { Tour::Press(Qt::Key_Return); });
    m_tour.Step(QStringLiteral("sheet that cannot be saved"), [this] {
        m_tour.Expect(!Tour::Find<QAbstractButton>("cmdSavePrint")->isVisible(),
                      QStringLiteral("it can be saved"));
    });
    m_tour.Quietly(QStringLiteral("sheet closed"), [] { Tour::Press(Qt::Key_C, Qt::AltModifier); });
    LeaveHub();
}

void SlipsDay::ExpectOneLine() {
    const auto* list = Tour::Find<toolkit::FlexGrid>("grdCharges");
    m_tour.Expect(list->TextMatrix(1, 2) == QStringLiteral("501") &&
                      list->TextMatrix(1, 6) != list->TextMatrix(2, 6),
                  QStringLiteral("the list shows something else"));
}

void SlipsDay::RevokeDoctorsFee() {
    OpenSheetOf(QStringLiteral("senior patient"), kPays.arg(QStringLiteral("SM")));
    m_tour.Step(QStringLiteral("doctor's fee, fee and supply"), [this] {
        NameDoctor();
        TypeFee(QStringLiteral("MD"), QStringLiteral("802"));
        TypeFee(QStringLiteral("CY"), QStringLiteral("501"));
        TypeSupply(QStringLiteral("102"), QStringLiteral("2"));
    });
    SaveAndPrint(QStringLiteral("senior patient"), false);
    ReadSlip(QStringLiteral("doctor's fee on a slip"), QStringLiteral("slip-doctor.pdf"));
    m_tour.Quietly(QStringLiteral("sheet opened again"), [] {
        Tour::Find<QAbstractButton>("cmdPostCharges")->setFocus();
        Tour::Press(Qt::Key_Return);
    });
    m_tour.Step(QStringLiteral("list of charges"), [] { Tour::Press(Qt::Key_L, Qt::AltModifier); });
    m_tour.Quietly(QStringLiteral("the list has the keys"), [this] {
        m_tour.Expect(Tour::Find<toolkit::FlexGrid>("grdCharges")->hasFocus(),
                      QStringLiteral("the list has not the keys"));
        Tour::Press(Qt::Key_Down);
    });
    m_tour.Quietly(QStringLiteral("slip asked for again"), [this] {
        m_slip.swap(m_firstSlip);
        Tour::Press(Qt::Key_R, Qt::AltModifier);
    });
    ReadSlip(QStringLiteral("slip printed again"), QStringLiteral("slip-again.pdf"));
    m_tour.Step(QStringLiteral("slip revoked"), [this] {
        const QString again = m_slip.left(m_slip.indexOf(u"REPRINT by ")).trimmed();
        m_tour.Expect(m_slip != m_firstSlip && again == m_firstSlip.trimmed(),
                      QStringLiteral("the slip says something else"));
        Tour::Press(Qt::Key_V, Qt::AltModifier);
    });
    // The unit's own fee stays, alone: revoking again finds nothing more.
    m_tour.Step(QStringLiteral("slip revoked again"), [this] {
        ExpectOneLine();
        Tour::Press(Qt::Key_V, Qt::AltModifier);
    });
    m_tour.Quietly(QStringLiteral("nothing more is taken back"), [this] {
        ExpectOneLine();
        m_tour.Expect(Tour::Find<QLabel>("lblMessage")->text().contains(u"450.00"),
                      QStringLiteral("the fee that stays is not told"));
    });
    m_tour.Quietly(QStringLiteral("list closed"), [] {
        Tour::Find<toolkit::FlexGrid>("grdCharges")->setFocus();
        Tour::Press(Qt::Key_Escape);
    });
    m_tour.Quietly(QStringLiteral("sheet closed"), [] { Tour::Press(Qt::Key_C, Qt::AltModifier); });
    LeaveHub();
}
