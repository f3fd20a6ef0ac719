// The FID work file: the four planes as they stood before a zero fill or a run, so that a quit or
// a failed re-dimension can put them back. Private to one run of the program.
#include <algorithm>
#include <cstring>
#include <fstream>

#include "core/bytes.h"
#include "processing/sequence.h"

namespace velk::processing {
namespace {

constexpr char kMagic[8] = {'V', 'E', 'L', 'K', 'F', 'I', 'D', 'W'};
constexpr std::size_t kHeader = 8 + 4 * 4 + 2 * 8;

}  // namespace

int SaveFidWork(const std::filesystem::path& file, const model::Spectrum2D& s) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  if (!out) return -1;
  const std::int32_t sizes[4] = {s.RR.stride, s.RR.rows, s.axis[model::F2].Point, s.axis[model::F1].Point};
  out.write(kMagic, sizeof kMagic);
  const double resolutions[2] = {s.axis[model::F2].Resolution, s.axis[model::F1].Resolution};
  out.write(reinterpret_cast<const char*>(sizes), sizeof sizes);
  out.write(reinterpret_cast<const char*>(resolutions), sizeof resolutions);
  for (const model::Plane* p : {&s.RR, &s.IR, &s.RI, &s.II})
    out.write(reinterpret_cast<const char*>(p->data.data()), static_cast<std::streamsize>(p->data.size() * 4));
  return out ? 0 : -1;
}

int RestoreFidWork(const std::filesystem::path& file, model::Spectrum2D& s) {
  const auto bytes = core::ReadWholeFile(file.string());
  if (!bytes || bytes->size() < kHeader || !std::equal(kMagic, kMagic + 8, bytes->begin())) return -1;
  const core::Bytes view(*bytes);
  std::int32_t sizes[4];
  for (int k = 0; k < 4; ++k) sizes[k] = core::DecodeOr<std::int32_t>(view, 8 + 4 * k, core::ByteOrder::Little, -1);
  if (sizes[0] <= 0 || sizes[1] <= 0) return -1;
  const std::uint64_t planeBytes = std::uint64_t(sizes[0]) * std::uint64_t(sizes[1]) * 4;
  if (!core::Fits(view, kHeader, planeBytes * 4)) return -1;
  std::size_t offset = kHeader;
  for (model::Plane* p : {&s.RR, &s.IR, &s.RI, &s.II}) {
    p->stride = sizes[0];
    p->rows = sizes[1];
    p->data.resize(planeBytes / 4);
    std::memcpy(p->data.data(), view.data() + offset, planeBytes);
    offset += planeBytes;
  }
  s.ppmF2.assign(sizes[0], 0.0f);
  s.ppmF1.assign(sizes[1], 0.0f);
  s.axis[model::F2].Point = sizes[2];
  s.axis[model::F1].Point = sizes[3];
  s.axis[model::F2].Resolution = core::DecodeOr<double>(view, 24, core::ByteOrder::Little, 0.0);
  s.axis[model::F1].Resolution = core::DecodeOr<double>(view, 32, core::ByteOrder::Little, 0.0);
  return 0;
}

}  // namespace velk::processing
