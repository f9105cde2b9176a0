#include <QChar>
#include <algorithm>
#include <string>
#include <vector>

#include "base/Collation.h"
#include "base/Utf8.h"
#include "embedded/FunctionCall.h"
#include "embedded/Functions.h"

namespace embedded {

namespace {

/// Above every character there is, in the collation.
constexpr std::string_view kHighest = "\xFF\xFF\xFF\xFF";

/// The server counts UTF-16 units.
int UnitsOf(char32_t c) {
    return c >= 0x10000 && c <= base::kLastCodePoint ? 2 : 1;
}

sqlite3_int64 CountUnits(std::string_view text) {
    if (base::IsAscii(text))
        return sqlite3_int64(text.size());
    sqlite3_int64 units = 0;
    for (size_t at = 0; at < text.size();)
        units += UnitsOf(base::NextCodePoint(text, at));
    return units;
}

/// The place behind at most so many units.
size_t PlaceBehind(std::string_view text, sqlite3_int64 units) {
    if (units <= 0)
        return 0;
    size_t at = 0;
    while (at < text.size()) {
        size_t next = at;
        units -= UnitsOf(base::NextCodePoint(text, next));
        if (units < 0)
            break;
        at = next;
    }
    return at;
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
    const size_t last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

void Upper(FunctionCall& call) {
    call.Return(base::ToUpper(call.Text(0)));
}

void Lower(FunctionCall& call) {
    call.Return(base::ToLower(call.Text(0)));
}

void Length(FunctionCall& call) {
    call.Return(CountUnits(WithoutTrailingBlanks(call.Text(0))));
}

void TrimLeft(FunctionCall& call) {
    const std::string_view text = call.Text(0);
    call.Return(text.substr(std::min(text.find_first_not_of(' '), text.size())));
}

void TrimRight(FunctionCall& call) {
    call.Return(WithoutTrailingBlanks(call.Text(0)));
}

void Left(FunctionCall& call) {
    const sqlite3_int64 length = call.Integer(1);
    if (length < 0)
        throw Failure(537, "Invalid length parameter passed to the LEFT or SUBSTRING function.");
    const std::string_view text = call.Text(0);
    call.Return(text.substr(0, PlaceBehind(text, length)));
}

void Right(FunctionCall& call) {
    const sqlite3_int64 length = call.Integer(1);
    if (length < 0)
        throw Failure(536, "Invalid length parameter passed to the RIGHT function.");
    const std::string_view text = call.Text(0);
    call.Return(text.substr(PlaceBehind(text, CountUnits(text) - length)));
}

void Substring(FunctionCall& call) {
    const sqlite3_int64 length = call.Integer(2);
    if (length < 0)
        throw Failure(537, "Invalid length parameter passed to the LEFT or SUBSTRING function.");
    const std::string_view text = call.Text(0);
    // A start before the text takes its missing places off the length.
    constexpr sqlite3_int64 kFar = sqlite3_int64(1) << 40;
    const sqlite3_int64 start = std::clamp(call.Integer(1) - 1, -kFar, kFar);
    const sqlite3_int64 end = start + std::min(length, kFar);
    const sqlite3_int64 begin = std::max<sqlite3_int64>(start, 0);
    const std::string_view rest = text.substr(PlaceBehind(text, begin));
    call.Return(rest.substr(0, PlaceBehind(rest, end - begin)));
}

/// A text as characters without case, each with its place in the text.
struct Folded {
    std::vector<char32_t> Characters;
    std::vector<size_t> Places;

    explicit Folded(std::string_view text) {
        Characters.reserve(text.size());
        Places.reserve(text.size() + 1);
        for (size_t at = 0; at < text.size();) {
            Places.push_back(at);
            const char32_t c = base::NextCodePoint(text, at);
            Characters.push_back(c <= base::kLastCodePoint ? QChar::toCaseFolded(c) : c);
        }
        Places.push_back(text.size());
    }

    static constexpr size_t kNowhere = size_t(-1);

    size_t Find(const Folded& wanted, size_t from) const {
        const auto begin = Characters.begin();
        const auto found = std::search(begin + std::min(from, Characters.size()), Characters.end(),
                                       wanted.Characters.begin(), wanted.Characters.end());
        return found == Characters.end() ? kNowhere : size_t(found - begin);
    }
};

void Replace(FunctionCall& call) {
    const std::string_view text = call.Text(0);
    const Folded wanted(call.Text(1));
    const Folded folded(text);
    size_t found = wanted.Characters.empty() ? Folded::kNowhere : folded.Find(wanted, 0);
    if (found == Folded::kNowhere) {
        call.Return(text);
        return;
    }
    std::string result;
    size_t from = 0;
    for (; found != Folded::kNowhere; found = folded.Find(wanted, from)) {
        result += text.substr(folded.Places[from], folded.Places[found] - folded.Places[from]);
        result += call.Text(2);
        from = found + wanted.Characters.size();
    }
    result += text.substr(folded.Places[from]);
    call.Return(result);
}

void CharIndex(FunctionCall& call) {
    const Folded wanted(call.Text(0));
    const std::string_view text = call.Text(1);
    const Folded folded(text);
    size_t from = 0;
    if (call.Count() == 3) {
        const size_t place = PlaceBehind(text, call.Integer(2) - 1);
        from = size_t(std::lower_bound(folded.Places.begin(), folded.Places.end(), place) -
                      folded.Places.begin());
    }
    const size_t found = wanted.Characters.empty() ? Folded::kNowhere : folded.Find(wanted, from);
    call.Return(found == Folded::kNowhere ? 0
                                          : CountUnits(text.substr(0, folded.Places[found])) + 1);
}

char32_t EscapeOf(const FunctionCall& call, int argument) {
    if (call.Count() <= argument)
        return 0;
    const std::string_view text = call.Text(argument);
    size_t at = 0;
    const char32_t escape = text.empty() ? 0 : base::NextCodePoint(text, at);
    if (escape == 0 || at != text.size())
        throw Failure(506, "The invalid escape character \"" + std::string(text) +
                               "\" was specified in a LIKE predicate.");
    return escape;
}

void Like(FunctionCall& call) {
    call.Return(sqlite3_int64(base::MatchesLike(call.Text(1), call.Text(0), EscapeOf(call, 2))));
}

void LikeLetters(FunctionCall& call) {
    call.Return(
        sqlite3_int64(base::MatchesLike(base::WithoutAccents(call.Text(1)),
                                        base::WithoutAccents(call.Text(0)), EscapeOf(call, 2))));
}

void Letters(FunctionCall& call) {
    call.Return(base::WithoutAccents(call.Text(0)));
}

void Low(FunctionCall& call) {
    call.Return(base::LikePrefix(call.Text(0), EscapeOf(call, 1)));
}

void High(FunctionCall& call) {
    call.Return(base::LikePrefix(call.Text(0), EscapeOf(call, 1)).append(kHighest));
}

void Cut(FunctionCall& call) {
    const std::string_view text = call.Text(0);
    call.Return(text.substr(0, PlaceBehind(text, call.Integer(1))));
}

void Fit(FunctionCall& call) {
    const std::string_view text = call.Text(0);
    const sqlite3_int64 length = call.Integer(1);
    if (sqlite3_int64(text.size()) <= length) {
        call.Return(text);
        return;
    }
    const std::string_view kept = text.substr(0, PlaceBehind(text, length));
    if (text.find_first_not_of(' ', kept.size()) == std::string_view::npos) {
        call.Return(kept);
        return;
    }
    const std::string_view column = call.Text(2);
    const size_t point = std::min(column.rfind('.'), column.size());
    const std::string_view name = column.substr(std::min(point + 1, column.size()));
    throw Failure(2628, "String or binary data would be truncated in table '" +
                            std::string(column.substr(0, point)) + "', column '" +
                            std::string(name) + "'. Truncated value: '" + std::string(kept) + "'.");
}

}  // namespace

void RegisterTextFunctions(sqlite3* database) {
    RegisterFunction<&Upper>(database, "t_upper", 1);
    RegisterFunction<&Lower>(database, "t_lower", 1);
    RegisterFunction<&Length>(database, "t_len", 1);
    RegisterFunction<&TrimLeft>(database, "t_ltrim", 1);
    RegisterFunction<&TrimRight>(database, "t_rtrim", 1);
    RegisterFunction<&Left>(database, "t_left", 2);
    RegisterFunction<&Right>(database, "t_right", 2);
    RegisterFunction<&Substring>(database, "t_substring", 3);
    RegisterFunction<&Replace>(database, "t_replace", 3);
    RegisterFunction<&CharIndex>(database, "t_charindex", 2);
    RegisterFunction<&CharIndex>(database, "t_charindex", 3);
    RegisterFunction<&Like>(database, "t_like", 2);
    RegisterFunction<&Like>(database, "t_like", 3);
    RegisterFunction<&LikeLetters>(database, "t_like_letters", 2);
    RegisterFunction<&LikeLetters>(database, "t_like_letters", 3);
    RegisterFunction<&Letters>(database, "t_letters", 1);
    RegisterFunction<&Low>(database, "t_low", 1);
    RegisterFunction<&Low>(database, "t_low", 2);
    RegisterFunction<&High>(database, "t_high", 1);
    RegisterFunction<&High>(database, "t_high", 2);
    RegisterFunction<&Cut>(database, "t_cut", 2);
    RegisterFunction<&Fit>(database, "t_fit", 3);
}

}  // namespace embedded
