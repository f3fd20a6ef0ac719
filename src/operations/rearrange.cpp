#include "operations/rearrange.h"

#include <algorithm>
#include <new>
#include <utility>

#include "model/data_type.h"
#include "operations/messages.h"
#include "operations/quadrants.h"

namespace velk::operations {
namespace {

using model::F1;
using model::F2;
using model::Plane;

std::array<Plane*, 4> QuadrantsOf(model::Spectrum2D& s) { return {&s.RR, &s.RI, &s.IR, &s.II}; }

// A plane of at least 128 points on each axis holding the first n1 x n2 of `p` transposed.
Plane Transposed(const Plane& p, std::int32_t n1, std::int32_t n2, int threads) {
  Plane t;
  t.stride = std::max(p.rows, model::kMinAxisPoints);
  t.rows = std::max(p.stride, model::kMinAxisPoints);
  t.data.assign(static_cast<std::size_t>(t.stride) * t.rows, 0.0f);
  ForEachRowChunk(n2, threads, [&](std::int32_t first, std::int32_t count) {
    for (std::int32_t r = 0; r < n1; ++r)
      for (std::int32_t c = first; c < first + count; ++c) t.at(r, c) = p.at(c, r);
  });
  return t;
}

}  // namespace

void InvertSpectrum(model::Spectrum2D& s, bool invertF1, bool invertF2, int threads) {
  const std::int32_t n1 = s.axis[F1].Point, n2 = s.axis[F2].Point;
  for (Plane* p : QuadrantsOf(s)) {
    if (p->data.empty()) continue;
    if (invertF1)
      ForEachRowChunk(n1 / 2, threads, [&](std::int32_t first, std::int32_t count) {
        for (std::int32_t k = first; k < first + count; ++k) {
          auto a = p->row(k), b = p->row(n1 - 1 - k);
          std::swap_ranges(a.begin(), a.begin() + n2, b.begin());
        }
      });
    if (invertF2)
      ForEachRowChunk(n1, threads, [&](std::int32_t first, std::int32_t count) {
        for (std::int32_t r = first; r < first + count; ++r) std::reverse(p->row(r).begin(), p->row(r).begin() + n2);
      });
  }
}

bool CanExchange(int pulseModeClass) {
  return !model::IsHomonuclear(pulseModeClass);
}

platform::Outcome ExchangeF1F2(model::Spectrum2D& s, int threads) {
  const std::int32_t n1 = s.axis[F1].Point, n2 = s.axis[F2].Point;
  std::array<Plane, 4> transposed;
  try {
    const auto quadrants = QuadrantsOf(s);
    for (std::size_t q = 0; q < quadrants.size(); ++q)
      if (!quadrants[q]->data.empty()) transposed[q] = Transposed(*quadrants[q], n1, n2, threads);
  } catch (const std::bad_alloc&) {
    return {1, messages::DataSizeTooLarge()};
  }
  const auto quadrants = QuadrantsOf(s);
  for (std::size_t q = 0; q < quadrants.size(); ++q)
    if (!quadrants[q]->data.empty()) *quadrants[q] = std::move(transposed[q]);
  std::swap(s.axis[F1], s.axis[F2]);
  std::swap(s.extras[F1], s.extras[F2]);
  std::swap(s.ppmF1, s.ppmF2);
  return {};
}

}  // namespace velk::operations
