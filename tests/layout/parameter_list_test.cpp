// The parameter list: the reader's rules for macro, label and text, the ".prt" files, and every
// macro of the list of all parameters on a real COSY spectrum.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "formats/registry.h"
#include "layout/number_format.h"
#include "layout/parameter_macros.h"
#include "layout/render_parameter_list.h"
#include "model/type_detector.h"
#include "native/fixture.h"
#include "support/corpus.h"
#include "support/recording_surface.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::layout {

void PrintTo(const ParameterLine& l, std::ostream* os) { *os << "{" << l.Kind << "|" << l.Label << "|" << l.Text << "}"; }

namespace {

ParameterLine Parsed(std::string_view text) { return ParseParameterLine(text).value_or(ParameterLine{"(none)", {}, {}}); }

TEST(ParameterFile, MacroLabelAndTextRules) {
  EXPECT_FALSE(ParseParameterLine(" \t \r").has_value());
  EXPECT_EQ(Parsed("  PD  "), (ParameterLine{"PD", "", ""}));
  EXPECT_EQ(Parsed("{X} PD"), (ParameterLine{"{X}", "", "PD"})) << "a brace in the first column opens no label";
  EXPECT_EQ(Parsed("$"), (ParameterLine{"$", "", ""}));
  EXPECT_EQ(Parsed(";note {x}"), (ParameterLine{";", "", "note {x}"}));
  EXPECT_EQ(Parsed("SCANS{  My  Scans }rest"), (ParameterLine{"SCANS", "  My  Scans ", "rest"}));
  EXPECT_EQ(Parsed("SCANS     {Open label"), (ParameterLine{"SCANS", "Open", " label"}));
  EXPECT_EQ(Parsed("F2NUC\t{Nuc}"), (ParameterLine{"F2NUC", "Nuc", ""}));
  EXPECT_EQ(Parsed("PD        after"), (ParameterLine{"PD", "", "after"}));
  EXPECT_EQ(FormatParameterLine({"DFILE", "File Name", ""}), "DFILE     {File Name}");
  EXPECT_EQ(FormatParameterLine({"(2D)B_ACQ_MOD2", "x", ""}), "(2D)B_ACQ_MOD2 {x}");
  const ParameterList defaults = DefaultParameterList();
  ASSERT_EQ(defaults.size(), 32u);
  EXPECT_EQ(defaults[20], (ParameterLine{"$", "", "----Aquisition Parameter--------"}));
  EXPECT_EQ(FormatParameterLine(defaults[11]), "F21DSPC   {1D Spec.(F2)}");
}

TEST(ParameterFile, WriteReadWriteIsByteIdentical) {
  test::TempFolder folder;
  const ParameterList list{{"$", "", "---F2 Parameter----"}, {";", "", " a comment"}, {"DFILE", "Datei ", ""},
                           {"SCANS", "", "times"},           {"PD", "", ""},            {"SLVNT", "溶媒", "(d)"},
                           {"(2D)FFT_MOD1", "FFT", ""}};
  ASSERT_TRUE(WriteParaFile(folder / "mine.txt", {}, list).ok());
  EXPECT_TRUE(std::filesystem::exists(folder / "mine.prt")) << "the extension is forced";
  const std::vector<std::uint8_t> first = test::Slurp(folder / "mine.prt");
  ParameterList back;
  ASSERT_TRUE(ReadParaFile("mine", folder.path, back).ok()) << "a bare name lies in the parameter folder";
  EXPECT_EQ(back, list);
  ASSERT_TRUE(WriteParaFile(folder / "mine.prt", {}, back).ok());
  EXPECT_EQ(test::Slurp(folder / "mine.prt"), first);

  const platform::Outcome missing = ReadParaFile(folder / "none.prt", {}, back);
  EXPECT_EQ(missing.code, -1);
  EXPECT_EQ(missing.message.title, "ReadParaFile/Fm17");
  EXPECT_EQ(back, list) << "a failed read keeps the old list";
}

std::unique_ptr<model::Spectrum2D> ReadCosy() {
  const auto path = test::CorpusPath("bruker/cyclosporin_cosy/1/pdata/1/2rr");
  const model::FormatTable formats = formats::Formats();
  const model::Detection d = model::TypeDetector(path, formats);
  const auto entry = std::find_if(formats.begin(), formats.end(),
                                  [&](const model::FormatEntry& e) { return e.extensionWord == d.file.extensionWord; });
  auto s = std::make_unique<model::Spectrum2D>();
  if (entry == formats.end()) return s;
  test::ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words{d.code, d.pulseModeClass, 0};
  model::ReadContext context{prompt, progress, words, nullptr};
  entry->read2D(d.file, *s, context);
  return s;
}

TEST(ParameterMacros, EveryMacroOfTheFullListRendersOnARealCosy) {
  const auto s = ReadCosy();
  ASSERT_EQ(s->axis[model::F2].Point, 1024);
  ParameterList all;
  ASSERT_TRUE(ReadAllParameters(VELK_SOURCE_DATA, all).ok());
  ASSERT_GT(all.size(), 200u);

  ParameterSource source{.s = *s};
  source.f2TraceName = "f2.vlk1";
  std::tm t{};
  t.tm_year = 126, t.tm_mon = 10, t.tm_mday = 23;
  source.printTime = t;
  // Values no reader keeps, the F1 trace that is not shown, and texts this data set lacks: they
  // print their label alone.
  const std::set<std::string> noSource{"CHECK", "FLTMOD", "IRMOD", "F11DSPC", "OPERT", "SAMPLEID", "EXPCM", "TRNUC"};
  for (const ParameterLine& line : all) {
    if (line.Kind == "$" || line.Kind == ";") continue;
    EXPECT_TRUE(IsKnownMacro(line.Kind) || line.Kind.find('[') != std::string::npos) << line.Kind;
    const auto r = RenderParameter(line, source);
    ASSERT_TRUE(r.has_value()) << line.Kind;
    EXPECT_EQ(r->value.empty(), noSource.count(line.Kind) > 0) << line.Kind << " -> " << r->value;
  }
  // Known answers of this spectrum.
  auto value = [&](std::string_view macro) { return RenderParameter({std::string(macro), "", ""}, source)->value; };
  EXPECT_EQ(value("F2PNT"), "1024");
  EXPECT_EQ(value("F2NUC"), "1H");
  EXPECT_EQ(value("F1NUC"), "1H");
  EXPECT_EQ(value("SLVNT"), "C6D6");
  EXPECT_EQ(value("FRQ"), "500.13226 MHz") << "a single-precision value shows its own digits only";
  EXPECT_EQ(value("P[1]"), "11.3");
  EXPECT_EQ(value("DATIM_W3"), "2007/09/18(Tue) 09:22:15");
  EXPECT_EQ(value("PRNT_DATE"), "23/Nov/2026 00:00:00");
  EXPECT_EQ(value("CTEMP"), FormatNumber(s->params.CTEMP, "###0.0") + " \\g1 \\'b0:\\g0 C");
  EXPECT_EQ(RenderParameter({"F11DSPC", "", ""}, source)->label, "  1D Spec.(F1)  ");
  EXPECT_EQ(RenderParameter({"NOSUCH", "Own", " text"}, source)->value, " text");
  EXPECT_EQ(RenderParameter({"$", "", "Head"}, source)->heading, true);
  EXPECT_FALSE(RenderParameter({";", "", "x"}, source).has_value());
}

}  // namespace
}  // namespace velk::layout

namespace velk::layout {
namespace {

TEST(ParameterBlock, ValuesStandOnTheDecimalColumn) {
  model::Spectrum2D s;
  s.params.SCANS = 1024;
  s.axis[model::F2].Resolution = 5.3697;
  s.params.SLVNT = "CDCl3";
  const ParameterList list{{"SCANS", "", ""}, {"F2RES", "", ""}, {";", "", "hidden"}, {"$", "", "Head"},
                           {"SLVNT", "A label much longer than the column", ""}};
  test::RecordingSurface surface;
  const platform::Extent block =
      RenderParameterList(surface, list, TextFont{}, 0, {100, 50, 1}, ParameterSource{.s = s});
  // Every byte is 5 units wide at 10 points: the decimal column 25 lies at 125.
  std::vector<std::pair<std::string, platform::Point>> texts;
  for (const auto* call : surface.Of(test::Recorded::Text)) texts.emplace_back(call->text, call->points[0]);
  ASSERT_EQ(texts.size(), 7u);
  EXPECT_EQ(texts[1], (std::pair<std::string, platform::Point>{"1024", {100 + 125 - 20, 50}}));
  EXPECT_EQ(texts[3], (std::pair<std::string, platform::Point>{"5.3697 Hz", {100 + 125 - 5, 61}}));
  EXPECT_EQ(texts[4].first, "Head");
  EXPECT_EQ(texts[4].second, (platform::Point{100, 72}));
  EXPECT_EQ(texts[6], (std::pair<std::string, platform::Point>{"CDCl3", {100 + 35 * 5 + 5, 83}}))
      << "a long label pushes its value right";
  EXPECT_EQ(block.height, 44);
  EXPECT_EQ(block.width, 35 * 5 + 5 + 25);
}

}  // namespace
}  // namespace velk::layout
