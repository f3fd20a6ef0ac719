#include "document/inadequate_commands.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include "operations/inadequate.h"

namespace velk::document {
namespace {

using model::F1;
using model::F2;

// The file: a tag, the sizes and the F1 values that the extension changes, then the four planes
// row by row, little-endian as the machine is.
constexpr char kTag[8] = {'T', 'E', 'M', 'P', '_', '3', 0, 0};

struct Header {
  char tag[8];
  std::int32_t columns, rows;
  float frequency, reference;
  std::int32_t refPoint;
  std::int16_t full, spare;
  double ppmStep, ppmFirst;
};

std::array<model::Plane*, 4> PlanesOf(model::Spectrum2D& s) { return {&s.RR, &s.IR, &s.RI, &s.II}; }

bool WritePlanes(model::Spectrum2D& s, const std::filesystem::path& file) {
  Header h{};
  std::memcpy(h.tag, kTag, sizeof kTag);
  h.columns = s.axis[F2].Point;
  h.rows = s.axis[F1].Point;
  h.frequency = s.axis[F1].Frequency;
  h.reference = s.axis[F1].Reference;
  h.refPoint = s.axis[F1].RefPoint;
  h.full = s.InadequateFull;
  h.ppmStep = s.extras[F1].ppmStep;
  h.ppmFirst = s.extras[F1].ppmFirst;
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(&h), sizeof h);
  for (model::Plane* plane : PlanesOf(s))
    for (std::int32_t r = 0; r < h.rows; ++r)
      out.write(reinterpret_cast<const char*>(plane->row(r).data()), sizeof(float) * h.columns);
  return static_cast<bool>(out.flush());
}

bool ReadPlanes(model::Spectrum2D& s, const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  Header h;
  if (bytes.size() < sizeof h) return false;
  std::memcpy(&h, bytes.data(), sizeof h);
  if (std::memcmp(h.tag, kTag, sizeof kTag) != 0 || h.columns < 1 || h.rows < 1 || h.columns > model::kMaxAxisPoints ||
      h.rows > model::kMaxAxisPoints)
    return false;
  const std::size_t planeBytes = sizeof(float) * static_cast<std::size_t>(h.columns) * h.rows;
  if (bytes.size() != sizeof h + 4 * planeBytes) return false;
  // The planes are made beside the present ones, so that a failure leaves those.
  model::Spectrum2D fresh;
  if (model::AllocateSpectrum2D(fresh, h.columns, h.rows) != 0) return false;
  const char* at = bytes.data() + sizeof h;
  const auto freshPlanes = PlanesOf(fresh), planes = PlanesOf(s);
  for (int i = 0; i < 4; ++i) {
    for (std::int32_t r = 0; r < h.rows; ++r, at += sizeof(float) * h.columns)
      std::memcpy(freshPlanes[i]->row(r).data(), at, sizeof(float) * h.columns);
    *planes[i] = std::move(*freshPlanes[i]);
  }
  s.ppmF1 = std::move(fresh.ppmF1);
  s.ppmF2 = std::move(fresh.ppmF2);
  s.axis[F1].Point = h.rows;
  s.axis[F1].Frequency = h.frequency;
  s.axis[F1].Reference = h.reference;
  s.axis[F1].RefPoint = h.refPoint;
  s.InadequateFull = h.full;
  s.extras[F1].ppmStep = h.ppmStep;
  s.extras[F1].ppmFirst = h.ppmFirst;
  model::RebuildPpmTables(s);
  return true;
}

}  // namespace

platform::Outcome ExtendFoldedDataOf(Document& d, const std::filesystem::path& workFolder) {
  model::Spectrum2D& s = d.spectrum;
  if (s.InadequateMode != 1 || s.InadequateFull != 0) return {1, {}};
  const std::filesystem::path file = workFolder / kInadequateUndoFile;
  if (!WritePlanes(s, file))
    return {
        -1,
        {"File Write Error", file.string() + ": cannot be written", platform::Buttons::Ok, platform::Icon::Warning}};
  UndoRecord record;
  record.Kind = kUndoInadequateExtension;
  record.FileName = file;
  record.Peaks = s.peaks;
  const platform::Outcome out = operations::ExtendFoldedData(s, d.view);
  if (!out.ok()) return out;
  PushUndo(d.undo, std::move(record));
  d.view.ContourDirty = true;
  return out;
}

bool UndoInadequateExtension(Document& d) {
  const UndoRecord* top = TopUndo(d.undo);
  if (!top || top->Kind != kUndoInadequateExtension || !ReadPlanes(d.spectrum, top->FileName)) return false;
  d.spectrum.peaks = top->Peaks;
  d.view.ViewF1Start = d.view.ViewF1End;  // the whole F1 axis again
  display::Check_Start_End(d.view, d.spectrum.ppmF2, d.spectrum.ppmF1, d.spectrum.axis[F2].Point,
                           d.spectrum.axis[F1].Point);
  std::error_code ignored;
  std::filesystem::remove(top->FileName, ignored);
  PopUndo(d.undo);
  d.view.ContourDirty = true;
  return true;
}

}  // namespace velk::document
