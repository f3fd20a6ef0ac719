#include "display/display_state.h"

#include <algorithm>

namespace velk::display {

void ResolveActiveTool(DisplayState& state, const ToolEnders& enders, bool& declined) {
  declined = false;
  if (state.ToolMode == kNoTool) return;
  const auto ender = enders.find(state.ToolMode);
  if (ender != enders.end() && ender->second && ender->second()) {
    declined = true;
    return;
  }
  state.ToolMode = kNoTool;
  state.MouseMode = kNoDrag;
  state.ToolCode = 0;
}

namespace {

void KeepInside(float& start, float& end, const std::vector<float>& ppm, int points, bool highFirst) {
  if (points < 1 || static_cast<int>(ppm.size()) < points) return;
  const auto [lo, hi] = std::minmax_element(ppm.begin(), ppm.begin() + points);
  start = std::clamp(start, *lo, *hi);
  end = std::clamp(end, *lo, *hi);
  if (start == end) {
    start = highFirst ? *hi : *lo;
    end = highFirst ? *lo : *hi;
  }
}

}  // namespace

void Check_Start_End(DisplayState& state, const std::vector<float>& ppmF2, const std::vector<float>& ppmF1,
                     int pointsF2, int pointsF1) {
  KeepInside(state.ViewF2Start, state.ViewF2End, ppmF2, pointsF2, true);
  KeepInside(state.ViewF1Start, state.ViewF1End, ppmF1, pointsF1, false);
}

int PpmToPoint(const std::vector<float>& ppm, int points, float position) {
  points = std::min(points, static_cast<int>(ppm.size()));
  if (points < 1) return 0;
  const bool ascending = ppm[0] <= ppm[points - 1];
  for (int i = 0; i < points; ++i)
    if (ascending ? ppm[i] >= position : ppm[i] <= position) return i;
  return points - 1;
}

}  // namespace velk::display
