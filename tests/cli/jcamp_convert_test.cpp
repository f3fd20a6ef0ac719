#include <gtest/gtest.h>

#include <cmath>

#include "formats/jcamp/reader.h"
#include "model/trace.h"
#include "support/corpus.h"
#include "support/run_cli.h"
#include "support/temp_folder.h"

namespace velk::test {

// convert writes JCAMP-DX from a 1D set and from one trace of a 2D set, and both read back.
TEST(ConvertJcamp, OneDimensionalSetsAndTracesOf2DSets) {
  TempFolder folder;
  const std::string aspirin = Quoted(CorpusPath("jcamp/aspirin-1h.dx").string());
  const std::string hsqcPath = CorpusPath("jcamp/Rutin_3080ug200uL_DMSOd6_HSQC_400MHz_JDX.jdx").string();
  const std::string hsqc = Quoted(hsqcPath);
  const auto out = [&](const char* name) { return Quoted((folder / name).string()); };

  EXPECT_EQ(RunCli("convert " + aspirin + " -o " + out("a.jdx")).exitStatus, 0);
  EXPECT_EQ(RunCli("convert " + aspirin + " -o " + out("a.dx") + " --jcamp-form ntuples").exitStatus, 0);
  for (const char* name : {"a.jdx", "a.dx"}) {
    const CliRun info = RunCli("info --json " + out(name));
    EXPECT_EQ(info.exitStatus, 0) << name << info.err;
    EXPECT_NE(info.out.find("\"points\": 32768"), std::string::npos) << name;
  }

  const CliRun trace = RunCli("convert " + hsqc + " -o " + out("t.jdx") + " --trace f1 --index 1500");
  ASSERT_EQ(trace.exitStatus, 0) << trace.err;
  model::Spectrum2D s;
  model::Spectrum1D expected, back;
  platform::Outcome o;
  ASSERT_EQ((o = formats::jcamp::ReadDataJCAMP2D(hsqcPath, s)).code, 0);
  ASSERT_EQ(model::TraceAsSpectrum1D(s, model::F1, 1500, expected), 0);
  ASSERT_EQ((o = formats::jcamp::ReadDataJCAMP(folder / "t.jdx", back)).code, 0) << o.message.text;
  ASSERT_EQ(back.params.POINT, 2048);
  float largest = 0.1f;
  for (std::int32_t i = 0; i < 2048; ++i) largest = std::max(largest, std::fabs(expected.re[i]));
  for (std::int32_t i = 0; i < 2048; ++i) ASSERT_NEAR(back.re[i], expected.re[i], largest / 4194304.0f) << i;
  EXPECT_NEAR(back.axisPpm[2047], expected.axisPpm[2047], 1e-6);
  EXPECT_EQ(back.params.OBNUC, "13C");

  // Without a trace the whole 2D spectrum goes out as pages and reads back as 2D.
  ASSERT_EQ(RunCli("convert " + hsqc + " -o " + out("whole.jcamp")).exitStatus, 0);
  EXPECT_NE(RunCli("info --json " + out("whole.jcamp")).out.find("\"tag\": \"JCAMP2\""), std::string::npos);

  // Refused: a 2D set in the 1D NTUPLES form, an index outside, a trace of a 1D set, a FID.
  EXPECT_EQ(RunCli("convert " + hsqc + " -o " + out("x.jdx") + " --jcamp-form ntuples").exitStatus, 1);
  EXPECT_EQ(RunCli("convert " + hsqc + " -o " + out("x.jdx") + " --trace f2 --index 2048").exitStatus, 1);
  EXPECT_EQ(RunCli("convert " + aspirin + " -o " + out("x.jdx") + " --trace f2 --index 0").exitStatus, 1);
  EXPECT_EQ(RunCli("convert " + Quoted(CorpusPath("jcamp/aspirin-1h.fid.dx").string()) + " -o " + out("x.jdx")).exitStatus, 1);
  EXPECT_FALSE(std::filesystem::exists(folder / "x.jdx"));
}

}  // namespace velk::test
