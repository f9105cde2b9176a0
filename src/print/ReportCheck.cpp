#include <QStringList>
#include <algorithm>

#include "print/ReportDefinition.h"

namespace print {

namespace {

const QString kParameterPrefix = QStringLiteral("param.");
const QString kSumPrefix = QStringLiteral("sum.");
const QStringList kOwnNames = {QStringLiteral("title"), QStringLiteral("page"),
                               QStringLiteral("pages"), QStringLiteral("count"),
                               QStringLiteral("printed")};

/// What of a report file cannot be seen while it is read: names may be defined below their use.
class ReportCheck final {
public:
    explicit ReportCheck(ReportDefinition& report) : m_report(report) {}

    void Run() {
        CheckQuery();
        if (m_report.Group)
            CheckGroup(*m_report.Group);
        for (ReportBand* band :
             {&m_report.Header, &m_report.Footer, &m_report.Summary, &m_report.NoRows})
            CheckBand(*band);
        for (ReportColumn& column : m_report.Columns)
            CheckText(column.Cell, column.Align);
    }

private:
    [[noreturn]] void Fail(qint64 line, const QString& what) const {
        FailReport(m_report.FileName, line, what);
    }

    void CheckQuery() const {
        CheckPlaceholders(m_report.Query);
        for (const auto& reference : m_report.Query.References()) {
            if (reference.Name != u"database" && !IsParameter(reference.Name))
                Fail(reference.Line,
                     QStringLiteral("unknown parameter \"%1\" in the query").arg(reference.Name));
            if (reference.Text.startsWith(u"{{#") || reference.Text.startsWith(u"{{^"))
                Fail(reference.Line, QStringLiteral("a query has no conditional parts"));
        }
    }

    void CheckGroup(ReportGroup& group) {
        if (m_report.FieldIndex(group.By) < 0)
            Fail(group.Line, QStringLiteral("unknown field \"%1\"").arg(group.By));
        CheckBand(group.Header);
        CheckBand(group.Footer);
    }

    void CheckBand(ReportBand& band) {
        Qt::Alignment none;
        CheckText(band.Html, none);
        int columns = 0;
        for (ReportCell& cell : band.Cells) {
            CheckText(cell.Text, cell.Align);
            columns += cell.Span;
        }
        if (columns > int(m_report.Columns.size()))
            Fail(band.Line, QStringLiteral("the totals are wider than the body"));
    }

    void CheckText(const ReportTemplate& text, Qt::Alignment& align) const {
        CheckPlaceholders(text);
        for (const auto& reference : text.References())
            CheckName(reference);
        if (!align)
            align = ShowsNumber(text.SingleName()) ? Qt::AlignRight : Qt::AlignLeft;
    }

    void CheckPlaceholders(const ReportTemplate& text) const {
        if (!text.Fault().Text.isEmpty())
            Fail(text.Fault().Line, text.Fault().Text);
    }

    void CheckName(const ReportTemplate::Reference& reference) const {
        const QString& name = reference.Name;
        if (kOwnNames.contains(name) || IsParameter(name))
            return;
        if (name.startsWith(kParameterPrefix))
            Fail(reference.Line,
                 QStringLiteral("unknown parameter \"%1\"").arg(name.mid(kParameterPrefix.size())));
        const bool sum = name.startsWith(kSumPrefix);
        const QString fieldName = sum ? name.mid(kSumPrefix.size()) : name;
        const int field = m_report.FieldIndex(fieldName);
        if (field < 0)
            Fail(reference.Line, QStringLiteral("unknown field \"%1\"").arg(fieldName));
        if (sum && !m_report.Fields[field].IsNumber())
            Fail(reference.Line, QStringLiteral("\"%1\" has no sum: its format is neither number "
                                                "nor money")
                                     .arg(fieldName));
    }

    bool IsParameter(const QString& name) const {
        return name.startsWith(kParameterPrefix) &&
               m_report.Parameters.contains(name.mid(kParameterPrefix.size()), Qt::CaseInsensitive);
    }

    bool ShowsNumber(const QString& name) const {
        if (name == u"count")
            return true;
        const int field =
            m_report.FieldIndex(name.startsWith(kSumPrefix) ? name.mid(kSumPrefix.size()) : name);
        return field >= 0 && m_report.Fields[field].IsNumber();
    }

    ReportDefinition& m_report;
};

}  // namespace

int ReportDefinition::FieldIndex(const QString& name) const {
    const auto found = std::find_if(Fields.begin(), Fields.end(), [&](const ReportField& field) {
        return field.Name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == Fields.end() ? -1 : int(found - Fields.begin());
}

void CheckReport(ReportDefinition& report) {
    ReportCheck(report).Run();
}

}  // namespace print
