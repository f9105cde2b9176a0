#include "reports/UnitReports.h"

#include "reports/OpenReport.h"
#include "reports/frmReportDate2.h"
#include "session/modGlobals.h"

namespace modMain {

namespace {

const QString kDatabase = QStringLiteral("CLINICAL_AREA");

void Produce(const QString& fileName, const QStringList& parameters, const QString& title) {
    OpenReport(ProgramDirectory() + u'/' + fileName, kDatabase, parameters);
    ShowReport(true, title, true);
}

/// The days of a report, first and last; empty when the user thought better of it.
QStringList AskDates() {
    frmReportDate2& dialog = frmReportDate2::Shared();
    dialog.exec();
    if (dialog.CloseForm())
        return {};
    return {dialog.startdate(), dialog.enddate()};
}

}  // namespace

void PrintCAPDPatients() {
    Produce(QStringLiteral("CAPDPatients.rpt"), {}, QStringLiteral("List of CAPD Patients"));
}

void PrintCAPDVisits() {
    const QStringList dates = AskDates();
    if (dates.isEmpty())
        return;
    Produce(QStringLiteral("CAPDVisits.rpt"),
            dates + QStringList{modGlobals::gCompany, modGlobals::gAddress1,
                                modGlobals::gCurrentUser->employeename()},
            QStringLiteral("CAPD Visits Report"));
}

void PrintIncome() {
    const QStringList dates = AskDates();
    if (dates.isEmpty())
        return;
    Produce(QStringLiteral("Incomereport.rpt"), dates, QStringLiteral("IncomeReport"));
}

}  // namespace modMain
