#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <fstream>
#include <map>

#include "formats/registry.h"
#include "formats/varian/data.h"
#include "formats/varian/procpar.h"
#include "model/type_detector.h"
#include "processing/recipe.h"
#include "processing/sequence.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::formats::varian {
namespace {

namespace fs = std::filesystem;

// A parameter: strings are written quoted, one value a line, as the instruments do.
struct Parameter {
  bool isString;
  std::vector<std::string> values;
  bool active = true;  // switched off, the vendor's software shows the value as 'n'
};
using Parameters = std::map<std::string, Parameter>;

void WriteProcpar(const fs::path& file, const Parameters& parameters) {
  std::ofstream out(file);
  for (const auto& [name, p] : parameters) {
    out << name << " 1 " << (p.isString ? 2 : 1) << " 1e+18 -1e+18 0 2 1 8202 " << (p.active ? 1 : 0) << " 64\n"
        << p.values.size();
    for (std::size_t i = 0; i < p.values.size(); ++i)
      out << (p.isString ? (i == 0 ? " \"" : "\"") + p.values[i] + "\"\n" : " " + p.values[i]);
    out << (p.isString ? "" : "\n") << (p.isString ? "2 \"y\" \"n\"\n" : "0\n");
  }
}

Parameters Basic(const std::string& array, int arrayDim, const std::string& dn = "H1") {
  return {{"array", {true, {array}}},        {"arraydim", {false, {std::to_string(arrayDim)}}},
          {"sfrq", {false, {"399.782"}}},     {"dfrq", {false, {dn == "H1" ? "399.782" : "100.525"}}},
          {"tn", {true, {"H1"}}},              {"dn", {true, {dn}}},
          {"sw", {false, {"4000"}}},           {"sw1", {false, {"3000"}}},
          {"np", {false, {"32"}}},             {"seqfil", {true, {"gCOSY"}}},
          {"rfl", {false, {"1000"}}},          {"rfp", {false, {"0"}}},
          {"time_submitted", {true, {"20120316T104425"}}},
          {"explist", {true, {"PROTON", "gCOSY"}}}, {"phase", {false, {"1", "2"}}}};
}

enum class Elements { Float, Int32, Int16 };

// A fid file: 32-byte header, then per block a 28-byte header and one trace, all big-endian.
void WriteFid(const fs::path& file, const std::vector<std::vector<float>>& blocks, Elements type) {
  const std::uint32_t width = type == Elements::Int16 ? 2 : 4;
  const auto np = static_cast<std::uint32_t>(blocks.at(0).size());
  const std::uint8_t status = type == Elements::Float ? 73 : type == Elements::Int32 ? 69 : 65;
  std::string bytes;
  const auto put = [&](std::uint64_t value, int count) {
    for (int i = count - 1; i >= 0; --i) bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
  };
  put(blocks.size(), 4), put(1, 4), put(np, 4), put(width, 4), put(np * width, 4), put(np * width + 28, 4);
  put(0, 3), put(status, 1), put(1, 4);
  for (std::size_t b = 0; b < blocks.size(); ++b) {
    put(0, 4), put(b + 1, 2), bytes.append(22, '\0');
    for (float v : blocks[b]) {
      std::uint32_t raw = 0;
      if (type == Elements::Float) std::memcpy(&raw, &v, 4);
      else raw = static_cast<std::uint32_t>(static_cast<std::int32_t>(v));
      put(type == Elements::Int16 ? raw & 0xFFFF : raw, static_cast<int>(width));
    }
  }
  std::ofstream(file, std::ios::binary) << bytes;
}

// Block b, element i: a value that names its place, exact in every element type.
float Pattern(std::size_t b, std::size_t i) { return static_cast<float>(static_cast<int>(b) * 100 + static_cast<int>(i) - 40); }

std::vector<std::vector<float>> Blocks(std::size_t count, std::size_t np) {
  std::vector<std::vector<float>> blocks(count, std::vector<float>(np));
  for (std::size_t b = 0; b < count; ++b)
    for (std::size_t i = 0; i < np; ++i) blocks[b][i] = Pattern(b, i);
  return blocks;
}

struct Read {
  model::Detection detection;
  platform::Outcome outcome;
};

template <class Record>
Read Open(const fs::path& path, Record& s) {
  Read r;
  r.detection = model::TypeDetector(path, Formats());
  test::ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words;
  model::ReadContext context{prompt, progress, words, nullptr};
  const auto entry = std::find_if(Formats().begin(), Formats().end(), [&](const model::FormatEntry& e) {
    return e.extensionWord == r.detection.file.extensionWord;
  });
  if (entry == Formats().end()) return r;
  if constexpr (std::is_same_v<Record, model::Spectrum1D>) {
    r.outcome = entry->read1D(r.detection.file, s, context);
  } else {
    r.outcome = entry->read2D(r.detection.file, s, context);
  }
  return r;
}

}  // namespace

TEST(Varian, RmvAsksOnlyWhereAnArrayMayBeOneDimensional) {
  struct Case {
    std::string array;
    int arrayDim;
    std::string dn;
    platform::Answer answer;
    std::string mode;
    std::size_t questions;
  };
  const std::vector<Case> cases{
      {"", 33, "H1", platform::Answer::No, "V_HOMO:gCOSY", 0},
      {"", 2, "H1", platform::Answer::No, "1D:gCOSY", 1},
      {"phase", 256, "H1", platform::Answer::No, "VPH_HOMO:gCOSY", 0},
      {"phase", 256, "C13", platform::Answer::No, "VPH_HETERO:gCOSY", 0},
      {"", 64, "nul", platform::Answer::No, "V_HOMO:gCOSY", 0},
      {"d1", 5, "H1", platform::Answer::Yes, "V_HOMO:gCOSY", 1},
      {"d1", 5, "H1", platform::Answer::No, "1D:gCOSY", 1},
      {"", 1, "H1", platform::Answer::Yes, "1D:gCOSY", 0}};
  test::TempFolder folder;
  for (const Case& c : cases) {
    WriteProcpar(folder / "procpar", Basic(c.array, c.arrayDim, c.dn));
    test::ScriptedPrompt prompt;
    prompt.answers = {c.answer};
    const model::ModeResult mode = RMV(folder / "procpar", prompt);
    EXPECT_EQ(mode.code, 0);
    EXPECT_EQ(mode.modeText, c.mode) << c.array << " " << c.arrayDim;
    ASSERT_EQ(prompt.shown.size(), c.questions) << c.array << " " << c.arrayDim;
    if (c.questions) {
      EXPECT_EQ(prompt.shown[0].text, "2D Data(Yes) or Array Data(No)?");
    }
  }
  // Opening a folder asks the person at the screen; the command line takes "Yes".
  WriteProcpar(folder / "procpar", Basic("d1", 5, "H1"));
  folder.Write("fid", "");
  test::ScriptedPrompt opening;
  opening.answers = {platform::Answer::No};
  EXPECT_EQ(model::TypeDetector(folder.path, Formats(), {}, &opening).code, 0x1006);
  EXPECT_EQ(model::TypeDetector(folder.path, Formats()).code, 0x2006);

  Parameters noFrequency = Basic("", 64);
  noFrequency["sfrq"] = {false, {"0"}};
  WriteProcpar(folder / "procpar", noFrequency);
  test::ScriptedPrompt prompt;
  EXPECT_EQ(RMV(folder / "procpar", prompt).code, -1);
}

// A 1D folder as instruments leave it (procpar, text, log, no curpar), in every element type.
TEST(Varian, OneDimensionalFidReadsToKnownValuesInEveryElementType) {
  for (const Elements type : {Elements::Float, Elements::Int32, Elements::Int16}) {
    test::TempFolder folder;
    const fs::path set = folder / "proton.fid";
    fs::create_directory(set);
    Parameters p = Basic("", 1);
    p["np"] = {false, {"2000"}};
    WriteProcpar(set / "procpar", p);
    std::ofstream(set / "text") << "proton in CDCl3\n";
    std::ofstream(set / "log") << "acquisition complete\n";
    WriteFid(set / "fid", Blocks(1, 2000), type);
    model::Spectrum1D s;
    const Read r = Open(set, s);
    ASSERT_TRUE(r.outcome.ok()) << r.detection.reason << r.outcome.message.text;
    EXPECT_EQ(r.detection.tag, "VAR1");
    ASSERT_EQ(s.params.POINT, 1024);  // 1000 complex points
    for (std::size_t i = 0; i < 1000; ++i) {
      ASSERT_EQ(s.re[i], Pattern(0, 2 * i)) << i;
      ASSERT_EQ(s.im[i], Pattern(0, 2 * i + 1)) << i;
    }
    EXPECT_DOUBLE_EQ(s.params.RESOL, 4000.0 / 1024);
    EXPECT_FLOAT_EQ(s.params.OFR, 399.782f);
    EXPECT_EQ(s.params.EXMOD, "gCOSY");
    EXPECT_EQ(s.params.DATIM, "16/Mar/2012 10:44:25");
  }
}

// Absolute-value sets take one block a row; sets arrayed on phase two, into all four planes.
TEST(Varian, TwoDimensionalFidsFillThePlanesByClass) {
  test::TempFolder folder;
  const fs::path absolute = folder / "cosy", phase = folder / "hsqc" / "exp";
  fs::create_directories(absolute);
  fs::create_directories(phase);
  WriteProcpar(absolute / "procpar", Basic("", 40));
  WriteFid(absolute / "fid", Blocks(40, 32), Elements::Float);
  WriteProcpar(phase.parent_path() / "procpar", Basic("phase", 80, "C13"));  // in the parent folder
  WriteFid(phase / "fid", Blocks(80, 32), Elements::Int32);

  model::Spectrum2D s;
  Read r = Open(absolute, s);
  ASSERT_TRUE(r.outcome.ok()) << r.detection.reason << r.outcome.message.text;
  EXPECT_EQ(r.detection.tag, "VAR2F");
  EXPECT_EQ(r.detection.pulseModeClass, model::V_HOMO);
  EXPECT_EQ(s.axis[model::F1].Point, 64);
  EXPECT_EQ(s.axis[model::F2].Point, 16);
  EXPECT_EQ(s.extras[model::F1].fidPoints, 40);
  EXPECT_EQ(s.RR.at(3, 39), Pattern(39, 6));
  EXPECT_EQ(s.IR.at(3, 39), Pattern(39, 7));
  EXPECT_EQ(s.RR.at(3, 40), 0.0f);

  r = Open(phase / "fid", s);
  ASSERT_TRUE(r.outcome.ok()) << r.detection.reason << r.outcome.message.text;
  EXPECT_EQ(r.detection.pulseModeClass, model::VPH_HETERO);
  EXPECT_EQ(s.extras[model::F1].fidPoints, 40);
  EXPECT_EQ(s.RR.at(5, 7), Pattern(14, 10));
  EXPECT_EQ(s.IR.at(5, 7), Pattern(14, 11));
  EXPECT_EQ(s.RI.at(5, 7), Pattern(15, 10));
  EXPECT_EQ(s.II.at(5, 7), Pattern(15, 11));
  EXPECT_NEAR(s.extras[model::F1].absFreqCenter, 100.525, 1e-6);
  // rfl 1000 Hz above the low-frequency end with rfp 0: 0 ppm lies 1000 Hz into the axis.
  EXPECT_NEAR(s.extras[model::F2].ppmFirst, -1000 / 399.782, 1e-6);
  EXPECT_EQ(s.axis[model::F2].RefPoint, 4);  // 1000 Hz at 4000/16 Hz a point
}

// Cut files, and headers that promise more than the file holds, fail without reading outside it.
TEST(Varian, DamagedFidsFailCleanly) {
  test::TempFolder folder;
  WriteProcpar(folder / "procpar", Basic("phase", 8));
  WriteFid(folder / "fid", Blocks(8, 32), Elements::Float);
  std::ifstream in(folder / "fid", std::ios::binary);
  const std::string whole((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const auto p = ReadVarianParameters(folder / "procpar");
  ASSERT_TRUE(p);
  model::Spectrum1D s1;
  model::Spectrum2D s2;
  platform::Outcome o;
  for (std::size_t cut = 0; cut < 32 + 28 + 128; cut += 7) {
    std::ofstream(folder / "cut", std::ios::binary) << whole.substr(0, cut);
    EXPECT_EQ((o = ReadDataVarian(folder / "cut", *p, s1)).code, -1) << cut;
    EXPECT_EQ((o = ReadDataVarian2D(folder / "cut", *p, model::VPH_HOMO, s2)).code, -1) << cut;
  }
  std::string huge = whole;
  huge[8] = '\x7F';  // elements per trace far beyond the file
  std::ofstream(folder / "huge", std::ios::binary) << huge;
  EXPECT_EQ((o = ReadDataVarian(folder / "huge", *p, s1)).code, -1);
  EXPECT_EQ((o = ReadDataVarian2D(folder / "huge", *p, model::VPH_HOMO, s2)).code, -1);
}

// A processed phasefile: traces become rows, both axes turned to start at the low-frequency end.
TEST(Varian, PhasefileBecomesTheRealPlane) {
  test::TempFolder folder;
  WriteProcpar(folder / "procpar", Basic("phase", 64));
  WriteFid(folder / "phasefile", Blocks(6, 16), Elements::Float);
  const auto p = ReadVarianParameters(folder / "procpar");
  model::Spectrum2D s;
  platform::Outcome o;
  ASSERT_EQ((o = ReadDataVarianProc2D(folder / "phasefile", *p, s)).code, 0) << o.message.text;
  EXPECT_EQ(s.axis[model::F2].Point, 16);
  EXPECT_EQ(s.axis[model::F1].Point, 6);
  EXPECT_EQ(s.RR.at(15, 5), Pattern(0, 0));
  EXPECT_EQ(s.RR.at(0, 0), Pattern(5, 15));
  // A 1D "data" file: pairs of values, the first trace only, the ppm axis from rfl and rfp.
  WriteFid(folder / "data", Blocks(1, 64), Elements::Float);
  model::Spectrum1D one;
  ASSERT_EQ((o = ReadDataVarianProc(folder / "data", *p, one)).code, 0) << o.message.text;
  ASSERT_EQ(one.params.POINT, 32);
  EXPECT_EQ(one.re[0], Pattern(0, 62));
  EXPECT_EQ(one.im[0], Pattern(0, 63));
  EXPECT_EQ(one.params.SMTMS, 8);  // rfl 1000 Hz at 4000/32 Hz a point
  EXPECT_NEAR(one.axisPpm[8], 0.0, 1e-9);
}

// A NOESY-like set arrayed on phase (States: cosine and sine blocks per increment) read and
// transformed: the peak stands at the synthetic F2 and F1 frequencies, in pure absorption.
TEST(Varian, PhaseArrayed2DSetProcessesToItsSyntheticPeak) {
  constexpr std::size_t kComplex = 64, kIncrements = 32;
  constexpr double kF2Cycles = 0.1875, kF1Cycles = -0.125;  // cycles per point from the carrier
  std::vector<std::vector<float>> blocks;
  for (std::size_t k = 0; k < kIncrements; ++k) {
    const double envelope = std::exp(-0.15 * static_cast<double>(k));
    for (const double f1 : {std::cos(2 * M_PI * kF1Cycles * k), std::sin(2 * M_PI * kF1Cycles * k)}) {
      std::vector<float>& block = blocks.emplace_back();
      for (std::size_t i = 0; i < kComplex; ++i) {
        const double decay = 1000 * envelope * f1 * std::exp(-0.08 * static_cast<double>(i));
        block.push_back(static_cast<float>(decay * std::cos(2 * M_PI * kF2Cycles * i)));
        block.push_back(static_cast<float>(decay * std::sin(2 * M_PI * kF2Cycles * i)));
      }
    }
  }
  test::TempFolder folder;
  Parameters p = Basic("phase", 2 * kIncrements);
  p["np"] = {false, {std::to_string(2 * kComplex)}};
  WriteProcpar(folder / "procpar", p);
  WriteFid(folder / "fid", blocks, Elements::Float);
  model::Spectrum2D s;
  const Read r = Open(folder.path, s);
  ASSERT_TRUE(r.outcome.ok()) << r.detection.reason << r.outcome.message.text;
  ASSERT_EQ(r.detection.pulseModeClass, model::VPH_HOMO);

  processing::SequenceSettings settings = processing::MakeSequenceSettings(s, model::VPH_HOMO, model::kVarian);
  platform::NoProgress progress;
  std::vector<std::string> list;
  ASSERT_EQ(processing::Execute2DFft(s, settings, {progress, list}).code, 0);
  std::int32_t column = 0, row = 0;
  for (std::int32_t j = 0; j < static_cast<std::int32_t>(kIncrements); ++j)
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(kComplex); ++i)
      if (std::fabs(s.RR.at(i, j)) > std::fabs(s.RR.at(column, row))) column = i, row = j;
  EXPECT_EQ(column, static_cast<std::int32_t>(kComplex / 2 + kF2Cycles * kComplex));
  EXPECT_EQ(row, static_cast<std::int32_t>(kIncrements / 2 + kF1Cycles * kIncrements));
  EXPECT_FLOAT_EQ(s.RR.at(column, row), 1.0f);  // positive absorption, normalised
  EXPECT_NEAR(s.IR.at(column, row), 0, 0.02);
}

}  // namespace velk::formats::varian

namespace velk::formats::varian {
namespace {

// States blocks of signals at F2 offsets (Hz from the carrier, each with its amplitude) and one F1
// offset, undamped along F2 and F1 so that every on-grid peak is a pure sum without leakage.
std::vector<std::vector<float>> StatesBlocks(std::size_t complexPoints, std::size_t increments, double sw, double sw1,
                                            const std::vector<std::pair<double, double>>& f2Signals, double f1Hz,
                                            double f1Decay = 0) {
  std::vector<std::vector<float>> blocks;
  for (std::size_t k = 0; k < increments; ++k) {
    const double t1 = static_cast<double>(k) / sw1, decay = std::exp(-f1Decay * t1);
    for (const double f1 : {decay * std::cos(2 * M_PI * f1Hz * t1), decay * std::sin(2 * M_PI * f1Hz * t1)}) {
      std::vector<float>& block = blocks.emplace_back();
      for (std::size_t i = 0; i < complexPoints; ++i) {
        const double t2 = static_cast<double>(i) / sw;
        double re = 0, im = 0;
        for (const auto& [hz, amplitude] : f2Signals)
          re += amplitude * std::cos(2 * M_PI * hz * t2), im += amplitude * std::sin(2 * M_PI * hz * t2);
        block.push_back(static_cast<float>(1000 * f1 * re));
        block.push_back(static_cast<float>(1000 * f1 * im));
      }
    }
  }
  return blocks;
}

struct Transformed {
  model::Spectrum2D s;
  processing::SequenceSettings settings;
};

// The set read from its folder and transformed with the default recipe.
std::unique_ptr<Transformed> ReadAndTransform(const fs::path& folder) {
  auto t = std::make_unique<Transformed>();
  const Read r = Open(folder, t->s);
  EXPECT_TRUE(r.outcome.ok()) << r.detection.reason << r.outcome.message.text;
  t->settings = processing::DefaultFtSettings(t->s, r.detection.pulseModeClass, model::kVarian, "gCOSY");
  platform::NoProgress progress;
  std::vector<std::string> list;
  EXPECT_EQ(processing::Execute2DFft(t->s, t->settings, {progress, list}).code, 0);
  return t;
}

double PhaseAt(const model::Spectrum2D& s, std::int32_t column, std::int32_t row) {
  return std::atan2(s.IR.at(column, row), s.RR.at(column, row)) * 180 / M_PI;
}

double Wrapped(double degrees) { return std::remainder(degrees, 360.0); }

}  // namespace

// A made procpar and fid with known signals: the spectrum is as large as fn and fn1 say, its peaks
// stand where rfl/rfp put their frequencies, rp and lp turn them as stored, lsfid moves the time
// origin, and the sine bell (zero at the first point) empties the trace's integral.
TEST(VarianRecipe, ProcparProcessingIsApplied) {
  constexpr std::size_t kComplex = 256, kIncrements = 64;
  constexpr double kSw = 4000, kSw1 = 3200, kMhz = 399.782;
  const double high = 625, low = -1000, f1Hz = 500;  // on the grid of both sizes
  test::TempFolder folder;
  WriteFid(folder / "fid", StatesBlocks(kComplex, kIncrements, kSw, kSw1, {{high, 1.0}, {low, 0.8}}, f1Hz),
           Elements::Float);
  Parameters p = Basic("phase", 2 * kIncrements, "C13");
  p["np"] = {false, {std::to_string(2 * kComplex)}};
  p["sw1"] = {false, {"3200"}};
  p["refsource1"] = {true, {"sfrq"}};
  p["rfl1"] = {false, {"1600"}};
  p["rfp1"] = {false, {"1999"}};
  p["fn"] = {false, {std::to_string(4 * kComplex)}};
  p["fn1"] = {false, {std::to_string(8 * kIncrements)}};
  p["rp"] = {false, {"30"}};
  p["lp"] = {false, {"-60"}};
  p["lb"] = {false, {"5"}, false};
  WriteProcpar(folder / "procpar", p);
  auto t = ReadAndTransform(folder.path);
  const model::Spectrum2D& s = t->s;
  ASSERT_TRUE(t->settings.vendor);
  ASSERT_EQ(s.axis[model::F2].Point, 2 * static_cast<std::int32_t>(kComplex));
  ASSERT_EQ(s.axis[model::F1].Point, 4 * static_cast<std::int32_t>(kIncrements));
  // Column of an offset: the carrier is the middle; ppm: rfp + (offset + sw/2 - rfl), over sfrq.
  const auto column = [&](double hz) { return static_cast<std::int32_t>(kComplex + hz / kSw * 2 * kComplex); };
  const std::int32_t row = static_cast<std::int32_t>(2 * kIncrements + f1Hz / kSw1 * 4 * kIncrements);
  for (const double hz : {high, low}) {
    const std::int32_t c = column(hz);
    const double magnitude = std::hypot(s.RR.at(c, row), s.IR.at(c, row));
    EXPECT_GT(magnitude, 0.75) << hz;
    EXPECT_NEAR(s.ppmF2[c], (0 + hz + kSw / 2 - 1000) / kMhz, 1e-4) << hz;
  }
  EXPECT_NEAR(s.ppmF1[row], (1999 + f1Hz + kSw1 / 2 - 1600) / kMhz, 1e-4);  // on the 1H channel
  // rp turns every point alike; lp adds its share from the low-frequency edge (none) to the high one.
  const auto expected = [&](double hz) { return -(30 - 60 * column(hz) / (2.0 * kComplex)); };
  EXPECT_NEAR(Wrapped(PhaseAt(s, column(high), row) - expected(high)), 0, 0.5);
  EXPECT_NEAR(Wrapped(PhaseAt(s, column(low), row) - expected(low)), 0, 0.5);
  const bool said = std::any_of(s.processing.begin(), s.processing.end(), [](const std::string& line) {
    return line.find("(F2) fn 1024 lb 0 gf 0 gfs 0 sb 0 sbs 0 lsfid 0 rp 30 lp -60") != std::string::npos;
  });
  EXPECT_TRUE(said);

  // Three points dropped: the peaks come forward in time by 3 / sw, a turn of 360 f 3 / sw.
  p["lsfid"] = {false, {"3"}};
  p["rp"] = {false, {"0"}};
  p["lp"] = {false, {"0"}};
  WriteProcpar(folder / "procpar", p);
  t = ReadAndTransform(folder.path);
  for (const double hz : {high, low})
    EXPECT_NEAR(Wrapped(PhaseAt(t->s, column(hz), row) - 360 * hz * 3 / kSw), 0, 0.5) << hz;

  // A sine bell of half the acquisition time is 0 at the first point: the trace sums to nothing.
  // Switched off, the first point counts and the sum is far from 0.
  p["lsfid"] = {false, {"0"}};
  p["sb"] = {false, {std::to_string(kComplex / kSw / 2)}};
  for (const bool on : {true, false}) {
    p["sb"].active = on;
    WriteProcpar(folder / "procpar", p);
    t = ReadAndTransform(folder.path);
    double sum = 0;
    for (std::int32_t c = 0; c < t->s.axis[model::F2].Point; ++c) sum += t->s.RR.at(c, row);
    if (on) EXPECT_NEAR(sum, 0, 1e-3);
    else EXPECT_GT(std::fabs(sum), 1);
  }
}

// F1 prediction (proc1 'lp'): 16 increments extended to 64 give the F1 trace that 64 measured
// increments give.
TEST(VarianRecipe, ForwardPredictionOfF1ExtendsTheIncrements) {
  test::TempFolder folder;
  std::vector<float> traces[2];
  for (const std::size_t increments : {std::size_t{64}, std::size_t{16}}) {
    WriteFid(folder / "fid", StatesBlocks(64, increments, 4000, 3200, {{500, 1.0}}, 430, 60), Elements::Float);
    Parameters p = Basic("phase", static_cast<int>(2 * increments));
    p["np"] = {false, {"128"}};
    p["fn1"] = {false, {"256"}};
    if (increments == 16)
      for (const auto& [name, value] : {std::pair{"proc1", "lp"}, {"lpopt1", "f"}})
        p[name] = {true, {value}};
    for (const auto& [name, value] : {std::pair{"lpfilt1", "8"}, {"strtext1", "17"}, {"lpext1", "48"}})
      p[name] = {false, {value}};
    WriteProcpar(folder / "procpar", p);
    const auto t = ReadAndTransform(folder.path);
    ASSERT_EQ(t->s.axis[model::F1].Point, 128);
    const std::int32_t column = 32 + 500 * 64 / 4000;
    for (std::int32_t r = 0; r < 128; ++r) traces[increments == 16].push_back(t->s.RR.at(column, r));
  }
  double dot = 0, a = 0, b = 0;
  for (std::size_t i = 0; i < traces[0].size(); ++i)
    dot += traces[0][i] * traces[1][i], a += traces[0][i] * traces[0][i], b += traces[1][i] * traces[1][i];
  EXPECT_GT(dot / std::sqrt(a * b), 0.998);  // 0.72 without the prediction
}

// The F1 axis is the channel refsource1 names: a homonuclear set with dn C13 stays 1H, a
// heteronuclear one takes the decoupler's nucleus and its reffrq1 for the shifts.
TEST(VarianRecipe, F1AxisFollowsRefsource1) {
  test::TempFolder folder;
  WriteFid(folder / "fid", Blocks(16, 32), Elements::Float);
  Parameters p = Basic("phase", 16, "C13");
  p["refsource1"] = {true, {"sfrq"}};
  WriteProcpar(folder / "procpar", p);
  model::Spectrum2D s;
  Read r = Open(folder.path, s);
  ASSERT_TRUE(r.outcome.ok()) << r.outcome.message.text;
  EXPECT_EQ(r.detection.pulseModeClass, model::VPH_HOMO);
  EXPECT_EQ(s.extras[model::F1].nucleus, "1H");
  EXPECT_NEAR(s.extras[model::F1].absFreqCenter, 399.782, 1e-4);

  p["refsource1"] = {true, {"dfrq"}};
  p["reffrq1"] = {false, {"100.5"}};
  p["rfl1"] = {false, {"0"}};
  p["rfp1"] = {false, {"0"}};
  WriteProcpar(folder / "procpar", p);
  r = Open(folder.path, s);
  ASSERT_TRUE(r.outcome.ok()) << r.outcome.message.text;
  EXPECT_EQ(r.detection.pulseModeClass, model::VPH_HETERO);
  EXPECT_EQ(s.extras[model::F1].nucleus, "13C");
  EXPECT_NEAR(s.extras[model::F1].absFreqCenter, 100.525, 1e-6);
  EXPECT_NEAR(s.extras[model::F1].ppmStep, 3000.0 / 8 / 100.5, 1e-6);  // sw1 over 8 increments, on reffrq1

  // A non-uniformly sampled set is refused with the reason.
  p["sampling"] = {true, {"sparse"}};
  WriteProcpar(folder / "procpar", p);
  r = Open(folder.path, s);
  EXPECT_EQ(r.outcome.code, -1);
  EXPECT_NE(r.outcome.message.text.find("Non-uniformly sampled data (sampling 'sparse'"), std::string::npos)
      << r.outcome.message.text;
}

}  // namespace velk::formats::varian
