#pragma once

#include <QPageLayout>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "print/ReportTemplate.h"

namespace print {

/// How a field's values are written.
enum class FieldFormat { Text, Number, Money, Date, Moment };

/// A result column that the report shows, by the name the query gives it.
struct ReportField {
    QString Name;
    FieldFormat Format = FieldFormat::Text;
    int Line = 0;
    bool IsNumber() const { return Format == FieldFormat::Number || Format == FieldFormat::Money; }
};

/// One column of the body: its heading, its share of the width, what its cells show.
struct ReportColumn {
    QString Heading;
    double Width = 1;
    Qt::Alignment Align;
    ReportTemplate Cell;
};

/// A cell of a band of totals, standing under one or more columns of the body.
struct ReportCell {
    int Span = 1;
    Qt::Alignment Align;
    ReportTemplate Text;
};

/// A strip of the page: HTML, or cells that stand under the body's columns.
struct ReportBand {
    ReportTemplate Html;
    std::vector<ReportCell> Cells;
    int Line = 0;
    bool IsEmpty() const { return Html.IsEmpty() && Cells.empty(); }
};

/// Rows that follow each other with the same value of `By` belong together.
struct ReportGroup {
    QString By;
    int Line = 0;
    ReportBand Header;
    ReportBand Footer;
};

/// What a report file says, checked: every name that a placeholder uses is defined.
struct ReportDefinition {
    struct Table {
        QString Database;
        QString Name;
    };

    QString FileName;
    QString Title;
    QPageLayout Page;
    QString FontFamily;
    double FontSize = 9;
    std::vector<Table> Tables;
    QStringList Parameters;
    ReportTemplate Query;
    std::vector<ReportField> Fields;
    ReportBand Header;
    ReportBand Footer;
    ReportBand Summary;
    ReportBand NoRows;
    std::optional<ReportGroup> Group;
    std::vector<ReportColumn> Columns;

    /// Position in Fields, whatever the case of the name; -1 where there is none.
    int FieldIndex(const QString& name) const;
};

/// Reads a report file. Throws base::RuntimeError 53 when it is missing, 321 with its name and
/// the line when it is not XML, has an element or attribute that reports lack, or refers to a
/// field or parameter that it does not define.
ReportDefinition ReadReportDefinition(const QString& path);

/// Checks every name that the report's placeholders use, and aligns to the right what shows one
/// number. Throws as ReadReportDefinition does.
void CheckReport(ReportDefinition& report);

/// Refuses a report file: throws base::RuntimeError 321, "<file>, line <n>: <what>".
[[noreturn]] void FailReport(const QString& fileName, qint64 line, const QString& what);

}  // namespace print
