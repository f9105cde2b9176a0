#include "hub/ResultKinds.h"

#include "db/CommandText.h"
#include "db/Recordset.h"

using modGlobals::HubTab;

namespace {

// The wards' own procedures are called without a database; they stand in the default one.
const QString kHeart = QStringLiteral("Nurse_GetHrt");
const QString kRehabilitation = QStringLiteral("Nurse_GetPT");
const QString kLaboratory = QStringLiteral("PATIENT_DATA..sp_AOPD_ViewLabExams");

constexpr int kForwardOnly = 0;
constexpr int kDynamic = 2;
constexpr int kReadOnly = 1;
constexpr int kAnchor = 1;

const std::vector<int> kRadiologyWidths{1000, 3000, 2000, 2000, 1500, 1500, 1500, 1500};

std::shared_ptr<db::Connection> Session() {
    return modGlobals::gCurrentUser->SQLConnection();
}

std::shared_ptr<db::Recordset> OpenCommand(const QString& command, int cursorType) {
    auto rows = std::make_shared<db::Recordset>();
    rows->Open(command, Session(), cursorType, kReadOnly);
    return rows;
}

std::shared_ptr<db::Recordset> OpenXray(const PatientOnScreen& patient) {
    return modGlobals::gWardResults->GetResults(Session()->ConnectionString(), patient.IdNum(),
                                                QStringLiteral("1"));
}
std::shared_ptr<db::Recordset> OpenUltrasound(const PatientOnScreen& patient) {
    return modGlobals::gWardResults->GetResults(Session(), patient.IdNum(), QStringLiteral("2"));
}
std::shared_ptr<db::Recordset> OpenCtScan(const PatientOnScreen& patient) {
    return modGlobals::gWardResults->GetResults(Session(), patient.IdNum(), QStringLiteral("3"));
}
std::shared_ptr<db::Recordset> OpenHeart(const PatientOnScreen& patient) {
    return OpenCommand(db::Call(kHeart, {patient.IdNum()}), kForwardOnly);
}
std::shared_ptr<db::Recordset> OpenRehabilitation(const PatientOnScreen& patient) {
    return OpenCommand(db::Call(kRehabilitation, {patient.IdNum()}), kForwardOnly);
}
std::shared_ptr<db::Recordset> OpenLaboratory(const PatientOnScreen& patient) {
    return OpenLaboratoryList(patient, kDynamic);
}

// X-ray, ultrasound and CT scan: one family. The x-ray list never fills the middle name.
ResultKind Radiology(const char* name, const char* caption, HubTab flag,
                     decltype(ResultKind::Open) open, const char* reader) {
    ResultKind kind;
    kind.Name = QLatin1String(name);
    kind.Caption = QLatin1String(caption);
    kind.Flag = flag;
    kind.Open = open;
    kind.Columns = int(kRadiologyWidths.size()) + kAnchor;
    kind.Widths = kRadiologyWidths;
    kind.Details = {{QStringLiteral("Trans. No."), QStringLiteral("TransNum"), {1}},
                    {QStringLiteral("Trans.Date"), QStringLiteral("TransDate"), {3}},
                    {QStringLiteral("Result Date"), QStringLiteral("ResultDate"), {4}},
                    {QStringLiteral("Exam. Name"), QStringLiteral("ExamName"), {2}},
                    {QStringLiteral("No. of Films"), QStringLiteral("Films"), {}},
                    {QLatin1String(reader), QStringLiteral("Reader"), {5, 6, 7}}};
    kind.Boxes = {{QStringLiteral("Interpretation"), QStringLiteral("Interp"), 8, {}}};
    return kind;
}

ResultKind Xray() {
    ResultKind kind = Radiology("Xray", "&X-ray", HubTab::Xray, OpenXray, "Radiologist");
    kind.Layout = QStringLiteral(
        " |<Trans. No |<Exam. Name               |<Trans. Date        |<Result Date       |<DR. "
        "Lastname |<DR. Firstname |<DR. Middlename |<Interpretation");
    kind.Fields = QStringList{QStringLiteral("TRANS. NO"),
                              QStringLiteral("EXAM. NAME"),
                              QStringLiteral("TRANS. DATE"),
                              QStringLiteral("RESULT DATE"),
                              QStringLiteral("DR. LASTNAME"),
                              QStringLiteral("DR. FIRSTNAME"),
                              QString(),
                              QStringLiteral("Interpretation")};
    return kind;
}

ResultKind BoundRadiology(const char* name, const char* caption, HubTab flag,
                          decltype(ResultKind::Open) open, const char* reader) {
    ResultKind kind = Radiology(name, caption, flag, open, reader);
    kind.IsBound = true;
    return kind;
}

ResultKind Heart() {
    ResultKind kind;
    kind.Name = QStringLiteral("Heart");
    kind.Caption = QStringLiteral("&Heart Station");
    kind.Flag = HubTab::HeartStation;
    kind.Open = OpenHeart;
    kind.Columns = 10;
    kind.Layout = QStringLiteral(
        " |<Trans. No |<Exam. Name               |<Trans. Date        |<Result Date       |<FORM "
        "|<ATTN. DOCTOR             |<CARDIOLOGIST             |");
    kind.Widths = {1000, 3000, 2000, 2000, 1000, 4000, 4000};
    kind.Fields = QStringList{QStringLiteral("REQUEST NO."), QStringLiteral("EXAMINATION NAME"),
                              QStringLiteral("TRANS. DATE"), QStringLiteral("RESULT DATE"),
                              QStringLiteral("Form"),        QStringLiteral("ATTN. DOCTOR"),
                              QStringLiteral("CARDIOLOGIST")};
    kind.Details = {{QStringLiteral("Request No."), QStringLiteral("TransNum"), {1}},
                    {QStringLiteral("Exam. Date"), QStringLiteral("TransDate"), {3}},
                    {QStringLiteral("Result Date"), QStringLiteral("ResultDate"), {4}},
                    {QStringLiteral("Exam. Name"), QStringLiteral("ExamName"), {2}},
                    {QStringLiteral("Attending Doctor"), QStringLiteral("Attending"), {6}},
                    {QStringLiteral("Cardiologist"), QStringLiteral("Reader"), {7}}};
    const auto box = [](const char* caption, const char* field) {
        return ResultBox{QLatin1String(caption), QLatin1String(field), 0, {QLatin1String(field)}};
    };
    kind.Boxes = {box("DIAGNOSIS", "Diagnosis"), box("REMARKS", "Remarks"),
                  box("Resting", "Resting"),     box("During After Exercise", "Exercise"),
                  box("Comments", "Comments"),   box("Interpretation", "Interpretation")};
    kind.Print = ResultPrint::Report;
    return kind;
}

ResultKind Laboratory() {
    ResultKind kind;
    kind.Name = QStringLiteral("Lab");
    kind.Caption = QStringLiteral("&Laboratory");
    kind.Flag = HubTab::Laboratory;
    kind.Open = OpenLaboratory;
    kind.Columns = 6;
    kind.Layout = QStringLiteral(
        " |<Adm. Num. |<Request No.|<Result Date/Time  |<Exam. Code  |<Exam. Name               "
        "|<Section Name             |<ChargeSlipNum");
    kind.Widths = {1000, 2000, 2000, 1000, 4000, 2000, 2000};
    kind.Fields = QStringList{QStringLiteral("ID Number"),  QStringLiteral("RequestNum"),
                              QStringLiteral("Resultdate"), QStringLiteral("LabExamID"),
                              QStringLiteral("LabExam"),    QStringLiteral("SectionName"),
                              QStringLiteral("RefNum")};
    kind.ReleaseColumn = 3;
    kind.HasView = true;
    return kind;
}

ResultKind Rehabilitation() {
    ResultKind kind;
    kind.Name = QStringLiteral("PT");
    kind.Caption = QStringLiteral("Rehab. Medicine");
    kind.Open = OpenRehabilitation;
    kind.Columns = 6;
    kind.Layout =
        QStringLiteral(" |<REF. NO |<REQ. NO |<EXAM. NAME |<RESULT DATE |<DIAGNOSIS |<CODE ");
    kind.Widths = {1500, 1500, 3000, 1700, 3500, 800};
    kind.Fields = QStringList{QStringLiteral("REF. NO"),    QStringLiteral("REQ. NO"),
                              QStringLiteral("EXAM. NAME"), QStringLiteral("RESULT DATE"),
                              QStringLiteral("result"),     QStringLiteral("Code")};
    // "result" stands in the list under DIAGNOSIS; here each text has its own title.
    kind.Boxes = {{QStringLiteral("Examination"),
                   QString(),
                   0,
                   {QStringLiteral("Diagnosis"), QStringLiteral("result"),
                    QStringLiteral("Remarks"), QStringLiteral("Interpretation")}}};
    return kind;
}

// No such results come to this unit: the tab keeps its place, so that nobody searches for it.
ResultKind Nuclear() {
    ResultKind kind;
    kind.Name = QStringLiteral("Nuclear");
    kind.Caption = QStringLiteral("Nuclear");
    kind.Flag = HubTab::Nuclear;
    kind.Columns = 6;
    kind.Layout = QStringLiteral(
        " |<Trans. No |<Exam. Name               |<Trans. Date        |<Attending Dr.            "
        "|<Result Date       ");
    kind.Widths = {1000, 3000, 2000, 4000, 2000};
    kind.ReleaseColumn = 5;
    kind.Details = {{QStringLiteral("Trans. No."), QStringLiteral("TransNum"), {}},
                    {QStringLiteral("Exam. Name"), QStringLiteral("ExamName"), {}},
                    {QStringLiteral("Trans. Date"), QStringLiteral("TransDate"), {}},
                    {QStringLiteral("Attending Dr."), QStringLiteral("Attending"), {}},
                    {QStringLiteral("Result Date"), QStringLiteral("ResultDate"), {}}};
    kind.Boxes = {{QStringLiteral("Interpretation"), QStringLiteral("Interp"), 0, {}}};
    kind.Print = ResultPrint::Never;
    kind.HasMnemonics = true;
    return kind;
}

}  // namespace

std::shared_ptr<db::Recordset> OpenLaboratoryList(const PatientOnScreen& patient, int cursorType) {
    return OpenCommand(
        db::Call(kLaboratory, {patient.HospNum().trimmed(), patient.IdNum().trimmed()}),
        cursorType);
}

const std::vector<ResultKind>& ResultKinds() {
    static const std::vector<ResultKind> kinds{
        Xray(),
        BoundRadiology("Ultra", "&Ultrasound", HubTab::Ultrasound, OpenUltrasound, "Sonologist"),
        Heart(),
        Laboratory(),
        BoundRadiology("CT", "CT-Scan", HubTab::CtScan, OpenCtScan, "Radiologist"),
        Rehabilitation(),
        Nuclear()};
    return kinds;
}
