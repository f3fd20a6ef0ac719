// The Bruker reader on any ser beside a real acqus and acqu2s (the example COSY).
#include "fuzz/fuzz_read.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velk::fuzz::ReadBytesAs("ser", data, size, {"acqus", "acqu2s"}, VELK_FUZZ_BRUKER);
  return 0;
}
