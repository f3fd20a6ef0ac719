#pragma once
// Text helpers. In memory every text is UTF-8; files hold Shift-JIS (CP932) in fixed-width fields.
#include <cstdint>
#include <string>
#include <string_view>

namespace velk::core {

std::string Trim(std::string_view text);
std::string ToUpper(std::string_view text);
bool EqualsNoCase(std::string_view a, std::string_view b);
bool StartsWithNoCase(std::string_view text, std::string_view prefix);
bool EndsWithNoCase(std::string_view text, std::string_view suffix);

// Shift-JIS bytes from a file to UTF-8; bytes that do not decode pass through as Latin-1.
std::string Cp932ToUtf8(std::string_view bytes);
// UTF-8 to Shift-JIS bytes; characters without a Shift-JIS form become "?".
std::string Utf8ToCp932(std::string_view text);
// The next code point of a UTF-8 string, moving i past it; a broken sequence gives its first byte.
std::uint32_t NextCodePoint(std::string_view s, std::size_t& i);
// True for the first byte of a two-byte Shift-JIS character.
bool IsShiftJisLead(unsigned char byte);
// The longest prefix of Shift-JIS bytes that fits width bytes without splitting a character.
std::string CutShiftJis(std::string_view bytes, std::size_t width);

}  // namespace velk::core
