// The fields of the parameter blocks whose history the reader must honour.
#include <gtest/gtest.h>

#include <cstring>

#include "native/fixture.h"
#include "native/parameters_1d.h"
#include "native/parameters_2d.h"

namespace velk::test {
namespace {

std::string Raw(const std::vector<std::uint8_t>& block, std::size_t at, std::size_t width) {
  return {reinterpret_cast<const char*>(block.data() + at), width};
}

TEST(Ver4Parameters, SolventSplitsWithoutBreakingACharacter) {
  struct Case {
    const char* solvent;
    std::size_t breakAt;  // 0: no split
    const char* first;
  };
  for (const Case c : {Case{"CDCl3+DMSO-d6", 1239, "CDCl3+D"}, Case{"ＣＤＣｌ３", 1238, "\x82\x62\x82\x63\x82\x62"},
                       Case{"CD3OD-d4", 0, "CD3OD-d4"}}) {
    SCOPED_TRACE(c.solvent);
    model::Spectrum2D s;
    s.params.SLVNT = c.solvent;
    const auto block = native::EncodeParameters2D(s);
    EXPECT_EQ(Raw(block, 1232, std::strlen(c.first)), c.first);
    EXPECT_EQ(block[1238] == 13 || block[1239] == 13, c.breakAt != 0);
    EXPECT_TRUE(c.breakAt == 0 || block[c.breakAt] == 13);
    model::Spectrum2D r;
    native::DecodeParameters2D(block, r);
    EXPECT_EQ(r.params.SLVNT, c.solvent);
  }
}

TEST(Ver4Parameters, OldWindowNumbersAndTheShiftedNucleus) {
  model::Spectrum2D s;
  s.params.TRNUC = "15N";
  auto block = native::EncodeParameters2D(s);
  EXPECT_EQ(block[1240], 0);
  EXPECT_EQ(Raw(block, 1241, 3), "15N");
  const float oldFloat = 2.0f;
  std::memcpy(block.data() + 1332, &oldFloat, 4);
  const std::int32_t oldLong = 3;
  std::memcpy(block.data() + 1444, &oldLong, 4);
  model::Spectrum2D r;
  native::DecodeParameters2D(block, r);
  EXPECT_EQ(r.params.TRNUC, "15N");
  EXPECT_EQ(r.extras[model::F2].windowNumber, 2);
  EXPECT_EQ(r.extras[model::F1].windowNumber, 3);
  // Unchanged, the old float stays as it was; a changed number is written as a word.
  auto again = native::EncodeParameters2D(r);
  EXPECT_EQ(Raw(again, 1332, 4), Raw(block, 1332, 4));
  r.extras[model::F2].windowNumber = 4;
  again = native::EncodeParameters2D(r);
  EXPECT_EQ(Raw(again, 1332, 4), std::string("\x04\0\0\0", 4));
  const float nonsense = 7.5f;
  std::memcpy(again.data() + 1332, &nonsense, 4);
  native::DecodeParameters2D(again, r);
  EXPECT_EQ(r.extras[model::F2].windowNumber, 0);

  s.params.TRNUC = "ABCDEFGH";  // the eighth character never comes back
  native::DecodeParameters2D(native::EncodeParameters2D(s), r);
  EXPECT_EQ(r.params.TRNUC, "ABCDEFG");
}

TEST(Ver4Parameters, ValuesGivenAsZeroKeepTheRecordsValue) {
  model::Spectrum2D s;
  auto block = native::EncodeParameters2D(s);
  const float minusOne = -1.0f;
  std::memcpy(block.data() + 1584, &minusOne, 4);  // G-BF F1: only a negative value is refused
  model::Spectrum2D r;
  r.axis[model::F2].window.GF = 3.5f;
  r.axis[model::F2].window.GBF = 2.5f;
  r.axis[model::F1].window.GBF = 1.5f;
  native::DecodeParameters2D(block, r);
  EXPECT_EQ(r.axis[model::F2].window.GF, 3.5f);
  EXPECT_EQ(r.axis[model::F2].window.GBF, 0.0f);
  EXPECT_EQ(r.axis[model::F1].window.GBF, 1.5f);

  model::Spectrum1D oneD;
  oneD.params.RGAIN = 40000;
  oneD.verticalRange = {0.0f, 150.0f};
  const auto block1D = native::EncodeParameters1D(oneD);
  std::int32_t gain;
  std::memcpy(&gain, block1D.data() + 656, 4);
  EXPECT_EQ(gain, -1);
  model::Spectrum1D r1D;
  native::DecodeParameters1D(block1D, r1D);
  EXPECT_EQ(r1D.verticalRange[0], 10.6f);
  EXPECT_EQ(r1D.verticalRange[1], 10.6f);
}

}  // namespace
}  // namespace velk::test
