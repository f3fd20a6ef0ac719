#include <gtest/gtest.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "support/run_cli.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

std::string Content(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::stringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

}  // namespace

// A save killed half way (the file size limit is reached and the signal ends the program) leaves
// the previous file under its name byte for byte; the old file is also its ".$" generation.
TEST(KilledSave, LeavesThePreviousVer4FileWhole) {
  const std::string ser = Quoted((std::filesystem::path(VELK_EXAMPLES_DIR) / "cosy" / "ser").string());
  TempFolder folder;
  const auto out = folder / "cosy.vlk2";
  ASSERT_EQ(RunCli("process " + ser + " -o " + Quoted(out.string()) + " --zf 1,2").exitStatus, 0);
  const std::string before = Content(out);
  ASSERT_GT(before.size(), 600u * 1024u);
  // The larger zero fill makes a bigger file than the 500 KiB the shell allows.
  const char* cli = std::getenv("VELK_CLI");
  const std::string command = "ulimit -f 500; exec " + Quoted(cli ? cli : "velk2d-cli") + " process " + ser + " -o " +
                              Quoted(out.string()) + " --zf 2,4 >/dev/null 2>&1";
  const int status = std::system(("sh -c " + Quoted(command)).c_str());
  ASSERT_TRUE(WIFEXITED(status)) << status;
  EXPECT_EQ(WEXITSTATUS(status), 128 + SIGXFSZ);
  EXPECT_EQ(Content(out), before);
  EXPECT_EQ(Content(folder / "cosy.$lk2"), before);
}

}  // namespace velk::test
