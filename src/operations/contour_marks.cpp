#include "operations/contour_marks.h"

#include <cmath>

#include "display/view_navigation.h"
#include "operations/inadequate.h"

namespace velk::operations {
namespace {

using model::F1;
using model::F2;

int Round(double v) { return static_cast<int>(std::lrint(v)); }

}  // namespace

MarkPixel PixelOfPoint(const display::DisplayState& view, const model::Spectrum2D& s, const display::Rect& contour,
                       double col, double row) {
  const double ppmF2 = s.extras[F2].ppmFirst + col * s.extras[F2].ppmStep;
  const double ppmF1 = s.extras[F1].ppmFirst + row * s.extras[F1].ppmStep;
  return {display::ValueToPixel(view.ViewF2Start, view.ViewF2End, contour.x, contour.width, ppmF2),
          display::ValueToPixel(view.ViewF1Start, view.ViewF1End, contour.y, contour.height, ppmF1)};
}

MarkPixel PointOfPixel(const display::DisplayState& view, const model::Spectrum2D& s, const display::Rect& contour,
                       double x, double y) {
  const double ppmF2 = display::PixelToValue(view.ViewF2Start, view.ViewF2End, contour.x, contour.width, x);
  const double ppmF1 = display::PixelToValue(view.ViewF1Start, view.ViewF1End, contour.y, contour.height, y);
  const auto point = [&](int axis, double ppm) {
    const double step = s.extras[axis].ppmStep;
    return step != 0 ? (ppm - s.extras[axis].ppmFirst) / step : 0.0;
  };
  return {point(F2, ppmF2), point(F1, ppmF1)};
}

void DrawPeakMarks(platform::Surface& surface, const display::DisplayState& view, const model::Spectrum2D& s,
                   const display::Rect& contour, const MarkStyle& style) {
  const double stepF2 = s.axis[F2].Resolution, stepF1 = s.axis[F1].Resolution;
  if (s.peaks.peaks.empty() || stepF2 == 0 || stepF1 == 0) return;
  surface.SetClip(contour.x, contour.y, contour.width, contour.height);
  surface.SetPen(style.peakColor, style.peakWidth);
  const int h = style.peakHalfSize;
  for (const model::Peak2D& peak : s.peaks.peaks) {
    const MarkPixel p = PixelOfPoint(view, s, contour, peak.PosF2 / stepF2, peak.PosF1 / stepF1);
    const int x = Round(p.x), y = Round(p.y);
    if (x < contour.x - h || x > contour.right() + h || y < contour.y - h || y > contour.bottom() + h) continue;
    surface.MoveTo(x - h, y);
    surface.LineTo(x + h + 1, y);
    surface.MoveTo(x, y - h);
    surface.LineTo(x, y + h + 1);
  }
  surface.ClearClip();
}

void DrawSlope2Line(platform::Surface& surface, const display::DisplayState& view, const model::Spectrum2D& s,
                    const display::Rect& contour, const MarkStyle& style) {
  if (s.InadequateMode != 1) return;
  const Slope2Line line = Slope2LineOf(s);
  if (line.col1 == line.col2 && line.row1 == line.row2) return;
  const MarkPixel a = PixelOfPoint(view, s, contour, line.col1, line.row1);
  const MarkPixel b = PixelOfPoint(view, s, contour, line.col2, line.row2);
  surface.SetClip(contour.x, contour.y, contour.width, contour.height);
  surface.SetPen(style.slopeColor, style.slopeWidth);
  surface.MoveTo(Round(a.x), Round(a.y));
  surface.LineTo(Round(b.x), Round(b.y));
  surface.ClearClip();
}

}  // namespace velk::operations
