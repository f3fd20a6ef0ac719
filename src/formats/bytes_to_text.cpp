#include "formats/bytes_to_text.h"

#include <algorithm>

#include "core/text.h"

namespace velk::formats {

std::string BytesToText(core::Bytes bytes, std::uint64_t offset, std::uint64_t length) {
  if (offset >= bytes.size()) return {};
  const std::uint64_t end = offset + std::min<std::uint64_t>(length, bytes.size() - offset);
  std::string raw;
  for (std::uint64_t i = offset; i < end; ++i) {
    const std::uint8_t b = bytes[i];
    if ((b >= 1 && b <= 128) || (b >= 160 && b <= 223)) {
      raw += static_cast<char>(b);
    } else if ((b >= 129 && b <= 159) || (b >= 224 && b <= 252)) {
      if (i + 1 < end) {
        raw += static_cast<char>(b);
        raw += static_cast<char>(bytes[++i]);
      }
    }
  }
  return core::Cp932ToUtf8(raw);
}

}  // namespace velk::formats
