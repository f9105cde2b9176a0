#pragma once

#include <QString>

/// Where a cash assessment stands.
enum class AssessmentState { Pending, Paid, Revoked };

/// The state behind a status of the list: "OR" with a receipt, "PENDING", "REVOKED", or one of the
/// codes "1" paid, "R" and "C" revoked.
AssessmentState StateOf(const QString& status);

/// Takes back all lines of an assessment that waits for its payment, in one transaction, and
/// answers the state that it was found in: only a pending one is changed. Throws
/// base::DatabaseError, also when somebody else settles it at the same moment; nothing is changed
/// then.
AssessmentState RevokeAssessment(const QString& refNum);
