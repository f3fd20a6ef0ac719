#pragma once
// The words every reader uses for a file that is empty, of another format or cut short: what the
// file is and what is wrong with it.
#include <cstdint>
#include <string>

#include "core/bytes.h"

namespace velk::formats {

inline constexpr const char* kEmptyFile = "the file is empty";

// "the file is truncated at byte 1234 of the 5678 that its header declares".
std::string TruncatedAt(std::uint64_t size, std::uint64_t needed);

// "the file is 12 bytes long, shorter than its 32-byte header".
std::string ShorterThanHeader(std::uint64_t size, std::uint64_t header);

}  // namespace velk::formats
