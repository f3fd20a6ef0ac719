// The Ver.4 reader on any bytes held in memory: no crash, no read outside them, no undefined
// behaviour.
#include "fuzz/fuzz_read.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velk::fuzz::ReadVer4Bytes(data, size);
  return 0;
}
