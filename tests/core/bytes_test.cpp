#include <gtest/gtest.h>

#include "core/bytes.h"

namespace velk::core {

TEST(Bytes, OneDecoderForBothOrdersAndEveryWidth) {
  const std::vector<std::uint8_t> raw{0x01, 0x02, 0x03, 0x04, 0x00, 0x00, 0x80, 0x3F};
  EXPECT_EQ(*Decode<std::uint16_t>(raw, 0, ByteOrder::Little), 0x0201);
  EXPECT_EQ(*Decode<std::uint16_t>(raw, 0, ByteOrder::Big), 0x0102);
  EXPECT_EQ(*Decode<std::int32_t>(raw, 0, ByteOrder::Big), 0x01020304);
  EXPECT_EQ(*Decode<float>(raw, 4, ByteOrder::Little), 1.0f);
  ByteSink sink{{}, ByteOrder::Big};
  sink.Put<double>(-2.5);
  EXPECT_EQ(*Decode<double>(sink.bytes, 0, ByteOrder::Big), -2.5);
}

TEST(Bytes, NothingIsReadOutsideTheBuffer) {
  const std::vector<std::uint8_t> raw(6, 0);
  EXPECT_FALSE(Decode<std::uint32_t>(raw, 3, ByteOrder::Little));
  EXPECT_FALSE(Decode<std::uint32_t>(raw, UINT64_MAX - 1, ByteOrder::Little));
  EXPECT_TRUE(Decode<std::uint16_t>(raw, 4, ByteOrder::Little));
  EXPECT_FALSE(DecodeText(raw, 2, 5));
  EXPECT_FALSE(Fits(raw, 7, 0));
  EXPECT_TRUE(Fits(raw, 6, 0));
}

}  // namespace velk::core
