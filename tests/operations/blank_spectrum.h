#pragma once
// An all-zero spectrum of n2 columns and n1 rows with its four quadrants.
#include <gtest/gtest.h>

#include "model/spectrum.h"

namespace velk::test {

inline model::Spectrum2D BlankSpectrum(std::int32_t n2, std::int32_t n1) {
  model::Spectrum2D s;
  EXPECT_EQ(model::AllocateSpectrum2D(s, n2, n1), 0);
  s.axis[model::F2].Point = n2;
  s.axis[model::F1].Point = n1;
  return s;
}

}  // namespace velk::test
