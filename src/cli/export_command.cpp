// velk2d-cli export: one plane of a 2D data set as a NumPy .npy file (float32, rows F1 by columns
// F2, row 0 = F1 index 0) and a .json beside it that describes the two axes.
#include <cstring>
#include <fstream>
#include <iostream>

#include <nlohmann/json.hpp>

#include "cli/cli_prompt.h"
#include "cli/commands.h"
#include "cli/read_input.h"

namespace velk::cli {
namespace {

namespace fs = std::filesystem;

// The .npy format, version 1.0: magic, version, header length, a Python dict padded with blanks
// to a multiple of 64 bytes and closed by a newline, then the values little-endian, C order.
std::string NpyHeader(std::int32_t rows, std::int32_t columns) {
  std::string dict = "{'descr': '<f4', 'fortran_order': False, 'shape': (" + std::to_string(rows) + ", " +
                     std::to_string(columns) + "), }";
  const std::size_t fixed = 10;
  const std::size_t total = (fixed + dict.size() + 1 + 63) / 64 * 64;
  dict.append(total - fixed - dict.size() - 1, ' ');
  dict += '\n';
  std::string header = "\x93NUMPY";
  header += '\x01';
  header += '\x00';
  header += static_cast<char>(dict.size() & 0xFF);
  header += static_cast<char>(dict.size() >> 8);
  return header + dict;
}

nlohmann::json AxisJson(const model::Spectrum2D& s, int axis) {
  return {{"points", s.axis[axis].Point},
          {"ppm_first", s.extras[axis].ppmFirst},
          {"ppm_step", s.extras[axis].ppmStep},
          {"nucleus", s.extras[axis].nucleus},
          {"observe_mhz", s.extras[axis].absFreqCenter}};
}

// Writes to a temporary name first, so that a failure leaves any earlier file as it was.
bool WriteFile(const fs::path& file, const std::function<void(std::ofstream&)>& fill) {
  const fs::path temporary = fs::path(file).concat(".part");
  {
    std::ofstream out(temporary, std::ios::binary);
    if (!out) return false;
    fill(out);
    if (!out.flush()) return false;
  }
  std::error_code error;
  fs::rename(temporary, file, error);
  return !error;
}

struct ExportOptions {
  std::string in, out, plane = "RR";
};

const model::Plane& PlaneOf(const model::Spectrum2D& s, const std::string& name) {
  if (name == "RI") return s.RI;
  if (name == "IR") return s.IR;
  if (name == "II") return s.II;
  return s.RR;
}

int RunExport(const ExportOptions& o) {
  CliPrompt prompt;
  LoadedData data = LoadAnyFile(o.in, prompt);
  if (data.status != 0) {
    std::cerr << "velk2d-cli export: " << o.in << ": " << data.error << "\n";
    return data.status;
  }
  if (!data.twoD) {
    std::cerr << "velk2d-cli export: " << o.in << ": not a 2D data set\n";
    return 1;
  }
  const model::Spectrum2D& s = *data.twoD;
  const std::int32_t rows = s.axis[model::F1].Point, columns = s.axis[model::F2].Point;
  const model::Plane& plane = PlaneOf(s, o.plane);
  if (plane.data.empty() || plane.rows < rows || plane.stride < columns) {
    std::cerr << "velk2d-cli export: " << o.in << ": the file holds no data planes\n";
    return 1;
  }
  if (data.words.realOnly && o.plane != "RR") {
    std::cerr << "velk2d-cli export: " << o.in << ": only the plane RR holds data in this file\n";
    return 1;
  }
  const fs::path npy = o.out;
  const bool written = WriteFile(npy, [&](std::ofstream& out) {
    out << NpyHeader(rows, columns);
    for (std::int32_t r = 0; r < rows; ++r)
      out.write(reinterpret_cast<const char*>(plane.row(r).data()), static_cast<std::streamsize>(columns * sizeof(float)));
  });
  const nlohmann::json axes = {{"plane", o.plane}, {"shape", {rows, columns}}, {"f2", AxisJson(s, model::F2)},
                               {"f1", AxisJson(s, model::F1)}};
  const fs::path json = fs::path(npy).replace_extension(".json");
  if (!written || !WriteFile(json, [&](std::ofstream& out) { out << axes.dump(2) << "\n"; })) {
    std::cerr << "velk2d-cli export: " << o.out << ": could not be written\n";
    return 2;
  }
  std::cout << "wrote " << npy.string() << " and " << json.string() << "\n";
  return 0;
}

}  // namespace

void AddExportCommand(CLI::App& app, int& status) {
  static_assert(std::endian::native == std::endian::little, "the .npy header says little-endian floats");
  auto* command = app.add_subcommand("export", "Write one plane of a 2D data set as a NumPy .npy file with a .json of its axes");
  auto options = std::make_shared<ExportOptions>();
  command->add_option("IN", options->in, "a data file or a vendor's data folder")->required();
  command->add_option("-o,--output", options->out, "the .npy file to write; the .json goes beside it")->required();
  command->add_option("--plane", options->plane, "the plane: RR (real in F2 and F1), RI, IR or II")
      ->check(CLI::IsMember({"RR", "RI", "IR", "II"}));
  command->callback([options, &status] { status = RunExport(*options); });
}

}  // namespace velk::cli
