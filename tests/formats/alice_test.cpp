#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <fstream>

#include "core/bytes.h"
#include <nlohmann/json.hpp>

#include "formats/alice/alice.h"
#include "support/corpus.h"
#include "support/run_cli.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::formats::alice {
namespace {

struct Context {
  test::ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words;
  model::ReadContext context{prompt, progress, words, nullptr};
  test::TempFolder folder;
};

model::Spectrum1D SampleSet(std::int32_t points) {
  model::Spectrum1D s;
  model::AllocateSpectrum1D(s, points);
  model::NmrParameters& p = s.params;
  p.POINT = points;
  p.OFR = 399.782f;
  p.OBSET = 182.0f;
  p.OBFIN = 198.4f;
  p.IRFRQ = 100.525f;
  p.FREQU = 7494.0f;
  p.FILTR = 3747.0f;
  p.ACQTM = 4.37f;
  p.PD = 5.0f;
  p.DEADT = 25.5f;
  p.SCANS = 64;
  p.TOSCN = 64;
  p.ADBIT = 16;
  p.CTEMP = 25.0f;
  p.CSPED = 15.0f;
  p.PW = {6.6f, 13.2f, 0, 0, 1};
  p.PI = {1, 2, 3, 4, 5};
  p.LOOP = {1, 2, 3, 4, 5};
  p.IRATN = 7;
  p.IRRPW = 147;
  p.SMEXR = 5.0f;
  p.SMTMS = points / 2;
  p.OBNUC = "1H";
  p.IRNUC = "13C";
  p.EXMOD = "single_pulse_dec";
  p.DATIM = "28/Feb/2019  23:32:02";
  s.comment = "Rutin in DMSO, ルチン";
  s.texts.instrument = "JNM-ECZ400S";
  s.texts.probeHead = "ROYALPROBE";
  s.texts.gradientProgram = "grad";
  for (std::int32_t i = 0; i < points; ++i) {
    s.re[i] = i < points * 0.6 ? std::cos(0.3f * i) / (1 + 0.1f * i) : 0.0f;
    s.im[i] = i < points * 0.6 ? std::sin(0.3f * i) / (1 + 0.1f * i) : 0.0f;
  }
  return s;
}

void ExpectSameFields(const model::Spectrum1D& a, const model::Spectrum1D& b) {
  const model::NmrParameters &p = a.params, &q = b.params;
  for (auto [x, y] : {std::pair{p.OFR, q.OFR}, {p.OBSET, q.OBSET}, {p.OBFIN, q.OBFIN}, {p.IRFRQ, q.IRFRQ},
                      {p.FREQU, q.FREQU}, {p.FILTR, q.FILTR}, {p.ACQTM, q.ACQTM}, {p.PD, q.PD}, {p.DEADT, q.DEADT},
                      {p.ADBIT, q.ADBIT}, {p.CTEMP, q.CTEMP}, {p.CSPED, q.CSPED}, {p.SMEXR, q.SMEXR}})
    EXPECT_EQ(x, y);
  EXPECT_EQ(p.PW, q.PW);
  EXPECT_EQ(p.PI, q.PI);
  EXPECT_EQ(p.LOOP, q.LOOP);
  EXPECT_EQ(std::tie(p.SCANS, p.TOSCN, p.SMTMS, p.IRATN, p.IRRPW), std::tie(q.SCANS, q.TOSCN, q.SMTMS, q.IRATN, q.IRRPW));
  EXPECT_EQ(std::tie(p.OBNUC, p.IRNUC, p.EXMOD, p.DATIM), std::tie(q.OBNUC, q.IRNUC, q.EXMOD, q.DATIM));
  EXPECT_EQ(a.comment, b.comment);
  EXPECT_EQ(std::tie(a.texts.instrument, a.texts.probeHead, a.texts.gradientProgram),
            std::tie(b.texts.instrument, b.texts.probeHead, b.texts.gradientProgram));
}

}  // namespace

TEST(Alice, WrittenSetsReadBackWithEveryFieldTheReaderTakes) {
  Context c;
  for (bool processed : {false, true}) {
    const model::Spectrum1D original = SampleSet(1000);
    const auto path = c.folder / (processed ? "spectrum.als" : "fid.als");
    ASSERT_TRUE(WriteDataALS(path, original, processed).ok());
    model::Spectrum1D back;
    ASSERT_TRUE(ReadDataAlice(path, back, c.context).ok());
    ExpectSameFields(original, back);
    EXPECT_EQ(back.params.POINT, processed ? 1000 : 1024);  // a FID is kept at a power of two
    // A FID is brought to a tail level of 0 and a largest real value of 1, as it already was.
    for (std::int32_t i = 0; i < 1000; i += 37) {
      EXPECT_NEAR(back.re[i], original.re[i], 1e-6) << i;
      EXPECT_NEAR(back.im[i], original.im[i], 1e-6) << i;
    }
    if (processed) EXPECT_FLOAT_EQ(static_cast<float>(back.params.RESOL), static_cast<float>(original.params.RESOL));
    else EXPECT_DOUBLE_EQ(back.params.RESOL, original.params.FREQU / 1024.0);  // width over the padded size
  }
}

TEST(Alice, VersionMarksAndPointCountsDecideWhetherAFileIsRead) {
  Context c;
  const auto path = c.folder / "a.als";
  ASSERT_TRUE(WriteDataALS(path, SampleSet(64), false).ok());
  std::ifstream in(path, std::ios::binary);
  const std::vector<std::uint8_t> written{std::istreambuf_iterator<char>(in), {}};
  const auto readBytes = [&](const std::vector<std::uint8_t>& bytes) {
    model::Spectrum1D s;
    s.params.POINT = -5;
    const platform::Outcome o = ReadDataAlice(c.folder.Write("b.als", std::string(bytes.begin(), bytes.end())), s,
                                              c.context);
    if (!o.ok()) {
      EXPECT_EQ(s.params.POINT, -5);  // nothing changed
    }
    return std::pair{o, s};
  };
  ASSERT_TRUE(readBytes(written).first.ok());

  // The unshifted layout: the mark at 82, the block fields 176 bytes earlier, an 80-byte comment.
  std::vector<std::uint8_t> old(written.size(), 0);
  std::memcpy(old.data() + 82, "WIN NMR VERSION 1.00", 20);
  std::copy(written.begin() + 322, written.begin() + 470, old.begin() + 146);  // pointer table
  const std::size_t block = 512;
  std::copy(written.begin() + block, written.begin() + block + 108, old.begin() + block);
  std::copy(written.begin() + block + 176 + 188, written.end(), old.begin() + block + 188);
  const auto [o, s] = readBytes(old);
  ASSERT_TRUE(o.ok()) << o.message.text;
  EXPECT_EQ(s.params.POINT, 64);
  EXPECT_EQ(s.params.OBNUC, "1H");

  std::vector<std::uint8_t> foreign = written;
  foreign[260] = 'X';
  EXPECT_EQ(readBytes(foreign).first.message.text, "Invalid Data");
  for (std::int32_t points : {0, 0x100001, -3}) {
    std::vector<std::uint8_t> bad = written;
    core::Encode<std::int32_t>(bad, block + 176 + 698, points, core::ByteOrder::Little);
    EXPECT_EQ(readBytes(bad).first.message.text, "Data is too Large(or invalid)") << points;
  }
  for (std::size_t length : {std::size_t{100}, std::size_t{600}, std::size_t{1500}, written.size() - 4}) {
    const std::vector<std::uint8_t> cut(written.begin(), written.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(readBytes(cut).first.code, 1) << length;
  }
}

}  // namespace velk::formats::alice

namespace velk::test {

// A real proton FID through the command line into an Alice file and back.
TEST(Alice, ARealFidConvertedReadsBackWithItsPointsAndFrequency) {
  TempFolder folder;
  const auto in = CorpusPath("jeol/EC=8EC_2m200u_MeOD_bzhou21_20190328_qH-1-1.jdf");
  const auto out = folder / "qH.als";
  ASSERT_EQ(RunCli("convert " + Quoted(in.string()) + " -o " + Quoted(out.string())).exitStatus, 0);
  const CliRun original = RunCli("info --json " + Quoted(in.string()));
  const CliRun back = RunCli("info --json " + Quoted(out.string()));
  ASSERT_EQ(back.exitStatus, 0) << back.err;
  const auto a = nlohmann::json::parse(original.out), b = nlohmann::json::parse(back.out);
  EXPECT_EQ(b.at("tag"), "ALS1");
  for (const char* key : {"points", "nuclei", "scans", "date"}) EXPECT_EQ(a.at("data").at(key), b.at("data").at(key)) << key;
  for (const char* key : {"observe_mhz", "spectral_width_hz"})
    EXPECT_FLOAT_EQ(a.at("data").at(key).get<float>(), b.at("data").at(key).get<float>()) << key;
  EXPECT_EQ(RunCli("convert " + Quoted(CorpusPath("jeol/Rutin_3080ug200uL_DMSOd6_COSY_400MHz_Jeol.jdf").string()) +
                   " -o " + Quoted((folder / "cosy.als").string())).exitStatus, 1);
}

}  // namespace velk::test
