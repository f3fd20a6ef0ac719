// The Varian reader on any fid beside a fixed procpar of a phase-sensitive COSY.
#include "fuzz/fuzz_read.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velk::fuzz::ReadBytesAs("fid", data, size, {"procpar"}, VELK_FUZZ_VARIAN);
  return 0;
}
