#pragma once
// One quadrant of a 2D data set: a contiguous float buffer, F2 contiguous, element [column, row]
// at row * stride + column. The buffer is allocated for at least 128 points on each axis; the
// data occupy the first Point columns and rows only.
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velk::model {

struct Plane {
  std::vector<float> data;
  std::int32_t stride = 0;  // allocated columns (F2)
  std::int32_t rows = 0;    // allocated rows (F1)

  float& at(std::int32_t column, std::int32_t row) {
    return data[static_cast<std::size_t>(row) * stride + column];
  }
  float at(std::int32_t column, std::int32_t row) const {
    return data[static_cast<std::size_t>(row) * stride + column];
  }
  std::span<float> row(std::int32_t r) {
    return {data.data() + static_cast<std::size_t>(r) * stride, static_cast<std::size_t>(stride)};
  }
  std::span<const float> row(std::int32_t r) const {
    return {data.data() + static_cast<std::size_t>(r) * stride, static_cast<std::size_t>(stride)};
  }
};

}  // namespace velk::model
