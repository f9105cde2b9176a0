#include "reports/OpenReport.h"

#include <QApplication>
#include <algorithm>

#include "reports/frmReportViewer.h"
#include "session/modGlobals.h"
#include "toolkit/Busy.h"

namespace modMain {

void OpenReport(const QString& path, const QString& database, const QStringList& parameters) {
    const toolkit::Busy busy;
    const auto report = print::Report::OpenReport(path);
    report->SetTitle(modGlobals::gCompany);
    for (print::ReportTable& table : report->Tables())
        table.SetLogOnInfo(modGlobals::gCurrentUser->ServerName(), database, QStringLiteral("sa"),
                           QString());
    auto& fields = report->ParameterFields();
    const size_t given = std::min(fields.size(), size_t(parameters.size()));
    for (size_t i = 0; i < given; ++i)
        fields[i].AddCurrentValue(parameters[qsizetype(i)]);
    report->ReadRecords(*modGlobals::gCurrentUser->SQLConnection());
    modGlobals::gReport = report;
}

void ShowReport(bool groupTree, const QString& title, bool directPrint) {
    frmReportViewer viewer(QApplication::activeWindow());
    viewer.SetShowGroupTree(groupTree);
    viewer.setWindowTitle(title);
    viewer.SetDirectPrint(directPrint);
    viewer.exec();
}

QString ProgramDirectory() {
    return QCoreApplication::applicationDirPath();
}

}  // namespace modMain
