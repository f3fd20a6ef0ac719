// The group delay of the spectrometer's digital filter for files older than the GRPDLY key: it is
// fixed by the filter version (DSPFVS 10 to 13) and the decimation factor (DECIM), as the vendor
// tabulates it, in points of the decimated FID.
#include <array>
#include <utility>

#include "formats/bruker/routines.h"

namespace velk::formats::bruker {
namespace {

using Row = std::pair<int, double>;  // decimation, delay

constexpr std::array<Row, 21> kVersion10{{
    {2, 44.75}, {3, 33.5}, {4, 66.625}, {6, 59.083333333333333}, {8, 68.5625}, {12, 60.375}, {16, 69.53125},
    {24, 61.020833333333333}, {32, 70.015625}, {48, 61.34375}, {64, 70.2578125}, {96, 61.505208333333333},
    {128, 70.37890625}, {192, 61.5859375}, {256, 70.439453125}, {384, 61.626302083333333}, {512, 70.4697265625},
    {768, 61.646484375}, {1024, 70.48486328125}, {1536, 61.656575520833333}, {2048, 70.492431640625}}};
// Versions 11 and 12 differ at decimations 16 to 64 only.
constexpr std::array<Row, 21> kVersion11{{
    {2, 46.0}, {3, 36.5}, {4, 48.0}, {6, 50.166666666666667}, {8, 53.25}, {12, 69.5}, {16, 72.25},
    {24, 70.166666666666667}, {32, 72.75}, {48, 70.5}, {64, 73.0}, {96, 70.666666666666667}, {128, 72.5},
    {192, 71.333333333333333}, {256, 72.25}, {384, 71.666666666666667}, {512, 72.125}, {768, 71.833333333333333},
    {1024, 72.0625}, {1536, 71.916666666666667}, {2048, 72.03125}}};
constexpr std::array<Row, 3> kVersion12Differences{{{16, 71.625}, {32, 72.125}, {64, 72.375}}};
constexpr std::array<Row, 12> kVersion13{{
    {2, 2.75}, {3, 2.8333333333333333}, {4, 2.875}, {6, 2.9166666666666667}, {8, 2.9375},
    {12, 2.9583333333333333}, {16, 2.96875}, {24, 2.9791666666666667}, {32, 2.984375}, {48, 2.9895833333333333},
    {64, 2.9921875}, {96, 2.9947916666666667}}};

template <std::size_t N>
double Find(const std::array<Row, N>& table, int decimation) {
  for (const auto& [d, delay] : table)
    if (d == decimation) return delay;
  return 0;
}

}  // namespace

double TabulatedGroupDelay(int decimation, int filterVersion) {
  switch (filterVersion) {
    case 10: return Find(kVersion10, decimation);
    case 11: return Find(kVersion11, decimation);
    case 12:
      if (const double d = Find(kVersion12Differences, decimation); d > 0) return d;
      return Find(kVersion11, decimation);
    case 13: return Find(kVersion13, decimation);
    default: return 0;
  }
}

}  // namespace velk::formats::bruker
