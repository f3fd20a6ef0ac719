// The 2D FIDs of the corpus through our transform: the strongest F2 projection maxima must sit on
// peaks of the 1D proton spectrum of the same sample, transformed by the same kernel.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "formats/fid_scaling.h"
#include "formats/jeol/delta.h"
#include "formats/registry.h"
#include "model/type_detector.h"
#include "processing/fft_kernel.h"
#include "processing/sequence.h"
#include "processing/transforms.h"
#include "support/corpus.h"
#include "support/scripted_prompt.h"

namespace velk::formats::jeol {
namespace {

struct Peak {
  double ppm;
  double height;
};

// Local maxima standing out of the noise (a multiple of the median), strongest first.
std::vector<Peak> Peaks(const std::vector<double>& values, const std::function<double(std::size_t)>& ppm,
                        double noiseMultiple) {
  std::vector<double> sorted = values;
  std::nth_element(sorted.begin(), sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2), sorted.end());
  const double floor = noiseMultiple * sorted[sorted.size() / 2];
  std::vector<Peak> peaks;
  for (std::size_t i = 1; i + 1 < values.size(); ++i)
    if (values[i] > values[i - 1] && values[i] >= values[i + 1] && values[i] > floor)
      peaks.push_back({ppm(i), values[i]});
  std::sort(peaks.begin(), peaks.end(), [](const Peak& a, const Peak& b) { return a.height > b.height; });
  return peaks;
}

struct Context {
  test::ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words;
  model::ReadContext context{prompt, progress, words, nullptr};
};

// The 1D proton FID by the kernel: sign of this family, zero fill to twice, half swap, modulus.
std::vector<Peak> ProtonPeaks(const std::string& file, double solventPpm) {
  Context c;
  model::Spectrum1D s;
  EXPECT_TRUE(ReadDataDelta(test::CorpusPath("jeol/" + file), s, c.context).ok());
  const std::int32_t n = 4 * PaddedFidSize(s.params.POINT);
  std::vector<float> re(n, 0.0f), im(n, 0.0f);
  const bool conjugate = processing::ConjugateF2(model::V_HOMO, model::kDelta, false);
  for (std::int32_t i = 0; i < s.params.POINT; ++i) {
    re[i] = s.re[i];
    im[i] = conjugate ? -s.im[i] : s.im[i];
  }
  processing::FftKernel(re.data(), im.data(), n);
  processing::HalfSwap(re.data(), im.data(), n);
  std::vector<double> modulus(n);
  for (std::int32_t i = 0; i < n; ++i) modulus[i] = std::hypot(re[i], im[i]);
  const double sfo = s.params.OFR, width = s.params.FREQU, centre = s.params.SMEXR;
  const auto peaks =
      Peaks(modulus, [&](std::size_t i) { return centre + (static_cast<double>(i) - n / 2) * width / n / sfo; }, 10.0);
  // The residual line of the solvent where it belongs (not mirrored about the carrier).
  EXPECT_TRUE(std::any_of(peaks.begin(), peaks.end(), [&](const Peak& p) { return std::fabs(p.ppm - solventPpm) < 0.05; }))
      << file;
  return peaks;
}

void Check(const std::string& twoD, const std::string& oneD, double solventPpm) {
  const auto path = test::CorpusPath("jeol/" + twoD);
  const model::Detection d = model::TypeDetector(path, Formats());
  ASSERT_EQ(d.tag, "ECP2F") << twoD;
  Context c;
  c.words = {d.code, d.pulseModeClass, 0};
  auto s = std::make_unique<model::Spectrum2D>();
  ASSERT_TRUE(ReadData2DDelta(path, *s, c.context).ok()) << twoD;
  processing::SequenceSettings settings = processing::MakeSequenceSettings(*s, d.pulseModeClass, model::kDelta);
  for (auto& axis : settings.axis) {  // a sine bell over the whole FID
    axis.window.type = 1;
    axis.window.WS.fill(0);
    axis.window.WE.fill(100);
  }
  std::vector<std::string> list;
  platform::NoProgress progress;
  const processing::SequenceResult result = processing::Execute2DFft(*s, settings, {progress, list});
  ASSERT_EQ(result.code, 0) << twoD << ": " << result.message.text;

  const std::int32_t n2 = s->axis[model::F2].Point, n1 = s->axis[model::F1].Point;
  std::vector<double> projection(n2, 0.0);
  double top = 0;
  std::int32_t topRow = 0, topColumn = 0;
  for (std::int32_t r = 0; r < n1; ++r)
    for (std::int32_t c2 = 0; c2 < n2; ++c2) {
      const double v = std::fabs(s->RR.at(c2, r));
      projection[c2] = std::max(projection[c2], v);
      if (v > top) top = v, topRow = r, topColumn = c2;
    }
  // The strongest point lies inside the window, away from its edges.
  EXPECT_GT(topColumn, 0);
  EXPECT_LT(topColumn, n2 - 1);
  EXPECT_GT(topRow, 0);
  EXPECT_LT(topRow, n1 - 1);
  const auto& e = s->extras[model::F2];
  const auto maxima = Peaks(projection, [&](std::size_t i) { return e.ppmFirst + i * e.ppmStep; }, 0.0);
  const auto proton = ProtonPeaks(oneD, solventPpm);
  for (std::size_t k = 0; k < 5 && k < maxima.size(); ++k) {
    double nearest = 1e9;
    for (const Peak& p : proton) nearest = std::min(nearest, std::fabs(p.ppm - maxima[k].ppm));
    EXPECT_LT(nearest, 0.05) << twoD << ": F2 maximum " << k << " at " << maxima[k].ppm << " ppm";
  }
}

}  // namespace

constexpr double kDmso = 2.50, kMethanol = 3.31;  // residual solvent lines

TEST(DeltaProcessing, ProjectionsOfTheCorpusFidsSitOnTheProtonPeaks) {
  Check("Rutin_3080ug200uL_DMSOd6_COSY_400MHz_Jeol.jdf", "Rutin_3080ug200uL_DMSOd6_qHNMR_400MHz_Jeol.jdf", kDmso);
  Check("Rutin_3080ug200uL_DMSOd6_HSQC_400MHz_Jeol.jdf", "Rutin_3080ug200uL_DMSOd6_qHNMR_400MHz_Jeol.jdf", kDmso);
  Check("Rutin_3080ug200uL_DMSOd6_HMBC_400MHz_Jeol.jdf", "Rutin_3080ug200uL_DMSOd6_qHNMR_400MHz_Jeol.jdf", kDmso);
  Check("EC=8EC_2m200u_MeOD_bzhou21_20190328_HSQC-1-1.jdf", "EC=8EC_2m200u_MeOD_bzhou21_20190328_qH-1-1.jdf", kMethanol);
  Check("EC=8EC_2m200u_MeOD_bzhou21_20190328_HMBC-ABS-1-1.jdf", "EC=8EC_2m200u_MeOD_bzhou21_20190328_qH-1-1.jdf", kMethanol);
  Check("EC=8C_5m200u_MeOD_bzhou21_20190228__HSQC-1-1.jdf", "EC=8C_5m200u_MeOD_bzhou21_20190228_qH-1-1.jdf", kMethanol);
  Check("EC=8C_5m200u_MeOD_bzhou21_20190228_HMBCabs-1-1.jdf", "EC=8C_5m200u_MeOD_bzhou21_20190228_qH-1-1.jdf", kMethanol);
  Check("PM032220_3000U200U_MeOD_18224Bin_HSQC-2-1.jdf", "PM032220_3000U200U_Bin_180218_qH-1-1.jdf", kMethanol);
}

}  // namespace velk::formats::jeol
