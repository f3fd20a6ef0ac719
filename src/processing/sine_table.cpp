#include "processing/sine_table.h"

#include <cmath>

namespace velk::processing {

SineTable BuildSineTable() {
  constexpr std::int32_t kEntries = 5 * kTableSize / 4 + 1;
  constexpr double kStep = 2.0 * 3.14159265358979 / kTableSize;
  SineTable table;
  table.values.resize(kEntries);
  for (std::int32_t i = 0; i < kEntries; ++i) {
    const float angle = static_cast<float>(i * kStep);
    table.values[i] = static_cast<float>(std::sin(static_cast<double>(angle)));
  }
  return table;
}

const SineTable& SharedSineTable() {
  static const SineTable table = BuildSineTable();
  return table;
}

}  // namespace velk::processing
