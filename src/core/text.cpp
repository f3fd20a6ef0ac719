#include "core/text.h"

#include <iconv.h>

#include <algorithm>
#include <cctype>

namespace velk::core {
namespace {

// Converts with iconv; a byte sequence it cannot take goes through the fallback one byte at a time.
template <class Fallback>
std::string Convert(const char* to, const char* from, std::string_view input, Fallback fallback) {
  iconv_t cd = iconv_open(to, from);
  if (cd == reinterpret_cast<iconv_t>(-1)) return std::string(input);
  std::string out;
  char buffer[256];
  char* in = const_cast<char*>(input.data());
  std::size_t inLeft = input.size();
  while (inLeft > 0) {
    char* outPtr = buffer;
    std::size_t outLeft = sizeof buffer;
    const std::size_t result = iconv(cd, &in, &inLeft, &outPtr, &outLeft);
    out.append(buffer, outPtr);
    if (result == static_cast<std::size_t>(-1) && errno != E2BIG) {
      out += fallback(static_cast<unsigned char>(*in));
      ++in;
      --inLeft;
      iconv(cd, nullptr, nullptr, nullptr, nullptr);
    }
  }
  iconv_close(cd);
  return out;
}

}  // namespace

std::string Trim(std::string_view text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\0'; };
  const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
  const auto last = std::find_if_not(text.rbegin(), text.rend(), isBlank).base();
  return first < last ? std::string(first, last) : std::string();
}

std::string ToUpper(std::string_view text) {
  std::string s(text);
  for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return s;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && ToUpper(a) == ToUpper(b);
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && EqualsNoCase(text.substr(0, prefix.size()), prefix);
}

bool EndsWithNoCase(std::string_view text, std::string_view suffix) {
  return text.size() >= suffix.size() && EqualsNoCase(text.substr(text.size() - suffix.size()), suffix);
}

std::string Cp932ToUtf8(std::string_view bytes) {
  if (std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
    return std::string(bytes);
  return Convert("UTF-8", "CP932", bytes, [](unsigned char byte) {
    std::string latin1;
    latin1 += static_cast<char>(0xC0 | (byte >> 6));
    latin1 += static_cast<char>(0x80 | (byte & 0x3F));
    return latin1;
  });
}

std::string Utf8ToCp932(std::string_view text) {
  if (std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
    return std::string(text);
  return Convert("CP932", "UTF-8", text, [](unsigned char) { return std::string("?"); });
}

bool IsShiftJisLead(unsigned char byte) {
  return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

std::string CutShiftJis(std::string_view bytes, std::size_t width) {
  std::size_t i = 0;
  while (i < bytes.size()) {
    const std::size_t length = IsShiftJisLead(static_cast<unsigned char>(bytes[i])) ? 2 : 1;
    if (i + length > width) break;
    i += length;
  }
  return std::string(bytes.substr(0, std::min(i, bytes.size())));
}

std::uint32_t NextCodePoint(std::string_view s, std::size_t& i) {
  const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
  const unsigned char lead = byte(i);
  int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
  if (i + extra >= s.size()) extra = 0;
  std::uint32_t cp = extra == 0 ? lead : lead & (0x3F >> extra);
  for (int k = 1; k <= extra; ++k) cp = (cp << 6) | (byte(i + k) & 0x3F);
  i += 1 + extra;
  return cp;
}

}  // namespace velk::core
