// ReadData2DDelta: two-dimensional Delta files, FIDs and spectra, stored in 32 x 32 submatrices.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "formats/fid_scaling.h"
#include "formats/jeol/common.h"
#include "formats/jeol/messages.h"

namespace velk::formats::jeol {
namespace {


constexpr std::int32_t kBlock = 32;

// The sections of a file follow one another with X varying fastest: X real / Y real, X imaginary
// / Y real, X real / Y imaginary, X imaginary / Y imaginary. In our planes the first letter is the
// F2 (X) part: RR, IR, RI, II.
std::array<model::Plane*, 4> PlanesInFileOrder(model::Spectrum2D& s) { return {&s.RR, &s.IR, &s.RI, &s.II}; }

struct Layout {
  std::int32_t f2 = 0, f1 = 0;
  std::int32_t blocksF2 = 0, blocksF1 = 0;
  std::uint64_t sectionElements = 0;
  int sections = 0;
};

// How many sections the set has: the class and the domain ask for some, the data length may hold
// fewer. Phase-sensitive sets have four; absolute-value classes (1, 4) two; spectra of the classes
// 1, 2 and 4 only their real plane.
int WantedSections(bool isSpectrum, int pulseModeClass, const DeltaHeader& h, std::uint64_t sectionBytes) {
  const bool absolute = pulseModeClass == model::V_HOMO || pulseModeClass == model::V_HETERO;
  if (!isSpectrum) return absolute ? 2 : 4;
  if (absolute || pulseModeClass == model::VPH_HMBC) return 1;
  return h.dataLength >= 4 * sectionBytes ? 4 : 1;
}

bool ReadSections(const DeltaFile& file, const Layout& l, bool isSpectrum, model::Spectrum2D& s,
                  platform::Progress& progress) {
  const DeltaHeader& h = file.header;
  const std::size_t width = ElementWidth(h.elementType);
  const auto planes = PlanesInFileOrder(s);
  std::array<float, kBlock> line{};
  std::uint64_t offset = h.dataStart;
  const std::int64_t totalRows = static_cast<std::int64_t>(l.sections) * l.blocksF1;
  for (int section = 0; section < l.sections; ++section) {
    model::Plane& plane = *planes[section];
    for (std::int32_t bi = 0; bi < l.blocksF1; ++bi) {
      if (!progress.Step(static_cast<std::int64_t>(section) * l.blocksF1 + bi, totalRows)) return false;
      for (std::int32_t bj = 0; bj < l.blocksF2; ++bj) {
        for (std::int32_t i = 0; i < kBlock; ++i, offset += kBlock * width) {
          if (!isSpectrum) {
            const auto target = plane.row(i + bi * kBlock).subspan(static_cast<std::size_t>(bj) * kBlock, kBlock);
            if (!DecodeElements(file.bytes, offset, kBlock, h.elementType, h.dataOrder, target)) return false;
            continue;
          }
          if (!DecodeElements(file.bytes, offset, kBlock, h.elementType, h.dataOrder, line)) return false;
          // Spectra are stored from the high-frequency corner: both axes are reversed.
          const std::int32_t row = l.f1 - 1 - i - bi * kBlock;
          for (std::int32_t j = 0; j < kBlock; ++j) plane.at(l.f2 - 1 - j - bj * kBlock, row) = line[j];
        }
      }
    }
  }
  return true;
}

// The baseline of the FID on reading: each row loses the mean of its last 20 %. The running sum is
// kept as the text of its 15 significant digits after every addition, as the reader always did.
void SubtractRowTails(model::Plane& plane, std::int32_t points, std::int32_t rows) {
  const std::int32_t first = static_cast<std::int32_t>(std::nearbyint(points * 0.8));
  if (first >= points) return;
  char text[32];
  for (std::int32_t r = 0; r < rows; ++r) {
    const auto row = plane.row(r);
    double sum = 0;
    for (std::int32_t i = first; i < points; ++i) {
      std::snprintf(text, sizeof text, "%.15g", sum + row[i]);
      sum = std::strtod(text, nullptr);
    }
    const double mean = sum / (points - first);
    for (std::int32_t i = 0; i < points; ++i) row[i] = static_cast<float>(row[i] - mean);
  }
}

void FlipRows(model::Plane& plane, std::int32_t rows) {
  for (std::int32_t r = 0; r < rows / 2; ++r) std::swap_ranges(plane.row(r).begin(), plane.row(r).end(),
                                                               plane.row(rows - 1 - r).begin());
}

// A FID axis is kept at a power of two (the transforms need one), its acquired points beside it;
// its reference is the carrier's offset at the centre point.
void FillAxis(const DeltaAxis& d, const AxisWidth& w, std::int32_t points, bool isSpectrum, model::AxisInfo& axis,
              model::AxisExtras& extras) {
  axis.Point = isSpectrum ? points : PaddedFidSize(points);
  axis.Frequency = static_cast<float>(w.sweepHz);
  axis.Resolution = w.hzPerPoint;
  axis.Reference = static_cast<float>(d.offsetPpm);
  axis.RefPoint = isSpectrum ? w.refIndex : static_cast<std::int32_t>(std::lrint(axis.Point / 2.0));
  extras.nucleus = d.nucleus;
  extras.absFreqCenter = d.frequencyMHz;
  extras.absFreq0ppm = SpectrumFrequency(w, points, d.frequencyMHz, d.offsetPpm);
  extras.ppmStep = extras.absFreq0ppm != 0 ? w.hzPerPoint / extras.absFreq0ppm : 0;
  extras.ppmFirst = d.offsetPpm - axis.RefPoint * extras.ppmStep;
  extras.fidPoints = isSpectrum ? 0 : points;
  extras.adMode = 0;  // the instruments sample both channels at once ("Dual AD")
}

}  // namespace

platform::Outcome ReadData2DDelta(const std::filesystem::path& path, model::Spectrum2D& spectrum,
                                  model::ReadContext& context, const DeltaOptions& options) {
  DeltaFile file;
  if (platform::Outcome loaded = LoadDeltaFile(path, file, kInvalid2DData); !loaded.ok()) return loaded;
  const DeltaHeader& h = file.header;
  const platform::Outcome invalid{1, DataError(kInvalid2DData)};
  if (h.dimensions != 2) return invalid;
  Layout l{h.points[kX], h.points[kY]};
  if (l.f2 > model::kMaxAxisPoints || l.f1 > model::kMaxAxisPoints) return {1, DataError(kTooLargeData)};
  if (l.f2 < kBlock || l.f1 < kBlock) return invalid;

  const bool isSpectrum = IsSpectrumDomain(h, context.prompt);
  DeltaSettings settings = SettingsFromHeader(h);
  std::array<AxisExtent, 2> extent;
  for (int a : {kX, kY}) extent[a] = ConvertAxis(h, a, isSpectrum, settings.axis[a].frequencyMHz, settings.axis[a]);
  auto s = std::make_unique<model::Spectrum2D>();
  ApplyDeltaRecords(file.records, true, settings, s->params);
  DeltaAxis& x = settings.axis[kX];
  DeltaAxis& y = settings.axis[kY];
  if (x.frequencyMHz == 0 || y.frequencyMHz == 0) return invalid;

  std::array<AxisWidth, 2> w;
  if (isSpectrum) {
    // A ppm axis steps over points - 1, a Hz axis over points.
    const auto steps = [&](int a, std::int32_t n) { return extent[a].hertz ? n : n - 1; };
    if (!WidthOfSpectrumAxis(extent[kX], x, l.f2, steps(kX, l.f2), w[kX]) ||
        !WidthOfSpectrumAxis(extent[kY], y, l.f1, steps(kY, l.f1), w[kY]))
      return invalid;
    w[kY].refIndex = 0;  // F1 is referred to its stop value at point 0
    y.offsetPpm = extent[kY].stop;
  } else if (!WidthOfFidAxis(extent[kX], x, l.f2, w[kX]) || !WidthOfFidAxis(extent[kY], y, l.f1, w[kY])) {
    return invalid;
  }

  l.blocksF2 = l.f2 / kBlock;
  l.blocksF1 = l.f1 / kBlock;
  l.sectionElements = static_cast<std::uint64_t>(l.blocksF2) * l.blocksF1 * kBlock * kBlock;
  const std::uint64_t sectionBytes = l.sectionElements * ElementWidth(h.elementType);
  const int available = static_cast<int>(std::min<std::uint64_t>(4, h.dataLength / sectionBytes));
  l.sections = std::min(WantedSections(isSpectrum, context.words.pulseModeClass, h, sectionBytes), available);
  if (l.sections < 1) return invalid;
  const std::int32_t columns = isSpectrum ? l.f2 : PaddedFidSize(l.f2);
  const std::int32_t rows = isSpectrum ? l.f1 : PaddedFidSize(l.f1);
  if (model::AllocateSpectrum2D(*s, columns, rows) != 0) return {1, SizeError()};
  if (!ReadSections(file, l, isSpectrum, *s, context.progress)) return {1, {}};

  const auto planes = PlanesInFileOrder(*s);
  if (!isSpectrum && options.fidBaseline)
    for (int i = 0; i < l.sections; ++i) SubtractRowTails(*planes[i], l.f2, l.f1);
  if (settings.flipF1)
    for (int i = 0; i < l.sections; ++i) FlipRows(*planes[i], l.f1);

  // In a heteronuclear set the second channel is the irradiated one: the records name it so.
  if (s->params.IRNUC.empty() && y.nucleus != x.nucleus) {
    s->params.IRNUC = y.nucleus;
    if (s->params.IRFRQ == 0) s->params.IRFRQ = static_cast<float>(y.frequencyMHz);
  }
  FillCommonFields(path, file, settings, options, s->texts, s->comment, s->params);
  FillAxis(x, w[kX], l.f2, isSpectrum, s->axis[model::F2], s->extras[model::F2]);
  FillAxis(y, w[kY], l.f1, isSpectrum, s->axis[model::F1], s->extras[model::F1]);
  model::NmrParameters& p = s->params;
  p.POINT = s->axis[model::F2].Point;
  p.FREQU = static_cast<float>(w[kX].sweepHz);
  p.RESOL = w[kX].hzPerPoint;
  p.ACQTM = static_cast<float>(w[kX].acquisitionTime);
  model::RepairAfterRead2D(*s, context.words.pulseModeClass);
  model::RebuildPpmTables(*s);
  spectrum = std::move(*s);
  context.words.realOnly = l.sections == 1 ? 1 : 0;
  if (context.log) context.log("Read", path.string());
  return {};
}

}  // namespace velk::formats::jeol
