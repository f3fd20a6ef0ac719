#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/corpus.h"
#include "support/run_cli.h"
#include "support/temp_folder.h"

namespace velk::test {

// Every file of the three corpora: info answers with JSON and a status, and never crashes.
TEST(InfoCommand, EveryCorpusFileGetsAnAnswer) {
  int files = 0;
  for (const char* corpus : {"bruker", "jeol", "jcamp"}) {
    const auto root = CorpusPath(corpus);
    if (!std::filesystem::exists(root)) continue;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
      if (!entry.is_regular_file()) continue;
      ++files;
      const CliRun run = RunCli("info --json " + Quoted(entry.path().string()));
      ASSERT_GE(run.exitStatus, 0) << "crashed on " << entry.path();
      ASSERT_LE(run.exitStatus, 2) << entry.path();
      const auto json = nlohmann::json::parse(run.out, nullptr, false);
      ASSERT_FALSE(json.is_discarded()) << entry.path() << "\n" << run.out;
      EXPECT_TRUE(json.contains("code") && json.contains("tag") && json.contains("extension")) << entry.path();
      if (run.exitStatus != 0) {
        EXPECT_FALSE(run.err.empty()) << "no reason given for " << entry.path();
      }
    }
  }
  EXPECT_GT(files, 100);
}

TEST(InfoCommand, StatusTellsRefusedFromUnreadable) {
  TempFolder folder;
  EXPECT_EQ(RunCli("info " + Quoted((folder / "missing.vlk").string())).exitStatus, 2);
  const CliRun refused = RunCli("info " + Quoted(folder.Write("junk.bin", std::string(500, 'x')).string()));
  EXPECT_EQ(refused.exitStatus, 1);
  EXPECT_NE(refused.out.find("tag: ERR"), std::string::npos);
  EXPECT_EQ(RunCli("info --help").exitStatus, 0);
}

}  // namespace velk::test
