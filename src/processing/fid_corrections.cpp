#include "processing/fid_corrections.h"

#include <algorithm>
#include <cmath>

#include "core/text.h"
#include "processing/fft_kernel.h"

namespace velk::processing {
namespace {

constexpr double kPi = 3.14159265358979;

// Steps 1 to 3 on one trace of n points read through `get` and written through `put`.
template <class Get, class Put>
void CorrectSequential(std::int32_t n, std::vector<double>& s, Get get, Put put) {
  s.resize(static_cast<std::size_t>(n) * 4);
  double *aRe = s.data(), *aIm = aRe + n, *bRe = aIm + n, *bIm = bRe + n;
  for (std::int32_t k = 0; k < n; ++k) {
    const auto [x, y] = get(k);
    aRe[k] = 0;
    aIm[k] = y;
    bRe[k] = x;
    bIm[k] = 0;
  }
  FftKernel(aRe, aIm, n);
  FftKernel(bRe, bIm, n);
  for (std::int32_t k = 0; k < n; ++k) {
    const double f = static_cast<float>(static_cast<double>(k) / n);
    const double a = k < n / 2 ? f * kPi : (f - 1) * kPi;
    const double c = std::cos(a), sn = std::sin(a);
    put(k, static_cast<float>(bRe[k] - c * aRe[k] - sn * aIm[k]), static_cast<float>(bIm[k] - c * aIm[k] + sn * aRe[k]));
  }
}

// Every column (or row) of the pair in turn.
void CorrectTraces(model::Plane& X, model::Plane& Y, std::int32_t traces, std::int32_t n, bool columns) {
  std::vector<double> scratch;
  for (std::int32_t t = 0; t < traces; ++t) {
    auto at = [&](model::Plane& p, std::int32_t k) -> float& { return columns ? p.at(t, k) : p.at(k, t); };
    CorrectSequential(
        n, scratch, [&](std::int32_t k) { return std::pair<double, double>(at(X, k), at(Y, k)); },
        [&](std::int32_t k, float x, float y) {
          at(X, k) = x;
          at(Y, k) = y;
        });
  }
}

}  // namespace

NucleusGroup NucleusGroupOf(std::string_view nucleus) {
  const std::string n = core::ToUpper(core::Trim(std::string(nucleus)));
  if (n.empty() || n == "1H" || n == "H1" || n == "NUL") return kH1;
  if (n == "13C" || n == "C13") return kC13;
  return kOtherNucleus;
}

std::string_view FidShiftKey(int family, NucleusGroup group) {
  static constexpr std::string_view kKeys[4][3] = {
      {"FID SHIFT C13", "FID SHIFT H1", "FID SHIFT X"},
      {"FID SHFT C13 BRU", "FID SHFT H1 BRU", "FID SHFT X BRU"},
      {"FID SHFT C13 VAR", "FID SHFT H1 VAR", "FID SHFT X VAR"},
      {"FID SHFT C13 JOL", "FID SHFT H1 JOL", "FID SHFT X JOL"}};
  const int row = family >= 1 && family <= 3 ? family : 0;
  return kKeys[row][group];
}

std::int32_t AutoFidShift(const float* re, const float* im, std::int32_t n) {
  double largest = 0;
  for (std::int32_t i = 0; i < n; ++i) largest = std::max(largest, std::hypot(double(re[i]), double(im[i])));
  for (std::int32_t i = 0; i < n; ++i)
    if (std::hypot(double(re[i]), double(im[i])) >= 0.2 * largest && largest > 0) return i;
  return 0;
}

std::int32_t ChooseFidShift(const FidShiftDefaults& d, std::string_view instrumentId, int family,
                            std::string_view nucleus, const float* re, const float* im, std::int32_t n) {
  if (!d.autoShift && !instrumentId.empty())
    for (const InstrumentShift& row : d.instruments)
      if (row.instrumentId == instrumentId) return row.shift;
  if (d.autoShift) return AutoFidShift(re, im, n);
  const int row = family >= 1 && family <= 3 ? family : 0;
  return d.byFamily[row][NucleusGroupOf(nucleus)];
}

void ChooseFidShift2D(model::Spectrum2D& s, const FidShiftDefaults& d, int family) {
  // The digital filter's delay named by the file is the shift; a search would be fooled by an
  // FID whose largest point lies well after the filter's onset (long-range sets).
  if (s.vendor.groupDelay > 0) {
    s.fidShift = static_cast<std::int32_t>(std::nearbyint(s.vendor.groupDelay));
    return;
  }
  const std::int32_t n = std::min(s.extras[model::F2].fidPoints, s.RR.stride);
  s.fidShift = ChooseFidShift(d, s.texts.instrumentId, family, s.params.OBNUC, s.RR.row(0).data(),
                              s.IR.row(0).data(), std::max(n, 0));
}

void ChooseFidShift1D(model::Spectrum1D& s, std::int32_t& fidShift, const FidShiftDefaults& d, int family) {
  const auto n = static_cast<std::int32_t>(std::min<std::size_t>(s.params.POINT, std::min(s.re.size(), s.im.size())));
  fidShift = ChooseFidShift(d, s.texts.instrumentId, family, s.params.OBNUC, s.re.data(), s.im.data(), std::max(n, 0));
}

void SaveFidShiftDefault(FidShiftDefaults& d, int family, std::string_view nucleus, std::int32_t shift) {
  const int row = family >= 1 && family <= 3 ? family : 0;
  d.byFamily[row][NucleusGroupOf(nucleus)] = shift;
}

void FidBaseline(model::Plane& plane, std::int32_t rows, std::int32_t n) {
  const auto i0 = static_cast<std::int32_t>(std::lrint(n * 0.8));
  if (n - i0 <= 0) return;
  for (std::int32_t r = 0; r < rows; ++r) {
    float* row = plane.row(r).data();
    double sum = 0;
    for (std::int32_t i = i0; i < n; ++i) sum += row[i];
    const double mean = sum / (n - i0);
    for (std::int32_t i = 0; i < n; ++i) row[i] = static_cast<float>(row[i] - mean);
  }
}

float ClampT1NoiseFactor(float factor) { return std::isfinite(factor) ? std::clamp(factor, 0.0f, 2.0f) : 0.0f; }

void T1NoiseCorrection(std::initializer_list<model::Plane*> planes, std::int32_t n, float factor) {
  for (model::Plane* p : planes)
    for (std::int32_t i = 0; i < n; ++i) p->at(i, 0) *= factor;
}

void BrukerCorrection1D(float* re, float* im, std::int32_t n, bool reverse) {
  std::vector<double> scratch;
  CorrectSequential(
      n, scratch, [&](std::int32_t k) { return std::pair<double, double>(re[k], im[k]); },
      [&](std::int32_t k, float x, float y) {
        re[k] = x;
        im[k] = y;
      });
  if (reverse)
    for (std::int32_t i = 0; i < n / 2; ++i) {
      std::swap(re[i], re[n - 1 - i]);
      std::swap(im[i], im[n - 1 - i]);
    }
}

void BrukerCorrectionF1(model::Plane& X, model::Plane& Y, std::int32_t n, std::int32_t columns) {
  CorrectTraces(X, Y, columns, n, true);
}

void BrukerCorrectionF2(model::Plane& X, model::Plane& Y, std::int32_t rows, std::int32_t n) {
  CorrectTraces(X, Y, rows, n, false);
}

}  // namespace velk::processing
