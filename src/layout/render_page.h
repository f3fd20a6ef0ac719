#pragma once
// The printed page: the comment, the contour with its axes, traces and level bar, the parameter
// block and the annotation objects, drawn on any surface at any resolution.
#include <optional>
#include <string>
#include <string_view>

#include "core/settings.h"
#include "display/page_picture.h"
#include "layout/layout_document.h"
#include "layout/page_frames.h"
#include "layout/page_look.h"
#include "layout/paint_objects.h"
#include "layout/parameter_macros.h"
#include "layout/render_parameter_list.h"
#include "platform/progress.h"

namespace velk::layout {

struct PageContent {
  const display::MainViewInput& view;
  const ParameterList& parameters;
  const ParameterSource& source;
  std::string comment;  // coded or plain
  const LayoutDocument& objects;
  const PageFrames* frames = nullptr;       // the default page's frames when none are given
  const PictureDecoder* pictures = nullptr;  // without one, image objects are not drawn
  const core::Settings* printSet = nullptr;  // the look; the default print set when none is given
  TextFont parameterFont = DefaultParameterFont();  // the choice of "Parameter Print"
  int decimalColumn = kDefaultDecimalColumn;
};

// The window's view as the page shows it: the slice cursors and their traces as they are, the grid
// only while "PRINT GRID" of the 2D settings is on.
inline constexpr std::string_view kPrintGridKey = "PRINT GRID";
display::MainViewInput PageViewOf(display::MainViewInput window, const core::Settings& settings2D);

// Page centimetres to device units at the resolution.
PageScale ScaleOf(double dotsPerInch);

// The device size of the page at the resolution.
platform::Extent PageExtent(const Paper& paper, double dotsPerInch);

// Draws the page in the print set's look: the paper, each shown frame with its background and
// line, the comment, the spectrum in its frame with the axes along its lower and right edges, the
// traces and level bar in theirs, the parameter block in two columns, and the objects on top. False when the spectrum could not be drawn (an empty window, or quit).
bool RenderPage(platform::Surface& surface, const PageContent& content, const Paper& paper, double dotsPerInch,
                platform::Progress& progress);

}  // namespace velk::layout
