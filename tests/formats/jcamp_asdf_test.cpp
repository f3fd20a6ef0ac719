#include <gtest/gtest.h>

#include <random>

#include "formats/jcamp/asdf.h"

namespace velk::formats::jcamp {
namespace {

std::vector<double> Decode(const std::vector<std::string>& lines, std::size_t count, bool* ok = nullptr) {
  std::vector<double> values(count, -999);
  AsdfTable table{values};
  bool good = true;
  for (const std::string& line : lines) good = good && DecodeAsdfLine(line.c_str(), table);
  if (ok) *ok = good;
  values.resize(table.index);
  return values;
}

}  // namespace

TEST(Asdf, EveryFormDecodesAndTheYCheckReplacesTheLastValue) {
  const std::vector<std::string> lines{
      "0 A0J5U",                     // SQZ 10, DIF +15, DUP: two more steps
      "3 E5K?",                      // Y check 55 (dropped), DIF +2, unknown value
      "6 1.5E+01 -2.5e-1,.5",       // AFFN with exponents and a comma
      "9+3-4+5",                     // PAC straight after the X check
      "12 @ $$ checksum 123",        // the comment ends the line
      "13 a5j0T"};                   // SQZ -15, DIF -10 twice
  const std::vector<double> expected{10, 25, 40, 55, 57, 0, 15, -0.25, 0.5, 3, -4, 5, 0, -15, -25, -35};
  EXPECT_EQ(Decode(lines, expected.size()), expected);
  // A line after an unknown value is no Y check: its first value is new.
  EXPECT_EQ(Decode({"0 A1?", "2 B2"}, 3), (std::vector<double>{11, 0, 22}));
  // Surplus values beyond the table are dropped; missing ones are left to the caller.
  EXPECT_EQ(Decode({"0 1 2 3 4"}, 2), (std::vector<double>{1, 2}));

  bool ok = true;
  Decode({"0 1.2.3"}, 4, &ok);
  EXPECT_FALSE(ok);
  Decode({"0 A1!"}, 4, &ok);
  EXPECT_FALSE(ok);
  Decode({"0 1E+999"}, 4, &ok);
  EXPECT_FALSE(ok);
}

TEST(Asdf, EncodedFormsMatchTheirTables) {
  EXPECT_EQ(EncodeAsdf(-7, AsdfCode::Affn), "-7");
  EXPECT_EQ(EncodeAsdf(7, AsdfCode::Pac), "+7");
  EXPECT_EQ(EncodeAsdf(-123, AsdfCode::Sqz), "a23");
  EXPECT_EQ(EncodeAsdf(0, AsdfCode::Sqz), "@");
  EXPECT_EQ(EncodeAsdf(45, AsdfCode::Dif), "M5");
  EXPECT_EQ(EncodeAsdf(-9, AsdfCode::Dif), "r");
  EXPECT_EQ(EncodeAsdf(12, AsdfCode::Dup), "S2");
  EXPECT_EQ(EncodeAsdf(9, AsdfCode::Dup), "s");
}

// Random tables with plateaus, ramps and full-scale jumps: no line ever passes 80 characters,
// lines are filled to exactly 80 when the next item does not fit, and every value comes back.
TEST(Asdf, EncodedLinesStayWithin80CharactersAndDecodeExactly) {
  std::mt19937 random(7);
  std::size_t fullLines = 0;
  for (int round = 0; round < 200; ++round) {
    std::vector<std::int64_t> values(1 + random() % 3000);
    std::int64_t v = 0, step = 0;
    for (auto& value : values) {
      switch (random() % 6) {
        case 0: step = 0; break;                                                    // plateau
        case 1: step = static_cast<std::int64_t>(random() % 21) - 10; break;        // ramp
        case 2: v = static_cast<std::int64_t>(random() % 8388609) - 4194304; break;  // jump
        default: break;
      }
      v = std::clamp<std::int64_t>(v + step, -4194304, 4194304);
      value = v;
    }
    const auto lines = EncodeDifDupLines(values, static_cast<std::int64_t>(values.size()) - 1, -1);
    for (const std::string& line : lines) {
      ASSERT_LE(line.size(), kAsdfLineLength) << line;
      fullLines += line.size() == kAsdfLineLength;
    }
    const std::vector<double> decoded = Decode(lines, values.size());
    ASSERT_EQ(decoded.size(), values.size()) << "round " << round;
    for (std::size_t i = 0; i < values.size(); ++i) ASSERT_EQ(decoded[i], static_cast<double>(values[i])) << i;
  }
  EXPECT_GT(fullLines, 0u);
}

}  // namespace velk::formats::jcamp
