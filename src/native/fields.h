#pragma once
// Typed access to the fields of a Ver.4 file: little-endian words, longs, floats, doubles and
// fixed-width Shift-JIS text. Readers never look outside their span: a field that does not fit
// reads as zero or empty. Writers put values into a block that the caller sized.
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "core/bytes.h"

namespace velk::native {

using core::Bytes;
using MutableBytes = std::span<std::uint8_t>;

inline constexpr std::size_t kTagWidth = 16;

template <class T>
T Read(Bytes bytes, std::uint64_t offset) {
  return core::DecodeOr<T>(bytes, offset, core::ByteOrder::Little, T{});
}
inline std::int32_t ReadLong(Bytes bytes, std::uint64_t offset) { return Read<std::int32_t>(bytes, offset); }

// A text field: zero bytes inside are skipped, the rest trimmed and turned into UTF-8.
std::string ReadText(Bytes bytes, std::uint64_t offset, std::uint64_t width);
// The raw bytes of a text field with zero bytes skipped (no trimming, no conversion).
std::string ReadTextBytes(Bytes bytes, std::uint64_t offset, std::uint64_t width);
// The tag of a section: its first 16 bytes as text.
std::string ReadTag(Bytes bytes, std::uint64_t offset);

template <class T>
void Store(MutableBytes block, std::uint64_t offset, T value) {
  if (core::Fits(block, offset, sizeof(T))) core::Encode<T>(block, offset, value, core::ByteOrder::Little);
}
// The text as Shift-JIS bytes, cut to width without splitting a character.
std::string FieldBytes(const std::string& text, std::size_t width);
// Puts a text into a field of the given width, zero-padded.
void StoreText(MutableBytes block, std::uint64_t offset, std::size_t width, const std::string& text);

// A growing file image whose first byte stands at base in the file, so that a part written after
// the planes still knows its absolute addresses.
struct FileSink {
  std::uint64_t base = 0;
  std::vector<std::uint8_t> bytes;

  std::uint64_t Position() const { return base + bytes.size(); }
  // Rounds up to the next section start: (position / 16 + 1) * 16, the gap filled with zeros.
  void NextSection();
  void Zeros(std::size_t count) { bytes.resize(bytes.size() + count, 0); }
  void Tag(std::string_view tag);
  void Append(Bytes more) { bytes.insert(bytes.end(), more.begin(), more.end()); }
  template <class T>
  void Put(T value) {
    Zeros(sizeof(T));
    Store<T>(bytes, bytes.size() - sizeof(T), value);
  }
  void Text(const std::string& text, std::size_t width);
  // The block from an absolute address on, for fields written in place.
  MutableBytes At(std::uint64_t address, std::size_t count) {
    return MutableBytes(bytes).subspan(static_cast<std::size_t>(address - base), count);
  }
};

// An address table entry: address and length. Address and length 0 mean the section is absent.
struct Entry {
  std::int32_t address = 0;
  std::int32_t length = 0;
  bool present() const { return address != 0 || length != 0; }
};
Entry ReadEntry(Bytes bytes, std::uint64_t offset);
void StoreEntry(MutableBytes block, std::uint64_t offset, Entry entry);
// The entry when its section lies inside limit bytes, else an absent entry.
Entry Inside(Entry entry, std::uint64_t limit);
Bytes SectionOf(Bytes file, Entry entry);

}  // namespace velk::native
