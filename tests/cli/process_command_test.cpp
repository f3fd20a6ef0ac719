// velk2d-cli process on the corpus COSY: the strongest peaks of our transform of the raw ser stand
// where the vendor's own processed spectrum (pdata/1/2rr, sine bells, 1024 x 1024) has them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "formats/registry.h"
#include "model/type_detector.h"
#include "native/ver4_file.h"
#include "support/corpus.h"
#include "support/run_cli.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

struct Peak {
  double f2, f1;  // ppm
};

// The strongest local maxima of RR over the whole spectrum.
std::vector<Peak> StrongestPeaks(const model::Spectrum2D& s, std::size_t count) {
  const std::int32_t n2 = s.axis[model::F2].Point, n1 = s.axis[model::F1].Point;
  std::vector<std::pair<float, Peak>> all;
  for (std::int32_t j = 1; j + 1 < n1; ++j)
    for (std::int32_t i = 1; i + 1 < n2; ++i) {
      const float v = s.RR.at(i, j);
      bool top = true;
      for (int dj = -1; dj <= 1; ++dj)
        for (int di = -1; di <= 1; ++di)
          if ((di || dj) && s.RR.at(i + di, j + dj) >= v) top = false;
      if (top)
        all.push_back({v, {s.extras[model::F2].ppmFirst + i * s.extras[model::F2].ppmStep,
                           s.extras[model::F1].ppmFirst + j * s.extras[model::F1].ppmStep}});
    }
  std::sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
  std::vector<Peak> peaks;
  for (std::size_t k = 0; k < std::min(count, all.size()); ++k) peaks.push_back(all[k].second);
  return peaks;
}

model::Spectrum2D Read(const std::filesystem::path& path) {
  const model::FormatTable formats = formats::Formats();
  const model::Detection d = model::TypeDetector(path, formats);
  const auto entry = std::find_if(formats.begin(), formats.end(),
                                  [&](const model::FormatEntry& e) { return e.extensionWord == d.file.extensionWord; });
  model::Spectrum2D s;
  ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words;
  model::ReadContext context{prompt, progress, words, nullptr};
  EXPECT_NE(entry, formats.end()) << path;
  if (entry != formats.end()) {
    EXPECT_TRUE(entry->read2D(d.file, s, context).ok()) << path;
  }
  return s;
}

TEST(ProcessCommand, CosyPeaksStandWhereTheVendorsSpectrumHasThem) {
  const auto set = CorpusPath("bruker/cyclosporin_cosy/1");
  TempFolder folder;
  const auto out = folder / "cosy.vlk2";
  const CliRun run = RunCli("process " + Quoted((set / "ser").string()) + " -o " + Quoted(out.string()) + " --zf 1,8 --json");
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(json["class"], 1);  // cosygpqf: absolute value
  EXPECT_EQ(json["size"]["f2"], 1024);
  EXPECT_EQ(json["size"]["f1"], 1024);
  EXPECT_EQ(json["fid_shift"], 68);  // the digital filter's onset, found by the search

  const model::Spectrum2D ours = Read(out);
  const model::Spectrum2D vendor = Read(set / "pdata/1/2rr");
  ASSERT_EQ(vendor.axis[model::F2].Point, 1024);
  const double step2 = std::fabs(vendor.extras[model::F2].ppmStep), step1 = std::fabs(vendor.extras[model::F1].ppmStep);
  const std::vector<Peak> theirs = StrongestPeaks(vendor, 60);
  for (const Peak& p : StrongestPeaks(ours, 12)) {
    const auto nearest = std::min_element(theirs.begin(), theirs.end(), [&](const Peak& a, const Peak& b) {
      return std::hypot(a.f2 - p.f2, a.f1 - p.f1) < std::hypot(b.f2 - p.f2, b.f1 - p.f1);
    });
    EXPECT_LE(std::fabs(nearest->f2 - p.f2), step2) << p.f2 << " " << p.f1;
    EXPECT_LE(std::fabs(nearest->f1 - p.f1), step1) << p.f2 << " " << p.f1;
  }

  // Prediction in place of the zero fill along F1: every column solved, the axis at four times.
  const CliRun lp = RunCli("process " + Quoted((set / "ser").string()) + " -o " + Quoted(out.string()) +
                           " --zf 1,4 --lp-f1 forward:order=16,points=48,start=10 --json");
  ASSERT_EQ(lp.exitStatus, 0) << lp.err;
  const auto lpJson = nlohmann::json::parse(lp.out);
  EXPECT_EQ(lpJson["size"]["f1"], 512);
  EXPECT_EQ(lpJson["prediction_failures"], 0);

  EXPECT_EQ(RunCli("process --help").exitStatus, 0);
  const CliRun spectrum = RunCli("process " + Quoted((set / "pdata/1/2rr").string()) + " -o " + Quoted(out.string()));
  EXPECT_EQ(spectrum.exitStatus, 1);
  EXPECT_NE(spectrum.err.find("not a raw 2D FID"), std::string::npos) << spectrum.err;
  EXPECT_NE(RunCli("process " + Quoted((set / "ser").string()) + " -o " + Quoted(out.string()) + " --zf 3").exitStatus, 0);
}

// Without options a set with stored processing gets it, and says so; tuning the recipe on the
// command line falls back to the presets, which --params vendor refuses.
TEST(ProcessCommand, TheStoredRecipeIsTheDefault) {
  const auto hsqc = CorpusPath("bruker/cyclosporin_hsqc/3") / "ser";
  TempFolder folder;
  const auto out = folder / "hsqc.vlk2";
  const CliRun run = RunCli("process " + Quoted(hsqc.string()) + " -o " + Quoted(out.string()) + " --json");
  ASSERT_EQ(run.exitStatus, 0) << run.err;
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(json["params"], "vendor");
  EXPECT_EQ(json["size"]["f1"], 1024);
  EXPECT_NE(json["recipe"].dump().find("NCOEF 32"), std::string::npos);
  const model::Spectrum2D written = Read(out);
  EXPECT_TRUE(std::any_of(written.processing.begin(), written.processing.end(),
                          [](const std::string& line) { return line.starts_with("Vendor F1 Echo-Antiecho"); }));
  const CliRun program = RunCli("process " + Quoted(hsqc.string()) + " -o " + Quoted(out.string()) +
                                " --params program --json");
  ASSERT_EQ(program.exitStatus, 0) << program.err;
  EXPECT_EQ(nlohmann::json::parse(program.out)["params"], "program");
  EXPECT_EQ(nlohmann::json::parse(program.out)["size"]["f1"], 128);
  EXPECT_NE(RunCli("process " + Quoted(hsqc.string()) + " -o " + Quoted(out.string()) + " --params vendor --zf 2,2")
                .exitStatus,
            0);
  const auto series = CorpusPath("bruker/inversionRecovery2D/1") / "ser";
  const CliRun ir = RunCli("process " + Quoted(series.string()) + " -o " + Quoted(out.string()) + " --params program --json");
  ASSERT_EQ(ir.exitStatus, 0) << ir.err;
  EXPECT_EQ(nlohmann::json::parse(ir.out)["pseudo_2d"], "t1ir, vdlist");
}

}  // namespace
}  // namespace velk::test
