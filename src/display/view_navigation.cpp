#include "display/view_navigation.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "display/display_grid.h"

namespace velk::display {
namespace {

struct Range {
  float lo = 0, hi = 0;
};

Range RangeOf(const std::vector<float>& ppm, int points) {
  points = std::min(points, static_cast<int>(ppm.size()));
  if (points < 1) return {};
  const auto [lo, hi] = std::minmax_element(ppm.begin(), ppm.begin() + points);
  return {*lo, *hi};
}

int PointsF2(const model::Spectrum2D& s) { return s.axis[model::F2].Point; }
int PointsF1(const model::Spectrum2D& s) { return s.axis[model::F1].Point; }

// Moves start and end by the same amount so that both lie inside the range.
void ShiftInside(float& start, float& end, float by, Range r) {
  const float lo = std::min(start, end) + by, hi = std::max(start, end) + by;
  if (lo < r.lo) by += r.lo - lo;
  else if (hi > r.hi) by -= hi - r.hi;
  start += by;
  end += by;
}

void Widen(float& start, float& end, Range r) {
  const float middle = 0.5f * (start + end);
  const float half = end - start;  // twice the window is half of it on each side, twice over
  start = middle - half;
  end = middle + half;
  if (std::abs(end - start) >= r.hi - r.lo) {
    const bool rising = end > start;
    start = rising ? r.lo : r.hi;
    end = rising ? r.hi : r.lo;
  } else {
    ShiftInside(start, end, 0, r);
  }
}

}  // namespace

double PixelToValue(double start, double end, int first, int extent, double pixel) {
  if (extent < 2) return start;
  return start + (pixel - first) * (end - start) / (extent - 1);
}

double ValueToPixel(double start, double end, int first, int extent, double value) {
  if (end == start) return first;
  return first + (value - start) * (extent - 1) / (end - start);
}

void ShowFullSpectrum(DisplayState& view, const model::Spectrum2D& s) {
  const Range f2 = RangeOf(s.ppmF2, PointsF2(s)), f1 = RangeOf(s.ppmF1, PointsF1(s));
  view.ViewF2Start = f2.hi;
  view.ViewF2End = f2.lo;
  view.ViewF1Start = f1.lo;
  view.ViewF1End = f1.hi;
}

float NearestPointPpm(const std::vector<float>& ppm, int points, float value) {
  points = std::min(points, static_cast<int>(ppm.size()));
  if (points < 1) return value;
  int best = 0;
  for (int i = 1; i < points; ++i)
    if (std::abs(ppm[i] - value) < std::abs(ppm[best] - value)) best = i;
  return ppm[best];
}

bool ZoomToBand(DisplayState& view, const model::Spectrum2D& s, const Rect& contour, int x0, int y0, int x1, int y1) {
  const auto snap = [](const std::vector<float>& ppm, int points, double v) {
    return NearestPointPpm(ppm, points, static_cast<float>(v));
  };
  const auto f2At = [&](int x) {
    return snap(s.ppmF2, PointsF2(s), PixelToValue(view.ViewF2Start, view.ViewF2End, contour.x, contour.width, x));
  };
  const auto f1At = [&](int y) {
    return snap(s.ppmF1, PointsF1(s), PixelToValue(view.ViewF1Start, view.ViewF1End, contour.y, contour.height, y));
  };
  const float a2 = f2At(std::min(x0, x1)), b2 = f2At(std::max(x0, x1));
  const float a1 = f1At(std::min(y0, y1)), b1 = f1At(std::max(y0, y1));
  if (a2 == b2 || a1 == b1) return false;
  view.ViewF2Start = a2;
  view.ViewF2End = b2;
  view.ViewF1Start = a1;
  view.ViewF1End = b1;
  return true;
}

void ZoomOut(DisplayState& view, const model::Spectrum2D& s) {
  Widen(view.ViewF2Start, view.ViewF2End, RangeOf(s.ppmF2, PointsF2(s)));
  Widen(view.ViewF1Start, view.ViewF1End, RangeOf(s.ppmF1, PointsF1(s)));
}

void Pan(DisplayState& view, const model::Spectrum2D& s, const Rect& contour, int dx, int dy) {
  const auto per = [](float start, float end, int extent) { return extent < 2 ? 0.0f : (end - start) / (extent - 1); };
  ShiftInside(view.ViewF2Start, view.ViewF2End, -dx * per(view.ViewF2Start, view.ViewF2End, contour.width),
              RangeOf(s.ppmF2, PointsF2(s)));
  ShiftInside(view.ViewF1Start, view.ViewF1End, -dy * per(view.ViewF1Start, view.ViewF1End, contour.height),
              RangeOf(s.ppmF1, PointsF1(s)));
}

CursorReading ReadCursor(const DisplayState& view, const model::Spectrum2D& s, const Rect& contour, int x, int y) {
  CursorReading r;
  const float f2 = static_cast<float>(PixelToValue(view.ViewF2Start, view.ViewF2End, contour.x, contour.width, x));
  const float f1 = static_cast<float>(PixelToValue(view.ViewF1Start, view.ViewF1End, contour.y, contour.height, y));
  r.col = PpmToPoint(s.ppmF2, PointsF2(s), NearestPointPpm(s.ppmF2, PointsF2(s), f2));
  r.row = PpmToPoint(s.ppmF1, PointsF1(s), NearestPointPpm(s.ppmF1, PointsF1(s), f1));
  r.ppmF2 = f2;
  r.ppmF1 = f1;
  r.hzF2 = f2 * s.extras[model::F2].absFreq0ppm;
  r.hzF1 = f1 * s.extras[model::F1].absFreq0ppm;
  if (HoldsShownValues(s, ShownValue::Signed, r.col, r.row)) r.value = ShownValueAt(s, ShownValue::Signed, r.col, r.row);
  return r;
}

std::string CursorText(const CursorReading& r) {
  char text[160];
  std::snprintf(text, sizeof text, "F2: %.3f ppm (%.1f Hz)   F1: %.3f ppm (%.1f Hz)   Intensity: %.4g", r.ppmF2, r.hzF2,
                r.ppmF1, r.hzF1, r.value);
  return text;
}

}  // namespace velk::display
