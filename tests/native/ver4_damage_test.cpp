// Damaged and odd files: every one gives the reader's own message and never a crash or a read
// outside the buffer (the sanitizer build runs these too).
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "native/file_layout.h"
#include "native/fixture.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

using native::SaveMode;

std::vector<std::uint8_t> ValidFile(int pulseModeClass = 0, SaveMode mode = SaveMode::AllPlanes) {
  TempFolder folder;
  auto s = MakeSpectrum2D(130, 140);
  model::Spectrum1D f2 = MakeSpectrum1D(130, 1), f1 = MakeSpectrum1D(140, 2);
  AddEveryCarriedSection(*s, f2, f1);
  const auto file = folder / "valid.vlk2";
  EXPECT_TRUE(native::WriteDataR4(file, *s, &f2, &f1, {0x210C, pulseModeClass, 0}, mode, {false, nullptr}).ok());
  return Slurp(file);
}

std::int32_t LongAt(const std::vector<std::uint8_t>& file, std::size_t at) {
  std::int32_t value;
  std::memcpy(&value, file.data() + at, 4);
  return value;
}
void PutLong(std::vector<std::uint8_t>& file, std::size_t at, std::int32_t value) { std::memcpy(file.data() + at, &value, 4); }
std::size_t EndOf(const std::vector<std::uint8_t>& file, std::size_t entryAt) {
  return static_cast<std::size_t>(LongAt(file, entryAt)) + static_cast<std::size_t>(LongAt(file, entryAt + 4));
}

// Offsets in the 2D block of the files written here: the block starts at 1280, its base 16 later.
constexpr std::size_t kBase = 1296, kParameters = kBase + 768;

TEST(Ver4Damage, TruncatedFilesGiveTheReadersMessages) {
  const auto file = ValidFile();
  const std::size_t end2D = EndOf(file, 512), endF2 = EndOf(file, 520), endF1 = EndOf(file, 528);
  std::set<std::size_t> lengths{end2D - 1, end2D, endF2 - 1, endF2, endF1 - 1, endF1, file.size() - 1};
  for (std::size_t n = 0; n < 1400; ++n) lengths.insert(n);
  for (std::size_t n = 1400; n < file.size(); n += 997) lengths.insert(n);
  for (const std::size_t n : lengths) {
    SCOPED_TRACE(n);
    const std::vector<std::uint8_t> cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(n));
    const auto back = Read2D(cut);
    if (n < 15) {
      EXPECT_EQ(back->outcome.code, -1);
      EXPECT_EQ(back->outcome.message.title, "Data Error");
      EXPECT_EQ(back->outcome.message.text, "Invalid Data");
    } else if (n < end2D) {
      EXPECT_EQ(back->outcome.code, 1);
      EXPECT_EQ(back->outcome.message.title, "Data Error(RDR V4 in DRW 2D)");
      EXPECT_EQ(back->outcome.message.text, "Invalid 2D Data");
      EXPECT_EQ(back->s->axis[model::F2].Point, 0);
    } else {
      ASSERT_TRUE(back->outcome.ok());
      EXPECT_EQ(back->s->RR.at(129, 139), MakeSpectrum2D(130, 140)->RR.at(129, 139));
      EXPECT_EQ(back->f2.params.POINT, n >= endF2 ? 130 : 0);
      EXPECT_EQ(back->f1.params.POINT, n >= endF1 ? 140 : 0);
      EXPECT_TRUE(back->prompt.shown.empty());
    }
  }
}

TEST(Ver4Damage, RandomFlipsInTheTablesNeverCrash) {
  const auto file = ValidFile();
  const std::size_t set00 = static_cast<std::size_t>(LongAt(file, 520)) + 16;
  // The header's table, the 2D block's table and the first companion set's table.
  const std::vector<std::pair<std::size_t, std::size_t>> tables{{512, 1096}, {kBase, kBase + 240}, {set00, set00 + 240}};
  const std::set<std::string> outcomes{"", "Invalid Data", "Invalid 2D Data", "Too Large Data", "Data Size is too large!"};
  std::mt19937 random(20261123);
  std::map<std::string, int> seen;
  for (int trial = 0; trial < 3000; ++trial) {
    std::vector<std::uint8_t> damaged = file;
    const auto& [from, to] = tables[trial % tables.size()];
    for (int flips = 1 + trial % 4; flips > 0; --flips)
      damaged[from + random() % (to - from)] ^= static_cast<std::uint8_t>(1u << (random() % 8));
    const auto back = Read2D(damaged);
    ASSERT_TRUE(outcomes.count(back->outcome.message.text)) << back->outcome.message.text;
    ++seen[back->outcome.message.text];
    for (const platform::Message& shown : back->prompt.shown) {
      EXPECT_EQ(shown.title, "Data Error(RDR V4 in DRW 2D)");
      EXPECT_TRUE(shown.text == "Invalid F1 Data" || shown.text == "Invalid F2 Data") << shown.text;
      ++seen[shown.text];
    }
  }
  EXPECT_GT(seen[""], 0);
  EXPECT_GT(seen["Invalid 2D Data"], 0);
  EXPECT_GT(seen["Invalid F2 Data"], 0);
}

TEST(Ver4Damage, BadValuesInsideTheBlocks) {
  const auto file = ValidFile();
  auto tooLarge = file;
  PutLong(tooLarge, kParameters + 1280, 1048577);  // Point F2
  EXPECT_EQ(Read2D(tooLarge)->outcome.message.text, "Too Large Data");
  auto noWidth = file;
  PutLong(noWidth, kParameters + 1396, 0);  // Frequency F1
  EXPECT_EQ(Read2D(noWidth)->outcome.message.text, "Invalid 2D Data");

  // A companion set that is not a 1D set: reported, and the 2D data stay usable.
  auto badF1 = file;
  badF1[static_cast<std::size_t>(LongAt(file, 528)) + 16] = 'X';
  const auto back = Read2D(badF1);
  EXPECT_TRUE(back->outcome.ok());
  ASSERT_EQ(back->prompt.shown.size(), 1u);
  EXPECT_EQ(back->prompt.shown[0].text, "Invalid F1 Data");
  EXPECT_EQ(back->f1.params.POINT, 0);
  EXPECT_EQ(back->f2.params.POINT, 130);

  // A wrong length of set 00 is repaired from the address of set 01.
  auto shortLength = file;
  PutLong(shortLength, 524, 5);
  EXPECT_EQ(Read2D(shortLength)->f2.params.POINT, 130);

  // An unknown magic changes nothing.
  auto wrongMagic = file;
  wrongMagic[14] = '9';
  model::Spectrum2D untouched;
  untouched.axis[model::F2].Point = 77;
  ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words;
  model::ReadContext context{prompt, progress, words, nullptr};
  EXPECT_EQ(native::Read2DBytes(wrongMagic, "x", untouched, context).message.text, "Invalid Data");
  EXPECT_EQ(untouched.axis[model::F2].Point, 77);
}

TEST(Ver4Damage, PlaneCountGoesByTheLengthAlone) {
  // One plane under a mode string that promises four: real only.
  auto oneUnderRI = ValidFile(0, SaveMode::RealOnly);
  std::memcpy(oneUnderRI.data() + kBase, "2D HOMO PH RI", 13);
  const auto back = Read2D(oneUnderRI);
  ASSERT_TRUE(back->outcome.ok());
  EXPECT_EQ(back->words.pulseModeClass, 0);
  EXPECT_EQ(back->words.realOnly, 1);
  // A length that fits neither: parameters are read, the planes stay as they were.
  auto odd = ValidFile();
  PutLong(odd, kBase + 48 + 4, 130 * 140 * 8);
  const auto oddBack = Read2D(odd);
  ASSERT_TRUE(oddBack->outcome.ok());
  EXPECT_EQ(oddBack->s->axis[model::F1].Point, 140);
  EXPECT_TRUE(oddBack->s->RR.data.empty());
}

TEST(Ver4Damage, Version400TableIsReadWithItsOwnOffsets) {
  auto file = ValidFile();
  const std::map<std::string, std::size_t> moved{{"## SIM PRINTSET", 712}, {"## T1Cal SET", 720}, {"## LINE DATA 2D", 768}};
  std::map<std::size_t, std::pair<std::int32_t, std::int32_t>> entries;
  for (const auto& section : native::kFileSections)
    if (moved.count(std::string(section.tag)))
      entries[moved.at(std::string(section.tag))] = {LongAt(file, section.entryAt), LongAt(file, section.entryAt + 4)};
  const std::int32_t textAddress = LongAt(file, 728), textLength = LongAt(file, 732);
  std::fill(file.begin() + 704, file.begin() + 792, 0);
  for (const auto& [at, entry] : entries) {
    PutLong(file, at, entry.first);
    PutLong(file, at + 4, entry.second);
  }
  PutLong(file, 776, textAddress);
  PutLong(file, 781, textLength);  // one byte out of step; the picture entry behind it stays absent
  std::memcpy(file.data(), "VK NMR Ver.4.00", 15);
  const auto back = Read2D(file);
  ASSERT_TRUE(back->outcome.ok());
  std::set<std::string> tags;
  for (const auto& section : back->s->carried.fileSections) tags.insert(section.tag);
  for (const char* tag : {"## SIM PRINTSET", "## T1Cal SET", "## LINE DATA 2D", "## TEXT DATA 2D", "##DRAW ORDER 2D"})
    EXPECT_TRUE(tags.count(tag)) << tag;
  for (const char* tag : {"## PICTURE 2D", "## LINE DATA-0", "## TEXT DATA-SIM", "## PICTURE-SIM"}) EXPECT_FALSE(tags.count(tag)) << tag;
  const auto original = Read2D(ValidFile());
  for (const auto& section : back->s->carried.fileSections)
    for (const auto& expected : original->s->carried.fileSections)
      if (expected.tag == section.tag) {
        EXPECT_TRUE(section.bytes == expected.bytes) << section.tag;
      }
}

}  // namespace
}  // namespace velk::test
