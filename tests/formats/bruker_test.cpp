#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

#include "formats/bruker/routines.h"
#include "formats/bruker_sets.h"

namespace velk::test {
namespace {

using formats::bruker::LoadState;

// acqus of a raw set: F2 of td values at 5000 Hz on 1H, 100 MHz.
std::string F2Acqus(int td, const std::string& extra = "") {
  return ParameterFile("##$BF1= 100\n##$SFO1= 100.001\n##$SW_h= 5000\n##$TD= " + std::to_string(td) +
                       "\n##$AQ_mod= 3\n##$BYTORDA= 0\n##$DTYPA= 0\n##$NUCLEUS= <off>\n##$NUC1= <1H>\n"
                       "##$PULPROG= <hsqcetgp>\n##$GRPDLY= 67.75\n" + extra);
}

// acqu2s of a 13C F1 whose SW_h is stale: the true width is SW (ppm) times SFO1.
std::string F1Acqus(int td, int fnMode, const std::string& extra = "") {
  return ParameterFile("##$BF1= 25\n##$SFO1= 25.0025\n##$SW= 200\n##$SW_h= 2000\n##$TD= " + std::to_string(td) +
                       "\n##$FnMODE= " + std::to_string(fnMode) + "\n##$NUCLEUS= <>\n##$NUC1= <13C>\n" + extra);
}

// One ser row: value = row * 100000 + index, then padding to the next 1024-byte boundary.
std::vector<std::int32_t> SerRows(int rows, int values, int stride) {
  std::vector<std::int32_t> ser(static_cast<std::size_t>(rows) * stride, 0);
  for (int r = 0; r < rows; ++r)
    for (int j = 0; j < values; ++j) ser[static_cast<std::size_t>(r) * stride + j] = r * 100000 + j;
  return ser;
}

float Value(int row, int index) { return static_cast<float>(row * 100000 + index); }

}  // namespace

TEST(BrukerParameters, AcqusKeysIgnoreCaseAndArraysContinueOverLines) {
  setenv("TZ", "UTC", 1);
  tzset();
  TempFolder folder;
  // Arrays of 64 values over several lines, as the files write them; elements 1..31 are kept.
  const std::string zeros = [] { std::string z; for (int i = 0; i < 12; ++i) z += " 0 0 0 0 0\n"; return z; }();
  const auto acqus = folder.Write("acqus", F2Acqus(1000,
      "##$P= (0..63)\n0 2.5 3\n4 5" + zeros + "##$D= (0..63)\n0 1.5 0.25 0" + zeros +
      "##$TE= 300\n##$DATE= 90061\n##$PULPROGRAM= <not the pulse program>\n"));
  model::Spectrum1D s;
  LoadState state;
  ASSERT_EQ(formats::bruker::ReadParaBru(acqus, s, state), 0);
  EXPECT_EQ(s.params.OBNUC, "1H");  // NUCLEUS "off": NUC1 wins
  EXPECT_FLOAT_EQ(s.params.FREQU, 5000.0f);
  EXPECT_EQ(s.params.POINT, 512);  // 500 complex points padded
  EXPECT_FLOAT_EQ(s.params.ACQTM, 0.1f);
  EXPECT_NEAR(s.params.OBFIN, 1000.0f, 0.01f);
  EXPECT_FLOAT_EQ(s.params.PW[0], 2.5f);  // P1
  EXPECT_FLOAT_EQ(s.params.PW[3], 5.0f);  // P4
  EXPECT_FLOAT_EQ(s.params.PD, 1.5f);     // relaxation delay from D1
  EXPECT_NEAR(s.params.CTEMP, 26.85f, 1e-4f);
  EXPECT_EQ(s.params.DATIM, "02/Jan/1970  01:01:01");
  EXPECT_EQ(s.params.EXMOD, "hsqcetgp");
  EXPECT_DOUBLE_EQ(s.vendor.groupDelay, 67.75);
  // The largest 64-bit integer rounds up to 2^63 as a double, which no 64-bit integer holds.
  for (const char* date : {"9223372036854775807", "-9223372036854775809", "1e300"}) {
    model::Spectrum1D d;
    ASSERT_EQ(formats::bruker::ReadParaBru(folder.Write("acqus", F2Acqus(1000, std::string("##$DATE= ") + date + "\n")), d,
                                           state), 0) << date;
    EXPECT_EQ(d.params.DATIM, "") << date;
  }
}

TEST(BrukerParameters, OneDimensionalRefusals) {
  TempFolder folder;
  model::Spectrum1D s;
  LoadState state;
  const auto noOrigin = folder.Write("a1", ParameterFile("##$SFO1= 100\n##$SW_h= 5000\n##$TD= 1000\n", ""));
  EXPECT_EQ(formats::bruker::ReadParaBru(noOrigin, s, state), 1);
  EXPECT_EQ(formats::bruker::ReadParaBru(folder.Write("a2", F2Acqus(8)), s, state), 1);  // TD below 10
  EXPECT_EQ(formats::bruker::ReadParaBru(folder.Write("a3", F2Acqus(4000000)), s, state), 1);
  EXPECT_EQ(formats::bruker::ReadParaBru(folder.Write("a4", ParameterFile("##$TD= many\n")), s, state), -1);
  EXPECT_EQ(formats::bruker::ReadParaBru(folder.Write("a5", ParameterFile("##$TD= 1e30\n")), s, state), -1);
  EXPECT_EQ(formats::bruker::ReadParaBru(folder / "missing", s, state), -1);
  EXPECT_EQ(state.logTag, "ReadParaBru/RW1D (-1)");
}

// Rows of 1100 values of 32 bits start every 1280 values (5120 bytes). Each increment is a pair of
// rows: the first row's real and imaginary F2 parts go to RR and IR, the second row's to RI and II.
TEST(BrukerRawData, RowPairsFollowTheF1QuadratureScheme) {
  const int rows = 4, values = 1100, stride = 1280;
  const auto ser = SerRows(rows, values, stride);
  struct Case { int fnMode; bool negateOdd; };
  for (const Case c : {Case{5, true}, Case{4, false}, Case{0, true}}) {
    TempFolder folder;
    folder.Write("acqus", F2Acqus(values));
    folder.Write("acqu2s", F1Acqus(rows, c.fnMode));
    model::Spectrum2D s;
    ScriptedPrompt prompt;
    const auto r = Read(folder.Write("ser", Binary(ser)), s, prompt);
    ASSERT_TRUE(r.outcome.ok()) << r.outcome.message.text;
    EXPECT_EQ(r.words.pulseModeClass, model::VPH_HETERO);
    EXPECT_EQ(s.axis[model::F2].Point, 1024);
    EXPECT_EQ(s.extras[model::F2].fidPoints, 550);
    EXPECT_EQ(s.extras[model::F1].fidPoints, 2);
    EXPECT_FLOAT_EQ(s.axis[model::F1].Frequency, 200 * 25.0025f);
    EXPECT_EQ(s.extras[model::F1].nucleus, "13C");
    EXPECT_EQ(s.fidShift, 68);  // GRPDLY 67.75 to the nearest point
    const float odd = c.negateOdd ? -1.0f : 1.0f;
    for (int j : {0, 1, 549}) {
      EXPECT_EQ(s.RR.at(j, 0), Value(0, 2 * j));
      EXPECT_EQ(s.IR.at(j, 0), Value(0, 2 * j + 1));
      EXPECT_EQ(s.RI.at(j, 0), Value(1, 2 * j));
      EXPECT_EQ(s.II.at(j, 0), Value(1, 2 * j + 1));
      EXPECT_EQ(s.RR.at(j, 1), odd * Value(2, 2 * j)) << "FnMODE " << c.fnMode;
      EXPECT_EQ(s.II.at(j, 1), odd * Value(3, 2 * j + 1)) << "FnMODE " << c.fnMode;
    }
  }
}

// Echo E and anti-echo A of one increment become cos = E + A and sin = i (E - A).
TEST(BrukerRawData, EchoAntiechoPairsAreRecombined) {
  TempFolder folder;
  folder.Write("acqus", F2Acqus(256));
  folder.Write("acqu2s", F1Acqus(2, 6));
  std::vector<std::int32_t> ser(512, 0);
  ser[0] = 3, ser[1] = 5;      // echo (3 + 5i)
  ser[256] = 7, ser[257] = 2;  // anti-echo (7 + 2i)
  for (int j = 102; j < 128; ++j) ser[2 * j] = 2;  // an offset of 2 in the echo's real tail
  model::Spectrum2D s;
  ScriptedPrompt prompt;
  ASSERT_TRUE(Read(folder.Write("ser", Binary(ser)), s, prompt).outcome.ok());
  EXPECT_EQ(s.RR.at(0, 0), 10.0f);
  EXPECT_EQ(s.IR.at(0, 0), 7.0f);
  EXPECT_EQ(s.RI.at(0, 0), -3.0f);  // i * (-4 + 3i) = -3 - 4i
  EXPECT_EQ(s.II.at(0, 0), -4.0f);
  EXPECT_TRUE(s.vendor.echoAntiechoCombined);
  // With the FID baseline option the tail mean of each row (points 102..127) is subtracted.
  model::Spectrum2D corrected;
  ASSERT_TRUE(Read(folder / "ser", corrected, prompt, true).outcome.ok());
  EXPECT_EQ(corrected.RR.at(0, 0), 8.0f);
  EXPECT_EQ(corrected.RR.at(127, 0), 0.0f);
  EXPECT_EQ(corrected.II.at(0, 0), -4.0f - 2.0f);  // the sine row's tail holds 2
  EXPECT_NE(s.processing[0].find("Echo-Antiecho"), std::string::npos);
  EXPECT_NE(s.processing[1].find("GRPDLY"), std::string::npos);
}

// The processing stored beside the raw data: the lowest numbered pdata folder that has both files,
// keys in the files' mixed case; folders that are not numbers or lack proc2s are passed over.
TEST(BrukerRawData, StoredProcessingBecomesTheRecipe) {
  TempFolder folder;
  folder.Write("acqus", F2Acqus(256));
  folder.Write("acqu2s", F1Acqus(4, 6));
  const std::string f2 = ParameterFile("##$SI= 512\n##$WDW= 4\n##$SSB= 2\n##$TDeff= 200\n##$PHC0= 240.5\n"
                                       "##$PHC1= -3.5\n##$FCOR= 1\n##$NC_proc= -4\n##$PH_mod= 1\n");
  const std::string f1 = ParameterFile("##$SI= 256\n##$WDW= 2\n##$LB= -1.5\n##$GB= 0.2\n##$ME_mod= 2\n"
                                       "##$NCOEF= 32\n##$LPBIN= 8\n##$MC2= 5\n##$FCOR= 0.5\n##$PHC0= -177\n");
  folder.Write("pdata/10/procs", ParameterFile("##$SI= 64\n"));
  folder.Write("pdata/10/proc2s", ParameterFile("##$SI= 64\n"));
  folder.Write("pdata/1/procs", f2);
  folder.Write("pdata/1/proc2s", f1);
  folder.Write("pdata/0/procs", f2);  // no proc2s
  folder.Write("pdata/old/procs", f2);
  folder.Write("pdata/old/proc2s", f1);
  model::Spectrum2D s;
  ScriptedPrompt prompt;
  ASSERT_TRUE(Read(folder.Write("ser", Binary(std::vector<std::int32_t>(1024, 0))), s, prompt).outcome.ok());
  ASSERT_TRUE(s.vendor.recipe.has_value());
  const model::VendorRecipe& r = *s.vendor.recipe;
  EXPECT_EQ(std::filesystem::path(r.source).filename(), "1");
  const auto& a2 = r.axis[model::F2];
  EXPECT_EQ(a2.si, 512);
  EXPECT_EQ(a2.window, model::kVendorSquaredSine);
  EXPECT_EQ(a2.ssb, 2);
  EXPECT_EQ(a2.tdEff, 200);
  EXPECT_EQ(a2.phc0, 240.5);
  EXPECT_EQ(a2.phc1, -3.5);
  EXPECT_EQ(a2.phaseMode, 1);
  EXPECT_EQ(r.scaleExponent, -4);
  const auto& a1 = r.axis[model::F1];
  EXPECT_EQ(a1.window, model::kVendorGaussian);
  EXPECT_EQ(a1.lb, -1.5);
  EXPECT_EQ(a1.gb, 0.2);
  EXPECT_EQ(a1.predictionMode, 2);
  EXPECT_EQ(a1.ncoef, 32);
  EXPECT_EQ(a1.lpbin, 8);
  EXPECT_EQ(a1.fcor, 0.5);
  EXPECT_EQ(r.f1Scheme, 5);
  // Without a processing folder there is no recipe.
  std::filesystem::remove_all(folder / "pdata");
  ASSERT_TRUE(Read(folder / "ser", s, prompt).outcome.ok());
  EXPECT_FALSE(s.vendor.recipe.has_value());
}

// Files older than GRPDLY name the filter by version and decimation: the delay comes from the table,
// and the FID shift with it. GRPDLY, where present, wins.
TEST(BrukerRawData, FilterDelayFromVersionAndDecimation) {
  TempFolder folder;
  folder.Write("acqu2s", F1Acqus(4, 4));
  folder.Write("ser", Binary(std::vector<std::int32_t>(1024, 0)));
  model::Spectrum2D s;
  ScriptedPrompt prompt;
  const auto delayOf = [&](const std::string& keys) {
    std::string acqus = F2Acqus(256, keys);
    acqus.replace(acqus.find("##$GRPDLY= 67.75\n"), 17, "");
    folder.Write("acqus", acqus);
    EXPECT_TRUE(Read(folder / "ser", s, prompt).outcome.ok());
    return s.vendor.groupDelay;
  };
  EXPECT_DOUBLE_EQ(delayOf("##$DSPFVS= 10\n##$DECIM= 32\n"), 70.015625);
  EXPECT_EQ(s.fidShift, 70);
  EXPECT_DOUBLE_EQ(delayOf("##$DSPFVS= 12\n##$DECIM= 32\n"), 72.125);
  EXPECT_DOUBLE_EQ(delayOf("##$DSPFVS= 11\n##$DECIM= 32\n"), 72.75);
  EXPECT_DOUBLE_EQ(delayOf("##$DSPFVS= 12\n##$DECIM= 24\n"), 70.166666666666667);
  EXPECT_DOUBLE_EQ(delayOf("##$DSPFVS= 20\n##$DECIM= 32\n##$GRPDLY= 76\n"), 76);
  EXPECT_DOUBLE_EQ(delayOf("##$DSPFVS= 10\n##$DECIM= 5\n"), 0);  // not in the table: no delay
}

// An acquisition stopped after 3 of 4 increments (the last row unpadded and a part row after it):
// the whole increments are read, the rest of F1 is zero, and the processing text says so.
TEST(BrukerRawData, EarlyStoppedAcquisitionReadsItsWholeIncrements) {
  const int rows = 8, values = 200, stride = 256;
  auto ser = SerRows(rows, values, stride);
  ser.resize(5 * stride + values + 17);  // rows 0..5 whole (row 5 without padding), a part of row 6
  TempFolder folder;
  folder.Write("acqus", F2Acqus(values));
  folder.Write("acqu2s", F1Acqus(rows, 4));
  model::Spectrum2D s;
  ScriptedPrompt prompt;
  ASSERT_TRUE(Read(folder.Write("ser", Binary(ser)), s, prompt).outcome.ok());
  EXPECT_EQ(s.extras[model::F1].fidPoints, 3);
  EXPECT_EQ(s.axis[model::F1].Point, 4);  // the F1 size still follows TD
  EXPECT_EQ(s.RI.at(1, 2), Value(5, 2));
  EXPECT_EQ(s.RR.at(0, 3), 0.0f);
  const bool said = std::any_of(s.processing.begin(), s.processing.end(), [](const std::string& line) {
    return line.find("stopped early: 3 of 4 increments") != std::string::npos;
  });
  EXPECT_TRUE(said);
}

// A sampling schedule beside the data, or FnTYPE 2, means the increments are not evenly spaced:
// the raw set is refused with the reason, the record kept, and the set reads once neither is there.
TEST(BrukerRawData, NonUniformlySampledSetsAreRefusedWithTheReason) {
  TempFolder folder;
  folder.Write("acqus", F2Acqus(200));
  const std::string ser = Binary(SerRows(8, 200, 256));
  for (const auto& [nuslist, fnType, reason] :
       {std::tuple{true, 0, "a nuslist beside the ser file"}, std::tuple{false, 2, "FnTYPE 2 in acqu2s"}}) {
    folder.Write("acqu2s", F1Acqus(8, 6, "##$FnTYPE= " + std::to_string(fnType) + "\n"));
    if (nuslist) folder.Write("nuslist", "0\n3\n1\n");
    model::Spectrum2D s;
    s.axis[model::F1].Point = 77;
    ScriptedPrompt prompt;
    const auto read = Read(folder.Write("ser", ser), s, prompt);
    EXPECT_EQ(read.outcome.code, 1) << reason;
    EXPECT_NE(read.outcome.message.text.find(reason), std::string::npos) << read.outcome.message.text;
    EXPECT_NE(read.outcome.message.text.find("Non-uniformly sampled"), std::string::npos);
    EXPECT_EQ(s.axis[model::F1].Point, 77);
    std::filesystem::remove(folder / "nuslist");
  }
  folder.Write("acqu2s", F1Acqus(8, 6));
  model::Spectrum2D s;
  ScriptedPrompt prompt;
  EXPECT_TRUE(Read(folder.Write("ser", ser), s, prompt).outcome.ok());
}

// Submatrices of 2 rows by 4 columns; the file's first value is the high-frequency corner.
TEST(BrukerProcessedData, SubmatricesAreUnscrambledAndBothAxesTurned) {
  const int f2 = 8, f1 = 4, x2 = 4, x1 = 2;
  const auto m = [](int row, int column) { return row * 100 + column; };  // the file's own orientation
  std::vector<double> file;
  for (int bi = 0; bi < f1 / x1; ++bi)
    for (int bj = 0; bj < f2 / x2; ++bj)
      for (int i = 0; i < x1; ++i)
        for (int j = 0; j < x2; ++j) file.push_back(m(bi * x1 + i, bj * x2 + j));
  TempFolder folder;
  const auto procs = [](int si, int xdim, double sf) {
    return ParameterFile("##$SF= " + std::to_string(sf) + "\n##$SW_p= 1000\n##$SI= " + std::to_string(si) +
                         "\n##$XDIM= " + std::to_string(xdim) + "\n##$OFFSET= 10\n##$PH_mod= 1\n##$DTYPP= 0\n");
  };
  folder.Write("procs", procs(f2, x2, 100));
  folder.Write("proc2s", procs(f1, x1, 25));
  // Eight bytes a point: doubles, whatever DTYPP says.
  const auto rr = folder.Write("2rr", Binary(file));
  model::Spectrum2D s;
  ScriptedPrompt prompt;
  const auto r = Read(rr, s, prompt);
  ASSERT_TRUE(r.outcome.ok()) << r.outcome.message.text;
  EXPECT_EQ(r.words.pulseModeClass, model::VPH_HETERO);
  EXPECT_EQ(r.words.realOnly, 1);
  for (int row = 0; row < f1; ++row)
    for (int column = 0; column < f2; ++column)
      EXPECT_EQ(s.RR.at(column, row), m(f1 - 1 - row, f2 - 1 - column)) << column << "," << row;
  // Index 0 is the low-frequency end; the last point is OFFSET.
  EXPECT_NEAR(s.ppmF2[f2 - 1], 10.0, 1e-5);
  EXPECT_NEAR(s.ppmF2[0], 10.0 - 7 * 1000.0 / 8 / 100, 1e-5);
}

TEST(BrukerProcessedData, DecimalExtremesAskForTheDataType) {
  TempFolder folder;
  folder.Write("procs", ParameterFile("##$SF= 100\n##$SW_p= 1000\n##$SI= 16\n##$OFFSET= 5\n##$YMAX_p= 12.5\n"));
  std::vector<float> values(16, 0.0f);
  values[15] = 2.5f;  // the file runs from high to low frequency
  ScriptedPrompt prompt;
  prompt.choices.push_back(0);  // "SINGLE"
  model::Spectrum1D s;
  const auto r = Read(folder.Write("1r", Binary(values)), s, prompt);
  ASSERT_TRUE(r.outcome.ok()) << r.outcome.message.text;
  ASSERT_EQ(prompt.shown.size(), 1u);
  EXPECT_EQ(prompt.shown[0].title, "Select Data Type");
  EXPECT_EQ(s.re[0], 2.5f);
  EXPECT_NEAR(s.axisPpm[15], 5.0, 1e-9);
}

// Damaged sets are refused with a message, and the record keeps what it held.
TEST(BrukerDamagedInput, RefusedWithAMessageAndTheRecordKept) {
  const auto expectRefused = [](const std::filesystem::path& file, const char* what) {
    model::Spectrum2D s;
    s.params.EXMOD = "kept";
    ASSERT_EQ(AllocateSpectrum2D(s, 128, 128), 0);
    s.RR.at(5, 5) = 42.0f;
    ScriptedPrompt prompt;
    const auto r = Read(file, s, prompt);
    EXPECT_FALSE(r.outcome.ok()) << what;
    EXPECT_FALSE(r.outcome.message.text.empty()) << what;
    EXPECT_EQ(s.params.EXMOD, "kept") << what;
    ASSERT_EQ(s.RR.data.size(), 128u * 128u) << what;
    EXPECT_EQ(s.RR.at(5, 5), 42.0f) << what;
  };
  struct Case {
    const char* what;
    std::string acqus, acqu2s;
    std::size_t serBytes;
  };
  const std::size_t full = 4 * 1024 * 4;  // 4 rows of 1024 values
  const std::vector<Case> raw{
      {"ser shorter than one increment", F2Acqus(1024), F1Acqus(4, 5), full / 2 - 100},
      {"acqus without ##ORIGIN", ParameterFile("##$SFO1= 100\n##$SW_h= 5000\n##$TD= 1024\n", ""), F1Acqus(4, 5), full},
      {"F1 TD of 1 in a phase-sensitive set", F2Acqus(1024), F1Acqus(1, 5), full},
      {"F2 TD beyond any size", F2Acqus(2000000000), F1Acqus(4, 5), full},
      {"F1 TD beyond any size", F2Acqus(1024), F1Acqus(2000000000, 5), full},
      {"no spectral width", ParameterFile("##$SFO1= 100\n##$TD= 1024\n"), F1Acqus(4, 5), full},
  };
  for (const Case& c : raw) {
    TempFolder folder;
    folder.Write("acqus", c.acqus);
    folder.Write("acqu2s", c.acqu2s);
    expectRefused(folder.Write("ser", std::string(c.serBytes, '\1')), c.what);
  }
  // PH_mod 1: a phase-sensitive set whose other quadrants are read after 2rr.
  const auto procs = [](const std::string& si, const std::string& xdim) {
    return ParameterFile("##$SF= 100\n##$SW_p= 1000\n##$SI= " + si + "\n##$XDIM= " + xdim +
                         "\n##$OFFSET= 10\n##$PH_mod= 1\n");
  };
  struct Processed { const char* what; std::string procs; std::size_t bytes, quadrantBytes; };
  const std::size_t plane = 64 * 64 * 4;
  const std::vector<Processed> processed{
      {"truncated 2rr", procs("64", "64"), plane - 1, 0},
      {"truncated 2ri beside a whole 2rr", procs("64", "64"), plane, plane / 2},
      {"XDIM 0", procs("64", "0"), plane, 0},
      {"XDIM not a divisor", procs("64", "48"), plane, 0},
      {"absurd SI", procs("1000000000", "1000000000"), plane, 0},
  };
  for (const Processed& c : processed) {
    TempFolder folder;
    folder.Write("procs", c.procs);
    folder.Write("proc2s", procs("64", "64"));
    if (c.quadrantBytes > 0) folder.Write("2ri", std::string(c.quadrantBytes, '\0'));
    expectRefused(folder.Write("2rr", std::string(c.bytes, '\0')), c.what);
  }
}

}  // namespace velk::test
