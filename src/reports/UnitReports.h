#pragma once

/// The three reports of the main window's "Reports" menu. Each returns when its viewer is closed,
/// or at once when the date dialog was cancelled. Errors as modMain::OpenReport.
namespace modMain {

void PrintCAPDPatients();
void PrintCAPDVisits();
void PrintIncome();

}  // namespace modMain
