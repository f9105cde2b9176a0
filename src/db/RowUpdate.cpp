#include "db/RowUpdate.h"

#include <algorithm>
#include <set>

#include "db/CommandText.h"

namespace db {

namespace {

struct Token {
    enum class Kind { Word, Name, Symbol, Other };
    Kind What = Kind::Other;
    /// A word as written, a name in brackets or double quotes without them.
    QString Text;
    qsizetype Start = 0;
    qsizetype End = 0;

    bool Is(const char* word) const {
        return (What == Kind::Word || What == Kind::Symbol) &&
               Text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
    }
    bool IsName() const { return What == Kind::Word || What == Kind::Name; }
};

using Tokens = std::vector<Token>;

bool IsWordPart(QChar character) {
    return character.isLetterOrNumber() || QStringLiteral("_@#$").contains(character);
}

// A quoted piece ends at its closing mark; a doubled one stands for itself.
qsizetype EndOfQuoted(const QString& text, qsizetype start, QChar close) {
    qsizetype at = start + 1;
    while (at < text.size()) {
        if (text.at(at) == close) {
            if (at + 1 >= text.size() || text.at(at + 1) != close) {
                return at + 1;
            }
            ++at;
        }
        ++at;
    }
    return at;
}

Token QuotedToken(const QString& text, qsizetype start) {
    const QChar open = text.at(start);
    const QChar close = open == QLatin1Char('[') ? QChar(u']') : open;
    const qsizetype end = EndOfQuoted(text, start, close);
    QString inside = text.mid(start + 1, end - start - 2);
    inside.replace(QString(2, close), QString(close));
    const bool isText = open == QLatin1Char('\'');
    return {isText ? Token::Kind::Other : Token::Kind::Name, inside, start, end};
}

Tokens Split(const QString& text) {
    Tokens tokens;
    qsizetype at = 0;
    while (at < text.size()) {
        const QChar character = text.at(at);
        if (character.isSpace()) {
            ++at;
            continue;
        }
        if (QStringLiteral("['\"").contains(character)) {
            tokens.push_back(QuotedToken(text, at));
        } else if (IsWordPart(character)) {
            qsizetype end = at;
            while (end < text.size() && IsWordPart(text.at(end))) {
                ++end;
            }
            const auto kind = character.isDigit() ? Token::Kind::Other : Token::Kind::Word;
            tokens.push_back({kind, text.mid(at, end - at), at, end});
        } else {
            tokens.push_back({Token::Kind::Symbol, QString(character), at, at + 1});
        }
        at = tokens.back().End;
    }
    return tokens;
}

/// Reads a statement from left to right.
class StatementReader final {
public:
    explicit StatementReader(const QString& statement)
        : m_statement(statement), m_tokens(Split(statement)) {}

    std::optional<UpdateTarget> Read(const QStringList& fieldNames) {
        if (!Take("SELECT")) {
            return {};
        }
        SkipTop();
        const std::vector<Tokens> items = ReadItems();
        UpdateTarget target;
        target.Table = ReadTable();
        if (target.Table.isEmpty() || !RestIsOneTable() ||
            !NameColumns(items, fieldNames, target)) {
            return {};
        }
        return target;
    }

private:
    bool AtEnd() const { return m_at >= m_tokens.size(); }
    bool Peek(const char* word) const { return !AtEnd() && m_tokens[m_at].Is(word); }
    bool Take(const char* word) {
        const bool there = Peek(word);
        m_at += there ? 1 : 0;
        return there;
    }

    void SkipParentheses() {
        int depth = 0;
        do {
            depth += Peek("(") ? 1 : Peek(")") ? -1 : 0;
            ++m_at;
        } while (depth > 0 && !AtEnd());
    }

    void SkipTop() {
        if (Take("TOP")) {
            SkipParentheses();
        }
    }

    // The pieces between SELECT and FROM. DISTINCT stays inside the first one, which is then no
    // plain column any more.
    std::vector<Tokens> ReadItems() {
        std::vector<Tokens> items(1);
        while (!AtEnd() && !Peek("FROM")) {
            if (Take(",")) {
                items.emplace_back();
                continue;
            }
            const std::size_t start = m_at;
            SkipParentheses();
            const std::size_t end = std::min(m_at, m_tokens.size());
            items.back().insert(items.back().end(), m_tokens.begin() + qsizetype(start),
                                m_tokens.begin() + qsizetype(end));
        }
        return items;
    }

    QString ReadTable() {
        if (!Take("FROM") || AtEnd() || !m_tokens[m_at].IsName()) {
            return {};
        }
        const qsizetype start = m_tokens[m_at].Start;
        qsizetype end = m_tokens[m_at++].End;
        while (Take(".")) {
            while (Take(".")) {
            }
            if (AtEnd() || !m_tokens[m_at].IsName()) {
                return {};
            }
            end = m_tokens[m_at++].End;
        }
        return m_statement.mid(start, end - start);
    }

    bool AtClause() const { return AtEnd() || Peek("WHERE") || Peek("ORDER") || Peek(";"); }

    // Behind the table: an alias, a hint, a condition and an order; nothing that joins or groups.
    bool RestIsOneTable() {
        Take("AS");
        if (!AtClause() && !Peek("WITH") && m_tokens[m_at].IsName()) {
            ++m_at;
        }
        if (Take("WITH")) {
            SkipParentheses();
        }
        if (!AtClause()) {
            return false;
        }
        while (!AtEnd() && !Peek(";")) {
            if (Peek("GROUP") || Peek("HAVING") || Peek("UNION") || Peek("EXCEPT") ||
                Peek("INTERSECT")) {
                return false;
            }
            SkipParentheses();
        }
        Take(";");
        return AtEnd();
    }

    static QString ColumnOf(const Tokens& item) {
        std::size_t at = 0;
        if (item.empty() || !item[0].IsName()) {
            return {};
        }
        while (at + 2 < item.size() && item[at + 1].Is(".") && item[at + 2].IsName()) {
            at += 2;
        }
        const QString column = item[at++].Text;
        const bool alias = at + 1 == item.size() && item[at].IsName();
        const bool namedAlias = at + 2 == item.size() && item[at].Is("AS") && item[at + 1].IsName();
        return at == item.size() || alias || namedAlias ? column : QString();
    }

    static bool NameColumns(const std::vector<Tokens>& items, const QStringList& fieldNames,
                            UpdateTarget& target) {
        if (items[0].empty() || items[0][0].Is("DISTINCT")) {
            return false;
        }
        if (items.size() == 1 && items[0].back().Is("*")) {
            target.Columns.assign(fieldNames.begin(), fieldNames.end());
            return true;
        }
        for (const Tokens& item : items) {
            target.Columns.push_back(ColumnOf(item));
        }
        return qsizetype(items.size()) == fieldNames.size();
    }

    const QString& m_statement;
    Tokens m_tokens;
    std::size_t m_at = 0;
};

QString Literal(const Value& value) {
    return value.IsNull() ? QStringLiteral("NULL") : Quoted(value.RawText());
}

QString Condition(const QString& column, const Value& value) {
    return Bracketed(column) +
           (value.IsNull() ? QStringLiteral(" IS NULL") : QStringLiteral(" = ") + Literal(value));
}

/// -1 where the column was not read.
int FieldOf(const UpdateTarget& target, const QString& column) {
    const auto found = std::find_if(
        target.Columns.begin(), target.Columns.end(),
        [&column](const QString& read) { return read.compare(column, Qt::CaseInsensitive) == 0; });
    return found == target.Columns.end() ? -1 : int(found - target.Columns.begin());
}

}  // namespace

std::optional<UpdateTarget> TargetOf(const QString& statement, const QStringList& fieldNames) {
    return StatementReader(statement).Read(fieldNames);
}

bool HoldsKey(const UpdateTarget& target, const std::vector<QString>& keyColumns) {
    return !keyColumns.empty() &&
           std::all_of(keyColumns.begin(), keyColumns.end(),
                       [&target](const QString& key) { return FieldOf(target, key) >= 0; });
}

QString UpdateCommand(const UpdateTarget& target, const std::vector<QString>& keyColumns,
                      const std::map<int, Value>& changes,
                      const std::function<Value(int field)>& stored) {
    std::set<int> deciding;
    for (const QString& key : keyColumns) {
        deciding.insert(FieldOf(target, key));
    }
    QStringList assignments;
    for (const auto& [field, value] : changes) {
        assignments.append(Bracketed(target.Columns[field]) + QStringLiteral(" = ") +
                           Literal(value));
        deciding.insert(field);
    }
    QStringList conditions;
    for (const int field : deciding) {
        conditions.append(Condition(target.Columns[field], stored(field)));
    }
    return QStringLiteral("UPDATE ") + target.Table + QStringLiteral(" SET ") +
           assignments.join(QStringLiteral(", ")) + QStringLiteral(" WHERE ") +
           conditions.join(QStringLiteral(" AND "));
}

}  // namespace db
