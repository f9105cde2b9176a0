#include "assessment/CashAssessment.h"

#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"

namespace {

const QString kRecordStatus = QStringLiteral("RecordStatus");
const QString kReceipt = QStringLiteral("ORNum");
const QString kRevoked = QStringLiteral("R");

QString LinesCommand(const QString& refNum) {
    return QStringLiteral("SELECT * FROM BILLING..tbCashAssessment WHERE RefNum = ") +
           db::Quoted(refNum);
}

// One receipt makes an assessment paid, one line that stands keeps it from being revoked.
AssessmentState StateOfLines(db::Recordset& lines) {
    AssessmentState state = AssessmentState::Revoked;
    for (lines.MoveFirst(); !lines.Eof(); lines.MoveNext()) {
        if (!lines.Fields(kReceipt).Text().isEmpty())
            return AssessmentState::Paid;
        if (lines.Fields(kRecordStatus).Text() != kRevoked)
            state = AssessmentState::Pending;
    }
    return state;
}

void RevokeLine(db::Recordset& lines) {
    lines.Fields(kRecordStatus).SetValue(kRevoked);
    // Written back as it was read: the server refuses the line when a receipt came meanwhile.
    lines.Fields(kReceipt).SetValue(lines.Fields(kReceipt).Value());
    lines.Update();
}

}  // namespace

AssessmentState StateOf(const QString& status) {
    if (status == u"R" || status == u"C" || status == u"REVOKED")
        return AssessmentState::Revoked;
    if (status == u"1" || status == u"PAID" || status.contains(u"OR"))
        return AssessmentState::Paid;
    return AssessmentState::Pending;
}

AssessmentState RevokeAssessment(const QString& refNum) {
    const auto connection = modGlobals::gCurrentUser->SQLConnection();
    db::Transaction transaction(*connection);
    db::Recordset lines;
    lines.SetCursorLocation(3);
    lines.Open(LinesCommand(refNum.trimmed()), connection, 2, 3, -1);
    const AssessmentState state = StateOfLines(lines);
    if (state != AssessmentState::Pending)
        return state;
    for (lines.MoveFirst(); !lines.Eof(); lines.MoveNext())
        if (lines.Fields(kRecordStatus).Text() != kRevoked)
            RevokeLine(lines);
    transaction.Commit();
    return state;
}
