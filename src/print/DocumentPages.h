#pragma once

#include <memory>

#include "print/ReportPages.h"

class QTextDocument;

namespace print {

/// A rich text on pages of A4, its lines as they stand and only too long ones wrapped, numbered at
/// their foot. At least one page. No line is cut between two pages.
std::shared_ptr<const ReportPages> PagesOf(const QTextDocument& document);

}  // namespace print
