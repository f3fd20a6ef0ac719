#pragma once
// The preview transform of the one trace the FT window shows: the same window, shift and sign as
// the matrix transforms (with the preview's own sign rule), then its X table and Y scale.
#include <cstdint>
#include <vector>

#include "model/spectrum.h"
#include "processing/window.h"

namespace velk::processing {

struct TraceView {
  model::Axis axis = model::F2;
  double span = 0;           // Hz
  std::int32_t size = 0;     // N
  std::int32_t zeroFill = 1;
  std::int32_t fidShift = 0;  // F2 only
  int pulseModeClass = 0;
  int formatNumber = 0;
  bool brukerData = false;
  bool f1SingleAd = false;
  bool f1Inverse = false;
  float yMultiplier = 1.0f;  // "Y-Span"
};

struct TraceScale {
  std::vector<float> x;  // i * span / N / zero fill
  float yMaximum = 0;    // twice the largest modulus (at least sqrt(0.1))
  float ySpan = 0;
};

// Whether the preview negates the imaginary part.
bool TraceConjugate(const TraceView& v);

// In place on re/im (at least N points, holding the trace as read); nothing happens for N < 1.
TraceScale TransformTrace(float* re, float* im, const WindowCurve& w, const TraceView& v);

}  // namespace velk::processing
