#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <fstream>

#include "model/type_detector.h"
#include "support/temp_folder.h"

namespace velk::model {
namespace {

// Header probes of a made-up kind: the file's first line is the mode text, "P" after it marks a
// processed set.
ModeResult ProbeFirstLine(const DetectedFile& file) {
  std::ifstream in(file.path);
  ModeResult r;
  std::getline(in, r.modeText);
  if (r.modeText.ends_with(" P")) {
    r.processed = true;
    r.modeText.resize(r.modeText.size() - 2);
  }
  r.code = r.modeText.empty() ? -1 : 0;
  r.kind = "HETERO";
  return r;
}

const std::array<FormatEntry, 7> kTable{{
    {".BRUF", kBruker, ProbeFirstLine, nullptr, nullptr},
    {".BRUD", kBruker, ProbeFirstLine, nullptr, nullptr},
    {".VARF", kVarian, ProbeFirstLine, nullptr, nullptr},
    {".VARD", kVarian, ProbeFirstLine, nullptr, nullptr},
    {".VLK1", kVer4, ProbeFirstLine, nullptr, nullptr},
    {".VLK2", kVer4, ProbeFirstLine, nullptr, nullptr},
    {".GXD", kJeolGx, ProbeFirstLine, nullptr, nullptr},
}};

std::string Padded(std::string text, std::size_t size) {
  text.resize(size, ' ');
  return text;
}

}  // namespace

TEST(ReadDataMode, ShortFilesAreJudgedByTheirFirstSixCharacters) {
  test::TempFolder folder;
  std::string text;
  ReadDataMode(folder.Write("a", Padded("BRUKER", 300)), text);
  EXPECT_EQ(text, "BRUKER");
  ReadDataMode(folder.Write("b", Padded("BRUKER", 301)), text);
  EXPECT_EQ(text, "");
  ReadDataMode(folder.Write("c", "JEOL"), text);
  EXPECT_EQ(text, "UNKNOWN");
  ReadDataMode(folder.Write("d", Padded("JEOL.NMR", 400)), text);
  EXPECT_EQ(text, "ECP");
}

TEST(ReadDataMode, ContentMarks) {
  test::TempFolder folder;
  std::string text;
  std::string ver4 = Padded("VK NMR Ver.4.01", 1024);
  const auto withLong = [&](std::int32_t value) {
    std::memcpy(ver4.data() + 516, &value, 4);
    return folder.Write("v.vlk", ver4);
  };
  ReadDataMode(withLong(18), text);
  EXPECT_EQ(text, "VLMX_1");  // a 2D section of 18 bytes is no 2D data
  ReadDataMode(withLong(19), text);
  EXPECT_EQ(text, "VLMX_2");

  std::string alice(400, '\0');
  std::memcpy(alice.data() + 258, "WIN NMR VERSION 1.01", 20);
  ReadDataMode(folder.Write("x.als", alice), text);
  EXPECT_EQ(text, "ALICE");
  ReadDataMode(folder.Write("t.csv", Padded("1.25,3.5\n", 400)), text);
  EXPECT_EQ(text, "CSV TYPE 0");
  ReadDataMode(folder.Write("j.dx", Padded("##TITLE= x\n##JCAMP-DXB= 1\n", 400)), text);
  EXPECT_EQ(text, "NUTS Type3");
  ReadDataMode(folder.Write("k.dx", Padded("##TITLE= x\n##JCAMP-DX= 5.01\n\n", 400)), text);
  EXPECT_EQ(text, "");
}

TEST(TypeDetector, BrukerSetsHoweverTheUserNamesThem) {
  test::TempFolder folder;
  folder.Write("exp/1/acqus", "##TITLE= x\n");
  folder.Write("exp/1/ser", "VCOSY\n");
  folder.Write("exp/1/pdata/1/procs", "##TITLE= x\n");
  folder.Write("exp/1/pdata/1/2rr", "VCOSY P\n");
  for (const char* name : {"exp/1", "exp/1/ser", "exp/1/acqus"}) {
    const Detection d = TypeDetector(folder / name, kTable);
    EXPECT_EQ(d.code, 0x2004) << name;
    EXPECT_EQ(d.tag, "BRU2F") << name;
    EXPECT_EQ(d.file.path.filename(), "ser") << name;
  }
  for (const char* name : {"exp/1/pdata/1", "exp/1/pdata/1/2rr", "exp/1/pdata/1/2ii"}) {
    folder.Write("exp/1/pdata/1/2ii", "");
    const Detection d = TypeDetector(folder / name, kTable);
    EXPECT_EQ(d.code, 0x2104) << name;
    EXPECT_EQ(d.file.path.filename(), "2rr") << name;
  }
}

TEST(TypeDetector, VarianFoldersAndPartners) {
  test::TempFolder folder;
  folder.Write("s.var/procpar", "x");
  folder.Write("s.var/data", "V_HOMO P\n");
  const Detection d = TypeDetector(folder / "s.var", kTable);
  EXPECT_EQ(d.file.extensionWord, ".VARD");
  EXPECT_EQ(d.code, 0x2106);
  EXPECT_EQ(d.pulseModeClass, V_HOMO);

  folder.Write("g.gxd", Padded("VPHHSQC", 400));
  EXPECT_EQ(TypeDetector(folder / "g.gxd", kTable).tag, "ERR");
  folder.Write("g.gxp", "x");
  const Detection gx = TypeDetector(folder / "g.gxp", kTable);
  EXPECT_EQ(gx.tag, "GXD2FPH");
  EXPECT_EQ(gx.code, 0x2001);
}

TEST(TypeDetector, ClassPresetOfFidSets) {
  test::TempFolder folder;
  folder.Write("e/acqus", "x");
  folder.Write("e/fid", "VPH_HETERO_X\n");
  EXPECT_EQ(TypeDetector(folder / "e", kTable).pulseModeClass, VPH_HETERO);
  folder.Write("e/fid", "Vcosygpqf\n");
  EXPECT_EQ(TypeDetector(folder / "e", kTable).pulseModeClass, 21);  // the probe said "HETERO"
  folder.Write("e/fid", "1Dzg30\n");
  EXPECT_EQ(TypeDetector(folder / "e", kTable).code, 0x1004);
}

TEST(TypeDetector, UnknownAndMissingFilesAreErr) {
  test::TempFolder folder;
  EXPECT_EQ(TypeDetector(folder / "nothing.vlk", kTable).tag, "ERR");
  const Detection d = TypeDetector(folder.Write("a.jdf", Padded("JEOL.NMR", 500)), kTable);
  EXPECT_EQ(d.code, -1);
  EXPECT_EQ(d.file.extensionWord, ".ECP");
  EXPECT_NE(d.reason.find("no reader"), std::string::npos);
}

}  // namespace velk::model
