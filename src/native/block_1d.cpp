#include "native/block_1d.h"

#include <algorithm>
#include <cstring>

#include "core/text.h"
#include "native/history.h"
#include "native/parameters_1d.h"
#include "native/parameters_2d.h"
#include "native/sections.h"

namespace velk::native {
namespace {

constexpr std::string_view kModeString = "1D NORM NORM ";
constexpr std::uint64_t kOrgFileEntry = 32, kParameterEntry = 40, kDataEntry = 48, kCommentEntry = 56,
                        kHistoryEntry = 112, kFileNameEntry = 128, kSampleIdEntry = 152, kXLabelsEntry = 160,
                        kRtfEntry = 168, kSimCommentEntry = 176, kSampleIdNewEntry = 192;
constexpr std::size_t kNameWidth = 255;
constexpr std::size_t kXLabelWidth = 64;

// The sections of the 1D editor that this program keeps as they are. Integral and peak tables
// stand with zero headings when there is nothing to keep; the others are then left out.
struct KeptSection {
  std::string_view tag;
  std::uint64_t entryAt;
  std::size_t emptyBody;  // bytes after the tag when nothing is kept; 0: section left out
};
constexpr std::array<KeptSection, 9> kKept{{
    {"%% INTEGRAL", 64, 24},
    {"%% PEAK PICK", 72, 24},
    {"%% MULTIVIEW", 80, 0},
    {"%% SIMULATE", 88, 0},
    {"%% PRINT SET", 96, 0},
    {"%% FONTS", 120, 0},
    {"%% REGION COLOR", 144, 0},
    {"%% X LABELS NEW", 184, 0},
    {"%% ARRAY", 104, 0},
}};

const model::CarriedSection* FindCarried(const model::Spectrum1D& s, std::string_view tag) {
  for (const model::CarriedSection& section : s.carried.sections)
    if (section.tag == tag) return &section;
  return nullptr;
}

// Returns an absent entry when the section is left out.
Entry WriteKept(FileSink& sink, const model::Spectrum1D& s, const KeptSection& kept) {
  const model::CarriedSection* carried = FindCarried(s, kept.tag);
  if (!carried && kept.emptyBody == 0) return {};
  sink.NextSection();
  const std::uint64_t at = sink.Position();
  if (carried) {
    sink.Append(carried->bytes);
  } else {
    sink.Tag(kept.tag);
    sink.Zeros(kept.emptyBody);
  }
  return EndSection(sink, at);
}

Entry WriteData(FileSink& sink, const model::Spectrum1D& s) {
  const std::uint64_t at = BeginSection(sink, "%% Data");
  const auto n = static_cast<std::size_t>(std::max(s.params.POINT, 0));
  for (const std::vector<float>* part : {&s.re, &s.im})
    for (std::size_t i = 0; i < n; ++i) sink.Put(i < part->size() ? (*part)[i] : 0.0f);
  return EndSection(sink, at);
}

bool ReadData(Bytes section, model::Spectrum1D& s) {
  const std::int32_t points = s.params.POINT;
  if (points < 0 || points > model::kMaxAxisPoints) return false;
  if (section.empty()) return true;  // no plane
  const std::uint64_t bytes = static_cast<std::uint64_t>(points) * sizeof(float);
  if (!core::Fits(section, kTagWidth, 2 * bytes)) return false;
  if (model::AllocateSpectrum1D(s, points) != 0) return false;
  std::memcpy(s.re.data(), section.data() + kTagWidth, bytes);
  std::memcpy(s.im.data(), section.data() + kTagWidth + bytes, bytes);
  if constexpr (std::endian::native == std::endian::big) {
    for (auto* part : {&s.re, &s.im})
      for (float& value : *part) value = core::SwapBytes(value);
  }
  for (std::int32_t i = 0; i < points; ++i) s.axisPpm[i] = s.axisFirst + i * s.axisStep;
  return true;
}

HistoryTexts HistoryOf(const model::Spectrum1D& s) { return {s.texts.fftUser, s.firstFftDate, s.history}; }

}  // namespace

Entry Write1DSection(FileSink& sink, std::string_view tag, const model::Spectrum1D& set, const std::string& fileName) {
  // Width, resolution and axis step are made consistent with the axis first; without a 0 ppm
  // frequency there is nothing to measure the width by.
  model::Spectrum1D s = set;
  if (set.absFreq0ppm > 0) model::RepairBeforeWrite1D(s, set.absFreq0ppm);
  sink.NextSection();
  const std::uint64_t address = WriteBlockOpening(sink, tag, std::string(kModeString), s.texts.originalFileName,
                                                  kNameWidth, EncodeParameters1D(s));
  const std::uint64_t base = address + kTagWidth;
  // The block's own table is filled in at the end: the sink grows meanwhile.
  std::vector<std::pair<std::uint64_t, Entry>> entries{
      {kOrgFileEntry, {static_cast<std::int32_t>(base + kOrgFileAt), static_cast<std::int32_t>(kNameWidth)}},
      {kParameterEntry, {static_cast<std::int32_t>(base + kParameterAt), static_cast<std::int32_t>(kParameterBlockSize)}}};
  entries.emplace_back(kDataEntry, WriteData(sink, s));
  entries.emplace_back(kCommentEntry, WriteTextSection(sink, "%% COMMENT", s.comment));
  entries.emplace_back(kRtfEntry, WriteTextSection(sink, "%% COMMENT RTF", s.commentRtf));
  entries.emplace_back(kSimCommentEntry, WriteTextSection(sink, "%% SIM COMMENT", s.simComment));
  entries.emplace_back(kSampleIdEntry, WriteTextSection(sink, "%% SAMPLE ID", s.texts.sampleIdOld));
  entries.emplace_back(kSampleIdNewEntry, WriteTextSection(sink, "%% SAMPLEID NEW", s.texts.sampleId));
  for (const KeptSection& kept : kKept) {
    entries.emplace_back(kept.entryAt, WriteKept(sink, s, kept));
    if (kept.tag == "%% REGION COLOR") {
      const std::uint64_t at = BeginSection(sink, "%% X LABELS");
      for (const std::string& label : s.xLabels) sink.Text(label, kXLabelWidth);
      entries.emplace_back(kXLabelsEntry, EndSection(sink, at));
    }
  }
  std::uint64_t at = BeginSection(sink, "%% FILENAME");
  sink.Text(fileName, kNameWidth);
  entries.emplace_back(kFileNameEntry, EndSection(sink, at));
  sink.NextSection();
  at = sink.Position();
  WriteHistoryWithSummary(sink, HistoryOf(s), s.processing, kSummaryLines1D);
  entries.emplace_back(kHistoryEntry, EndSection(sink, at));
  const MutableBytes table = sink.At(base, kBlockTableEnd);
  for (const auto& [offset, entry] : entries) StoreEntry(table, offset, entry);
  BeginSection(sink, "%% END");
  return EndSection(sink, address);
}

bool Read1DSection(Bytes file, Entry entry, model::Spectrum1D& s) {
  const Entry inside = Inside(entry, file.size());
  const Bytes bytes = SectionOf(file, inside);
  if (bytes.size() < kTagWidth + kBlockTableEnd || ReadText(bytes, kTagWidth, 12) != core::Trim(kModeString)) return false;
  // Entries that run past the block's end are taken as absent.
  Block block{bytes, static_cast<std::uint64_t>(inside.address)};
  const std::uint64_t base = kTagWidth;
  const auto section = [&](std::uint64_t entryAt) { return block.Section(block.EntryAt(base + entryAt)); };
  const std::int16_t mode = s.mode;
  s = model::Spectrum1D{};
  s.mode = mode;
  const Bytes parameters = section(kParameterEntry);
  if (parameters.empty()) return false;
  DecodeParameters1D(parameters, s);
  if (!ReadData(section(kDataEntry), s)) return false;
  const Entry orgFile = block.EntryAt(base + kOrgFileEntry);
  if (orgFile.present() && orgFile.address >= static_cast<std::int32_t>(block.address))
    s.texts.originalFileName =
        ReadText(bytes, static_cast<std::uint64_t>(orgFile.address) - block.address + kTagWidth, kNameWidth);
  s.comment = ReadTextSection(section(kCommentEntry));
  s.commentRtf = ReadTextSection(section(kRtfEntry));
  s.simComment = ReadTextSection(section(kSimCommentEntry));
  s.texts.sampleIdOld = ReadTextSection(section(kSampleIdEntry));
  s.texts.sampleId = ReadTextSection(section(kSampleIdNewEntry));
  const Bytes labels = section(kXLabelsEntry);
  for (std::size_t i = 0; i < s.xLabels.size(); ++i) s.xLabels[i] = ReadText(labels, kTagWidth + i * kXLabelWidth, kXLabelWidth);
  for (const KeptSection& kept : kKept) {
    const Bytes carried = section(kept.entryAt);
    if (!carried.empty() && ReadTag(carried, 0) == kept.tag)
      s.carried.sections.push_back({std::string(kept.tag), {carried.begin(), carried.end()}});
  }
  const Bytes history = section(kHistoryEntry);
  HistoryTexts texts = ReadHistory(history);
  s.texts.fftUser = std::move(texts.user);
  s.firstFftDate = std::move(texts.firstDate);
  s.history = std::move(texts.history);
  s.processing.assign(kSummaryLines1D, {});
  ReadSummary(history, s.processing.data(), kSummaryLines1D);
  return true;
}

}  // namespace velk::native
