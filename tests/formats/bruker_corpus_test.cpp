// The Bruker sets of the public corpus, read as a user reads them, checked against the values of
// their parameter files as this test reads them itself.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <cstring>
#include <iterator>
#include <map>

#include <nlohmann/json.hpp>

#include "formats/bruker_sets.h"
#include "support/corpus.h"
#include "support/run_cli.h"

namespace velk::test {
namespace {

namespace fs = std::filesystem;
using Keys = std::map<std::string, std::string>;

// "##$KEY= value" lines, keys upper-cased, <text> unwrapped.
Keys ReadKeys(const fs::path& file) {
  Keys keys;
  std::ifstream in(file);
  std::string line;
  while (std::getline(in, line)) {
    const auto eq = line.find('=');
    if (!line.starts_with("##$") || eq == std::string::npos) continue;
    std::string key = line.substr(3, eq - 3), value = line.substr(eq + 1);
    for (char& c : key) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    value.erase(0, value.find_first_not_of(' '));
    while (!value.empty() && (value.back() == '\r' || value.back() == ' ')) value.pop_back();
    if (value.size() >= 2 && value.front() == '<') value = value.substr(1, value.size() - 2);
    keys[key] = value;
  }
  return keys;
}

double Number(const Keys& keys, const std::string& key) { return std::stod(keys.at(key)); }

int PowerOfTwo(double atLeast, int from) {
  int size = from;
  while (size < atLeast) size *= 2;
  return size;
}

// The experiment folder of a data file (processed data sit in pdata/<n>).
fs::path Experiment(const fs::path& data) {
  const fs::path folder = data.parent_path();
  return folder.parent_path().filename() == "pdata" ? folder.parent_path().parent_path() : folder;
}

void ExpectAxis(const nlohmann::json& data, const char* axis, int points, double widthHz, double mhz,
                const std::string& nucleus, const std::string& where) {
  const bool twoD = data["points"].is_object();
  const auto field = [&](const char* name) { return twoD ? data[name][axis] : data[name]; };
  EXPECT_EQ(field("points").get<int>(), points) << where << " " << axis;
  EXPECT_NEAR(field("spectral_width_hz").get<double>(), widthHz, 0.01) << where << " " << axis;
  EXPECT_NEAR(field("observe_mhz").get<double>(), mhz, 1e-4) << where << " " << axis;
  EXPECT_EQ(field("nuclei").get<std::string>(), nucleus) << where << " " << axis;
}

// The vendor's matrix in its own orientation (row 0 the highest F1 frequency), assembled from
// the submatrices in which the file stores it.
std::vector<float> VendorMatrix(const fs::path& file, int n2, int n1, int x2, int x1) {
  std::ifstream in(file, std::ios::binary);
  std::vector<std::int32_t> values(static_cast<std::size_t>(n1) * n2);
  in.read(reinterpret_cast<char*>(values.data()), static_cast<std::streamsize>(values.size() * 4));
  EXPECT_TRUE(in) << file;
  std::vector<float> matrix(values.size());
  std::size_t k = 0;
  for (int bi = 0; bi < n1 / x1; ++bi)
    for (int bj = 0; bj < n2 / x2; ++bj)
      for (int i = 0; i < x1; ++i)
        for (int j = 0; j < x2; ++j)
          matrix[static_cast<std::size_t>(bi * x1 + i) * n2 + bj * x2 + j] = static_cast<float>(values[k++]);
  return matrix;
}

// The float32 data of a .npy file that export wrote.
std::vector<float> NpyData(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  EXPECT_GT(bytes.size(), 10u);
  const std::size_t header = 10 + static_cast<unsigned char>(bytes[8]) + 256 * static_cast<unsigned char>(bytes[9]);
  std::vector<float> data((bytes.size() - header) / 4);
  std::memcpy(data.data(), bytes.data() + header, data.size() * 4);
  return data;
}

double Carrier(const Keys& procs) {
  return (Number(procs, "OFFSET") * Number(procs, "SF") - Number(procs, "SW_P") / 2) * 1e-6 + Number(procs, "SF");
}

}  // namespace

TEST(BrukerCorpus, EveryDataSetReadsWithItsParameterFileValues) {
  int sets = 0;
  for (const auto& entry : fs::recursive_directory_iterator(CorpusPath("bruker"))) {
    const std::string name = entry.path().filename().string();
    if (name != "fid" && name != "ser" && name != "1r" && name != "2rr") continue;
    const fs::path exp = Experiment(entry.path());
    const std::string where = entry.path().string();
    const CliRun run = RunCli("info --json " + Quoted(where));
    if (name == "ser" && fs::exists(exp / "nuslist")) {
      // Raw data sampled non-uniformly are refused, and the reconstructed spectrum is named.
      EXPECT_EQ(run.exitStatus, 1) << where;
      EXPECT_NE(run.err.find("Non-uniformly sampled data (a nuslist beside the ser file)"), std::string::npos) << run.err;
      EXPECT_TRUE(fs::exists(exp / "pdata/1/2rr")) << where;
      ++sets;
      continue;
    }
    ASSERT_EQ(run.exitStatus, 0) << where << "\n" << run.err;
    const auto json = nlohmann::json::parse(run.out);
    const auto& data = json["data"];
    const Keys acqus = ReadKeys(exp / "acqus");
    ++sets;
    if (name == "fid") {
      ExpectAxis(data, "f2", PowerOfTwo(Number(acqus, "TD") / 2, 2), Number(acqus, "SW_H"), Number(acqus, "SFO1"),
                 acqus.at("NUC1"), where);
    } else if (name == "1r") {
      const Keys procs = ReadKeys(entry.path().parent_path() / "procs");
      ExpectAxis(data, "f2", std::stoi(procs.at("SI")), Number(procs, "SW_P"), Carrier(procs), acqus.at("NUC1"), where);
      // The frequencies "Set Center" takes from a 1D trace: the spectrum's centre and its 0 ppm.
      EXPECT_NEAR(data["centre_mhz"].get<double>(), Carrier(procs), 1e-7) << where;
      EXPECT_NEAR(data["zero_ppm_mhz"].get<double>(), Number(procs, "SF"), 1e-9) << where;
    } else if (name == "ser") {
      const Keys acqu2s = ReadKeys(exp / "acqu2s");
      const bool phase = json["class"] == 0 || json["class"] == 2 || json["class"] == 3;
      const bool homo = json["class"] == 0 || json["class"] == 1;
      ExpectAxis(data, "f2", PowerOfTwo(Number(acqus, "TD") / 2, 2), Number(acqus, "SW_H"), Number(acqus, "SFO1"),
                 acqus.at("NUC1"), where);
      ExpectAxis(data, "f1", PowerOfTwo(Number(acqu2s, "TD"), 1) / (phase ? 2 : 1),
                 Number(acqu2s, "SW") * Number(acqu2s, "SFO1"), Number(homo ? acqus : acqu2s, "SFO1"),
                 (homo ? acqus : acqu2s).at("NUC1"), where);
    } else {
      const Keys procs = ReadKeys(entry.path().parent_path() / "procs");
      const Keys proc2s = ReadKeys(entry.path().parent_path() / "proc2s");
      const Keys acqu2s = ReadKeys(exp / "acqu2s");
      const bool homo = json["class"] == 0 || json["class"] == 1;
      ExpectAxis(data, "f2", std::stoi(procs.at("SI")), Number(procs, "SW_P"), Carrier(procs), acqus.at("NUC1"), where);
      ExpectAxis(data, "f1", std::stoi(proc2s.at("SI")), Number(proc2s, "SW_P"), Carrier(homo ? procs : proc2s),
                 (homo ? acqus : acqu2s).at("NUC1"), where);
    }
  }
  EXPECT_EQ(sets, 39);  // fid, ser, 1r and 2rr files of bruker-data-test 1.0.0
}

// The four planes of the edited HSQC, one submatrix each: the file's first value is the corner of
// the highest frequencies, so plane[column, row] is the file's value at (N1-1-row, N2-1-column).
TEST(BrukerCorpus, HsqcQuadrantsGoToTheirPlanesValueForValue) {
  const fs::path folder = CorpusPath("bruker/cyclosporin_hsqc/3/pdata/1");
  model::Spectrum2D s;
  ScriptedPrompt prompt;
  const auto r = Read(folder / "2rr", s, prompt);
  ASSERT_TRUE(r.outcome.ok()) << r.outcome.message.text;
  EXPECT_EQ(r.words.pulseModeClass, model::VPH_HETERO);
  EXPECT_EQ(r.words.realOnly, 0);
  const int n2 = s.axis[model::F2].Point, n1 = s.axis[model::F1].Point;
  ASSERT_EQ(n2, 1024);
  ASSERT_EQ(n1, 1024);
  for (const auto& [file, plane] : {std::pair{"2rr", &s.RR}, {"2ri", &s.RI}, {"2ir", &s.IR}, {"2ii", &s.II}}) {
    std::ifstream in(folder / file, std::ios::binary);
    std::vector<std::int32_t> values(static_cast<std::size_t>(n1) * n2);
    in.read(reinterpret_cast<char*>(values.data()), static_cast<std::streamsize>(values.size() * 4));
    ASSERT_TRUE(in) << file;
    int mismatches = 0;
    for (int row = 0; row < n1; ++row)
      for (int column = 0; column < n2; ++column)
        mismatches += plane->at(column, row) !=
                      static_cast<float>(values[static_cast<std::size_t>(n1 - 1 - row) * n2 + (n2 - 1 - column)]);
    EXPECT_EQ(mismatches, 0) << file;
  }
}

// export writes our RR, low frequencies first: the vendor's matrix with both axes turned, value for
// value, for one submatrix (HSQC) and for 16 x 16 submatrices of 128 points (COSY with NUS).
TEST(BrukerCorpus, ExportedRealPlaneIsTheVendorsMatrixTurned) {
  TempFolder out;
  for (const char* set : {"cyclosporin_hsqc/3", "cosy-nus/2"}) {
    const fs::path folder = CorpusPath(std::string("bruker/") + set + "/pdata/1");
    const Keys procs = ReadKeys(folder / "procs"), proc2s = ReadKeys(folder / "proc2s");
    const int n2 = std::stoi(procs.at("SI")), n1 = std::stoi(proc2s.at("SI"));
    const auto vendor = VendorMatrix(folder / "2rr", n2, n1, std::stoi(procs.at("XDIM")), std::stoi(proc2s.at("XDIM")));
    const fs::path npy = out / "rr.npy";
    const CliRun run = RunCli("export " + Quoted(folder.string()) + " --plane RR -o " + Quoted(npy.string()));
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    const auto ours = NpyData(npy);
    ASSERT_EQ(ours.size(), vendor.size()) << set;
    int mismatches = 0;
    for (int row = 0; row < n1; ++row)
      for (int column = 0; column < n2; ++column)
        mismatches += ours[static_cast<std::size_t>(row) * n2 + column] !=
                      vendor[static_cast<std::size_t>(n1 - 1 - row) * n2 + (n2 - 1 - column)];
    EXPECT_EQ(mismatches, 0) << set;
  }
}

}  // namespace velk::test
