#include "core/bytes.h"

#include <fstream>

namespace velk::core {
namespace {

std::optional<std::vector<std::uint8_t>> ReadUpTo(const std::string& path, std::uint64_t count,
                                                  bool refuseLarger) {
  std::ifstream in(path, std::ios::binary | std::ios::ate);
  if (!in) return std::nullopt;
  const std::streamoff size = in.tellg();
  if (size < 0) return std::nullopt;
  const auto length = static_cast<std::uint64_t>(size);
  if (refuseLarger && length > count) return std::nullopt;
  std::vector<std::uint8_t> bytes(std::min(length, count));
  in.seekg(0);
  if (!bytes.empty() && !in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size())))
    return std::nullopt;
  return bytes;
}

}  // namespace

std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::string& path, std::uint64_t limit) {
  return ReadUpTo(path, limit, true);
}

std::optional<std::vector<std::uint8_t>> ReadFilePrefix(const std::string& path, std::uint64_t count) {
  return ReadUpTo(path, count, false);
}

}  // namespace velk::core
