#pragma once

#include <QString>
#include <string>
#include <string_view>

/// The one order and equality of texts in the system: base letters first, accents where those
/// are equal; case and trailing blanks do not count. "Peña" is not "Pena" but stands beside it.
namespace base {

/// Whether letters that differ in their accents alone are the same.
enum class Accents { Count, Ignored };

/// Below, at or above zero; both texts UTF-8, malformed bytes compare as themselves. Texts of
/// plain ASCII take no memory. Whatever the order without accents tells apart stands in the same
/// order with them.
int CompareTexts(std::string_view left, std::string_view right, Accents accents = Accents::Count);
int CompareTexts(QStringView left, QStringView right);

/// LIKE of the server: % any run, _ one character, [a-c] [^a] sets, an escape character (0: none);
/// case does not count, accents do; trailing blanks of the text may be left over.
bool MatchesLike(std::string_view text, std::string_view pattern, char32_t escape);

/// The literal beginning of a LIKE pattern (escapes resolved), up to its first wildcard.
std::string LikePrefix(std::string_view pattern, char32_t escape);

/// Every letter without the marks upon it: "Peña" becomes "Pena". Letters of their own, as "ø",
/// stay. UTF-8, malformed bytes replaced.
std::string WithoutAccents(std::string_view text);
QString WithoutAccents(const QString& text);

/// Upper and lower case, accented letters included; UTF-8.
std::string ToUpper(std::string_view text);
std::string ToLower(std::string_view text);

}  // namespace base
