#pragma once
// Small Delta files built byte by byte as the instruments lay them out, for the reader's tests.
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/bytes.h"

namespace velk::test {

struct DeltaRecordSpec {
  std::string name;
  std::uint8_t prefix = 0, unit = 0;
  int valueType = 2;  // 0 text, 1 integer, 2 double
  std::string text;
  double value = 0;
};

struct DeltaLayout {
  core::ByteOrder headerOrder = core::ByteOrder::Big;
  core::ByteOrder dataOrder = core::ByteOrder::Big;  // byte 8 follows it
  int dimensions = 1;
  bool singles = false;  // 32-bit elements
  std::array<std::uint8_t, 2> axisType{3, 3};
  std::array<std::uint8_t, 4> units{1, 28, 1, 28};  // X prefix, X type, Y prefix, Y type
  std::array<std::int32_t, 2> points{16, 1};
  std::array<double, 2> start{0, 0}, stop{1, 1};
  std::array<double, 2> frequency{400.0, 100.0};
  std::array<std::string, 2> nucleus{"Proton", "Carbon13"};
  std::string title = "sample", comment = "comment";
  std::vector<DeltaRecordSpec> records;
  std::vector<double> data;  // in file order
};

std::vector<std::uint8_t> BuildDelta(const DeltaLayout& layout);

// The data of a 2D section in 32 x 32 submatrices from a value per (section, column, row).
std::vector<double> Submatrices(int sections, std::int32_t columns, std::int32_t rows,
                                const std::function<double(int, std::int32_t, std::int32_t)>& value);

}  // namespace velk::test
