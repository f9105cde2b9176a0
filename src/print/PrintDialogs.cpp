#include "print/PrintDialogs.h"

#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>
#include <optional>

#include "print/Printers.h"
#include "print/ReportOutput.h"
#include "toolkit/Busy.h"
#include "toolkit/FileNames.h"
#include "toolkit/MsgBox.h"

namespace print {

namespace {

const QString kNoPrinter = QStringLiteral("No printer is set up. Save as PDF instead.");
const QString kSilentPrinters =
    QStringLiteral("The printers of this workstation do not answer. Save as PDF instead.");

void Tell(const QString& what) {
    toolkit::MsgBox(what, toolkit::BoxIcon::Exclamation);
}

std::optional<QStringList> LookUpPrinters() {
    const toolkit::Busy busy;
    return Printers::Names();
}

}  // namespace

void AskAndPrint(QWidget* parent, std::shared_ptr<const ReportPages> pages, const QString& title,
                 int currentPage) {
    const auto names = LookUpPrinters();
    if (!names || names->isEmpty()) {
        Tell(names ? kNoPrinter : kSilentPrinters);
        return;
    }
    auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    printer->setDocName(title);
    printer->setPageLayout(pages->Layout());
    QPrintDialog dialog(printer.get(), parent);
    dialog.setMinMax(1, pages->Count());
    if (dialog.exec() != QDialog::Accepted)
        return;
    int first = 0;
    int last = pages->Count() - 1;
    if (printer->printRange() == QPrinter::PageRange) {
        first = std::max(printer->fromPage() - 1, first);
        last = std::min(printer->toPage() - 1, last);
    } else if (printer->printRange() == QPrinter::CurrentPage) {
        first = last = currentPage;
    }
    Printers::Start(pages, std::move(printer), first, last, &Tell);
}

void AskAndSavePdf(QWidget* parent, const ReportPages& pages, const QString& title) {
    static const QRegularExpression unusable(QStringLiteral(R"([\\/:*?"<>|])"));
    const QString proposal = QString(title).replace(unusable, QStringLiteral("-"));
    const QString fileName = toolkit::AskSaveName(parent, QStringLiteral("Save as PDF"),
                                                  proposal + QStringLiteral(".pdf"),
                                                  QStringLiteral("PDF"), QStringLiteral("pdf"));
    if (fileName.isEmpty())
        return;
    const QString fault = [&] {
        const toolkit::Busy busy;
        return SavePdf(pages, title, fileName);
    }();
    if (!fault.isEmpty())
        Tell(QStringLiteral("The report could not be saved as %1.\n%2").arg(fileName, fault));
}

}  // namespace print
