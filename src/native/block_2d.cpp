#include "native/block_2d.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "model/mode_string.h"
#include "native/file_layout.h"
#include "native/history.h"
#include "native/parameters_2d.h"
#include "native/sections.h"

namespace velk::native {
namespace {

using model::F1;
using model::F2;

// Offsets from the base, 16 bytes behind the section's address.
constexpr std::uint64_t kOrgFileEntry = 32, kParameterEntry = 40, kDataEntry = 48, kCommentEntry = 56,
                        kPeakEntry = 64, kRegionEntry = 80, kPrintSetEntry = 96, kHistoryEntry = 112,
                        kFileNameLength = 132, kSampleIdEntry = 152, kRtfEntry = 160, kFileNameAddress = 168,
                        kSampleIdNewEntry = 176;
constexpr std::uint64_t kDataAt = 3328;
constexpr std::size_t kOrgFileWidth = 256;
constexpr std::size_t kFileNameWidth = 255;
constexpr std::size_t kPrintSetBody = 256;  // floats at +16 .. +28, zeros, the closing long at +268
constexpr int kRegionRecords = 10;
constexpr std::uint64_t kRegionSize = 32;
constexpr std::uint64_t kPeaksAt = 48, kPeakSize = 32;

void WritePeaks(FileSink& sink, const model::PeakTable2D& table) {
  sink.Put(static_cast<std::int32_t>(table.peaks.size()));
  for (float value : table.thresholds) sink.Put(value);
  sink.Zeros(8);
  for (const model::Peak2D& peak : table.peaks) {
    sink.Put(peak.PosF2);
    sink.Put(peak.PointF2);
    sink.Put(peak.PosF1);
    sink.Put(peak.PointF1);
    sink.Put(peak.Height);
    sink.Zeros(12);
  }
}

model::PeakTable2D ReadPeaks(Bytes section) {
  model::PeakTable2D table;
  for (int i = 0; i < 5; ++i) table.thresholds[i] = Read<float>(section, 20 + 4 * i);
  if (!(table.thresholds[0] > 0)) table.thresholds[0] = 1;
  const std::int32_t count = ReadLong(section, 16);
  for (std::int32_t i = 0; i < std::min(count, model::kMaxPeaks2D); ++i) {
    const std::uint64_t at = kPeaksAt + static_cast<std::uint64_t>(i) * kPeakSize;
    if (!core::Fits(section, at, kPeakSize)) break;
    model::Peak2D peak;
    peak.PosF2 = Read<float>(section, at);
    peak.PointF2 = ReadLong(section, at + 4);
    peak.PosF1 = Read<float>(section, at + 8);
    peak.PointF1 = ReadLong(section, at + 12);
    peak.Height = Read<float>(section, at + 16);
    table.peaks.push_back(peak);
  }
  return table;
}

void WriteRegions(FileSink& sink, const std::array<model::DisplayRegion, 4>& regions) {
  for (const model::DisplayRegion& region : regions) {
    for (float bound : region.bounds) sink.Put(bound);
    sink.Put(region.state);
    sink.Zeros(14);
  }
  sink.Zeros((kRegionRecords - regions.size()) * kRegionSize);
}

void ReadRegions(Bytes section, std::array<model::DisplayRegion, 4>& regions) {
  for (std::size_t r = 0; r < regions.size(); ++r) {
    const std::uint64_t at = kTagWidth + r * kRegionSize;
    for (int i = 0; i < 4; ++i) regions[r].bounds[i] = Read<float>(section, at + 4 * i);
    regions[r].state = Read<std::int16_t>(section, at + 16);
  }
}

HistoryTexts HistoryOf(const model::Spectrum2D& s) { return {s.texts.fftUser, s.firstFftDate, s.history}; }

// Everything behind the planes, in file order; the entries go into the block's own table.
void WriteTail(FileSink& tail, MutableBytes table, const model::Spectrum2D& s, const std::string& fileName) {
  StoreEntry(table, kCommentEntry, WriteTextSection(tail, "%% COMMENT", s.comment));
  if (!s.commentRtf.empty()) StoreEntry(table, kRtfEntry, WriteTextSection(tail, "%% COMMENT RTF", s.commentRtf));
  StoreEntry(table, kSampleIdEntry, WriteTextSection(tail, "%% SAMPLE ID", s.texts.sampleIdOld));
  StoreEntry(table, kSampleIdNewEntry, WriteTextSection(tail, "%% SAMPLEID NEW", s.texts.sampleId));

  std::uint64_t at = BeginSection(tail, "%% PEAK PICK");
  WritePeaks(tail, s.peaks);
  StoreEntry(table, kPeakEntry, EndSection(tail, at));

  at = BeginSection(tail, "%% BUNKATSU");
  WriteRegions(tail, s.regions);
  StoreEntry(table, kRegionEntry, EndSection(tail, at));

  at = BeginSection(tail, "%% FILENAME");
  tail.Text(fileName, kFileNameWidth);
  const Entry name = EndSection(tail, at);
  Store(table, kFileNameAddress, name.address);
  Store(table, kFileNameLength, name.length);

  at = BeginSection(tail, "%% PRINT SET");
  std::vector<std::uint8_t> printSet = s.carried.printSet;
  printSet.resize(kPrintSetBody, 0);
  tail.Append(printSet);
  StoreEntry(table, kPrintSetEntry, EndSection(tail, at));

  tail.NextSection();
  at = tail.Position();
  WriteHistoryWithSummary(tail, HistoryOf(s), s.processing, kSummaryLines2D);
  StoreEntry(table, kHistoryEntry, EndSection(tail, at));

  BeginSection(tail, "%% END");
}

}  // namespace

Entry Write2DSection(FileSink& head, FileSink& tail, const model::Spectrum2D& s, const PlaneSet& planes,
                     const std::string& fileName) {
  const std::uint64_t address = WriteBlockOpening(head, k2DTag, planes.modeString, s.texts.originalFileName,
                                                  kOrgFileWidth, EncodeParameters2D(s));
  const std::uint64_t base = address + kTagWidth;
  head.Tag(planes.planes.size() == 4 ? "%% RR,RI,IR,II" : "%% RR");

  std::uint64_t planeBytes = 0;
  for (const auto& plane : planes.planes) planeBytes += plane.size_bytes();
  tail.base = head.Position() + planeBytes;
  tail.bytes.clear();

  MutableBytes table = head.At(base, kBlockTableEnd);
  StoreEntry(table, kOrgFileEntry, {static_cast<std::int32_t>(base + kOrgFileAt), static_cast<std::int32_t>(kOrgFileWidth)});
  StoreEntry(table, kParameterEntry, {static_cast<std::int32_t>(base + kParameterAt),
                                      static_cast<std::int32_t>(kParameterBlockSize)});
  StoreEntry(table, kDataEntry, {static_cast<std::int32_t>(base + kDataAt), static_cast<std::int32_t>(planeBytes)});
  WriteTail(tail, table, s, fileName);
  return {static_cast<std::int32_t>(address), static_cast<std::int32_t>(tail.Position() - address)};
}

namespace {

// The planes come from the mapped file in runs of about 4 MiB: on a cold file each run is read
// from the disk, so the bar moves and a quit is seen within a fraction of a second.
bool FillPlanes(Bytes data, model::Spectrum2D& s, std::size_t planeCount, platform::Progress& progress) {
  const std::int32_t columns = s.axis[F2].Point, rows = s.axis[F1].Point;
  const std::size_t rowBytes = static_cast<std::size_t>(columns) * sizeof(float);
  const std::int32_t run = static_cast<std::int32_t>(std::max<std::size_t>(1, (std::size_t{4} << 20) / rowBytes));
  const std::int64_t total = static_cast<std::int64_t>(planeCount) * rows;
  model::Plane* const order[4] = {&s.RR, &s.RI, &s.IR, &s.II};
  for (std::size_t k = 0; k < planeCount; ++k) {
    model::Plane& plane = *order[k];
    const std::uint8_t* source = data.data() + k * rowBytes * static_cast<std::size_t>(rows);
    for (std::int32_t from = 0; from < rows; from += run) {
      if (!progress.Step(static_cast<std::int64_t>(k) * rows + from, total)) return false;
      const std::int32_t to = std::min(rows, from + run);
      if (plane.stride == columns) {
        std::memcpy(plane.row(from).data(), source + from * rowBytes, rowBytes * static_cast<std::size_t>(to - from));
      } else {
        for (std::int32_t r = from; r < to; ++r) std::memcpy(plane.row(r).data(), source + r * rowBytes, rowBytes);
      }
    }
  }
  if constexpr (std::endian::native == std::endian::big) {
    for (std::size_t k = 0; k < planeCount; ++k)
      for (float& value : order[k]->data) value = core::SwapBytes(value);
  }
  return progress.Step(total, total);
}

// True when the planes are allocated for the record's point counts.
bool PlanesCover(const model::Spectrum2D& s) {
  const std::int32_t columns = std::max(s.axis[F2].Point, model::kMinAxisPoints);
  const std::int32_t rows = std::max(s.axis[F1].Point, model::kMinAxisPoints);
  for (const model::Plane* plane : {&s.RR, &s.RI, &s.IR, &s.II})
    if (plane->stride != columns || plane->rows != rows) return false;
  return true;
}

bool NamesANucleus(const std::string& name) { return !name.empty() && name != "OFF" && name != "NUL"; }

// The nucleus whose frequency stands in this ratio to the proton's, within half a percent.
std::string NucleusOfProtonRatio(double ratio) {
  static constexpr std::pair<double, const char*> kRatios[] = {
      {0.153506088, "2H"}, {0.251449530, "13C"}, {0.101329118, "15N"}, {0.940062227, "19F"}, {0.404807420, "31P"}};
  for (const auto& [known, name] : kRatios)
    if (std::fabs(ratio / known - 1.0) < 0.005) return name;
  return {};
}

// The file names no nucleus per axis. F2 is the observed nucleus; F1 is the same in homonuclear
// classes, else the irradiated one when the file names it, else the one that the ratio of the
// axes' 0 ppm frequencies points to (files converted from other formats leave IRNUC "OFF").
void SetNuclei(model::Spectrum2D& s, int pulseModeClass) {
  s.extras[F2].nucleus = s.params.OBNUC;
  std::string f1 = s.params.OBNUC;
  const bool homonuclear = pulseModeClass == model::VPH_HOMO || pulseModeClass == model::V_HOMO;
  if (!homonuclear && NamesANucleus(s.params.IRNUC)) {
    f1 = s.params.IRNUC;
  } else if (!homonuclear && s.params.OBNUC == "1H" && s.extras[F2].absFreq0ppm > 0) {
    const std::string byRatio = NucleusOfProtonRatio(s.extras[F1].absFreq0ppm / s.extras[F2].absFreq0ppm);
    if (!byRatio.empty()) f1 = byRatio;
  }
  s.extras[F1].nucleus = f1;
}

}  // namespace

Read2DResult Read2DSection(Bytes file, Entry entry, model::Spectrum2D& s, model::DataWords& words,
                           platform::Progress& progress) {
  const Block block{SectionOf(file, entry), static_cast<std::uint64_t>(entry.address)};
  const std::uint64_t base = kTagWidth;
  if (block.bytes.size() < base + kBlockTableEnd) return Read2DResult::Invalid;
  const Bytes parameters = block.Section(block.EntryAt(base + kParameterEntry));
  if (parameters.empty()) return Read2DResult::Invalid;
  DecodeParameters2D(parameters, s);
  const std::int32_t columns = s.axis[F2].Point, rows = s.axis[F1].Point;
  if (columns > model::kMaxAxisPoints || rows > model::kMaxAxisPoints) return Read2DResult::TooLarge;
  if (columns <= 0 || rows <= 0 || s.axis[F2].Frequency == 0 || s.axis[F1].Frequency == 0)
    return Read2DResult::Invalid;

  const model::ModeStringMeaning mode = model::ReadModeString(ReadText(block.bytes, base, kTagWidth));
  if (mode.classKnown) words.pulseModeClass = mode.pulseModeClass;
  words.realOnly = mode.realOnly ? 1 : 0;

  // The table length alone tells one plane from four.
  const Entry dataEntry = block.EntryAt(base + kDataEntry);
  const std::uint64_t planeBytes = static_cast<std::uint64_t>(columns) * static_cast<std::uint64_t>(rows) * 4;
  std::size_t planeCount = 0;
  if (static_cast<std::uint64_t>(std::max(dataEntry.length, 0)) == planeBytes) planeCount = 1;
  if (static_cast<std::uint64_t>(std::max(dataEntry.length, 0)) == 4 * planeBytes) planeCount = 4;
  // The data's length counts the planes only, from behind the tag.
  const Bytes data = dataEntry.address > 0 && dataEntry.length >= 0
                         ? block.Range(static_cast<std::uint64_t>(dataEntry.address) + kTagWidth,
                                       static_cast<std::uint64_t>(dataEntry.length))
                         : Bytes{};
  if (data.size() != planeCount * planeBytes) planeCount = 0;
  // Without planes of a fitting length the planes stay as they are: nothing is allocated for
  // sizes that the file itself does not back.
  if (planeCount > 0) {
    if (!PlanesCover(s) && model::AllocateSpectrum2D(s, columns, rows) != 0) return Read2DResult::NoMemory;
    if (!FillPlanes(data, s, planeCount, progress)) return Read2DResult::Quit;
    words.realOnly = planeCount == 1 ? 1 : 0;
  }

  const Entry orgFile = block.EntryAt(base + kOrgFileEntry);
  if (orgFile.present() && orgFile.address >= static_cast<std::int32_t>(block.address))
    s.texts.originalFileName = ReadText(block.bytes, static_cast<std::uint64_t>(orgFile.address) - block.address + kTagWidth,
                                        kOrgFileWidth);
  s.comment = ReadTextSection(block.Section(block.EntryAt(base + kCommentEntry)));
  s.commentRtf = ReadTextSection(block.Section(block.EntryAt(base + kRtfEntry)));
  s.texts.sampleIdOld = ReadTextSection(block.Section(block.EntryAt(base + kSampleIdEntry)));
  s.texts.sampleId = ReadTextSection(block.Section(block.EntryAt(base + kSampleIdNewEntry)));
  s.peaks = ReadPeaks(block.Section(block.EntryAt(base + kPeakEntry)));
  ReadRegions(block.Section(block.EntryAt(base + kRegionEntry)), s.regions);
  const Bytes printSet = block.Section(block.EntryAt(base + kPrintSetEntry));
  s.carried.printSet.assign(printSet.begin() + std::min(printSet.size(), kTagWidth), printSet.end());
  const Bytes history = block.Section(block.EntryAt(base + kHistoryEntry));
  HistoryTexts texts = ReadHistory(history);
  s.texts.fftUser = std::move(texts.user);
  s.firstFftDate = std::move(texts.firstDate);
  s.history = std::move(texts.history);
  s.processing.fill({});
  ReadSummary(history, s.processing.data(), kSummaryLines2D);
  SetNuclei(s, words.pulseModeClass);
  return Read2DResult::Ok;
}

}  // namespace velk::native
