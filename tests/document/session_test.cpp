#include <gtest/gtest.h>

#include <array>
#include <fstream>

#include "document/session.h"
#include "core/user_extensions.h"
#include "model/type_detector.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::document {
using namespace core;
namespace {

using platform::Answer;

// A made-up format: the file's first line says what it is ("2D", "2D FID", "1D" or "BAD").
std::string FirstLine(const model::DetectedFile& file) {
  std::ifstream in(file.path);
  std::string line;
  std::getline(in, line);
  return line;
}

model::ModeResult Probe(const model::DetectedFile& file) {
  const std::string line = FirstLine(file);
  model::ModeResult r;
  r.code = 0;
  r.modeText = line.starts_with("1D") ? "1D" : "V_HOMO_COSY";
  r.processed = line != "2D FID";
  return r;
}

platform::Outcome Read2D(const model::DetectedFile& file, model::Spectrum2D& s, model::ReadContext& context) {
  if (FirstLine(file) == "BAD") return {1, {"Data Error", "Invalid 2D Data"}};
  s.axis[model::F2].Point = 64;
  s.texts.fileName = file.path.string();
  context.log("Read", file.path.string());
  return {};
}

const std::array<model::FormatEntry, 1> kFormats{{{".TST", model::kVer4, Probe, Read2D, nullptr}}};

struct RecordingLauncher final : platform::Launcher {
  std::vector<std::vector<std::string>> started;
  bool Start(const std::filesystem::path&, const std::vector<std::string>& arguments) override {
    started.push_back(arguments);
    return true;
  }
};

struct Fixture {
  test::TempFolder folder;
  test::ScriptedPrompt prompt;
  RecordingLauncher launcher;
  int saves = 0, snapshotsWritten = 0, snapshotsRead = 0;
  SessionServices services{prompt, launcher, kFormats,
                           [this](Session&) { return ++saves > 0; },
                           [this](const Session&, const std::filesystem::path&) { return ++snapshotsWritten > 0; },
                           [this](Session&, const std::filesystem::path&) { return ++snapshotsRead > 0; }};
  Session session;

  Fixture() {
    session.folders = {folder / "share", folder / "config", folder / "log", folder / "work", folder / "bin"};
    std::filesystem::create_directories(session.folders.program);
  }
  std::string File(const std::string& name, const std::string& firstLine) {
    return folder.Write("data/" + name, firstLine + "\n" + std::string(400, ' ')).string();
  }
};

}  // namespace

TEST(CommandLine, QuotesBlanksHandOverAndShortLines) {
  EXPECT_EQ(CleanCommandLine(R"( "/my data/a b.tst" -x)").name, "/my data/a b.tst");
  EXPECT_EQ(CleanCommandLine("/data/a.tst more").name, "/data/a.tst");
  EXPECT_EQ(CleanCommandLine("ab").name, "");
  const CommandLine handed = CleanCommandLine(R"("$/data/one.tst")");
  EXPECT_TRUE(handed.handedOver);
  EXPECT_EQ(handed.name, "/data/one.tst");
}

TEST(StartUp, OneDimensionalFilesGoToTheSisterProgramUnlessHandedOver) {
  Fixture f;
  const std::string oneD = f.File("one.tst", "1D");
  std::ofstream(f.session.folders.program / kOneDimensionalProgram) << "";
  EXPECT_EQ(StartUp(f.session, "\"" + oneD + "\"", f.services), StartResult::End);
  ASSERT_EQ(f.launcher.started.size(), 1u);
  EXPECT_EQ(f.launcher.started[0][0], "$" + oneD);

  Fixture handed;
  EXPECT_EQ(StartUp(handed.session, "\"$" + handed.File("one.tst", "1D") + "\"", handed.services), StartResult::Run);
  EXPECT_TRUE(handed.launcher.started.empty());
  ASSERT_FALSE(handed.prompt.shown.empty());
  EXPECT_EQ(handed.prompt.shown.back().text, "Invalid Data, or\nFile is not 2D!");
  EXPECT_EQ(handed.session.state, SessionState::Idle);
}

TEST(StartUp, MissingSisterProgramIsToldAndTheRunGoesOn) {
  Fixture f;
  EXPECT_EQ(StartUp(f.session, f.File("one.tst", "1D"), f.services), StartResult::Run);
  EXPECT_NE(f.prompt.shown.at(0).text.find("not installed"), std::string::npos);
  EXPECT_TRUE(std::filesystem::exists(f.session.run.OwnWorkFile()));
}

TEST(StartUp, AFileInUseByAnotherRunEndsTheProgram) {
  Fixture f;
  const std::string name = f.File("two.tst", "2D");
  std::filesystem::create_directories(f.session.folders.work);
  std::ofstream(f.session.folders.work / "Work_File_2D0007.wkf") << name << "\n1\n";
  EXPECT_EQ(StartUp(f.session, name, f.services), StartResult::End);
  EXPECT_EQ(f.prompt.shown.at(0).text, "This File is under using by other application");
}

TEST(Open, SpectrumPathTitlesRecordsAndLogs) {
  Fixture f;
  ASSERT_EQ(StartUp(f.session, "", f.services), StartResult::Run);
  const std::string name = f.File("two.tst", "2D");
  EXPECT_EQ(Open(f.session, f.services, name), OpenResult::SpectrumLoaded);
  EXPECT_EQ(f.session.windowTitle, name + " NMR 2D ");
  EXPECT_EQ(f.session.displayed, 1);
  EXPECT_EQ(f.session.document.words.dataTypeCode, 0x210C);
  EXPECT_EQ(List(f.session.settings2D, "RECENT FILE").front(), name);
  EXPECT_EQ(CheckFileInUse(WorkFiles{f.session.folders.work, 99}, name), -1);
  EXPECT_FALSE(std::filesystem::is_empty(f.session.folders.log));

  // A damaged file: the reader's message, and the session keeps what it had.
  EXPECT_EQ(Open(f.session, f.services, f.File("bad.tst", "BAD")), OpenResult::Failed);
  EXPECT_EQ(f.prompt.shown.back().text, "Invalid 2D Data");
  EXPECT_EQ(f.session.document.spectrum.texts.fileName, name);
}

TEST(Open, ChangedDataAndRetry) {
  Fixture f;
  StartUp(f.session, "", f.services);
  f.session.displayed = 1;
  LoseCleanMark(f.session.document.undo);  // changed and not saved
  f.prompt.answers = {Answer::Cancel};
  EXPECT_EQ(Open(f.session, f.services, f.File("a.tst", "2D")), OpenResult::Cancelled);

  // Not 2D: Retry goes back to the file dialog, which now gives a 2D file.
  f.prompt.answers = {Answer::Save, Answer::Retry};
  f.prompt.files = {f.File("b.tst", "2D")};
  EXPECT_EQ(Open(f.session, f.services, f.File("c.tst", "1D")), OpenResult::SpectrumLoaded);
  EXPECT_EQ(f.saves, 1);
}

TEST(Open, FidPathKeepsASnapshotAndReturnsToItWithoutTransform) {
  Fixture f;
  StartUp(f.session, "", f.services);
  Open(f.session, f.services, f.File("a.tst", "2D"));
  EXPECT_EQ(Open(f.session, f.services, f.File("fid.tst", "2D FID")), OpenResult::FidLoaded);
  EXPECT_EQ(f.session.state, SessionState::FtWindow);
  EXPECT_EQ(f.session.processingMethod, "ABS");  // V_HOMO is an absolute-value class
  EXPECT_EQ(f.snapshotsWritten, 1);
  LeaveFtWindow(f.session, f.services, false);
  EXPECT_EQ(f.snapshotsRead, 1);
  EXPECT_EQ(f.session.state, SessionState::Spectrum);
}

TEST(Close, CancelKeepsEverythingAndEndClearsTheRun) {
  Fixture f;
  StartUp(f.session, "", f.services);
  Open(f.session, f.services, f.File("a.tst", "2D"));
  f.prompt.answers = {Answer::Cancel};
  EXPECT_EQ(Close(f.session, f.services), "CANCEL");
  EXPECT_TRUE(std::filesystem::exists(f.session.run.OwnWorkFile()));

  const auto undo = f.folder.Write("work/UnDo2Ddata." + f.session.run.RunExtension() + "001", "x");
  const auto othersUndo = f.folder.Write("work/UnDo2Ddata.9999001", "x");
  f.prompt.answers = {Answer::DontSave};
  EXPECT_EQ(Close(f.session, f.services), "END");
  EXPECT_FALSE(std::filesystem::exists(undo));
  EXPECT_TRUE(std::filesystem::exists(othersUndo));
  EXPECT_FALSE(std::filesystem::exists(f.session.run.OwnWorkFile()));
  EXPECT_TRUE(std::filesystem::exists(f.session.folders.config / "2DCommon.ini"));
  EXPECT_TRUE(std::filesystem::exists(f.session.settings2DFile));
}


TEST(UserExtensions, OwnExtensionsReachTheDetectorAndTheFilters) {
  const auto own = ParseUserExtensions({"Lab Delta;*.nmr;&H2003", "broken", "Bad code;*.x;&H2042"});
  ASSERT_EQ(own.size(), 1u);
  EXPECT_EQ(own[0].extensionWord, ".ECP");
  EXPECT_EQ(UserExtensionFilters(own)[0].label, "Lab Delta(*.nmr)");

  test::TempFolder folder;
  const std::array<model::FormatEntry, 1> formats{{{".ECP", model::kDelta, Probe, Read2D, nullptr}}};
  const auto file = folder.Write("a.nmr", "2D\n" + std::string(400, ' '));
  EXPECT_EQ(model::TypeDetector(file, formats).code, -1);
  EXPECT_EQ(model::TypeDetector(file, formats, own).code, 0x2103);
}

}  // namespace velk::document
