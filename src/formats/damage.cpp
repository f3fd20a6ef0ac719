#include "formats/damage.h"

namespace velk::formats {

std::string TruncatedAt(std::uint64_t size, std::uint64_t needed) {
  return "the file is truncated at byte " + std::to_string(size) + " of the " + std::to_string(needed) +
         " that its header declares";
}

std::string ShorterThanHeader(std::uint64_t size, std::uint64_t header) {
  return "the file is " + std::to_string(size) + " bytes long, shorter than its " + std::to_string(header) +
         "-byte header";
}

}  // namespace velk::formats
