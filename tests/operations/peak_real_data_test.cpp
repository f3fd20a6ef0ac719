// The "Auto" threshold on the vendor's processed cyclosporin HSQC and HMBC: every one of the 20
// strongest maxima is picked, and not much more than the maxima that stand clear of the noise.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "formats/bruker_sets.h"
#include "operations/peak_noise.h"
#include "operations/peak_pick.h"
#include "support/corpus.h"

namespace velk::test {
namespace {

using model::F1;
using model::F2;

// The noise deviation by clipping: the standard deviation of all values, recomputed over the
// values within three deviations of the mean until it settles.
double ClippedDeviation(const model::Spectrum2D& s) {
  double mean = 0, deviation = 1e300;
  for (int pass = 0; pass < 50; ++pass) {
    double sum = 0, squares = 0;
    long n = 0;
    for (int r = 0; r < s.axis[F1].Point; ++r)
      for (int c = 0; c < s.axis[F2].Point; ++c) {
        const double v = s.RR.at(c, r);
        if (std::fabs(v - mean) > 3 * deviation) continue;
        sum += v;
        squares += v * v;
        ++n;
      }
    const double newMean = sum / n, newDeviation = std::sqrt(squares / n - newMean * newMean);
    if (std::fabs(newDeviation - deviation) < 1e-6 * deviation) break;
    mean = newMean;
    deviation = newDeviation;
  }
  return deviation;
}

struct Maximum {
  int col, row;
  float magnitude;
};

// Points whose magnitude is above all eight neighbours and above the floor, strongest first.
std::vector<Maximum> MaximaAbove(const model::Spectrum2D& s, double floor) {
  std::vector<Maximum> maxima;
  auto m = [&](int c, int r) { return std::fabs(s.RR.at(c, r)); };
  for (int r = 1; r + 1 < s.axis[F1].Point; ++r)
    for (int c = 1; c + 1 < s.axis[F2].Point; ++c) {
      bool highest = m(c, r) > floor;
      for (int dr = -1; dr <= 1 && highest; ++dr)
        for (int dc = -1; dc <= 1 && highest; ++dc)
          if ((dr || dc) && m(c + dc, r + dr) >= m(c, r)) highest = false;
      if (highest) maxima.push_back({c, r, m(c, r)});
    }
  std::sort(maxima.begin(), maxima.end(), [](const Maximum& a, const Maximum& b) { return a.magnitude > b.magnitude; });
  return maxima;
}

TEST(PeakRealData, AutoThresholdOnVendorSpectra) {
  for (const char* set : {"cyclosporin_hsqc/3", "cyclosporin_hmbc/2"}) {
    SCOPED_TRACE(set);
    model::Spectrum2D s;
    ScriptedPrompt prompt;
    ASSERT_TRUE(Read(CorpusPath(std::string("bruker/") + set + "/pdata/1/2rr"), s, prompt).outcome.ok());
    const std::vector<Maximum> clear = MaximaAbove(s, 5 * ClippedDeviation(s));
    ASSERT_GE(clear.size(), 20u);

    const float threshold = operations::AutoThreshold(s);
    const int picked = operations::PickArea(s, operations::AllArea(s), threshold, operations::kPeakOnDataPoint);
    std::printf("%s: noise %.4g (clipped %.4g), threshold %.4g, %d picked, %zu maxima above 5 deviations\n", set,
                operations::EstimateNoise(s), ClippedDeviation(s), threshold, picked, clear.size());
    EXPECT_LT(picked, model::kMaxPeaks2D);
    EXPECT_LE(static_cast<std::size_t>(picked), 3 * clear.size());
    for (std::size_t i = 0; i < 20; ++i) {
      const bool found = std::any_of(s.peaks.peaks.begin(), s.peaks.peaks.end(), [&](const model::Peak2D& p) {
        return std::abs(p.PointF2 - clear[i].col) <= 1 && std::abs(p.PointF1 - clear[i].row) <= 1;
      });
      EXPECT_TRUE(found) << "maximum " << i << " at " << clear[i].col << "," << clear[i].row;
    }
  }
}

}  // namespace
}  // namespace velk::test
