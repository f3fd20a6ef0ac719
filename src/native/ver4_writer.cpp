// Writing a Ver.4 file: header, 2D block with the planes written straight from the record, the
// companion sets, the carried sections and the history, inside the backup protocol.
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

#include "native/backup.h"
#include "native/block_1d.h"
#include "native/block_2d.h"
#include "native/file_layout.h"
#include "native/history.h"
#include "native/messages.h"
#include "native/sections.h"
#include "native/ver4_file.h"

namespace velk::native {
namespace {

using platform::Outcome;

FileSink Header(const std::string& name) {
  FileSink head;
  head.Zeros(kHeaderSize);
  StoreText(head.bytes, 0, kTagWidth, std::string(kMagic401));
  StoreText(head.bytes, kNameAt, kNameWidth, name);
  StoreText(head.bytes, kAddressTagAt, kTagWidth, std::string(kAddressTag));
  return head;
}

const model::CarriedSection* Find(const std::vector<model::CarriedSection>& carried, std::string_view tag) {
  for (const model::CarriedSection& section : carried)
    if (section.tag == tag) return &section;
  return nullptr;
}

Entry CopySection(FileSink& sink, const model::CarriedSection& section) {
  sink.NextSection();
  const std::uint64_t at = sink.Position();
  sink.Append(section.bytes);
  return EndSection(sink, at);
}

// The sets from first on that the record carries; the sets below 20 of a 2D file stand as a tag
// with a zero length when empty.
void WriteCarriedSets(FileSink& sink, MutableBytes header, const std::vector<model::CarriedSection>& carried,
                      int first, bool tagsForEmpty) {
  for (int set = first; set < kOneDSets; ++set) {
    const std::string tag = SetTag(set);
    if (const model::CarriedSection* section = Find(carried, tag)) {
      StoreEntry(header, OneDEntryAt(set), CopySection(sink, *section));
    } else if (tagsForEmpty && set < 20) {
      StoreEntry(header, OneDEntryAt(set), {static_cast<std::int32_t>(BeginSection(sink, tag)), 0});
    }
  }
}

void WriteFileSections(FileSink& sink, MutableBytes header, const std::vector<model::CarriedSection>& carried,
                       const HistoryTexts& history) {
  for (const FileSection& section : kFileSections) {
    if (section.tag == kFileHistoryTag) {
      sink.NextSection();
      const std::uint64_t at = sink.Position();
      WriteHistory(sink, section.tag, history);
      StoreEntry(header, section.entryAt, EndSection(sink, at));
    } else if (const model::CarriedSection* kept = Find(carried, section.tag)) {
      StoreEntry(header, section.entryAt, CopySection(sink, *kept));
    } else if (section.tagWhenEmpty) {
      BeginSection(sink, section.tag);
    }
  }
  BeginSection(sink, kEndTag);
}

Outcome WriteFault(const std::filesystem::path& file, int error) {
  return {-1, messages::Error(messages::kWriteTag, std::string(std::strerror(error)) + " (" + file.string() + ")")};
}

// Puts the parts one after another into the file, each in one write.
Outcome WriteParts(const std::filesystem::path& file, std::span<const Bytes> parts) {
  std::FILE* out = std::fopen(file.c_str(), "wb");
  if (!out) return WriteFault(file, errno);
  for (const Bytes part : parts) {
    if (!part.empty() && std::fwrite(part.data(), 1, part.size(), out) != part.size()) {
      const int error = errno;
      std::fclose(out);
      return WriteFault(file, error);
    }
  }
  if (std::fclose(out) != 0) return WriteFault(file, errno);
  return {};
}

Bytes AsBytes(std::span<const float> values) {
  return {reinterpret_cast<const std::uint8_t*>(values.data()), values.size_bytes()};
}

Outcome Save(const std::filesystem::path& file, std::span<const Bytes> parts, const WriteOptions& options) {
  std::uint64_t size = 0;
  for (const Bytes part : parts) size += part.size();
  if (size > static_cast<std::uint64_t>(INT32_MAX))
    return {1, messages::Error(messages::kDataSizeError, messages::kDataSizeTooLarge)};
  Outcome outcome = ReplaceWithBackup(file, options.makeFileBackup,
                                      [&](const std::filesystem::path& target) { return WriteParts(target, parts); });
  if (outcome.ok() && options.log) options.log("Write", file.string());
  return outcome;
}

}  // namespace

Outcome WriteDataR4(const std::filesystem::path& file, const model::Spectrum2D& s, const model::Spectrum1D* f2Set,
                    const model::Spectrum1D* f1Set, const model::DataWords& words, SaveMode mode,
                    const WriteOptions& options) {
  if (s.axis[model::F2].Point <= 0 || s.axis[model::F1].Point <= 0) return {1, {}};  // nothing to save
  const std::string name = file.string();
  const PlaneSet planes = MakePlaneSet(s, words.pulseModeClass, words.realOnly != 0, mode);
  // The planes go out as they lie in memory, which must be the file's little-endian order.
  static_assert(std::endian::native == std::endian::little, "planes are written as they lie in memory");
  FileSink head = Header(name);
  FileSink tail;
  StoreEntry(head.bytes, k2DEntryAt, Write2DSection(head, tail, s, planes, name));
  const MutableBytes header = MutableBytes(head.bytes).first(kHeaderSize);
  const model::Spectrum1D* companions[2] = {f2Set, f1Set};
  for (int set = 0; set < 2; ++set) {
    if (companions[set] && companions[set]->params.POINT >= 1)
      StoreEntry(header, OneDEntryAt(set), Write1DSection(tail, SetTag(set), *companions[set], name));
    else
      StoreEntry(header, OneDEntryAt(set), {static_cast<std::int32_t>(BeginSection(tail, SetTag(set))), 0});
  }
  WriteCarriedSets(tail, header, s.carried.fileSections, 2, true);
  WriteFileSections(tail, header, s.carried.fileSections, {s.texts.fftUser, s.firstFftDate, s.history});
  std::vector<Bytes> parts{head.bytes};
  for (const auto& plane : planes.planes) parts.push_back(AsBytes(plane));
  parts.push_back(tail.bytes);
  return Save(file, parts, options);
}

Outcome WriteDataR4(const std::filesystem::path& file, const model::Spectrum1D& s, const WriteOptions& options) {
  const std::string name = file.string();
  FileSink head = Header(name);
  FileSink tail{kHeaderSize, {}};
  const MutableBytes header(head.bytes);
  StoreEntry(header, OneDEntryAt(0), Write1DSection(tail, SetTag(0), s, name));
  WriteCarriedSets(tail, header, s.carried.sections, 1, false);
  WriteFileSections(tail, header, s.carried.sections, {s.texts.fftUser, s.firstFftDate, s.history});
  const Bytes parts[2] = {head.bytes, tail.bytes};
  Outcome outcome = Save(file, parts, options);
  if (!outcome.ok() && options.log) options.log(std::string(messages::kWriteLog1D) + name + ")", outcome.message.text);
  return outcome;
}

}  // namespace velk::native
