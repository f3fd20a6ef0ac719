#include "formats/elements.h"

#include <bit>
#include <cmath>
#include <cstring>

namespace velk::formats {
namespace {

// b[0] is the most significant byte whatever the order in the file.
void MostSignificantFirst(const std::uint8_t* raw, std::size_t width, core::ByteOrder order, std::uint8_t* b) {
  for (std::size_t i = 0; i < width; ++i) b[i] = order == core::ByteOrder::Big ? raw[i] : raw[width - 1 - i];
}

float SingleByHand(const std::uint8_t* b) {
  if (b[0] == 0 && b[1] == 0) return 0.0f;
  const int exponent = (b[0] % 128) * 2 + (b[1] / 128) - 150;
  const double mantissa = ((b[1] % 128) + 128) * 65536.0 + b[2] * 256.0 + b[3];
  const double value = std::ldexp(mantissa, exponent);
  return static_cast<float>(b[0] & 0x80 ? -value : value);
}

float DoubleByHand(const std::uint8_t* b) {
  if (b[0] == 0 && b[1] == 0) return 0.0f;
  const int exponent = (b[0] % 128) * 16 + (b[1] / 16) - 1059;
  const double mantissa = ((b[1] % 16) + 16) * 4294967296.0 + b[2] * 16777216.0 + b[3] * 65536.0 +
                          b[4] * 256.0 + b[5] + b[6] / 256.0 + b[7] / 65536.0;
  const double value = std::ldexp(mantissa, exponent);
  return static_cast<float>(b[0] & 0x80 ? -value : value);
}

// The hand rules give the IEEE value for every normal number (biased exponent neither all zeros
// nor all ones), so those take the machine's conversion; the rest go by hand.
template <class Bits, class Float>
void DecodeFloats(const std::uint8_t* raw, std::size_t count, ElementType type, core::ByteOrder order, float* out) {
  constexpr int kMantissaBits = sizeof(Bits) == 8 ? 52 : 23;
  constexpr Bits kExponentMask = sizeof(Bits) == 8 ? 0x7FF : 0xFF;
  const bool swap = (order == core::ByteOrder::Little) != (std::endian::native == std::endian::little);
  for (std::size_t i = 0; i < count; ++i, raw += sizeof(Bits)) {
    Bits bits;
    std::memcpy(&bits, raw, sizeof bits);
    if (swap) bits = core::SwapBytes(bits);
    const Bits exponent = (bits >> kMantissaBits) & kExponentMask;
    if (exponent != 0 && exponent != kExponentMask) {
      Float value;
      std::memcpy(&value, &bits, sizeof value);
      out[i] = static_cast<float>(value);
    } else {
      out[i] = DecodeElement(raw, type, order);
    }
  }
}

}  // namespace

float DecodeElement(const std::uint8_t* raw, ElementType type, core::ByteOrder order) {
  std::uint8_t b[8];
  MostSignificantFirst(raw, ElementWidth(type), order, b);
  switch (type) {
    case ElementType::Int16: return static_cast<float>(static_cast<std::int16_t>(b[0] << 8 | b[1]));
    case ElementType::Int32:
      return static_cast<float>(static_cast<std::int32_t>(static_cast<std::uint32_t>(b[0]) << 24 | b[1] << 16 |
                                                          b[2] << 8 | b[3]));
    case ElementType::Float32: return SingleByHand(b);
    case ElementType::Float64: return DoubleByHand(b);
  }
  return 0.0f;
}

bool DecodeElements(core::Bytes bytes, std::uint64_t offset, std::size_t count, ElementType type,
                    core::ByteOrder order, std::span<float> out) {
  const std::size_t width = ElementWidth(type);
  if (count > out.size() || count > UINT64_MAX / width || !core::Fits(bytes, offset, count * width)) return false;
  const std::uint8_t* raw = bytes.data() + offset;
  if (type == ElementType::Float64) DecodeFloats<std::uint64_t, double>(raw, count, type, order, out.data());
  else if (type == ElementType::Float32) DecodeFloats<std::uint32_t, float>(raw, count, type, order, out.data());
  else for (std::size_t i = 0; i < count; ++i, raw += width) out[i] = DecodeElement(raw, type, order);
  return true;
}

}  // namespace velk::formats
