// The reading commands of the main window on real Ver.4 files through the real readers: "Quit"
// during "Read Data" ends the read itself and the data shown stay exactly as they were (spectrum,
// view, undo); "Read 1D Spectrum" takes a trace and refuses a 2D file; "Read 2D Spectrum" takes
// only a FID.
#include <gtest/gtest.h>

#include "document/grid_command.h"
#include "document/session.h"
#include "native/fixture.h"
#include "native/ver4_file.h"
#include "support/scripted_prompt.h"
#include "support/synthetic_2d.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

using namespace document;

// Says quit once the read has reported `steps` times; counts what it saw.
struct QuitAfter final : platform::Progress {
  int steps;
  int seen = 0;
  std::int64_t lastDone = -1, lastTotal = 0;
  explicit QuitAfter(int n) : steps(n) {}
  bool Step(std::int64_t done, std::int64_t total) override {
    lastDone = done, lastTotal = total;
    return ++seen <= steps;
  }
};

struct Fixture {
  TempFolder folder;
  ScriptedPrompt prompt;
  platform::NoProgress none;
  struct : platform::Launcher {
    bool Start(const std::filesystem::path&, const std::vector<std::string>&) override { return false; }
  } launcher;
  SessionServices services{prompt, launcher, formats::Formats(), [](Session&) { return true; },
                           [](const Session&, const std::filesystem::path&) { return true; },
                           [](Session&, const std::filesystem::path&) { return true; }};
  Session session;

  Fixture() {
    session.folders = {folder / "share", folder / "config", folder / "log", folder / "work", folder / "bin"};
    std::filesystem::create_directories(session.folders.program);
    StartUp(session, "", services);
  }
  // A four-plane spectrum of cols x rows with one peak where `mark` says.
  std::string Write(const std::string& name, int cols, int rows, double mark) {
    const auto s = MakeSynthetic2D(cols, rows, {{mark, mark, 1.0, 0.2}});
    const std::filesystem::path file = folder / name;
    const model::DataWords words{model::MakeTypeCode(2, true, model::kVer4), model::VPH_HOMO, 0};
    EXPECT_TRUE(native::WriteDataR4(file, *s, nullptr, nullptr, words, native::SaveMode::AllPlanes, {}).ok());
    return file.string();
  }
};

TEST(OpenQuit, AQuitReadLeavesTheShownDataAsTheyWere) {
  Fixture f;
  const std::string first = f.Write("first.vlk2", 256, 128, 3.0);
  QuitAfter all(1 << 20);
  f.services.progress = &all;
  ASSERT_EQ(Open(f.session, f.services, first), OpenResult::SpectrumLoaded);
  EXPECT_EQ(all.lastDone, all.lastTotal);  // the bar reached its end
  Document& d = f.session.document;
  d.view.ViewF2Start = 7.5f;
  display::GridSetting grid = d.grid;
  grid.shown = true;
  SetGrid(d, grid);
  const std::vector<float> rr(d.spectrum.RR.data.begin(), d.spectrum.RR.data.end());

  // A bigger file, quit at its first step and again half way through its planes.
  const std::string big = f.Write("big.vlk2", 1024, 1024, 6.0);
  for (int steps : {0, 2}) {
    QuitAfter quit(steps);
    f.services.progress = &quit;
    EXPECT_EQ(Open(f.session, f.services, big), OpenResult::Failed);
    EXPECT_EQ(quit.seen, steps + 1);  // it stopped at the first "no"
    EXPECT_LT(quit.lastDone, quit.lastTotal);
    EXPECT_TRUE(f.prompt.shown.empty());  // a quit needs no message
    EXPECT_EQ(f.session.windowTitle, first + " NMR 2D ");
    EXPECT_EQ(d.spectrum.axis[model::F2].Point, 256);
    EXPECT_TRUE(std::equal(rr.begin(), rr.end(), d.spectrum.RR.data.begin()));
    EXPECT_EQ(d.view.ViewF2Start, 7.5f);
    EXPECT_EQ(UndoCaption(d.undo), "UnDo(Change Grid)");
  }

  // Without a quit the same file reads.
  f.services.progress = &f.none;
  EXPECT_EQ(Open(f.session, f.services, big), OpenResult::SpectrumLoaded);
  EXPECT_EQ(d.spectrum.axis[model::F2].Point, 1024);
  EXPECT_TRUE(d.grid.shown);  // the way of looking stays with the run
}

TEST(ReadCommands, TracesAndFidsOnlyWhereTheyBelong) {
  Fixture f;
  const std::string twoD = f.Write("two.vlk2", 256, 128, 3.0);
  ASSERT_EQ(Open(f.session, f.services, twoD), OpenResult::SpectrumLoaded);
  Document& d = f.session.document;

  const model::Spectrum1D trace = MakeSpectrum1D(512, 1);
  const std::filesystem::path oneD = f.folder / "trace.vlk";
  ASSERT_TRUE(native::WriteDataR4(oneD, trace, {}).ok());
  f.prompt.files = {oneD.string()};
  EXPECT_TRUE(ReadTraceSpectrum(f.session, f.services, model::F1));
  EXPECT_EQ(f.prompt.shown.back().title, "Read 1D Spectrum");
  ASSERT_EQ(d.companionF1.re.size(), trace.re.size());
  EXPECT_TRUE(std::equal(trace.re.begin(), trace.re.end(), d.companionF1.re.begin()));
  EXPECT_TRUE(d.companionF2.re.empty());
  EXPECT_TRUE(Modified(d));  // the saved file holds another trace

  // A 2D file is no trace: the message, and the trace stays.
  EXPECT_FALSE(ReadTraceSpectrum(f.session, f.services, model::F1, twoD));
  EXPECT_EQ(f.prompt.shown.back().title, "Data Error");
  EXPECT_EQ(f.prompt.shown.back().text, "Data is too Large, or Parameter Error");
  EXPECT_EQ(d.companionF1.re.size(), trace.re.size());

  // "Read 2D Spectrum" of a spectrum: refused, the data shown stay.
  SetCleanMark(d.undo);
  EXPECT_EQ(ReadFidSpectrum(f.session, f.services, twoD), OpenResult::Failed);
  EXPECT_EQ(f.prompt.shown.back().text, "Non 2D Data !");
  EXPECT_EQ(f.session.state, SessionState::Spectrum);
  EXPECT_EQ(d.spectrum.axis[model::F2].Point, 256);
  // ... and of the example's raw COSY: the FT window's path.
  EXPECT_EQ(ReadFidSpectrum(f.session, f.services, std::string(VELK_SOURCE_DIR) + "/examples/cosy/ser"),
            OpenResult::FidLoaded);
  EXPECT_EQ(f.session.state, SessionState::FtWindow);
}

}  // namespace
}  // namespace velk::test
