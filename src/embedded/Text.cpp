#include "embedded/Text.h"

namespace embedded {

namespace {

char Upper(char letter) {
    return letter >= 'a' && letter <= 'z' ? char(letter - 'a' + 'A') : letter;
}

std::string Between(char quote, std::string_view text) {
    std::string result(1, quote);
    for (const char letter : text) {
        if (letter == quote) {
            result += quote;
        }
        result += letter;
    }
    return result += quote;
}

bool StartsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

}  // namespace

std::string NameKey(std::string_view name) {
    std::string key(name);
    for (char& letter : key) {
        letter = Upper(letter);
    }
    return key;
}

bool SameName(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) {
        return false;
    }
    for (size_t i = 0; i < left.size(); ++i) {
        if (Upper(left[i]) != Upper(right[i])) {
            return false;
        }
    }
    return true;
}

std::string Identifier(std::string_view name) {
    return Between('"', name);
}

std::string Literal(std::string_view text) {
    return Between('\'', text);
}

void CutText(std::string& text, int characters) {
    if (text.size() <= size_t(characters)) {
        return;
    }
    int count = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (StartsCharacter(text[i]) && ++count > characters) {
            text.resize(i);
            return;
        }
    }
}

int CountCharacters(std::string_view text) {
    int count = 0;
    for (const char byte : text) {
        count += StartsCharacter(byte) ? 1 : 0;
    }
    return count;
}

}  // namespace embedded
