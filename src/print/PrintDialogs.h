#pragma once

#include <QString>
#include <memory>

#include "print/ReportPages.h"

class QWidget;

/// What the user is asked before pages leave the program.
namespace print {

/// Asks for printer and pages and prints beside the running program; `currentPage` (from 0) is
/// the one that "current page" means. Says so when there is no printer.
void AskAndPrint(QWidget* parent, std::shared_ptr<const ReportPages> pages, const QString& title,
                 int currentPage = 0);

/// Asks for a name and writes the PDF; a failure is told and leaves no half file.
void AskAndSavePdf(QWidget* parent, const ReportPages& pages, const QString& title);

}  // namespace print
