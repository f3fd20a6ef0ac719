// convert, export and info on Ver.4 files, run as a user runs them.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

#include <nlohmann/json.hpp>

#include "native/fixture.h"
#include "support/run_cli.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

std::filesystem::path WriteSet(const TempFolder& folder, int pulseModeClass) {
  auto s = MakeSpectrum2D(130, 140);
  model::Spectrum1D f2 = MakeSpectrum1D(130, 1), f1 = MakeSpectrum1D(140, 2);
  AddEveryCarriedSection(*s, f2, f1);
  const auto file = folder / "in.vlk2";
  EXPECT_TRUE(native::WriteDataR4(file, *s, &f2, &f1, {0x210C, pulseModeClass, 0}, native::SaveMode::AllPlanes, {}).ok());
  return file;
}

TEST(Ver4Cli, ConvertKeepsEverythingAndChoosesTheMode) {
  TempFolder folder;
  const auto in = WriteSet(folder, 0);
  const auto out = folder / "out.vlk2";
  ASSERT_EQ(RunCli("convert " + Quoted(in.string()) + " -o " + Quoted(out.string())).exitStatus, 0);
  // Only the file names differ; everything else comes through byte for byte.
  const auto before = Slurp(in), after = Slurp(out);
  ASSERT_EQ(before.size(), after.size());
  std::size_t differing = 0;
  for (std::size_t i = 0; i < before.size(); ++i) differing += before[i] != after[i];
  EXPECT_LT(differing, 40u);
  ASSERT_EQ(RunCli("convert " + Quoted(in.string()) + " -o " + Quoted(out.string()) + " --mode power").exitStatus, 0);
  const auto back = Read2D(Slurp(out));
  EXPECT_EQ(back->words.realOnly, 1);
  EXPECT_FLOAT_EQ(back->s->RR.at(1, 0), std::sqrt(0.25f * 0.25f + 250000.25f * 250000.25f + 500000.25f * 500000.25f +
                                                  750000.25f * 750000.25f));
  EXPECT_FALSE(std::filesystem::exists(folder / "out.$lk2"));

  EXPECT_NE(RunCli("convert " + Quoted(in.string()) + " -o " + Quoted((folder / "x.txt").string())).exitStatus, 0);
  const CliRun refused = RunCli("convert " + Quoted(folder.Write("junk.bin", std::string(500, 'x')).string()) + " -o " +
                                Quoted(out.string()));
  EXPECT_EQ(refused.exitStatus, 1);
  EXPECT_FALSE(refused.err.empty());
  EXPECT_EQ(RunCli("convert --help").exitStatus, 0);
}

TEST(Ver4Cli, ExportWritesNumpyAndItsAxes) {
  TempFolder folder;
  const auto in = WriteSet(folder, 3);
  const auto npy = folder / "ri.npy";
  ASSERT_EQ(RunCli("export " + Quoted(in.string()) + " -o " + Quoted(npy.string()) + " --plane RI").exitStatus, 0);
  const auto bytes = Slurp(npy);
  ASSERT_GT(bytes.size(), 128u);
  EXPECT_EQ(std::string(bytes.begin() + 1, bytes.begin() + 6), "NUMPY");
  const std::size_t headerLength = 10 + bytes[8] + 256 * bytes[9];
  EXPECT_EQ(headerLength % 64, 0u);
  const std::string header(bytes.begin() + 10, bytes.begin() + static_cast<std::ptrdiff_t>(headerLength));
  EXPECT_NE(header.find("'descr': '<f4'"), std::string::npos);
  EXPECT_NE(header.find("'shape': (140, 130)"), std::string::npos);
  ASSERT_EQ(bytes.size(), headerLength + 140 * 130 * 4);
  float value;
  std::memcpy(&value, bytes.data() + headerLength + (2 * 130 + 7) * 4, 4);  // row 2 = F1 index 2, column 7
  EXPECT_EQ(value, (1000000 + 2 * 1000 + 7) * 0.25f);

  std::ifstream jsonFile(folder / "ri.json");
  const auto json = nlohmann::json::parse(jsonFile);
  EXPECT_EQ(json["plane"], "RI");
  EXPECT_EQ(json["shape"], nlohmann::json::array({140, 130}));
  EXPECT_EQ(json["f2"]["points"], 130);
  EXPECT_DOUBLE_EQ(json["f2"]["ppm_first"].get<double>(), 11.5);
  EXPECT_DOUBLE_EQ(json["f1"]["ppm_step"].get<double>(), -0.0125);
  EXPECT_EQ(json["f1"]["nucleus"], "13C");
  EXPECT_DOUBLE_EQ(json["f2"]["observe_mhz"].get<double>(), 500.13);

  const CliRun info = RunCli("info --json " + Quoted(in.string()));
  ASSERT_EQ(info.exitStatus, 0) << info.err;
  const auto described = nlohmann::json::parse(info.out);
  EXPECT_EQ(described["tag"], "VELK2D_V4");
  EXPECT_EQ(described["data"]["trace_points"]["f1"], 140);
  EXPECT_EQ(described["data"]["solvent"], "ＣＤＣｌ３");
  EXPECT_EQ(RunCli("export --help").exitStatus, 0);
}

}  // namespace
}  // namespace velk::test
