#include "model/trace.h"

namespace velk::model {

int TraceAsSpectrum1D(const Spectrum2D& s, int axis, std::int32_t index, Spectrum1D& out) {
  const int across = axis == F2 ? F1 : F2;
  const std::int32_t points = s.axis[axis].Point;
  if (index < 0 || index >= s.axis[across].Point || points < 1) return 1;
  Spectrum1D trace;
  if (AllocateSpectrum1D(trace, points) != 0) return 1;
  const Plane& imaginary = axis == F2 ? s.IR : s.RI;
  const bool hasImaginary = !imaginary.data.empty();
  for (std::int32_t i = 0; i < points; ++i) {
    const std::int32_t column = axis == F2 ? i : index, row = axis == F2 ? index : i;
    trace.re[i] = s.RR.at(column, row);
    trace.im[i] = hasImaginary ? imaginary.at(column, row) : 0.0f;
    trace.axisPpm[i] = s.extras[axis].ppmFirst + i * s.extras[axis].ppmStep;
  }
  trace.mode = axis == F2 ? 1 : 2;
  trace.texts = s.texts;
  trace.params = s.params;
  trace.comment = s.comment;
  trace.params.POINT = points;
  trace.params.FREQU = s.axis[axis].Frequency;
  trace.params.RESOL = s.axis[axis].Resolution;
  trace.params.OFR = static_cast<float>(s.extras[axis].absFreqCenter);
  trace.params.OBNUC = s.extras[axis].nucleus;
  trace.params.SMEXR = s.axis[axis].Reference;
  trace.params.SMTMS = s.axis[axis].RefPoint;
  trace.axisStep = s.extras[axis].ppmStep;
  trace.axisFirst = static_cast<float>(s.extras[axis].ppmFirst);
  out = std::move(trace);
  return 0;
}

}  // namespace velk::model
