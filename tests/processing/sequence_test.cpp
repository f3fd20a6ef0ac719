// The 2D sequence on synthetic hypercomplex data: pure absorption peaks at the right F2 and F1
// positions for each family's sign convention, the absolute path, prediction, quit and the text.
#include <gtest/gtest.h>

#include <cmath>

#include "processing/sequence.h"
#include "synthetic.h"
#include "support/temp_folder.h"

namespace velk::processing {
namespace {

using model::F1;
using model::F2;

constexpr std::int32_t kF2Points = 64, kF1Points = 32;
constexpr double kF2Cycles = 0.1875, kF1Cycles = -0.125;  // on the grid of every zero fill

// States data: F1 cosine in (RR, IR), F1 sine in (RI, II); both axes decay to a few per mille.
model::Spectrum2D MakeStatesSet(bool conjugateF2) {
  model::Spectrum2D s;
  EXPECT_EQ(model::AllocateSpectrum2D(s, kF2Points, kF1Points), 0);
  for (model::Axis a : {F1, F2}) {
    const std::int32_t n = a == F1 ? kF1Points : kF2Points;
    s.axis[a].Point = n;
    s.axis[a].Frequency = 1000;
    s.axis[a].Resolution = 1000.0 / n;
    s.extras[a].fidPoints = n;
    s.extras[a].absFreqCenter = 400.0;
    s.extras[a].absFreq0ppm = 399.998;
    s.extras[a].adMode = 2;
  }
  const double f2 = conjugateF2 ? -kF2Cycles : kF2Cycles;  // the data carry the family's sign
  for (std::int32_t j = 0; j < kF1Points; ++j)
    for (std::int32_t i = 0; i < kF2Points; ++i) {
      const auto t2 = test::SignalAt({{f2, 0.08}}, i);
      const double envelope = std::exp(-0.15 * j);
      const double c = std::cos(2 * M_PI * kF1Cycles * j) * envelope, sn = std::sin(2 * M_PI * kF1Cycles * j) * envelope;
      s.RR.at(i, j) = static_cast<float>(t2.real() * c);
      s.IR.at(i, j) = static_cast<float>(t2.imag() * c);
      s.RI.at(i, j) = static_cast<float>(t2.real() * sn);
      s.II.at(i, j) = static_cast<float>(t2.imag() * sn);
    }
  return s;
}

struct Peak {
  std::int32_t column = 0, row = 0;
};

Peak Largest(const model::Plane& p, std::int32_t columns, std::int32_t rows) {
  Peak best;
  for (std::int32_t j = 0; j < rows; ++j)
    for (std::int32_t i = 0; i < columns; ++i)
      if (std::fabs(p.at(i, j)) > std::fabs(p.at(best.column, best.row))) best = {i, j};
  return best;
}

SequenceResult RunSequence(model::Spectrum2D& s, SequenceSettings& settings, std::vector<std::string>& list,
                   bool withLp = false) {
  platform::NoProgress progress;
  const SequenceRun run{progress, list};
  return withLp ? Execute2DFftWithLp(s, settings, run) : Execute2DFft(s, settings, run);
}

TEST(Sequence2D, PhaseSensitiveSetGivesPureAbsorptionAtTheRightPlace) {
  // Ver.4 (format 12) conjugates F2 in class 0 with two converters; Bruker (format 4) does not.
  for (int format : {12, 4}) {
    const bool conjugateF2 = format == 12;
    model::Spectrum2D s = MakeStatesSet(conjugateF2);
    SequenceSettings settings = MakeSequenceSettings(s, 0, format);
    settings.threads = 2;
    std::vector<std::string> list;
    for (model::Axis a : {F1, F2}) ASSERT_TRUE(ZeroFill(s, settings, a).ok());
    ASSERT_EQ(RunSequence(s, settings, list).code, 0);
    const std::int32_t n2 = 128, n1 = 64;
    const Peak p = Largest(s.RR, n2, n1);
    EXPECT_EQ(p.column, n2 / 2 + kF2Cycles * n2) << format;
    EXPECT_EQ(p.row, n1 / 2 + kF1Cycles * n1) << format;
    EXPECT_FLOAT_EQ(s.RR.at(p.column, p.row), 1.0f);  // positive absorption, normalised
    EXPECT_NEAR(s.IR.at(p.column, p.row), 0, 0.02);    // no dispersion at the centre
    EXPECT_NEAR(s.RI.at(p.column, p.row), 0, 0.02);
    EXPECT_NEAR(s.RR.at(p.column - 1, p.row), s.RR.at(p.column + 1, p.row), 0.02);
    EXPECT_NEAR(s.RR.at(p.column, p.row - 1), s.RR.at(p.column, p.row + 1), 0.02);
    EXPECT_EQ(s.axis[F2].Point, n2);
    EXPECT_DOUBLE_EQ(s.axis[F2].Resolution, 1000.0 / n2);
    EXPECT_GT(s.ppmF2[100], s.ppmF2[10]);  // frequency grows with the index
    EXPECT_EQ(list.front(), "Current Process");
    EXPECT_EQ(list.back(), "Make Display Data");
    EXPECT_EQ(s.processing[0], "HOMO Nucler, Phase Sensitive");
    EXPECT_EQ(s.processing[5], "FID Shift 0");
    EXPECT_EQ(s.processing[8], "(F1) Dual AD");
    EXPECT_EQ(s.processing[10], "ZeroFill F1 x2");
    EXPECT_EQ(s.processing[12], "");
    EXPECT_EQ(s.processing[22], "(F1)Exponential");
    EXPECT_EQ(s.processing[23], "BF(F1) = 0 Hz");
    EXPECT_EQ(s.processing[24], "Multi Trape(F1) OFF");
  }
}

TEST(Sequence2D, AbsolutePathAndF1ExchangeMoveThePeakByHalfTheSpan) {
  model::Spectrum2D s = MakeStatesSet(true);
  ApplyF1Exchange(s, 1, kF2Points, kF1Points);
  SequenceSettings settings = MakeSequenceSettings(s, 1, 12);
  s.texts.instrumentId = "av600";
  s.params.OBNUC = "1H";
  settings.referenceTable = [](const std::string& id, const std::string&, const std::string& nucleus, double centre) {
    return id == "AV600" && nucleus == "1H" && std::fabs(centre - 400.0) < 0.05 ? std::optional<double>(399.998)
                                                                                : std::nullopt;
  };
  std::vector<std::string> list;
  ASSERT_EQ(RunSequence(s, settings, list).code, 0);
  EXPECT_NEAR(s.ppmF2[kF2Points / 2], (400.0 - 399.998) / 399.998 * 1e6, 1e-3);  // the table's 0 ppm
  EXPECT_NEAR(s.ppmF2[kF2Points / 2 + 1] - s.ppmF2[kF2Points / 2], 1000.0 / kF2Points / (400 - 0.0005), 1e-6);
  const Peak p = Largest(s.RR, kF2Points, kF1Points);
  EXPECT_EQ(p.column, kF2Points / 2 + kF2Cycles * kF2Points);
  // The cosine in F1 gives +f1 and -f1; the exchange moves both by half the span.
  const std::int32_t plus = kF1Points / 2 + kF1Cycles * kF1Points, minus = kF1Points / 2 - kF1Cycles * kF1Points;
  EXPECT_TRUE(p.row == (plus + kF1Points / 2) % kF1Points || p.row == (minus + kF1Points / 2) % kF1Points) << p.row;
  EXPECT_FLOAT_EQ(s.RR.at(p.column, p.row), 1.0f);
  EXPECT_EQ(list.back(), "Make Display Data");
  EXPECT_EQ(list[list.size() - 2], "POWER");
  EXPECT_EQ(s.processing[0], "HOMO Nucler, Absolute");
}

TEST(Sequence2D, PredictionReplacesZeroFillAndIsWrittenDown) {
  model::Spectrum2D s = MakeStatesSet(true);
  SequenceSettings settings = MakeSequenceSettings(s, 0, 12);
  std::vector<std::string> list;
  EXPECT_EQ(RunSequence(s, settings, list, true).message.text, "Set LP Fills or LP_Back for Row and/or Column");
  settings.axis[F1].lp = {.Order = 2, .Points = 12, .Start = 2};
  ASSERT_TRUE(LpFill(s, settings, F1).ok());
  settings.axis[F1].lp.Points = 40;  // more than the data: refused with the sequence's words
  EXPECT_EQ(RunSequence(s, settings, list, true).message.text, "Check LP Parameter");
  settings.axis[F1].lp.Points = 12;
  ASSERT_EQ(RunSequence(s, settings, list, true).code, 0);
  const Peak p = Largest(s.RR, kF2Points, 64);
  EXPECT_EQ(p.row, 32 + kF1Cycles * 64);
  EXPECT_EQ(p.column, kF2Points / 2 + kF2Cycles * kF2Points);
  EXPECT_EQ(s.processing[10], "ZeroFill F1 x2");
  EXPECT_EQ(s.processing[13], "(F1)LP Forward ON");
  EXPECT_EQ(s.processing[14], "(F1)LP Order = 2");
  EXPECT_NE(std::find(list.begin(), list.end(), "LP Forward(F1) Calc.-2"), list.end());
}

TEST(Sequence2D, QuitEndsTheRunAndTheWorkFileRestoresThePlanes) {
  model::Spectrum2D s = MakeStatesSet(true);
  const model::Spectrum2D before = s;
  test::TempFolder folder;
  const auto work = folder / "FID_Work_File_2D0000.dat";
  ASSERT_EQ(SaveFidWork(work, s), 0);
  SequenceSettings settings = MakeSequenceSettings(s, 0, 12);
  struct QuitSoon final : platform::Progress {
    int steps = 0;
    bool Step(std::int64_t, std::int64_t) override { return ++steps < 40; }
  } quit;
  std::vector<std::string> list;
  std::vector<std::string> captions;
  const SequenceRun run{quit, list, [&](std::string_view c) { captions.emplace_back(c); }};
  EXPECT_EQ(Execute2DFft(s, settings, run).code, 1);
  EXPECT_EQ(captions.back(), "F2FFT(2)");  // the first pair is done, the second half done
  ASSERT_EQ(RestoreFidWork(work, s), 0);
  EXPECT_EQ(s.RR.data, before.RR.data);
  EXPECT_EQ(s.II.data, before.II.data);
  std::filesystem::resize_file(work, 100);  // a damaged work file is refused, not read past its end
  EXPECT_EQ(RestoreFidWork(work, s), -1);
}

}  // namespace
}  // namespace velk::processing
