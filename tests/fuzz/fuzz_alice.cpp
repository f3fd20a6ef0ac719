// The alice reader on any bytes: no crash, no read outside the file, no undefined behaviour.
#include "fuzz/fuzz_read.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velk::fuzz::ReadBytesAs("x.als", data, size);
  return 0;
}
