#include "processing/trace_transform.h"
#include "model/data_type.h"

#include <algorithm>
#include <cmath>

#include "processing/fft_kernel.h"
#include "processing/transforms.h"

namespace velk::processing {

bool TraceConjugate(const TraceView& v) {
  const bool bruker = model::IsBrukerFormat(v.formatNumber);
  // A column takes the sign the F1 transform of the run gives it, so that the F1 view shows its
  // peaks where the spectrum will have them.
  if (v.axis == model::F1)
    return v.f1SingleAd && v.brukerData ? ConjugateF1Sequential(v.pulseModeClass)
                                        : ConjugateF1(v.pulseModeClass, v.formatNumber, v.f1Inverse);
  if (v.fidShift < 0) return !(v.brukerData && (v.pulseModeClass == model::VPH_HOMO || v.pulseModeClass == model::VPH_HETERO ||
                                                   v.pulseModeClass == model::V_HETERO));
  const bool usualClass = model::IsKnownClass(v.pulseModeClass) && v.pulseModeClass != model::VPH_HMBC;
  return !(bruker && usualClass);
}

TraceScale TransformTrace(float* re, float* im, const WindowCurve& w, const TraceView& v) {
  TraceScale scale;
  const std::int32_t n = v.size;
  if (n < 1) return scale;
  const float* W = w.fromZero();
  const bool conjugate = TraceConjugate(v);
  if (v.axis == model::F1 && v.f1SingleAd && v.brukerData) {
    std::vector<double> scratch(static_cast<std::size_t>(n) * 4);
    TransformSequentialTrace(re, im, n, conjugate, W, scratch.data());
  } else {
    const std::int32_t shift = v.axis == model::F2 ? v.fidShift : 0;
    std::vector<float> inRe(re, re + n), inIm(im, im + n);
    const float sign = conjugate ? -1.0f : 1.0f;
    for (std::int32_t i = 0; i < n; ++i) {
      const std::int32_t from = i + shift;
      const bool inside = from >= 0 && from < n;
      re[i] = inside ? inRe[from] * W[i] : 0.0f;
      im[i] = inside ? sign * inIm[from] * W[i] : 0.0f;
    }
    FftKernel(re, im, n);
    HalfSwap(re, im, n);
  }
  scale.x.resize(n);
  for (std::int32_t i = 0; i < n; ++i) scale.x[i] = static_cast<float>(i * (v.span / n / v.zeroFill));
  float largest = 0.1f;
  for (std::int32_t i = 0; i < n; ++i) largest = std::max(largest, re[i] * re[i] + im[i] * im[i]);
  scale.yMaximum = std::sqrt(largest) * 2;
  scale.ySpan = scale.yMaximum / v.yMultiplier;
  return scale;
}

}  // namespace velk::processing
