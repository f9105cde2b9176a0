#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

namespace print {

/// A piece of a report file with placeholders: {{Name}} is replaced by a value,
/// {{#Name}}...{{/Name}} shows its inside where the value is not empty, {{^Name}}...{{/Name}}
/// where it is.
class ReportTemplate final {
public:
    /// A name between braces, and the line of the report file that it stands on.
    struct Reference {
        QString Name;
        int Line;
        /// As it is written, for messages.
        QString Text;
    };
    using Resolver = std::function<QString(const QString& name)>;

    ReportTemplate() = default;
    /// `html`: the piece is HTML and values are escaped in it; else it is plain text and values
    /// stand as they are. `line` is where it begins in its file; what is wrong stands in Fault().
    ReportTemplate(QString source, bool html, int line);

    bool IsEmpty() const { return m_source.isEmpty(); }
    bool IsHtml() const { return m_html; }
    const std::vector<Reference>& References() const { return m_references; }
    /// What is wrong with the placeholders and where; Text is empty where nothing is.
    const Reference& Fault() const { return m_fault; }
    /// The name when the whole piece is one plain {{Name}}, else empty.
    const QString& SingleName() const { return m_singleName; }

    /// The piece with every placeholder replaced by what `value` answers for its name.
    QString Fill(const Resolver& value) const;

private:
    void FindReferences(int line);

    struct Compiled;
    QString m_source;
    bool m_html = false;
    std::vector<Reference> m_references;
    Reference m_fault{{}, 0, {}};
    QString m_singleName;
    std::shared_ptr<Compiled> m_compiled;
};

}  // namespace print
