#include "layout/styled_runs.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "core/text.h"
#include "layout/coded_text.h"
#include "layout/draw_coded_text.h"

namespace velk::layout {
namespace {

constexpr int kScriptHalfPoints = 6;  // how far "\up" and "\dn" move; the reader needs only the sign

// The Symbol font's code of a Greek letter (or other character it draws), 0 for none.
unsigned char SymbolCode(std::uint32_t cp) {
  static const std::map<std::uint32_t, unsigned char> kCodes = [] {
    std::map<std::uint32_t, unsigned char> codes;
    for (int c = 255; c >= 0x20; --c) codes[SymbolCharacter(static_cast<unsigned char>(c))] = static_cast<unsigned char>(c);
    return codes;
  }();
  const auto found = kCodes.find(cp);
  return found == kCodes.end() ? 0 : found->second;
}

std::string Hex(unsigned char c) {
  static constexpr char kDigits[] = "0123456789abcdef";
  return std::string("\\'") + kDigits[c >> 4] + kDigits[c & 15];
}

std::string EscapedCharacter(std::uint32_t cp) {
  if (cp == '\\' || cp == '{' || cp == '}') return std::string("\\") + static_cast<char>(cp);
  if (cp == '\t') return "\\tab ";
  if (cp == '\n') return "\\par ";
  if (cp < 0x80) return std::string(1, static_cast<char>(cp));
  if (cp <= 0xFF) return Hex(static_cast<unsigned char>(cp));
  return "\\u" + std::to_string(cp > 0xFFFF ? '?' : static_cast<std::int16_t>(cp)) + "?";
}

std::string EscapedRun(const StyledRun& run) {
  std::string out;
  for (std::size_t i = 0; i < run.text.size();) {
    const std::uint32_t cp = core::NextCodePoint(run.text, i);
    const unsigned char symbol = run.style.greek && cp >= 0x80 ? SymbolCode(cp) : 0;
    out += symbol ? (symbol < 0x80 ? std::string(1, static_cast<char>(symbol)) : Hex(symbol)) : EscapedCharacter(cp);
  }
  return out;
}

std::string ColorEntry(std::uint32_t c) {
  return "\\red" + std::to_string(c & 0xFF) + "\\green" + std::to_string((c >> 8) & 0xFF) + "\\blue" +
         std::to_string((c >> 16) & 0xFF) + ";";
}

}  // namespace

std::vector<StyledRun> RunsFromInternal(std::string_view text) {
  std::vector<StyledRun> runs;
  RunStyle style;
  const auto add = [&](const std::string& characters) {
    if (characters.empty()) return;
    if (!runs.empty() && runs.back().style == style) {
      runs.back().text += characters;
    } else {
      runs.push_back({characters, style});
    }
  };
  for (const Code& code : ParseCodedText(text)) {
    std::string characters;
    switch (code.kind) {
      case CodeKind::Text:
        characters = style.greek ? GreekFromLatin(code.text) : code.text;
        break;
      case CodeKind::Hex: {
        const auto c = static_cast<unsigned char>(code.value);
        AppendUtf8(characters, style.greek ? SymbolCharacter(c) : char32_t(c));
        break;
      }
      case CodeKind::End: return runs;
      case CodeKind::Italic: style.italic = code.on; break;
      case CodeKind::Bold: style.bold = code.on; break;
      case CodeKind::Underline: style.underline = code.on; break;
      case CodeKind::Strike: style.strike = code.on; break;
      case CodeKind::Super:
      case CodeKind::Over: style.script = code.on ? 1 : 0; break;
      case CodeKind::Sub: style.script = code.on ? -1 : 0; break;
      case CodeKind::Greek: style.greek = code.on; break;
      case CodeKind::Font: style.font = code.on ? code.text : std::string(); break;
      case CodeKind::Size: style.points = code.on ? code.value : 0; break;
      case CodeKind::Color:
        style.color = code.on ? std::optional<std::uint32_t>(static_cast<std::uint32_t>(code.value)) : std::nullopt;
        break;
      case CodeKind::Tab: characters = "\t"; break;
      case CodeKind::LineBreak: characters = "\n"; break;
      case CodeKind::Start: break;
    }
    add(characters);
  }
  return runs;
}

namespace {

// The on-codes of a look, in the order they are opened.
std::vector<Code> LookCodes(const RunStyle& s) {
  std::vector<Code> codes;
  if (s.italic) codes.push_back({CodeKind::Italic, true, {}, 0});
  if (s.bold) codes.push_back({CodeKind::Bold, true, {}, 0});
  if (s.underline) codes.push_back({CodeKind::Underline, true, {}, 0});
  if (s.strike) codes.push_back({CodeKind::Strike, true, {}, 0});
  if (!s.font.empty()) codes.push_back({CodeKind::Font, true, s.font, 0});
  if (s.points > 0) codes.push_back({CodeKind::Size, true, {}, s.points});
  if (s.color) codes.push_back({CodeKind::Color, true, {}, double(*s.color)});
  if (s.greek) codes.push_back({CodeKind::Greek, true, {}, 0});
  if (s.script != 0) codes.push_back({s.script > 0 ? CodeKind::Super : CodeKind::Sub, true, {}, 0});
  return codes;
}

std::string InternalCharacters(const StyledRun& run) {
  std::string out;
  for (std::size_t i = 0; i < run.text.size();) {
    const std::size_t from = i;
    const std::uint32_t cp = core::NextCodePoint(run.text, i);
    const unsigned char symbol = run.style.greek && cp >= 0x80 ? SymbolCode(cp) : 0;
    if (symbol >= 0x80) out += Hex(symbol);
    else if (symbol > 0) out += static_cast<char>(symbol);
    else if (cp == '\\') out += "\\\\";
    else if (cp == '\n') out += "\\cr ";
    else if (cp == '\t') out += "\\tb ";
    else out.append(run.text, from, i - from);
  }
  return out;
}

}  // namespace

std::string NestedInternalFromRuns(const std::vector<StyledRun>& runs) {
  std::string out(kStartMark);
  std::vector<Code> open;
  const auto closeTo = [&](std::size_t depth) {
    while (open.size() > depth) {
      Code off = open.back();
      off.on = false;
      out += WriteCode(off);
      open.pop_back();
    }
  };
  for (const StyledRun& run : runs) {
    const std::vector<Code> wanted = LookCodes(run.style);
    // Keep the open looks that the run still has, from the outside in; close the rest.
    std::size_t keep = 0;
    while (keep < open.size() && std::find(wanted.begin(), wanted.end(), open[keep]) != wanted.end()) ++keep;
    closeTo(keep);
    for (const Code& c : wanted)
      if (std::find(open.begin(), open.end(), c) == open.end()) out += WriteCode(c), open.push_back(c);
    out += InternalCharacters(run);
  }
  closeTo(0);
  return out;
}

std::string GreekFromLatin(std::string_view text) {
  std::string out;
  for (unsigned char c : text) c < 0x80 ? AppendUtf8(out, SymbolCharacter(c)) : void(out += char(c));
  return out;
}

std::string LatinFromGreek(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t from = i;
    const std::uint32_t cp = core::NextCodePoint(text, i);
    const unsigned char symbol = cp >= 0x80 ? SymbolCode(cp) : 0;
    if (symbol > 0 && symbol < 0x80) {
      out += static_cast<char>(symbol);
    } else {
      out.append(text.substr(from, i - from));
    }
  }
  return out;
}

std::string RtfFromRuns(const std::vector<StyledRun>& runs, const BaseFont& base) {
  std::vector<std::string> fonts{base.name, "Symbol"};
  std::vector<std::uint32_t> colors{base.color};
  for (const StyledRun& run : runs) {
    if (!run.style.font.empty() && std::find(fonts.begin(), fonts.end(), run.style.font) == fonts.end())
      fonts.push_back(run.style.font);
    if (run.style.color && std::find(colors.begin(), colors.end(), *run.style.color) == colors.end())
      colors.push_back(*run.style.color);
  }
  const auto fontNumber = [&](const std::string& name) {
    return static_cast<int>(std::find(fonts.begin(), fonts.end(), name) - fonts.begin());
  };
  const auto colorNumber = [&](std::uint32_t c) {
    return static_cast<int>(std::find(colors.begin(), colors.end(), c) - colors.begin()) + 1;
  };
  const int baseHalfPoints = static_cast<int>(std::lround(base.points * 2));

  std::string out = "{\\rtf1{\\fonttbl";
  for (std::size_t k = 0; k < fonts.size(); ++k)
    out += "{\\f" + std::to_string(k) + "\\fnil\\fcharset" + (k == 1 ? "2 " : "0 ") + fonts[k] + ";}";
  out += "}{\\colortbl ;";
  for (std::uint32_t c : colors) out += ColorEntry(c);
  out += "}\\viewkind4\\uc1\\pard\\cf1\\f0\\fs" + std::to_string(baseHalfPoints) + " ";

  RunStyle was;
  for (const StyledRun& run : runs) {
    const RunStyle& s = run.style;
    if (s.bold != was.bold) out += s.bold ? "\\b " : "\\b0 ";
    if (s.italic != was.italic) out += s.italic ? "\\i " : "\\i0 ";
    if (s.underline != was.underline) out += s.underline ? "\\ul " : "\\ulnone ";
    if (s.strike != was.strike) out += s.strike ? "\\strike " : "\\strike0 ";
    if (s.script != was.script) {
      if (was.script > 0) out += "\\up0 ";
      if (was.script < 0) out += "\\dn0 ";
      if (s.script != 0) out += (s.script > 0 ? "\\up" : "\\dn") + std::to_string(kScriptHalfPoints) + " ";
    }
    if (s.greek != was.greek || s.font != was.font)
      out += "\\f" + std::to_string(s.greek ? 1 : s.font.empty() ? 0 : fontNumber(s.font)) + " ";
    if (s.points != was.points)
      out += "\\fs" + std::to_string(s.points > 0 ? static_cast<int>(std::lround(s.points * 2)) : baseHalfPoints) + " ";
    if (s.color != was.color) out += "\\cf" + std::to_string(s.color ? colorNumber(*s.color) : 1) + " ";
    out += EscapedRun(run);
    was = s;
  }
  return out + "\\par }";
}

}  // namespace velk::layout
