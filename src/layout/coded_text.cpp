#include "layout/coded_text.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace velk::layout {
namespace {

bool IsHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c - 'A' + 10;
}

CodeKind SwitchKind(char letter) {
  switch (letter) {
    case 'i': return CodeKind::Italic;
    case 'b': return CodeKind::Bold;
    case 'u': return CodeKind::Underline;
    case 's': return CodeKind::Strike;
    case '+': return CodeKind::Super;
    case '-': return CodeKind::Sub;
    case 'd': return CodeKind::Over;
    case 'g': return CodeKind::Greek;
    default: return CodeKind::Text;
  }
}

char SwitchLetter(CodeKind kind) {
  switch (kind) {
    case CodeKind::Italic: return 'i';
    case CodeKind::Bold: return 'b';
    case CodeKind::Underline: return 'u';
    case CodeKind::Strike: return 's';
    case CodeKind::Super: return '+';
    case CodeKind::Sub: return '-';
    case CodeKind::Over: return 'd';
    case CodeKind::Greek: return 'g';
    default: return '?';
  }
}

CodeKind ArgumentKind(char letter) {
  switch (letter) {
    case 'f': return CodeKind::Font;
    case 'p': return CodeKind::Size;
    case 'c': return CodeKind::Color;
    default: return CodeKind::Text;
  }
}

// Appends characters to the last code when it is a text run, else opens one.
void AppendText(std::vector<Code>& codes, std::string_view characters) {
  if (codes.empty() || codes.back().kind != CodeKind::Text) codes.push_back({CodeKind::Text, true, {}, 0});
  codes.back().text += characters;
}

double ParseNumber(std::string_view s) {
  double v = 0;
  std::from_chars(s.data(), s.data() + s.size(), v);
  return v;
}

double ParseColorArgument(std::string_view s) {
  if (s.size() >= 2 && s[0] == '&' && (s[1] == 'H' || s[1] == 'h')) s.remove_prefix(2);
  std::uint32_t v = 0;
  for (char c : s) {
    if (!IsHexDigit(c)) break;
    v = (v << 4) | static_cast<std::uint32_t>(HexValue(c));
  }
  return v & 0xFFFFFF;
}

}  // namespace

bool IsCoded(std::string_view text) { return text.starts_with("\\<"); }

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

std::vector<Code> ParseCodedText(std::string_view text) {
  std::vector<Code> codes;
  if (!IsCoded(text)) {
    if (!text.empty()) codes.push_back({CodeKind::Text, true, std::string(text), 0});
    return codes;
  }
  const std::size_t n = text.size();
  std::size_t i = 0;
  auto skipBlank = [&] {
    if (i < n && text[i] == ' ') ++i;
  };
  while (i < n) {
    if (text[i] != '\\') {
      const std::size_t next = text.find('\\', i);
      const std::size_t end = next == std::string_view::npos ? n : next;
      AppendText(codes, text.substr(i, end - i));
      i = end;
      continue;
    }
    if (i + 1 >= n) break;  // a lone backslash at the very end
    const char c1 = text[i + 1];
    if (c1 == '<') {
      codes.push_back({CodeKind::Start, true, {}, 0});
      i += 2;
      skipBlank();
      continue;
    }
    if (c1 == '>') {
      codes.push_back({CodeKind::End, true, {}, 0});
      i += 2;
      continue;
    }
    if (c1 == '\\') {
      AppendText(codes, "\\");
      i += 2;
      continue;
    }
    if (c1 == '\'') {
      if (i + 3 < n && IsHexDigit(text[i + 2]) && IsHexDigit(text[i + 3])) {
        codes.push_back({CodeKind::Hex, true, {}, double(HexValue(text[i + 2]) * 16 + HexValue(text[i + 3]))});
        i += 4;
        if (i < n && text[i] == ':') ++i;  // the unit words close the code with a colon
      } else {
        i += 2;
      }
      continue;
    }
    if (i + 2 >= n) break;  // a control cut off by the end of the string
    const char c2 = text[i + 2];
    i += 3;
    if (SwitchKind(c1) != CodeKind::Text && (c2 == '0' || c2 == '1')) {
      codes.push_back({SwitchKind(c1), c2 == '1', {}, 0});
      skipBlank();
    } else if (ArgumentKind(c1) != CodeKind::Text && c2 == ':') {
      const std::size_t close = text.find(':', i);
      const std::size_t end = close == std::string_view::npos ? n : close;
      const std::string_view argument = text.substr(i, end - i);
      Code code{ArgumentKind(c1), true, {}, 0};
      if (code.kind == CodeKind::Font) code.text = std::string(argument);
      if (code.kind == CodeKind::Size) code.value = ParseNumber(argument);
      if (code.kind == CodeKind::Color) code.value = ParseColorArgument(argument);
      codes.push_back(code);
      i = end == n ? n : end + 1;
      skipBlank();
    } else if (ArgumentKind(c1) != CodeKind::Text && c2 == '0') {
      codes.push_back({ArgumentKind(c1), false, {}, 0});
      skipBlank();
    } else if (c1 == 't' && c2 == 'b') {
      codes.push_back({CodeKind::Tab, true, {}, 0});
      skipBlank();
    } else if (c1 == 'c' && c2 == 'r') {
      codes.push_back({CodeKind::LineBreak, true, {}, 0});
      skipBlank();
    }
    // Any other control is dropped with its two characters.
  }
  return codes;
}

std::string FormatPoints(double points) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.6g", points);
  return buffer;
}

std::string FormatColorWord(std::uint32_t color) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "&H%X", color & 0xFFFFFFu);
  return buffer;
}

std::string WriteCode(const Code& code) {
  switch (code.kind) {
    case CodeKind::Text: {
      std::string out;
      for (char c : code.text) {
        out += c;
        if (c == '\\') out += '\\';
      }
      return out;
    }
    case CodeKind::Hex: {
      char buffer[8];
      std::snprintf(buffer, sizeof buffer, "\\'%02x", static_cast<unsigned>(code.value) & 0xFFu);
      return buffer;
    }
    case CodeKind::Start: return std::string(kStartMark);
    case CodeKind::End: return "\\>";
    case CodeKind::Font: return code.on ? "\\f:" + code.text + ": " : "\\f0 ";
    case CodeKind::Size: return code.on ? "\\p:" + FormatPoints(code.value) + ": " : "\\p0 ";
    case CodeKind::Color:
      return code.on ? "\\c:" + FormatColorWord(static_cast<std::uint32_t>(code.value)) + ": " : "\\c0 ";
    case CodeKind::Tab: return "\\tb ";
    case CodeKind::LineBreak: return "\\cr ";
    default: return std::string{'\\', SwitchLetter(code.kind), code.on ? '1' : '0', ' '};
  }
}

std::string WriteCodedText(const std::vector<Code>& codes) {
  std::string out;
  for (const Code& code : codes) out += WriteCode(code);
  return out;
}

StrippedText StripCodes(std::string_view text) {
  StrippedText result;
  if (!IsCoded(text)) {
    result.first = std::string(text);
    return result;
  }
  std::string* target = &result.first;
  bool firstLineDone = false;
  for (const Code& code : ParseCodedText(text)) {
    if (code.kind == CodeKind::End) break;
    if (code.kind == CodeKind::Text) *target += code.text;
    if (code.kind == CodeKind::Hex) AppendUtf8(*target, static_cast<char32_t>(code.value));
    if (code.kind == CodeKind::Tab) *target += '\t';
    if (code.kind == CodeKind::LineBreak) {
      if (firstLineDone) *target += "\r\n";
      firstLineDone = true;
      target = &result.rest;
    }
  }
  return result;
}

}  // namespace velk::layout
