// The Bruker parameter parsing on any acqus beside a real acqu2s and ser (the example COSY).
#include "fuzz/fuzz_read.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velk::fuzz::ReadBytesAs("acqus", data, size, {"acqu2s", "ser"}, VELK_FUZZ_BRUKER);
  return 0;
}
