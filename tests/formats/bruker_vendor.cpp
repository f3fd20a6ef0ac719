#include "formats/bruker_vendor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "formats/bruker_sets.h"
#include "model/data_type.h"
#include "processing/sequence.h"
#include "support/corpus.h"

namespace velk::test {

namespace fs = std::filesystem;
using model::F1;
using model::F2;

double Ppm(const model::Spectrum2D& s, int axis, double index) {
  return s.extras[axis].ppmFirst + index * s.extras[axis].ppmStep;
}

std::int32_t IndexOf(const model::Spectrum2D& s, int axis, double ppm) {
  return static_cast<std::int32_t>(std::lrint((ppm - s.extras[axis].ppmFirst) / s.extras[axis].ppmStep));
}

Processed Process(const std::string& set, bool toVendorSize) {
  Processed t;
  ScriptedPrompt prompt;
  const fs::path folder = CorpusPath("bruker/" + set);
  const auto vendor = Read(folder / "pdata/1/2rr", t.vendor, prompt);
  EXPECT_TRUE(vendor.outcome.ok()) << vendor.outcome.message.text;
  const auto raw = Read(folder / "ser", t.ours, prompt);
  EXPECT_TRUE(raw.outcome.ok()) << raw.outcome.message.text;
  const int pulseModeClass = raw.words.pulseModeClass;
  t.phaseSensitive = model::IsPhaseSensitive(pulseModeClass);
  processing::SequenceSettings settings = processing::MakeSequenceSettings(t.ours, pulseModeClass, model::kBruker);
  for (model::Axis a : {F1, F2})
    while (toVendorSize && processing::CurrentSize(settings.axis[a]) < t.vendor.axis[a].Point)
      EXPECT_TRUE(processing::ZeroFill(t.ours, settings, a).ok());
  platform::NoProgress progress;
  std::vector<std::string> list;
  EXPECT_EQ(processing::Execute2DFft(t.ours, settings, {progress, list}).code, 0) << set;
  t.vendorPeaks = LocalMaxima(t.vendor.axis[F2].Point, t.vendor.axis[F1].Point,
                              [&](int c, int r) { return std::fabs(t.vendor.RR.at(c, r)); });
  t.vendorPeaks.resize(std::min<std::size_t>(t.vendorPeaks.size(), 20));
  return t;
}

}  // namespace velk::test
