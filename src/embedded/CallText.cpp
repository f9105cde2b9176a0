#include "embedded/CallText.h"

#include "embedded/Text.h"

namespace embedded {

namespace {

bool IsBlank(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n';
}

bool IsDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

bool IsNameLetter(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           IsDigit(letter) || letter == '_' || letter == '.';
}

void SkipBlanks(std::string_view text, size_t& next) {
    while (next < text.size() && IsBlank(text[next])) {
        ++next;
    }
}

bool ReadQuoted(std::string_view text, size_t& next, CallArgument& argument) {
    const size_t begin = ++next;
    while (next < text.size()) {
        if (text[next] == '\'') {
            if (next + 1 >= text.size() || text[next + 1] != '\'') {
                argument.kind = CallArgument::Kind::Text;
                argument.raw = text.substr(begin, next - begin);
                ++next;
                return true;
            }
            argument.hasQuotes = true;
            ++next;
        }
        ++next;
    }
    return false;
}

bool ReadBare(std::string_view text, size_t& next, CallArgument& argument) {
    const size_t begin = next;
    while (next < text.size() && !IsBlank(text[next]) && text[next] != ',') {
        ++next;
    }
    argument.raw = text.substr(begin, next - begin);
    if (SameName(argument.raw, "NULL")) {
        argument.kind = CallArgument::Kind::Null;
        return true;
    }
    // Whole numbers only; what else a number may look like is for the parser.
    argument.kind = CallArgument::Kind::Number;
    for (const char letter : argument.raw) {
        if (!IsDigit(letter)) {
            return false;
        }
    }
    return !argument.raw.empty() && argument.raw.size() < 10;
}

}  // namespace

std::optional<CallText> ReadCallText(std::string_view text) {
    size_t next = 0;
    SkipBlanks(text, next);
    const size_t begin = next;
    while (next < text.size() && IsNameLetter(text[next])) {
        ++next;
    }
    CallText call;
    call.name = text.substr(begin, next - begin);
    if (call.name.empty() || IsDigit(call.name[0])) {
        return std::nullopt;
    }
    SkipBlanks(text, next);
    while (next < text.size()) {
        CallArgument argument;
        const bool read =
            text[next] == '\'' ? ReadQuoted(text, next, argument) : ReadBare(text, next, argument);
        SkipBlanks(text, next);
        if (!read || (next < text.size() && text[next] != ',')) {
            return std::nullopt;
        }
        call.arguments.push_back(argument);
        if (next < text.size()) {
            SkipBlanks(text, ++next);
            if (next >= text.size()) {
                return std::nullopt;
            }
        }
    }
    return call;
}

void Unquote(const CallArgument& argument, std::string& text) {
    if (!argument.hasQuotes) {
        text.assign(argument.raw);
        return;
    }
    text.clear();
    for (size_t i = 0; i < argument.raw.size(); ++i) {
        text += argument.raw[i];
        i += argument.raw[i] == '\'' ? 1 : 0;
    }
}

}  // namespace embedded
