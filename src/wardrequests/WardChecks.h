#pragma once

#include <QString>

/// True, after a message, when the item is already requested for this visit from that department
/// ("PH", "CS") and still waits. Throws base::DatabaseError.
bool CheckExamStatus(const QString& idNum, const QString& code, const QString& department);

/// True when the item was processed today for this visit and the user does not want it again.
/// Throws base::DatabaseError.
bool CheckExamPosted(const QString& idNum, const QString& code, const QString& department);
