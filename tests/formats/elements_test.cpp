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
  // A reversed run stores the last element first, in every type.
  core::ByteSink sink{{}, core::ByteOrder::Big};
  for (float v : {1.5f, -2.0f, 3.25f}) sink.Put<float>(v);
  std::vector<float> reversed(3);
  ASSERT_TRUE(DecodeElements(sink.bytes, 0, 3, ElementType::Float32, core::ByteOrder::Big, reversed, true));
  EXPECT_EQ(reversed, (std::vector<float>{3.25f, -2.0f, 1.5f}));
}

}  // namespace velk::formats

namespace velk::formats {

// The batch decoder takes the machine's conversion for normal numbers: it must agree bit for bit
// with the hand rules on every pattern, denormals, zeros, infinities and NaNs included.
TEST(Elements, BatchDecodingAgreesWithTheHandRulesOnAnyBits) {
  std::vector<std::uint8_t> raw(8 * 4096);
  std::uint64_t state = 88172645463325252ull;
  for (std::size_t i = 0; i < raw.size(); ++i) {
    state ^= state << 13, state ^= state >> 7, state ^= state << 17;
    raw[i] = static_cast<std::uint8_t>(state);
  }
  for (std::size_t i = 0; i < 64; ++i) raw[8 * i] = raw[8 * i + 1] = static_cast<std::uint8_t>(i % 2 ? 0x80 : 0);
  for (std::size_t i = 64; i < 128; ++i) raw[8 * i] = 0x7F, raw[8 * i + 1] = 0xF0;
  for (ElementType type : {ElementType::Float32, ElementType::Float64})
    for (core::ByteOrder order : {core::ByteOrder::Little, core::ByteOrder::Big}) {
      const std::size_t count = raw.size() / ElementWidth(type);
      std::vector<float> batch(count);
      ASSERT_TRUE(DecodeElements(raw, 0, count, type, order, batch));
      for (std::size_t i = 0; i < count; ++i) {
        const float single = DecodeElement(raw.data() + i * ElementWidth(type), type, order);
        ASSERT_EQ(std::memcmp(&single, &batch[i], 4), 0) << i;
      }
    }
}

}  // namespace velk::formats
