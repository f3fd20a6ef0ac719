#include "formats/text_lines.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "core/text.h"

namespace velk::formats {
namespace {

bool IsArrayKey(const std::string& key) {
  for (const char* arrayKey : {"##$P", "##$D", "##$CNST", "##$IN"})
    if (core::EqualsNoCase(key, arrayKey)) return true;
  return false;
}

// Between the first and the last character; the last goes only when it is the closing bracket.
std::string Unbracket(const std::string& text, char closing) {
  std::string inner = text.substr(1);
  if (!inner.empty() && inner.back() == closing) inner.pop_back();
  return inner;
}

int LeadingDigits(const std::string& text, std::size_t from) {
  int value = 0;
  bool any = false;
  for (std::size_t i = from; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i) {
    value = std::min(value * 10 + (text[i] - '0'), 1 << 20);
    any = true;
  }
  return any ? value : -1;
}

int TrailingDigits(const std::string& text, std::size_t before) {
  std::size_t start = before;
  while (start > 0 && std::isdigit(static_cast<unsigned char>(text[start - 1]))) --start;
  return start == before ? -1 : LeadingDigits(text, start);
}

void ReadArrayLines(TextCursor& cursor, int first, int last, ParameterValues& values) {
  int index = first;
  while (index <= last && !cursor.AtEnd()) {
    const std::string line = core::Trim(ReadTextLine(cursor));
    if (line.empty()) return;
    std::size_t at = 0;
    while (index <= last) {
      at = line.find_first_not_of(" \t", at);
      if (at == std::string::npos) break;
      const std::size_t end = std::min(line.find_first_of(" \t", at), line.size());
      values[static_cast<std::size_t>(index++)] = line.substr(at, end - at);
      at = end;
    }
  }
}

}  // namespace

std::string ReadTextLine(TextCursor& cursor) {
  const core::Bytes bytes = cursor.bytes;
  std::size_t& i = cursor.position;
  while (i < bytes.size() && bytes[i] < 32) ++i;
  std::string line;
  while (i < bytes.size()) {
    const std::uint8_t byte = bytes[i++];
    if (byte == 10 || byte == 13) break;
    if ((byte >= 129 && byte <= 159) || (byte >= 224 && byte <= 252)) {
      line += static_cast<char>(byte);
      if (i < bytes.size()) line += static_cast<char>(bytes[i++]);
    } else if ((byte >= 1 && byte <= 128) || (byte >= 160 && byte <= 223)) {
      line += static_cast<char>(byte);
    }
  }
  return line;
}

void SplitParameterLine(const std::string& rawLine, TextCursor& cursor, std::string& key, ParameterValues& values) {
  const std::string line = core::Trim(rawLine);
  const std::size_t split = line.find_first_of("\t =");
  key = core::Trim(line.substr(0, split));
  const std::string rest = split == std::string::npos ? std::string() : core::Trim(line.substr(split + 1));
  values[0] = rest.substr(0, rest.find_first_of(" \t"));
  if (rest.empty()) return;
  if (rest.front() == '<') {
    values[0] = Unbracket(rest, '>');
  } else if (rest.front() == '(') {
    values[0] = Unbracket(rest, ')');
    const std::size_t close = rest.find(')');
    const int first = LeadingDigits(rest, 1);
    const int last = std::min(TrailingDigits(rest, close == std::string::npos ? rest.size() : close), kParameterValues - 1);
    if (IsArrayKey(key) && first >= 0 && first < kParameterValues && last >= first)
      ReadArrayLines(cursor, first, last, values);
  }
}

std::optional<double> ParseNumber(const std::string& text) {
  const std::string trimmed = core::Trim(text);
  if (trimmed.empty()) return std::nullopt;
  char* end = nullptr;
  const double value = std::strtod(trimmed.c_str(), &end);
  if (end != trimmed.c_str() + trimmed.size()) return std::nullopt;
  return value;
}

std::size_t LineNumberAt(const TextCursor& cursor, std::size_t position) {
  const core::Bytes bytes = cursor.bytes;
  position = std::min(position, bytes.size());
  while (position < bytes.size() && bytes[position] < 32) ++position;
  std::size_t line = 1;
  for (std::size_t i = 0; i < position; ++i)
    if (bytes[i] == '\n' || (bytes[i] == '\r' && (i + 1 >= bytes.size() || bytes[i + 1] != '\n'))) ++line;
  return line;
}

}  // namespace velk::formats
