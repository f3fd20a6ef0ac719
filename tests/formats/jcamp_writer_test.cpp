#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "formats/jcamp/reader.h"
#include "formats/jcamp/writer.h"
#include "model/trace.h"
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
