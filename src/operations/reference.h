#pragma once
// The chemical shift scale of each axis is a line through one reference point: position i lies at
// (i - RefPoint) * step + Reference, with the axis's own ppm step. Changing the reference moves
// only the scale: every peak stays at its data point, and the shown window keeps the same data.
#include <array>
#include <cstdint>
#include <optional>

#include "display/display_state.h"
#include "model/spectrum.h"
#include "platform/message.h"

namespace velk::operations {

struct AxisReference {
  float Reference = 0;       // ppm at RefPoint
  std::int32_t RefPoint = 0;  // data point of the axis
};
using ReferenceValues = std::array<AxisReference, 2>;  // F1 first, like the axes

ReferenceValues CurrentReference(const model::Spectrum2D& s);

// Stores the new reference of both axes, rewrites their position tables, and moves the four view
// limits so that they stay on the same data points. An axis without points is left alone.
void ApplyReference(model::Spectrum2D& s, display::DisplayState& view, float referenceF2, std::int32_t refPointF2,
                    float referenceF1, std::int32_t refPointF1);
void ApplyReference(model::Spectrum2D& s, display::DisplayState& view, const ReferenceValues& values);

// The centre point of an axis of n points, where the transform puts the carrier.
std::int32_t CentrePoint(std::int32_t points);

// The centre of the axis takes the shift of the 1D record's centre frequency on that record's own
// 0 ppm frequency. Refused (code 1, nothing changed) when the record holds no frequencies.
platform::Outcome SetReferenceByCenter(model::Spectrum2D& s, display::DisplayState& view, model::Axis axis,
                                       const model::Spectrum1D& trace);

// The instruments' 0 ppm frequencies (MHz) chosen for each axis set the shift of each axis's
// centre frequency, and become the axes' 0 ppm frequencies. Homonuclear classes take the F2 value
// for both axes. A missing frequency ends the command without change, with a message saying so.
platform::Outcome SetReferenceByInstrument(model::Spectrum2D& s, display::DisplayState& view, int pulseModeClass,
                                           std::optional<double> zeroPpmF2, std::optional<double> zeroPpmF1);

}  // namespace velk::operations
