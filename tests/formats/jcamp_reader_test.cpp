#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include "formats/bruker/bruker.h"
#include "formats/jcamp/reader.h"
#include "formats/registry.h"
#include "model/type_detector.h"
#include "support/corpus.h"
#include "support/run_cli.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::formats::jcamp {
namespace {

std::unique_ptr<model::Spectrum1D> Read1D(const std::string& corpusFile) {
  auto s = std::make_unique<model::Spectrum1D>();
  platform::Outcome o;
  EXPECT_EQ((o = ReadDataJCAMP(test::CorpusPath(corpusFile), *s)).code, 0) << corpusFile << ": " << o.message.text;
  return s;
}

// Indices of the strongest local maxima, strongest first.
std::vector<std::size_t> StrongestPeaks(std::span<const float> y, std::size_t count) {
  std::vector<std::size_t> peaks;
  for (std::size_t i = 1; i + 1 < y.size(); ++i)
    if (y[i] > y[i - 1] && y[i] >= y[i + 1]) peaks.push_back(i);
  std::sort(peaks.begin(), peaks.end(), [&](std::size_t a, std::size_t b) { return y[a] > y[b]; });
  peaks.resize(std::min(count, peaks.size()));
  return peaks;
}

float Largest(std::span<const float> v) { return *std::max_element(v.begin(), v.end()); }
float Smallest(std::span<const float> v) { return *std::min_element(v.begin(), v.end()); }

}  // namespace

TEST(JcampReader, EveryCorpusFileReads) {
  const std::vector<std::pair<std::string, std::string>> files{
      {"aspirin-1h.dx", "JCAMP1"}, {"aspirin-1h.fid.dx", "JCAMP1"}, {"naphtoicAcid-1h.dx", "JCAMP1"},
      {"naphtoicAcid-1h.fid.dx", "JCAMP1"}, {"qmagnetics/ibuprofen_j_ave_qmagnetics.jdx", "JCAMP1"},
      {"Rutin_3080ug200uL_DMSOd6_13CNMR_400MHz_JDX.jdx", "JCAMP1"},
      {"Rutin_3080ug200uL_DMSOd6_qHNMR_400MHz_JDX.jdx", "JCAMP1"},
      {"Rutin_3080ug200uL_DMSOd6_COSY_400MHz_JDX.jdx", "JCAMP2"},
      {"Rutin_3080ug200uL_DMSOd6_HSQC_400MHz_JDX.jdx", "JCAMP2"},
      {"Rutin_3080ug200uL_DMSOd6_HMBC_400MHz_JDX.jdx", "JCAMP2"}};
  for (const auto& [file, tag] : files) {
    const test::CliRun run = test::RunCli("info --json " + test::Quoted(test::CorpusPath("jcamp/" + file).string()));
    EXPECT_EQ(run.exitStatus, 0) << file << "\n" << run.err;
    EXPECT_NE(run.out.find("\"tag\": \"" + tag + "\""), std::string::npos) << file;
  }
}

// Bruker's NTUPLES spectrum in DIF/DUP with Y checks: the decoded pages end on the values that
// its ##FIRST, ##LAST and ##MAX lines state, and ##.SHIFT REFERENCE places the ppm axis.
TEST(JcampReader, NtuplesSpectrumDecodesToTheValuesItsHeaderStates) {
  const auto s = Read1D("jcamp/aspirin-1h.dx");
  const std::int32_t n = s->params.POINT;
  ASSERT_EQ(n, 32768);
  const auto re = std::span<const float>(s->re).first(n);
  EXPECT_FLOAT_EQ(Largest(re), 440519097.0f);
  EXPECT_FLOAT_EQ(Smallest(re), -118793.0f);
  EXPECT_FLOAT_EQ(re[n - 1], -118793.0f);  // the file starts at the high-frequency end
  EXPECT_FLOAT_EQ(re[0], -78595.0f);
  EXPECT_FLOAT_EQ(s->im[n - 1], -119285.0f);
  EXPECT_FLOAT_EQ(s->im[0], -150583.0f);
  EXPECT_NEAR(s->axisPpm[n - 1], 15.47866, 1e-6);
  EXPECT_NEAR(s->axisPpm[n - 1] - s->axisPpm[0], 4789.12587366797 / 300.132250975, 1e-3);
  EXPECT_EQ(s->params.OBNUC, "1H");
  EXPECT_EQ(s->params.EXMOD, "zg30");
  EXPECT_EQ(s->params.SCANS, 32);
  // Without "##.SHIFT REFERENCE" Bruker's "##$OFFSET" places the first point.
  std::ifstream in(test::CorpusPath("jcamp/aspirin-1h.dx"), std::ios::binary);
  std::stringstream whole;
  whole << in.rdbuf();
  std::string text = whole.str();
  text.erase(text.find("##.SHIFT REFERENCE"), 2);
  test::TempFolder folder;
  model::Spectrum1D older;
  platform::Outcome o;
  ASSERT_EQ((o = ReadDataJCAMP(folder.Write("older.dx", text), older)).code, 0) << o.message.text;
  EXPECT_NEAR(older.axisPpm[n - 1], 15.47866, 1e-6);
}

// TopSpin's own 1r of the same aspirin sample, read by the Bruker reader, has its ten strongest
// lines where the JCAMP export has them.
TEST(JcampReader, AspirinAgreesWithTheVendorsProcessedSpectrum) {
  const auto jcamp = Read1D("jcamp/aspirin-1h.dx");
  model::Spectrum1D vendor;
  const model::Detection d = model::TypeDetector(test::CorpusPath("bruker/aspirin-1h-processed/1/pdata/1/1r"), Formats());
  ASSERT_EQ(d.tag, "BRU1") << d.reason;
  test::ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words;
  model::ReadContext context{prompt, progress, words, nullptr};
  ASSERT_TRUE(bruker::ReadBruker1D(d.file, vendor, context).ok());
  const auto ours = StrongestPeaks(std::span<const float>(jcamp->re).first(jcamp->params.POINT), 10);
  const auto theirs = StrongestPeaks(std::span<const float>(vendor.re).first(vendor.params.POINT), 10);
  ASSERT_EQ(ours.size(), 10u);
  for (std::size_t peak : ours) {
    double nearest = 1e9;
    for (std::size_t v : theirs) nearest = std::min(nearest, std::fabs(jcamp->axisPpm[peak] - vendor.axisPpm[v]));
    EXPECT_LT(nearest, 0.01) << "line at " << jcamp->axisPpm[peak] << " ppm";
  }
}

TEST(JcampReader, XydataSpectrumMatchesItsYLimitsAndHzAxis) {
  const auto s = Read1D("jcamp/Rutin_3080ug200uL_DMSOd6_13CNMR_400MHz_JDX.jdx");
  const std::int32_t n = s->params.POINT;
  ASSERT_EQ(n, 52430);
  const auto re = std::span<const float>(s->re).first(n);
  const double yFactor = 6.840532745291729603e-08;  // the header's limits hold to one table step
  EXPECT_NEAR(Largest(re), 0.0037350698839873075, yFactor);
  EXPECT_NEAR(Smallest(re), -3.2344909413950517774e-05, yFactor);
  EXPECT_NEAR(re[n - 1], 9.4438801170326769352e-06, yFactor);
  // Hz from 0 ppm, divided by the observe frequency.
  EXPECT_NEAR(s->axisPpm[0], -2573.7322937460799 / 100.525303325165, 1e-6);
  EXPECT_NEAR(s->axisPpm[n - 1], 22678.792958779202 / 100.525303325165, 1e-6);
}

TEST(JcampReader, FidPagesBecomeAScaledPowerOfTwoFid) {
  const auto s = Read1D("jcamp/aspirin-1h.fid.dx");
  EXPECT_EQ(s->params.POINT, 8192);
  EXPECT_NEAR(s->params.FREQU, 1 / 0.0002088, 0.5);
  float largest = 0;
  for (std::int32_t i = 0; i < 8192; ++i) largest = std::max(largest, std::fabs(s->re[i]));
  EXPECT_FLOAT_EQ(largest, 1.0f);
  const auto q = Read1D("jcamp/qmagnetics/ibuprofen_j_ave_qmagnetics.jdx");
  EXPECT_EQ(q->params.POINT, 65536);  // 40000 points in a table of the next power of two
  EXPECT_EQ(q->re[50000], 0.0f);
}

// MestReNova's 2D export: one page per F1 row, both axes descending in the file.
TEST(JcampReader2D, NdSpectrumFillsTheRealPlaneWithBothAxes) {
  model::Spectrum2D s;
  platform::Outcome o;
  ASSERT_EQ((o = ReadDataJCAMP2D(test::CorpusPath("jcamp/Rutin_3080ug200uL_DMSOd6_COSY_400MHz_JDX.jdx"), s)).code, 0)
      << o.message.text;
  ASSERT_EQ(s.axis[model::F1].Point, 512);
  ASSERT_EQ(s.axis[model::F2].Point, 6554);
  float largest = -1, smallest = 1;
  for (std::int32_t r = 0; r < 512; ++r)
    for (std::int32_t c = 0; c < 6554; ++c) largest = std::max(largest, s.RR.at(c, r)), smallest = std::min(smallest, s.RR.at(c, r));
  const double yFactor = 1.48199e-08;
  EXPECT_NEAR(largest, 0.00414727, yFactor);
  EXPECT_GE(smallest, 0.0f);  // a magnitude spectrum
  EXPECT_NEAR(s.RR.at(6553, 511), 1.88227e-06, yFactor);  // the first value of the first page
  EXPECT_NEAR(s.ppmF2[6553], 4199.62 / 399.782198, 1e-3);
  EXPECT_NEAR(s.ppmF1[0], -200.051 / 399.782198, 1e-3);

  ASSERT_EQ((o = ReadDataJCAMP2D(test::CorpusPath("jcamp/Rutin_3080ug200uL_DMSOd6_HSQC_400MHz_JDX.jdx"), s)).code, 0);
  EXPECT_EQ(s.extras[model::F1].nucleus, "13C");
  EXPECT_NEAR(s.extras[model::F1].absFreqCenter, 100.5253, 1e-3);
  EXPECT_NEAR(s.ppmF1[2047], 17094.6 / 100.5253, 0.05);
  // A 1D file is no 2D spectrum.
  EXPECT_EQ((o = ReadDataJCAMP2D(test::CorpusPath("jcamp/aspirin-1h.dx"), s)).code, -1);
  EXPECT_EQ(s.axis[model::F1].Point, 2048);  // the record is left as it was
}

// Cut anywhere before its end label, or damaged in a table, a file gives -1 and a log line.
TEST(JcampReader, DamagedAndTruncatedFilesFailCleanly) {
  std::ifstream in(test::CorpusPath("jcamp/aspirin-1h.fid.dx"), std::ios::binary);
  std::stringstream whole;
  whole << in.rdbuf();
  const std::string text = whole.str();
  const std::size_t end = text.rfind("##END=");
  test::TempFolder folder;
  model::Spectrum1D s;
  platform::Outcome o;
  for (std::size_t cut = 0; cut < end; cut += 997) {
    ASSERT_EQ(ReadDataJCAMP(folder.Write("cut.dx", text.substr(0, cut)), s).code, -1) << cut;
  }
  std::string damaged = text;
  damaged[text.find("##DATA TABLE= (X++(I..I))") + 40] = '!';
  test::ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words;
  std::vector<std::string> log;
  model::ReadContext context{prompt, progress, words, [&](std::string_view action, const std::string&) {
                               log.emplace_back(action);
                             }};
  model::DetectedFile file;
  file.path = folder.Write("damaged.dx", damaged);
  EXPECT_EQ(ReadJcamp1DEntry(file, s, context).code, -1);
  ASSERT_EQ(log.size(), 1u);
  EXPECT_EQ(log[0], "ReadDataJCAMP/RDW1D (-1)");
  // Huge declared sizes are refused before anything is allocated.
  const std::string huge = "##JCAMP-DX= 5.01\n##DATA TYPE= NMR SPECTRUM\n##.OBSERVE FREQUENCY= 400\n"
                           "##NPOINTS= 999999999999\n##XYDATA= (X++(Y..Y))\n0 @s99999999\n##END=\n";
  EXPECT_EQ((o = ReadDataJCAMP(folder.Write("huge.dx", huge), s)).code, -1);
  // Without its label a file is none of ours; with it but of another data type, refused too.
  EXPECT_EQ(ReadModeJCAMP(folder.Write("plain.dx", "##TITLE= x\n##END=\n")).code, 1);
  EXPECT_EQ(ReadModeJCAMP(folder.Write("ir.dx", "##JCAMPDX= 5.01\n##DATA TYPE= INFRARED SPECTRUM\n##END=\n")).code, 1);
}

}  // namespace velk::formats::jcamp
