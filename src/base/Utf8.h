#pragma once

#include <algorithm>
#include <string>
#include <string_view>

/// Walking through UTF-8 text character by character.
namespace base {

constexpr char32_t kLastCodePoint = 0x10FFFF;
/// A byte that belongs to no character is handed out as this plus the byte.
constexpr char32_t kMalformedByte = 0x110000;

inline bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
}

/// The character at a place, which must lie within the text; steps behind it.
inline char32_t NextCodePoint(std::string_view text, size_t& at) {
    const auto byte = [&](size_t i) { return char32_t(static_cast<unsigned char>(text[i])); };
    const char32_t first = byte(at++);
    if (first < 0x80)
        return first;
    const int following = first >= 0xF5 || first < 0xC2 ? 0
                          : first >= 0xF0               ? 3
                          : first >= 0xE0               ? 2
                                                        : 1;
    if (following == 0 || at + following > text.size())
        return kMalformedByte + first;
    char32_t c = first & (0x3F >> following);
    for (int i = 0; i < following; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80)
            return kMalformedByte + first;
        c = (c << 6) | (byte(at + i) & 0x3F);
    }
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (c < kSmallest[following] || c > kLastCodePoint || (c >= 0xD800 && c <= 0xDFFF))
        return kMalformedByte + first;
    at += following;
    return c;
}

/// The reverse of NextCodePoint(), malformed bytes included.
inline void AppendCodePoint(std::string& text, char32_t c) {
    if (c < 0x80) {
        text += char(c);
    } else if (c < 0x800) {
        text += char(0xC0 | (c >> 6));
        text += char(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        text += char(0xE0 | (c >> 12));
        text += char(0x80 | ((c >> 6) & 0x3F));
        text += char(0x80 | (c & 0x3F));
    } else if (c <= kLastCodePoint) {
        text += char(0xF0 | (c >> 18));
        text += char(0x80 | ((c >> 12) & 0x3F));
        text += char(0x80 | ((c >> 6) & 0x3F));
        text += char(0x80 | (c & 0x3F));
    } else {
        text += char(c - kMalformedByte);
    }
}

}  // namespace base
