#include "layout/render_page.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "layout/draw_coded_text.h"
#include "layout/render_parameter_list.h"

namespace velk::layout {
namespace {

constexpr double kCmPerInch = 2.54;
constexpr double kPointsPerInch = 72;
constexpr double kMmPerCm = 10;
constexpr double kCommentPoints = 12;
constexpr double kAxisPoints = 8;
constexpr double kColumnGap = 0.5;         // cm between the parameter columns
constexpr double kTwoColumnWidth = 16;     // cm: a narrower parameter frame has one column
constexpr double kStoredUnitsPerCm = 100;  // widths and head lengths of lines are kept in 0.1 mm

int Dots(double cm, double dotsPerInch) { return static_cast<int>(std::lrint(cm / kCmPerInch * dotsPerInch)); }

display::Rect RectOf(const PageFrame& f, double dpi) {
  if (!f.Shown) return {};
  const int x = Dots(f.X, dpi), y = Dots(f.Y, dpi);
  return {x, y, Dots(f.X + f.Width, dpi) - x, Dots(f.Y + f.Height, dpi) - y};
}

void DrawFrame(platform::Surface& surface, const PageFrame& f, double dpi) {
  const display::Rect r = RectOf(f, dpi);
  if (r.width <= 0 || r.height <= 0 || !(f.Filled || f.Framed)) return;
  const platform::Point corners[4] = {{r.x, r.y}, {r.right(), r.y}, {r.right(), r.bottom()}, {r.x, r.bottom()}};
  const int width = std::max(1, static_cast<int>(std::lrint(f.LineWidth / kMmPerCm / kCmPerInch * dpi)));
  surface.SetPen(f.Framed ? f.LineColor : f.Background, f.Framed ? width : 0);
  if (f.Filled) {
    surface.SetBrush(f.Background);
  } else {
    surface.SetNoBrush();
  }
  surface.Polygon(corners);
}

// The main view's parts in the page's frames: the contour fills the spectrum frame but for the
// bands of the axes along its lower and right edges.
display::MainViewLayout ViewInFrames(const PageFrames& frames, double dpi) {
  display::MainViewLayout l;
  l.textHeight = std::max(6, static_cast<int>(std::lrint(kAxisPoints * dpi / kPointsPerInch)));
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

void DrawParameters(platform::Surface& surface, const PageContent& content, const PageFrame& f, double dpi) {
  if (!f.Shown) return;
  // Two columns in a wide frame, the first taking the odd line.
  const int count = f.Width >= kTwoColumnWidth ? 2 : 1;
  const std::size_t half = (content.parameters.size() + 1) / 2;
  const ParameterList columns[2] = {{content.parameters.begin(), content.parameters.begin() + half},
                                    {content.parameters.begin() + half, content.parameters.end()}};
  for (int c = 0; c < count; ++c) {
    ParameterBlockPlacement block;
    block.x = Dots(f.X + c * f.Width / count, dpi);
    block.y = Dots(f.Y, dpi);
    block.scale = dpi / kPointsPerInch;
    block.width = Dots(std::max(0.5, f.Width / count - kColumnGap), dpi);
    block.decimalColumn = content.decimalColumn;
    RenderParameterList(surface, count == 2 ? columns[c] : content.parameters, content.parameterFont, platform::kBlack, block,
                        content.source);
  }
}

}  // namespace

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
  surface.SetDrawMode(platform::DrawMode::Copy);
  for (const PageFrame& f : frames.frame) DrawFrame(surface, f, dotsPerInch);

  const PageFrame& comment = frames[FrameKind::Comment];
  if (comment.Shown) {
    const TextPlacement at{double(Dots(comment.X, dotsPerInch)), double(Dots(comment.Y, dotsPerInch)),
                           dotsPerInch / kPointsPerInch, double(Dots(comment.Width, dotsPerInch))};
    DrawCodedText(surface, at, content.comment, TextFont{"Sans Serif", kCommentPoints}, platform::kBlack);
  }
  if (frames[FrameKind::Spectrum].Shown &&
      !display::DrawMainViewIn(surface, ViewInFrames(frames, dotsPerInch), content.view, progress))
    return false;
  DrawParameters(surface, content, frames[FrameKind::Parameter], dotsPerInch);
  PaintObjects(surface, content.objects, ScaleOf(dotsPerInch), content.pictures);
  return true;
}

}  // namespace velk::layout
