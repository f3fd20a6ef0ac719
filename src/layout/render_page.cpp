#include "layout/render_page.h"

#include <cmath>
#include <vector>

#include "core/text.h"
#include "layout/paint_objects.h"
#include "layout/render_parameter_list.h"
#include "layout/shifted_surface.h"

namespace velk::layout {
namespace {

constexpr double kCmPerInch = 2.54;
constexpr double kPointsPerInch = 72;
constexpr double kMargin = 1.5;          // cm
constexpr double kCommentHeight = 1.2;   // cm
constexpr double kParameterPoints = 9;
constexpr double kCommentPoints = 12;
constexpr double kColumnGap = 0.5;       // cm between the parameter columns
constexpr double kStoredUnitsPerCm = 100;  // widths and head lengths of lines are kept in 0.1 mm

int Dots(double cm, double dotsPerInch) { return static_cast<int>(std::lrint(cm / kCmPerInch * dotsPerInch)); }

}  // namespace

std::optional<Paper> PaperOf(std::string_view name, bool landscape) {
  static constexpr struct {
    std::string_view name;
    double width, height;
  } kPapers[] = {{"A3", 29.7, 42.0}, {"A4", 21.0, 29.7}, {"A5", 14.8, 21.0}, {"B4", 25.7, 36.4}, {"B5", 18.2, 25.7}};
  for (const auto& p : kPapers)
    if (core::EqualsNoCase(p.name, name)) return landscape ? Paper{p.height, p.width} : Paper{p.width, p.height};
  return std::nullopt;
}

PageFrames DefaultFrames(const Paper& paper) {
  PageFrames f{};
  f.commentX = kMargin;
  f.commentY = kMargin;
  f.spectrumX = kMargin;
  f.spectrumY = kMargin + kCommentHeight;
  f.spectrumWidth = paper.widthCm - 2 * kMargin;
  // A square spectrum on portrait paper, leaving the lower part for the parameters.
  f.spectrumHeight = std::min(f.spectrumWidth, (paper.heightCm - f.spectrumY - kMargin) * 0.62);
  f.parameterX = kMargin;
  f.parameterY = f.spectrumY + f.spectrumHeight + 0.6;
  f.parameterWidth = paper.widthCm - 2 * kMargin;
  return f;
}

platform::Extent PageExtent(const Paper& paper, double dotsPerInch) {
  return {Dots(paper.widthCm, dotsPerInch), Dots(paper.heightCm, dotsPerInch)};
}

bool RenderPage(platform::Surface& surface, const PageContent& content, const Paper& paper, double dotsPerInch,
                platform::Progress& progress) {
  const PageFrames f = DefaultFrames(paper);
  const double pixelsPerPoint = dotsPerInch / kPointsPerInch;
  const TextFont commentFont{"Sans Serif", kCommentPoints};
  DrawCodedText(surface, {double(Dots(f.commentX, dotsPerInch)), double(Dots(f.commentY, dotsPerInch)), pixelsPerPoint},
                content.comment, commentFont, platform::kBlack);

  const platform::Extent spectrum{Dots(f.spectrumWidth, dotsPerInch), Dots(f.spectrumHeight, dotsPerInch)};
  ShiftedSurface frame(surface, Dots(f.spectrumX, dotsPerInch), Dots(f.spectrumY, dotsPerInch), spectrum);
  if (!display::DrawMainView(frame, spectrum, content.view, progress)) return false;

  // The parameters in two columns, the first taking the odd line.
  const std::size_t half = (content.parameters.size() + 1) / 2;
  const ParameterList columns[2] = {{content.parameters.begin(), content.parameters.begin() + half},
                                    {content.parameters.begin() + half, content.parameters.end()}};
  for (int c = 0; c < 2; ++c) {
    ParameterBlockPlacement block;
    block.x = Dots(f.parameterX + c * f.parameterWidth / 2, dotsPerInch);
    block.y = Dots(f.parameterY, dotsPerInch);
    block.scale = pixelsPerPoint;
    block.width = Dots(f.parameterWidth / 2 - kColumnGap, dotsPerInch);
    RenderParameterList(surface, columns[c], TextFont{"Sans Serif", kParameterPoints}, platform::kBlack, block,
                        content.source);
  }

  const double pixelsPerCm = dotsPerInch / kCmPerInch;
  PaintObjects(surface, content.objects, {pixelsPerCm, pixelsPerCm / kStoredUnitsPerCm, pixelsPerPoint});
  return true;
}

}  // namespace velk::layout
