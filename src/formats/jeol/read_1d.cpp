// ReadDataDelta: one-dimensional Delta files, FIDs and spectra.
#include <algorithm>
#include <cmath>
#include <memory>

#include "formats/fid_scaling.h"
#include "formats/jeol/common.h"
#include "formats/jeol/messages.h"

namespace velk::formats::jeol {
namespace {


// The whole data section decoded in file order; nothing when it does not fit the file.
std::optional<std::vector<float>> DecodeSection(const DeltaFile& file) {
  const DeltaHeader& h = file.header;
  const std::size_t count = h.dataLength / ElementWidth(h.elementType);
  std::vector<float> values;
  try {
    values.resize(count);
  } catch (const std::exception&) {
    return std::nullopt;
  }
  if (!DecodeElements(file.bytes, h.dataStart, count, h.elementType, h.dataOrder, values)) return std::nullopt;
  return values;
}

// The FID: the real half precedes the imaginary half.
bool FillFid(const std::vector<float>& values, model::Spectrum1D& s) {
  const std::size_t complexPoints = values.size() / 2;
  if (complexPoints < 1 || complexPoints > static_cast<std::size_t>(model::kMaxAxisPoints) ||
      model::AllocateSpectrum1D(s, PaddedFidSize(static_cast<std::int64_t>(complexPoints))) != 0)
    return false;
  std::copy_n(values.begin(), complexPoints, s.re.begin());
  std::copy_n(values.begin() + static_cast<std::ptrdiff_t>(complexPoints), complexPoints, s.im.begin());
  RemoveTailAndScale(std::span(s.re).first(complexPoints), std::span(s.im).first(complexPoints));
  return true;
}

// The spectrum, from high to low frequency in the file: reversed so index 0 is the low end. An
// imaginary section follows the real one when the data hold both.
bool FillSpectrum(const std::vector<float>& values, std::int32_t points, model::Spectrum1D& s) {
  const std::size_t n = static_cast<std::size_t>(points);
  if (values.size() < n || model::AllocateSpectrum1D(s, points) != 0) return false;
  std::reverse_copy(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(n), s.re.begin());
  if (values.size() >= 2 * n)
    std::reverse_copy(values.begin() + static_cast<std::ptrdiff_t>(n), values.begin() + static_cast<std::ptrdiff_t>(2 * n),
                      s.im.begin());
  return true;
}

void FillPpmAxis(const AxisExtent& e, const AxisWidth& w, double offsetPpm, model::Spectrum1D& s) {
  const std::int32_t n = s.params.POINT;
  const double step = std::fabs(e.start - e.stop) / n;
  for (std::int32_t i = 0; i < n; ++i) s.axisPpm[i] = (i - w.refIndex) * step + offsetPpm;
  s.axisStep = step;
  s.axisFirst = static_cast<float>(s.axisPpm[0]);
}

}  // namespace

platform::Outcome ReadDataDelta(const std::filesystem::path& path, model::Spectrum1D& spectrum,
                                model::ReadContext& context, const DeltaOptions& options) {
  DeltaFile file;
  if (platform::Outcome loaded = LoadDeltaFile(path, file, kInvalidData); !loaded.ok()) return loaded;
  const DeltaHeader& h = file.header;
  if (h.dimensions == 2) return {1, DataError(kTwoDData)};
  const platform::Outcome invalid{1, DataError(kInvalidData)};

  auto s = std::make_unique<model::Spectrum1D>();
  const bool isSpectrum = IsSpectrumDomain(h, context.prompt);
  DeltaSettings settings = SettingsFromHeader(h);
  DeltaAxis& x = settings.axis[kX];
  const AxisExtent extent = ConvertAxis(h, kX, isSpectrum, x.frequencyMHz, x);
  ApplyDeltaRecords(file.records, false, settings, s->params);

  const std::int32_t points = h.points[kX];
  if (points < 10 || x.frequencyMHz == 0 || points / 2 > model::kMaxAxisPoints) return invalid;
  AxisWidth width;
  const bool widthOk = isSpectrum ? WidthOfSpectrumAxis(extent, x, points, points, width)
                                  : WidthOfFidAxis(extent, x, points, width);
  if (!widthOk) return invalid;

  const auto values = DecodeSection(file);
  if (!values) return invalid;
  model::NmrParameters& p = s->params;
  // A spectrum has the header's points; a FID is kept at the power of two that holds the complex
  // points of its data, as every reader keeps a FID.
  p.POINT = isSpectrum ? points : PaddedFidSize(static_cast<std::int64_t>(values->size() / 2));
  if (!(isSpectrum ? FillSpectrum(*values, points, *s) : FillFid(*values, *s))) return {1, SizeError()};
  FillCommonFields(path, file, settings, options, s->texts, s->comment, p);
  p.FREQU = static_cast<float>(width.sweepHz);
  p.RESOL = width.hzPerPoint;
  p.ACQTM = static_cast<float>(width.acquisitionTime);
  p.SMEXR = static_cast<float>(x.offsetPpm);
  p.SMTMS = width.refIndex;
  if (isSpectrum) {
    FillPpmAxis(extent, width, x.offsetPpm, *s);
    p.OFR = static_cast<float>(SpectrumFrequency(width, points, x.frequencyMHz, x.offsetPpm));
  }
  spectrum = std::move(*s);
  if (context.log) context.log("Read", path.string());
  return {};
}

}  // namespace velk::formats::jeol
