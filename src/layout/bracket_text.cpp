#include "layout/bracket_text.h"

#include <vector>

#include "layout/coded_text.h"

namespace velk::layout {
namespace {

bool IsHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

std::string_view Trim(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

// What a ")" writes for the bracket it closes.
std::string ClosingCode(char kind) {
  switch (kind) {
    case 'i': return "\\i0 ";
    case 'b': return "\\b0 ";
    case 'u': return "\\u0 ";
    case 's': return "\\s0 ";
    case '-': return "\\-0 ";
    case '+': return "\\+0 ";
    case '=': return "\\d0 ";
    case 'g': return "\\g0 ";
    case 'f': return "\\f0 ";
    case 'p': return "\\p0 ";
    case 'c': return "\\c0 ";
    case '(': return ")";
    default: return {};  // "\r(" and a font bracket without a name
  }
}

// The stack of open brackets, each with the letter of its kind. Levels past the limit are only
// counted, so that their closing brackets leave the stack alone.
class BracketStack {
 public:
  void Push(char kind) {
    if (kinds_.size() < kBracketDepth) {
      kinds_.push_back(kind);
    } else {
      ++overflow_;
    }
  }
  // The code that the ")" writes, or the ")" itself when nothing is open.
  std::string Pop() {
    if (overflow_ > 0) {
      --overflow_;
      return {};
    }
    if (kinds_.empty()) return ")";
    const char kind = kinds_.back();
    kinds_.pop_back();
    return ClosingCode(kind);
  }
 private:
  std::vector<char> kinds_;
  int overflow_ = 0;
};

// Reads an opening element that starts with a backslash at text[i]; on success writes its code,
// pushes its kind and returns the position behind its "(".
std::size_t OpenElement(std::string_view text, std::size_t i, std::string& out, BracketStack& stack) {
  const std::size_t n = text.size();
  if (i + 2 >= n) return 0;
  const char letter = text[i + 1];
  static constexpr std::string_view kSimple = "ibus-+=rg";
  if (kSimple.find(letter) != std::string_view::npos && text[i + 2] == '(') {
    if (letter == '=') {
      out += "\\d1 ";
    } else if (letter != 'r') {
      out += std::string{'\\', letter, '1', ' '};
    }
    stack.Push(letter == 'r' ? '\0' : letter);
    return i + 3;
  }
  std::size_t j = i + 2;
  if (letter == 'f' && text[i + 2] == ':') {
    const std::size_t open = text.find('(', i + 3);
    if (open == std::string_view::npos) return 0;
    const std::string_view name = Trim(text.substr(i + 3, open - i - 3));
    if (name.empty()) {
      stack.Push('\0');
    } else {
      out += "\\f:" + std::string(name) + ": ";
      stack.Push('f');
    }
    return open + 1;
  }
  if (letter == 'p') {
    while (j < n && ((text[j] >= '0' && text[j] <= '9') || text[j] == '.')) ++j;
    if (j == i + 2 || j >= n || text[j] != '(') return 0;
    out += "\\p:" + std::string(text.substr(i + 2, j - i - 2)) + ": ";
    stack.Push('p');
    return j + 1;
  }
  if (letter == 'c' || letter == 'h') {
    while (j < n && IsHexDigit(text[j])) ++j;
    if (j == i + 2 || j >= n || text[j] != '(') return 0;
    out += "\\c:&H" + std::string(text.substr(i + 2, j - i - 2)) + ": ";
    stack.Push('c');
    return j + 1;
  }
  return 0;
}

}  // namespace

std::string InternalFromBracket(std::string_view text) {
  if (IsCoded(text)) return std::string(text);
  std::string out;
  BracketStack stack;
  const std::size_t n = text.size();
  std::size_t i = 0;
  while (i < n) {
    const char c = text[i];
    if (c == '\\') {
      if (i + 1 < n && text[i + 1] == '\\') {
        out += "\\\\";
        i += 2;
      } else if (i + 1 < n && (text[i + 1] == '>' || text[i + 1] == '\'')) {
        out += c;  // the end mark and the character codes pass as they are
        ++i;
      } else if (const std::size_t next = OpenElement(text, i, out, stack); next != 0) {
        i = next;
      } else {
        out += "\\\\";  // a backslash that opens nothing is an ordinary character
        ++i;
      }
    } else if (c == '(') {
      out += '(';
      stack.Push('(');
      ++i;
    } else if (c == ')') {
      out += stack.Pop();
      ++i;
    } else if (c == '\r' && i + 1 < n && text[i + 1] == '\n') {
      out += "\\cr ";
      i += 2;
    } else if (c == '\n') {
      out += "\\cr ";
      ++i;
    } else if (c == '\t') {
      out += "\\tb ";
      ++i;
    } else {
      out += c;
      ++i;
    }
  }
  return std::string(kStartMark) + out;
}

std::string BracketFromInternal(std::string_view text) {
  if (!IsCoded(text)) return std::string(text);
  std::string out;
  for (const Code& code : ParseCodedText(text)) {
    if (code.kind == CodeKind::Start) continue;
    if (!code.on) {
      out += ')';
      continue;
    }
    switch (code.kind) {
      case CodeKind::Text: out += WriteCode(code); break;
      case CodeKind::Hex:
      case CodeKind::End: out += WriteCode(code); break;
      case CodeKind::Italic: out += "\\i("; break;
      case CodeKind::Bold: out += "\\b("; break;
      case CodeKind::Underline: out += "\\u("; break;
      case CodeKind::Strike: out += "\\s("; break;
      case CodeKind::Super: out += "\\+("; break;
      case CodeKind::Sub: out += "\\-("; break;
      case CodeKind::Over: out += "\\=("; break;
      case CodeKind::Greek: out += "\\g("; break;
      case CodeKind::Font: out += "\\f:" + code.text + "("; break;
      case CodeKind::Size: out += "\\p" + FormatPoints(code.value) + "("; break;
      case CodeKind::Color: out += "\\c" + FormatColorWord(static_cast<std::uint32_t>(code.value)).substr(2) + "("; break;
      case CodeKind::Tab: out += '\t'; break;
      case CodeKind::LineBreak: out += "\r\n"; break;
      default: break;
    }
  }
  return out;
}

}  // namespace velk::layout
