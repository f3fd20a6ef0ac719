#pragma once
// The picture of the main view without the window around it: the contour with both axes, the F2
// trace above it, the F1 trace beside it and the level bar, composed as the main window shows them.
#include <string>

#include "display/axes.h"
#include "display/contour.h"
#include "display/display_state.h"
#include "display/traces.h"
#include "model/spectrum.h"
#include "platform/progress.h"
#include "platform/surface.h"

namespace velk::display {

struct MainViewInput {
  const model::Spectrum2D& spectrum;
  int pulseModeClass;
  const ContourSetting& setting;
  DisplayState view;  // the window in ppm
  TraceKind traces = TraceKind::Projection;
  std::string captionF2;
  std::string captionF1;
  // "High Resolution 1D Data": the 1D sets read beside the 2D; a panel without one keeps its projection.
  const model::Spectrum1D* companionF2 = nullptr;
  const model::Spectrum1D* companionF1 = nullptr;
  const GridSetting* grid = nullptr;  // the lattice the window lays over the contour; the page prints it
};

// How the lines and texts around the contour are drawn; the defaults are the main window's.
struct ViewLook {
  platform::Color frameContour = 0x808080, frameF2 = 0x808080, frameF1 = 0x808080;
  int frameWidth = 1;  // 0: no frame lines
  platform::Color axis = platform::kBlack;
  int axisWidth = 1;
  platform::Font font;  // axes and level bar; its height is the layout's text height
  platform::Color trace = platform::kBlack;
  int traceWidth = 1;
  int contourWidth = 1;  // the lines of a line contour
  int levelBarWidth = 1;
};

// Where the parts of the picture go on a surface of the given size.
struct MainViewLayout {
  Rect contour, axisF2, axisF1, traceF2, traceF1, levelBar;
  int textHeight = 12;
};
MainViewLayout LayOutMainView(platform::Extent size, bool withTraces);

// Everything around the contour: its frame, both axes, the two side panels and the level bar. A
// panel shows the projection, or the slice through the point of a slice cursor with its caption.
void DrawSurround(platform::Surface& surface, const MainViewLayout& layout, const MainViewInput& input,
                  const LevelTable& levels, const Projection& f2, const Projection& f1, const ViewLook& look = {});

// A 1D set over the panel of its axis, on its own points and scale; false when it has none.
bool DrawCompanionTrace(platform::Surface& surface, const model::Spectrum1D* set, TracePanel panel,
                        const ViewLook& look = {});

// Draws the whole picture; false when the window spans less than a point or the user quit.
bool DrawMainView(platform::Surface& surface, platform::Extent size, const MainViewInput& input,
                  platform::Progress& progress);
// The same in places given by the caller (the printed page's frames); a trace panel or level bar
// of no area is left out.
bool DrawMainViewIn(platform::Surface& surface, const MainViewLayout& layout, const MainViewInput& input,
                    platform::Progress& progress, const ViewLook& look = {});

}  // namespace velk::display
