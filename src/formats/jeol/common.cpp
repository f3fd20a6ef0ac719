#include "formats/jeol/common.h"

#include <cmath>

#include "core/bytes.h"
#include "formats/damage.h"
#include "formats/jeol/messages.h"
#include "model/data_type.h"

namespace velk::formats::jeol {

platform::Outcome LoadDeltaFile(const std::filesystem::path& path, DeltaFile& file, const char* invalidText) {
  auto bytes = core::ReadWholeFile(path.string());
  if (!bytes) return {-1, {kDataErrorTitle, "The file cannot be read: " + path.string()}};
  file.bytes = std::move(*bytes);
  if (file.bytes.empty()) return {-1, {kDataErrorTitle, kEmptyFile}};
  auto header = ReadDeltaHeader(file.bytes);
  if (!header)
    return {-1, {kDataErrorTitle, "Not a JEOL Delta file (no \"JEOL.NMR\" mark): the file " + core::FirstBytes(file.bytes)}};
  file.header = *header;
  if (!SectionsFit(file.header, file.bytes.size()))
    return {1, DataError(std::string(invalidText) + ": " + SectionsFault(file.header, file.bytes.size()))};
  auto records = ReadDeltaRecords(file.bytes, file.header);
  if (!records) return {1, DataError(invalidText)};
  file.records = std::move(*records);
  return {};
}

int AskDataDomain(platform::Prompt& prompt) {
  return prompt.Choose(kDomainTitle, {kDomainFid, kDomainSpectrum}).value_or(0);
}

bool IsSpectrumDomain(const DeltaHeader& header, platform::Prompt& prompt) {
  switch (header.unit[kX].type) {
    case kUnitHertz: case kUnitPpm: return true;
    case kUnitSeconds: return false;
    default: return AskDataDomain(prompt) != 0;
  }
}

DeltaSettings SettingsFromHeader(const DeltaHeader& header) {
  DeltaSettings s;
  for (int a : {kX, kY}) {
    if (!header.nucleus[a].empty()) s.axis[a].nucleus = DeltaNucleus(header.nucleus[a]);
    s.axis[a].frequencyMHz = header.baseFrequency[a];
    s.axis[a].points = header.points[a];
  }
  if (s.axis[kY].frequencyMHz == 0) s.axis[kY].frequencyMHz = 1.0;
  return s;
}

AxisExtent ConvertAxis(const DeltaHeader& header, int axis, bool spectrum, double frequencyMHz, DeltaAxis& settings) {
  AxisExtent e;
  const Unit unit = header.unit[axis];
  e.startRaw = header.start[axis];
  e.stopRaw = header.stop[axis];
  if (unit.type == kUnitHertz && spectrum) {
    e.hertz = true;
    e.startRaw = ToHertz(e.startRaw, unit.prefix);
    e.stopRaw = ToHertz(e.stopRaw, unit.prefix);
    const double divisor = frequencyMHz != 0 ? frequencyMHz : 1.0;
    e.start = e.startRaw / divisor;
    e.stop = e.stopRaw / divisor;
  } else if (unit.type == kUnitSeconds) {
    e.start = ToSeconds(e.startRaw, unit.prefix);
    e.stop = ToSeconds(e.stopRaw, unit.prefix);
  } else {
    e.start = e.startRaw;
    e.stop = e.stopRaw;
  }
  if (spectrum) settings.offsetPpm = e.stop;
  return e;
}

FrequencySplit SplitFrequency(double frequencyMHz) {
  const double base = std::nearbyint(frequencyMHz * 100.0) * 0.01;
  const double difference = frequencyMHz * 1e6 - base * 1e6;
  FrequencySplit split;
  split.coarseKHz = std::nearbyint(difference * 0.001);
  split.fineHz = static_cast<float>(difference - split.coarseKHz * 1000.0);
  return split;
}

bool WidthOfSpectrumAxis(const AxisExtent& e, const DeltaAxis& axis, std::int32_t points, std::int32_t stepPoints,
                         AxisWidth& w) {
  if (points < 1 || stepPoints < 1) return false;
  const double spanHz = e.hertz ? std::fabs(e.startRaw - e.stopRaw) : std::fabs(e.start - e.stop) * axis.frequencyMHz;
  w.sweepHz = axis.sweepHz != 0 ? axis.sweepHz : spanHz;
  w.hzPerPoint = spanHz / stepPoints;
  w.refIndex = static_cast<std::int32_t>(std::nearbyint(points / 2.0));
  if (w.sweepHz <= 0 && w.hzPerPoint <= 0) return false;
  if (w.sweepHz == 0) w.sweepHz = points * w.hzPerPoint;
  if (w.hzPerPoint <= 0) return false;
  w.acquisitionTime = 1.0 / w.hzPerPoint;
  return true;
}

bool WidthOfFidAxis(const AxisExtent& e, const DeltaAxis& axis, std::int32_t points, AxisWidth& w) {
  if (points < 2) return false;
  w.sweepHz = axis.sweepHz;
  w.hzPerPoint = axis.resolutionHz;
  // The offset of a FID is the carrier's: the reference point is the centre of its spectrum.
  w.refIndex = static_cast<std::int32_t>(std::nearbyint(points / 2.0));
  if (w.sweepHz != 0) {
    w.acquisitionTime = (points - 1) / w.sweepHz;
  } else if (e.stop > 0) {
    w.acquisitionTime = std::fabs(e.start - e.stop);
    w.sweepHz = (points - 1) / w.acquisitionTime;
  } else {
    return false;
  }
  if (w.sweepHz <= 0 && w.hzPerPoint <= 0) return false;
  if (w.sweepHz == 0 && w.hzPerPoint > 0) w.sweepHz = points * w.hzPerPoint;
  // A FID without a resolution record: the step of its spectrum is the width over the points.
  if (w.hzPerPoint <= 0 && w.sweepHz > 0) w.hzPerPoint = w.sweepHz / points;
  if (w.hzPerPoint <= 0 || w.sweepHz <= 0) return false;
  w.acquisitionTime = 1.0 / w.hzPerPoint;
  return true;
}

double SpectrumFrequency(const AxisWidth& w, std::int32_t points, double sfoMHz, double offsetPpm) {
  return ((static_cast<double>(w.refIndex) / points - 0.5) * w.sweepHz * 1e-6 + sfoMHz) / (offsetPpm * 1e-6 + 1.0);
}

void ApplyComments(const DeltaHeader& header, DeltaCommentMode mode, model::DescriptiveTexts& texts,
                   std::string& comment, model::NmrParameters& p) {
  texts.sampleId = header.sampleId;
  switch (mode) {
    case DeltaCommentMode::Separate: comment = header.comment; break;
    case DeltaCommentMode::SampleIdAsComment:
      comment = header.sampleId;
      p.EXPCM = header.comment;
      break;
    case DeltaCommentMode::Joined: comment = header.sampleId + "\r\n" + header.comment; break;
  }
  p.COMNT = comment;
}

void FillCommonFields(const std::filesystem::path& path, const DeltaFile& file, const DeltaSettings& settings,
                      const DeltaOptions& options, model::DescriptiveTexts& texts, std::string& comment,
                      model::NmrParameters& p) {
  texts.instrument = file.header.instrument.empty() ? "JEOL ECP" : file.header.instrument;
  texts.dataTypeText = std::string(model::TagsOf(model::kDelta).name);
  texts.fileName = path.string();
  texts.originalFileName = path.string();
  ApplyComments(file.header, options.comments, texts, comment, p);
  if (settings.dateSeconds) p.DATIM = DeltaDateText(*settings.dateSeconds);
  const DeltaAxis& x = settings.axis[kX];
  p.OBNUC = x.nucleus;
  p.OFR = static_cast<float>(x.frequencyMHz);
  const FrequencySplit observe = SplitFrequency(x.frequencyMHz);
  p.OBSET = static_cast<float>(observe.coarseKHz);
  p.OBFIN = observe.fineHz;
  const FrequencySplit irradiation = SplitFrequency(p.IRFRQ);
  p.IRSET = static_cast<float>(irradiation.coarseKHz);
  p.IRFIN = irradiation.fineHz;
}

}  // namespace velk::formats::jeol
