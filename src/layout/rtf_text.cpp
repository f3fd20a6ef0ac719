#include "layout/rtf_text.h"

#include <cctype>
#include <cmath>
#include <map>
#include <optional>
#include <vector>

#include "core/text.h"
#include "layout/coded_text.h"

namespace velk::layout {
namespace {

constexpr std::string_view kSymbolFont = "Symbol";

// ---- writing ----

std::string EscapeRtfText(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size();) {
    const std::uint32_t cp = core::NextCodePoint(text, i);
    if (cp == '\\' || cp == '{' || cp == '}') {
      out += '\\';
      out += static_cast<char>(cp);
    } else if (cp < 0x80) {
      out += static_cast<char>(cp);
    } else {
      // Unicode escapes are signed 16-bit numbers; "?" is what a reader without Unicode shows.
      const int value = cp > 0xFFFF ? '?' : static_cast<std::int16_t>(cp);
      out += "\\u" + std::to_string(value) + "?";
    }
  }
  return out;
}

bool IsAscii(std::string_view s) {
  for (char c : s)
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  return true;
}

std::string ColorEntry(std::uint32_t c) {
  return "\\red" + std::to_string(c & 0xFF) + "\\green" + std::to_string((c >> 8) & 0xFF) + "\\blue" +
         std::to_string((c >> 16) & 0xFF) + ";";
}

int HalfPoints(double points) { return static_cast<int>(std::lround(points * 2)); }

}  // namespace

std::string RtfFromInternal(std::string_view text, const BaseFont& base) {
  std::vector<std::string> fonts{base.name, std::string(kSymbolFont)};
  std::vector<std::uint32_t> colors{base.color};
  auto fontNumber = [&](const std::string& name) {
    for (std::size_t k = 0; k < fonts.size(); ++k)
      if (fonts[k] == name) return k;
    fonts.push_back(name);
    return fonts.size() - 1;
  };
  std::size_t currentFont = 0;  // the font that "\g0 " returns to
  std::string body;
  for (const Code& code : ParseCodedText(text)) {
    if (code.kind == CodeKind::End) break;
    switch (code.kind) {
      case CodeKind::Text: body += EscapeRtfText(code.text); break;
      case CodeKind::Hex: body += WriteCode(code); break;
      case CodeKind::Sub: body += code.on ? "\\dn " : "\\dn0 "; break;
      case CodeKind::Super:
      case CodeKind::Over: body += code.on ? "\\up " : "\\up0 "; break;
      case CodeKind::Italic: body += code.on ? "\\i " : "\\i0 "; break;
      case CodeKind::Underline: body += code.on ? "\\ul " : "\\ulnone "; break;
      case CodeKind::Bold: body += code.on ? "\\b " : "\\b0 "; break;
      case CodeKind::Strike: body += code.on ? "\\strike " : "\\strike0 "; break;
      case CodeKind::Greek: body += code.on ? "\\f1 " : "\\f" + std::to_string(currentFont) + " "; break;
      case CodeKind::Font:
        currentFont = code.on ? fontNumber(code.text) : 0;
        body += "\\f" + std::to_string(currentFont) + " ";
        break;
      case CodeKind::Size: body += "\\fs" + std::to_string(HalfPoints(code.on ? code.value : base.points)) + " "; break;
      case CodeKind::Color:
        if (code.on) {
          colors.push_back(static_cast<std::uint32_t>(code.value));
          body += "\\cf" + std::to_string(colors.size()) + " ";
        } else {
          body += "\\cf1 ";
        }
        break;
      case CodeKind::Tab: body += "\\tab "; break;
      case CodeKind::LineBreak: body += "\\par "; break;
      default: break;
    }
  }
  std::string out = "{\\rtf1\\ansi\\deff0{\\fonttbl";
  for (std::size_t k = 0; k < fonts.size(); ++k) {
    const int charset = fonts[k] == kSymbolFont ? 2 : IsAscii(fonts[k]) ? 0 : 128;
    out += "{\\f" + std::to_string(k) + "\\fnil\\fcharset" + std::to_string(charset) + " " + fonts[k] + ";}";
  }
  out += "}{\\colortbl ;";
  for (std::uint32_t c : colors) out += ColorEntry(c);
  out += "}\\viewkind4\\uc1\\pard\\cf1\\f0\\fs" + std::to_string(HalfPoints(base.points)) + " ";
  return out + body + "\\par }";
}

// ---- reading ----

namespace {

// The character look that the RTF asks for at a point; groups save and restore it.
struct Look {
  bool italic = false, bold = false, underline = false, strike = false, super = false, sub = false;
  bool greek = false;
  std::string font;                  // empty: the base font
  int halfPoints = 0;                // 0: the base size
  std::optional<std::uint32_t> color;  // empty: the base colour
  friend bool operator==(const Look&, const Look&) = default;
};

enum class Destination { Text, FontTable, ColorTable, Skip };

bool IsSkippedDestination(std::string_view word) {
  static constexpr std::string_view kSkipped[] = {
      "info", "stylesheet", "listtable", "listoverridetable", "rsidtbl", "generator", "header", "footer",
      "headerl", "headerr", "headerf", "footerl", "footerr", "footerf", "pict", "object", "themedata",
      "colorschememapping", "latentstyles", "datastore", "xmlnstbl", "pgdsctbl", "fldinst", "revtbl",
      "filetbl", "footnote", "annotation", "bkmkstart", "bkmkend"};
  for (std::string_view s : kSkipped)
    if (s == word) return true;
  return false;
}

class RtfReader {
 public:
  RtfReader(std::string_view rtf, const BaseFont& base) : s_(rtf), base_(base) {}

  std::string Read() {
    groups_.push_back({Destination::Text, Look{}});
    while (i_ < s_.size()) {
      const char c = s_[i_];
      if (c == '{') {
        ++i_;
        groups_.push_back(groups_.back());
        if (s_.substr(i_, 2) == "\\*") groups_.back().destination = Destination::Skip;
      } else if (c == '}') {
        ++i_;
        if (groups_.size() > 1) groups_.pop_back();
      } else if (c == '\\') {
        ReadControl();
      } else if (c == '\r' || c == '\n') {
        ++i_;
      } else {
        ++i_;
        Character(std::string(1, c));
      }
    }
    // The closing paragraph mark of the document is no line of its own.
    for (std::size_t k = codes_.size(); k-- > 0;) {
      const CodeKind kind = codes_[k].kind;
      if (kind == CodeKind::Text || kind == CodeKind::Hex || kind == CodeKind::Tab) break;
      if (kind == CodeKind::LineBreak) {
        codes_.erase(codes_.begin() + static_cast<std::ptrdiff_t>(k));
        break;
      }
    }
    codes_.push_back({CodeKind::End, true, {}, 0});
    return std::string(kStartMark) + WriteCodedText(codes_);
  }

 private:
  struct Group {
    Destination destination;
    Look look;
  };

  Look& look() { return groups_.back().look; }
  Destination destination() const { return groups_.back().destination; }

  void ReadControl() {
    ++i_;  // the backslash
    if (i_ >= s_.size()) return;
    const char c = s_[i_];
    if (c == '\'') {
      const std::string_view hex = s_.substr(i_ + 1, 2);
      i_ += 1 + hex.size();
      if (hex.size() == 2 && std::isxdigit(static_cast<unsigned char>(hex[0])) &&
          std::isxdigit(static_cast<unsigned char>(hex[1])))
        HexCharacter(std::stoi(std::string(hex), nullptr, 16));
      return;
    }
    if (!std::isalpha(static_cast<unsigned char>(c))) {
      ++i_;
      if (c == '\\' || c == '{' || c == '}') Character(std::string(1, c));
      if (c == '~') Character(" ");
      if (c == '_') Character("-");
      return;
    }
    const std::size_t start = i_;
    while (i_ < s_.size() && std::isalpha(static_cast<unsigned char>(s_[i_]))) ++i_;
    const std::string word(s_.substr(start, i_ - start));
    std::optional<int> parameter;
    const std::size_t numberStart = i_;
    if (i_ < s_.size() && s_[i_] == '-') ++i_;
    while (i_ < s_.size() && std::isdigit(static_cast<unsigned char>(s_[i_]))) ++i_;
    if (i_ > numberStart && std::isdigit(static_cast<unsigned char>(s_[i_ - 1])))
      parameter = std::stoi(std::string(s_.substr(numberStart, i_ - numberStart)));
    if (i_ < s_.size() && s_[i_] == ' ') ++i_;
    Word(word, parameter);
  }

  void Word(const std::string& word, std::optional<int> parameter) {
    if (destination() == Destination::Skip) return;
    if (word == "fonttbl") groups_.back().destination = Destination::FontTable;
    if (word == "colortbl") {
      groups_.back().destination = Destination::ColorTable;
      pendingColor_ = 0;
    }
    if (IsSkippedDestination(word)) groups_.back().destination = Destination::Skip;
    if (destination() == Destination::FontTable) {
      if (word == "f" && parameter) {
        fontNumber_ = *parameter;
        fontName_.clear();
      }
      return;
    }
    if (destination() == Destination::ColorTable) {
      const int v = parameter.value_or(0) & 0xFF;
      if (word == "red") pendingColor_ = (pendingColor_ & 0xFFFF00) | v;
      if (word == "green") pendingColor_ = (pendingColor_ & 0xFF00FF) | (v << 8);
      if (word == "blue") pendingColor_ = (pendingColor_ & 0x00FFFF) | (v << 16);
      return;
    }
    const bool off = parameter && *parameter == 0;
    Look& l = look();
    if (word == "deff" && parameter) defaultFont_ = *parameter;
    else if (word == "uc" && parameter) unicodeSkip_ = *parameter;
    else if (word == "u" && parameter) UnicodeCharacter(*parameter);
    else if (word == "pard" || word == "plain") ResetLook();
    else if (word == "fs" && parameter) {
      if (!baseHalfPoints_) baseHalfPoints_ = *parameter;  // the first size is the base size
      l.halfPoints = *parameter == baseHalfPoints_ ? 0 : *parameter;
    } else if (word == "f" && parameter) SelectFont(*parameter);
    else if (word == "cf" && parameter) SelectColor(*parameter);
    else if (word == "i") l.italic = !off;
    else if (word == "b") l.bold = !off;
    else if (word == "ul" || word == "uld" || word == "uldb" || word == "ulw" || word == "ulth") l.underline = !off;
    else if (word == "ulnone") l.underline = false;
    else if (word == "strike" || word == "striked") l.strike = !off;
    else if (word == "up" || word == "super") {
      l.super = !off;
      if (!off) l.sub = false;
    } else if (word == "dn" || word == "sub") {
      l.sub = !off;
      if (!off) l.super = false;
    } else if (word == "nosupersub") l.super = l.sub = false;
    else if (word == "par" || word == "line") Emit({CodeKind::LineBreak, true, {}, 0});
    else if (word == "tab") Emit({CodeKind::Tab, true, {}, 0});
  }

  void ResetLook() { look() = Look{}; }

  void SelectFont(int number) {
    const auto found = fonts_.find(number);
    const std::string name = found == fonts_.end() ? std::string() : found->second;
    if (name == kSymbolFont) {
      look().greek = true;
      return;
    }
    look().greek = false;
    look().font = (number == defaultFont_ || name == base_.name) ? std::string() : name;
  }

  void SelectColor(int number) {
    const auto found = colors_.find(number);
    const bool isBase = number == 0 || found == colors_.end() || (number == 1 && found->second == base_.color);
    look().color = isBase ? std::nullopt : std::optional<std::uint32_t>(found->second);
  }

  void Character(const std::string& c) {
    if (destination() == Destination::Skip) return;
    if (skipCount_ > 0) {
      --skipCount_;
      return;
    }
    if (destination() == Destination::FontTable) {
      if (c == ";") {
        fonts_[fontNumber_] = Trimmed(fontName_);
        fontName_.clear();
      } else {
        fontName_ += c;
      }
      return;
    }
    if (destination() == Destination::ColorTable) {
      if (c == ";") colors_[colorCount_++] = pendingColor_, pendingColor_ = 0;
      return;
    }
    Emit({CodeKind::Text, true, c, 0});
  }

  void HexCharacter(int value) {
    if (destination() == Destination::Text && skipCount_ == 0) {
      Emit({CodeKind::Hex, true, {}, double(value)});
    } else if (destination() == Destination::FontTable) {
      fontName_ += static_cast<char>(value);
    } else if (skipCount_ > 0) {
      --skipCount_;
    }
  }

  void UnicodeCharacter(int value) {
    std::string utf8;
    AppendUtf8(utf8, static_cast<char32_t>(value < 0 ? value + 65536 : value));
    Character(utf8);
    skipCount_ = unicodeSkip_;
  }

  static std::string Trimmed(std::string s) {
    while (!s.empty() && s.front() == ' ') s.erase(s.begin());
    while (!s.empty() && s.back() == ' ') s.pop_back();
    return s;
  }

  // Writes the codes that bring the written look to the wanted one, then the code itself.
  void Emit(const Code& code) {
    const Look& want = look();
    auto toggle = [&](bool& have, bool wanted, CodeKind kind) {
      if (have != wanted) codes_.push_back({kind, wanted, {}, 0});
      have = wanted;
    };
    toggle(written_.italic, want.italic, CodeKind::Italic);
    toggle(written_.bold, want.bold, CodeKind::Bold);
    toggle(written_.underline, want.underline, CodeKind::Underline);
    toggle(written_.strike, want.strike, CodeKind::Strike);
    toggle(written_.super, want.super, CodeKind::Super);
    toggle(written_.sub, want.sub, CodeKind::Sub);
    if (written_.font != want.font)
      codes_.push_back({CodeKind::Font, !want.font.empty(), want.font, 0});
    written_.font = want.font;
    toggle(written_.greek, want.greek, CodeKind::Greek);
    if (written_.halfPoints != want.halfPoints)
      codes_.push_back({CodeKind::Size, want.halfPoints != 0, {}, want.halfPoints / 2.0});
    written_.halfPoints = want.halfPoints;
    if (written_.color != want.color)
      codes_.push_back({CodeKind::Color, want.color.has_value(), {}, double(want.color.value_or(0))});
    written_.color = want.color;
    if (code.kind == CodeKind::Text && !codes_.empty() && codes_.back().kind == CodeKind::Text) {
      codes_.back().text += code.text;
    } else {
      codes_.push_back(code);
    }
  }

  std::string_view s_;
  BaseFont base_;
  std::size_t i_ = 0;
  std::vector<Group> groups_;
  std::vector<Code> codes_;
  Look written_;
  std::map<int, std::string> fonts_;
  std::map<int, std::uint32_t> colors_;
  int fontNumber_ = 0;
  std::string fontName_;
  int colorCount_ = 0;
  std::uint32_t pendingColor_ = 0;
  int defaultFont_ = 0;
  int unicodeSkip_ = 1;
  int skipCount_ = 0;
  std::optional<int> baseHalfPoints_;
};

}  // namespace

std::string InternalFromRtf(std::string_view rtf, const BaseFont& base) {
  if (!rtf.starts_with("{\\rtf")) return std::string(rtf);
  return RtfReader(rtf, base).Read();
}

}  // namespace velk::layout
