#include "operations/baseline.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "operations/quadrants.h"

namespace velk::operations {
namespace {

using model::F1;
using model::F2;

struct Window {
  std::int32_t start = 0, end = 0;  // both included
};

Window WindowOf(std::int32_t position, int avePoint, std::int32_t n) {
  Window w;
  w.start = std::clamp(static_cast<std::int32_t>(std::lrint(position - avePoint / 2.0)), 0, n - 1);
  w.end = std::min(w.start + avePoint, n - 1);
  return w;
}

// The line between the means ya at pa and yb at pb, at point i.
double Between(double ya, double yb, std::int32_t pa, std::int32_t pb, std::int32_t i) {
  return (ya * (pb - i) + yb * (i - pa)) / (pb - pa);
}

// Which stretch of the axis a point falls in: before or on the first point (k = 0), after the
// last (k = count), or in (P(k-1), P(k)].
std::size_t Stretch(const std::vector<BasePoint>& points, std::int32_t i) {
  const auto it = std::lower_bound(points.begin(), points.end(), i,
                                   [](const BasePoint& p, std::int32_t v) { return p.position < v; });
  return static_cast<std::size_t>(it - points.begin());
}

// One trace along the axis: flat up to and on the first point, the lines between neighbouring
// points, flat after the last one.
void SubtractAlongTrace(const float* in, float* out, std::int32_t n, const std::vector<BasePoint>& points,
                        const std::vector<double>& means) {
  const std::int32_t firstEnd = std::min(points.front().position + 1, n);
  for (std::int32_t i = 0; i < firstEnd; ++i) out[i] = static_cast<float>(in[i] - means.front());
  for (std::size_t k = 1; k < points.size(); ++k) {
    const std::int32_t pa = points[k - 1].position, pb = points[k].position;
    for (std::int32_t i = pa + 1; i <= std::min(pb, n - 1); ++i)
      out[i] = static_cast<float>(in[i] - Between(means[k - 1], means[k], pa, pb, i));
  }
  for (std::int32_t i = std::max(points.back().position + 1, 0); i < n; ++i)
    out[i] = static_cast<float>(in[i] - means.back());
}

}  // namespace

void ApplyBaseF2(const model::Plane& backup, model::Spectrum2D& s, std::vector<BasePoint>& points, int avePoint,
                 int threads) {
  const std::int32_t n1 = s.axis[F1].Point, n2 = s.axis[F2].Point;
  if (points.empty() || n2 < 1) {
    s.RR.data = backup.data;
    return;
  }
  std::vector<Window> windows;
  for (const BasePoint& p : points) windows.push_back(WindowOf(p.position, avePoint, n2));
  ForEachRowChunk(n1, threads, [&](std::int32_t first, std::int32_t count) {
    std::vector<double> means(points.size());
    for (std::int32_t row = first; row < first + count; ++row) {
      const float* in = backup.row(row).data();
      float* out = s.RR.row(row).data();
      for (std::size_t k = 0; k < points.size(); ++k) {
        double sum = 0;
        for (std::int32_t i = windows[k].start; i <= windows[k].end; ++i) sum += in[i];
        means[k] = sum / (windows[k].end - windows[k].start + 1);
      }
      SubtractAlongTrace(in, out, n2, points, means);
      if (row == n1 - 1)
        for (std::size_t k = 0; k < points.size(); ++k) points[k].value = static_cast<float>(means[k]);
    }
  });
}

void ApplyBaseF1(const model::Plane& backup, model::Spectrum2D& s, std::vector<BasePoint>& points, int avePoint,
                 int threads) {
  const std::int32_t n1 = s.axis[F1].Point, n2 = s.axis[F2].Point;
  if (points.empty() || n1 < 1) {
    s.RR.data = backup.data;
    return;
  }
  // The means of every column at each point, summed down the window's rows in order.
  std::vector<std::vector<double>> means(points.size(), std::vector<double>(n2));
  ForEachRowChunk(static_cast<std::int32_t>(points.size()), threads, [&](std::int32_t first, std::int32_t count) {
    for (std::int32_t k = first; k < first + count; ++k) {
      const Window w = WindowOf(points[k].position, avePoint, n1);
      std::vector<double>& m = means[k];
      for (std::int32_t r = w.start; r <= w.end; ++r) {
        const float* in = backup.row(r).data();
        for (std::int32_t c = 0; c < n2; ++c) m[c] += in[c];
      }
      for (double& v : m) v /= (w.end - w.start + 1);
      points[k].value = static_cast<float>(m[n2 - 1]);
    }
  });
  ForEachRowChunk(n1, threads, [&](std::int32_t first, std::int32_t count) {
    for (std::int32_t row = first; row < first + count; ++row) {
      const std::size_t k = Stretch(points, row);
      const float* in = backup.row(row).data();
      float* out = s.RR.row(row).data();
      if (k == 0 || k == points.size()) {  // flat before the first and after the last point
        const double* y = means[k == 0 ? 0 : k - 1].data();
        for (std::int32_t c = 0; c < n2; ++c) out[c] = static_cast<float>(in[c] - y[c]);
      } else {
        const double* ya = means[k - 1].data();
        const double* yb = means[k].data();
        const std::int32_t pa = points[k - 1].position, pb = points[k].position;
        for (std::int32_t c = 0; c < n2; ++c) out[c] = static_cast<float>(in[c] - Between(ya[c], yb[c], pa, pb, row));
      }
    }
  });
}

bool InsertBasePoint(std::vector<BasePoint>& points, std::int32_t position) {
  if (static_cast<int>(points.size()) >= kMaxBasePoints) return false;
  const auto it = std::upper_bound(points.begin(), points.end(), position,
                                   [](std::int32_t v, const BasePoint& p) { return v < p.position; });
  points.insert(it, BasePoint{position, 0});
  return true;
}

int NearestBasePoint(const std::vector<BasePoint>& points, std::int32_t position) {
  int best = -1;
  for (int k = 0; k < static_cast<int>(points.size()); ++k)
    if (best < 0 || std::abs(points[k].position - position) < std::abs(points[best].position - position)) best = k;
  return best;
}

}  // namespace velk::operations
