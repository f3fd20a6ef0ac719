#pragma once
// The traces of the two side panels: projections of the 2D spectrum, slices through it, and the
// drawing of a trace thinned to the pixels of its panel.
#include <string>
#include <vector>

#include "display/contour.h"
#include "display/display_state.h"
#include "model/spectrum.h"
#include "platform/surface.h"

namespace velk::display {

enum class TraceKind { None, HighResolution1D, Projection, ProjectionPosNeg };

// One entry per point of the axis; max and min scale the panel.
struct Projection {
  std::vector<float> positive;
  std::vector<float> negative;  // filled for the positive and negative projection only
  float max = 0.01f;
  float min = 0.0f;
};

// For every F2 point the largest value along F1 (MakeProjectionF2), or for every F1 point along F2
// (MakeProjectionF1): of the four-quadrant magnitude for a power display, of the two-quadrant one
// for VPH_HMBC, otherwise of RR, with the smallest RR in `negative` when both signs are asked for.
Projection MakeProjectionF2(const model::Spectrum2D& s, int pulseModeClass, const ContourSetting& setting,
                            bool withNegative);
Projection MakeProjectionF1(const model::Spectrum2D& s, int pulseModeClass, const ContourSetting& setting,
                            bool withNegative);

// The RR row or column that a slice cursor crosses, and the caption of the panel.
std::vector<float> SliceAlongF2(const model::Spectrum2D& s, int row);
std::vector<float> SliceAlongF1(const model::Spectrum2D& s, int column);
std::string SliceCaption(bool f1, float ppm);

// Where and how a trace is drawn: the panel, the window of its axis, the value range of the panel
// and whether the axis runs down the panel (the F1 trace) rather than across it.
struct TracePanel {
  Rect rect;
  float viewStart = 0;  // the axis value at the left (F2) or top (F1) of the panel
  float viewEnd = 0;
  float valueLow = 0;   // the value at the panel's base line side
  float valueHigh = 1;  // at the far side: the top (F2) or the left (F1)
  bool vertical = false;
};

// The polyline of a trace, at most two points per pixel along the axis: the least and the largest
// value of the points that fall on that pixel, in the order in which the data pass them.
std::vector<platform::Point> ThinTrace(const TracePanel& panel, const std::vector<float>& ppm,
                                       const std::vector<float>& values, int points);

// One press of a panel's scale arrow: times 1.1 up, divided by 1.1 down, never below 0.001. With
// "Stop at 1.0 on Expand/Reduce" a step that passes 1.0 stops on it. The panel's full scale is the
// projection's maximum times this factor.
float StepPanelFactor(float factor, bool up, bool stopAtOne);

void DrawTrace(platform::Surface& surface, const TracePanel& panel, const std::vector<float>& ppm,
               const std::vector<float>& values, int points, platform::Color color, int width);

}  // namespace velk::display
