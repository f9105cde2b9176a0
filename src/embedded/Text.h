#pragma once

#include <string>
#include <string_view>

/// Small helpers for identifiers and UTF-8.
namespace embedded {

/// Upper case of plain letters: how names are looked up.
std::string NameKey(std::string_view name);
bool SameName(std::string_view left, std::string_view right);

/// A name as an identifier of a SQLite statement.
std::string Identifier(std::string_view name);
/// A text as a literal of a SQLite statement.
std::string Literal(std::string_view text);

/// Cuts to that many characters, not bytes.
void CutText(std::string& text, int characters);
int CountCharacters(std::string_view text);

}  // namespace embedded
