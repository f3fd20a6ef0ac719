#include "native/fields.h"

#include <algorithm>

#include "core/text.h"

namespace velk::native {

std::string ReadTextBytes(Bytes bytes, std::uint64_t offset, std::uint64_t width) {
  std::string raw;
  if (offset >= bytes.size()) return raw;
  const std::uint64_t end = std::min<std::uint64_t>(bytes.size(), offset + width);
  for (std::uint64_t i = offset; i < end; ++i)
    if (bytes[i] != 0) raw += static_cast<char>(bytes[i]);
  return raw;
}

std::string ReadText(Bytes bytes, std::uint64_t offset, std::uint64_t width) {
  return core::Cp932ToUtf8(core::Trim(ReadTextBytes(bytes, offset, width)));
}

std::string ReadTag(Bytes bytes, std::uint64_t offset) { return ReadText(bytes, offset, kTagWidth); }

std::string FieldBytes(const std::string& text, std::size_t width) {
  return core::CutShiftJis(core::Utf8ToCp932(text), width);
}

void StoreText(MutableBytes block, std::uint64_t offset, std::size_t width, const std::string& text) {
  if (!core::Fits(block, offset, width)) return;
  const std::string field = FieldBytes(text, width);
  std::fill_n(block.begin() + static_cast<std::ptrdiff_t>(offset), width, std::uint8_t{0});
  std::copy(field.begin(), field.end(), block.begin() + static_cast<std::ptrdiff_t>(offset));
}

void FileSink::NextSection() { Zeros(static_cast<std::size_t>((Position() / 16 + 1) * 16 - Position())); }

void FileSink::Tag(std::string_view tag) { Text(std::string(tag), kTagWidth); }

void FileSink::Text(const std::string& text, std::size_t width) {
  Zeros(width);
  StoreText(bytes, bytes.size() - width, width, text);
}

Entry ReadEntry(Bytes bytes, std::uint64_t offset) {
  return {ReadLong(bytes, offset), ReadLong(bytes, offset + 4)};
}

void StoreEntry(MutableBytes block, std::uint64_t offset, Entry entry) {
  Store(block, offset, entry.address);
  Store(block, offset + 4, entry.length);
}

Entry Inside(Entry entry, std::uint64_t limit) {
  if (entry.address < 0 || entry.length < 0) return {};
  if (static_cast<std::uint64_t>(entry.address) + static_cast<std::uint64_t>(entry.length) > limit) return {};
  return entry;
}

Bytes SectionOf(Bytes file, Entry entry) {
  const Entry inside = Inside(entry, file.size());
  if (!inside.present()) return {};
  return file.subspan(static_cast<std::size_t>(inside.address), static_cast<std::size_t>(inside.length));
}

}  // namespace velk::native
