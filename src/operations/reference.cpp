#include "operations/reference.h"

#include <cmath>
#include <cstdio>

#include "model/data_type.h"
#include "operations/messages.h"

namespace velk::operations {
namespace {

using model::F1;
using model::F2;

// The shift of a frequency on the scale of a 0 ppm frequency, both in MHz.
double ShiftOf(double frequency, double zeroPpm) { return (frequency - zeroPpm) / zeroPpm * 1e6; }

// A view limit moved with its axis: kept on the same (fractional) data point.
void MoveLimit(float& limit, double oldFirst, double newFirst, double step) {
  if (step == 0) return;
  const double point = (limit - oldFirst) / step;
  limit = static_cast<float>(point * step + newFirst);
}

}  // namespace

ReferenceValues CurrentReference(const model::Spectrum2D& s) {
  return {AxisReference{s.axis[F1].Reference, s.axis[F1].RefPoint},
          AxisReference{s.axis[F2].Reference, s.axis[F2].RefPoint}};
}

ReferenceState SaveReferenceState(const model::Spectrum2D& s) {
  return {CurrentReference(s), {s.extras[F1].absFreq0ppm, s.extras[F2].absFreq0ppm},
          {s.extras[F1].ppmFirst, s.extras[F2].ppmFirst}};
}

void RestoreReferenceState(model::Spectrum2D& s, display::DisplayState& view, const ReferenceState& state) {
  ApplyReference(s, view, state.values);
  // The first positions as they were, not as recomputed from the reference point.
  for (model::Axis a : {F1, F2}) {
    s.extras[a].absFreq0ppm = state.zeroPpm[a];
    if (s.axis[a].Point > 0) s.extras[a].ppmFirst = state.ppmFirst[a];
  }
  model::RebuildPpmTables(s);
}

void ApplyReference(model::Spectrum2D& s, display::DisplayState& view, const ReferenceValues& values) {
  std::array<float*, 2> starts{&view.ViewF1Start, &view.ViewF2Start};
  std::array<float*, 2> ends{&view.ViewF1End, &view.ViewF2End};
  for (model::Axis a : {F1, F2}) {
    if (s.axis[a].Point <= 0) continue;
    model::AxisExtras& e = s.extras[a];
    const double oldFirst = e.ppmFirst;
    s.axis[a].Reference = values[a].Reference;
    s.axis[a].RefPoint = values[a].RefPoint;
    e.ppmFirst = static_cast<double>(values[a].Reference) - values[a].RefPoint * e.ppmStep;
    MoveLimit(*starts[a], oldFirst, e.ppmFirst, e.ppmStep);
    MoveLimit(*ends[a], oldFirst, e.ppmFirst, e.ppmStep);
  }
  model::RebuildPpmTables(s);
}

void ApplyReference(model::Spectrum2D& s, display::DisplayState& view, float referenceF2, std::int32_t refPointF2,
                    float referenceF1, std::int32_t refPointF1) {
  ApplyReference(s, view,
                 ReferenceValues{AxisReference{referenceF1, refPointF1}, AxisReference{referenceF2, refPointF2}});
}

std::string FormatShift(double ppm) {
  char text[64];
  std::snprintf(text, sizeof text, "%.4f", ppm);
  std::string s = text;
  while (s.size() > 1 && s.back() == '0' && s[s.size() - 2] != '.') s.pop_back();
  return s;
}

std::int32_t CentrePoint(std::int32_t points) { return static_cast<std::int32_t>(std::lrint(points / 2.0)); }

bool HoldsCentreFrequency(const model::Spectrum1D& trace) {
  return trace.params.POINT > 0 && !trace.re.empty() && trace.absFreqCenter > 0 && trace.absFreq0ppm > 0;
}

platform::Outcome SetReferenceByCenter(model::Spectrum2D& s, display::DisplayState& view, model::Axis axis,
                                       const model::Spectrum1D& trace) {
  if (!HoldsCentreFrequency(trace)) return {1, {}};
  ReferenceValues values = CurrentReference(s);
  values[axis] = {static_cast<float>(ShiftOf(trace.absFreqCenter, trace.absFreq0ppm)), CentrePoint(s.axis[axis].Point)};
  ApplyReference(s, view, values);
  return {};
}

platform::Outcome SetReferenceByInstrument(model::Spectrum2D& s, display::DisplayState& view, int pulseModeClass,
                                           std::optional<double> zeroPpmF2, std::optional<double> zeroPpmF1) {
  if (model::IsHomonuclear(pulseModeClass)) zeroPpmF1 = zeroPpmF2;
  const std::array<std::optional<double>, 2> zero{zeroPpmF1, zeroPpmF2};
  for (model::Axis a : {F1, F2})
    if (!zero[a] || !(*zero[a] > 0) || !(s.extras[a].absFreqCenter > 0))
      return {1,
              {std::string(messages::kReferenceTitle),
               std::string(a == F1 ? "F1" : "F2") + std::string(messages::kFrequencyMissing), platform::Buttons::Ok,
               platform::Icon::Information, false}};
  ReferenceValues values;
  for (model::Axis a : {F1, F2}) {
    s.extras[a].absFreq0ppm = *zero[a];
    values[a] = {static_cast<float>(ShiftOf(s.extras[a].absFreqCenter, *zero[a])), CentrePoint(s.axis[a].Point)};
  }
  ApplyReference(s, view, values);
  return {};
}

}  // namespace velk::operations
