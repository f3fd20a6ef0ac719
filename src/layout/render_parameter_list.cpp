#include "layout/render_parameter_list.h"

#include <algorithm>
#include <cmath>

#include "layout/coded_text.h"

namespace velk::layout {
namespace {

// The character width is measured on "1234" at ten times the size, for precision on coarse devices.
constexpr double kMeasureScale = 10;

// The part of a value that stands left of its decimal point: up to the point, or to the end of the
// number when it has none; empty for a value that doesn't start with a number.
std::string LeftOfPoint(const std::string& value) {
  std::size_t end = 0;
  if (end < value.size() && (value[end] == '-' || value[end] == '+')) ++end;
  const std::size_t digits = end;
  while (end < value.size() && value[end] >= '0' && value[end] <= '9') ++end;
  if (end == digits) return {};
  return value.substr(0, end);
}

}  // namespace

platform::Extent RenderParameterList(platform::Surface& surface, const ParameterList& list, const TextFont& font,
                                     platform::Color color, const ParameterBlockPlacement& where,
                                     const ParameterSource& source, bool draw) {
  TextFont large = font;
  large.points *= kMeasureScale;
  const double charWidth = MeasureCodedText(surface, "\\< 1234", large, where.scale).width / 4.0 / kMeasureScale;
  const double column = where.decimalColumn * charWidth;
  double top = 0, widest = 0;
  auto put = [&](double offset, const std::string& text, double widthLimit) {
    const std::string coded = std::string(kStartMark) + text;
    const TextPlacement at{where.x + offset, where.y + top, where.scale, widthLimit, 0};
    return draw ? DrawCodedText(surface, at, coded, font, color) : MeasureCodedText(surface, coded, font, where.scale, widthLimit);
  };
  for (const ParameterLine& line : list) {
    const auto rendered = RenderParameter(line, source);
    if (!rendered) continue;
    const platform::Extent label = put(0, rendered->label, kNoWidthLimit);
    platform::Extent value{};
    if (!rendered->heading && !rendered->value.empty()) {
      const std::string left = LeftOfPoint(rendered->value);
      double offset = column - MeasureCodedText(surface, std::string(kStartMark) + left, font, where.scale).width;
      offset = std::max(offset, label.width + charWidth);  // a long label pushes the value right
      const double room = where.width >= kNoWidthLimit ? kNoWidthLimit : std::max(charWidth, where.width - offset);
      value = put(offset, rendered->value, room);
      widest = std::max(widest, offset + value.width);
    }
    widest = std::max(widest, double(label.width));
    top += std::max(label.height, value.height);
  }
  return {static_cast<int>(std::ceil(widest)), static_cast<int>(std::ceil(top))};
}

}  // namespace velk::layout
