#pragma once
// Bounds-checked reading and writing of file bytes with an explicit byte order. Every reader goes
// through these: an offset or size read from a file is never trusted before it is checked here.
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

namespace velk::core {

enum class ByteOrder { Little, Big };
using Bytes = std::span<const std::uint8_t>;

constexpr bool Fits(Bytes bytes, std::uint64_t offset, std::uint64_t count) {
  return offset <= bytes.size() && count <= bytes.size() - offset;
}

template <class T>
T SwapBytes(T value) {
  static_assert(std::is_trivially_copyable_v<T>);
  std::uint8_t raw[sizeof(T)];
  std::memcpy(raw, &value, sizeof(T));
  for (std::size_t i = 0; i < sizeof(T) / 2; ++i) std::swap(raw[i], raw[sizeof(T) - 1 - i]);
  std::memcpy(&value, raw, sizeof(T));
  return value;
}

// Decodes one value of any arithmetic type in either byte order; nothing when it lies outside.
template <class T>
std::optional<T> Decode(Bytes bytes, std::uint64_t offset, ByteOrder order) {
  if (!Fits(bytes, offset, sizeof(T))) return std::nullopt;
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof(T));
  const bool native = (order == ByteOrder::Little) == (std::endian::native == std::endian::little);
  return native ? value : SwapBytes(value);
}

template <class T>
T DecodeOr(Bytes bytes, std::uint64_t offset, ByteOrder order, T fallback) {
  return Decode<T>(bytes, offset, order).value_or(fallback);
}

// Fixed-width text field; stops at the first NUL. Nothing when the field lies outside.
inline std::optional<std::string> DecodeText(Bytes bytes, std::uint64_t offset, std::uint64_t width) {
  if (!Fits(bytes, offset, width)) return std::nullopt;
  const auto* begin = reinterpret_cast<const char*>(bytes.data() + offset);
  return std::string(begin, strnlen(begin, width));
}

template <class T>
void Encode(std::span<std::uint8_t> out, std::uint64_t offset, T value, ByteOrder order) {
  const bool native = (order == ByteOrder::Little) == (std::endian::native == std::endian::little);
  if (!native) value = SwapBytes(value);
  std::memcpy(out.data() + offset, &value, sizeof(T));
}

// Appends values to a growing buffer; writers build a file in memory, then write it at once.
struct ByteSink {
  std::vector<std::uint8_t> bytes;
  ByteOrder order = ByteOrder::Little;

  template <class T>
  void Put(T value) {
    const std::size_t at = bytes.size();
    bytes.resize(at + sizeof(T));
    Encode<T>(bytes, at, value, order);
  }
  // The text padded with NUL (or cut) to exactly width bytes.
  void PutText(const std::string& text, std::size_t width, std::uint8_t pad = 0) {
    const std::size_t at = bytes.size();
    bytes.resize(at + width, pad);
    std::memcpy(bytes.data() + at, text.data(), std::min(width, text.size()));
  }
};

// The first bytes as text and in hex, for a message about a file of unknown kind:
// "begins \"GIF89a..\" (47 49 46 38 39 61 01 00)".
inline std::string FirstBytes(Bytes bytes, std::size_t count = 8) {
  const std::size_t n = std::min(count, bytes.size());
  std::string text, hex;
  for (std::size_t i = 0; i < n; ++i) {
    const std::uint8_t b = bytes[i];
    text += b >= 32 && b < 127 ? static_cast<char>(b) : '.';
    static constexpr char kDigits[] = "0123456789ABCDEF";
    if (i > 0) hex += ' ';
    hex += kDigits[b >> 4];
    hex += kDigits[b & 15];
  }
  return "begins \"" + text + "\" (" + hex + ")";
}

// Reads a whole file; nothing on failure. Refuses files larger than limit bytes.
std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::string& path,
                                                       std::uint64_t limit = UINT64_MAX);
// Reads at most count bytes from the start of a file.
std::optional<std::vector<std::uint8_t>> ReadFilePrefix(const std::string& path, std::uint64_t count);

}  // namespace velk::core
