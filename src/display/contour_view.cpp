#include "display/contour_view.h"

#include <algorithm>
#include <cmath>

#include "display/levels.h"
#include "display/messages.h"
#include "display/tracer.h"

namespace velk::display {

bool DrawContourView(platform::Surface& surface, ContourGrid& grid, LevelTable& levels, const GridSource& source,
                     const DisplayState& view, const Rect& rect, int colCap, int rowCap, bool& reuse,
                     platform::Progress& progress, int penWidth) {
  const model::Spectrum2D& s = source.spectrum;
  const int pointsF2 = s.axis[model::F2].Point;
  const int pointsF1 = s.axis[model::F1].Point;
  const int c0 = PpmToPoint(s.ppmF2, pointsF2, view.ViewF2Start);
  const int c1 = PpmToPoint(s.ppmF2, pointsF2, view.ViewF2End);
  const int r0 = PpmToPoint(s.ppmF1, pointsF1, view.ViewF1Start);
  const int r1 = PpmToPoint(s.ppmF1, pointsF1, view.ViewF1End);
  if (std::abs(c1 - c0) < 1 || std::abs(r1 - r0) < 1) return false;

  BuildLevelTable(levels, source.setting, s.UpperLimit, s.LowerLimit, source.pulseModeClass);
  if (!progress.Step(0, 100)) return false;
  const int dimension = source.setting.DisplayDimension;
  MakeDisplayGrid(grid, source, std::min(c0, c1), std::max(c0, c1), std::min(r0, r1), std::max(r0, r1),
                  CappedPixels(rect.width, colCap, dimension), CappedPixels(rect.height, rowCap, dimension), reuse);
  reuse = false;
  grid.ViewColStart = view.ViewF2Start;
  grid.ViewColEnd = view.ViewF2End;
  grid.ViewRowStart = view.ViewF1Start;
  grid.ViewRowEnd = view.ViewF1End;

  // The last pixel of the rectangle shows the end of the window.
  const Placement placement{rect.x, rect.width - 1, rect.y, rect.height - 1};
  const ClipRect clip{rect.x, rect.y, rect.right() - 1, rect.bottom() - 1};
  surface.SetClip(rect.x, rect.y, rect.width, rect.height);
  const bool done = TraceContour(surface, grid, levels, placement, clip, penWidth, progress, source.setting.DisplayMode);
  surface.ClearClip();
  return done;
}

void DrawLevelBar(platform::Surface& surface, const Rect& rect, const LevelTable& levels, const ContourSetting& setting,
                  int pulseModeClass, const platform::Font& font, int penWidth) {
  // A virtual scale: 1000 high with the middle at 500; bands 200 wide, separating ticks to 210.
  const auto X = [&](double v) { return rect.x + static_cast<int>(std::lrint(v * rect.width / 450.0)); };
  const auto Y = [&](double v) { return rect.y + static_cast<int>(std::lrint(v * rect.height / 1000.0)); };
  const int steps = NormalizeSteps(setting.Steps);
  const int half = steps / 2;
  const double band = 1000.0 / (steps + 1);
  const bool negative = HasNegativeSide(setting, pulseModeClass);

  const auto drawBand = [&](double top, double bottom, platform::Color color, bool filled) {
    surface.SetPen(platform::kBlack, penWidth);
    if (filled) surface.SetBrush(color);
    else surface.SetNoBrush();
    const platform::Point corners[4] = {{X(0), Y(top)}, {X(200), Y(top)}, {X(200), Y(bottom)}, {X(0), Y(bottom)}};
    surface.Polygon(corners);
    surface.MoveTo(X(200), Y(top));
    surface.LineTo(X(210), Y(top));
  };
  // Positive levels upward from the middle band, the lowest first; negative ones downward.
  for (int j = 0; j < half; ++j) {
    const double bottom = 500 - band / 2 - j * band;
    drawBand(bottom - band, bottom, levels.Color[levels.DrawIndex[j]], true);
    if (negative) {
      const double top = 500 + band / 2 + j * band;
      drawBand(top, top + band, levels.Color[levels.DrawIndex[half + j]], true);
    }
  }
  drawBand(500 - band / 2, 500 + band / 2, platform::kWhite, false);

  surface.SetFont(font);
  surface.SetTextColor(platform::kBlack);
  const int textHeight = surface.MeasureText(messages::kLevelBarZero).height;
  surface.Text(X(225), Y(0), 0, messages::kLevelBarTop);
  surface.Text(X(225), Y(500) - textHeight / 2, 0, messages::kLevelBarZero);
  if (negative) surface.Text(X(225), Y(1000) - textHeight, 0, messages::kLevelBarBottom);
}

}  // namespace velk::display
