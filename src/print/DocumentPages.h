#pragma once

#include <memory>

#include "print/ReportPages.h"

class QTextDocument;

namespace print {

/// A rich text on pages of A4, its lines as they stand and only too long ones wrapped. At
/// the foot of each page stand `footer` and the page's number. At least one page. No line is cut
/// between two pages.
std::shared_ptr<const ReportPages> PagesOf(const QTextDocument& document, const QString& footer);

}  // namespace print
