#pragma once
// The chemical shift scale of each axis is a line through one reference point: position i lies at
// (i - RefPoint) * step + Reference, with the axis's own ppm step. Changing the reference moves
// only the scale: every peak stays at its data point, and the shown window keeps the same data.
#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "display/display_state.h"
#include "model/spectrum.h"
#include "platform/message.h"

namespace velk::operations {

struct AxisReference {
  float Reference = 0;       // ppm at RefPoint
  std::int32_t RefPoint = 0;  // data point of the axis
  friend bool operator==(const AxisReference&, const AxisReference&) = default;
};
using ReferenceValues = std::array<AxisReference, 2>;  // F1 first, like the axes

ReferenceValues CurrentReference(const model::Spectrum2D& s);

// Everything a reference change touches on the axes (the instrument form sets the 0 ppm
// frequencies as well), kept so that it can be put back to the last bit.
struct ReferenceState {
  ReferenceValues values;
  std::array<double, 2> zeroPpm{};   // "Abs Freq(0ppm)", MHz
  std::array<double, 2> ppmFirst{};  // where each position table begins
  friend bool operator==(const ReferenceState&, const ReferenceState&) = default;
};
ReferenceState SaveReferenceState(const model::Spectrum2D& s);
// The axes as they were saved, with the view limits moved to stay on the same data.
void RestoreReferenceState(model::Spectrum2D& s, display::DisplayState& view, const ReferenceState& state);

// Stores the new reference of both axes, rewrites their position tables, and moves the four view
// limits so that they stay on the same data points. An axis without points is left alone.
void ApplyReference(model::Spectrum2D& s, display::DisplayState& view, float referenceF2, std::int32_t refPointF2,
                    float referenceF1, std::int32_t refPointF1);
void ApplyReference(model::Spectrum2D& s, display::DisplayState& view, const ReferenceValues& values);

// A shift as the reference fields show it ("#####0.0###": at least one decimal, at most four).
std::string FormatShift(double ppm);

// The centre point of an axis of n points, where the transform puts the carrier.
std::int32_t CentrePoint(std::int32_t points);

// The high resolution 1D record of an axis holds data with the frequencies that "Set Center"
// needs.
bool HoldsCentreFrequency(const model::Spectrum1D& trace);

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
