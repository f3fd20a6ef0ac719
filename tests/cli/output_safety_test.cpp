// What no command may do, tried as a new user would: write over one of its inputs, or leave a
// truncated file where a good one was.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>

#include "support/corpus.h"
#include "support/run_cli.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

namespace fs = std::filesystem;

std::string Contents(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Every file below a folder with its bytes.
std::map<fs::path, std::string> Snapshot(const fs::path& folder) {
  std::map<fs::path, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file()) files[entry.path()] = Contents(entry.path());
  return files;
}

std::string Q(const fs::path& path) { return Quoted(path.string()); }

// A processed spectrum and its raw experiment folder, copied where the test may damage them.
struct Inputs {
  TempFolder folder;
  fs::path experiment = folder / "cosy";
  fs::path spectrum = folder / "s.vlk2";
  fs::path jcamp2D = folder / "cosy.jdx";
  Inputs() {
    fs::copy(VELK_EXAMPLES "/cosy", experiment, fs::copy_options::recursive);
    fs::copy_file(CorpusPath("jcamp/Rutin_3080ug200uL_DMSOd6_COSY_400MHz_JDX.jdx"), jcamp2D);
    const CliRun made = RunCli("process " + Q(experiment) + " -o " + Q(spectrum));
    EXPECT_EQ(made.exitStatus, 0) << made.err;
  }
};

TEST(OutputSafety, NoCommandWritesOverItsInput) {
  Inputs in;
  fs::create_symlink(in.spectrum, in.folder / "link.npy");
  fs::create_symlink(in.spectrum, in.folder / "link.png");
  fs::create_symlink(in.experiment, in.folder / "same-experiment");
  const auto before = Snapshot(in.folder.path);
  const std::string s = Q(in.spectrum), e = Q(in.experiment);
  const std::vector<std::string> attempts{
      "process " + e + " -o " + Q(in.experiment / "ser"),                 // the raw data itself
      "process " + e + " -o " + Q(in.experiment / "spectrum.vlk2"),       // inside the experiment
      "process " + Q(in.experiment / "ser") + " -o " + Q(in.folder / "same-experiment" / "x.vlk2"),
      "convert " + s + " -o " + s,
      "convert " + s + " -o " + Q(in.folder / "link.npy"),
      "convert " + Q(in.jcamp2D) + " -o " + Q(in.jcamp2D) + " --trace f2 --index 100",
      "export " + s + " -o " + s,
      "export " + s + " -o " + Q(in.folder / "link.npy"),
      "plot " + s + " -o " + Q(in.folder / "link.png"),
      "plot " + e + " -o " + Q(in.experiment / "cosy.png"),
  };
  for (const std::string& attempt : attempts) {
    const CliRun run = RunCli(attempt);
    EXPECT_EQ(run.exitStatus, 2) << attempt << "\n" << run.err;
    EXPECT_FALSE(run.err.empty()) << attempt;
  }
  EXPECT_EQ(Snapshot(in.folder.path), before);
}

TEST(OutputSafety, AWriteThatFailsPartWayLeavesThePreviousFile) {
  Inputs in;
  const std::string s = Q(in.spectrum);
  const std::vector<std::pair<std::string, std::string>> writes{
      {"old.vlk2", "convert " + s + " -o "},
      {"old.png", "plot " + s + " -o "},
      {"old.svg", "plot " + s + " -o "},
      {"old.pdf", "plot " + s + " -o "},
      {"old.jdx", "convert " + s + " --trace f2 --index 100 -o "},
      {"old.npy", "export " + s + " -o "},
  };
  TempFolder out;
  for (const auto& [name, command] : writes) out.Write(name, "the previous " + name);
  const auto before = Snapshot(out.path);
  // A disk that fills after a few kilobytes: every write fails with "File too large".
  for (const auto& [name, command] : writes) {
    const CliRun run = RunCli(command + Q(out / name), "ulimit -f 4; trap '' XFSZ; ");
    EXPECT_EQ(run.exitStatus, 2) << name << "\n" << run.err;
    EXPECT_NE(run.err.find("too large"), std::string::npos) << name << "\n" << run.err;
  }
  EXPECT_EQ(Snapshot(out.path), before);
}

// The default recipe is one: a raw FID drawn directly is the spectrum `process` makes of it.
TEST(OutputSafety, PlotOfTheRawFidIsPlotOfItsProcessedSpectrum) {
  Inputs in;
  TempFolder out;
  const std::string options = " --size 600x500 --steps 8";
  ASSERT_EQ(RunCli("plot " + Q(in.experiment) + " -o " + Q(out / "raw.svg") + options).exitStatus, 0);
  ASSERT_EQ(RunCli("plot " + Q(in.spectrum) + " -o " + Q(out / "processed.svg") + options).exitStatus, 0);
  EXPECT_EQ(Contents(out / "raw.svg"), Contents(out / "processed.svg"));
}

}  // namespace
}  // namespace velk::test
