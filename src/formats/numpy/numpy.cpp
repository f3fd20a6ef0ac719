#include "formats/numpy/numpy.h"

#include <bit>

#include <nlohmann/json.hpp>

#include "core/atomic_write.h"

namespace velk::formats::numpy {
namespace {

static_assert(std::endian::native == std::endian::little, "the .npy header says little-endian floats");

// Version 1.0: magic, version, header length, a Python dict padded with blanks to a multiple of
// 64 bytes and closed by a newline, then the values little-endian, C order.
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

const model::Plane& PlaneOf(const model::Spectrum2D& s, const std::string& name) {
  if (name == "RI") return s.RI;
  if (name == "IR") return s.IR;
  if (name == "II") return s.II;
  return s.RR;
}

}  // namespace

std::filesystem::path AxesFileOf(const std::filesystem::path& npy) {
  return std::filesystem::path(npy).replace_extension(".json");
}

platform::Outcome WritePlane(const std::filesystem::path& npy, const model::Spectrum2D& s, bool realOnly,
                             const std::string& name) {
  const std::int32_t rows = s.axis[model::F1].Point, columns = s.axis[model::F2].Point;
  const model::Plane& plane = PlaneOf(s, name);
  if (plane.data.empty() || rows < 1 || columns < 1 || plane.rows < rows || plane.stride < columns)
    return {1, {"", "the data set holds no data planes"}};
  if (realOnly && name != "RR") return {1, {"", "only the plane RR holds data in this data set"}};
  const platform::Outcome values = core::WriteAtomically(npy, [&](std::ostream& out) {
    out << NpyHeader(rows, columns);
    for (std::int32_t r = 0; r < rows; ++r)
      out.write(reinterpret_cast<const char*>(plane.row(r).data()), static_cast<std::streamsize>(columns * sizeof(float)));
    return true;
  });
  if (!values.ok()) return values;
  const nlohmann::json axes = {{"plane", name}, {"shape", {rows, columns}}, {"f2", AxisJson(s, model::F2)},
                               {"f1", AxisJson(s, model::F1)}};
  return core::WriteAtomically(AxesFileOf(npy), [&](std::ostream& out) { return static_cast<bool>(out << axes.dump(2) << "\n"); });
}

}  // namespace velk::formats::numpy
