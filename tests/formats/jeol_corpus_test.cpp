// The real Delta files of the corpus, checked against a reading of their own parameter section
// that shares no code with the reader.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <fstream>
#include <map>

#include <nlohmann/json.hpp>

#include "formats/jeol/delta.h"
#include "support/corpus.h"
#include "support/run_cli.h"
#include "support/scripted_prompt.h"
#include "support/temp_folder.h"

namespace velk::test {
namespace {

std::vector<unsigned char> Load(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Big-endian header numbers; the parameter section in the order of byte 8.
struct PlainDelta {
  std::vector<unsigned char> b;
  bool little = false;

  template <class T>
  T At(std::size_t at, bool littleEndian) const {
    unsigned char raw[sizeof(T)];
    for (std::size_t i = 0; i < sizeof(T); ++i) raw[i] = b.at(at + (littleEndian ? i : sizeof(T) - 1 - i));
    T v;
    std::memcpy(&v, raw, sizeof v);
    return v;
  }
  std::int32_t HeaderInt(std::size_t at) const { return At<std::int32_t>(at, false); }

  // name -> number or text of every record
  std::map<std::string, std::pair<double, std::string>> Parameters() const {
    std::map<std::string, std::pair<double, std::string>> out;
    const std::size_t start = static_cast<std::size_t>(HeaderInt(1212));
    const int size = At<std::int32_t>(start, little), high = At<std::int32_t>(start + 8, little);
    for (int i = 0; i <= high; ++i) {
      const std::size_t r = start + 16 + static_cast<std::size_t>(i) * size;
      std::string name(reinterpret_cast<const char*>(&b.at(r + 36)), 28);
      name = name.substr(0, name.find_first_of(std::string(" \0", 2)));
      for (char& c : name) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
      const int type = b.at(r + (little ? 32 : 35));
      std::string text(reinterpret_cast<const char*>(&b.at(r + 16)), 16);
      text = text.substr(0, text.find_first_of(std::string(" \0", 2)));
      const double value = type == 1 ? At<std::int32_t>(r + 16, little) : At<double>(r + 16, little);
      out[name] = {type == 0 ? 0.0 : value, type == 0 ? text : ""};
    }
    return out;
  }
};

std::string Nucleus(const std::string& jeolName) {
  static const std::map<std::string, std::string> kNames{
      {"1H", "1H"}, {"Proton", "1H"}, {"13C", "13C"}, {"Carbon13", "13C"}, {"19F", "19F"}, {"Fluorine19", "19F"},
      {"31P", "31P"}, {"Phosphorus31", "31P"}};
  return kNames.count(jeolName) ? kNames.at(jeolName) : "?" + jeolName;
}

}  // namespace

TEST(DeltaCorpus, EveryFileOpensAndAgreesWithItsParameterSection) {
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(CorpusPath("jeol"))) {
    if (entry.path().extension() != ".jdf") continue;
    ++files;
    const CliRun run = RunCli("info --json " + Quoted(entry.path().string()));
    ASSERT_EQ(run.exitStatus, 0) << entry.path() << "\n" << run.err;
    const auto data = nlohmann::json::parse(run.out).at("data");
    PlainDelta file{Load(entry.path())};
    file.little = file.b.at(8) != 0;
    auto p = file.Parameters();
    const bool twoD = file.b.at(12) == 2;
    const bool spectrum = file.b.at(33) == 26 || file.b.at(33) == 13;
    const auto axis = [&](const char* key, const char* axisName) {
      return twoD ? data.at(key).at(axisName) : data.at(key);
    };
    const auto check = [&](const char* letter, const char* axisName, std::size_t headerPoints) {
      const std::string x = letter;
      EXPECT_EQ(axis("nuclei", axisName), Nucleus(p[x + "_DOMAIN"].second)) << entry.path();
      EXPECT_NEAR(axis("spectral_width_hz", axisName).get<double>(), p[x + "_SWEEP"].first, 0.01) << entry.path();
      const double observe = p[x + "_FREQ"].first / 1e6;
      EXPECT_NEAR(axis("observe_mhz", axisName).get<double>(), observe, spectrum ? 2e-5 * observe : 1e-4)
          << entry.path();
      // The data grid of the header; the acquired points fill it, or less of it when a spectrum
      // was zero-filled or a 2D acquisition stopped early (one HSQC has 220 of 256 rows).
      // A 2D FID is kept at a power of two, its acquired points beside.
      const double points = axis(twoD && !spectrum ? "fid_points" : "points", axisName).get<double>();
      EXPECT_LE(p[x + "_POINTS"].first, points) << entry.path();
      if (spectrum || twoD) {
        EXPECT_EQ(points, file.HeaderInt(headerPoints)) << entry.path();
      }
      if (!spectrum && !twoD) {  // kept at a power of two
        const double acquired = p[x + "_POINTS"].first;
        EXPECT_TRUE(points >= acquired && points < 2 * acquired) << entry.path();
      }
    };
    check("X", "f2", 176);
    if (twoD) check("Y", "f1", 180);
    EXPECT_EQ(data.at("scans").get<double>(), p["SCANS"].first) << entry.path();
  }
  EXPECT_EQ(files, 38);
}

// The submatrices of a real 2D FID: the first 32 values of row 0 of each plane are the first
// values of the file's sections.
TEST(DeltaCorpus, RealTwoDimensionalDataSitInTheirPlanes) {
  const auto path = CorpusPath("jeol/Rutin_3080ug200uL_DMSOd6_COSY_400MHz_Jeol.jdf");
  PlainDelta file{Load(path)};
  const std::size_t start = static_cast<std::size_t>(file.HeaderInt(1284));
  const std::size_t section = 5120u * 512u * 4u;  // 32-bit elements, two sections
  ScriptedPrompt prompt;
  platform::NoProgress progress;
  model::DataWords words{0x2003, model::V_HOMO, 0};
  model::ReadContext context{prompt, progress, words, nullptr};
  auto s = std::make_unique<model::Spectrum2D>();
  ASSERT_TRUE(formats::jeol::ReadData2DDelta(path, *s, context).ok());
  for (std::size_t j = 0; j < 32; ++j) {
    EXPECT_EQ(s->RR.at(static_cast<int>(j), 0), file.At<float>(start + 4 * j, true));
    EXPECT_EQ(s->IR.at(static_cast<int>(j), 1), file.At<float>(start + section + 128 + 4 * j, true));
  }
  EXPECT_EQ(s->axis[model::F2].Point, 8192);
  EXPECT_EQ(s->extras[model::F2].fidPoints, 5120);
  EXPECT_EQ(s->extras[model::F1].nucleus, "1H");
}

}  // namespace velk::test

namespace velk::test {

// A heteronuclear set names its second channel as the irradiated one, so that it keeps its F1
// nucleus when saved in our own format.
TEST(DeltaCorpus, AHeteronuclearSetKeepsItsNucleiThroughOurOwnFormat) {
  TempFolder folder;
  const auto in = CorpusPath("jeol/EC=8EC_2m200u_MeOD_bzhou21_20190328_HSQC-1-1.jdf");
  const auto out = folder / "hsqc.vlk2";
  ASSERT_EQ(RunCli("convert " + Quoted(in.string()) + " -o " + Quoted(out.string())).exitStatus, 0);
  const auto data = nlohmann::json::parse(RunCli("info --json " + Quoted(out.string())).out).at("data");
  EXPECT_EQ(data.at("nuclei").at("f1"), "13C");
  EXPECT_EQ(data.at("nuclei").at("f2"), "1H");
}

}  // namespace velk::test
