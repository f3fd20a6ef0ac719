#include "layout/draw_coded_text.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "layout/coded_text.h"

namespace velk::layout {
namespace {

constexpr double kDegree = 0.0174532925199433;
constexpr double kLineSpacing = 1.1;
constexpr double kTabStep = 3.8;  // in sizes
constexpr int kMostTabSteps = 100;
constexpr double kLargestPoints = 1000;  // a larger size in a damaged text falls back to the base size

// The look of one run of characters.
struct Look {
  TextFont font;
  bool greek = false;
  int script = 0;  // +1 superscript, -1 subscript
  platform::Color color = 0;
};

// One run placed on its line: where it starts along the line, and its look.
struct Run {
  double along = 0;
  std::string text;
  Look look;
};

struct Line {
  std::vector<Run> runs;
  double width = 0;
  double height = 0;
};

// Lays the text out in lines; the surface is asked only for widths.
class Layout {
 public:
  Layout(platform::Surface& surface, const TextFont& font, platform::Color color, double scale, double widthLimit)
      : surface_(surface), scale_(scale), widthLimit_(widthLimit) {
    look_.font = font;
    look_.color = color;
    lines_.emplace_back();
    OpenLineHeight();
  }

  void AddText(std::string_view text) {
    if (text.empty()) return;
    std::string shown;
    if (look_.greek) {
      for (unsigned char c : text) c < 0x80 ? AppendUtf8(shown, SymbolCharacter(c)) : void(shown += char(c));
    } else {
      shown = std::string(text);
    }
    Place(shown);
  }

  void AddCharacter(unsigned char code) {
    std::string shown;
    AppendUtf8(shown, look_.greek ? SymbolCharacter(code) : char32_t(code));  // Latin-1 outside Greek
    Place(shown);
  }

  void AddCode(const Code& code) {
    TextFont& f = look_.font;
    switch (code.kind) {
      case CodeKind::Italic: f.italic = code.on; break;
      case CodeKind::Bold: f.bold = code.on; break;
      case CodeKind::Underline: f.underline = code.on; break;
      case CodeKind::Strike: f.strikeOut = code.on; break;
      case CodeKind::Super: look_.script = code.on ? 1 : 0; break;
      case CodeKind::Sub: look_.script = code.on ? -1 : 0; break;
      case CodeKind::Over:
        look_.script = code.on ? 1 : 0;
        overStart_ = code.on ? along_ : -1;
        if (!code.on) along_ = std::max(along_, overEnd_);
        break;
      case CodeKind::Greek: look_.greek = code.on; break;
      case CodeKind::Font: f.name = code.on ? code.text : base_.name; break;
      case CodeKind::Size:
        f.points = code.on && code.value > 0 && code.value <= kLargestPoints ? code.value : base_.points;
        break;
      case CodeKind::Color: look_.color = code.on ? static_cast<platform::Color>(code.value) : baseColor_; break;
      case CodeKind::Tab: Tab(); break;
      case CodeKind::LineBreak: NewLine(); break;
      default: break;
    }
  }

  void Remember() {
    base_ = look_.font;
    baseColor_ = look_.color;
  }

  // Inside an overscript a comma starts the lower part, stacked under the upper one.
  bool OverscriptComma(std::string_view text, std::size_t at) const { return overStart_ >= 0 && text[at] == ','; }
  void StartLowerPart() {
    overEnd_ = along_;
    along_ = overStart_;
    look_.script = -1;
    overStart_ = -1;
  }

  std::vector<Line>& Lines() { return lines_; }
  double LineHeightOf(const Look& look) const { return look.font.points * scale_ * kLineSpacing; }
  double ScriptShift(const Look& look) const {
    const double full = LineHeightOf(look);
    return look.script * (1 - kScriptSizeFactor) * full;
  }
  platform::Font DeviceFont(const Look& look) const {
    const double factor = look.script != 0 ? kScriptSizeFactor : 1.0;
    return {look.font.name, std::max(1, static_cast<int>(std::lrint(look.font.points * scale_ * factor))),
            look.font.bold, look.font.italic, look.font.underline, look.font.strikeOut};
  }

 private:
  double Width(const std::string& text, const Look& look) {
    surface_.SetFont(DeviceFont(look));
    return surface_.MeasureText(text).width;
  }

  void Place(std::string text) {
    while (!text.empty()) {
      const double room = widthLimit_ - along_;
      const double width = Width(text, look_);
      if (widthLimit_ >= kNoWidthLimit || width <= room) {
        Put(text, width);
        return;
      }
      std::size_t cut = FittingPrefix(text, room);
      if (cut == 0 && along_ > 0) {
        NewLine();
        continue;
      }
      if (cut == 0) cut = std::max<std::size_t>(1, CharacterPrefix(text, room));
      Put(text.substr(0, cut), Width(text.substr(0, cut), look_));
      text.erase(0, cut);
      text.erase(0, text.find_first_not_of(' '));
      NewLine();
    }
  }

  // The longest prefix that fits the room and ends before a blank or an opening bracket, or after
  // a slash; 0 when none does. A window line such as "Hann(SqrSineBell)(ZeroFill:×2.0)" or a
  // file's path has no blank, and these are where a reader expects it to break.
  std::size_t FittingPrefix(const std::string& text, double room) {
    std::size_t best = 0;
    for (std::size_t at = 1; at < text.size(); ++at) {
      if (text[at] != ' ' && text[at] != '(' && text[at - 1] != '/') continue;
      if (Width(text.substr(0, at), look_) > room) break;
      best = at;
    }
    return best;
  }

  // The longest prefix of whole UTF-8 characters that fits the room.
  std::size_t CharacterPrefix(const std::string& text, double room) {
    std::size_t best = 0;
    for (std::size_t k = 1; k <= text.size(); ++k) {
      if (k < text.size() && (static_cast<unsigned char>(text[k]) & 0xC0) == 0x80) continue;
      if (Width(text.substr(0, k), look_) > room) break;
      best = k;
    }
    return best;
  }

  void Put(const std::string& text, double width) {
    Line& line = lines_.back();
    line.runs.push_back({along_, text, look_});
    along_ += width;
    line.width = std::max(line.width, along_);
    if (look_.script == 0) line.height = std::max(line.height, LineHeightOf(look_));
  }

  void Tab() {
    const double step = look_.font.points * scale_ * kTabStep;
    if (step <= 0) return;
    const double next = (std::floor(along_ / step) + 1) * step;
    if (next <= step * kMostTabSteps) along_ = next;
    lines_.back().width = std::max(lines_.back().width, along_);
  }

  void NewLine() {
    lines_.emplace_back();
    along_ = 0;
    OpenLineHeight();
  }

  void OpenLineHeight() { lines_.back().height = LineHeightOf(look_); }

  platform::Surface& surface_;
  double scale_;
  double widthLimit_;
  Look look_;
  TextFont base_;
  platform::Color baseColor_ = 0;
  std::vector<Line> lines_;
  double along_ = 0;
  double overStart_ = -1;
  double overEnd_ = 0;
};

Layout LayOut(platform::Surface& surface, std::string_view text, const TextFont& font, platform::Color color,
              double scale, double widthLimit) {
  Layout layout(surface, font, color, scale, widthLimit);
  layout.Remember();
  for (const Code& code : ParseCodedText(text)) {
    if (code.kind == CodeKind::End) break;
    if (code.kind == CodeKind::Hex) {
      layout.AddCharacter(static_cast<unsigned char>(code.value));
    } else if (code.kind == CodeKind::Text) {
      std::size_t start = 0;
      for (std::size_t k = 0; k < code.text.size(); ++k) {
        if (!layout.OverscriptComma(code.text, k)) continue;
        layout.AddText(std::string_view(code.text).substr(start, k - start));
        layout.StartLowerPart();
        start = k + 1;
      }
      layout.AddText(std::string_view(code.text).substr(start));
    } else {
      layout.AddCode(code);
    }
  }
  return layout;
}

platform::Extent ExtentOf(const std::vector<Line>& lines) {
  double width = 0, height = 0;
  for (const Line& line : lines) {
    width = std::max(width, line.width);
    height += line.height;
  }
  return {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(height))};
}

}  // namespace

platform::Extent DrawCodedText(platform::Surface& surface, const TextPlacement& where, std::string_view text,
                               const TextFont& font, platform::Color color) {
  Layout layout = LayOut(surface, text, font, color, where.scale, where.widthLimit);
  double angle = where.angleDegrees;
  while (angle < 0) angle += 360;
  while (angle >= 360) angle -= 360;
  const double c = std::cos(angle * kDegree);
  const double s = std::sin(angle * kDegree);
  double top = 0;
  for (const Line& line : layout.Lines()) {
    for (const Run& run : line.runs) {
      // Runs stand on the line's bottom; scripts move up or down from there.
      const platform::Font device = layout.DeviceFont(run.look);
      const double runHeight = device.pixelHeight * kLineSpacing;
      const double down = top + line.height - runHeight - layout.ScriptShift(run.look);
      const double x = where.x + c * run.along + s * down;
      const double y = where.y - s * run.along + c * down;
      surface.SetFont(device);
      surface.SetTextColor(run.look.color);
      surface.Text(static_cast<int>(std::lrint(x)), static_cast<int>(std::lrint(y)), angle, run.text);
    }
    top += line.height;
  }
  return ExtentOf(layout.Lines());
}

platform::Extent MeasureCodedText(platform::Surface& surface, std::string_view text, const TextFont& font,
                                  double scale, double widthLimit) {
  return ExtentOf(LayOut(surface, text, font, 0, scale, widthLimit).Lines());
}

char32_t SymbolCharacter(unsigned char code) {
  // Letters in the order of the Latin alphabet: A..Z then a..z.
  static constexpr char32_t kUpper[26] = {0x391, 0x392, 0x3A7, 0x394, 0x395, 0x3A6, 0x393, 0x397, 0x399,
                                          0x3D1, 0x39A, 0x39B, 0x39C, 0x39D, 0x39F, 0x3A0, 0x398, 0x3A1,
                                          0x3A3, 0x3A4, 0x3A5, 0x3C2, 0x3A9, 0x39E, 0x3A8, 0x396};
  static constexpr char32_t kLower[26] = {0x3B1, 0x3B2, 0x3C7, 0x3B4, 0x3B5, 0x3C6, 0x3B3, 0x3B7, 0x3B9,
                                          0x3D5, 0x3BA, 0x3BB, 0x3BC, 0x3BD, 0x3BF, 0x3C0, 0x3B8, 0x3C1,
                                          0x3C3, 0x3C4, 0x3C5, 0x3D6, 0x3C9, 0x3BE, 0x3C8, 0x3B6};
  // 0xA0 to 0xDF: arrows, relations and signs.
  static constexpr char32_t kHigh[64] = {
      0x20AC, 0x3D2,  0x2032, 0x2264, 0x2044, 0x221E, 0x192,  0x2663, 0x2666, 0x2665, 0x2660,
      0x2194, 0x2190, 0x2191, 0x2192, 0x2193, 0xB0,   0xB1,   0x2033, 0x2265, 0xD7,   0x221D,
      0x2202, 0x2022, 0xF7,   0x2260, 0x2261, 0x2248, 0x2026, 0x23D0, 0x23AF, 0x21B5, 0x2135,
      0x2111, 0x211C, 0x2118, 0x2297, 0x2295, 0x2205, 0x2229, 0x222A, 0x2283, 0x2287, 0x2284,
      0x2282, 0x2286, 0x2208, 0x2209, 0x2220, 0x2207, 0xAE,   0xA9,   0x2122, 0x220F, 0x221A,
      0x22C5, 0xAC,   0x2227, 0x2228, 0x21D4, 0x21D0, 0x21D1, 0x21D2, 0x21D3};
  if (code >= 'A' && code <= 'Z') return kUpper[code - 'A'];
  if (code >= 'a' && code <= 'z') return kLower[code - 'a'];
  if (code >= 0xA0 && code <= 0xDF) return kHigh[code - 0xA0];
  switch (code) {
    case 0x22: return 0x2200;  // for all
    case 0x24: return 0x2203;  // there exists
    case 0x27: return 0x220B;
    case 0x2A: return 0x2217;
    case 0x2D: return 0x2212;  // minus
    case 0x40: return 0x2245;
    case 0x5C: return 0x2234;
    case 0x5E: return 0x22A5;
    case 0x7E: return 0x223C;
    default: return code;
  }
}

}  // namespace velk::layout
