#include <gtest/gtest.h>

#include <fstream>

#include "model/data_type.h"
#include "model/frequency_table.h"
#include "model/mode_string.h"
#include "model/nucleus.h"
#include "model/pulse_mode.h"
#include "support/temp_folder.h"

namespace velk::model {

TEST(Nucleus, VendorSpellingsBecomeCanonical) {
  EXPECT_EQ(NormalizeNucleus("C"), "13C");
  EXPECT_EQ(NormalizeNucleus("c13"), "13C");
  EXPECT_EQ(NormalizeNucleus(" h "), "1H");
  EXPECT_EQ(NormalizeNucleus("proton"), "1H");
  EXPECT_EQ(NormalizeNucleus("TRITIIUM"), "3H");
  EXPECT_EQ(NormalizeNucleus("2D"), "2H");
  EXPECT_EQ(NormalizeNucleus("off"), "OFF");
  // Unknown names: digits first, letters after.
  EXPECT_EQ(NormalizeNucleus("Si29"), "29SI");
  EXPECT_EQ(NormalizeNucleus("195Pt"), "195PT");
  EXPECT_EQ(NormalizeNucleus("<>"), "??");
}

TEST(PulseMode, PrefixWinsOverNameAndShortensTheName) {
  const auto c = ClassifyPulseMode("VPH_HOMO_anything");
  EXPECT_EQ(c.pulseModeClass, VPH_HOMO);
  EXPECT_EQ(c.name, "VPH_HOMO");
  EXPECT_EQ(ClassifyPulseMode("V_HETERO").pulseModeClass, V_HETERO);
  EXPECT_EQ(ClassifyPulseMode("VPH_HETEROX").pulseModeClass, VPH_HETERO);
  // "V_HOMO" is both a prefix of six characters and a name of the list.
  EXPECT_EQ(ClassifyPulseMode("V_HOMO").pulseModeClass, V_HOMO);
}

TEST(PulseMode, NamesAndWindowPresets) {
  struct Case { const char* name; int cls; int w1; int w2; };
  for (const Case& c : {Case{"VHMBC", 4, 1, 1}, Case{"vcosyn", 1, 1, 1}, Case{"VPHHMBC", 2, 0, 1},
                        Case{"VPHHSQC", 3, 0, 0}, Case{"VPHNOEH", 0, 0, 0}}) {
    const auto r = ClassifyPulseMode(c.name);
    EXPECT_EQ(r.pulseModeClass, c.cls) << c.name;
    EXPECT_EQ(r.windowF1, c.w1) << c.name;
    EXPECT_EQ(r.windowF2, c.w2) << c.name;
  }
  EXPECT_EQ(ClassifyPulseMode("cosygpqf").pulseModeClass, kUnknownClass);
  EXPECT_EQ(ClassifyPulseMode("VPH").pulseModeClass, kUnknownClass);
  EXPECT_EQ(MakeClassName(VPH_HETERO, "VPHHSQC"), "VPH_HETERO(VPHHSQC)");
}

TEST(PulseMode, TableFileOverridesDefaultsAndKeepsUserRows) {
  test::TempFolder folder;
  PulseModeTable table = DefaultPulseModeTable();
  const std::size_t known = table.size();
  const auto file = folder.Write("PulseModeSet.csv",
                                 "PulseMode,FID Edit,F1 Exchange,F1 Inverse,Phase Mode,Bruker Mode(F1),"
                                 "Bruker Mode(F2),InAdequateMode\r\nVHMBC,0,1,0,0,0,0,0\r\nMYSEQ,2,0,0,1,0,0,0\r\n");
  ReadPulseModeTable(file, table);
  ASSERT_EQ(table.size(), known + 1);
  EXPECT_EQ(FindPulseMode(table, "vhmbc")->f1Exchange, "1");
  EXPECT_EQ(FindPulseMode(table, "MYSEQ")->phaseMode, "1");

  std::ofstream csv(folder / "out.csv", std::ios::binary);
  ASSERT_TRUE(WritePulseModeTable(csv, table));
  csv.close();
  PulseModeTable again = DefaultPulseModeTable();
  ReadPulseModeTable(folder / "out.csv", again);
  ASSERT_EQ(again.size(), table.size());
  EXPECT_EQ(FindPulseMode(again, "MYSEQ")->fidEdit, "2");

  PulseModeTable untouched = DefaultPulseModeTable();
  ReadPulseModeTable(folder / "missing.csv", untouched);
  EXPECT_EQ(untouched.size(), known);
}

TEST(ModeString, EveryWrittenStringReadsBackItsClass) {
  for (int cls : {VPH_HOMO, VPH_HETERO}) {
    for (bool realOnly : {false, true}) {
      const auto m = ReadModeString(MakeModeString2D(cls, realOnly));
      EXPECT_EQ(m.pulseModeClass, cls);
      EXPECT_EQ(m.realOnly, realOnly);
    }
  }
  EXPECT_EQ(ReadModeString(MakeModeString2D(VPH_HOMO, false, true)).pulseModeClass, V_HOMO);
  EXPECT_EQ(ReadModeString(MakeModeString2D(VPH_HETERO, false, true)).pulseModeClass, V_HETERO);
  EXPECT_EQ(ReadModeString("2D HETE AB RR").pulseModeClass, VPH_HMBC);
  // "AB RR" under "HOMO" is no class, deliberately; neither HOMO nor HETE leaves the class alone.
  EXPECT_EQ(ReadModeString("2D HOMO AB RR").pulseModeClass, kUnknownClass);
  EXPECT_FALSE(ReadModeString("1D NORM NORM").classKnown);
}

TEST(DataType, CodesAndTags) {
  EXPECT_EQ(TagOf(0x2004), "BRU2F");
  EXPECT_EQ(TagOf(0x2104), "BRU2D");
  EXPECT_EQ(TagOf(0x1104), "BRU1");
  EXPECT_EQ(TagOf(0x210C), "VELK2D_V4");
  EXPECT_EQ(TagOf(0x1108), "BRUX1D");
  EXPECT_EQ(TagOf(-1), "ERR");
  EXPECT_TRUE(IsOneDimensional(0x1104));
  EXPECT_FALSE(IsOneDimensional(0x2104));
}

}  // namespace velk::model

namespace velk::model {

TEST(InstrumentFrequencies, ShortLinesAreEmptyAndTheTableRoundTrips) {
  test::TempFolder folder;
  const std::string padding(45, ' ');
  const auto file = folder.Write("OB_0ppm.frq", "JNM-ECZ400;399.7821;1H;0.00;" + padding + "\r\n" +
                                                    "short;1.0\r\n" + "AV500\t;500.13;13C;;" + padding + "\r\n");
  InstrumentFrequencyTable table;
  ReadInstrumentFrequencies(file, table);
  ASSERT_EQ(table.size(), 2u);
  EXPECT_EQ(table[1].fields[0], "AV500");  // the tab became a blank, and blanks are trimmed
  EXPECT_DOUBLE_EQ(*ZeroPpmFrequency(table, "JNM-ECZ400"), 399.7821);
  EXPECT_FALSE(ZeroPpmFrequency(table, "none"));
  std::ofstream frq(folder / "out.frq", std::ios::binary);
  ASSERT_TRUE(WriteInstrumentFrequencies(frq, table));
  frq.close();
  InstrumentFrequencyTable again;
  ReadInstrumentFrequencies(folder / "out.frq", again);
  ASSERT_EQ(again.size(), 2u);
  EXPECT_EQ(again[0].fields, table[0].fields);
  EXPECT_EQ(FormatFrequency(500.13), "500.13");
}

}  // namespace velk::model
