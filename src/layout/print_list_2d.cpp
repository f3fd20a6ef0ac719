#include "layout/print_list_2d.h"

#include <algorithm>
#include <array>

namespace velk::layout {
namespace {

constexpr double kMarginCm = 2.0;
constexpr double kCmPerInch = 2.54;
// Blank space after each column, in widths of the sample "1".
constexpr int kColumnGap = 2;

}  // namespace

std::size_t PrintList2D(platform::Surface& surface, const operations::PrintList& list, const TextFont& font,
                        const Paper& paper, double dotsPerInch, std::size_t first) {
  const double scale = dotsPerInch / 72.0;  // device units per point
  const double margin = kMarginCm / kCmPerInch * dotsPerInch;
  const double bottom = paper.heightCm / kCmPerInch * dotsPerInch - margin;
  const double lineHeight = MeasureCodedText(surface, "1", font, scale).height;
  const double gap = kColumnGap * MeasureCodedText(surface, "1", font, scale).width;
  std::array<double, 4> columnX{};
  double x = margin;
  for (std::size_t c = 0; c < columnX.size(); ++c) {
    columnX[c] = x;
    x += std::max(MeasureCodedText(surface, list.widthSamples[c], font, scale).width,
                  MeasureCodedText(surface, list.captions[c], font, scale).width) +
         gap;
  }

  double y = margin;
  const auto line = [&](double at, std::string_view text) {
    DrawCodedText(surface, TextPlacement{at, y, scale}, text, font, platform::kBlack);
  };
  for (const std::string& heading : list.heading) {
    line(margin, heading);
    y += lineHeight;
  }
  y += lineHeight;
  for (std::size_t c = 0; c < columnX.size(); ++c) line(columnX[c], list.captions[c]);
  y += lineHeight * 1.5;

  std::size_t row = first;
  while (row < list.rows.size() && (row == first || y + lineHeight <= bottom)) {
    for (std::size_t c = 0; c < columnX.size(); ++c) line(columnX[c], list.rows[row][c]);
    y += lineHeight;
    ++row;
  }
  return row;
}

}  // namespace velk::layout
