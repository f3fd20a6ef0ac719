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

// The baseline at point i from the means of the points (indexed like the points).
template <class MeanOf>
double BaselineAt(const std::vector<BasePoint>& points, std::int32_t i, std::size_t k, MeanOf mean) {
  if (k == 0) return mean(0);
  if (k == points.size()) return mean(k - 1);
  return Between(mean(k - 1), mean(k), points[k - 1].position, points[k].position, i);
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
  std::vector<std::size_t> stretch(n2);
  for (std::int32_t i = 0; i < n2; ++i) stretch[i] = Stretch(points, i);
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
      const auto mean = [&](std::size_t k) { return means[k]; };
      for (std::int32_t i = 0; i < n2; ++i) out[i] = static_cast<float>(in[i] - BaselineAt(points, i, stretch[i], mean));
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
      for (std::int32_t c = 0; c < n2; ++c)
        out[c] = static_cast<float>(in[c] - BaselineAt(points, row, k, [&](std::size_t j) { return means[j][c]; }));
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
