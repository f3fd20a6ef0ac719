#include "formats/varian/data.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/bytes.h"
#include "core/text.h"
#include "formats/damage.h"
#include "formats/elements.h"
#include "formats/read_result.h"
#include "formats/varian/messages.h"
#include "formats/varian/recipe.h"

namespace velk::formats::varian {
namespace {

namespace msg = messages;
using core::ByteOrder;

constexpr std::uint64_t kFileHeader = 32;
constexpr std::uint64_t kBlockHeader = 28;

struct Layout {
  std::int64_t blocks = 0, traces = 0, elements = 0, traceBytes = 0, blockStride = 0;
  ElementType type = ElementType::Int32;
};

// A data file in memory with its layout and the whole blocks it holds.
struct DataFile {
  std::vector<std::uint8_t> bytes;
  Layout layout;
  std::int64_t blocks = 0;
};

platform::Outcome Bad(std::string reason) { return Refused(msg::kTitle, std::move(reason)); }

// The element type: bit 3 of the status byte marks floats (the values 73, 201, 27 and 11 that
// instruments write all carry it); otherwise integers of the header's element width.
std::optional<Layout> ReadLayout(core::Bytes bytes) {
  const auto word = [&](std::uint64_t at) { return core::Decode<std::int32_t>(bytes, at, ByteOrder::Big); };
  const auto blocks = word(0), traces = word(4), elements = word(8), elementBytes = word(12), traceBytes = word(16),
             blockBytes = word(20);
  const auto status = core::Decode<std::uint8_t>(bytes, 27, ByteOrder::Big);
  if (!blocks || !traces || !elements || !elementBytes || !traceBytes || !blockBytes || !status) return std::nullopt;
  Layout l;
  l.type = (*status & 0x08) ? ElementType::Float32 : *elementBytes == 2 ? ElementType::Int16 : ElementType::Int32;
  l.blocks = std::max<std::int64_t>(*blocks, 1);
  l.traces = std::max<std::int64_t>(*traces, 1);
  l.elements = *elements;
  l.traceBytes = *traceBytes;
  if (l.elements < 1 || l.traceBytes < l.elements * static_cast<std::int64_t>(ElementWidth(l.type))) return std::nullopt;
  // A block is its header and its traces; a header that says otherwise is not trusted.
  l.blockStride = std::max<std::int64_t>(*blockBytes, l.traces * l.traceBytes + kBlockHeader);
  return l;
}

// How many whole blocks the file holds (a stopped acquisition leaves fewer than announced).
std::int64_t BlocksPresent(core::Bytes bytes, const Layout& l) {
  const auto size = static_cast<std::int64_t>(bytes.size());
  const std::int64_t firstEnd = static_cast<std::int64_t>(kFileHeader + kBlockHeader) + l.traces * l.traceBytes;
  if (size < firstEnd) return 0;
  return std::min(l.blocks, (size - firstEnd) / l.blockStride + 1);
}

// The file, refused when it is empty, shorter than its header, of no sensible layout or without
// one whole block.
platform::Outcome Load(const std::filesystem::path& file, DataFile& data) {
  auto bytes = core::ReadWholeFile(file.string());
  if (!bytes) return Bad(msg::kCannotRead);
  data.bytes = std::move(*bytes);
  const std::uint64_t size = data.bytes.size();
  if (size == 0) return Bad(kEmptyFile);
  if (size < kFileHeader) return Bad(ShorterThanHeader(size, kFileHeader));
  const auto layout = ReadLayout(data.bytes);
  if (!layout) return Bad(std::string(msg::kBadHeader) + ": it " + core::FirstBytes(data.bytes, 28));
  data.layout = *layout;
  data.blocks = BlocksPresent(data.bytes, data.layout);
  if (data.blocks < 1)
    return Bad(TruncatedAt(size, kFileHeader + kBlockHeader +
                                     static_cast<std::uint64_t>(layout->traces * layout->traceBytes)));
  return {};
}

// Every trace that BlocksPresent counts lies inside the file.
void DecodeTrace(const DataFile& f, std::int64_t block, std::int64_t trace, std::vector<float>& out) {
  const Layout& l = f.layout;
  out.assign(static_cast<std::size_t>(l.elements), 0.0f);
  const std::uint64_t at = kFileHeader + static_cast<std::uint64_t>(block * l.blockStride) + kBlockHeader +
                           static_cast<std::uint64_t>(trace * l.traceBytes);
  DecodeElements(f.bytes, at, out.size(), l.type, ByteOrder::Big, out);
}

std::int32_t PowerOfTwoAtLeast(std::int64_t n) {
  std::int64_t size = 1;
  while (size < n) size *= 2;
  return static_cast<std::int32_t>(size);
}

// Varian gives the reference line as rfp (its shift in Hz from 0 ppm) lying rfl Hz above the
// low-frequency edge of the spectrum, which is index 0 here. Reference is that shift in ppm and
// RefPoint its index; the ppm axis runs up from (rfp - rfl) at index 0.
struct Reference {
  float ppm = 0;
  std::int32_t point = 0;
  double ppmFirst = 0, ppmStep = 0;
};

Reference ReferenceOf(double rfl, double rfp, double width, double mhz, std::int32_t points) {
  Reference r;
  if (!(mhz > 0) || points < 1) return r;
  const double hzPerPoint = width / points;
  r.ppm = static_cast<float>(rfp / mhz);
  r.point = hzPerPoint > 0 ? static_cast<std::int32_t>(std::nearbyint(std::clamp(rfl / hzPerPoint, -1e9, 1e9))) : 0;
  r.ppmFirst = (rfp - rfl) / mhz;
  r.ppmStep = hzPerPoint / mhz;
  return r;
}

void SetAxis2D(model::Spectrum2D& s, int axis, std::int32_t points, double rfl, double rfp) {
  model::AxisInfo& info = s.axis[axis];
  model::AxisExtras& extras = s.extras[axis];
  info.Point = points;
  info.Resolution = points > 0 ? info.Frequency / points : 0;
  info.window.BF = static_cast<float>(info.Resolution / 2);
  // Shifts are counted on the 0 ppm frequency where the parameters give one (reffrq1 of F1).
  if (!(extras.absFreq0ppm > 0)) extras.absFreq0ppm = extras.absFreqCenter;
  const Reference r = ReferenceOf(rfl, rfp, info.Frequency, extras.absFreq0ppm, points);
  info.Reference = r.ppm;
  info.RefPoint = r.point;
  extras.ppmFirst = r.ppmFirst;
  extras.ppmStep = r.ppmStep;
}

platform::Outcome Allocate2D(model::Spectrum2D& s, std::int64_t columns, std::int64_t rows) {
  if (columns < 1 || rows < 1) return Bad(msg::kNoPoints);
  if (columns > model::kMaxAxisPoints || rows > model::kMaxAxisPoints || columns * rows > 64 * 1048576)
    return Bad(msg::kTooLarge);
  if (model::AllocateSpectrum2D(s, static_cast<std::int32_t>(columns), static_cast<std::int32_t>(rows)) != 0)
    return Bad(msg::kDataSize);
  return {};
}

// Processed files hold the spectrum from its high-frequency end: it is turned so that index 0
// is the low-frequency end. "data" has two values a point, "phasefile" one.
int ValuesPerPoint(const std::filesystem::path& file) {
  return core::ToUpper(file.filename().string()).ends_with("DATA") ? 2 : 1;
}

}  // namespace

platform::Outcome ReadDataVarian(const std::filesystem::path& file, const VarianParameters& p, model::Spectrum1D& s) {
  return ReadIntoFresh(s, msg::kTitle, [&](model::Spectrum1D& out) {
    DataFile f;
    if (platform::Outcome o = Load(file, f); !o.ok()) return o;
    const std::int64_t n = f.layout.elements / 2;
    if (n < 1) return Bad(msg::kNoPoints);
    if (n > 16 * 1048576) return Bad(msg::kTooLarge);
    // Arrayed 1D sets keep their first spectrum's FID.
    std::vector<float> trace;
    DecodeTrace(f, 0, 0, trace);
    ReadParaVarian(p, out);
    const std::int32_t points = PowerOfTwoAtLeast(n);
    if (model::AllocateSpectrum1D(out, points) != 0) return Bad(msg::kDataSize);
    for (std::int64_t i = 0; i < n; ++i) {
      out.re[static_cast<std::size_t>(i)] = trace[static_cast<std::size_t>(2 * i)];
      out.im[static_cast<std::size_t>(i)] = trace[static_cast<std::size_t>(2 * i + 1)];
    }
    out.params.POINT = points;
    out.params.RESOL = out.params.FREQU / points;
    out.params.ACQTM = out.params.FREQU > 0 ? static_cast<float>(n / out.params.FREQU) : 0;
    out.texts.fileName = file.filename().string();
    out.texts.originalFileName = file.string();
    return platform::Outcome{};
  });
}

platform::Outcome ReadDataVarianProc(const std::filesystem::path& file, const VarianParameters& p,
                                     model::Spectrum1D& s) {
  return ReadIntoFresh(s, msg::kTitle, [&](model::Spectrum1D& out) {
    DataFile f;
    if (platform::Outcome o = Load(file, f); !o.ok()) return o;
    const int perPoint = ValuesPerPoint(file);
    const std::int64_t n = f.layout.elements / perPoint;
    if (n < 1) return Bad(msg::kNoPoints);
    if (n > 16 * 1048576) return Bad(msg::kTooLarge);
    std::vector<float> trace;
    DecodeTrace(f, 0, 0, trace);
    ReadParaVarian(p, out);
    const auto points = static_cast<std::int32_t>(n);
    if (model::AllocateSpectrum1D(out, points) != 0) return Bad(msg::kDataSize);
    for (std::int64_t i = 0; i < n; ++i) {
      const auto from = static_cast<std::size_t>((n - 1 - i) * perPoint);
      out.re[static_cast<std::size_t>(i)] = trace[from];
      if (perPoint == 2) out.im[static_cast<std::size_t>(i)] = trace[from + 1];
    }
    out.params.POINT = points;
    out.params.RESOL = out.params.FREQU / points;
    const Reference r = ReferenceOf(VarianNumber(p, "RFL"), VarianNumber(p, "RFP"), out.params.FREQU, out.params.OFR, points);
    out.params.SMEXR = r.ppm;
    out.params.SMTMS = r.point;
    for (std::int32_t i = 0; i < points; ++i) out.axisPpm[i] = r.ppmFirst + i * r.ppmStep;
    out.axisStep = r.ppmStep;
    out.axisFirst = static_cast<float>(r.ppmFirst);
    out.texts.fileName = file.filename().string();
    out.texts.originalFileName = file.string();
    return platform::Outcome{};
  });
}

platform::Outcome ReadDataVarian2D(const std::filesystem::path& file, const VarianParameters& p, int pulseModeClass,
                                   model::Spectrum2D& s) {
  return ReadIntoFresh(s, msg::kTitle, [&](model::Spectrum2D& out) {
    DataFile f;
    if (platform::Outcome o = Load(file, f); !o.ok()) return o;
    const Layout& l = f.layout;
    const std::int64_t blocks = f.blocks;
    // Phase-sensitive classes hold two blocks per F1 increment.
    const bool pairs = pulseModeClass == model::VPH_HOMO || pulseModeClass == model::VPH_HMBC ||
                       pulseModeClass == model::VPH_HETERO;
    const std::int64_t rows = pairs ? blocks / 2 : blocks;
    if (const std::string why = NonUniformSamplingOf(p, file.parent_path()); !why.empty())
      return Bad(msg::NonUniformSampling(why));
    const std::int64_t columns = l.traceBytes / 2 / 4;
    const std::int64_t complexPoints = std::min(columns, l.elements / 2);
    if (rows < 1 || complexPoints < 1) return Bad(msg::kNoPoints);
    if (complexPoints > model::kMaxAxisPoints || rows > model::kMaxAxisPoints) return Bad(msg::kTooLarge);
    ReadParaVarian2D(p, out);
    const std::int32_t f2Points = PowerOfTwoAtLeast(complexPoints), f1Points = PowerOfTwoAtLeast(rows);
    if (platform::Outcome o = Allocate2D(out, f2Points, f1Points); !o.ok()) return o;
    std::vector<float> trace;
    for (std::int64_t r = 0; r < rows; ++r) {
      const auto row = static_cast<std::int32_t>(r);
      DecodeTrace(f, pairs ? 2 * r : r, 0, trace);
      for (std::int64_t c = 0; c < complexPoints; ++c) {
        out.RR.at(static_cast<std::int32_t>(c), row) = trace[static_cast<std::size_t>(2 * c)];
        out.IR.at(static_cast<std::int32_t>(c), row) = trace[static_cast<std::size_t>(2 * c + 1)];
      }
      if (!pairs) continue;
      DecodeTrace(f, 2 * r + 1, 0, trace);
      for (std::int64_t c = 0; c < complexPoints; ++c) {
        out.RI.at(static_cast<std::int32_t>(c), row) = trace[static_cast<std::size_t>(2 * c)];
        out.II.at(static_cast<std::int32_t>(c), row) = trace[static_cast<std::size_t>(2 * c + 1)];
      }
    }
    out.extras[model::F2].fidPoints = static_cast<std::int32_t>(complexPoints);
    out.extras[model::F1].fidPoints = static_cast<std::int32_t>(rows);
    SetAxis2D(out, model::F2, f2Points, VarianNumber(p, "RFL"), VarianNumber(p, "RFP"));
    SetAxis2D(out, model::F1, f1Points, VarianNumber(p, "RFL1"), VarianNumber(p, "RFP1"));
    out.params.POINT = f2Points;
    out.params.RESOL = out.axis[model::F2].Resolution;
    const auto procpar = FindVarianParameterFile(file);
    out.vendor.recipe = VarianRecipe(p, f2Points, f1Points, procpar ? procpar->string() : file.string());
    model::RebuildPpmTables(out);
    model::RepairAfterRead2D(out, pulseModeClass);
    out.texts.fileName = file.filename().string();
    out.texts.originalFileName = file.string();
    return platform::Outcome{};
  });
}

platform::Outcome ReadDataVarianProc2D(const std::filesystem::path& file, const VarianParameters& p,
                                       model::Spectrum2D& s) {
  return ReadIntoFresh(s, msg::kTitle, [&](model::Spectrum2D& out) {
    DataFile f;
    if (platform::Outcome o = Load(file, f); !o.ok()) return o;
    const Layout& l = f.layout;
    const int perPoint = ValuesPerPoint(file);
    const std::int64_t rows = f.blocks * l.traces;
    const std::int64_t columns = l.elements / perPoint;
    ReadParaVarian2D(p, out);
    if (platform::Outcome o = Allocate2D(out, columns, rows); !o.ok()) return o;
    std::vector<float> trace;
    // Trace k (block k / T, trace k % T) is row k from the high-frequency end of F1.
    for (std::int64_t k = 0; k < rows; ++k) {
      DecodeTrace(f, k / l.traces, k % l.traces, trace);
      const auto row = static_cast<std::int32_t>(rows - 1 - k);
      for (std::int64_t c = 0; c < columns; ++c) {
        const auto column = static_cast<std::int32_t>(columns - 1 - c);
        out.RR.at(column, row) = trace[static_cast<std::size_t>(c * perPoint)];
        if (perPoint == 2) out.IR.at(column, row) = trace[static_cast<std::size_t>(c * perPoint + 1)];
      }
    }
    SetAxis2D(out, model::F2, static_cast<std::int32_t>(columns), VarianNumber(p, "RFL"), VarianNumber(p, "RFP"));
    SetAxis2D(out, model::F1, static_cast<std::int32_t>(rows), VarianNumber(p, "RFL1"), VarianNumber(p, "RFP1"));
    out.params.POINT = static_cast<std::int32_t>(columns);
    out.params.RESOL = out.axis[model::F2].Resolution;
    model::RebuildPpmTables(out);
    out.texts.fileName = file.filename().string();
    out.texts.originalFileName = file.string();
    return platform::Outcome{};
  });
}

}  // namespace velk::formats::varian
