// The peak list saved with the data set and on its own: Ver.4 and the text file write, read back
// and write again to the same bytes; CSV, JSON and the printed rows carry the known values.
#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "native/ver4_file.h"
#include "operations/peak_list_file.h"
#include "operations/peak_pick.h"
#include "operations/peak_print_list.h"
#include "operations/peak_synthetic.h"
#include "platform/progress.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

using namespace operations;

model::Spectrum2D PickedSpectrum() {
  model::Spectrum2D s = PeakSpectrum(
      128, 128, {{20.3, 17.8, 1.0, 3.0}, {45.45, 20.2, -0.8, 3.0}, {90.9, 100.62, 0.6, 4.0, true}, {64, 64, 0.3, 6}});
  s.peaks.thresholds[1] = 0.25f;
  PickArea(s, AllArea(s), 0.1f, kVirtualPeakTop);
  return s;
}

std::string Slurp(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

TEST(PeakList, Ver4PeakSectionRoundTrip) {
  const model::Spectrum2D s = PickedSpectrum();
  ASSERT_EQ(s.peaks.peaks.size(), 4u);
  TempFolder folder;
  const auto file = folder / "set.vlk2";
  const model::DataWords words{0x210C, 1, 1};
  ASSERT_TRUE(
      native::WriteDataR4(file, s, nullptr, nullptr, words, native::SaveMode::AllPlanes, {false, nullptr}).ok());
  model::Spectrum2D back;
  ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords readWords;
  model::ReadContext context{prompt, progress, readWords, nullptr};
  const std::string first = Slurp(file);
  const platform::Outcome read = native::ReadDataR4(file, back, context);
  ASSERT_TRUE(read.ok()) << read.message.title << ": " << read.message.text;
  ASSERT_EQ(back.peaks.peaks.size(), s.peaks.peaks.size());
  EXPECT_EQ(back.peaks.thresholds[1], 0.25f);
  ASSERT_TRUE(
      native::WriteDataR4(file, back, nullptr, nullptr, readWords, native::SaveMode::AllPlanes, {false, nullptr}).ok());
  // Every field of every peak comes back, or the second file would differ.
  const std::string second = Slurp(file);
  EXPECT_TRUE(first == second);
  EXPECT_NE(first.find("%% PEAK PICK"), std::string::npos);
}

TEST(PeakList, TextFileReadsBackToTheSameBytes) {
  model::Spectrum2D s = PickedSpectrum();
  TempFolder folder;
  const auto file = folder / "peaks.txt";
  ASSERT_TRUE(Save_Peak_List(file, s, "hsqc.vlk2").ok());
  const std::string first = Slurp(file);
  model::PeakTable2D read;
  ASSERT_TRUE(ReadPeakList(file, read).ok());
  model::Spectrum2D again = s;
  again.peaks = read;
  EXPECT_EQ(FormatPeakList(again, "hsqc.vlk2", PeakListFormat::Text), first);
  EXPECT_EQ(read.thresholds[1], 0.25f);

  // Damaged lists are refused and leave the table alone.
  for (const std::string& damaged : {std::string("no list\n"), first.substr(0, first.size() / 2) + "x\n",
                                     first.substr(0, first.find("No.")) /* no rows heading */}) {
    model::PeakTable2D kept = read;
    EXPECT_EQ(ParsePeakList(damaged, kept).code, 1);
    EXPECT_EQ(kept.peaks.size(), read.peaks.size());
  }
}

TEST(PeakList, CsvJsonAndPrintRowsCarryTheValues) {
  model::Spectrum2D s = PeakSpectrum(64, 64, {});
  s.peaks.peaks.push_back({20, 30, 203.0f, 150.0f, 0, 0, -0.5f});  // 2.03 ppm, 1.5 ppm at 100 MHz
  const std::string csv = FormatPeakList(s, "x", PeakListFormat::Csv);
  EXPECT_NE(csv.find("\n1,2.030000,1.500000,203.000,150.000,-0.5,20,30\n"), std::string::npos) << csv;
  const auto json = nlohmann::json::parse(FormatPeakList(s, "x", PeakListFormat::Json));
  EXPECT_EQ(json["count"], 1);
  EXPECT_NEAR(json["peaks"][0]["f2_ppm"].get<double>(), 2.03, 1e-6);
  EXPECT_EQ(json["peaks"][0]["f1_point"], 30);

  s.comment = "cyclosporin";
  PrintList list = PrintListRows(s, "a.vlk2", {PrintListUnit::PpmHz, 3});
  EXPECT_EQ(list.heading[1], "File:  a.vlk2");
  EXPECT_EQ(list.captions[1], "\\<     F2/ppm(Hz)");
  EXPECT_EQ(list.rows[0][1], "2.03(203.00)");
  EXPECT_EQ(list.rows[0][2], "1.5(150.00)");
  list = PrintListRows(s, "a.vlk2", {PrintListUnit::KHzPpm, 7});
  EXPECT_EQ(list.captions[2], "\\<     F1/kHz(ppm)");
  EXPECT_EQ(list.rows[0][1], "0.203(2.0300)");
}

}  // namespace
}  // namespace velk::test
