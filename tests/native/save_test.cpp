// What a save writes, what it asks, and the backup generations around it.
#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>
#include <fstream>

#include "native/backup.h"
#include "native/fixture.h"
#include "native/save_modes.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

using native::SaveMode;
using platform::Answer;

TEST(Ver4Save, PlanesAndModeStringFollowClassAndMode) {
  auto s = MakeSpectrum2D(128, 128);
  s->RR.at(5, 6) = 3;
  s->IR.at(5, 6) = 4;
  s->RI.at(5, 6) = 12;
  s->II.at(5, 6) = 84;
  struct Case {
    int pulseModeClass;
    bool realOnly;
    SaveMode mode;
    const char* modeString;
    std::size_t planes;
    float at56;
  };
  for (const Case c : {Case{0, false, SaveMode::AllPlanes, "2D HOMO PH RI", 4, 3}, Case{3, false, SaveMode::AllPlanes, "2D HETE PH RI", 4, 3},
                       Case{0, true, SaveMode::AllPlanes, "2D HOMO PH RR", 1, 3}, Case{3, false, SaveMode::RealOnly, "2D HETE PH RR", 1, 3},
                       Case{0, false, SaveMode::PowerSpectrum, "2D HOMO AB AB", 1, 85},
                       Case{3, false, SaveMode::PowerSpectrum, "2D HETE AB AB", 1, 85},
                       Case{2, false, SaveMode::RealOnly, "2D HETE AB RR", 1, 5}, Case{1, false, SaveMode::AllPlanes, "2D HOMO AB AB", 1, 3},
                       Case{4, false, SaveMode::PowerSpectrum, "2D HETE AB AB", 1, 3}}) {
    SCOPED_TRACE(c.modeString);
    const native::PlaneSet set = native::MakePlaneSet(*s, c.pulseModeClass, c.realOnly, c.mode);
    EXPECT_EQ(set.modeString, c.modeString);
    ASSERT_EQ(set.planes.size(), c.planes);
    EXPECT_EQ(set.planes[0][6 * 128 + 5], c.at56);
    EXPECT_TRUE(c.planes == 1 || set.planes[1][6 * 128 + 5] == 12);  // RI second, as files store them
  }
}

TEST(Ver4Save, TheSizeChoiceAsksInTheProgramsWords) {
  const native::SaveSizeDialog dialog = native::MakeSaveSizeDialog(4096, 2048, 1);
  EXPECT_EQ(dialog.title, "Cut down of Saved Data Size");
  EXPECT_EQ(dialog.options[0], "Save All Data(incl.Image)(ca 134.22 Mbyte)");
  EXPECT_EQ(dialog.options[1], "Save Real only(ca 33.55 Mbyte:Phase of saved Data can not be corrected.）");
  EXPECT_EQ(dialog.preset, 1);
  EXPECT_EQ(native::MegabyteText(1.5), "1.5");
  EXPECT_EQ(native::MegabyteText(0), "0.0");

  ScriptedPrompt realOnly;
  realOnly.answers = {Answer::Ok, Answer::Ok};
  realOnly.choices = {1};
  EXPECT_EQ(native::ChooseSaveMode(realOnly, {0, false, false, 1, 256, 256}), SaveMode::RealOnly);
  ASSERT_EQ(realOnly.shown.size(), 3u);
  EXPECT_EQ(realOnly.shown[0].text, "recommend [Save Real only], because this data was Symmetrized or BaseLine corrected.");
  EXPECT_EQ(realOnly.shown[2].title, "Confirming!");
  EXPECT_EQ(realOnly.shown[2].text, "Phase of saved Data can not be corrected. OK?");

  ScriptedPrompt cancelled;
  cancelled.choices = {1};
  cancelled.answers = {Answer::Cancel};
  EXPECT_EQ(native::ChooseSaveMode(cancelled, {3, false, false, 0, 256, 256}), std::nullopt);

  ScriptedPrompt power;
  power.answers = {Answer::Yes};
  EXPECT_EQ(native::ChooseSaveMode(power, {3, false, true, 0, 256, 256}), SaveMode::PowerSpectrum);
  EXPECT_EQ(power.shown[0].title, "Confirming(PowerSpectrum)!");
  EXPECT_EQ(power.shown[0].text, "Save as PowerSpectrum?");
  ScriptedPrompt notPower;
  notPower.answers = {Answer::No, Answer::Ok};
  EXPECT_EQ(native::ChooseSaveMode(notPower, {0, false, true, 0, 256, 256}), SaveMode::RealOnly);

  ScriptedPrompt none;  // absolute classes and real-only sets are not asked
  EXPECT_EQ(native::ChooseSaveMode(none, {1, false, false, 0, 256, 256}), SaveMode::AllPlanes);
  EXPECT_EQ(native::ChooseSaveMode(none, {0, true, false, 1, 256, 256}), SaveMode::AllPlanes);
  EXPECT_TRUE(none.shown.empty());
}

std::string Content(const std::filesystem::path& file) {
  std::ifstream in(file);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

platform::Outcome WriteText(const std::filesystem::path& file, const std::string& text) {
  std::ofstream(file) << text;
  return {};
}

TEST(Ver4Save, BackupGenerations) {
  EXPECT_EQ(native::BackupNamesOf("/d/x.vlk").first, "/d/x.$lk");
  EXPECT_EQ(native::BackupNamesOf("/d/x.vlk2").second, "/d/x.$$lk2");
  EXPECT_EQ(native::BackupNamesOf("/d/x").first, "/d/x.$");
  EXPECT_EQ(native::BackupNamesOf("/d/x").second, "/d/x.$$");

  TempFolder folder;
  const auto target = folder / "set.vlk2";
  const auto names = native::BackupNamesOf(target);
  for (const char* version : {"one", "two", "three"})
    ASSERT_TRUE(native::ReplaceWithBackup(target, true, [&](const auto& f) { return WriteText(f, version); }).ok());
  EXPECT_EQ(Content(target), "three");
  EXPECT_EQ(Content(names.first), "two");
  EXPECT_FALSE(std::filesystem::exists(names.second));

  // A write that fails half way: the new file goes, both generations come back.
  const auto failing = [&](const std::filesystem::path& f) {
    WriteText(f, "thr");
    return platform::Outcome{-1, {"WDR V4", "No space left on device"}};
  };
  EXPECT_EQ(native::ReplaceWithBackup(target, true, failing).code, -1);
  EXPECT_EQ(Content(target), "three");
  EXPECT_EQ(Content(names.first), "two");
  EXPECT_FALSE(std::filesystem::exists(names.second));

  // Without "MAKE FILE BACKUP" no generation stays behind.
  ASSERT_TRUE(native::ReplaceWithBackup(target, false, [&](const auto& f) { return WriteText(f, "four"); }).ok());
  EXPECT_EQ(Content(target), "four");
  EXPECT_FALSE(std::filesystem::exists(names.first));
  EXPECT_FALSE(std::filesystem::exists(names.second));

  // A real write fault: the folder of the target is gone.
  auto s = MakeSpectrum2D(128, 128);
  const auto outcome = native::WriteDataR4(folder / "missing" / "x.vlk2", *s, nullptr, nullptr, {0x210C, 0, 0},
                                           SaveMode::AllPlanes, {true, nullptr});
  EXPECT_EQ(outcome.code, -1);
  EXPECT_EQ(outcome.message.title, "WDR V4");
}

// The file system refuses the write half way (a file size limit below the new file's size):
// the previous file and its generation come back unchanged.
TEST(Ver4Save, AFailedSaveRestoresThePreviousFile) {
  TempFolder folder;
  const auto target = folder / "set.vlk2";
  const auto names = native::BackupNamesOf(target);
  auto s = MakeSpectrum2D(128, 128);
  const native::WriteOptions keep{true, nullptr};
  for (int i = 0; i < 2; ++i)  // one plane: about 80 kB
    ASSERT_TRUE(native::WriteDataR4(target, *s, nullptr, nullptr, {0x210C, 1, 0}, SaveMode::AllPlanes, keep).ok());
  const auto previous = Slurp(target), generation = Slurp(names.first);

  rlimit saved{};
  getrlimit(RLIMIT_FSIZE, &saved);
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit = saved;
  limit.rlim_cur = 150000;
  setrlimit(RLIMIT_FSIZE, &limit);
  const auto outcome = native::WriteDataR4(target, *s, nullptr, nullptr, {0x210C, 0, 0}, SaveMode::AllPlanes, keep);
  setrlimit(RLIMIT_FSIZE, &saved);
  std::signal(SIGXFSZ, oldHandler);

  EXPECT_EQ(outcome.code, -1);
  EXPECT_EQ(outcome.message.title, "WDR V4");
  EXPECT_TRUE(Slurp(target) == previous);
  EXPECT_TRUE(Slurp(names.first) == generation);
  EXPECT_FALSE(std::filesystem::exists(names.second));
}

}  // namespace
}  // namespace velk::test
