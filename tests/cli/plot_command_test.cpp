#include <gtest/gtest.h>

#include "support/run_cli.h"
#include "support/temp_folder.h"

namespace velk::test {

TEST(PlotCommand, RefusesWhatItCannotDrawWithoutWritingAPicture) {
  TempFolder folder;
  const std::string out = Quoted((folder / "out.png").string());
  EXPECT_EQ(RunCli("plot --help").exitStatus, 0);
  EXPECT_EQ(RunCli("plot " + Quoted((folder / "missing.vlk2").string()) + " -o " + out).exitStatus, 2);
  const std::string junk = Quoted(folder.Write("junk.bin", std::string(500, 'x')).string());
  const CliRun refused = RunCli("plot " + junk + " -o " + out);
  EXPECT_EQ(refused.exitStatus, 1);
  EXPECT_NE(refused.err.find("velk2d-cli plot: "), std::string::npos);
  EXPECT_EQ(RunCli("plot " + junk + " -o " + out + " --size 10x10").exitStatus, 2);
  EXPECT_EQ(RunCli("plot " + junk + " -o " + Quoted((folder / "out.gif").string())).exitStatus, 2);
  EXPECT_EQ(RunCli("plot " + junk + " -o " + out + " --lower 0.5 --upper 0.2").exitStatus, 2);
  EXPECT_NE(RunCli("plot " + junk + " -o " + out + " --steps 5").exitStatus, 0);
  EXPECT_FALSE(std::filesystem::exists(folder / "out.png"));
}

}  // namespace velk::test
