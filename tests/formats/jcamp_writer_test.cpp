#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "formats/jcamp/labels.h"
#include "formats/jcamp/reader.h"
#include "formats/jcamp/writer.h"
#include "model/trace.h"
#include "support/run_cli.h"
#include "support/synthetic_2d.h"
#include "support/corpus.h"
#include "support/temp_folder.h"

namespace velk::formats::jcamp {
namespace {

// Three Lorentzian lines (absorption and dispersion), one negative, over a flat baseline.
model::Spectrum1D Synthetic(std::int32_t n) {
  model::Spectrum1D s;
  model::AllocateSpectrum1D(s, n);
  s.params.POINT = n;
  s.params.OFR = 400.13f;
  s.params.OBNUC = "1H";
  s.params.EXMOD = "single_pulse";
  s.params.SCANS = 16;
  s.params.PW = {9.5f, 0, 0, 0, 0};
  s.comment = "synthetic lines";
  s.texts.instrument = "ECZ400";
  const double first = -1.0, step = 13.0 / (n - 1);
  for (std::int32_t i = 0; i < n; ++i) {
    const double ppm = first + i * step;
    s.axisPpm[i] = ppm;
    double re = 0, im = 0;
    for (const auto& [centre, height] : {std::pair{1.2, 1.0}, {7.26, 0.4}, {3.3, -0.25}}) {
      const double x = (ppm - centre) / 0.002;
      re += height / (1 + x * x);
      im += height * x / (1 + x * x);
    }
    s.re[i] = static_cast<float>(re);
    s.im[i] = static_cast<float>(im);
  }
  return s;
}

std::string Text(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

void ExpectReadsBack(const model::Spectrum1D& written, const std::filesystem::path& file, bool withImaginary) {
  model::Spectrum1D back;
  platform::Outcome o;
  ASSERT_EQ((o = ReadDataJCAMP(file, back)).code, 0) << o.message.text;
  const std::int32_t n = written.params.POINT;
  ASSERT_EQ(back.params.POINT, n);
  const auto resolution = [&](std::span<const float> v) {
    float m = 0.1f;
    for (std::int32_t i = 0; i < n; ++i) m = std::max(m, std::fabs(v[i]));
    return m / 4194304.0f;  // the Y factor of the table
  };
  const float reStep = resolution(written.re), imStep = resolution(written.im);
  for (std::int32_t i = 0; i < n; ++i) {
    ASSERT_NEAR(back.re[i], written.re[i], 0.5f * reStep + 1e-6f * std::fabs(written.re[i])) << i;
    if (withImaginary) {
      ASSERT_NEAR(back.im[i], written.im[i], 0.5f * imStep + 1e-6f * std::fabs(written.im[i])) << i;
    }
  }
  EXPECT_NEAR(back.axisPpm[0], written.axisPpm[0], 1e-6);
  EXPECT_NEAR(back.axisPpm[n - 1], written.axisPpm[n - 1], 1e-6);
  EXPECT_EQ(back.params.OBNUC, written.params.OBNUC);
  EXPECT_EQ(back.params.EXMOD, written.params.EXMOD);
  EXPECT_EQ(back.params.SCANS, written.params.SCANS);
  EXPECT_FLOAT_EQ(back.params.PW[0], written.params.PW[0]);
  std::istringstream lines(Text(file));
  for (std::string line; std::getline(lines, line);) ASSERT_LE(line.size(), 80u) << line;
}

}  // namespace

TEST(JcampWriter, XydataAndNtuplesReadBackWithinTheYFactor) {
  test::TempFolder folder;
  const model::Spectrum1D s = Synthetic(16384);
  platform::Outcome o;
  ASSERT_EQ((o = WriteDataJCAMPDX(folder / "s.jdx", s)).code, 0) << o.message.text;
  const std::string text = Text(folder / "s.jdx");
  // The labels that this program's files have always carried, spelled as they were.
  for (const char* label : {"##ORGIN= NOT SPECIFIED", "##.ACQUISITION NODE= SIMULTANEOUS", "##$EXMOD=\tsingle_pulse",
                            "##XYDATA= (X++(Y..Y))", "##JCAMP-DX= 5.00"})
    EXPECT_NE(text.find(label), std::string::npos) << label;
  EXPECT_LT(text.find("##$DEADT="), text.find("##$DTYPE=\t0"));
  EXPECT_LT(text.find("##$DTYPE="), text.find("##$DUMMY="));
  ExpectReadsBack(s, folder / "s.jdx", false);

  ASSERT_EQ((o = WriteDataJCAMPDX2(folder / "s2.dx", s)).code, 0) << o.message.text;
  EXPECT_NE(Text(folder / "s2.dx").find("##DATA TABLE= (X++(I..I)), XYDATA"), std::string::npos);
  ExpectReadsBack(s, folder / "s2.dx", true);
}

// A vendor's spectrum read, written by us and read again keeps its values and its ppm axis.
TEST(JcampWriter, CorpusSpectrumSurvivesARoundTrip) {
  model::Spectrum1D s;
  platform::Outcome o;
  ASSERT_EQ((o = ReadDataJCAMP(test::CorpusPath("jcamp/aspirin-1h.dx"), s)).code, 0) << o.message.text;
  test::TempFolder folder;
  ASSERT_EQ((o = WriteDataJCAMPDX2(folder / "aspirin.dx", s)).code, 0) << o.message.text;
  ExpectReadsBack(s, folder / "aspirin.dx", true);
  // A record without points is refused and leaves no file.
  model::Spectrum1D empty;
  EXPECT_EQ((o = WriteDataJCAMPDX(folder / "empty.dx", empty)).code, -1);
  EXPECT_FALSE(std::filesystem::exists(folder / "empty.dx"));
}

}  // namespace velk::formats::jcamp

namespace velk::formats::jcamp {

// A 2D spectrum's traces written as 1D JCAMP files read back with their values and ppm axis.
TEST(JcampWriter, TracesOfA2DSpectrumReadBack) {
  model::Spectrum2D cosy;
  platform::Outcome o;
  ASSERT_EQ((o = ReadDataJCAMP2D(test::CorpusPath("jcamp/Rutin_3080ug200uL_DMSOd6_HSQC_400MHz_JDX.jdx"), cosy)).code, 0);
  test::TempFolder folder;
  for (const int axis : {model::F2, model::F1}) {
    model::Spectrum1D trace;
    ASSERT_EQ(model::TraceAsSpectrum1D(cosy, axis, 1000, trace), 0);
    EXPECT_EQ(trace.params.POINT, cosy.axis[axis].Point);
    EXPECT_EQ(trace.re[17], axis == model::F2 ? cosy.RR.at(17, 1000) : cosy.RR.at(1000, 17));
    ASSERT_EQ((o = WriteDataJCAMPDX(folder / "trace.jdx", trace)).code, 0) << o.message.text;
    ExpectReadsBack(trace, folder / "trace.jdx", false);
  }
  model::Spectrum1D outside;
  EXPECT_EQ(model::TraceAsSpectrum1D(cosy, model::F2, cosy.axis[model::F1].Point, outside), 1);
}

}  // namespace velk::formats::jcamp

namespace velk::formats::jcamp {
namespace {

// Every value of the real plane comes back within half the Y factor (the plane's largest
// magnitude / 4194304), and both ppm axes within a millionth of a ppm; returns the largest error
// in units of that factor.
double ExpectPlaneReadsBack(const model::Spectrum2D& written, const std::filesystem::path& file) {
  model::Spectrum2D back;
  platform::Outcome o;
  EXPECT_EQ((o = ReadDataJCAMP2D(file, back)).code, 0) << o.message.text;
  const std::int32_t n1 = written.axis[model::F1].Point, n2 = written.axis[model::F2].Point;
  EXPECT_EQ(back.axis[model::F1].Point, n1);
  EXPECT_EQ(back.axis[model::F2].Point, n2);
  if (back.axis[model::F1].Point != n1 || back.axis[model::F2].Point != n2) return 1e9;
  float full = 0;
  for (std::int32_t r = 0; r < n1; ++r)
    for (std::int32_t c = 0; c < n2; ++c) full = std::max(full, std::fabs(written.RR.at(c, r)));
  const double step = full / 4194304.0;
  double worst = 0;
  for (std::int32_t r = 0; r < n1; ++r)
    for (std::int32_t c = 0; c < n2; ++c) {
      const double error = std::fabs(back.RR.at(c, r) - written.RR.at(c, r));
      EXPECT_LE(error, 0.5 * step + 1e-6 * std::fabs(written.RR.at(c, r))) << c << ", " << r;  // and the float's rounding
      worst = std::max(worst, error / step);
      if (error > 0.5 * step + 1e-6 * std::fabs(written.RR.at(c, r))) return worst;
    }
  for (const auto& [ours, theirs] : {std::pair{&written.ppmF1, &back.ppmF1}, std::pair{&written.ppmF2, &back.ppmF2}}) {
    EXPECT_NEAR(theirs->front(), ours->front(), 1e-6);
    EXPECT_NEAR(theirs->at(ours == &written.ppmF1 ? n1 - 1 : n2 - 1), ours->at(ours == &written.ppmF1 ? n1 - 1 : n2 - 1), 1e-6);
  }
  EXPECT_EQ(back.extras[model::F1].nucleus, written.extras[model::F1].nucleus);
  EXPECT_EQ(back.extras[model::F2].nucleus, written.extras[model::F2].nucleus);
  std::istringstream lines(Text(file));
  std::size_t pages = 0;
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 80u) << line;
    pages += line.starts_with("##PAGE= F1=");
  }
  EXPECT_EQ(pages, static_cast<std::size_t>(n1));
  return worst;
}

}  // namespace

// A heteronuclear spectrum with peaks of both signs, and the corpus's 2D exchange file read, written
// by us and read again.
TEST(JcampWriter2D, PagesReadBackWithinTheYFactor) {
  auto s = test::MakeSynthetic2D(300, 96, {{2.0, 3.0, 1.0, 0.02}, {7.5, 8.0, -0.6, 0.03}, {5.0, 1.0, 0.05, 0.01}}, 1e-3);
  s->extras[model::F2] = {};
  s->extras[model::F2].absFreqCenter = s->extras[model::F2].absFreq0ppm = 600.13;
  s->extras[model::F2].nucleus = "1H";
  s->extras[model::F1].absFreqCenter = s->extras[model::F1].absFreq0ppm = 150.903;
  s->extras[model::F1].nucleus = "13C";
  s->params.OFR = 600.13f;
  s->comment = "synthetic HSQC";
  test::TempFolder folder;
  platform::Outcome o;
  ASSERT_EQ((o = WriteDataJCAMPDX2D(folder / "hsqc.jcamp", *s, true)).code, 0) << o.message.text;
  const double synthetic = ExpectPlaneReadsBack(*s, folder / "hsqc.jcamp");
  const std::string text = Text(folder / "hsqc.jcamp");
  for (const char* label : {"##DATA TYPE= nD NMR SPECTRUM", "##NUMDIM= 2", "##SYMBOL= F1, F2, Y",
                            "##.NUCLEUS= 13C, 1H", "##VAR_DIM= 96, 300, 28800", "##DATA TABLE= (F2++(Y..Y)), PROFILE"})
    EXPECT_NE(text.find(label), std::string::npos) << label;
  // The type detector names it a phase-sensitive heteronuclear spectrum.
  const test::CliRun info = test::RunCli("info --json " + test::Quoted((folder / "hsqc.jcamp").string()));
  EXPECT_NE(info.out.find("VPH_HETERO"), std::string::npos) << info.out << info.err;

  model::Spectrum2D rutin;
  ASSERT_EQ((o = ReadDataJCAMP2D(test::CorpusPath("jcamp/Rutin_3080ug200uL_DMSOd6_HSQC_400MHz_JDX.jdx"), rutin)).code, 0);
  ASSERT_EQ((o = WriteDataJCAMPDX2D(folder / "rutin.jdx", rutin, false)).code, 0) << o.message.text;
  const double corpus = ExpectPlaneReadsBack(rutin, folder / "rutin.jdx");
  std::printf("largest round-trip error in Y factors: synthetic %.3f, corpus HSQC %.3f\n", synthetic, corpus);
}

// Labels compare without blanks, dashes, slashes and underscores and in any case; ".jcamp" is one
// of the format's extensions.
TEST(JcampLabels, CompactSpellingsReadLikeTheStandardOnes) {
  EXPECT_EQ(CompactJcampKey("##DATA TYPE"), CompactJcampKey("##DATATYPE"));
  EXPECT_EQ(CompactJcampKey("##.OBSERVE_FREQUENCY"), "##.OBSERVEFREQUENCY");
  EXPECT_EQ(CompactJcampKey("##Spectrometer/Data-System"), "##SPECTROMETERDATASYSTEM");
  EXPECT_EQ(CompactJcampKey("##$SW_h"), "##$SW_H");
  test::TempFolder folder;
  const std::string body =
      "##title=compact labels\n##jcampdx=5.01\n##datatype=NMRSPECTRUM\n##Data_Class=XY-DATA\n"
      "##.observefrequency=400.0\n##.Observe-Nucleus=^1H\n##X_UNITS=HZ\n##firstx=4000\n##LAST X=0\n"
      "##y factor=0.5\n##n points=5\n##xydata=(X++(Y..Y))\n5 1 2 3 4 5\n##end=\n";
  folder.Write("compact.jcamp", body);
  const test::CliRun info = test::RunCli("info --json " + test::Quoted((folder / "compact.jcamp").string()));
  EXPECT_EQ(info.exitStatus, 0) << info.err;
  EXPECT_NE(info.out.find("\"tag\": \"JCAMP1\""), std::string::npos) << info.out;
  model::Spectrum1D s;
  platform::Outcome o;
  ASSERT_EQ((o = ReadDataJCAMP(folder / "compact.jcamp", s)).code, 0) << o.message.text;
  EXPECT_EQ(s.params.POINT, 5);
  EXPECT_FLOAT_EQ(s.re[0], 2.5f);  // the last value of the table is index 0 (X runs down)
  EXPECT_NEAR(s.axisPpm[4], 10.0, 1e-6);
}

}  // namespace velk::formats::jcamp
