#pragma once

#include <QByteArray>
#include <QString>

#include "print/ReportPages.h"

class QPainter;
class QPrinter;

/// What a laid-out report can be turned into. Nothing here reads data.
namespace print {

/// Paints one page; the painter's unit must be the page unit, its origin the sheet's corner.
void PaintPage(QPainter& painter, const ReportPages& pages, int page);

/// The report as a PDF whose text can be searched and copied.
QByteArray PdfOf(const ReportPages& pages, const QString& title);

/// Writes the report as a PDF, whole or not at all: an older file of that name stays until the
/// new one is complete. Returns what went wrong, empty when nothing did.
QString SavePdf(const ReportPages& pages, const QString& title, const QString& fileName);

/// Prints pages from `first` to `last` (from 0), fitted to the printer's paper when that differs
/// from the report's. Returns what went wrong, empty when nothing did.
QString PrintPages(const ReportPages& pages, QPrinter& printer, int first, int last);

}  // namespace print
