#include <QFile>
#include <QFileInfo>
#include <QRectF>
#include <QSet>
#include <QSizeF>
#include <QXmlStreamReader>

#include "base/Errors.h"
#include "print/ReportDefinition.h"

namespace print {

namespace {

constexpr int kFileNotFound = 53;
constexpr int kBrokenReport = 321;

const QSet<QString> kHtmlElements = {
    QStringLiteral("b"),    QStringLiteral("i"),      QStringLiteral("u"),
    QStringLiteral("p"),    QStringLiteral("br"),     QStringLiteral("hr"),
    QStringLiteral("span"), QStringLiteral("div"),    QStringLiteral("h1"),
    QStringLiteral("h2"),   QStringLiteral("h3"),     QStringLiteral("h4"),
    QStringLiteral("font"), QStringLiteral("table"),  QStringLiteral("tr"),
    QStringLiteral("td"),   QStringLiteral("th"),     QStringLiteral("small"),
    QStringLiteral("big"),  QStringLiteral("center"),
};

/// Reads one report file from its first line to its last, stopping at the first fault.
class ReportReader final {
public:
    ReportReader(QIODevice& file, const QString& fileName) : m_xml(&file) {
        m_report.FileName = fileName;
    }

    ReportDefinition Read() {
        if (!m_xml.readNextStartElement())
            FailXml();
        if (m_xml.name() != u"report")
            FailElement();
        ReadPage();
        while (m_xml.readNextStartElement())
            ReadPart();
        while (!m_xml.atEnd())
            m_xml.readNext();
        if (m_xml.hasError())
            FailXml();
        if (m_report.Query.IsEmpty())
            Fail(m_xml.lineNumber(), QStringLiteral("the report has no query"));
        return std::move(m_report);
    }

private:
    [[noreturn]] void Fail(qint64 line, const QString& what) const {
        FailReport(m_report.FileName, line, what);
    }
    [[noreturn]] void FailXml() const { Fail(m_xml.lineNumber(), m_xml.errorString()); }
    [[noreturn]] void FailElement() const {
        Fail(m_xml.lineNumber(), QStringLiteral("unknown element <%1>").arg(m_xml.name()));
    }

    void ReadPart() {
        const auto name = m_xml.name();
        if (name == u"title") {
            TakeAttributes({});
            m_report.Title = ReadText();
        } else if (name == u"tables") {
            ReadList(u"table", [this] { ReadTable(); });
        } else if (name == u"parameters") {
            ReadList(u"parameter", [this] {
                m_report.Parameters += Required(u"name", {u"name"});
                ReadEmptyElement();
            });
        } else if (name == u"fields") {
            ReadList(u"field", [this] { ReadField(); });
        } else if (name == u"query") {
            TakeAttributes({});
            m_report.Query = ReadTemplate(false);
        } else if (name == u"body") {
            ReadList(u"column", [this] { ReadColumn(); });
        } else if (name == u"group") {
            ReadGroup();
        } else {
            ReadBand(Band());
        }
    }

    ReportBand& Band() {
        const auto name = m_xml.name();
        if (name == u"header")
            return m_report.Header;
        if (name == u"footer")
            return m_report.Footer;
        if (name == u"summary")
            return m_report.Summary;
        if (name == u"norows")
            return m_report.NoRows;
        FailElement();
    }

    void ReadPage();
    void ReadTable();
    void ReadField();
    void ReadColumn();
    void ReadGroup();
    void ReadBand(ReportBand& band);
    ReportCell ReadCell();

    /// Calls `entry` at every child, which must be an `element`; it reads on to the child's end.
    template <typename Entry>
    void ReadList(QStringView element, const Entry& entry) {
        TakeAttributes({});
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() != element)
                FailElement();
            entry();
        }
    }

    void ReadEmptyElement() {
        if (m_xml.readNextStartElement())
            FailElement();
    }

    QXmlStreamAttributes TakeAttributes(std::initializer_list<QStringView> known) const {
        const auto attributes = m_xml.attributes();
        for (const auto& attribute : attributes) {
            if (std::find(known.begin(), known.end(), attribute.name()) == known.end())
                Fail(m_xml.lineNumber(), QStringLiteral("unknown attribute \"%1\" of <%2>")
                                             .arg(attribute.name(), m_xml.name()));
        }
        return attributes;
    }

    QString Required(QStringView attribute, std::initializer_list<QStringView> known) const {
        const QString value = TakeAttributes(known).value(attribute.toString()).toString();
        if (value.isEmpty())
            Fail(m_xml.lineNumber(), QStringLiteral("<%1> has no %2").arg(m_xml.name(), attribute));
        return value;
    }

    QString ReadText() {
        const QString text = m_xml.readElementText();
        if (m_xml.hasError())
            FailXml();
        return text.trimmed();
    }

    double Number(QStringView text) const {
        bool valid = false;
        const double number = text.toDouble(&valid);
        if (!valid || number <= 0)
            Fail(m_xml.lineNumber(), QStringLiteral("\"%1\" is not a size").arg(text));
        return number;
    }

    /// No alignment where none is written: the check then aligns numbers right.
    Qt::Alignment Alignment(const QXmlStreamAttributes& attributes) const {
        const auto align = attributes.value(QStringLiteral("align"));
        if (align.isEmpty())
            return {};
        if (align == u"left")
            return Qt::AlignLeft;
        if (align == u"right")
            return Qt::AlignRight;
        if (align == u"center")
            return Qt::AlignHCenter;
        Fail(m_xml.lineNumber(), QStringLiteral("unknown alignment \"%1\"").arg(align));
    }

    /// The inside of the current element, up to its end.
    ReportTemplate ReadTemplate(bool htmlAllowed);
    void AppendStart(QString& source);
    QXmlStreamReader m_xml;
    ReportDefinition m_report;
};

void ReportReader::ReadPage() {
    const auto attributes =
        TakeAttributes({u"paper", u"orientation", u"margins", u"font", u"size"});
    const auto value = [&](const QString& name, const QString& otherwise) {
        const auto text = attributes.value(name);
        return text.isEmpty() ? otherwise : text.toString();
    };
    const QString paper = value(QStringLiteral("paper"), QStringLiteral("A4"));
    QPageSize size;
    if (paper.contains(u'x')) {
        const QSizeF millimetres(Number(paper.section(u'x', 0, 0)), Number(paper.section(u'x', 1)));
        size = QPageSize(millimetres, QPageSize::Millimeter);
    } else {
        for (const auto id : {QPageSize::A4, QPageSize::A5, QPageSize::Letter, QPageSize::Legal})
            size = QPageSize::key(id) == paper ? QPageSize(id) : size;
    }
    if (!size.isValid())
        Fail(m_xml.lineNumber(), QStringLiteral("unknown paper \"%1\"").arg(paper));
    const QString orientation = value(QStringLiteral("orientation"), QStringLiteral("portrait"));
    if (orientation != u"portrait" && orientation != u"landscape")
        Fail(m_xml.lineNumber(), QStringLiteral("unknown orientation \"%1\"").arg(orientation));
    const QStringList sides = value(QStringLiteral("margins"), QStringLiteral("12 12 12 12"))
                                  .split(u' ', Qt::SkipEmptyParts);
    if (sides.size() != 4)
        Fail(m_xml.lineNumber(), QStringLiteral("margins are left, top, right and bottom"));
    const QMarginsF margins(Number(sides[0]), Number(sides[1]), Number(sides[2]), Number(sides[3]));
    m_report.Page = QPageLayout(
        size, orientation == u"landscape" ? QPageLayout::Landscape : QPageLayout::Portrait, margins,
        QPageLayout::Millimeter);
    const QRectF inside = m_report.Page.paintRect(QPageLayout::Millimeter);
    if (inside.width() < 30 || inside.height() < 30)
        Fail(m_xml.lineNumber(), QStringLiteral("the margins leave no room on the paper"));
    m_report.FontFamily = value(QStringLiteral("font"), QStringLiteral("Arial"));
    m_report.FontSize = Number(value(QStringLiteral("size"), QStringLiteral("9")));
}

void ReportReader::ReadTable() {
    const QString name = Required(u"name", {u"name", u"database"});
    m_report.Tables.push_back({Required(u"database", {u"name", u"database"}), name});
    ReadEmptyElement();
}

void ReportReader::ReadField() {
    ReportField field{Required(u"name", {u"name", u"format"}), FieldFormat::Text,
                      int(m_xml.lineNumber())};
    const auto format = m_xml.attributes().value(QStringLiteral("format"));
    if (format == u"number")
        field.Format = FieldFormat::Number;
    else if (format == u"money")
        field.Format = FieldFormat::Money;
    else if (format == u"date")
        field.Format = FieldFormat::Date;
    else if (format == u"moment")
        field.Format = FieldFormat::Moment;
    else if (!format.isEmpty() && format != u"text")
        Fail(m_xml.lineNumber(), QStringLiteral("unknown format \"%1\"").arg(format));
    m_report.Fields.push_back(field);
    ReadEmptyElement();
}

void ReportReader::ReadColumn() {
    const auto attributes = TakeAttributes({u"heading", u"width", u"align"});
    ReportColumn column;
    column.Heading = attributes.value(QStringLiteral("heading")).toString();
    if (attributes.hasAttribute(QStringLiteral("width")))
        column.Width = Number(attributes.value(QStringLiteral("width")));
    column.Align = Alignment(attributes);
    column.Cell = ReadTemplate(true);
    m_report.Columns.push_back(std::move(column));
}

void ReportReader::ReadGroup() {
    ReportGroup group;
    group.By = Required(u"by", {u"by"});
    group.Line = int(m_xml.lineNumber());
    while (m_xml.readNextStartElement()) {
        if (m_xml.name() == u"header")
            ReadBand(group.Header);
        else if (m_xml.name() == u"footer")
            ReadBand(group.Footer);
        else
            FailElement();
    }
    m_report.Group = std::move(group);
}

ReportCell ReportReader::ReadCell() {
    const auto attributes = TakeAttributes({u"span", u"align"});
    ReportCell cell;
    const auto span = attributes.value(QStringLiteral("span"));
    if (!span.isEmpty())
        cell.Span = int(Number(span));
    cell.Align = Alignment(attributes);
    cell.Text = ReadTemplate(true);
    return cell;
}

void ReportReader::ReadBand(ReportBand& band) {
    band.Line = int(m_xml.lineNumber());
    const bool totals = TakeAttributes({u"totals"}).hasAttribute(QStringLiteral("totals"));
    if (!totals) {
        band.Html = ReadTemplate(true);
        return;
    }
    while (m_xml.readNextStartElement()) {
        if (m_xml.name() != u"cell")
            FailElement();
        band.Cells.push_back(ReadCell());
    }
}

void ReportReader::AppendStart(QString& source) {
    if (!kHtmlElements.contains(m_xml.name().toString()))
        FailElement();
    source += QStringLiteral("<%1").arg(m_xml.name());
    const auto attributes = m_xml.attributes();
    for (const auto& attribute : attributes)
        source += QStringLiteral(" %1=\"%2\"")
                      .arg(attribute.name(), attribute.value().toString().toHtmlEscaped());
    source += u'>';
}

ReportTemplate ReportReader::ReadTemplate(bool htmlAllowed) {
    QString html;
    QString plain;
    bool marked = false;
    const int firstLine = int(m_xml.lineNumber());
    for (int depth = 0;;) {
        switch (m_xml.readNext()) {
            case QXmlStreamReader::StartElement:
                if (!htmlAllowed)
                    FailElement();
                marked = true;
                AppendStart(html);
                ++depth;
                break;
            case QXmlStreamReader::EndElement:
                if (depth-- == 0) {
                    // The blanks before the text are left out, but the lines are counted.
                    const QString& text = marked ? html : plain;
                    const auto begin = std::find_if_not(text.begin(), text.end(),
                                                        [](QChar c) { return c.isSpace(); });
                    const int line = firstLine + int(std::count(text.begin(), begin, u'\n'));
                    return ReportTemplate(text.trimmed(), marked, line);
                }
                if (m_xml.name() != u"br" && m_xml.name() != u"hr")
                    html += QStringLiteral("</%1>").arg(m_xml.name());
                break;
            case QXmlStreamReader::Characters:
                html += m_xml.text().toString().toHtmlEscaped();
                plain += m_xml.text();
                break;
            case QXmlStreamReader::Invalid:
                FailXml();
            default:
                break;
        }
    }
}

}  // namespace

void FailReport(const QString& fileName, qint64 line, const QString& what) {
    throw base::RuntimeError(kBrokenReport,
                             QStringLiteral("%1, line %2: %3").arg(fileName).arg(line).arg(what));
}

ReportDefinition ReadReportDefinition(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw base::RuntimeError(kFileNotFound, QStringLiteral("File not found: %1").arg(path));
    ReportDefinition report = ReportReader(file, QFileInfo(path).fileName()).Read();
    CheckReport(report);
    return report;
}

}  // namespace print
