#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>

#include "core/bytes.h"
#include "formats/bytes_to_text.h"
#include "formats/delta_builder.h"
#include "formats/jeol/delta.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::formats::jeol {
namespace {

using test::DeltaRecordSpec;
using test::DeltaLayout;
constexpr auto kBig = core::ByteOrder::Big;
constexpr auto kLittle = core::ByteOrder::Little;

struct Reader {
  test::ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words;
  model::ReadContext context{prompt, progress, words, nullptr};
  test::TempFolder folder;
  int files = 0;

  std::filesystem::path Save(const std::vector<std::uint8_t>& bytes) {
    return folder.Write("f" + std::to_string(files++) + ".jdf", std::string(bytes.begin(), bytes.end()));
  }
  platform::Outcome Read1D(const DeltaLayout& layout, model::Spectrum1D& s, const DeltaOptions& o = {}) {
    return ReadDataDelta(Save(test::BuildDelta(layout)), s, context, o);
  }
  platform::Outcome Read2D(const DeltaLayout& layout, model::Spectrum2D& s, const DeltaOptions& o = {}) {
    return ReadData2DDelta(Save(test::BuildDelta(layout)), s, context, o);
  }
};

// A 1D FID of 16 complex points: real half then imaginary half, the last 40 % zero so that the
// tail level is 0 and the scale is the largest real value, 8.
DeltaLayout SmallFid() {
  DeltaLayout s;
  s.points = {16, 1};
  s.stop = {0.015, 0};
  for (int j = 0; j < 16; ++j) s.data.push_back(j < 9 ? 8.0 - j : 0.0);
  for (int j = 0; j < 16; ++j) s.data.push_back(j < 9 ? -0.5 * j : 0.0);
  s.records = {
      {"X_DOMAIN", 0, 0, 0, "1H"},
      {"X_SWEEP", 1, 13, 2, "", 1000.0},
      {"X_RESOLUTION", 1, 13, 2, "", 1000.0 / 16},
      {"relaxation_delay", 17, 28, 2, "", 1500.0},
      {"SCANS", 0, 0, 1, "", 64},
      {"experiment", 0, 0, 0, "single_pulse.jxp"},
      {"ACTUAL_START_TIME", 0, 0, 1, "", 1000},
      {"END_TIME", 0, 0, 2, "", 365.0 * 86400 + 3661},
      {"X_OFFSET", 1, 26, 2, "", 5.0},
  };
  return s;
}

}  // namespace

TEST(DeltaReader, AFidReadsAlikeInEveryByteOrderAndElementWidth) {
  Reader r;
  std::vector<model::Spectrum1D> read;
  for (auto [header, data, singles] : {std::tuple{kBig, kBig, false}, std::tuple{kLittle, kLittle, false},
                                       std::tuple{kBig, kLittle, false}, std::tuple{kBig, kLittle, true}}) {
    DeltaLayout layout = SmallFid();
    layout.headerOrder = header;
    layout.dataOrder = data;
    layout.singles = singles;
    read.emplace_back();
    ASSERT_TRUE(r.Read1D(layout, read.back()).ok());
  }
  const model::Spectrum1D& s = read.front();
  for (int j = 0; j < 16; ++j) {
    EXPECT_FLOAT_EQ(s.re[j], j < 9 ? (8.0f - j) / 8 : 0.0f) << j;
    EXPECT_FLOAT_EQ(s.im[j], j < 9 ? -0.5f * j / 8 : 0.0f) << j;
  }
  // (A single-precision -0 decodes by hand to -2^-127: only nearly equal.)
  for (const model::Spectrum1D& other : read) {
    for (int j = 0; j < 16; ++j) {
      EXPECT_NEAR(other.re[j], s.re[j], 1e-30);
      EXPECT_NEAR(other.im[j], s.im[j], 1e-30);
    }
    EXPECT_EQ(other.params.POINT, 16);
  }
  EXPECT_EQ(s.params.OBNUC, "1H");
  EXPECT_FLOAT_EQ(s.params.OFR, 400.0f);
  EXPECT_FLOAT_EQ(s.params.FREQU, 1000.0f);
  EXPECT_FLOAT_EQ(s.params.PD, 1.5f);       // milliseconds prefix
  EXPECT_FLOAT_EQ(s.params.ACQTM, 0.016f);  // 1 / Hz per point
  EXPECT_EQ(s.params.SCANS, 64);
  EXPECT_EQ(s.params.EXMOD, "single_pulse.jxp");
  EXPECT_EQ(s.params.DATIM, "01/Jan/1991  01:01:01");  // the later date record wins
  EXPECT_EQ(s.texts.sampleId, "sample");
  EXPECT_EQ(s.comment, "comment");
}

TEST(DeltaReader, SpectraAreTurnedToStartAtTheLowFrequencyEnd) {
  Reader r;
  DeltaLayout layout = SmallFid();
  layout.units = {1, 26, 0, 0};
  layout.start = {10.0, 0};
  layout.stop = {0.0, 0};
  layout.records.back().value = 5.0;  // the centre
  model::Spectrum1D s;
  ASSERT_TRUE(r.Read1D(layout, s).ok());  // 32 values for 16 points: real and imaginary sections
  EXPECT_FLOAT_EQ(s.re[0], 0.0f);        // file element 15
  EXPECT_FLOAT_EQ(s.re[15], 8.0f);       // file element 0
  EXPECT_FLOAT_EQ(s.im[15], 0.0f);       // file element 16
  EXPECT_NEAR(s.axisPpm[0], 0.0, 1e-9);
  EXPECT_NEAR(s.axisPpm[15], 10.0 * 15 / 16, 1e-9);
  layout.data.pop_back();  // one element less: no imaginary section
  ASSERT_TRUE(r.Read1D(layout, s).ok());
  EXPECT_FLOAT_EQ(s.im[0], 0.0f);
}

TEST(DeltaReader, TwoDimensionalSubmatricesLandInTheirPlanes) {
  Reader r;
  DeltaLayout layout;
  layout.dimensions = 2;
  layout.points = {70, 64};  // F2 not a multiple of 32: its last 6 points are not stored
  layout.stop = {0.07, 0.064};
  const auto value = [](int section, std::int32_t c, std::int32_t row) { return section * 10000 + row * 100.0 + c; };
  layout.data = test::Submatrices(4, 64, 64, value);
  layout.records = {{"X_SWEEP", 1, 13, 2, "", 1000}, {"Y_SWEEP", 1, 13, 2, "", 1000}};
  r.words.pulseModeClass = model::VPH_HETERO;
  model::Spectrum2D s;
  ASSERT_TRUE(r.Read2D(layout, s).ok());
  EXPECT_EQ(s.axis[model::F2].Point, 128);  // a power of two for the transforms
  EXPECT_EQ(s.extras[model::F2].fidPoints, 70);
  EXPECT_EQ(s.axis[model::F1].Point, 64);
  for (auto [c, row] : {std::pair{0, 0}, {31, 1}, {33, 40}, {63, 63}}) {
    EXPECT_EQ(s.RR.at(c, row), value(0, c, row));
    EXPECT_EQ(s.IR.at(c, row), value(1, c, row));  // the second section is the F2 imaginary part
    EXPECT_EQ(s.RI.at(c, row), value(2, c, row));
    EXPECT_EQ(s.II.at(c, row), value(3, c, row));
  }
  EXPECT_EQ(s.RR.at(69, 5), 0.0f);

  // Absolute-value classes have two sections; "Y_FREQ_FLIP" turns F1 over; the FID baseline
  // option takes each row's tail level away.
  r.words.pulseModeClass = model::V_HETERO;
  layout.points = {64, 64};
  layout.data = test::Submatrices(2, 64, 64, [](int section, std::int32_t c, std::int32_t row) {
    return c < 8 ? 1000.0 * (section + 1) + row : 7.0;
  });
  layout.records.push_back({"Y_FREQ_FLIP", 0, 0, 0, "TRUE"});
  ASSERT_TRUE(r.Read2D(layout, s, {DeltaCommentMode::Separate, true}).ok());
  EXPECT_EQ(r.words.realOnly, 0);
  EXPECT_FLOAT_EQ(s.RR.at(0, 0), 1000.0f + 63 - 7);
  EXPECT_FLOAT_EQ(s.IR.at(3, 63), 2000.0f - 7);
  EXPECT_FLOAT_EQ(s.RR.at(50, 10), 0.0f);
  EXPECT_EQ(s.RI.at(0, 0), 0.0f);
}

TEST(DeltaReader, TwoDimensionalSpectraAreReversedOnBothAxes) {
  Reader r;
  DeltaLayout layout;
  layout.dimensions = 2;
  layout.points = {64, 32};
  layout.units = {1, 26, 1, 26};
  layout.start = {10, 150};
  layout.stop = {0, 0};
  const auto value = [](int, std::int32_t c, std::int32_t row) { return row * 100.0 + c; };
  layout.data = test::Submatrices(1, 64, 32, value);
  model::Spectrum2D s;
  ASSERT_TRUE(r.Read2D(layout, s).ok());
  EXPECT_EQ(r.words.realOnly, 1);
  EXPECT_EQ(s.RR.at(0, 0), value(0, 63, 31));
  EXPECT_EQ(s.RR.at(63, 31), value(0, 0, 0));
  EXPECT_NEAR(s.ppmF1[0], 0.0, 1e-4);
  EXPECT_NEAR(s.ppmF1[31], 150.0, 0.02);
}

TEST(DeltaReader, DamagedFilesAreRefusedWithTheirMessagesAndChangeNothing) {
  Reader r;
  model::Spectrum1D s;
  s.params.POINT = 123;
  DeltaLayout twoD = SmallFid();
  twoD.dimensions = 2;
  platform::Outcome o = r.Read1D(twoD, s);
  EXPECT_EQ(o.code, 1);
  EXPECT_EQ(o.message.title, "Data Error");
  EXPECT_EQ(o.message.text, "2D Data!");

  std::vector<std::uint8_t> good = test::BuildDelta(SmallFid());
  std::vector<std::uint8_t> foreign = good;
  foreign[0] = 'X';
  EXPECT_EQ(ReadDataDelta(r.Save(foreign), s, r.context).code, -1);
  for (std::size_t length : {std::size_t{10}, std::size_t{700}, std::size_t{1300}, std::size_t{1400}, good.size() - 1}) {
    const std::vector<std::uint8_t> cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(ReadDataDelta(r.Save(cut), s, r.context).code, 1) << length;
  }
  for (std::size_t field : {1212u, 1216u, 1284u, 1288u, 176u}) {  // offsets, lengths, points
    std::vector<std::uint8_t> flipped = good;
    for (std::size_t i = 0; i < 4; ++i) flipped[field + i] ^= 0x7F;
    EXPECT_EQ(ReadDataDelta(r.Save(flipped), s, r.context).code, 1) << field;
  }
  EXPECT_EQ(s.params.POINT, 123);

  // Any byte of header and parameters changed at random: an answer, never a crash.
  DeltaLayout small;
  small.dimensions = 2;
  small.points = {64, 32};
  small.data = test::Submatrices(4, 64, 32, [](int, std::int32_t c, std::int32_t row) { return c + row; });
  small.records = SmallFid().records;
  const std::vector<std::uint8_t> valid = test::BuildDelta(small);
  std::uint32_t seed = 12345;
  for (int trial = 0; trial < 300; ++trial) {
    std::vector<std::uint8_t> changed = valid;
    for (int k = 0; k < 4; ++k) {
      seed = seed * 1103515245 + 12345;
      changed[(seed >> 8) % (1360 + 16 + 64 * small.records.size())] = static_cast<std::uint8_t>(seed >> 24);
    }
    const auto path = r.Save(changed);
    model::Spectrum2D any2D;
    model::Spectrum1D any1D;
    EXPECT_GE(ReadData2DDelta(path, any2D, r.context).code, -1);
    EXPECT_GE(ReadDataDelta(path, any1D, r.context).code, -1);
    std::filesystem::remove(path);
  }

  DeltaLayout huge;
  huge.dimensions = 2;
  huge.points = {0x200000, 64};
  model::Spectrum2D s2;
  o = r.Read2D(huge, s2);
  EXPECT_EQ(o.message.text, "Too Large Data");
}

TEST(DeltaReader, AnUnknownAxisUnitIsAQuestionAndTheAnswerDecides) {
  Reader r;
  DeltaLayout layout = SmallFid();
  layout.units = {1, 0, 0, 0};
  layout.start = {10, 0};
  layout.stop = {0, 0};
  r.prompt.choices = {1};
  model::Spectrum1D s;
  ASSERT_TRUE(r.Read1D(layout, s).ok());
  ASSERT_EQ(r.prompt.shown.size(), 1u);
  EXPECT_EQ(r.prompt.shown[0].title, "Data Domain");
  EXPECT_FLOAT_EQ(s.re[15], 8.0f);  // read as a spectrum: reversed, not scaled
}

TEST(DeltaReader, CommentOptionFeedsTheTextFields) {
  Reader r;
  model::Spectrum1D s;
  ASSERT_TRUE(r.Read1D(SmallFid(), s, {DeltaCommentMode::SampleIdAsComment}).ok());
  EXPECT_EQ(s.comment, "sample");
  EXPECT_EQ(s.params.EXPCM, "comment");
  ASSERT_TRUE(r.Read1D(SmallFid(), s, {DeltaCommentMode::Joined}).ok());
  EXPECT_EQ(s.comment, "sample\r\ncomment");
}

TEST(BytesToText, KeepsShiftJisPairsWholeAndSkipsWhatIsNoText) {
  // NUL is skipped, 0xFF dropped, a lead byte whose pair would leave the field is dropped.
  const std::vector<std::uint8_t> bytes{'A', 0, 'B', 0xFF, 0x82, 0xA0, 'C', 0x82};
  EXPECT_EQ(BytesToText(bytes, 0, 8), "AB\xE3\x81\x82" "C");
  EXPECT_EQ(BytesToText(bytes, 0, 5), "AB");
  EXPECT_EQ(BytesToText(bytes, 6, 100), "C");
}

}  // namespace velk::formats::jeol
