#include "operations/auto_phase.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

#include "operations/phase_panel.h"
#include "operations/quadrants.h"

namespace velk::operations {
namespace {

using model::F1;
using model::F2;
using Complex = std::complex<double>;

constexpr std::size_t kTops = 256;
constexpr double kFirstOrderRange = 180;  // degrees searched either side of 0
// The first order is what the data know least about: it turns peaks that lie close together
// hardly against each other, and the carbons of an HSQC crowd into a quarter of F1, where a large
// first order with another zero order explains them about as well. So the first order is chosen
// with a clear preference for small values (the share of the agreement given up per 360
// degrees), and then refined within a limited reach with a preference that only breaks ties
// (scaled by how narrowly the peaks lie: as the square of a quarter of the axis over their
// standard deviation).
constexpr double kChoosingPenalty = 0.4;
constexpr double kRefiningPenalty = 0.02;
constexpr double kRefiningReach = 30;  // degrees either side of the chosen first order
constexpr double kSpreadOfRefiningPenalty = 0.25;
constexpr double kLeastSpread = 0.02;
constexpr double kRadian = std::numbers::pi / 180;

struct Top {
  std::int32_t column = 0, row = 0;
  double height = 0;  // squared hypercomplex modulus
};

// The strongest points higher than their eight neighbours by the squared hypercomplex modulus,
// highest first (ties by position, so that the list does not depend on the threads). Each chunk
// of rows keeps only its own strongest, which is all that the final list can take from it.
std::vector<Top> PeakTops(const AutoPhaseData& s, int threads) {
  const std::int32_t n1 = s.points[F1], n2 = s.points[F2];
  if (n1 < 3 || n2 < 3) return {};
  std::vector<float> height(static_cast<std::size_t>(n1) * n2);
  ForEachRowChunk(n1, threads, [&](std::int32_t first, std::int32_t count) {
    for (std::int32_t r = first; r < first + count; ++r) {
      const float *rr = s.RR.row(r).data(), *ir = s.IR.row(r).data();
      const float *ri = s.RI.row(r).data(), *ii = s.II.row(r).data();
      float* h = height.data() + static_cast<std::size_t>(r) * n2;
      for (std::int32_t c = 0; c < n2; ++c) h[c] = rr[c] * rr[c] + ir[c] * ir[c] + ri[c] * ri[c] + ii[c] * ii[c];
    }
  });
  const auto higher = [](const Top& a, const Top& b) {
    if (a.height != b.height) return a.height > b.height;
    return a.row != b.row ? a.row < b.row : a.column < b.column;
  };
  const auto strongest = [&](std::vector<Top>& tops) {
    const std::size_t keep = std::min(tops.size(), kTops);
    std::partial_sort(tops.begin(), tops.begin() + keep, tops.end(), higher);
    tops.resize(keep);
  };
  // A heap of a chunk's strongest tops, the weakest of them in front.
  const auto offer = [&](std::vector<Top>& heap, const Top& t) {
    if (heap.size() < kTops) {
      heap.push_back(t);
      std::push_heap(heap.begin(), heap.end(), higher);
    } else if (higher(t, heap.front())) {
      std::pop_heap(heap.begin(), heap.end(), higher);
      heap.back() = t;
      std::push_heap(heap.begin(), heap.end(), higher);
    }
  };
  std::vector<std::vector<Top>> found(n1);
  ForEachRowChunk(n1 - 2, threads, [&](std::int32_t first, std::int32_t count) {
    std::vector<Top>& tops = found[first];
    for (std::int32_t r = first + 1; r < first + count + 1; ++r) {
      const float* h = height.data() + static_cast<std::size_t>(r) * n2;
      for (std::int32_t c = 1; c + 1 < n2; ++c) {
        const float v = h[c];
        bool top = v > 0;
        for (std::int32_t dr : {-n2, 0, n2})
          for (int dc = -1; dc <= 1 && top; ++dc)
            if ((dr || dc) && h[dr + c + dc] >= v) top = false;
        if (top) offer(tops, {c, r, v});
      }
    }
  });
  std::vector<Top> tops;
  for (auto& chunk : found) tops.insert(tops.end(), chunk.begin(), chunk.end());
  strongest(tops);
  return tops;
}

struct AxisSample {
  double x = 0;     // (k - pivot) / N
  Complex phasor;   // exp(2i phi), weighted by the peak's height
};

// How well a first order explains the doubled angles, and the zero order that goes with it.
struct Fit {
  double score = -1;
  double phase0 = 0, phase1 = 0;
};

Fit FitAt(const std::vector<AxisSample>& samples, double phase1, double total, double penalty) {
  Complex sum = 0;
  for (const AxisSample& a : samples) sum += a.phasor * std::polar(1.0, -2 * phase1 * a.x * kRadian);
  Fit f;
  f.phase1 = phase1;
  f.phase0 = std::arg(sum) / 2 / kRadian;  // the error's zero order
  f.score = std::abs(sum) / total - penalty * std::fabs(phase1) / 360;
  return f;
}

// The phase error of the axis as zero and first order, each peak's doubled angle weighted.
Fit FitAxis(const std::vector<AxisSample>& samples) {
  double total = 0;
  for (const AxisSample& a : samples) total += std::abs(a.phasor);
  if (total <= 0) return {};
  double mean = 0, square = 0;
  for (const AxisSample& a : samples) {
    mean += std::abs(a.phasor) * a.x;
    square += std::abs(a.phasor) * a.x * a.x;
  }
  mean /= total;
  const double spread = std::max(std::sqrt(std::max(square / total - mean * mean, 0.0)), kLeastSpread);
  const double penalty = kRefiningPenalty * std::pow(kSpreadOfRefiningPenalty / spread, 2);
  Fit chosen;
  for (double p1 = -kFirstOrderRange; p1 <= kFirstOrderRange; p1 += 1) {
    const Fit f = FitAt(samples, p1, total, kChoosingPenalty);
    if (f.score > chosen.score) chosen = f;
  }
  const double low = std::max(chosen.phase1 - kRefiningReach, -kFirstOrderRange);
  const double high = std::min(chosen.phase1 + kRefiningReach, kFirstOrderRange);
  Fit best;
  for (double p1 = low; p1 <= high; p1 += 1) {
    const Fit f = FitAt(samples, p1, total, penalty);
    if (f.score > best.score) best = f;
  }
  for (double step = 0.5; step >= 0.01; step /= 2) {
    for (const double p1 : {best.phase1 - step, best.phase1 + step}) {
      const Fit f = FitAt(samples, p1, total, penalty);
      if (f.score > best.score && p1 >= low && p1 <= high) best = f;
    }
  }
  return best;
}

// The doubled phase of a point along the axis: RR + i IR and RI + i II (F2) or RR + i RI and
// IR + i II (F1), squared and added, so that the error of the other axis drops out.
Complex Doubled(const AutoPhaseData& s, model::Axis axis, std::int32_t column, std::int32_t row) {
  const double rr = s.RR.at(column, row), ir = s.IR.at(column, row);
  const double ri = s.RI.at(column, row), ii = s.II.at(column, row);
  const Complex first = axis == F2 ? Complex(rr, ir) : Complex(rr, ri);
  const Complex second = axis == F2 ? Complex(ri, ii) : Complex(ir, ii);
  return first * first + second * second;
}

// A peak rarely falls on a data point: at the point nearest its centre the line shows some of
// its dispersion, which turns the phase by an angle that grows linearly with the distance from
// the centre. The centre comes from a parabola through the modulus at the top and its two
// neighbours along the axis, the turn per point from the angles of those neighbours, and the
// angle at the top is taken back to the centre. Only the top and its neighbours take part, so a
// crowded axis of few points (128 rows of an HSQC) does not mix in the next peak.
std::vector<AxisSample> Samples(const AutoPhaseData& s, const std::vector<Top>& tops, model::Axis axis,
                                std::int32_t pivot) {
  std::vector<AxisSample> samples;
  const double n = s.points[axis];
  for (const Top& t : tops) {
    const std::int32_t k = axis == F2 ? t.column : t.row;
    const auto at = [&](std::int32_t d) {
      return axis == F2 ? Doubled(s, axis, t.column + d, t.row) : Doubled(s, axis, t.column, t.row + d);
    };
    const Complex left = at(-1), top = at(0), right = at(1);
    if (std::abs(top) == 0) continue;
    // |Doubled| is the squared amplitude of the line; its square root is parabolic enough near the top.
    const double a = std::sqrt(std::abs(left)), b = std::sqrt(std::abs(top)), c = std::sqrt(std::abs(right));
    const double curvature = a - 2 * b + c;
    const double offset = curvature < 0 ? std::clamp(0.5 * (a - c) / curvature, -0.5, 0.5) : 0.0;
    const double turn = std::arg(right * std::conj(top)) + std::arg(top * std::conj(left));
    const Complex centred = top * std::polar(1.0, 0.5 * turn * offset);
    samples.push_back({(k + offset - pivot) / n, centred / std::sqrt(std::abs(centred))});
  }
  return samples;
}

// RR at a point after both corrections.
double CorrectedRR(const AutoPhaseData& s, const Top& t, const PhaseValues& f1, const PhaseValues& f2) {
  const auto angle = [](const PhaseValues& p, std::int32_t k, std::int32_t n) {
    return (p.Phase0 + (k - p.pivot) * static_cast<double>(p.Phase1) / n) * kRadian;
  };
  const double a2 = angle(f2, t.column, s.points[F2]), a1 = angle(f1, t.row, s.points[F1]);
  const double rr = s.RR.at(t.column, t.row), ir = s.IR.at(t.column, t.row);
  const double ri = s.RI.at(t.column, t.row), ii = s.II.at(t.column, t.row);
  const double rrF2 = rr * std::cos(a2) - ir * std::sin(a2);
  const double riF2 = ri * std::cos(a2) - ii * std::sin(a2);
  return rrF2 * std::cos(a1) - riF2 * std::sin(a1);
}

}  // namespace

AutoPhaseResult FindAutoPhase(const model::Spectrum2D& s, std::int32_t pivotF1, std::int32_t pivotF2, int threads) {
  return FindAutoPhase({s.RR, s.IR, s.RI, s.II, {s.axis[F1].Point, s.axis[F2].Point}}, pivotF1, pivotF2, threads);
}

AutoPhaseResult FindAutoPhase(const AutoPhaseData& s, std::int32_t pivotF1, std::int32_t pivotF2, int threads) {
  AutoPhaseResult result;
  result.f1.pivot = pivotF1;
  result.f2.pivot = pivotF2;
  for (const model::Plane* p : {&s.RR, &s.IR, &s.RI, &s.II})
    if (p->data.empty()) return result;
  const std::vector<Top> tops = PeakTops(s, threads);
  if (tops.empty()) return result;
  const Fit f2 = FitAxis(Samples(s, tops, F2, pivotF2));
  const Fit f1 = FitAxis(Samples(s, tops, F1, pivotF1));
  // The correction turns the other way from the error.
  result.f2.Phase0 = WrapPhase0(static_cast<float>(-f2.phase0));
  result.f2.Phase1 = ClampPhase1(static_cast<float>(-f2.phase1));
  result.f1.Phase0 = WrapPhase0(static_cast<float>(-f1.phase0));
  result.f1.Phase1 = ClampPhase1(static_cast<float>(-f1.phase1));
  double area = 0;
  for (const Top& t : tops) area += CorrectedRR(s, t, result.f1, result.f2);
  if (area < 0) result.f1.Phase0 = WrapPhase0(result.f1.Phase0 + 180.0f);
  result.peaksUsed = static_cast<int>(tops.size());
  return result;
}

}  // namespace velk::operations
