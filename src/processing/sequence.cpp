#include "processing/sequence.h"
#include "model/data_type.h"

#include <algorithm>
#include <cmath>

#include "processing/fid_corrections.h"
#include "processing/lp_form.h"
#include "processing/messages.h"
#include "processing/sequence_stages.h"
#include "processing/transforms.h"
#include "processing/vendor_sequence.h"

namespace velk::processing {
namespace {

using model::F1;
using model::F2;
using model::Plane;
using model::Spectrum2D;

constexpr std::int32_t kMaxF1ByDoubling = 8192;
constexpr std::int64_t kMaxPointsInAll = 33554432;

platform::Message DataSizeMessage() {
  return {std::string(messages::kDataSizeTooLarge), std::string(messages::kDataSizeError), platform::Buttons::Ok,
          platform::Icon::Warning, true};
}

// Re-dimensions the planes to at least columns x rows (128 at least), keeping what is there.
bool Redimension(Spectrum2D& s, std::int32_t columns, std::int32_t rows) {
  columns = std::max(columns, model::kMinAxisPoints);
  rows = std::max(rows, model::kMinAxisPoints);
  if (s.RR.stride == columns && s.RR.rows == rows) return true;
  try {
    std::array<Plane, 4> fresh;
    const std::array<Plane*, 4> old{&s.RR, &s.IR, &s.RI, &s.II};
    for (int p = 0; p < 4; ++p) {
      fresh[p].stride = columns;
      fresh[p].rows = rows;
      fresh[p].data.assign(static_cast<std::size_t>(columns) * rows, 0.0f);
      const std::int32_t keepRows = std::min(rows, old[p]->rows), keepColumns = std::min(columns, old[p]->stride);
      for (std::int32_t r = 0; r < keepRows; ++r)
        std::copy_n(old[p]->row(r).data(), keepColumns, fresh[p].row(r).data());
    }
    std::vector<float> ppmF2(columns, 0.0f), ppmF1(rows, 0.0f);
    for (int p = 0; p < 4; ++p) *old[p] = std::move(fresh[p]);
    s.ppmF2 = std::move(ppmF2);
    s.ppmF1 = std::move(ppmF1);
  } catch (const std::exception&) {
    return false;
  }
  return true;
}

bool PowerOfTwo(std::int32_t n) { return n >= 2 && (n & (n - 1)) == 0; }


// Doubles one factor of an axis, within the limits; `which` points at the zero-fill or LP factor.
platform::Outcome Double(Spectrum2D& s, SequenceSettings& settings, model::Axis axis, std::int32_t AxisProcessing::*which) {
  AxisProcessing& a = settings.axis[axis];
  const std::int32_t n1 = CurrentSize(settings.axis[F1]), n2 = CurrentSize(settings.axis[F2]);
  const bool tooLarge = axis == F1 ? (n1 * 2 > kMaxF1ByDoubling || std::int64_t(n2) * 2 * n1 > kMaxPointsInAll)
                                   : std::int64_t(n2) * 2 * n1 > kMaxPointsInAll;
  if (tooLarge) return {1, {}};
  const AxisProcessing before = a;
  a.*which = a.*which < 1 ? 2 : a.*which * 2;
  if (which == &AxisProcessing::zeroFill) {
    a.lpFactor = 1;
    a.lp.ForwardOn = 0;
  } else {
    a.lp.ForwardOn = 1;
  }
  platform::Outcome out = Resize(s, settings);
  if (!out.ok()) a = before;
  return out;
}

platform::Outcome Curve(const WindowFunctionSetting& setting, const WindowAxis& axis, WindowCurve& curve) {
  if (MakeWindowCurve(setting, axis, curve) == 0) return {};
  return {1, {std::string(messages::kArithmeticTitle), std::string(messages::kWindowDividesByZero)}};
}

platform::Outcome AxisWindow(const Spectrum2D& s, const SequenceSettings& settings, model::Axis axis, WindowCurve& curve) {
  const AxisProcessing& a = settings.axis[axis];
  const std::int32_t size = CurrentSize(a);
  const WindowAxis w{s.axis[axis].Frequency, a.lpFactor == 1 ? std::min(s.extras[axis].fidPoints, size) : size, size,
                     axis == F2 ? s.fidShift : 0};
  return Curve(a.window, w, curve);
}

}  // namespace

// The readers and the factors keep sizes at powers of two; anything else is refused here rather
// than handed to transforms that assume it.
platform::Outcome Resize(Spectrum2D& s, const SequenceSettings& settings) {
  if (!PowerOfTwo(CurrentSize(settings.axis[F1])) || !PowerOfTwo(CurrentSize(settings.axis[F2])))
    return {1, {std::string(messages::kDataError), std::string(messages::kNotSupported)}};
  if (Redimension(s, CurrentSize(settings.axis[F2]), CurrentSize(settings.axis[F1]))) return {};
  return {1, DataSizeMessage()};
}


std::int32_t CurrentSize(const AxisProcessing& a) { return (a.lpFactor != 1 ? a.lpFactor : a.zeroFill) * a.baseSize; }

SequenceSettings MakeSequenceSettings(const Spectrum2D& s, int pulseModeClass, int formatNumber) {
  SequenceSettings settings;
  settings.pulseModeClass = pulseModeClass;
  settings.mode = pulseModeClass;
  settings.formatNumber = formatNumber;
  settings.brukerData = model::IsBrukerFormat(formatNumber);
  for (model::Axis a : {F1, F2}) {
    AxisProcessing& p = settings.axis[a];
    p.baseSize = s.axis[a].Point;
    p.singleAd = s.extras[a].adMode == 1;
    const model::AxisWindowValues& v = s.axis[a].window;
    p.window.type = s.extras[a].windowNumber;
    p.window.BF = v.BF;
    p.window.GBF = v.GBF;
    p.window.GF = v.GF;
    p.window.WS = v.start;
    p.window.WE = v.end;
    p.window.T = s.extras[a].trapezoid;
  }
  settings.axis[F1].pivot = std::lrint(CurrentSize(settings.axis[F1]) / 2.0);
  return settings;
}

platform::Outcome ZeroFill(Spectrum2D& s, SequenceSettings& settings, model::Axis axis) {
  return Double(s, settings, axis, &AxisProcessing::zeroFill);
}

platform::Outcome LpFill(Spectrum2D& s, SequenceSettings& settings, model::Axis axis) {
  return Double(s, settings, axis, &AxisProcessing::lpFactor);
}

platform::Outcome CancelZeroFill(Spectrum2D& s, SequenceSettings& settings, model::Axis axis) {
  AxisProcessing& a = settings.axis[axis];
  a.zeroFill = 1;
  a.lpFactor = 1;
  a.lp.ForwardOn = 0;
  return Resize(s, settings);
}

platform::Outcome Make_CL_Wind(const Spectrum2D& s, const SequenceSettings& settings, WindowCurve& curve) {
  return AxisWindow(s, settings, F1, curve);
}

platform::Outcome Make_RW_Wind(const Spectrum2D& s, const SequenceSettings& settings, WindowCurve& curve) {
  return AxisWindow(s, settings, F2, curve);
}

platform::Outcome MakeWindow1D(const model::Spectrum1D& s, const WindowFunctionSetting& w, std::int32_t fidPoints,
                               std::int32_t lpFactor, std::int32_t fidShift, WindowCurve& curve) {
  const std::int32_t size = s.params.POINT;
  const WindowAxis axis{s.params.FREQU, lpFactor == 1 ? std::min(fidPoints, size) : size, size, fidShift,
                        k1DWindowLow, size};
  return Curve(w, axis, curve);
}

void InitialF1Phase(const Spectrum2D& s, SequenceSettings& settings, std::string_view pulseName) {
  AxisProcessing& f1 = settings.axis[F1];
  f1.pivot = std::lrint(CurrentSize(f1) / 2.0);
  if (settings.pulseModeClass != model::VPH_HMBC && settings.pulseModeClass != model::VPH_HETERO) {
    f1.phase0 = f1.phase1 = 0;
    return;
  }
  const double delay = (2 * 0.64 * s.params.PW[1] + s.params.PW[0] + 10) * s.axis[F1].Frequency * 360 * 1e-6;
  if (settings.formatNumber == model::kAlice || settings.formatNumber == model::kJeolGx) {
    f1.phase0 = 0;
    f1.phase1 = pulseName == "VPHHSQCN" ? 180 : delay;
  } else if (model::IsBrukerFormat(settings.formatNumber)) {
    f1.phase0 = 0;
    f1.phase1 = -delay;
  }
}

void ApplyF1Exchange(Spectrum2D& s, int pulseModeClass, std::int32_t columns, std::int32_t rows) {
  const bool phase = model::IsPhaseSensitive(pulseModeClass);
  for (Plane* p : {&s.RR, &s.IR, &s.RI, &s.II}) {
    if (!phase && (p == &s.RI || p == &s.II)) continue;
    for (std::int32_t r = 1; r < std::min(rows, p->rows); r += 2)
      for (std::int32_t c = 0; c < std::min(columns, p->stride); ++c) p->at(c, r) = -p->at(c, r);
  }
}

SequenceResult Execute2DFft(Spectrum2D& s, SequenceSettings& settings, const SequenceRun& run) {
  if (settings.vendor) return ExecuteVendorFft(s, settings, run);
  run.list.assign({"Current Process", "F2FFT"});
  for (AxisProcessing& a : settings.axis) {
    if (a.lpFactor >= 2) a.zeroFill = a.lpFactor;
    a.lpFactor = 1;
    a.lp.ForwardOn = a.lp.BackwardOn = 0;
  }
  if (auto out = Resize(s, settings); !out.ok()) return Cancelled(out.message);
  Stages stages(s, settings, run);
  return stages.Plain();
}

SequenceResult Execute2DFftWithLp(Spectrum2D& s, SequenceSettings& settings, const SequenceRun& run) {
  AxisProcessing& f1 = settings.axis[F1];
  AxisProcessing& f2 = settings.axis[F2];
  if (platform::Message unasked = PredictionAsked(settings); !unasked.empty()) return Cancelled(unasked);
  const bool forward1 = f1.lpFactor >= 2 && f1.lp.ForwardOn, forward2 = f2.lpFactor >= 2 && f2.lp.ForwardOn;
  const auto problem = CheckLpSequence({&f1.lp, s.extras[F1].fidPoints, forward1}, {&f2.lp, s.extras[F2].fidPoints, forward2});
  if (!problem.empty()) return Cancelled(problem);
  if (!forward1 && !forward2 && !f1.lp.BackwardOn && !f2.lp.BackwardOn) return Execute2DFft(s, settings, run);
  run.list.assign({"Current Process"});
  for (AxisProcessing& a : settings.axis) {
    if (a.zeroFill == 1) a.zeroFill = a.lpFactor;
    if (!a.lp.ForwardOn) a.lpFactor = 1;
  }
  if (auto out = Resize(s, settings); !out.ok()) return Cancelled(out.message);
  Stages stages(s, settings, run);
  return stages.WithPrediction();
}

}  // namespace velk::processing
