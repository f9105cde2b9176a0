#pragma once

#include <QStringList>
#include <memory>

#include "print/ReportPages.h"

class QTextDocument;

namespace print {

/// What a line of a rich text is to the sheets it is printed on; a property of its block's format.
enum class LineRole {
    Text,
    Heading,       ///< never the last line of a sheet
    TableHeading,  ///< the same, and again on each sheet that goes on with its rows
    TableRow
};
/// The property that holds a LineRole.
constexpr int kLineRole = 0x100000 + 1;

/// A rich text on pages of A4, its lines as they stand and only too long ones wrapped. At the foot
/// of each page stand the lines of `footer`, behind the last of them the page's number. At least
/// one page. No line is cut between two pages.
std::shared_ptr<const ReportPages> PagesOf(const QTextDocument& document,
                                           const QStringList& footer);

}  // namespace print
