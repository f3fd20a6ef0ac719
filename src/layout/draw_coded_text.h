#pragma once
// Drawing and measuring coded text on a surface, at any angle.
#include <string>
#include <string_view>

#include "platform/surface.h"

namespace velk::layout {

// The font record a text starts with; the codes change it as the text runs.
struct TextFont {
  std::string name = "Arial";
  double points = 10;
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strikeOut = false;
  friend bool operator==(const TextFont&, const TextFont&) = default;
};

// A width limit this large means the lines are never wrapped.
inline constexpr double kNoWidthLimit = 1e6;
// Super- and subscripts are drawn at this fraction of the size.
inline constexpr double kScriptSizeFactor = 0.7;

struct TextPlacement {
  double x = 0;             // the top-left corner of the first line, in device units
  double y = 0;
  double scale = 1;         // device units per point
  double widthLimit = kNoWidthLimit;  // lines longer than this are wrapped at a blank
  double angleDegrees = 0;  // counter-clockwise
};

// Draws the text and returns the width of its widest line and the height of all its lines, both
// along the text's own directions. Plain text (without the start mark) is drawn as it stands.
platform::Extent DrawCodedText(platform::Surface& surface, const TextPlacement& where, std::string_view text,
                               const TextFont& font, platform::Color color);
// The same extent without drawing.
platform::Extent MeasureCodedText(platform::Surface& surface, std::string_view text, const TextFont& font,
                                  double scale, double widthLimit = kNoWidthLimit);

// The character that a code of the Symbol font stands for (letters become Greek letters).
char32_t SymbolCharacter(unsigned char code);

}  // namespace velk::layout
