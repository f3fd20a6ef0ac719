// Inversion and exchange of the axes: where each value goes, and twice gives the data back exactly.
#include <gtest/gtest.h>

#include "model/data_type.h"
#include "operations/blank_spectrum.h"
#include "operations/rearrange.h"

namespace velk::test {
namespace {

using model::F1;
using model::F2;

// Every value of every quadrant different, so that any misplaced value shows.
model::Spectrum2D Numbered(std::int32_t n2, std::int32_t n1) {
  model::Spectrum2D s = BlankSpectrum(n2, n1);
  s.axis[F2].Resolution = 10;
  s.axis[F1].Resolution = 20;
  s.extras[F2].nucleus = "1H";
  s.extras[F1].nucleus = "13C";
  model::Plane* planes[] = {&s.RR, &s.IR, &s.RI, &s.II};
  for (int q = 0; q < 4; ++q)
    for (std::int32_t r = 0; r < n1; ++r)
      for (std::int32_t c = 0; c < n2; ++c) planes[q]->at(c, r) = static_cast<float>(q * 1e6 + r * 1000 + c);
  return s;
}

TEST(Rearrange, InvertMirrorsEachAxisAndTwiceRestores) {
  const model::Spectrum2D original = Numbered(130, 131);
  model::Spectrum2D s = original;
  operations::InvertSpectrum(s, true, false);
  EXPECT_EQ(s.RR.at(3, 0), original.RR.at(3, 130));
  EXPECT_EQ(s.II.at(129, 65), original.II.at(129, 65));  // the middle row of an odd axis stays
  EXPECT_EQ(s.RI.at(7, 100), original.RI.at(7, 30));
  operations::InvertSpectrum(s, false, true, 3);
  EXPECT_EQ(s.IR.at(0, 0), original.IR.at(129, 130));
  operations::InvertSpectrum(s, true, true, 2);
  EXPECT_EQ(s.RR.data, original.RR.data);
  EXPECT_EQ(s.IR.data, original.IR.data);
  EXPECT_EQ(s.RI.data, original.RI.data);
  EXPECT_EQ(s.II.data, original.II.data);
}

TEST(Rearrange, ExchangeTransposesInPlaceAndTwiceRestores) {
  EXPECT_FALSE(operations::CanExchange(model::VPH_HOMO));
  EXPECT_FALSE(operations::CanExchange(model::V_HOMO));
  EXPECT_TRUE(operations::CanExchange(model::VPH_HETERO));
  EXPECT_TRUE(operations::CanExchange(model::VPH_HMBC));
  const model::Spectrum2D original = Numbered(300, 140);
  model::Spectrum2D s = original;
  ASSERT_TRUE(operations::ExchangeF1F2(s).ok());
  EXPECT_EQ(s.axis[F2].Point, 140);
  EXPECT_EQ(s.axis[F1].Point, 300);
  EXPECT_EQ(s.axis[F2].Resolution, 20);
  EXPECT_EQ(s.extras[F2].nucleus, "13C");
  EXPECT_EQ(s.RR.at(17, 250), original.RR.at(250, 17));
  EXPECT_EQ(s.RI.at(139, 0), original.RI.at(0, 139));  // RI stays RI, only transposed
  EXPECT_EQ(s.IR.at(1, 2), original.IR.at(2, 1));
  ASSERT_TRUE(operations::ExchangeF1F2(s, 4).ok());
  EXPECT_EQ(s.axis[F2].Point, 300);
  for (auto [a, b] :
       {std::pair{&s.RR, &original.RR}, {&s.IR, &original.IR}, {&s.RI, &original.RI}, {&s.II, &original.II}})
    for (std::int32_t r = 0; r < 140; ++r)
      for (std::int32_t c = 0; c < 300; ++c) ASSERT_EQ(a->at(c, r), b->at(c, r));
}

}  // namespace
}  // namespace velk::test
