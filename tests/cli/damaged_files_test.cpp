#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/run_cli.h"

namespace velk::test {

// Every file of the damaged corpus gets the exit status and the message its table gives, and
// the reading ones read: no crash, no silent success, no vague reason.
TEST(DamagedFiles, EachGetsItsStatusAndMessage) {
  const std::filesystem::path folder = VELK_DAMAGED_DIR;
  std::ifstream table(folder / "expected.tsv");
  ASSERT_TRUE(table) << folder;
  int cases = 0;
  for (std::string line; std::getline(table, line);) {
    if (line.empty() || line.front() == '#') continue;
    std::istringstream fields(line);
    std::string file, status, message;
    std::getline(fields, file, '\t');
    std::getline(fields, status, '\t');
    std::getline(fields, message);
    const CliRun run = RunCli("info " + Quoted((folder / file).string()));
    EXPECT_EQ(run.exitStatus, std::stoi(status)) << file << "\n" << run.err;
    if (message.empty()) EXPECT_TRUE(run.err.empty()) << file << "\n" << run.err;
    else EXPECT_NE(run.err.find(message), std::string::npos) << file << "\n" << run.err;
    ++cases;
  }
  EXPECT_GT(cases, 10);
}

}  // namespace velk::test
