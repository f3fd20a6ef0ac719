#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "formats/elements.h"

namespace velk::formats {
namespace {

template <class T>
std::vector<std::uint8_t> BytesOf(T value, core::ByteOrder order) {
  core::ByteSink sink{{}, order};
  sink.Put<T>(value);
  return sink.bytes;
}

}  // namespace

TEST(Elements, HandDecodingAgreesWithIeeeForOrdinaryValuesInBothOrders) {
  for (core::ByteOrder order : {core::ByteOrder::Little, core::ByteOrder::Big}) {
    for (float v : {1.0f, -2.5f, 3.14159f, 1e-20f, 6.02e23f}) {
      EXPECT_EQ(DecodeElement(BytesOf(v, order).data(), ElementType::Float32, order), v);
      EXPECT_EQ(DecodeElement(BytesOf(static_cast<double>(v), order).data(), ElementType::Float64, order), v);
    }
    EXPECT_EQ(DecodeElement(BytesOf<std::int32_t>(-123456, order).data(), ElementType::Int32, order), -123456.0f);
    EXPECT_EQ(DecodeElement(BytesOf<std::int16_t>(-7, order).data(), ElementType::Int16, order), -7.0f);
  }
  // Two leading zero bytes are zero, whatever follows: small denormal-like patterns vanish.
  const std::uint8_t tiny[4] = {0, 0, 0x12, 0x34};
  EXPECT_EQ(DecodeElement(tiny, ElementType::Float32, core::ByteOrder::Big), 0.0f);
}

TEST(Elements, RunsThatLeaveTheFileAreRefused) {
  const std::vector<std::uint8_t> raw(10, 1);
  std::vector<float> out(4);
  EXPECT_TRUE(DecodeElements(raw, 2, 2, ElementType::Int32, core::ByteOrder::Little, out));
  EXPECT_FALSE(DecodeElements(raw, 4, 2, ElementType::Int32, core::ByteOrder::Little, out));
  EXPECT_FALSE(DecodeElements(raw, 0, 5, ElementType::Int16, core::ByteOrder::Little, out));  // out too small
}

}  // namespace velk::formats
