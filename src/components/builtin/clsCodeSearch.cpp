#include "components/builtin/clsCodeSearch.h"

#include <map>

#include "components/builtin/frmPickList.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

namespace components {

/// One of the lists: where its rows come from and how they are shown.
struct CodeList {
    QString Title;
    QString Find;
    QString Search;
    QString CodeField;
    std::vector<toolkit::ListColumn> Columns;
    std::map<QString, PickListLook> Looks;
    bool OfSection;  ///< the procedures take the revenue code before the text
};

namespace {

constexpr int kInvalidCall = 5;
// How the charge windows show a doctor; such a text is what was chosen before, not a search.
const QString kShownDoctor = QStringLiteral("DR. ");

const std::map<int, CodeList>& Lists() {
    static const std::map<int, CodeList> lists = {
        {CodeSearch::kDoctors,
         {.Title = QStringLiteral("Doctors"),
          .Find = QStringLiteral("PATIENT_DATA..sp_Doctor_Find"),
          .Search = QStringLiteral("PATIENT_DATA..sp_Doctor_Search"),
          .CodeField = QStringLiteral("DoctorID"),
          .Columns = {{QStringLiteral("Code"), 1200, QStringLiteral("DoctorID")},
                      {QStringLiteral("Last Name"), 2800, QStringLiteral("LastName")},
                      {QStringLiteral("First Name"), 2200, QStringLiteral("FirstName")},
                      {QStringLiteral("Middle Name"), 2200, QStringLiteral("MiddleName")},
                      {QStringLiteral("Specialty"), 2600, QStringLiteral("Specialty")}},
          .Looks = {},
          .OfSection = false}},
        {CodeSearch::kDosages,
         {.Title = QStringLiteral("Dosages"),
          .Find = QStringLiteral("STATION..sp_Dosage_Find"),
          .Search = QStringLiteral("STATION..sp_Dosage_Search"),
          .CodeField = QStringLiteral("DosageID"),
          .Columns = {{QStringLiteral("Code"), 1600, QStringLiteral("DosageID")},
                      {QStringLiteral("Dosage"), 4500, QStringLiteral("Dosage")},
                      {QStringLiteral("Times a Day"), 1800, QStringLiteral("Frequency")}},
          .Looks = {},
          .OfSection = false}},
        {CodeSearch::kOtherRevenue,
         {.Title = QStringLiteral("Other Revenue"),
          .Find = QStringLiteral("BILLING..sp_OtherRevenue_Find"),
          .Search = QStringLiteral("BILLING..sp_OtherRevenue_Search"),
          .CodeField = QStringLiteral("ItemCode"),
          .Columns = {{QStringLiteral("Code"), 1300, QStringLiteral("ItemCode")},
                      {QStringLiteral("Rate"), 1500, QStringLiteral("RateA"), {}, true},
                      {QStringLiteral("Description"), 6000, QStringLiteral("OtherRevenue")}},
          .Looks = {},
          .OfSection = true}}};
    return lists;
}

QString WithBlank(const QString& name) {
    const QString trimmed = name.trimmed();
    return trimmed.isEmpty() ? trimmed : trimmed + QLatin1Char(' ');
}

}  // namespace

// The lists live in this program: there is no application server to name.
void clsCodeSearch::SetMTS_Server(const QString& name) {
    Q_UNUSED(name);
}

void clsCodeSearch::Initialize_Classes() {
    *this = clsCodeSearch();
}

bool clsCodeSearch::SearchListing(QString& text, int listing) {
    const auto list = Lists().find(listing);
    if (list == Lists().end())
        throw base::RuntimeError(kInvalidCall,
                                 QStringLiteral("There is no code list %1.").arg(listing));
    m_cancelled = false;
    const bool isShownDoctor =
        listing == kDoctors && text.startsWith(kShownDoctor, Qt::CaseInsensitive);
    const QString wanted = isShownDoctor ? QString() : text.trimmed();
    auto row = Named(list->second, wanted);
    if (!row || row->RecordCount() != 1) {
        const QString picked = Pick(list->second, wanted, row ? row->Rows() : nullptr);
        m_cancelled = picked.isEmpty();
        if (m_cancelled)
            return false;
        row = Open(Command(list->second, list->second.Find, picked));
    }
    // Someone may have taken a row off the list while it was shown.
    if (row->Eof())
        return false;
    Keep(listing, *row);
    text = row->Fields(list->second.CodeField).Text();
    return true;
}

QString clsCodeSearch::Command(const CodeList& list, const QString& procedure,
                               const QString& text) const {
    return list.OfSection ? db::Call(procedure, {m_otherSectionId, text})
                          : db::Call(procedure, {text});
}

std::shared_ptr<db::Recordset> clsCodeSearch::Open(const QString& command) const {
    return db::ConnectionRef(m_connection).Get().Execute(command);
}

// The rows that the text names: the one of that code, else all that it finds; null without a text.
std::shared_ptr<db::Recordset> clsCodeSearch::Named(const CodeList& list,
                                                    const QString& text) const {
    if (text.isEmpty())
        return nullptr;
    if (m_byCode) {
        auto exact = Open(Command(list, list.Find, text));
        if (!exact->Eof())
            return exact;
    }
    return Open(Command(list, list.Search, text));
}

QString clsCodeSearch::Pick(const CodeList& list, const QString& text,
                            std::shared_ptr<const db::RowStore> found) const {
    frmPickList window(
        {.Title = list.Title,
         .Heading = m_companyName,
         .Columns = list.Columns,
         .CodeField = list.CodeField,
         .Command = [&](const QString& typed) { return Command(list, list.Search, typed); },
         .Looks = list.Looks},
        m_connection);
    return window.Pick(text, std::move(found));
}

void clsCodeSearch::Keep(int listing, db::Recordset& row) {
    const auto text = [&row](const char* column) {
        return row.Fields(QLatin1String(column)).Text();
    };
    if (listing == kDoctors)
        m_doctor = {.FirstName = WithBlank(text("FirstName")),
                    .MiddleName = WithBlank(text("MiddleName")),
                    .LastName = text("LastName"),
                    .ResultCode = text("DoctorID")};
    else if (listing == kDosages)
        m_dosage = {.ResultCode = text("DosageID"), .Frequency = text("Frequency")};
    else
        m_otherRevenue = {.ResultCode = text("ItemCode"),
                          .OtherRevenue = text("OtherRevenue"),
                          .RateA = row.Fields(QStringLiteral("RateA")).Number()};
}

}  // namespace components
