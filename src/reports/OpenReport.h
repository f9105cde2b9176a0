#pragma once

#include <QString>
#include <QStringList>

/// How every report is produced: opened with its parameters, then shown.
namespace modMain {

/// Opens a report file into gReport and reads its rows over the session's connection: what is
/// shown later is what stood in the tables now. Value i of the list goes to the report's i-th
/// parameter field; fields beyond the list stay empty, values beyond the fields are dropped.
/// Throws base::RuntimeError for a missing or broken file, base::DatabaseError; gReport is then
/// as it was.
void OpenReport(const QString& path, const QString& database, const QStringList& parameters);

/// Shows gReport in a viewer window of its own, modal, and returns when it is closed.
void ShowReport(bool groupTree, const QString& title, bool directPrint);

/// Where the program and its report files are, without a separator at the end.
QString ProgramDirectory();

}  // namespace modMain
