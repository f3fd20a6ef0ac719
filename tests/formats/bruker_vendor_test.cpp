// Our transform of the raw ser files of the cyclosporin corpus against the vendor's own processed
// 2rr of the same experiments: the strong peaks at the same place, the same ppm grid, and for the
// edited HSQC the same signs.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "formats/bruker_sets.h"
#include "formats/bruker_vendor.h"
#include "processing/fid_corrections.h"
#include "processing/recipe.h"
#include "processing/sequence.h"
#include "support/corpus.h"

namespace velk::test {
namespace {

namespace fs = std::filesystem;
using model::F1;
using model::F2;

// How many of the vendor's strongest peaks have one of ours (above 1 % of our highest) within 1.5
// vendor points on both axes. Phase-sensitive spectra are compared by their hypercomplex modulus.
int MatchedPeaks(const Processed& t) {
  const auto& o = t.ours;
  const auto height = [&](int c, int r) {
    if (!t.phaseSensitive) return std::fabs(o.RR.at(c, r));
    const float rr = o.RR.at(c, r), ir = o.IR.at(c, r), ri = o.RI.at(c, r), ii = o.II.at(c, r);
    return std::sqrt(rr * rr + ir * ir + ri * ri + ii * ii);
  };
  auto ours = LocalMaxima(o.axis[F2].Point, o.axis[F1].Point, height);
  const float floor = ours.empty() ? 0.0f : 0.01f * ours.front().height;
  std::erase_if(ours, [&](const Peak& p) { return p.height < floor; });
  const double step2 = std::fabs(t.vendor.extras[F2].ppmStep), step1 = std::fabs(t.vendor.extras[F1].ppmStep);
  int matched = 0;
  for (const Peak& v : t.vendorPeaks) {
    const double p2 = Ppm(t.vendor, F2, v.column), p1 = Ppm(t.vendor, F1, v.row);
    matched += std::any_of(ours.begin(), ours.end(), [&](const Peak& p) {
      return std::fabs(Ppm(o, F2, p.column) - p2) <= 1.5 * step2 && std::fabs(Ppm(o, F1, p.row) - p1) <= 1.5 * step1;
    });
  }
  return matched;
}

// The edited HSQC phased in zero order on both axes so that our real plane is absorptive at the
// vendor's peaks (largest sum of |RR|), the overall sign taken from the strongest peak: how many of
// the 20 peaks then have the vendor's sign.
int AgreeingSigns(const Processed& t) {
  struct Quad { float rr, ir, ri, ii; double vendor; };
  std::vector<Quad> at;
  for (const Peak& v : t.vendorPeaks) {
    const std::int32_t c = IndexOf(t.ours, F2, Ppm(t.vendor, F2, v.column));
    const std::int32_t r = IndexOf(t.ours, F1, Ppm(t.vendor, F1, v.row));
    const auto& o = t.ours;
    at.push_back({o.RR.at(c, r), o.IR.at(c, r), o.RI.at(c, r), o.II.at(c, r), t.vendor.RR.at(v.column, v.row)});
  }
  const auto phased = [](const Quad& q, double a2, double a1) {
    const double c2 = std::cos(a2), s2 = std::sin(a2), c1 = std::cos(a1), s1 = std::sin(a1);
    return q.rr * c2 * c1 - q.ir * s2 * c1 - q.ri * c2 * s1 + q.ii * s2 * s1;
  };
  double best = -1, a2Best = 0, a1Best = 0;
  for (int k2 = 0; k2 < 72; ++k2)
    for (int k1 = 0; k1 < 72; ++k1) {
      const double a2 = k2 * std::numbers::pi / 36, a1 = k1 * std::numbers::pi / 36;
      double sum = 0;
      for (const Quad& q : at) sum += std::fabs(phased(q, a2, a1));
      if (sum > best) best = sum, a2Best = a2, a1Best = a1;
    }
  const double overall = phased(at.front(), a2Best, a1Best) * at.front().vendor > 0 ? 1 : -1;
  return static_cast<int>(std::count_if(at.begin(), at.end(), [&](const Quad& q) {
    return overall * phased(q, a2Best, a1Best) * q.vendor > 0;
  }));
}

}  // namespace

TEST(BrukerVendorSpectra, OurTransformOfSerFindsTheVendorsPeaksOnItsGrid) {
  for (const char* set : {"cyclosporin_cosy/1", "cyclosporin_hsqc/3", "cyclosporin_hmbc/2"}) {
    const Processed t = Process(set);
    ASSERT_EQ(t.vendorPeaks.size(), 20u) << set;
    EXPECT_GE(MatchedPeaks(t), 18) << set;
    // Where both have the same size the grids are the same but for one point: the vendor counts
    // its carrier one point further from the low end (peak maxima agree to about 0.1 point).
    for (int a : {F1, F2}) {
      if (t.ours.axis[a].Point != t.vendor.axis[a].Point) continue;
      const std::int32_t n = t.vendor.axis[a].Point;
      const double step = std::fabs(t.vendor.extras[a].ppmStep);
      for (std::int32_t i : {0, n / 2, n - 2})
        EXPECT_NEAR(Ppm(t.ours, a, i + 1), Ppm(t.vendor, a, i), 0.1 * step) << set << " axis " << a << " point " << i;
    }
    if (t.phaseSensitive) {
      EXPECT_GE(AgreeingSigns(t), 18) << set;
    }
  }
}

// With the recipe stored beside the raw data (the default recipe) the transform is the vendor's: the strongest peaks in
// place, the vendor's sign on each of them in RR, and the whole plane alike. Our point k is the
// vendor's point k - 1 on both axes (the carrier one point further from the low end).
TEST(BrukerVendorSpectra, TheStoredRecipeReproducesTheVendorsSpectrum) {
  for (const char* set : {"cyclosporin_cosy/1", "cyclosporin_hsqc/3", "cyclosporin_hmbc/2"}) {
    ScriptedPrompt prompt;
    const fs::path folder = CorpusPath(std::string("bruker/") + set);
    model::Spectrum2D vendor, ours;
    ASSERT_TRUE(Read(folder / "pdata/1/2rr", vendor, prompt).outcome.ok()) << set;
    const auto raw = Read(folder / "ser", ours, prompt);
    ASSERT_TRUE(raw.outcome.ok()) << set;
    ASSERT_TRUE(ours.vendor.recipe.has_value()) << set;
    auto settings = processing::DefaultFtSettings(ours, raw.words.pulseModeClass, model::kBruker, "");
    ASSERT_TRUE(settings.vendor.has_value()) << set;
    platform::NoProgress progress;
    std::vector<std::string> list;
    ASSERT_EQ(processing::Execute2DFft(ours, settings, {progress, list}).code, 0) << set;
    const std::int32_t n2 = vendor.axis[F2].Point, n1 = vendor.axis[F1].Point;
    ASSERT_EQ(ours.axis[F2].Point, n2) << set;
    ASSERT_EQ(ours.axis[F1].Point, n1) << set;
    double sxy = 0, sxx = 0, syy = 0, sx = 0, sy = 0, count = 0;
    for (std::int32_t r = 0; r + 1 < n1; ++r)
      for (std::int32_t c = 0; c + 1 < n2; ++c) {
        const double x = ours.RR.at(c + 1, r + 1), y = vendor.RR.at(c, r);
        sxy += x * y, sxx += x * x, syy += y * y, sx += x, sy += y, ++count;
      }
    const double correlation =
        (sxy - sx * sy / count) / std::sqrt((sxx - sx * sx / count) * (syy - sy * sy / count));
    auto peaks = LocalMaxima(n2, n1, [&](int c, int r) { return std::fabs(vendor.RR.at(c, r)); });
    peaks.resize(20);
    auto mine = LocalMaxima(n2, n1, [&](int c, int r) { return std::fabs(ours.RR.at(c, r)); });
    mine.erase(std::remove_if(mine.begin(), mine.end(), [&](const Peak& p) { return p.height < 0.01f * mine[0].height; }),
               mine.end());
    int near = 0, signs = 0;
    for (const Peak& v : peaks) {
      near += std::any_of(mine.begin(), mine.end(), [&](const Peak& p) {
        return std::abs(p.column - 1 - v.column) <= 1.5 && std::abs(p.row - 1 - v.row) <= 1.5;
      });
      signs += ours.RR.at(v.column + 1, v.row + 1) * vendor.RR.at(v.column, v.row) > 0;
    }
    std::printf("%s: peaks %d/20, signs %d/20, correlation %.4f\n", set, near, signs, correlation);
    EXPECT_GE(near, 19) << set;
    EXPECT_EQ(signs, 20) << set;
    EXPECT_GE(correlation, 0.99) << set;
  }
}

// The HSQC's title file pads its one line with nine blank lines: the comment is the line, whether
// the raw ser or the processed 2rr is read.
TEST(BrukerVendorSpectra, TheTitleFileIsTheComment) {
  ScriptedPrompt prompt;
  for (const char* file : {"ser", "pdata/1/2rr"}) {
    model::Spectrum2D s;
    ASSERT_TRUE(Read(CorpusPath("bruker/cyclosporin_hsqc/3") / file, s, prompt).outcome.ok());
    EXPECT_EQ(s.comment, "echo/antiecho edited HSQC Cyclosporin AV 500") << file;
    EXPECT_EQ(s.params.COMNT, s.comment) << file;
  }
}

// The inversion-recovery series is named as one and transformed along F2 only, as the vendor did
// (F1 not transformed): each of its rows is the vendor's row of the same delay. The vendor's rows
// are read turned, like every F1 axis of a processed file.
TEST(BrukerVendorSpectra, APseudo2DSeriesIsTransformedAlongF2Only) {
  ScriptedPrompt prompt;
  model::Spectrum2D cosy;
  ASSERT_TRUE(Read(CorpusPath("bruker/cyclosporin_cosy/1") / "ser", cosy, prompt).outcome.ok());
  EXPECT_EQ(cosy.vendor.series, "");
  const fs::path folder = CorpusPath("bruker/inversionRecovery2D/1");
  model::Spectrum2D vendor, ours;
  ASSERT_TRUE(Read(folder / "pdata/1/2rr", vendor, prompt).outcome.ok());
  const auto raw = Read(folder / "ser", ours, prompt);
  ASSERT_TRUE(raw.outcome.ok());
  EXPECT_EQ(ours.vendor.series, "t1ir, vdlist");
  ASSERT_TRUE(ours.vendor.recipe.has_value());
  auto settings = processing::DefaultFtSettings(ours, raw.words.pulseModeClass, model::kBruker, "");
  EXPECT_TRUE(settings.f2Only);
  const double f1First = ours.extras[F1].ppmFirst;
  platform::NoProgress progress;
  std::vector<std::string> list;
  ASSERT_EQ(processing::Execute2DFft(ours, settings, {progress, list}).code, 0);
  EXPECT_EQ(ours.extras[F1].ppmFirst, f1First);
  const std::int32_t n2 = vendor.axis[F2].Point, n1 = vendor.axis[F1].Point, rows = ours.extras[F1].fidPoints;
  ASSERT_EQ(ours.axis[F2].Point, n2);
  ASSERT_EQ(rows, 10);
  for (std::int32_t r = 0; r < rows; ++r) {
    double sxy = 0, sxx = 0, syy = 0;
    for (std::int32_t c = 0; c + 1 < n2; ++c) {
      const double x = ours.RR.at(c + 1, r), y = vendor.RR.at(c, n1 - 1 - r);
      sxy += x * y, sxx += x * x, syy += y * y;
    }
    EXPECT_GT(sxy / std::sqrt(sxx * syy), 0.99) << "row " << r;
  }
}

// The HMBC's largest FID points lie well after the filter's onset; the shift is the file's delay.
TEST(BrukerVendorSpectra, TheFilesGroupDelayIsTheShiftOfALongRangeSet) {
  ScriptedPrompt prompt;
  model::Spectrum2D s;
  ASSERT_TRUE(Read(CorpusPath("bruker/cyclosporin_hmbc/2") / "ser", s, prompt).outcome.ok());
  s.fidShift = 0;
  processing::ChooseFidShift2D(s, {}, processing::kBrukerFamily);
  EXPECT_EQ(s.fidShift, 68);
}

}  // namespace velk::test
