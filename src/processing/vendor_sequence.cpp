#include "processing/vendor_sequence.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "model/data_type.h"
#include "processing/burg_prediction.h"
#include "processing/fft_kernel.h"
#include "processing/parallel.h"
#include "processing/sequence_stages.h"
#include "processing/transform_support.h"
#include "processing/vendor_window.h"

namespace velk::processing {
namespace {

using model::F1;
using model::F2;
using cd = std::complex<double>;

bool PowerOfTwo(std::int32_t n) { return n >= 2 && (n & (n - 1)) == 0; }

// The F2 plan: the points the recipe uses, the filter's whole points moved to the end, its
// fraction and the stored phases as rotation; echo/anti-echo sets turned by a quarter so that the
// stored phases refer to the same combination as the spectrometer's.
VendorTracePlan PlanF2(const model::Spectrum2D& s, const SequenceSettings& settings, std::int32_t size) {
  const model::VendorAxisRecipe& r = settings.vendor->axis[F2];
  VendorTracePlan p;
  p.size = size;
  p.points = std::min(s.extras[F2].fidPoints, r.tdEff > 0 ? r.tdEff / 2 : s.extras[F2].fidPoints);
  p.predictTo = p.points;
  const double delay = s.vendor.groupDelay > 0 ? s.vendor.groupDelay : 0.0;
  p.onset = std::clamp(static_cast<std::int32_t>(delay), 0, p.points);
  p.leftShift = std::clamp(r.leftShift, -p.points, p.points);
  p.window = VendorWindowCurve(r, s.axis[F2].Frequency, p.points - p.onset);
  p.firstPoint = static_cast<float>(r.fcor);
  p.conjugate = ConjugateF2(settings.pulseModeClass, settings.formatNumber, settings.axis[F2].singleAd);
  VendorRotation(p, r.phc0, r.phc1, delay - p.onset, s.vendor.echoAntiechoCombined ? 90.0 : 0.0);
  return p;
}

// The F1 plan: forward prediction to the recipe's length (counted in rows of the file, two rows
// per complex point on phase-sensitive sets) before the window.
VendorTracePlan PlanF1(const model::Spectrum2D& s, const SequenceSettings& settings, std::int32_t size, bool phase) {
  const model::VendorAxisRecipe& r = settings.vendor->axis[F1];
  const std::int32_t rowsPerPoint = phase ? 2 : 1;
  VendorTracePlan p;
  p.size = size;
  p.points = std::clamp(s.extras[F1].fidPoints, 0, size);
  p.predictTo = p.points;
  if ((r.predictionMode == 1 || r.predictionMode == 2) && r.ncoef > 0) {
    p.predictTo = r.lpbin > 0 ? r.lpbin / rowsPerPoint : 2 * p.points;
    p.order = r.ncoef / 2;
  }
  if (r.tdEff > 0) p.predictTo = std::min(p.predictTo, std::max(r.tdEff / rowsPerPoint, p.points));
  p.predictTo = std::clamp(p.predictTo, p.points, size);
  p.leftShift = std::clamp(r.leftShift, -p.points, p.points);
  p.window = VendorWindowCurve(r, s.axis[F1].Frequency, p.predictTo);
  p.firstPoint = static_cast<float>(r.fcor);
  p.conjugate = ConjugateF1(settings.pulseModeClass, settings.formatNumber, settings.f1Inverse);
  VendorRotation(p, r.phc0, r.phc1, 0, 0);
  return p;
}

// Rows 0 .. rows-1 of the plane pair, or columns 0 .. columns-1 when alongF1.
bool TransformAll(model::Plane& X, model::Plane& Y, const VendorTracePlan& plan, std::int32_t count, bool alongF1,
                  const Workers& workers) {
  const int threads = ResolveThreads(workers.threads);
  std::vector<std::vector<cd>> scratch(threads, std::vector<cd>(static_cast<std::size_t>(plan.size)));
  const std::ptrdiff_t step = alongF1 ? X.stride : 1;
  return ForEachChunk(count, 1, threads, ProgressOf(workers), [&](std::int64_t first, std::int32_t, int worker) {
    const auto i = static_cast<std::int32_t>(first);
    float* re = alongF1 ? &X.at(i, 0) : X.row(i).data();
    float* im = alongF1 ? &Y.at(i, 0) : Y.row(i).data();
    VendorTransformTrace(plan, re, im, step, scratch[worker]);
  });
}

// The magnitude of the absolute path into RR.
void Magnitude(model::Spectrum2D& s, std::int32_t n1, std::int32_t n2) {
  for (std::int32_t j = 0; j < n1; ++j)
    for (std::int32_t i = 0; i < n2; ++i) s.RR.at(i, j) = std::hypot(s.RR.at(i, j), s.IR.at(i, j));
}

std::string AxisLine(const char* axis, const model::VendorAxisRecipe& r) {
  static constexpr const char* kWindows[] = {"none", "EM", "GM", "SINE", "QSINE", "TRAP"};
  const char* window = r.window >= 0 && r.window <= 5 ? kWindows[r.window] : "none";
  char text[200];
  std::snprintf(text, sizeof text, "%s SI %d WDW %s LB %g GB %g SSB %g TDeff %d PHC0 %g PHC1 %g FCOR %g", axis,
                r.si, window, r.lb, r.gb, r.ssb, r.tdEff, r.phc0, r.phc1, r.fcor);
  return text;
}

// Varian's names: the stored phases go back from the form they are kept in (see the reader).
std::string VarianAxisLine(const char* axis, const model::VendorAxisRecipe& r) {
  char text[260];
  const int n = std::snprintf(text, sizeof text, "%s fn %d lb %g gf %g gfs %g sb %g sbs %g lsfid %d rp %g lp %g",
                              axis, 2 * r.si, r.lb, r.gf, r.gfs, r.sb, r.sbs, r.leftShift, r.phc0 + r.phc1, -r.phc1);
  if (r.predictionMode != 0 && n > 0 && n < static_cast<int>(sizeof text))
    std::snprintf(text + n, sizeof text - n, " prediction order %d to %d rows", r.ncoef / 2, r.lpbin);
  return text;
}

SequenceResult Finish(model::Spectrum2D& s, SequenceSettings& settings) {
  SequenceResult result;
  result.fftDate = FinalStage(s, settings, false);
  // The recipe goes into the free lines at the end of the processing text.
  const auto lines = VendorRecipeLines(*settings.vendor);
  std::size_t slot = s.processing.size();
  while (slot > 0 && s.processing[slot - 1].empty()) --slot;
  for (std::size_t i = 0; i < lines.size() && slot + i < s.processing.size(); ++i) s.processing[slot + i] = lines[i];
  return result;
}

}  // namespace

SequenceSettings VendorSequenceSettings(const model::Spectrum2D& s, const model::VendorRecipe& recipe,
                                        int pulseModeClass, int formatNumber) {
  SequenceSettings settings = MakeSequenceSettings(s, pulseModeClass, formatNumber);
  for (model::Axis a : {F1, F2})
    if (!PowerOfTwo(recipe.axis[a].si) || !PowerOfTwo(settings.axis[a].baseSize)) return settings;
  for (model::Axis a : {F1, F2}) {
    AxisProcessing& p = settings.axis[a];
    const std::int32_t si = recipe.axis[a].si;
    if (si < p.baseSize) p.baseSize = si;
    p.zeroFill = si / p.baseSize;
  }
  settings.vendor = recipe;
  settings.f2Only = recipe.axis[F1].ftMode == 0 || !s.vendor.series.empty();
  return settings;
}

void VendorRotation(VendorTracePlan& plan, double phc0, double phc1, double delay, double extra0) {
  const std::int32_t n = plan.size;
  plan.cosine.assign(n, 1.0);
  plan.sine.assign(n, 0.0);
  for (std::int32_t k = 0; k < n; ++k) {
    const double stored = -(phc0 + phc1 * static_cast<double>(n - k) / n);
    const double shift = 360.0 * delay * (k - n / 2) / n;
    const double angle = (stored + shift + extra0) * kDegree;
    plan.cosine[k] = std::cos(angle);
    plan.sine[k] = std::sin(angle);
  }
}

void VendorTransformTrace(const VendorTracePlan& p, float* re, float* im, std::ptrdiff_t step,
                          std::vector<cd>& x) {
  const std::int32_t n = p.size;
  const std::int32_t length = std::max(p.predictTo, p.points);
  x.assign(static_cast<std::size_t>(std::max(n, length)), cd{});
  const double sign = p.conjugate ? -1.0 : 1.0;
  for (std::int32_t i = 0; i < p.points; ++i)
    if (const std::int32_t to = i - p.leftShift; to >= 0 && to < static_cast<std::int32_t>(x.size()))
      x[to] = {re[i * step], sign * im[i * step]};
  if (p.order > 0) BurgExtend(x.data(), p.points, p.predictTo, p.order);
  // The filter's onset goes behind the zero fill, where it wraps round to just before time zero.
  std::vector<cd> onset(x.begin(), x.begin() + p.onset);
  const std::int32_t used = std::min<std::int32_t>(length - p.onset, n - p.onset);
  for (std::int32_t i = 0; i < used; ++i) x[i] = x[i + p.onset] * static_cast<double>(p.window[i]);
  std::fill(x.begin() + std::max(used, 0), x.end(), cd{});
  if (used > 0) x[0] *= p.firstPoint;
  std::copy(onset.begin(), onset.end(), x.begin() + (n - p.onset));
  std::vector<double> xr(n), xi(n);
  for (std::int32_t i = 0; i < n; ++i) xr[i] = x[i].real(), xi[i] = x[i].imag();
  FftKernel(xr.data(), xi.data(), n);
  HalfSwap(xr.data(), xi.data(), n);
  for (std::int32_t k = 0; k < n; ++k) {
    const double c = p.cosine.empty() ? 1 : p.cosine[k], s = p.cosine.empty() ? 0 : p.sine[k];
    re[k * step] = static_cast<float>(xr[k] * c - xi[k] * s);
    im[k * step] = static_cast<float>(xr[k] * s + xi[k] * c);
  }
}

SequenceResult ExecuteVendorFft(model::Spectrum2D& s, SequenceSettings& settings, const SequenceRun& run) {
  run.list.assign({"Current Process", "F2FFT"});
  for (AxisProcessing& a : settings.axis) a.lpFactor = 1;
  if (auto out = Resize(s, settings); !out.ok()) return Cancelled(out.message);
  const std::int32_t n1 = CurrentSize(settings.axis[F1]), n2 = CurrentSize(settings.axis[F2]);
  const bool phase = model::IsPhaseSensitive(settings.pulseModeClass);
  const Workers workers{settings.threads, &run.progress};
  const std::int32_t rows = std::clamp(s.extras[F1].fidPoints, 0, n1);
  const VendorTracePlan f2 = PlanF2(s, settings, n2);
  if (run.onCaption) run.onCaption("F2FFT");
  if (!TransformAll(s.RR, s.IR, f2, rows, false, workers)) return Cancelled();
  if (phase && !TransformAll(s.RI, s.II, f2, rows, false, workers)) return Cancelled();
  s.axis[F2].Resolution /= settings.axis[F2].zeroFill;
  if (settings.f2Only) return Finish(s, settings);
  run.list.push_back("F1FFT");
  if (run.onCaption) run.onCaption("F1FFT");
  const VendorTracePlan f1 = PlanF1(s, settings, n1, phase);
  if (!TransformAll(s.RR, phase ? s.RI : s.IR, f1, n2, true, workers)) return Cancelled();
  if (phase && !TransformAll(s.IR, s.II, f1, n2, true, workers)) return Cancelled();
  s.axis[F1].Resolution /= settings.axis[F1].zeroFill;
  if (!phase) Magnitude(s, n1, n2);
  return Finish(s, settings);
}

std::vector<std::string> VendorRecipeLines(const model::VendorRecipe& recipe) {
  if (recipe.family == model::kVarianRecipe)
    return {"Vendor recipe " + recipe.source, VarianAxisLine("(F2)", recipe.axis[F2]),
            VarianAxisLine("(F1)", recipe.axis[F1])};
  static constexpr const char* kSchemes[] = {"QF", "QSEQ", "TPPI", "States", "States-TPPI", "Echo-Antiecho"};
  const auto& f1 = recipe.axis[F1];
  char prediction[120];
  std::snprintf(prediction, sizeof prediction, "Vendor F1 %s, prediction ME_mod %d NCOEF %d LPBIN %d",
                recipe.f1Scheme >= 0 && recipe.f1Scheme <= 5 ? kSchemes[recipe.f1Scheme] : "unknown",
                f1.predictionMode, f1.ncoef, f1.lpbin);
  return {"Vendor recipe " + recipe.source, AxisLine("(F2)", recipe.axis[F2]), AxisLine("(F1)", f1), prediction};
}

}  // namespace velk::processing
