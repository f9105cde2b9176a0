#include "print/ReportOutput.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <algorithm>

namespace print {

void PaintPage(QPainter& painter, const ReportPages& pages, int page) {
    const ReportPage& content = pages.Page(page);
    int style = -1;
    for (const PlacedText& text : content.Texts) {
        if (text.Style != style) {
            style = text.Style;
            painter.setFont(pages.Style(style).Font);
            painter.setPen(pages.Style(style).Color);
        }
        painter.drawText(text.Baseline, text.Text);
    }
    for (const PlacedRule& rule : content.Rules) {
        painter.setPen(QPen(Qt::black, rule.Thickness));
        painter.drawLine(rule.Line);
    }
}

QByteArray PdfOf(const ReportPages& pages, const QString& title) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(title);
    writer.setResolution(kUnitsPerInch);
    QPageLayout sheet = pages.Layout();
    sheet.setMode(QPageLayout::FullPageMode);
    writer.setPageLayout(sheet);
    QPainter painter(&writer);
    for (int page = 0; page < pages.Count(); ++page) {
        if (page > 0)
            writer.newPage();
        PaintPage(painter, pages, page);
    }
    painter.end();
    return bytes;
}

QString SavePdf(const ReportPages& pages, const QString& title, const QString& fileName) {
    const QByteArray bytes = PdfOf(pages, title);
    QSaveFile file(fileName);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return {};
    return file.errorString();
}

QString PrintPages(const ReportPages& pages, QPrinter& printer, int first, int last) {
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer))
        return QStringLiteral("The printer \"%1\" cannot be started.").arg(printer.printerName());
    const QSizeF paper = printer.pageLayout().fullRect(QPageLayout::Point).size();
    const QSizeF sheet = pages.SheetSize() / kUnitsPerPoint;
    const double fit = std::min(paper.width() / sheet.width(), paper.height() / sheet.height());
    const double scale = double(printer.resolution()) / kUnitsPerInch * std::min(1.0, fit);
    for (int page = first; page <= last; ++page) {
        if (page > first && !printer.newPage())
            return QStringLiteral("The printer takes no further page.");
        painter.save();
        painter.scale(scale, scale);
        PaintPage(painter, pages, page);
        painter.restore();
    }
    if (!painter.end() || printer.printerState() == QPrinter::Error)
        return QStringLiteral("The printer did not take the report.");
    return {};
}

}  // namespace print
