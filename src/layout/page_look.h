#pragma once
// The look of the printed page as a print set gives it: the paper, the frames' backgrounds and
// lines, the axes, traces and contour lines, the grid, peak, slice and INADEQUATE lines, the level
// bar, and the font of the axes. Colours are kept as the set stores them (decimal numbers,
// red in the low byte), widths in units of 1/96 inch so that a width of 1 is one screen pixel.
#include <array>

#include "core/settings.h"
#include "display/page_picture.h"
#include "layout/draw_coded_text.h"
#include "layout/page_frames.h"

namespace velk::layout {

inline constexpr double kWidthUnitsPerInch = 96;

struct FrameLook {
  platform::Color background = platform::kWhite;
  bool transparent = true;  // the paper shows through
  platform::Color line = platform::kBlack;
  double lineWidth = 0;  // 0: no line
};

struct PageLook {
  FrameLook paper;
  std::array<FrameLook, kFrameCount> frames{};  // indexed by FrameKind
  platform::Color axis = platform::kBlack, trace = platform::kBlack, parameter = platform::kBlack;
  platform::Color grid = platform::kBlack, peakLine = platform::kBlack, inadequate = platform::kBlack;
  platform::Color sliceLine = platform::kBlack;
  double axisWidth = 1, traceWidth = 1, contourWidth = 1, levelBarWidth = 1;
  double gridWidth = 1, peakLineWidth = 1, inadequateWidth = 1, sliceLineWidth = 1;
  TextFont axisFont;
};

// The look a print set (of PrintSetSchema) describes.
PageLook LookOf(const core::Settings& printSet);

// A font of the set: "AXIS", "PEAK", "PARA" ... with its four keys. The parameter font is the
// person's choice in "Parameter Print" (kept in the settings like the peak list's font); a print
// set read hands it over and a print set saved takes it along.
TextFont PrintSetFont(const core::Settings& printSet, const std::string& group);
void SetPrintSetFont(const TextFont& font, core::Settings& printSet, const std::string& group);
// The parameter font of the default print set.
TextFont DefaultParameterFont();

// A width of the look in device units at the resolution; never thinner than one unit.
int PenWidth(double width, double dotsPerInch);

// The look of the parts around the contour at the resolution.
display::ViewLook ViewLookOf(const PageLook& look, double dotsPerInch);

}  // namespace velk::layout
