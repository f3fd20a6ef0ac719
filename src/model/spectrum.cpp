#include "model/spectrum.h"

#include "model/data_type.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <exception>

namespace velk::model {
namespace {

void AllocatePlane(Plane& plane, std::int32_t columns, std::int32_t rows) {
  plane.data.assign(static_cast<std::size_t>(columns) * rows, 0.0f);
  plane.stride = columns;
  plane.rows = rows;
}

// Linux hands out memory it does not have and kills the process when the pages are touched, so a
// request larger than the machine's memory is refused before it is made (sysconf is POSIX).
bool FitsInMemory(std::uint64_t bytes) {
  const long pages = sysconf(_SC_PHYS_PAGES);
  const long pageSize = sysconf(_SC_PAGE_SIZE);
  if (pages <= 0 || pageSize <= 0) return true;
  return bytes <= static_cast<std::uint64_t>(pages) * static_cast<std::uint64_t>(pageSize);
}

bool DiffersByMoreThanOnePercent(double stored, double computed) {
  return std::fabs(stored - computed) > 0.01 * std::fabs(computed);
}

}  // namespace

int AllocateSpectrum2D(Spectrum2D& s, std::int32_t f2Points, std::int32_t f1Points) {
  const std::int32_t columns = std::max(f2Points, kMinAxisPoints);
  const std::int32_t rows = std::max(f1Points, kMinAxisPoints);
  if (!FitsInMemory(4ull * sizeof(float) * static_cast<std::uint64_t>(columns) * static_cast<std::uint64_t>(rows)))
    return 1;
  try {
    for (Plane* plane : {&s.RR, &s.IR, &s.RI, &s.II}) AllocatePlane(*plane, columns, rows);
    s.ppmF2.assign(columns, 0.0f);
    s.ppmF1.assign(rows, 0.0f);
    for (auto& trace : s.workTraces) trace.assign(kTraceBufferPoints + 1, 0.0f);
  } catch (const std::exception&) {  // bad_alloc, or a size beyond what a vector can hold
    for (Plane* plane : {&s.RR, &s.IR, &s.RI, &s.II}) *plane = Plane{};
    return 1;
  }
  return 0;
}

int AllocateSpectrum1D(Spectrum1D& s, std::int32_t points) {
  const std::size_t n = static_cast<std::size_t>(std::max(points, kMinAxisPoints)) + 1;
  if (!FitsInMemory(8ull * sizeof(double) * n)) return 1;
  try {
    s.axisPpm.assign(n, 0.0);
    for (auto* array : {&s.re, &s.im, &s.work1, &s.work2, &s.moduleWork1, &s.moduleWork2})
      array->assign(n, 0.0f);
    s.baselineWork.assign(n + kBaselineWorkOffset, 0.0f);
  } catch (const std::exception&) {
    EraseSpectrum1D(s);
    return 1;
  }
  return 0;
}

void EraseSpectrum1D(Spectrum1D& s) {
  s.axisPpm = {};
  s.history = {};
  for (auto* array : {&s.re, &s.im, &s.work1, &s.work2, &s.moduleWork1, &s.moduleWork2, &s.baselineWork})
    *array = {};
}

void RepairBeforeWrite1D(Spectrum1D& s, double zeroPpmFrequencyMHz) {
  const std::int32_t n = s.params.POINT;
  if (n >= 1 && static_cast<std::size_t>(n) <= s.axisPpm.size()) {
    const double span = std::fabs(s.axisPpm[0] - s.axisPpm[n - 1]) * zeroPpmFrequencyMHz;
    if (DiffersByMoreThanOnePercent(s.params.FREQU, span)) s.params.FREQU = static_cast<float>(span);
    const double resolution = s.params.FREQU / n;
    if (DiffersByMoreThanOnePercent(s.params.RESOL, resolution)) s.params.RESOL = resolution;
    if (n > 1) {
      s.axisStep = (s.axisPpm[n - 1] - s.axisPpm[0]) / (n - 1);
      s.axisFirst = static_cast<float>(s.axisPpm[0]);
    }
  }
  s.arrayCount = std::max(s.arrayCount, 1);
  for (float& range : s.verticalRange)
    if (!(range > 0.0f && range < 100.0f)) range = 10.6f;
}

void RepairAfterRead2D(Spectrum2D& s, int pulseModeClass) {
  s.cycleTime = s.params.ACQTM + s.params.PD;
  // Classes VPH_HOMO and V_HOMO are homonuclear: one frequency for both axes.
  if (IsHomonuclear(pulseModeClass)) {
    s.extras[F1].absFreqCenter = s.extras[F2].absFreqCenter;
    s.extras[F1].absFreq0ppm = s.extras[F2].absFreq0ppm;
  }
}

void RebuildPpmTables(Spectrum2D& s) {
  const std::array<std::vector<float>*, 2> tables{&s.ppmF1, &s.ppmF2};
  for (int a : {F1, F2}) {
    std::vector<float>& table = *tables[a];
    const std::int32_t n = std::min<std::int32_t>(s.axis[a].Point, static_cast<std::int32_t>(table.size()));
    for (std::int32_t i = 0; i < n; ++i)
      table[i] = static_cast<float>(s.extras[a].ppmFirst + i * s.extras[a].ppmStep);
  }
}

}  // namespace velk::model
