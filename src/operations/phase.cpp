#include "operations/phase.h"

#include <algorithm>
#include <cmath>

#include "processing/transform_support.h"

namespace velk::operations {
namespace {

using model::F1;
using model::F2;
using model::Plane;

processing::Rotation AnglesOf(const PhaseValues& p, std::int32_t n) {
  return processing::MakeRotation({true, p.Phase0, p.Phase1, static_cast<double>(p.pivot)}, n);
}

bool Exists(const Plane& p) { return !p.data.empty(); }

// x' = x cos - y sin, y' = x sin + y cos over n points of one row, the angle per point.
void RotateRow(const float* x, const float* y, float* outX, float* outY, const double* cosine, const double* sine,
               std::int32_t n) {
  for (std::int32_t i = 0; i < n; ++i) {
    const double a = x[i], b = y[i];
    outX[i] = static_cast<float>(a * cosine[i] - b * sine[i]);
    outY[i] = static_cast<float>(a * sine[i] + b * cosine[i]);
  }
}

// The same with one angle for the whole row.
void RotateRow(const float* x, const float* y, float* outX, float* outY, double cosine, double sine, std::int32_t n) {
  for (std::int32_t i = 0; i < n; ++i) {
    const double a = x[i], b = y[i];
    outX[i] = static_cast<float>(a * cosine - b * sine);
    outY[i] = static_cast<float>(a * sine + b * cosine);
  }
}

// The trace's angle: k * (Phase1 / N) + (Phase0 - P * Phase1 / N), in radians.
void RotateTrace(const PhaseValues& p, std::int32_t n, std::vector<float>& re, std::vector<float>& im) {
  const double slope = static_cast<double>(p.Phase1) / n * processing::kDegree;
  const double offset = (p.Phase0 - p.pivot * static_cast<double>(p.Phase1) / n) * processing::kDegree;
  for (std::size_t k = 0; k < re.size(); ++k) {
    const double angle = static_cast<double>(k) * slope + offset;
    const double a = re[k], b = im[k];
    re[k] = static_cast<float>(a * std::cos(angle) - b * std::sin(angle));
    im[k] = static_cast<float>(a * std::sin(angle) + b * std::cos(angle));
  }
}

}  // namespace

void RotatePhaseF1(const QuadrantBackup& b, model::Spectrum2D& s, const PhaseValues& p, int threads) {
  const std::int32_t n1 = s.axis[F1].Point, n2 = s.axis[F2].Point;
  if (!Exists(b.RR) || !Exists(b.RI)) return;  // nothing to mix without the F1 imaginary part
  const processing::Rotation r = AnglesOf(p, n1);
  const bool second = Exists(b.IR) && Exists(b.II);
  ForEachRowChunk(n1, threads, [&](std::int32_t first, std::int32_t count) {
    for (std::int32_t row = first; row < first + count; ++row) {
      RotateRow(b.RR.row(row).data(), b.RI.row(row).data(), s.RR.row(row).data(), s.RI.row(row).data(), r.cosine[row],
                r.sine[row], n2);
      if (second)
        RotateRow(b.IR.row(row).data(), b.II.row(row).data(), s.IR.row(row).data(), s.II.row(row).data(),
                  r.cosine[row], r.sine[row], n2);
    }
  });
}

void RotatePhaseF2(const QuadrantBackup& b, model::Spectrum2D& s, const PhaseValues& p, int threads) {
  const std::int32_t n1 = s.axis[F1].Point, n2 = s.axis[F2].Point;
  if (!Exists(b.RR) || !Exists(b.IR)) return;  // nothing to mix without the F2 imaginary part
  const processing::Rotation r = AnglesOf(p, n2);
  const bool second = Exists(b.RI) && Exists(b.II);
  ForEachRowChunk(n1, threads, [&](std::int32_t first, std::int32_t count) {
    for (std::int32_t row = first; row < first + count; ++row) {
      RotateRow(b.RR.row(row).data(), b.IR.row(row).data(), s.RR.row(row).data(), s.IR.row(row).data(),
                r.cosine.data(), r.sine.data(), n2);
      if (second)
        RotateRow(b.RI.row(row).data(), b.II.row(row).data(), s.RI.row(row).data(), s.II.row(row).data(),
                  r.cosine.data(), r.sine.data(), n2);
    }
  });
}

void PhaseTraceF1(const QuadrantBackup& b, const model::Spectrum2D& s, std::int32_t column, const PhaseValues& p,
                  std::vector<float>& re, std::vector<float>& im) {
  const std::int32_t n = Exists(b.RR) && Exists(b.RI) ? std::min(s.axis[F1].Point, model::kTraceBufferPoints + 1) : 0;
  re.resize(n);
  im.resize(n);
  for (std::int32_t k = 0; k < n; ++k) {
    re[k] = b.RR.at(column, k);
    im[k] = b.RI.at(column, k);
  }
  RotateTrace(p, s.axis[F1].Point, re, im);
}

void PhaseTraceF2(const QuadrantBackup& b, const model::Spectrum2D& s, std::int32_t row, const PhaseValues& p,
                  std::vector<float>& re, std::vector<float>& im) {
  const std::int32_t n = Exists(b.RR) && Exists(b.IR) ? std::min(s.axis[F2].Point, model::kTraceBufferPoints + 1) : 0;
  re.clear();
  im.clear();
  if (n == 0) return;
  re.assign(b.RR.row(row).begin(), b.RR.row(row).begin() + n);
  im.assign(b.IR.row(row).begin(), b.IR.row(row).begin() + n);
  RotateTrace(p, s.axis[F2].Point, re, im);
}

}  // namespace velk::operations
