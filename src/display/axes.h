#pragma once
// The two axes of the contour: F2 below it, F1 beside it, with major and minor tics and labels.
#include <string>

#include "display/display_state.h"
#include "display/tics.h"
#include "platform/surface.h"

namespace velk::display {

struct AxisStyle {
  platform::Font font;
  TicSetting tics;
  platform::Color color = platform::kBlack;
  int penWidth = 1;
  std::string caption;  // written beyond the labels: "F2 (ppm)"
};

// The axis line runs along the top edge of the rectangle, from its left (the value start) to its
// right (the value end); tics point down, labels stand below them.
void DrawAxisF2(platform::Surface& surface, const Rect& rect, float start, float end, const AxisStyle& style);
// The axis line runs along the left edge, from the top (start) to the bottom (end); tics point
// right, labels stand to their right.
void DrawAxisF1(platform::Surface& surface, const Rect& rect, float start, float end, const AxisStyle& style);

// "Set up Grid": a lattice of lines over the contour at the major tics of each axis, automatic
// (round steps as on the axes) or at the chosen steps.
struct GridSetting {
  bool automatic = true;
  double stepF2 = 1.0;  // "F2 GRID INC", ppm
  double stepF1 = 1.0;  // "F1 GRID INC"
  platform::Color color = 65535;  // "GRID COL": yellow
  int penWidth = 1;
  bool shown = false;  // "DRAW GRID": whether the main view lays it over the contour
};
void DrawGridLines(platform::Surface& surface, const Rect& contour, const DisplayState& view, const GridSetting& grid);

}  // namespace velk::display
