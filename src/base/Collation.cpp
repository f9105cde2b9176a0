#include "base/Collation.h"

#include <QList>
#include <QString>
#include <QVarLengthArray>
#include <algorithm>
#include <array>

#include "base/Utf8.h"

namespace base {

namespace {

constexpr char32_t kFirstAccented = 0x80;
constexpr char32_t kFirstUntabled = 0x250;
constexpr char32_t kFirstCombining = 0x300;
constexpr char32_t kLastCombining = 0x36F;

/// Base letters of other scripts come after everything of ASCII.
constexpr char32_t kAfterAscii = 0x100;

/// Control characters, the blank, signs, digits, letters; a letter weighs the same in both cases.
constexpr std::array<unsigned char, 256> MakeWeights() {
    std::array<unsigned char, 256> weights{};
    unsigned char next = 1;
    const auto isDigit = [](int c) { return c >= '0' && c <= '9'; };
    const auto isUpper = [](int c) { return c >= 'A' && c <= 'Z'; };
    const auto isLower = [](int c) { return c >= 'a' && c <= 'z'; };
    for (int c = 0; c < 0x80; ++c) {
        if (!isDigit(c) && !isUpper(c) && !isLower(c))
            weights[c] = next++;
    }
    for (int c = '0'; c <= '9'; ++c)
        weights[c] = next++;
    for (int c = 'a'; c <= 'z'; ++c) {
        weights[c] = next;
        weights[c - 'a' + 'A'] = next++;
    }
    return weights;
}

constexpr std::array<unsigned char, 256> kWeights = MakeWeights();

/// What one or more characters are compared by. Accents holds a zero before each base letter
/// and after it the marks upon that letter.
struct Key {
    QVarLengthArray<char32_t, 64> Bases;
    QVarLengthArray<char32_t, 128> Accents;

    void AddBase(char32_t weight) {
        Bases.append(weight);
        Accents.append(0);
    }
};

void AppendDecomposed(Key& key, const QString& text) {
    // Capitals first: the sharp s becomes two letters, the final sigma a sigma.
    const QString parts = text.normalized(QString::NormalizationForm_D).toUpper().toLower();
    for (const uint c : parts.toUcs4()) {
        if (QChar::category(c) == QChar::Mark_NonSpacing)
            key.Accents.append(c);
        else
            key.AddBase(c < kFirstAccented ? kWeights[c] : kAfterAscii + c);
    }
}

/// The keys of the accented Latin letters, so that Peña and Muñoz cost no decomposition.
struct LatinKey {
    std::array<char32_t, 3> Bases{};
    std::array<char32_t, 3> Accents{};
    int BaseCount = 0;
    int AccentCount = 0;
};

const LatinKey& LatinKeyOf(char32_t c) {
    static const auto table = [] {
        std::array<LatinKey, kFirstUntabled - kFirstAccented> keys;
        for (char32_t letter = kFirstAccented; letter < kFirstUntabled; ++letter) {
            Key key;
            AppendDecomposed(key, QString::fromUcs4(&letter, 1));
            LatinKey& entry = keys[letter - kFirstAccented];
            entry.BaseCount = int(key.Bases.size());
            entry.AccentCount = int(key.Accents.size()) - entry.BaseCount;
            std::copy(key.Bases.begin(), key.Bases.end(), entry.Bases.begin());
            // All marks of these letters stand upon their last base letter.
            std::copy(key.Accents.begin() + entry.BaseCount, key.Accents.end(),
                      entry.Accents.begin());
        }
        return keys;
    }();
    return table[c - kFirstAccented];
}

Key KeyOf(std::string_view text) {
    Key key;
    QString others;
    const auto flush = [&] {
        if (!others.isEmpty())
            AppendDecomposed(key, others);
        others.clear();
    };
    for (size_t at = 0; at < text.size();) {
        const char32_t c = NextCodePoint(text, at);
        // Marks change places among themselves when they are put in order, so a run of such
        // characters is decomposed as one; all others stand for themselves.
        if (c >= kFirstUntabled && c <= kLastCodePoint) {
            others += QString::fromUcs4(&c, 1);
            continue;
        }
        flush();
        if (c < kFirstAccented) {
            key.AddBase(kWeights[c]);
        } else if (c < kFirstUntabled) {
            const LatinKey& latin = LatinKeyOf(c);
            for (int i = 0; i < latin.BaseCount; ++i)
                key.AddBase(latin.Bases[i]);
            for (int i = 0; i < latin.AccentCount; ++i)
                key.Accents.append(latin.Accents[i]);
        } else {
            key.AddBase(kAfterAscii + c);
        }
    }
    flush();
    return key;
}

template <typename Weights>
int CompareWeights(const Weights& left, const Weights& right) {
    const auto order = std::lexicographical_compare_three_way(left.begin(), left.end(),
                                                              right.begin(), right.end());
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

int CompareKeys(std::string_view left, std::string_view right, Accents accents) {
    const Key leftKey = KeyOf(left);
    const Key rightKey = KeyOf(right);
    const int bases = CompareWeights(leftKey.Bases, rightKey.Bases);
    return bases != 0 || accents == Accents::Ignored
               ? bases
               : CompareWeights(leftKey.Accents, rightKey.Accents);
}

int CompareCharacters(char32_t left, char32_t right) {
    if (left < kFirstAccented && right < kFirstAccented)
        return int(kWeights[left]) - int(kWeights[right]);
    if (left == right)
        return 0;
    std::string leftText;
    std::string rightText;
    AppendCodePoint(leftText, left);
    AppendCodePoint(rightText, right);
    return CompareKeys(leftText, rightText, Accents::Count);
}

template <typename View>
View WithoutTrailingBlanks(View text) {
    auto length = text.size();
    while (length > 0 && text[length - 1] == ' ')
        --length;
    return text.substr(0, length);
}

using Characters = QVarLengthArray<char32_t, 256>;

/// Composed characters, so that an accent typed apart from its letter matches as one.
void Decode(std::string_view text, Characters& characters) {
    bool apart = false;
    for (size_t at = 0; at < text.size();) {
        const char32_t c = NextCodePoint(text, at);
        apart |= c >= kFirstCombining && c <= kLastCombining;
        characters.append(c);
    }
    if (!apart)
        return;
    const QString composed = QString::fromUtf8(text.data(), qsizetype(text.size()))
                                 .normalized(QString::NormalizationForm_C);
    characters.clear();
    for (const uint c : composed.toUcs4())
        characters.append(c);
}

/// Matches a pattern of bytes (plain ASCII) or of characters against a text of the same.
template <typename Text>
class LikeMatcher {
public:
    LikeMatcher(const Text& text, const Text& pattern, char32_t escape)
        : m_text(text), m_pattern(pattern), m_escape(escape) {}

    bool Matches() const {
        Place pattern = 0;
        Place text = 0;
        // Only the last % ever has to be tried again: what the earlier ones took is settled.
        Place retryPattern = kNowhere;
        Place retryText = 0;
        for (;;) {
            if (pattern < Length(m_pattern) && At(m_pattern, pattern) == U'%' && m_escape != U'%') {
                retryPattern = ++pattern;
                retryText = text;
                if (pattern == Length(m_pattern))
                    return true;
                continue;
            }
            if (pattern == Length(m_pattern) && OnlyBlanksFrom(text))
                return true;
            if (pattern < Length(m_pattern) && text < Length(m_text) && MatchOne(pattern, text)) {
                ++text;
                continue;
            }
            if (retryPattern == kNowhere || retryText >= Length(m_text))
                return false;
            pattern = retryPattern;
            text = ++retryText;
        }
    }

private:
    using Place = size_t;
    static constexpr Place kNowhere = Place(-1);

    static Place Length(const Text& text) { return Place(text.size()); }
    static char32_t At(const Text& text, Place place) {
        if constexpr (sizeof(text[0]) == 1)
            return static_cast<unsigned char>(text[place]);
        else
            return text[place];
    }

    bool OnlyBlanksFrom(Place place) const {
        while (place < Length(m_text) && At(m_text, place) == U' ')
            ++place;
        return place == Length(m_text);
    }

    /// Matches one character against the pattern's next element and steps behind that one.
    bool MatchOne(Place& pattern, Place text) const {
        const char32_t c = At(m_text, text);
        const char32_t expected = At(m_pattern, pattern);
        if (m_escape != 0 && expected == m_escape) {
            if (pattern + 1 >= Length(m_pattern) ||
                CompareCharacters(At(m_pattern, pattern + 1), c) != 0)
                return false;
            pattern += 2;
            return true;
        }
        if (expected == U'[')
            return MatchSet(pattern, c);
        if (expected != U'_' && CompareCharacters(expected, c) != 0)
            return false;
        ++pattern;
        return true;
    }

    /// A set without its closing bracket matches nothing.
    bool MatchSet(Place& pattern, char32_t c) const {
        Place at = pattern + 1;
        const bool excludes = at < Length(m_pattern) && At(m_pattern, at) == U'^';
        if (excludes)
            ++at;
        bool found = false;
        while (at < Length(m_pattern) && At(m_pattern, at) != U']') {
            char32_t from = 0;
            if (!ReadMember(at, from))
                return false;
            char32_t to = from;
            if (at + 1 < Length(m_pattern) && At(m_pattern, at) == U'-' &&
                At(m_pattern, at + 1) != U']') {
                ++at;
                if (!ReadMember(at, to))
                    return false;
            }
            found |= CompareCharacters(from, c) <= 0 && CompareCharacters(c, to) <= 0;
        }
        if (at >= Length(m_pattern) || found == excludes)
            return false;
        pattern = at + 1;
        return true;
    }

    bool ReadMember(Place& at, char32_t& member) const {
        if (m_escape != 0 && At(m_pattern, at) == m_escape)
            ++at;
        if (at >= Length(m_pattern))
            return false;
        member = At(m_pattern, at++);
        return true;
    }

    const Text& m_text;
    const Text& m_pattern;
    char32_t m_escape;
};

template <typename AsciiMap, typename Map>
std::string Mapped(std::string_view text, AsciiMap asciiMap, Map map) {
    std::string result;
    result.reserve(text.size());
    for (size_t at = 0; at < text.size();) {
        const char32_t c = NextCodePoint(text, at);
        if (c < kFirstAccented)
            result += asciiMap(char(c));
        else
            AppendCodePoint(result, c <= kLastCodePoint ? char32_t(map(c)) : c);
    }
    return result;
}

}  // namespace

int CompareTexts(std::string_view left, std::string_view right, Accents accents) {
    left = WithoutTrailingBlanks(left);
    right = WithoutTrailingBlanks(right);
    const size_t common = std::min(left.size(), right.size());
    size_t at = 0;
    // Plain letters differ by themselves whatever follows; everything before them was equal.
    for (; at < common; ++at) {
        const unsigned char leftByte = left[at];
        const unsigned char rightByte = right[at];
        if ((leftByte | rightByte) >= kFirstAccented)
            return CompareKeys(left.substr(at), right.substr(at), accents);
        if (kWeights[leftByte] != kWeights[rightByte])
            return int(kWeights[leftByte]) - int(kWeights[rightByte]);
    }
    const std::string_view rest = left.size() > common ? left.substr(at) : right.substr(at);
    if (rest.empty())
        return 0;
    const int order = static_cast<unsigned char>(rest.front()) < kFirstAccented
                          ? 1
                          : CompareKeys(rest, {}, accents);
    return left.size() > common ? order : -order;
}

int CompareTexts(QStringView left, QStringView right) {
    const qsizetype common = std::min(left.size(), right.size());
    for (qsizetype at = 0; at < common; ++at) {
        const char16_t leftUnit = left[at].unicode();
        const char16_t rightUnit = right[at].unicode();
        // A blank may be a trailing one, which only the whole text can tell.
        if ((leftUnit | rightUnit) >= char16_t(kFirstAccented) || leftUnit == u' ' ||
            rightUnit == u' ')
            break;
        if (kWeights[leftUnit] != kWeights[rightUnit])
            return int(kWeights[leftUnit]) - int(kWeights[rightUnit]);
    }
    const QByteArray leftUtf8 = left.toUtf8();
    const QByteArray rightUtf8 = right.toUtf8();
    return CompareTexts(std::string_view(leftUtf8.constData(), size_t(leftUtf8.size())),
                        std::string_view(rightUtf8.constData(), size_t(rightUtf8.size())));
}

bool MatchesLike(std::string_view text, std::string_view pattern, char32_t escape) {
    if (IsAscii(text) && IsAscii(pattern))
        return LikeMatcher<std::string_view>(text, pattern, escape).Matches();
    Characters characters;
    Characters patternCharacters;
    Decode(text, characters);
    Decode(pattern, patternCharacters);
    return LikeMatcher<Characters>(characters, patternCharacters, escape).Matches();
}

std::string LikePrefix(std::string_view pattern, char32_t escape) {
    std::string prefix;
    for (size_t at = 0; at < pattern.size();) {
        char32_t c = NextCodePoint(pattern, at);
        if (escape != 0 && c == escape) {
            if (at == pattern.size())
                break;
            c = NextCodePoint(pattern, at);
        } else if (c == U'%' || c == U'_' || c == U'[') {
            break;
        }
        AppendCodePoint(prefix, c);
    }
    return prefix;
}

QString WithoutAccents(const QString& text) {
    QString bases;
    for (const QChar c : text.normalized(QString::NormalizationForm_D))
        if (c.category() != QChar::Mark_NonSpacing)
            bases += c;
    return bases.normalized(QString::NormalizationForm_C);
}

std::string WithoutAccents(std::string_view text) {
    if (IsAscii(text))
        return std::string(text);
    return WithoutAccents(QString::fromUtf8(text.data(), qsizetype(text.size()))).toStdString();
}

std::string ToUpper(std::string_view text) {
    return Mapped(
        text, [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; },
        [](char32_t c) { return QChar::toUpper(c); });
}

std::string ToLower(std::string_view text) {
    return Mapped(
        text, [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; },
        [](char32_t c) { return QChar::toLower(c); });
}

}  // namespace base
