#pragma once
// The printed page: the comment, the contour with its axes, traces and level bar, the parameter
// block and the annotation objects, drawn on any surface at any resolution.
#include <optional>
#include <string>
#include <string_view>

#include "display/page_picture.h"
#include "layout/layout_document.h"
#include "layout/parameter_macros.h"
#include "platform/progress.h"

namespace velk::layout {

struct Paper {
  double widthCm = 21, heightCm = 29.7;  // A4 portrait
};
// "A4", "A3", "A5", "B4", "B5" (JIS B sizes), turned for landscape; nothing for another name.
std::optional<Paper> PaperOf(std::string_view name, bool landscape);

struct PageContent {
  const display::MainViewInput& view;
  const ParameterList& parameters;
  const ParameterSource& source;
  std::string comment;  // coded or plain
  const LayoutDocument& objects;
};

// Where the parts of the default page lie, in centimetres from the page's top-left corner.
struct PageFrames {
  double commentX, commentY;
  double spectrumX, spectrumY, spectrumWidth, spectrumHeight;
  double parameterX, parameterY, parameterWidth;
};
PageFrames DefaultFrames(const Paper& paper);

// The device size of the page at the resolution.
platform::Extent PageExtent(const Paper& paper, double dotsPerInch);

// Draws the page; false when the spectrum could not be drawn (an empty window, or quit).
bool RenderPage(platform::Surface& surface, const PageContent& content, const Paper& paper, double dotsPerInch,
                platform::Progress& progress);

}  // namespace velk::layout
