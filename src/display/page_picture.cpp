#include "display/page_picture.h"

#include <algorithm>
#include <cmath>

#include "display/axes.h"
#include "display/contour_view.h"

namespace velk::display {
namespace {

constexpr platform::Color kFrameColor = 0x808080;
constexpr platform::Color kTraceColor = 0x000000;

void Frame(platform::Surface& surface, const Rect& r) {
  surface.SetPen(kFrameColor, 1);
  surface.SetNoBrush();
  const platform::Point corners[4] = {{r.x, r.y}, {r.right() - 1, r.y}, {r.right() - 1, r.bottom() - 1},
                                      {r.x, r.bottom() - 1}};
  surface.Polygon(corners);
}

// One panel: the projection (or both of its signs), scaled to the panel with a little room.
void DrawProjection(platform::Surface& surface, const Projection& p, TracePanel panel, const std::vector<float>& ppm,
                    int points, platform::Color negativeColor) {
  const float room = 0.05f * (p.max - p.min);
  panel.valueHigh = p.max + room;
  panel.valueLow = p.min - room;
  DrawTrace(surface, panel, ppm, p.positive, points, kTraceColor, 1);
  if (!p.negative.empty()) DrawTrace(surface, panel, ppm, p.negative, points, negativeColor, 1);
}

}  // namespace

MainViewLayout LayOutMainView(platform::Extent size, bool withTraces) {
  MainViewLayout l;
  const int w = size.width, h = size.height;
  const int fh = std::clamp(std::min(w, h) / 60, 9, 40);
  const int margin = fh;
  const int levelWidth = 7 * fh;
  const int trace = withTraces ? std::min(w, h) * 13 / 100 : 0;
  const int gap = withTraces ? fh / 2 : 0;
  const int axisF1Width = 7 * fh;
  const int axisF2Height = 4 * fh;
  l.textHeight = fh;
  l.contour.x = margin + levelWidth + fh + trace + gap;
  l.contour.y = margin + trace + gap;
  l.contour.width = std::max(0, w - l.contour.x - axisF1Width - margin);
  l.contour.height = std::max(0, h - l.contour.y - axisF2Height - margin);
  l.axisF2 = {l.contour.x, l.contour.bottom(), l.contour.width, axisF2Height};
  l.axisF1 = {l.contour.right(), l.contour.y, axisF1Width, l.contour.height};
  l.traceF2 = {l.contour.x, margin, l.contour.width, trace};
  l.traceF1 = {l.contour.x - gap - trace, l.contour.y, trace, l.contour.height};
  l.levelBar = {margin, l.contour.y, levelWidth, l.contour.height};
  return l;
}

bool DrawMainView(platform::Surface& surface, platform::Extent size, const MainViewInput& input,
                  platform::Progress& progress) {
  const bool withTraces = input.traces == TraceKind::Projection || input.traces == TraceKind::ProjectionPosNeg;
  const MainViewLayout l = LayOutMainView(size, withTraces);
  if (l.contour.width < 3 || l.contour.height < 3) return false;
  const model::Spectrum2D& s = input.spectrum;
  const DisplayState& v = input.view;

  ContourGrid grid;
  LevelTable levels;
  bool reuse = false;
  const GridSource source{s, input.pulseModeClass, input.setting};
  // The picture is its own screen: its pixels, not DisplayDimension, size the grid.
  if (!DrawContourView(surface, grid, levels, source, v, l.contour, l.contour.width, l.contour.height, reuse, progress))
    return false;
  Frame(surface, l.contour);

  platform::Font font;
  font.pixelHeight = l.textHeight;
  AxisStyle axis{font, {}, platform::kBlack, 1, input.captionF2};
  DrawAxisF2(surface, l.axisF2, v.ViewF2Start, v.ViewF2End, axis);
  axis.caption = input.captionF1;
  DrawAxisF1(surface, l.axisF1, v.ViewF1Start, v.ViewF1End, axis);

  if (withTraces) {
    const bool both = input.traces == TraceKind::ProjectionPosNeg;
    const platform::Color negative = input.setting.Palette[15];
    Frame(surface, l.traceF2);
    Frame(surface, l.traceF1);
    DrawProjection(surface, MakeProjectionF2(s, input.pulseModeClass, input.setting, both),
                   {l.traceF2, v.ViewF2Start, v.ViewF2End, 0, 1, false}, s.ppmF2, s.axis[model::F2].Point, negative);
    DrawProjection(surface, MakeProjectionF1(s, input.pulseModeClass, input.setting, both),
                   {l.traceF1, v.ViewF1Start, v.ViewF1End, 0, 1, true}, s.ppmF1, s.axis[model::F1].Point, negative);
  }
  DrawLevelBar(surface, l.levelBar, levels, input.setting, input.pulseModeClass, font);
  return true;
}

}  // namespace velk::display
