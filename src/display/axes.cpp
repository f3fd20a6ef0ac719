#include "display/axes.h"

#include <algorithm>
#include <cmath>

namespace velk::display {
namespace {

struct TicLengths {
  int major, minor;
};

TicLengths LengthsFor(int textHeight) {
  const double h = textHeight * 1.1;
  return {static_cast<int>(std::lrint(0.3 * h)), static_cast<int>(std::lrint(0.15 * h))};
}

int Position(double value, double start, double end, int origin, int length) {
  return origin + static_cast<int>(std::lrint((value - start) / (end - start) * (length - 1)));
}

}  // namespace

void DrawAxisF2(platform::Surface& surface, const Rect& rect, float start, float end, const AxisStyle& style) {
  if (start == end || rect.width < 2) return;
  surface.SetFont(style.font);
  surface.SetTextColor(style.color);
  surface.SetPen(style.color, style.penWidth);
  const int textHeight = surface.MeasureText("0").height;
  const TicLengths len = LengthsFor(textHeight);
  surface.MoveTo(rect.x, rect.y);
  surface.LineTo(rect.right() - 1, rect.y);
  const auto tics = MakeTics(start, end, rect.width, style.tics,
                             [&](const std::string& label) { return surface.MeasureText(label).width; });
  for (const Tic& t : tics) {
    const int x = Position(t.value, start, end, rect.x, rect.width);
    surface.MoveTo(x, rect.y);
    surface.LineTo(x, rect.y + (t.major ? len.major : len.minor));
    if (t.major) surface.Text(x - surface.MeasureText(t.label).width / 2, rect.y + len.major + 1, 0, t.label);
  }
  if (!style.caption.empty()) {
    const int width = surface.MeasureText(style.caption).width;
    surface.Text(rect.right() - width, rect.y + len.major + textHeight + 2, 0, style.caption);
  }
}

void DrawAxisF1(platform::Surface& surface, const Rect& rect, float start, float end, const AxisStyle& style) {
  if (start == end || rect.height < 2) return;
  surface.SetFont(style.font);
  surface.SetTextColor(style.color);
  surface.SetPen(style.color, style.penWidth);
  const int textHeight = surface.MeasureText("0").height;
  const TicLengths len = LengthsFor(textHeight);
  surface.MoveTo(rect.x, rect.y);
  surface.LineTo(rect.x, rect.bottom() - 1);
  // Labels stacked along a vertical axis need their height, not their width, between them.
  const auto tics = MakeTics(start, end, rect.height, style.tics, [&](const std::string&) { return textHeight * 3 / 2; });
  int widest = 0;
  for (const Tic& t : tics) {
    const int y = Position(t.value, start, end, rect.y, rect.height);
    surface.MoveTo(rect.x, y);
    surface.LineTo(rect.x + (t.major ? len.major : len.minor), y);
    if (t.major) {
      surface.Text(rect.x + len.major + 2, y - textHeight / 2, 0, t.label);
      widest = std::max(widest, surface.MeasureText(t.label).width);
    }
  }
  if (!style.caption.empty()) {
    const int width = surface.MeasureText(style.caption).width;
    surface.Text(rect.x + len.major + widest + 6, rect.y + (rect.height + width) / 2, 90, style.caption);
  }
}

void DrawGridLines(platform::Surface& surface, const Rect& contour, const DisplayState& view, const GridSetting& grid) {
  if (contour.width < 2 || contour.height < 2) return;
  surface.SetPen(grid.color, grid.penWidth);
  // Grid lines need no room for labels: the round step of the range as it comes.
  const auto noLabels = [](const std::string&) { return 0; };
  const auto lines = [&](float start, float end, double step) {
    return start == end ? std::vector<Tic>{} : MakeTics(start, end, 1, {grid.automatic, step, 1}, noLabels);
  };
  for (const Tic& t : lines(view.ViewF2Start, view.ViewF2End, grid.stepF2)) {
    if (!t.major) continue;
    const int x = Position(t.value, view.ViewF2Start, view.ViewF2End, contour.x, contour.width);
    surface.MoveTo(x, contour.y);
    surface.LineTo(x, contour.bottom() - 1);
  }
  for (const Tic& t : lines(view.ViewF1Start, view.ViewF1End, grid.stepF1)) {
    if (!t.major) continue;
    const int y = Position(t.value, view.ViewF1Start, view.ViewF1End, contour.y, contour.height);
    surface.MoveTo(contour.x, y);
    surface.LineTo(contour.right() - 1, y);
  }
}

}  // namespace velk::display
