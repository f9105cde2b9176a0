#pragma once

#include <QString>
#include <functional>

#include "hub/SummaryText.h"

namespace components {
struct StayRecord;
}
namespace db {
class Recordset;
}

/// Whose summary it is, and of which stay, as the list of stays shows it.
struct SummaryStay {
    QString HospNum;
    QString IdNum;   ///< of the patient on screen
    QString Number;  ///< of the stay: an admission, or a visit when it ends with "B"
    QString Admitted;
    QString Discharged;
};

/// Whether the number is that of an out-patient or emergency visit.
bool IsVisitNumber(const QString& number);
/// Loads an admission or a visit of the patient into the session's patient finder; nothing when
/// the finder does not know it. Valid until the next call.
const components::StayRecord* LoadStay(const QString& number, const QString& hospNum);

/// Composes the clinical summary of one stay: who, when, by whom, what for, what was given and
/// what was found.
class ClinicalSummary final {
public:
    /// Writes into the document. `progress` is told 0 to 100 through each section's records,
    /// between two edits of the document.
    ClinicalSummary(QTextDocument& document, std::function<void(int)> progress);

    /// Clears the document and composes it anew. Throws base::RuntimeError; what was written by
    /// then stays.
    void Compose(const SummaryStay& stay);

private:
    void WriteTitle();
    void WritePatient(const SummaryStay& stay, const components::StayRecord& record);
    void WriteStay(const SummaryStay& stay, const components::StayRecord& record);
    void WriteMedicines(const SummaryStay& stay);
    void WriteExaminations(const QString& number, const QString& type, const QString& caption);
    void ForEach(db::Recordset& rows, const std::function<void()>& write);
    void Separate();

    SummaryText m_text;
    QTextCursor m_edit;
    std::function<void(int)> m_progress;
};
