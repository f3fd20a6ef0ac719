// Write -> read -> write gives the same bytes, and what is read is what was written.
#include <gtest/gtest.h>

#include "formats/registry.h"
#include "model/type_detector.h"
#include "native/file_layout.h"
#include "native/fixture.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

using native::SaveMode;

struct Case {
  const char* name;
  int pulseModeClass;
  bool companions;
  bool everyCarried;
};

// Writes the set, reads it back, writes what was read to the same name and compares the bytes.
std::unique_ptr<ReadBack> RoundTrip(const model::Spectrum2D& s, const model::Spectrum1D* f2, const model::Spectrum1D* f1,
                                    int pulseModeClass) {
  TempFolder folder;
  const auto file = folder / "set.vlk2";
  const model::DataWords words{0x210C, pulseModeClass, 0};
  const native::WriteOptions options{false, nullptr};
  EXPECT_TRUE(native::WriteDataR4(file, s, f2, f1, words, SaveMode::AllPlanes, options).ok());
  const std::vector<std::uint8_t> first = Slurp(file);
  auto back = Read2D(first);
  EXPECT_TRUE(back->outcome.ok()) << back->outcome.message.text;
  EXPECT_TRUE(native::WriteDataR4(file, *back->s, &back->f2, &back->f1, back->words, SaveMode::AllPlanes, options).ok());
  const std::vector<std::uint8_t> second = Slurp(file);
  EXPECT_EQ(first.size(), second.size());
  const auto differ = std::mismatch(first.begin(), first.end(), second.begin(), second.end());
  EXPECT_TRUE(differ.first == first.end()) << "first difference at byte " << (differ.first - first.begin());
  return back;
}

TEST(Ver4RoundTrip, RewritingWhatWasReadChangesNoByte) {
  for (const Case c : {Case{"four planes with companions", 0, true, false}, Case{"one plane, no companions", 1, false, false},
                       Case{"every carried section", 3, true, true}}) {
    SCOPED_TRACE(c.name);
    auto s = MakeSpectrum2D(130, 200);
    model::Spectrum1D f2 = MakeSpectrum1D(130, 1), f1 = MakeSpectrum1D(200, 2);
    if (c.everyCarried) AddEveryCarriedSection(*s, f2, f1);
    auto back = RoundTrip(*s, c.companions ? &f2 : nullptr, c.companions ? &f1 : nullptr, c.pulseModeClass);
    const model::Spectrum2D& r = *back->s;
    const bool fourPlanes = c.pulseModeClass == 0 || c.pulseModeClass == 3;
    EXPECT_EQ(back->words.realOnly, fourPlanes ? 0 : 1);
    EXPECT_EQ(back->words.pulseModeClass, c.pulseModeClass);
    for (const auto& [plane, original] : {std::pair{&r.RR, &s->RR}, {&r.RI, &s->RI}, {&r.IR, &s->IR}, {&r.II, &s->II}}) {
      if (!fourPlanes && plane != &r.RR) break;
      EXPECT_EQ(plane->at(129, 199), original->at(129, 199));
      EXPECT_EQ(plane->at(3, 5), original->at(3, 5));
    }
    EXPECT_EQ(r.params.SLVNT, "ＣＤＣｌ３");
    EXPECT_EQ(r.params.TRNUC, "15N");
    EXPECT_EQ(r.params.RGAIN, -1);
    EXPECT_EQ(r.texts.sampleId, "サンプル 7");
    EXPECT_EQ(r.comment, "first line\r\nsecond line");
    EXPECT_EQ(r.history.operations, s->history.operations);
    EXPECT_EQ(r.processing[37], "last line");
    EXPECT_EQ(r.processing[5], "FID Shift 3");
    ASSERT_EQ(r.peaks.peaks.size(), 2u);
    EXPECT_EQ(r.peaks.peaks[1].PointF1, 21);
    EXPECT_EQ(r.peaks.peaks[1].Height, -0.5f);
    EXPECT_EQ(r.regions[2].state, 1);
    EXPECT_EQ(r.extras[model::F1].windowNumber, 1);
    EXPECT_EQ(r.axis[model::F1].window.end[2], 70.0f);
    EXPECT_FLOAT_EQ(r.ppmF2[2], 11.5f - 2 * 0.0125f);
    EXPECT_EQ(r.carried.fileSections.size(), c.everyCarried ? native::kFileSections.size() + 1 : 0u);
    if (c.companions) {
      EXPECT_EQ(back->f1.params.POINT, 200);
      EXPECT_EQ(back->f1.mode, 2);
      EXPECT_EQ(back->f1.re[199], 199.0f);
      EXPECT_EQ(back->f1.im[199], -199.0f);
      EXPECT_DOUBLE_EQ(back->f1.axisPpm[2], 10.0 - 2 * 0.0123456789);
      EXPECT_EQ(back->f2.xLabels[2], "x 3");
      EXPECT_EQ(back->f2.carried.sections.size(), c.everyCarried ? 9u : 2u);  // integral and peaks always stand
    }
  }
}

TEST(Ver4RoundTrip, OneDFileAndTheDetector) {
  TempFolder folder;
  model::Spectrum1D s = MakeSpectrum1D(300, 1);
  // A 1D file's late entries count only with a 2D address of 1280 or more: this one is dropped.
  s.carried.sections.push_back({"##DRAW ORDER 2D", std::vector<std::uint8_t>(32, 1)});
  s.carried.sections.push_back({"## STRUCTURE", std::vector<std::uint8_t>(48, 2)});
  const auto file = folder / "trace.vlk";
  ASSERT_TRUE(native::WriteDataR4(file, s, {false, nullptr}).ok());
  const auto first = Slurp(file);
  ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words;
  model::ReadContext context{prompt, progress, words, nullptr};
  model::Spectrum1D r;
  ASSERT_TRUE(native::ReadDataR4(file, r, context).ok());
  EXPECT_EQ(r.re[299], 299.0f);
  ASSERT_EQ(r.carried.sections.size(), 3u);  // integral, peaks, structure
  EXPECT_EQ(r.carried.sections[2].tag, "## STRUCTURE");
  // Without the dropped section, what was read is written again byte for byte.
  ASSERT_TRUE(native::WriteDataR4(file, r, {false, nullptr}).ok());
  const auto second = Slurp(file);
  EXPECT_LT(second.size(), first.size());
  model::Spectrum1D r2;
  ASSERT_TRUE(native::ReadDataR4(file, r2, context).ok());
  ASSERT_TRUE(native::WriteDataR4(file, r2, {false, nullptr}).ok());
  EXPECT_TRUE(Slurp(file) == second);

  const model::Detection oneD = model::TypeDetector(file, formats::Formats());
  EXPECT_EQ(oneD.code, 0x110C);
  EXPECT_EQ(oneD.tag, "VELK1_V4");
  auto s2 = MakeSpectrum2D(128, 128);
  const auto twoDFile = folder / "set.vl2";
  ASSERT_TRUE(native::WriteDataR4(twoDFile, *s2, nullptr, nullptr, {0x210C, 3, 0}, SaveMode::AllPlanes, {}).ok());
  const model::Detection twoD = model::TypeDetector(twoDFile, formats::Formats());
  EXPECT_EQ(twoD.code, 0x210C);
  EXPECT_EQ(twoD.tag, "VELK2D_V4");
  EXPECT_EQ(twoD.pulseModeClass, 3);
}

}  // namespace
}  // namespace velk::test
