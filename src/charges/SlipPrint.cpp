#include "charges/SlipPrint.h"

#include "base/Clock.h"
#include "base/Dates.h"
#include "base/Numbers.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "reports/OpenReport.h"
#include "session/modGlobals.h"

using modGlobals::gConnection;
using modGlobals::gCurrentUser;

namespace {

QString PrintCommand(const PrintLine& line) {
    return db::Call(
        QStringLiteral("CLINICAL_AREA..sp_CAPD_PrintChargeSlip"),
        {line.ItemCode, line.Description, base::PlainText(line.Quantity),
         base::PlainText(line.Price), base::PlainText(line.Amount), line.RevenueID,
         line.EmployeeCode, base::PlainText(line.Discount), base::PlainText(line.NetAmount)});
}

QString OldNumberCommand(const QString& hospNum) {
    return db::FromTemplate(
        QStringLiteral("SELECT isnull(Patient_Data.dbo.fn_GetOldHospNum( '##'),'') as OldHospNum"),
        {{QStringLiteral("##"), hospNum}});
}

QString ByCompanyCommand(const QString& slipNumber) {
    return db::Call(QStringLiteral("RADIOLOGY..spRadio_GenerateChargeSlip"),
                    {slipNumber, gCurrentUser->EmployeeCode()});
}

QString OldHospNum(const QString& hospNum) {
    db::Recordset found;
    found.SetCursorLocation(3);
    found.Open(OldNumberCommand(hospNum), gConnection, 2, 1, -1);
    return found.Eof() ? QString() : found.Fields(QStringLiteral("OldHospNum")).Text();
}

/// Who prints again, and when.
QString ReprintLine() {
    return QStringLiteral("REPRINT by %1 (%2), %3")
        .arg(gCurrentUser->employeename(), gCurrentUser->EmployeeCode(),
             base::DateTimeText(base::Clock::Now()));
}

QStringList Parameters(const SlipTexts& texts, const QString& oldHospNum) {
    const FirstPrint print = texts.Reprint.value_or(
        FirstPrint{texts.Doctor, gCurrentUser->employeename(), gCurrentUser->EmployeeCode(),
                   base::ShortDate(base::Clock::Today()), QString()});
    QStringList parameters{QStringLiteral("CAPD CC No.: ") + texts.SlipNumber,
                           texts.PatientName,
                           texts.Company,
                           texts.IdNum,
                           print.Clerk,
                           print.EmployeeCode,
                           print.Date,
                           QStringLiteral("VELMORA"),
                           QStringLiteral("Dunmarrow"),
                           texts.HospNum,
                           QStringLiteral("OPD"),
                           texts.Doctor,
                           oldHospNum,
                           texts.Age,
                           texts.Sex,
                           print.Date,
                           texts.PatientClass};
    if (texts.Reprint)
        parameters << ReprintLine() << print.State;
    return parameters;
}

}  // namespace

std::vector<PrintLine> PrintLines(const std::vector<SlipLine>& lines, bool withDiscount) {
    std::vector<PrintLine> printed;
    for (const SlipLine& line : lines) {
        const double amount = base::Val(line.Amount);
        printed.push_back({line.ItemCode, line.Description,
                           line.Quantity.isEmpty() ? 1 : base::Val(line.Quantity),
                           base::Val(line.Price), amount, line.RevenueID,
                           gCurrentUser->EmployeeCode(), withDiscount ? line.Discount : 0,
                           withDiscount ? line.NetAmount : amount});
    }
    return printed;
}

FirstPrint FirstPrintOf(const QString& slipNumber) {
    db::Recordset slip;
    slip.Open(db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_FirstPrint"), {slipNumber}),
              gConnection);
    if (slip.Eof())
        return {};
    const auto text = [&slip](const QString& name) { return slip.Fields(name).Text(); };
    return {text(QStringLiteral("DoctorName")), text(QStringLiteral("Employee")),
            text(QStringLiteral("UserID")), text(QStringLiteral("Moment")).section(u' ', 0, 0),
            text(QStringLiteral("State"))};
}

QString SlipPatientName(const QString& last, const QString& first, const QString& middle) {
    return last + QStringLiteral(", ") + first + u' ' + middle;
}

void SlipPrint::Open(Layout layout, const SlipTexts& texts, const std::vector<PrintLine>& lines) {
    db::Transaction transaction(*gConnection);
    gConnection->Execute(texts.Clear);
    for (const PrintLine& line : lines)
        gConnection->Execute(PrintCommand(line));
    const QString oldHospNum = OldHospNum(texts.HospNum);
    if (layout == Layout::ByCompany)
        gConnection->Execute(ByCompanyCommand(texts.SlipNumber));
    const QString file = layout == Layout::ByCompany ? QStringLiteral("ChargeSlip_withPDAF.rpt")
                                                     : QStringLiteral("ChargeSlip.rpt");
    modMain::OpenReport(modMain::ProgramDirectory() + u'/' + file, QStringLiteral("CLINICAL_AREA"),
                        Parameters(texts, oldHospNum));
    transaction.Commit();
}

void SlipPrint::Show() {
    modMain::ShowReport(false, QStringLiteral("CAPD ChargeSlip"), false);
}
