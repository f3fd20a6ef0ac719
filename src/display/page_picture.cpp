#include "display/page_picture.h"

#include <algorithm>
#include <cmath>

#include "display/axes.h"
#include "display/contour_view.h"

namespace velk::display {
namespace {

constexpr platform::Color kSliceCaptionColor = 0x0000C0;

void Frame(platform::Surface& surface, const Rect& r, platform::Color color, int width) {
  if (width <= 0) return;
  surface.SetPen(color, width);
  surface.SetNoBrush();
  const platform::Point corners[4] = {{r.x, r.y}, {r.right() - 1, r.y}, {r.right() - 1, r.bottom() - 1},
                                      {r.x, r.bottom() - 1}};
  surface.Polygon(corners);
}

// One panel: the projection (or both of its signs), scaled to the panel with a little room.
void DrawProjection(platform::Surface& surface, const Projection& p, TracePanel panel, const std::vector<float>& ppm,
                    int points, platform::Color negativeColor, const ViewLook& look) {
  const float room = 0.05f * (p.max - p.min);
  panel.valueHigh = p.max + room;
  panel.valueLow = p.min - room;
  DrawTrace(surface, panel, ppm, p.positive, points, look.trace, look.traceWidth);
  if (!p.negative.empty()) DrawTrace(surface, panel, ppm, p.negative, points, negativeColor, look.traceWidth);
}

}  // namespace

// A 1D set over the panel of its axis, on its own points and scale; false when it has none.
bool DrawCompanionTrace(platform::Surface& surface, const model::Spectrum1D* set, TracePanel panel, const ViewLook& look) {
  if (!set) return false;
  const std::size_t n = std::min(set->re.size(), set->axisPpm.size());
  if (n < 2) return false;
  const std::vector<float> ppm(set->axisPpm.begin(), set->axisPpm.begin() + static_cast<std::ptrdiff_t>(n));
  const std::vector<float> values(set->re.begin(), set->re.begin() + static_cast<std::ptrdiff_t>(n));
  const auto [low, high] = std::minmax_element(values.begin(), values.end());
  const float room = 0.05f * (*high - *low);
  panel.valueHigh = *high + room;
  panel.valueLow = *low - room;
  DrawTrace(surface, panel, ppm, values, static_cast<int>(n), look.trace, look.traceWidth);
  return true;
}

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

void DrawSurround(platform::Surface& surface, const MainViewLayout& l, const MainViewInput& input,
                  const LevelTable& levels, const Projection& f2, const Projection& f1, const ViewLook& look) {
  const model::Spectrum2D& s = input.spectrum;
  const DisplayState& v = input.view;
  Frame(surface, l.contour, look.frameContour, look.frameWidth);
  platform::Font font = look.font;
  font.pixelHeight = l.textHeight;
  AxisStyle axis{font, {}, look.axis, look.axisWidth, input.captionF2};
  DrawAxisF2(surface, l.axisF2, v.ViewF2Start, v.ViewF2End, axis);
  axis.caption = input.captionF1;
  DrawAxisF1(surface, l.axisF1, v.ViewF1Start, v.ViewF1End, axis);

  if (l.traceF2.height > 0 || l.traceF1.width > 0) {
    const platform::Color negative = input.setting.Palette[15];
    const TracePanel panelF2{l.traceF2, v.ViewF2Start, v.ViewF2End, 0, 1, false};
    const TracePanel panelF1{l.traceF1, v.ViewF1Start, v.ViewF1End, 0, 1, true};
    if (l.traceF2.height > 0) Frame(surface, l.traceF2, look.frameF2, look.frameWidth);
    if (l.traceF1.width > 0) Frame(surface, l.traceF1, look.frameF1, look.frameWidth);
    // A slice cursor replaces the projection by the row or column it crosses, on the same scale.
    const bool companions = input.traces == TraceKind::HighResolution1D;
    const auto panel = [&](const Projection& p, TracePanel where, const std::vector<float>& ppm, int points,
                           std::vector<float> slice, const std::string& caption, const model::Spectrum1D* set) {
      if (where.rect.width <= 0 || where.rect.height <= 0) return;
      if (slice.empty() && companions && DrawCompanionTrace(surface, set, where, look)) return;
      if (slice.empty()) return DrawProjection(surface, p, where, ppm, points, negative, look);
      Projection shown{std::move(slice), {}, p.max, p.min};
      DrawProjection(surface, shown, where, ppm, points, negative, look);
      surface.SetFont(font);
      surface.SetTextColor(kSliceCaptionColor);
      const int x = where.rect.x + l.textHeight / 3, y = where.rect.y + l.textHeight / 6;
      // The narrow F1 panel takes "Slice(F1)" and "at 1.265" on two lines rather than running
      // the caption over the contour.
      const std::size_t at = caption.find(" at ");
      if (at == std::string::npos || surface.MeasureText(caption).width <= where.rect.right() - x) {
        surface.Text(x, y, 0, caption);
      } else {
        surface.Text(x, y, 0, caption.substr(0, at));
        surface.Text(x, y + l.textHeight, 0, caption.substr(at + 1));
      }
    };
    const bool rowShown = v.SliceF1 >= 0 && v.SliceF1 < static_cast<int>(s.ppmF1.size());
    const bool columnShown = v.SliceF2 >= 0 && v.SliceF2 < static_cast<int>(s.ppmF2.size());
    panel(f2, panelF2, s.ppmF2, s.axis[model::F2].Point, rowShown ? SliceAlongF2(s, v.SliceF1) : std::vector<float>{},
          rowShown ? SliceCaption(false, s.ppmF1[v.SliceF1]) : std::string(), input.companionF2);
    panel(f1, panelF1, s.ppmF1, s.axis[model::F1].Point,
          columnShown ? SliceAlongF1(s, v.SliceF2) : std::vector<float>{},
          columnShown ? SliceCaption(true, s.ppmF2[v.SliceF2]) : std::string(), input.companionF1);
  }
  if (l.levelBar.width > 0) DrawLevelBar(surface, l.levelBar, levels, input.setting, input.pulseModeClass, font, look.levelBarWidth);
}

bool DrawMainView(platform::Surface& surface, platform::Extent size, const MainViewInput& input,
                  platform::Progress& progress) {
  const bool withTraces = input.traces != TraceKind::None;
  return DrawMainViewIn(surface, LayOutMainView(size, withTraces), input, progress);
}

bool DrawMainViewIn(platform::Surface& surface, const MainViewLayout& l, const MainViewInput& input,
                    platform::Progress& progress, const ViewLook& look) {
  const bool withTraces = input.traces != TraceKind::None && (l.traceF2.height > 0 || l.traceF1.width > 0);
  if (l.contour.width < 3 || l.contour.height < 3) return false;
  const model::Spectrum2D& s = input.spectrum;

  ContourGrid grid;
  LevelTable levels;
  bool reuse = false;
  const GridSource source{s, input.pulseModeClass, input.setting};
  // The picture is its own screen: its pixels, not DisplayDimension, size the grid.
  if (!DrawContourView(surface, grid, levels, source, input.view, l.contour, l.contour.width, l.contour.height, reuse,
                       progress, look.contourWidth))
    return false;
  Projection f2, f1;
  if (withTraces) {
    const bool both = input.traces == TraceKind::ProjectionPosNeg;
    f2 = MakeProjectionF2(s, input.pulseModeClass, input.setting, both);
    f1 = MakeProjectionF1(s, input.pulseModeClass, input.setting, both);
  }
  DrawSurround(surface, l, input, levels, f2, f1, look);
  return true;
}

}  // namespace velk::display
