#include "display/traces.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "display/display_grid.h"
#include "display/messages.h"

namespace velk::display {
namespace {

// The shown number at one point, as the projections see it.
float Shown(const model::Spectrum2D& s, ShownValue kind, int col, int row) {
  const double rr = s.RR.at(col, row);
  if (kind == ShownValue::Signed) return static_cast<float>(rr);
  const double ir = s.IR.at(col, row);
  double sum = rr * rr + ir * ir;
  if (kind == ShownValue::FourQuadrant) {
    const double ri = s.RI.at(col, row), ii = s.II.at(col, row);
    sum += ri * ri + ii * ii;
  }
  return static_cast<float>(std::sqrt(sum));
}

bool Holds(const model::Plane& p, int cols, int rows) {
  return cols <= p.stride && rows <= p.rows && p.data.size() >= static_cast<std::size_t>(p.stride) * p.rows;
}

Projection Project(const model::Spectrum2D& s, int pulseModeClass, const ContourSetting& setting, bool withNegative,
                   bool alongF1) {
  const int cols = s.axis[model::F2].Point;
  const int rows = s.axis[model::F1].Point;
  const ShownValue kind = ShownValueOf(pulseModeClass, setting);
  Projection p;
  const bool quadrants = kind == ShownValue::Signed || (Holds(s.IR, cols, rows) &&
                                                      (kind == ShownValue::TwoQuadrant ||
                                                       (Holds(s.RI, cols, rows) && Holds(s.II, cols, rows))));
  if (cols < 1 || rows < 1 || !Holds(s.RR, cols, rows) || !quadrants) return p;
  const int n = alongF1 ? cols : rows;
  const bool both = withNegative && kind == ShownValue::Signed;
  p.positive.assign(n, -INFINITY);
  if (both) p.negative.assign(n, INFINITY);
  // Row by row, so that the plane is read in the order it is stored.
  for (int r = 0; r < rows; ++r)
    for (int c = 0; c < cols; ++c) {
      const float v = Shown(s, kind, c, r);
      const int i = alongF1 ? c : r;
      p.positive[i] = std::max(p.positive[i], v);
      if (both) p.negative[i] = std::min(p.negative[i], v);
    }
  for (float v : p.positive) p.max = std::max(p.max, v);
  for (float v : p.negative) p.min = std::min(p.min, v);
  return p;
}

}  // namespace

Projection MakeProjectionF2(const model::Spectrum2D& s, int pulseModeClass, const ContourSetting& setting,
                            bool withNegative) {
  return Project(s, pulseModeClass, setting, withNegative, true);
}

Projection MakeProjectionF1(const model::Spectrum2D& s, int pulseModeClass, const ContourSetting& setting,
                            bool withNegative) {
  return Project(s, pulseModeClass, setting, withNegative, false);
}

std::vector<float> SliceAlongF2(const model::Spectrum2D& s, int row) {
  const int cols = s.axis[model::F2].Point;
  if (row < 0 || row >= s.axis[model::F1].Point || !Holds(s.RR, cols, row + 1)) return {};
  const auto line = s.RR.row(row);
  return {line.begin(), line.begin() + cols};
}

std::vector<float> SliceAlongF1(const model::Spectrum2D& s, int column) {
  const int rows = s.axis[model::F1].Point;
  if (column < 0 || column >= s.axis[model::F2].Point || !Holds(s.RR, column + 1, rows)) return {};
  std::vector<float> out(rows);
  for (int r = 0; r < rows; ++r) out[r] = s.RR.at(column, r);
  return out;
}

std::string SliceCaption(bool f1, float ppm) {
  char position[32];
  std::snprintf(position, sizeof position, "%.3f", ppm);
  return std::string(f1 ? messages::kSliceF1 : messages::kSliceF2) + position;
}

std::vector<platform::Point> ThinTrace(const TracePanel& panel, const std::vector<float>& ppm,
                                       const std::vector<float>& values, int points) {
  std::vector<platform::Point> out;
  points = std::min({points, static_cast<int>(ppm.size()), static_cast<int>(values.size())});
  if (points < 1 || panel.viewEnd == panel.viewStart || panel.valueHigh == panel.valueLow) return out;
  const Rect& r = panel.rect;
  const int axisStart = panel.vertical ? r.y : r.x;
  const int axisLength = (panel.vertical ? r.height : r.width) - 1;
  const double axisScale = axisLength / (static_cast<double>(panel.viewEnd) - panel.viewStart);
  const int valueLength = (panel.vertical ? r.width : r.height) - 1;
  const double valueScale = valueLength / (static_cast<double>(panel.valueHigh) - panel.valueLow);
  const auto pixelOf = [&](double v) { return static_cast<int>(std::lrint(std::clamp(v, -1e6, 1e6))); };
  // Values grow upward in the F2 panel and leftward in the F1 panel.
  const auto emit = [&](int along, double value) {
    const int height = pixelOf((value - panel.valueLow) * valueScale);
    out.push_back(panel.vertical ? platform::Point{r.right() - 1 - height, along}
                                 : platform::Point{along, r.bottom() - 1 - height});
  };

  const double lo = std::min(panel.viewStart, panel.viewEnd), hi = std::max(panel.viewStart, panel.viewEnd);
  int column = 0;
  double least = 0, largest = 0;
  bool leastFirst = true, open = false;
  const auto flush = [&] {
    if (!open) return;
    emit(column, leastFirst ? least : largest);
    if (least != largest) emit(column, leastFirst ? largest : least);
  };
  for (int i = 0; i < points; ++i) {
    if (ppm[i] < lo || ppm[i] > hi || !std::isfinite(values[i])) continue;
    const int c = pixelOf((ppm[i] - panel.viewStart) * axisScale + axisStart);
    const double v = values[i];
    if (open && c == column) {
      if (v < least) least = v, leastFirst = false;
      if (v > largest) largest = v, leastFirst = true;
      continue;
    }
    flush();
    column = c;
    least = largest = v;
    leastFirst = true;
    open = true;
  }
  flush();
  // A run that stays on one height keeps only its ends.
  std::vector<platform::Point> kept;
  const auto height = [&](const platform::Point& p) { return panel.vertical ? p.x : p.y; };
  for (std::size_t i = 0; i < out.size(); ++i) {
    if (i > 0 && i + 1 < out.size() && height(out[i - 1]) == height(out[i]) && height(out[i]) == height(out[i + 1]))
      continue;
    kept.push_back(out[i]);
  }
  return kept;
}

float StepPanelFactor(float factor, bool up, bool stopAtOne) {
  const float next = std::max(up ? factor * 1.1f : factor / 1.1f, 0.001f);
  if (stopAtOne && ((factor < 1.0f && next > 1.0f) || (factor > 1.0f && next < 1.0f))) return 1.0f;
  return next;
}

void DrawTrace(platform::Surface& surface, const TracePanel& panel, const std::vector<float>& ppm,
               const std::vector<float>& values, int points, platform::Color color, int width) {
  const auto line = ThinTrace(panel, ppm, values, points);
  if (line.size() < 2) return;
  surface.SetPen(color, width);
  surface.SetClip(panel.rect.x, panel.rect.y, panel.rect.width, panel.rect.height);
  surface.Polyline(line);
  surface.ClearClip();
}

}  // namespace velk::display
