#include "print/ReportTemplate.h"

#include <QRegularExpression>
#include <deque>
#include <kainjow/mustache.hpp>

namespace print {

namespace mustache = kainjow::mustache;

namespace {

/// Answers names as they are asked for, so that a row costs only the values its cells show. An
/// empty value is "false": it prints nothing and closes its section.
class LazyContext final : public mustache::basic_context<std::string> {
public:
    explicit LazyContext(const ReportTemplate::Resolver& value) : m_value(value) {}

    void push(const mustache::data*) override {}
    void pop() override {}
    const mustache::data* get(const std::string& name) const override {
        const QString text = m_value(QString::fromStdString(name));
        if (text.isEmpty())
            return &m_values.emplace_back(false);
        return &m_values.emplace_back(text.toStdString());
    }
    const mustache::data* get_partial(const std::string&) const override { return nullptr; }

private:
    const ReportTemplate::Resolver& m_value;
    mutable std::deque<mustache::data> m_values;
};

// A value as it reads, its lines too: what the laboratory wrote in three lines has three.
std::string HtmlOf(const std::string& text) {
    QString html = QString::fromStdString(text).toHtmlEscaped();
    html.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    return html.replace(QStringLiteral("\n"), QStringLiteral("<br/>")).toStdString();
}

}  // namespace

struct ReportTemplate::Compiled {
    explicit Compiled(const QString& source) : Text(source.toStdString()) {}
    mustache::mustache Text;
};

ReportTemplate::ReportTemplate(QString source, bool html, int line)
    : m_source(std::move(source)), m_html(html) {
    FindReferences(line);
    if (!m_fault.Text.isEmpty() || m_references.empty())
        return;
    m_compiled = std::make_shared<Compiled>(m_source);
    if (!m_compiled->Text.is_valid()) {
        m_fault = {{}, line, QString::fromStdString(m_compiled->Text.error_message())};
        return;
    }
    if (m_html)
        m_compiled->Text.set_custom_escape(HtmlOf);
    else
        m_compiled->Text.set_custom_escape([](const std::string& text) { return text; });
}

void ReportTemplate::FindReferences(int line) {
    static const QRegularExpression tag(
        QStringLiteral(R"(\{\{([#^/]?)\s*([A-Za-z_][A-Za-z_0-9.]*)\s*\}\}(?!\}))"));
    qsizetype counted = 0;
    for (qsizetype at = m_source.indexOf(u"{{"); at >= 0; at = m_source.indexOf(u"{{", at)) {
        line += int(QStringView(m_source).mid(counted, at - counted).count(u'\n'));
        counted = at;
        const auto match = tag.match(m_source, at, QRegularExpression::NormalMatch,
                                     QRegularExpression::AnchorAtOffsetMatchOption);
        // Braces in threes would let a value through unescaped: they are not taken.
        if (!match.hasMatch()) {
            const QString shown = m_source.mid(at, 20).section(u'\n', 0, 0);
            m_fault = {{}, line, QStringLiteral("placeholder not understood: %1").arg(shown)};
            return;
        }
        if (match.captured(1) != u"/")
            m_references.push_back({match.captured(2), line, match.captured()});
        if (match.capturedLength() == m_source.size())
            m_singleName = match.captured(2);
        at = match.capturedEnd();
    }
}

QString ReportTemplate::Fill(const Resolver& value) const {
    if (!m_singleName.isEmpty() && !m_html)
        return value(m_singleName);
    if (!m_compiled)
        return m_source;
    LazyContext context(value);
    return QString::fromStdString(m_compiled->Text.render(context));
}

}  // namespace print
