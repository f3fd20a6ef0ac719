#include "layout/render_page.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "display/tools.h"
#include "layout/draw_coded_text.h"
#include "layout/page_look.h"
#include "layout/print_set.h"
#include "layout/render_parameter_list.h"
#include "operations/contour_marks.h"

namespace velk::layout {
namespace {

constexpr double kCmPerInch = 2.54;
constexpr double kPointsPerInch = 72;
constexpr double kMmPerCm = 10;
constexpr double kCommentPoints = 12;
constexpr double kColumnGap = 0.5;         // cm between the parameter columns
constexpr double kPadding = 0.15;          // cm between the parameter frame's line and its text
constexpr double kTwoColumnWidth = 16;     // cm: a narrower parameter frame has one column
constexpr double kStoredUnitsPerCm = 100;  // widths and head lengths of lines are kept in 0.1 mm

int Dots(double cm, double dotsPerInch) { return static_cast<int>(std::lrint(cm / kCmPerInch * dotsPerInch)); }

display::Rect RectOf(const PageFrame& f, double dpi) {
  if (!f.Shown) return {};
  const int x = Dots(f.X, dpi), y = Dots(f.Y, dpi);
  return {x, y, Dots(f.X + f.Width, dpi) - x, Dots(f.Y + f.Height, dpi) - y};
}

void FillAndFrame(platform::Surface& surface, const display::Rect& r, std::optional<platform::Color> fill,
                  std::optional<platform::Color> line, int width) {
  if (r.width <= 0 || r.height <= 0 || !(fill || line)) return;
  const platform::Point corners[4] = {{r.x, r.y}, {r.right(), r.y}, {r.right(), r.bottom()}, {r.x, r.bottom()}};
  surface.SetPen(line ? *line : *fill, line ? width : 0);
  if (fill) {
    surface.SetBrush(*fill);
  } else {
    surface.SetNoBrush();
  }
  surface.Polygon(corners);
}

// A frame's background and line: those the person gave the frame, else the print set's. The set's
// lines of the spectrum and trace frames go around the contour and the traces (drawn with them).
void DrawFrame(platform::Surface& surface, const PageFrame& f, const FrameLook& set, bool setLine, double dpi) {
  std::optional<platform::Color> fill, line;
  if (f.Filled) fill = f.Background;
  else if (!set.transparent) fill = set.background;
  int width = 1;
  if (f.Framed) {
    line = f.LineColor;
    width = std::max(1, static_cast<int>(std::lrint(f.LineWidth / kMmPerCm / kCmPerInch * dpi)));
  } else if (setLine && set.lineWidth > 0) {
    line = set.line;
    width = PenWidth(set.lineWidth, dpi);
  }
  FillAndFrame(surface, RectOf(f, dpi), fill, line, width);
}

// The main view's parts in the page's frames: the contour fills the spectrum frame but for the
// bands of the axes along its lower and right edges.
display::MainViewLayout ViewInFrames(const PageFrames& frames, double axisPoints, double dpi) {
  display::MainViewLayout l;
  l.textHeight = std::max(6, static_cast<int>(std::lrint(axisPoints * dpi / kPointsPerInch)));
  const display::Rect all = RectOf(frames[FrameKind::Spectrum], dpi);
  const int axisF1 = std::min(Dots(kAxisBandRightCm, dpi), all.width / 3);
  const int axisF2 = std::min(Dots(kAxisBandBelowCm, dpi), all.height / 3);
  l.contour = {all.x, all.y, std::max(0, all.width - axisF1), std::max(0, all.height - axisF2)};
  l.axisF2 = {l.contour.x, l.contour.bottom(), l.contour.width, axisF2};
  l.axisF1 = {l.contour.right(), l.contour.y, axisF1, l.contour.height};
  l.traceF2 = RectOf(frames[FrameKind::TraceF2], dpi);
  l.traceF1 = RectOf(frames[FrameKind::TraceF1], dpi);
  l.levelBar = RectOf(frames[FrameKind::Level], dpi);
  return l;
}

// Behind the contour, so that no line crosses a peak: the window's grid.
void DrawGrid(platform::Surface& surface, const display::MainViewInput& in, const display::Rect& contour,
              const PageLook& look, double dpi) {
  if (!in.grid || !in.grid->shown) return;
  display::GridSetting grid = *in.grid;
  grid.color = look.grid;
  grid.penWidth = PenWidth(look.gridWidth, dpi);
  surface.SetClip(contour.x, contour.y, contour.width, contour.height);
  display::DrawGridLines(surface, contour, in.view, grid);
  surface.ClearClip();
}

// Over the contour: the window's slice cursors, the slope 2 line of an INADEQUATE set and the peak
// crosses.
void DrawOverContour(platform::Surface& surface, const display::MainViewInput& in, const display::Rect& contour,
                     const PageLook& look, double dpi) {
  surface.SetClip(contour.x, contour.y, contour.width, contour.height);
  display::DrawSliceLines(surface, in.view, in.spectrum, contour, look.sliceLine, PenWidth(look.sliceLineWidth, dpi));
  surface.ClearClip();
  operations::MarkStyle marks;
  marks.peakColor = look.peakLine;
  marks.peakWidth = PenWidth(look.peakLineWidth, dpi);
  marks.peakHalfSize = PenWidth(marks.peakHalfSize, dpi);
  marks.slopeColor = look.inadequate;
  marks.slopeWidth = PenWidth(look.inadequateWidth, dpi);
  operations::DrawSlope2Line(surface, in.view, in.spectrum, contour, marks);
  operations::DrawPeakMarks(surface, in.view, in.spectrum, contour, marks);
}

void DrawParameters(platform::Surface& surface, const PageContent& content, const PageLook& look, const PageFrame& f,
                    double dpi) {
  if (!f.Shown) return;
  // Two columns in a wide frame, the first taking the odd line.
  const int count = f.Width >= kTwoColumnWidth ? 2 : 1;
  const std::size_t half = (content.parameters.size() + 1) / 2;
  const ParameterList columns[2] = {{content.parameters.begin(), content.parameters.begin() + half},
                                    {content.parameters.begin() + half, content.parameters.end()}};
  for (int c = 0; c < count; ++c) {
    ParameterBlockPlacement block;
    block.x = Dots(f.X + kPadding + c * f.Width / count, dpi);
    block.y = Dots(f.Y + kPadding, dpi);
    block.scale = dpi / kPointsPerInch;
    block.width = Dots(std::max(0.5, f.Width / count - kColumnGap - kPadding), dpi);
    block.decimalColumn = content.decimalColumn;
    RenderParameterList(surface, count == 2 ? columns[c] : content.parameters, content.parameterFont, look.parameter,
                        block, content.source);
  }
}

}  // namespace

display::MainViewInput PageViewOf(display::MainViewInput window, const core::Settings& settings2D) {
  if (core::Number(settings2D, kPrintGridKey) == 0) window.grid = nullptr;
  return window;
}

PageScale ScaleOf(double dotsPerInch) {
  const double pixelsPerCm = dotsPerInch / kCmPerInch;
  return {pixelsPerCm, pixelsPerCm / kStoredUnitsPerCm, dotsPerInch / kPointsPerInch};
}

platform::Extent PageExtent(const Paper& paper, double dotsPerInch) {
  return {Dots(paper.widthCm, dotsPerInch), Dots(paper.heightCm, dotsPerInch)};
}

bool RenderPage(platform::Surface& surface, const PageContent& content, const Paper& paper, double dotsPerInch,
                platform::Progress& progress) {
  const PageFrames frames = content.frames ? *content.frames : DefaultPageFrames(paper);
  const PageLook look = LookOf(content.printSet ? *content.printSet : DefaultPrintSet());
  surface.SetDrawMode(platform::DrawMode::Copy);
  const platform::Extent page = PageExtent(paper, dotsPerInch);
  if (!look.paper.transparent) FillAndFrame(surface, {0, 0, page.width, page.height}, look.paper.background, {}, 0);
  for (std::size_t k = 0; k < kFrameCount; ++k) {
    const auto kind = static_cast<FrameKind>(k);
    DrawFrame(surface, frames[kind], look.frames[k], kind == FrameKind::Level || kind == FrameKind::Parameter, dotsPerInch);
  }

  const PageFrame& comment = frames[FrameKind::Comment];
  if (comment.Shown) {
    const TextPlacement at{double(Dots(comment.X, dotsPerInch)), double(Dots(comment.Y, dotsPerInch)),
                           dotsPerInch / kPointsPerInch, double(Dots(comment.Width, dotsPerInch))};
    DrawCodedText(surface, at, content.comment, TextFont{"Sans Serif", kCommentPoints}, platform::kBlack);
  }
  if (frames[FrameKind::Spectrum].Shown) {
    const display::MainViewLayout view = ViewInFrames(frames, look.axisFont.points, dotsPerInch);
    DrawGrid(surface, content.view, view.contour, look, dotsPerInch);
    if (!display::DrawMainViewIn(surface, view, content.view, progress, ViewLookOf(look, dotsPerInch))) return false;
    DrawOverContour(surface, content.view, view.contour, look, dotsPerInch);
  }
  DrawParameters(surface, content, look, frames[FrameKind::Parameter], dotsPerInch);
  PaintObjects(surface, content.objects, ScaleOf(dotsPerInch), content.pictures);
  return true;
}

}  // namespace velk::layout
