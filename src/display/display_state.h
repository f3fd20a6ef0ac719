#pragma once
// The state of the main view: the shown window in ppm, the active tool and what a mouse press on
// the contour does, and the rules that keep the window inside the data.
#include <cstdint>
#include <functional>
#include <map>
#include <vector>

namespace velk::display {

struct Rect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  int right() const { return x + width; }
  int bottom() const { return y + height; }
};

enum ToolMode : std::int16_t {
  kNoTool = 0,
  kReference2D = 1,
  kPhaseF1 = 2,
  kPhaseF2 = 5,
  kBaselineF1 = 6,
  kBaselineF2 = 7,
  kExpandedViews = 9,
  kSymmetrization = 10,
  kPeakPicking = 20,
  kReference1DF1 = 101,
  kReference1DF2 = 102,
};

// What a held left press on the contour is dragging.
enum MouseMode : std::int16_t {
  kNoDrag = 0,
  kExpansionBand = 5,
  kExpansionBandHeld = 6,
  kBaselinePoint = 8,
  kBaselinePointHeld = 9,
  kSymmetryLine = 15,
  kViewCornerFirst = 21,  // 21..24 a corner of an expanded view
  kViewCornerLast = 24,
  kPeakFirst = 30,  // 30..33, 311 and 321 the peak marks
  kPeakLast = 33,
  kPeakAddHeld = 311,
  kPeakDeleteHeld = 321,
  kViewBody = 41,
  kDivisionFirst = 111,  // 111..128 and 211..228 edges and corners of a divided display
  kDivisionLast = 228,
};

struct DisplayState {
  std::int16_t ToolMode = kNoTool;
  std::int16_t MouseMode = kNoDrag;
  std::int16_t ToolCode = 0;  // 1 add, -1 delete, 2 and 3 a tool's further choices
  // The shown window: the values at the left and right, top and bottom of the contour.
  float ViewF2Start = 0, ViewF2End = 0, ViewF1Start = 0, ViewF1End = 0;
  bool Painting = false;
  bool ContourDirty = true;
  std::int32_t SliceF2 = -1;  // the point of a slice cursor, -1 for none
  std::int32_t SliceF1 = -1;
  // 1 while a tool's panel shows values that the data do not yet hold; undo records keep it.
  std::int16_t PreviewPending = 0;
};

// How a tool ends when another command wants to start: it cancels, fixes or asks, and returns
// true when the user chose to stay in the tool.
using ToolEnder = std::function<bool()>;
using ToolEnders = std::map<int, ToolEnder>;

// The question every command asks before it starts. With no tool active it returns at once;
// otherwise the tool's ender runs, and unless the user stays the tool mode goes back to none.
void ResolveActiveTool(DisplayState& state, const ToolEnders& enders, bool& declined);

// Keeps the four window limits within the ranges of the axis arrays. A window whose ends have
// become equal on an axis shows the whole axis again, high ppm at the left and at the bottom.
void Check_Start_End(DisplayState& state, const std::vector<float>& ppmF2, const std::vector<float>& ppmF1,
                     int pointsF2, int pointsF1);

// The data point of a position: the first point, in the direction in which the axis runs, that
// reaches the position; a position beyond the data gives the first or the last point.
int PpmToPoint(const std::vector<float>& ppm, int points, float position);

}  // namespace velk::display
