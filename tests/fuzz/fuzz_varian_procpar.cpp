// The Varian parameter parsing on any procpar beside a fixed fid.
#include "fuzz/fuzz_read.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velk::fuzz::ReadBytesAs("procpar", data, size, {"fid"}, VELK_FUZZ_VARIAN, "fid");
  return 0;
}
