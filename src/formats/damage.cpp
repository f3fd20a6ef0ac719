#include "formats/damage.h"

#include <algorithm>
#include <cstdio>

namespace velk::formats {

std::string FirstBytes(core::Bytes bytes, std::size_t count) {
  const std::size_t n = std::min(count, bytes.size());
  std::string text, hex;
  for (std::size_t i = 0; i < n; ++i) {
    const std::uint8_t b = bytes[i];
    text += b >= 32 && b < 127 ? static_cast<char>(b) : '.';
    char two[4];
    std::snprintf(two, sizeof two, "%02X", b);
    hex += (i ? " " : "") + std::string(two);
  }
  return "begins \"" + text + "\" (" + hex + ")";
}

std::string TruncatedAt(std::uint64_t size, std::uint64_t needed) {
  return "the file is truncated at byte " + std::to_string(size) + " of the " + std::to_string(needed) +
         " that its header declares";
}

std::string ShorterThanHeader(std::uint64_t size, std::uint64_t header) {
  return "the file is " + std::to_string(size) + " bytes long, shorter than its " + std::to_string(header) +
         "-byte header";
}

}  // namespace velk::formats
