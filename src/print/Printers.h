#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

#include "print/ReportPages.h"

class QPrinter;

/// The printers of the workstation. A printer, or the service that knows it, may hang: nothing
/// here makes the user wait for it longer than a moment.
namespace print::Printers {

/// The names of the printers that are set up; nothing when they cannot be learnt in time.
std::optional<QStringList> Names();

/// Replaces the look-up of names; an empty function gives the real one back.
void Replace(std::function<QStringList()> names);

/// Prints pages from `first` to `last` (from 0) beside the running program. `failed` is called
/// in the caller's thread with what went wrong.
void Start(std::shared_ptr<const ReportPages> pages, std::shared_ptr<QPrinter> printer, int first,
           int last, std::function<void(const QString& what)> failed);

}  // namespace print::Printers
