#include "components/builtin/clsResultViewer.h"

#include <QApplication>

#include "components/builtin/frmResultViewer.h"
#include "db/Recordset.h"
#include "print/Report.h"
#include "toolkit/Busy.h"

namespace components {

namespace {

constexpr int kNoConnection = 91;

const QString kHospital = QStringLiteral("SELECT Company FROM PATIENT_DATA..tbHospitalInfo");
const QString kDatabase = QStringLiteral("PATIENT_DATA");
const QString kReportFile = QStringLiteral("/LabResult.rpt");

QString HospitalName(db::Connection& connection) {
    const auto rows = connection.Execute(kHospital);
    return rows->Eof() ? QString() : rows->Fields(0).Text();
}

}  // namespace

void clsResultViewer::Show_Results() {
    if (!m_connection)
        throw base::RuntimeError(kNoConnection,
                                 QStringLiteral("The result viewer has no connection."));
    frmResultViewer viewer(m_patientName, QApplication::activeWindow());
    {
        const toolkit::Busy busy;
        const auto report =
            print::Report::OpenReport(QCoreApplication::applicationDirPath() + kReportFile);
        report->SetTitle(HospitalName(*m_connection));
        for (print::ReportTable& table : report->Tables())
            table.SetLogOnInfo({}, kDatabase, {}, {});
        // In the order of the report's parameters.
        const QString values[] = {m_hospitalNumber, m_idNumber, m_requestNum, m_csNumber,
                                  m_patientName,    m_age,      m_sex,        m_roomNumber,
                                  m_status,         m_userId};
        auto& fields = report->ParameterFields();
        for (size_t i = 0; i < std::size(values) && i < fields.size(); ++i)
            fields[i].AddCurrentValue(values[i]);
        report->ReadRecords(*m_connection);
        viewer.SetResult(report->Pages());
    }
    viewer.exec();
}

}  // namespace components
