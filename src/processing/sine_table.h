#pragma once
// The one sine table every transform reads: 5/4 of a turn of 2^20 steps, so that the cosine at
// step k is the sine at k + 2^18 and one table serves every transform size up to 2^20.
#include <cstdint>
#include <vector>

namespace velk::processing {

inline constexpr std::int32_t kTableSize = 1048576;

struct SineTable {
  std::vector<float> values;  // entries 0 .. 5 * kTableSize / 4 inclusive

  float operator[](std::int64_t i) const { return values[static_cast<std::size_t>(i)]; }
};

// Entry i is sin(a), a = i * 2 * 3.14159265358979 / kTableSize rounded to single precision before
// the sine is taken: that rounding gives the table its exact contents.
SineTable BuildSineTable();

// The table of the run, built on first use and shared read-only by all threads.
const SineTable& SharedSineTable();

}  // namespace velk::processing
