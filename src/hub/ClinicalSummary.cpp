#include "hub/ClinicalSummary.h"

#include <QDate>
#include <algorithm>

#include "base/Dates.h"
#include "base/Numbers.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"

using components::StayRecord;
using print::LineRole;

namespace {

constexpr int kBlue = SummaryText::kBlue;
constexpr int kBlack = SummaryText::kBlack;
constexpr int kToWidth = 1;
const QString kArial = QStringLiteral("Arial");
const QString kCourier = QStringLiteral("Courier New");
const QString kScript = QStringLiteral("Monotype Corsiva");
const QString kLineEnd = QStringLiteral("\n");

// What the confinement results component gives by these types.
const QString kMedicines = QStringLiteral("1");
const QString kXray = QStringLiteral("2");
const QString kUltrasound = QStringLiteral("3");
const QString kCtScan = QStringLiteral("4");

QString Blanks(int count) {
    return QString(qMax(0, count), u' ');
}

// Centred on a column of the page.
QString CentredOn(int column, const QString& text) {
    return Blanks(base::ToInt16(column - double(text.length()) / 2)) + text + kLineEnd;
}

// The list's moment as the summary writes a day; what is no date stays as it is.
QString DayOf(const QString& moment) {
    const QDate day = QDate::fromString(moment.section(u' ', 0, 0), QStringLiteral("M/d/yyyy"));
    return day.isValid() ? day.toString(QStringLiteral("MM/dd/yyyy")) : moment;
}

// The day alone: with the hours behind it a cell of ten characters would end in one of their
// digits.
QString DayText(const db::Value& moment) {
    const QDateTime read = moment.Moment();
    return read.isValid() ? base::ShortDate(read.date()) : moment.Text();
}

QString TrimmedRight(QString text) {
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

// A number that lost digits is another number: 1000 must not read as 100, nor a strength of 500 mg
// as 50. Such a cell is written whole and pushes the rest of its line.
QString FitMedicine(const QString& text, int width) {
    const QString whole = text.trimmed();
    const auto isDigit = [](QChar sign) { return sign.isDigit(); };
    if (std::any_of(whole.cbegin() + qMin(qsizetype(width), whole.size()), whole.cend(), isDigit))
        return whole;
    return FitText(whole, width, kToWidth);
}

std::shared_ptr<db::Recordset> ResultsOf(const QString& number, const QString& type) {
    return modGlobals::gConfinementResults->GetConfinementResults(
        modGlobals::gCurrentUser->SQLConnection()->ConnectionString(), number, type);
}

}  // namespace

bool IsVisitNumber(const QString& number) {
    return number.endsWith(u'B');
}

const StayRecord* LoadStay(const QString& number, const QString& hospNum) {
    components::PatientFinder& finder = *modGlobals::gPatientSearch;
    if (IsVisitNumber(number))
        return finder.OpenOutPatient(number, hospNum) ? &finder.OutPatient() : nullptr;
    return finder.ValidateAdmission(number) ? &finder.Admission() : nullptr;
}

ClinicalSummary::ClinicalSummary(QTextDocument& document, std::function<void(int)> progress)
    : m_text(document), m_edit(&document), m_progress(std::move(progress)) {}

void ClinicalSummary::Compose(const SummaryStay& stay) {
    m_text.Clear();
    // One edit of the document from one report of the progress to the next: laid out once.
    struct Edit {
        explicit Edit(QTextCursor& cursor) : Cursor(cursor) { Cursor.beginEditBlock(); }
        ~Edit() { Cursor.endEditBlock(); }
        QTextCursor& Cursor;
    } const edit(m_edit);
    WriteTitle();
    if (const StayRecord* record = LoadStay(stay.Number, stay.HospNum)) {
        WritePatient(stay, *record);
        WriteStay(stay, *record);
        Separate();
    }
    WriteMedicines(stay);
    Separate();
    WriteExaminations(stay.Number, kXray, QStringLiteral("Xray Examinations :"));
    Separate();
    WriteExaminations(stay.Number, kUltrasound, QStringLiteral("Ultrasound Examinations :"));
    Separate();
    WriteExaminations(stay.Number, kCtScan, QStringLiteral("CT-Scan Examinations :"));
}

void ClinicalSummary::Separate() {
    m_text.AppendRun(kLineEnd, 14, kArial, kBlue, true);
}

void ClinicalSummary::WriteTitle() {
    const QString heading = QStringLiteral("Clinical Summary");
    m_text.AppendRun(kLineEnd, 14, kArial, kBlue, false);
    for (const QString& line : {modGlobals::gCompany, modGlobals::gAddress1})
        m_text.AppendRun(CentredOn(40, line.trimmed()), 10, kCourier, kBlack, false);
    m_text.AppendRun(CentredOn(70, heading), 14, kScript, kBlue, false);
    m_text.AppendRun(kLineEnd, 14, kArial, kBlue, false);
}

void ClinicalSummary::WritePatient(const SummaryStay& stay, const StayRecord& record) {
    const components::PersonRecord& patient = record.Patient;
    const bool isVisit = IsVisitNumber(stay.Number);
    struct Cell {
        QString Caption;
        QString Value;
        int Width = 0;  // as long as it is when 0
    };
    const std::vector<std::vector<Cell>> lines = {
        {{QStringLiteral("Lastname   :"), patient.LastName, 15},
         {QStringLiteral("Age         :"), isVisit ? patient.Age : record.Age, 10},
         {QStringLiteral("Admission Number :"), record.IDNumber}},
        {{QStringLiteral("Firstname  :"), patient.FirstName, 15},
         {QStringLiteral("Sex         :"),
          patient.Sex == u"M" ? QStringLiteral("Male") : QStringLiteral("Female"), 10},
         {QStringLiteral("Hospital Number  :"), record.HospitalNumber}},
        {{QStringLiteral("Middlename :"), patient.MiddleName, 15},
         {QStringLiteral("Civil Status:"), patient.CivilStatus, 10},
         {QStringLiteral("Room/Ward Number :"), isVisit ? QStringLiteral("ER/OPD") : record.Room}},
        {{QStringLiteral("Birthdate  :"), TrimmedRight(patient.BirthDate)}}};
    for (const std::vector<Cell>& line : lines) {
        QString gap;
        for (const Cell& cell : line) {
            const QString value =
                cell.Width ? FitText(cell.Value, cell.Width, kToWidth) : cell.Value;
            m_text.AppendRun(gap + cell.Caption, 10, kCourier, kBlue, false);
            m_text.AppendRun(u' ' + value, 10, kCourier, kBlack, false);
            gap = QStringLiteral(" ");
        }
        m_text.AppendRun(kLineEnd, 10, kCourier, kBlack, false);
    }
}

void ClinicalSummary::WriteStay(const SummaryStay& stay, const StayRecord& record) {
    m_text.AppendRun(QString(57, u'_') + kLineEnd, 14, kArial, kBlack, false);
    m_text.AppendRun(kLineEnd, 14, kArial, kBlue, false);
    const std::pair<QString, QString> details[] = {
        {QStringLiteral("Date Admitted        :"), DayOf(stay.Admitted)},
        {QStringLiteral("Date Discharged      :"), DayOf(stay.Discharged)},
        {QStringLiteral("Attending Physician  :"), record.AttendingDoctor},
        {QStringLiteral("Admitting Doctor     :"), record.AdmittingDoctor},
        {QStringLiteral("Admitting Diagnosis  :"), record.AdmittingDiagnosis},
        {QStringLiteral("Chief Complaints     :"), record.ChiefComplaint},
        {QStringLiteral("Final Diagnosis      :"), record.FinalDiagnosis}};
    for (const auto& [caption, value] : details) {
        m_text.AppendRun(caption, 10, kCourier, kBlue, true);
        m_text.AppendRun(Blanks(5) + value + kLineEnd, 8, kArial, kBlack, false);
    }
}

void ClinicalSummary::WriteMedicines(const SummaryStay& stay) {
    const auto medicines = ResultsOf(stay.Number, kMedicines);
    modGlobals::gCurrentUser->SQLConnection()->Execute(
        db::Call(QStringLiteral("STATION..Nurse_GetPostedMedicines"), {stay.IdNum}));
    if (!medicines->Eof()) {
        m_text.SetRole(LineRole::Heading);
        m_text.AppendRun(QStringLiteral("Medications :\n"), 10, kArial, kBlue, true);
        const auto fit = [](const QString& text, int width) {
            return FitText(text, width, kToWidth);
        };
        m_text.SetRole(LineRole::TableHeading);
        m_text.AppendRun(
            Blanks(7) + fit(QStringLiteral("Rx Date"), 13) + fit(QStringLiteral("Brand Name"), 35) +
                fit(QStringLiteral("Dosage"), 25) + fit(QStringLiteral("Qty"), 5) + kLineEnd,
            8, kCourier, kBlack, false);
        m_text.SetRole(LineRole::TableRow);
        ForEach(*medicines, [&] {
            const auto field = [&medicines](const char* name) {
                return medicines->Fields(QLatin1String(name));
            };
            if (field("Transdate").Value().IsNull())
                return;
            m_text.AppendRun(fit(DayText(field("Transdate").Value()), 10) + Blanks(3) +
                                 FitMedicine(field("Drug Name").Text(), 30) + Blanks(5) +
                                 FitMedicine(field("Dosage").Text(), 20) + Blanks(5) +
                                 FitMedicine(field("Quantity").Text(), 3) + Blanks(2) + kLineEnd,
                             8, kCourier, kBlack, false);
        });
        m_text.SetRole(LineRole::Text);
    }
    medicines->Close();
}

void ClinicalSummary::WriteExaminations(const QString& number, const QString& type,
                                        const QString& caption) {
    const auto examinations = ResultsOf(number, type);
    if (!examinations->Eof()) {
        m_text.SetRole(LineRole::Heading);
        m_text.AppendRun(caption + kLineEnd, 10, kArial, kBlue, true);
        ForEach(*examinations, [&] {
            const auto text = [&examinations](const char* name) {
                return examinations->Fields(QLatin1String(name)).Text();
            };
            m_text.SetRole(LineRole::Heading);
            m_text.AppendRun(
                Blanks(10) + text("Examination") + u' ' + text("Exam. Date") + kLineEnd, 8, kArial,
                kBlue, false);
            m_text.SetRole(LineRole::Text);
            m_text.AppendRun(Blanks(10) + text("Interpretation") + kLineEnd, 8, kArial, kBlack,
                             false);
            m_text.AppendRun(kLineEnd, 8, kArial, kBlack, false);
        });
    }
    examinations->Close();
}

void ClinicalSummary::ForEach(db::Recordset& rows, const std::function<void()>& write) {
    const int count = rows.RecordCount();
    int shown = -1;
    for (int position = 1; !rows.Eof(); ++position, rows.MoveNext()) {
        write();
        const int percent = int(qint64(position) * 100 / count);
        if (percent == shown)
            continue;
        shown = percent;
        m_edit.endEditBlock();
        m_progress(percent);
        m_edit.beginEditBlock();
    }
}
