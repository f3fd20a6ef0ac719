#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <iterator>

#include "core/atomic_write.h"
#include "support/temp_folder.h"

namespace velk::core {
namespace {

namespace fs = std::filesystem;

std::string Contents(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::size_t FilesIn(const fs::path& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

// A file size limit as a full disk would give it: writes past it fail with EFBIG.
struct FileSizeLimit {
  explicit FileSizeLimit(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &saved);
    previous = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit = saved;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, previous);
  }
  rlimit saved{};
  void (*previous)(int) = nullptr;
};

TEST(WriteAtomically, ReplacesTheTargetWholeAndKeepsItsPermissions) {
  test::TempFolder folder;
  const fs::path target = folder.Write("a.txt", "old");
  chmod(target.c_str(), 0640);
  EXPECT_TRUE(WriteAtomically(target, [](std::ostream& out) { return static_cast<bool>(out << "new"); }).ok());
  EXPECT_EQ(Contents(target), "new");
  struct stat info {};
  stat(target.c_str(), &info);
  EXPECT_EQ(info.st_mode & 0777, 0640u);
  EXPECT_EQ(FilesIn(folder.path), 1u);
  // A writer that opens the file itself sees a name that still ends in the target's extension.
  EXPECT_TRUE(WriteAtomically(folder / "b.svg", [](const fs::path& temporary) -> std::string {
                return temporary.extension() == ".svg" && std::ofstream(temporary) << "<svg/>" ? "" : "bad name";
              }).ok());
  EXPECT_EQ(Contents(folder / "b.svg"), "<svg/>");
}

TEST(WriteAtomically, AnyFailureLeavesTheTargetAsItWasAndNoTemporaryFile) {
  test::TempFolder folder;
  const fs::path target = folder.Write("a.dat", "the user's data");
  // The writer gives up half way.
  platform::Outcome outcome = WriteAtomically(target, [](std::ostream& out) {
    out << "half";
    return false;
  });
  EXPECT_EQ(outcome.code, -1);
  // The writer says why.
  outcome = WriteAtomically(target, [](const fs::path&) { return std::string("no picture"); });
  EXPECT_NE(outcome.message.text.find("no picture"), std::string::npos);
  // The disk fills up while the bytes are written.
  {
    FileSizeLimit limit(4096);
    outcome = WriteAtomically(target, [](std::ostream& out) {
      const std::string block(1024, 'x');
      for (int i = 0; i < 64 && out; ++i) out << block;
      return true;
    });
  }
  EXPECT_EQ(outcome.code, -1);
  EXPECT_NE(outcome.message.text.find("File too large"), std::string::npos) << outcome.message.text;
  EXPECT_EQ(Contents(target), "the user's data");
  EXPECT_EQ(FilesIn(folder.path), 1u);
  // A folder that does not exist.
  EXPECT_EQ(WriteAtomically(folder / "none" / "b.dat", [](std::ostream&) { return true; }).code, -1);
}

}  // namespace
}  // namespace velk::core
