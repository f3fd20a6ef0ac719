#pragma once
// Values a stored data set carries that no part of the program interprets yet. They are kept as
// they were read, so that reading and saving a file changes nothing but what the user changed.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace velk::model {

// A whole section of a file, from its tag to its last byte.
struct CarriedSection {
  std::string tag;
  std::vector<std::uint8_t> bytes;
};

// One region of the divided display: four bounds and its state word.
struct DisplayRegion {
  std::array<float, 4> bounds{};
  std::int16_t state = 0;
};

struct Carried2D {
  std::vector<std::uint8_t> parameterBlock;  // the parameter block as read, carried values included
  std::vector<std::uint8_t> printSet;        // the 2D block's print set, after its tag
  std::vector<CarriedSection> fileSections;  // print sets, layout objects, structure, print list ...
};

struct Carried1D {
  std::vector<std::uint8_t> parameterBlock;
  std::vector<CarriedSection> sections;  // integral, peaks, array, fonts, print set ... by tag
};

}  // namespace velk::model
